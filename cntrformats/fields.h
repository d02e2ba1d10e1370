// SPDX-License-Identifier: MIT
//
// The fields of a CSV line.

#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace formats {

/// Splits one line at its separators (a blank separates in runs of any length). Fields may be
/// quoted; within quotes "" stands for one quote. False when the last quote is not closed.
bool splitCsv(std::string_view line, std::vector<std::string>& fields, char separator = ',');
/// The field as it is written: quoted if necessary.
std::string csvField(const std::string& text);

}  // namespace formats
