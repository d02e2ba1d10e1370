// SPDX-License-Identifier: MIT
//
// What is done to shapes while allocations fail.

#pragma once

#include <ostream>

/// Something that can be done to a shape.
template <class Shape>
struct Operation {
  const char* name;
  void (*run)(Shape& shape);
  /// False for what needs no allocation.
  bool allocates = true;
};

template <class Shape>
void PrintTo(const Operation<Shape>& operation, std::ostream* out) {
  *out << operation.name;
}
