// SPDX-License-Identifier: MIT
//
// Where in a file a feature is.

#pragma once

#include <cstddef>

namespace formats {

struct Location {
  /// Features are counted from 1, those that cannot be read included.
  std::size_t number = 1;
  /// The line on which it starts, counted from 1; 0 in formats that are not read by lines.
  std::size_t line = 0;
  /// True when the file is this feature rather than a collection that holds it.
  bool isLone = false;
};

}  // namespace formats
