// SPDX-License-Identifier: MIT
//
// The classes for single shapes. All are made before any method is defined, so that signatures know
// them by their Python names.

#include <python/src/shapebindings.h>

namespace nb = nanobind;

namespace python {

void bindShapes(nb::module_& module) {
  ShapeClass shape(module, "Shape", "The base of Contour, Region and RegionSet.");
  AreasClass areas(module, "Areas", "The base of Region and RegionSet.");
  ContourClass contour(
      module, "Contour",
      "An ordered list of vertices, open or closed. Immutable.\n\n"
      "`points` has the shape (n, 2) and is copied; a closed contour need not repeat its\n"
      "first vertex. `label` is a number for the caller's own use, from 0 to 4294967295.\n"
      "`edges` gives an edge element for each vertex: magnitudes from 0 to 65535, and\n"
      "angles in 256ths of a turn.");
  RegionClass region(
      module, "Region",
      "An area: an outline and holes. Immutable.\n\n"
      "`points` has the shape (n, 2) and is copied, and so is each of `holes`, which may\n"
      "also be a closed Contour. The winding of a ring does not matter. `label` and `edges`\n"
      "are as in Contour.");
  RegionSetClass set(module, "RegionSet",
                     "Regions, in order, that are measured and queried together. Immutable.\n\n"
                     "The regions are copied. An area that several of them cover counts once.");

  shape.def_prop_ro("closed", &Shape::isClosed,
                    "Whether an edge joins the last vertex to the first.");
  defineMeasures(shape);
  defineQuestions(shape);
  defineComparison(shape);
  defineDisplay(shape);
  definePicture(module);

  defineMeasuresOfAreas(areas);
  defineQuestionsOfAreas(areas);
  defineSetOperations(areas);

  defineContour(contour);
  defineVertices(contour);
  defineEquality(contour);
  defineMeasuresOfOneCurve(contour);
  defineQuestionsOfOneCurve(contour);
  defineChanges(contour);

  defineRegion(region);
  defineVertices(region);
  defineEquality(region);
  defineMeasuresOfOneCurve(region);
  defineQuestionsOfOneCurve(region);
  defineChanges(region);
  defineWalks(region);

  defineRegionSet(set);
  defineEquality(set);
  defineQuestionsOfSet(set);
  defineChanges(set);
  defineWalks(set);
}

}  // namespace python
