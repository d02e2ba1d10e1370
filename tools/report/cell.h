// SPDX-License-Identifier: MIT
//
// One answer as a value that a table or a JSON file can show.

#pragma once

#include <cmath>
#include <cstddef>
#include <string>
#include <variant>

namespace tool {

/// Nothing (there is no answer), yes or no, a count, a number, or a text.
using Cell = std::variant<std::monostate, bool, std::size_t, double, std::string>;

/// The number, or nothing when it is not finite.
inline Cell numberCell(double value) { return std::isfinite(value) ? Cell(value) : Cell(); }

inline bool isEmpty(const Cell& cell) { return std::holds_alternative<std::monostate>(cell); }

}  // namespace tool
