// SPDX-License-Identifier: MIT
//
// The fields of a line of CSV.

#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace formats {

/// Splits one line at its separators, those that are blanks at runs of blanks; fields may be
/// quoted,
/// "" being a quote in one. False when the last quote is not closed.
bool splitCsv(std::string_view line, std::vector<std::string>& fields, char separator = ',');
/// The field as it is written: quoted where it must be.
std::string csvField(const std::string& text);

}  // namespace formats
