// SPDX-License-Identifier: MIT
//
// Numbers as they are given on the command line.

#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tool {

/// Exactly `count` finite numbers separated by commas, such as "12,-3.5"; nothing for any other
/// text. A decimal point whatever the locale.
std::optional<std::vector<double>> parseNumbers(const std::string& text, std::size_t count);

}  // namespace tool
