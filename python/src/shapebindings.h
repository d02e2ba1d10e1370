// SPDX-License-Identifier: MIT
//
// The classes for single shapes, and what several of them can do, a source each.

#pragma once

#include <nanobind/nanobind.h>

#include <python/src/shape.h>

namespace python {

/// Makes the classes Shape, Contour, Region and RegionSet of the module.
void bindShapes(nanobind::module_& module);

/// Compares shapes of the same class, which cannot be hashed.
template <class Class>
void defineEquality(Class& shape) {
  using Self = typename Class::Type;
  shape.def(
      "__eq__", [](const Self& self, const Self& other) { return self == other; },
      nanobind::is_operator(), nanobind::sig("def __eq__(self, other: object, /) -> bool"));
  shape.attr("__hash__") = nanobind::none();
}

void bindContour(nanobind::module_& module);
void bindRegion(nanobind::module_& module);
void bindRegionSet(nanobind::module_& module);

}  // namespace python
