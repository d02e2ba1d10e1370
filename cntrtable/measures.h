// SPDX-License-Identifier: MIT
//
// The one list of measures. The columns of the program, its help and docs/measures.md are made from
// it.

#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include <cntrtable/facts.h>

namespace table {

/// Nothing (there is no answer), yes or no, a count, a number, or a text.
using Value = std::variant<std::monostate, bool, std::size_t, double, std::string>;

/// The type of a measure's values, unless they are nothing.
enum class ValueType { eNumber, eCount, eYesOrNo, eText };

struct Measure {
  /// Its name as a column.
  const char* name;
  const char* meaning;
  /// The power of the unit of length in which it is given; 0 for angles and plain numbers.
  short power;
  /// Shown in a table when no columns are chosen.
  bool isStandard;
  /// The facts that `answer` looks at.
  Needs needs;
  /// In the unit of the coordinates: finite, or nothing if the question has no meaning.
  Value (*answer)(const Facts&);
  ValueType type = ValueType::eNumber;
};

/// All measures, in the order of the columns.
std::span<const Measure> allMeasures();

/// The measure of that name, or null.
const Measure* measureNamed(std::string_view name);

}  // namespace table
