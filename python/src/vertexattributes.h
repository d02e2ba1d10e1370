// SPDX-License-Identifier: MIT
//
// What Contour and Region show of the curve that they are, or whose outline they are.

#pragma once

#include <nanobind/nanobind.h>

#include <cstdint>
#include <span>

#include <python/src/newarrays.h>
#include <python/src/shape.h>

namespace python {

inline const Curve& outlineOf(nanobind::handle shape) {
  return nanobind::cast<const Shape&>(shape).parts().front().outline;
}

/// None, or the pair of arrays.
inline nanobind::object edgesOf(nanobind::handle shape) {
  const EdgeElements& edges = outlineOf(shape).edges;
  if (edges.magnitudes.empty()) return nanobind::none();
  return nanobind::make_tuple(viewOf(std::span(edges.magnitudes), shape),
                              viewOf(std::span(edges.angles), shape));
}

template <class Class>
void defineVertexAttributes(Class& shape) {
  shape.def("__len__", [](nanobind::handle self) { return outlineOf(self).points().size(); });
  shape.def_prop_ro(
      "points", [](nanobind::handle self) { return viewOfPoints(outlineOf(self).points(), self); },
      nanobind::sig("def points(self, /) -> numpy.typing.NDArray[numpy.float64]"),
      "The vertices, shape (n, 2): a read-only view without a copy.");
  shape.def_prop_ro(
      "label", [](nanobind::handle self) { return outlineOf(self).contour.label(); },
      "A number for the caller's own use; 0 unless given.");
  shape.def_prop_ro("edges", edgesOf,
                    nanobind::sig("def edges(self, /) -> tuple[numpy.typing.NDArray[numpy.uint16], "
                                  "numpy.typing.NDArray[numpy.uint8]] | None"),
                    "The magnitudes and angles of the edge elements, read-only views, or None.");
}

}  // namespace python
