// SPDX-License-Identifier: MIT
//
// Numbers in text files, with a decimal point whatever the locale.

#pragma once

#include <string>
#include <string_view>

namespace formats {

/// The whole text as a finite number. Throws FeatureError, naming the text, for any other.
double finiteNumber(std::string_view text);

/// The shortest text that reads back as the same number.
std::string allDigits(double value);

}  // namespace formats
