// SPDX-License-Identifier: MIT
//
// Region in Python: how it is made, and what it is made of.

#include <python/src/shapearguments.h>
#include <python/src/shapebindings.h>
#include <python/src/vertexattributes.h>

namespace nb = nanobind;

namespace python {

namespace {

constexpr const char* regionDoc =
    "An area: an outline and holes. It never changes.\n\n"
    "`points` has the shape (n, 2) and is copied, and so is each of `holes`, which may also be a\n"
    "closed Contour. The direction of a ring does not matter. `label` and `edges` are those of\n"
    "Contour.";

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

void bindRegion(nb::module_& module) {
  nb::class_<Region, Shape> region(module, "Region", regionDoc);
  region.def(
      "__init__",
      [](Region* self, nb::handle points, nb::handle holes, nb::handle label, nb::handle edges) {
        Curve outline = curveOf(points, true, label, edges);
        new (self) Region(Part{std::move(outline), holesOf(holes)});
      },
      nb::arg("points"), nb::arg("holes") = nb::make_tuple(), nb::arg("label") = 0,
      nb::arg("edges") = nb::none(),
      nb::sig("def __init__(self, points: numpy.typing.ArrayLike, "
              "holes: collections.abc.Iterable[Contour | numpy.typing.ArrayLike] = (), "
              "label: int = 0, edges: tuple[numpy.typing.ArrayLike, numpy.typing.ArrayLike] | "
              "None = None) -> None"));
  defineVertexAttributes(region);
  defineEquality(region);
  region.def_prop_ro("holes", holesOfRegion, nb::sig("def holes(self, /) -> tuple[Contour, ...]"),
                     "The boundaries of the holes: copies, made each time.");
  region.def("__reduce__", reduced,
             nb::sig("def __reduce__(self) -> tuple[type, tuple[object, ...]]"));
}

}  // namespace python
