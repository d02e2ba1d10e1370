// SPDX-License-Identifier: MIT
//
// Numbers in text files, with a decimal point whatever the locale.

#pragma once

#include <charconv>
#include <string>
#include <string_view>

namespace formats {

/// Like std::from_chars, to the last bit; most numbers (at most 15 digits, no exponent) take a
/// third of the time.
std::from_chars_result readNumber(const char* first, const char* last, double& value) noexcept;

/// The whole text as a finite number. Throws FeatureError, naming the text, for anything else.
double finiteNumber(std::string_view text);

/// The shortest text that reads back as the same number.
std::string allDigits(double value);

}  // namespace formats
