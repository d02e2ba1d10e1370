// SPDX-License-Identifier: MIT
//
// The base of the classes for single shapes.

#include <python/src/shapebindings.h>

namespace nb = nanobind;

namespace python {

void bindShapes(nb::module_& module) {
  nb::class_<Shape> shape(module, "Shape",
                          "What a Contour, a Region and a RegionSet have in common.");
  shape.def_prop_ro("closed", &Shape::isClosed,
                    "Whether the edge from the last vertex to the first belongs to it.");
  bindContour(module);
  bindRegion(module);
  bindRegionSet(module);
}

}  // namespace python
