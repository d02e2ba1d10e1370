// SPDX-License-Identifier: MIT
//
// Numbers as text, always with a decimal point whatever the locale.

#pragma once

#include <string>
#include <vector>

namespace tool {

/// The shortest text that reads back as the same number.
std::string allDigits(double value);
/// At most `digits` significant digits, as few as the value needs.
std::string shortNumber(double value, int digits);

/// The numbers of a column, with equally many decimals so that their points stand below each other:
/// six significant digits of the largest one. Where a smaller one would lose nearly all of its
/// digits, or the largest would be unreadably long, each has six significant digits of its own.
/// REQUIRES: all are finite.
std::vector<std::string> alignedNumbers(const std::vector<double>& values);

}  // namespace tool
