// SPDX-License-Identifier: MIT
//
// The measures that `cntr measure` shows: one column each.

#pragma once

#include <optional>
#include <span>
#include <string>

#include <tools/answers/subject.h>
#include <tools/report/cell.h>

namespace tool {

/// A subject and where it comes from.
struct Measured {
  const std::string& file;
  const formats::Feature& feature;
  /// The number of the part, counted from 1; none for a feature as a whole.
  std::optional<std::size_t> part;
  const Subject& subject;
};

struct Measure {
  /// Its name as a column, in JSON and on the command line.
  const char* name;
  const char* meaning;
  /// The power of the unit of length that it is in; 0 for angles and plain numbers.
  int dimension;
  /// Shown in a table unless the user chooses.
  bool isStandard;
  Cell (*answer)(const Measured&);
};

/// All measures, in the order of the columns.
std::span<const Measure> allMeasures();

}  // namespace tool
