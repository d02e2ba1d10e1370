// SPDX-License-Identifier: MIT
//
// Region in Python: construction and contents.

#include <python/src/shapearguments.h>
#include <python/src/shapebindings.h>

namespace nb = nanobind;

namespace python {

namespace {

nb::tuple holesOfRegion(const Region& region) {
  nb::list holes;
  for (const Curve& hole : region.part().holes) holes.append(Contour(hole));
  return nb::tuple(holes);
}

nb::tuple reduced(nb::handle self) {
  return nb::make_tuple(self.type(), nb::make_tuple(self.attr("points"), self.attr("holes"),
                                                    self.attr("label"), self.attr("edges")));
}

}  // namespace

void defineRegion(RegionClass& region) {
  region.def(
      "__init__",
      [](Region* self, nb::handle points, nb::handle holes, nb::handle label, nb::handle edges) {
        Curve outline = curveOf(points, true, label, edges);
        new (self) Region(Part{std::move(outline), holesOf(holes)});
      },
      nb::arg("points").none(), nb::arg("holes") = nb::make_tuple(), nb::arg("label").none() = 0,
      nb::arg("edges") = nb::none(),
      nb::sig("def __init__(self, points: numpy.typing.ArrayLike, "
              "holes: collections.abc.Iterable[Contour | numpy.typing.ArrayLike] = (), "
              "label: int = 0, edges: tuple[numpy.typing.ArrayLike, numpy.typing.ArrayLike] | "
              "None = None) -> None"));
  region.def_prop_ro("holes", holesOfRegion, nb::sig("def holes(self, /) -> tuple[Contour, ...]"),
                     "The boundaries of the holes, copied on each access.");
  region.def("__reduce__", reduced,
             nb::sig("def __reduce__(self) -> tuple[type, tuple[object, ...]]"));
}

}  // namespace python
