// SPDX-License-Identifier: MIT
//
// One answer as a value that a table or a JSON file can show.

#pragma once

#include <cmath>
#include <cstddef>
#include <optional>
#include <string>
#include <variant>

#include <cntrformats/feature.h>

namespace tool {

/// Nothing (there is no answer), yes or no, a count, a number, or a text.
using Cell = std::variant<std::monostate, bool, std::size_t, double, std::string>;

/// The number; empty when it is not finite.
inline Cell numberCell(double value) { return std::isfinite(value) ? Cell(value) : Cell(); }

inline Cell labelCell(const std::optional<formats::Label>& label) {
  if (!label) return {};
  return std::visit([](const auto& value) { return Cell(value); }, *label);
}

inline bool isEmpty(const Cell& cell) { return std::holds_alternative<std::monostate>(cell); }

}  // namespace tool
