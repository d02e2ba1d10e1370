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

// Why a text is no finite number, none that is positive, or none that is not negative; empty when
// it is one.

std::string refusalOfNumber(const std::string& text);
std::string refusalOfPositive(const std::string& text);
std::string refusalOfNotNegative(const std::string& text);

}  // namespace tool
