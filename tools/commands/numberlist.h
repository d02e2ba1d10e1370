// SPDX-License-Identifier: MIT
//
// Numbers given on the command line.

#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tool {

/// Exactly `count` finite numbers separated by commas, such as "12,-3.5"; empty for any other text.
/// The decimal point does not depend on the locale.
std::optional<std::vector<double>> parseNumbers(const std::string& text, std::size_t count);

// Why a text is not a finite number, not a positive one, or not one of at least 0; empty when it
// is.
// it is one.

std::string refusalOfNumber(const std::string& text);
std::string refusalOfPositive(const std::string& text);
std::string refusalOfNotNegative(const std::string& text);

}  // namespace tool
