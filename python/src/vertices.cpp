// SPDX-License-Identifier: MIT
//
// What Contour and Region show of their curve or outline.

#include <cstdint>
#include <span>

#include <python/src/newarrays.h>
#include <python/src/shapebindings.h>

namespace nb = nanobind;

namespace python {

namespace {

const Curve& outlineOf(nb::handle shape) {
  return nb::cast<const Shape&>(shape).parts().front().outline;
}

/// None, or the pair of arrays.
nb::object edgesOf(nb::handle shape) {
  const EdgeElements& edges = outlineOf(shape).edges;
  if (edges.magnitudes.empty()) return nb::none();
  return nb::make_tuple(viewOf(std::span(edges.magnitudes), shape),
                        viewOf(std::span(edges.angles), shape));
}

}  // namespace

template <class Class>
void defineVertices(Class& shape) {
  shape.def(
      "__len__", [](nb::handle self) { return outlineOf(self).points().size(); },
      "The number of vertices, not counting those of holes.");
  shape.def_prop_ro(
      "points", [](nb::handle self) { return viewOfPoints(outlineOf(self).points(), self); },
      nb::sig("def points(self, /) -> numpy.typing.NDArray[numpy.float64]"),
      "The vertices, shape (n, 2): a read-only view, not a copy.");
  shape.def_prop_ro(
      "label", [](nb::handle self) { return outlineOf(self).label(); },
      "A number for the caller's own use; 0 unless given.");
  shape.def_prop_ro("edges", edgesOf,
                    nb::sig("def edges(self, /) -> tuple[numpy.typing.NDArray[numpy.uint16], "
                            "numpy.typing.NDArray[numpy.uint8]] | None"),
                    "The magnitudes and angles of the edge elements, read-only views, or None.");
}

template void defineVertices(ContourClass& shape);
template void defineVertices(RegionClass& shape);

}  // namespace python
