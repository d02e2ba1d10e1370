// SPDX-License-Identifier: MIT
//
// The classes for single shapes. All are made before any method is defined, so that signatures know
// them by their Python names.

#include <python/src/shapebindings.h>

namespace nb = nanobind;

namespace python {

void bindShapes(nb::module_& module) {
  ShapeClass shape(module, "Shape", "What Contour, Region and RegionSet have in common.");
  AreasClass areas(module, "Areas", "What Region and RegionSet have in common.");
  ContourClass contour(
      module, "Contour",
      "An ordered list of vertices, open or closed. It never changes.\n\n"
      "`points` has the shape (n, 2) and is copied; a closed contour need not repeat its first\n"
      "vertex. `label` is a number for the caller's own use, from 0 to 4294967295. `edges` is an\n"
      "edge element for each vertex: magnitudes from 0 to 65535, and angles in 256 steps to a\n"
      "turn.");
  RegionClass region(
      module, "Region",
      "An area: an outline and holes. It never changes.\n\n"
      "`points` has the shape (n, 2) and is copied, and so is each of `holes`, which may also be\n"
      "a closed Contour. The direction of a ring does not matter. `label` and `edges` are those\n"
      "of Contour.");
  RegionSetClass set(module, "RegionSet",
                     "Regions that are measured and asked together, in order. It never changes.\n\n"
                     "The regions are copied. What several of them cover counts once.");

  shape.def_prop_ro("closed", &Shape::isClosed,
                    "Whether the edge from the last vertex to the first belongs to it.");
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
