// SPDX-License-Identifier: MIT
//
// Contour in Python: construction and contents.

#include <python/src/newarrays.h>
#include <python/src/shapearguments.h>
#include <python/src/shapebindings.h>

namespace nb = nanobind;

namespace python {

namespace {

nb::tuple reduced(nb::handle self) {
  const auto& contour = nb::cast<const Contour&>(self);
  return nb::make_tuple(self.type(), nb::make_tuple(self.attr("points"), contour.isClosed(),
                                                    self.attr("label"), self.attr("edges")));
}

}  // namespace

void defineContour(ContourClass& contour) {
  contour.def(
      "__init__",
      [](Contour* self, nb::handle points, bool closed, nb::handle label, nb::handle edges) {
        new (self) Contour(curveOf(points, closed, label, edges));
      },
      nb::arg("points").none(), nb::arg("closed") = true, nb::arg("label").none() = 0,
      nb::arg("edges") = nb::none(),
      nb::sig("def __init__(self, points: numpy.typing.ArrayLike, closed: bool = True, "
              "label: int = 0, edges: tuple[numpy.typing.ArrayLike, numpy.typing.ArrayLike] | "
              "None = None) -> None"));
  contour.def("__reduce__", reduced,
              nb::sig("def __reduce__(self) -> tuple[type, tuple[object, ...]]"));
}

}  // namespace python
