// SPDX-License-Identifier: MIT
//
// Contour in Python: how it is made, and what it is made of.

#include <python/src/newarrays.h>
#include <python/src/shapearguments.h>
#include <python/src/shapebindings.h>
#include <python/src/vertexattributes.h>

namespace nb = nanobind;

namespace python {

namespace {

constexpr const char* contourDoc =
    "An ordered list of vertices, open or closed. It never changes.\n\n"
    "`points` has the shape (n, 2) and is copied; a closed contour need not repeat its first\n"
    "vertex. `label` is a number for the caller's own use, from 0 to 4294967295. `edges` is an\n"
    "edge element for each vertex: magnitudes from 0 to 65535, and angles in 256 steps to a turn.";

nb::tuple reduced(nb::handle self) {
  const auto& contour = nb::cast<const Contour&>(self);
  return nb::make_tuple(self.type(), nb::make_tuple(self.attr("points"), contour.isClosed(),
                                                    self.attr("label"), self.attr("edges")));
}

}  // namespace

void bindContour(nb::module_& module) {
  nb::class_<Contour, Shape> contour(module, "Contour", contourDoc);
  contour.def(
      "__init__",
      [](Contour* self, nb::handle points, bool closed, nb::handle label, nb::handle edges) {
        new (self) Contour(curveOf(points, closed, label, edges));
      },
      nb::arg("points"), nb::arg("closed") = true, nb::arg("label") = 0,
      nb::arg("edges") = nb::none(),
      nb::sig("def __init__(self, points: numpy.typing.ArrayLike, closed: bool = True, "
              "label: int = 0, edges: tuple[numpy.typing.ArrayLike, numpy.typing.ArrayLike] | "
              "None = None) -> None"));
  defineVertexAttributes(contour);
  defineEquality(contour);
  contour.def("__reduce__", reduced,
              nb::sig("def __reduce__(self) -> tuple[type, tuple[object, ...]]"));
}

}  // namespace python
