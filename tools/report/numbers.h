// SPDX-License-Identifier: MIT
//
// Numbers for users, with a decimal point whatever the locale; allDigits() in cntrformats/number.h
// writes numbers for programs.

#pragma once

#include <string>
#include <vector>

namespace tool {

/// At most `digits` significant digits, as few as the value needs.
std::string shortNumber(double value, int digits);

/// The numbers of a column with the same number of decimals, so that their points are aligned: six
/// significant digits of the largest one. If a smaller one would lose nearly all of its digits, or
/// the largest would be too long to read, each number has six significant digits. REQUIRES: all are
/// finite.
std::vector<std::string> alignedNumbers(const std::vector<double>& values);

}  // namespace tool
