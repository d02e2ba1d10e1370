// SPDX-License-Identifier: MIT
//
// The classes for single shapes and their methods: each source defines methods of one kind, on the
// class whose shapes all have them. Contour and Region, which have no common base of their own,
// share the methods for one curve and its holes.

#pragma once

#include <nanobind/nanobind.h>

#include <python/src/shape.h>

namespace python {

using ShapeClass = nanobind::class_<Shape>;
using ContourClass = nanobind::class_<Contour, Shape>;
using AreasClass = nanobind::class_<Areas, Shape>;
using RegionClass = nanobind::class_<Region, Areas>;
using RegionSetClass = nanobind::class_<RegionSet, Areas>;

/// Makes the classes Shape, Contour, Areas, Region and RegionSet of the module.
void bindShapes(nanobind::module_& module);

// Construction and contents of each class.

void defineContour(ContourClass& contour);
void defineRegion(RegionClass& region);
void defineRegionSet(RegionSetClass& set);

/// Equality, and the absence of a hash.
template <class Class>
void defineEquality(Class& shape) {
  using Self = typename Class::Type;
  shape.def(
      "__eq__", [](const Self& self, const Self& other) { return self == other; },
      nanobind::is_operator(), nanobind::sig("def __eq__(self, other: object, /) -> bool"));
  shape.attr("__hash__") = nanobind::none();
}

/// The number of vertices, vertices, label and edge elements.
template <class Class>
void defineVertices(Class& shape);

// Measures.

void defineMeasures(ShapeClass& shape);
void defineMeasuresOfAreas(AreasClass& areas);
template <class Class>
void defineMeasuresOfOneCurve(Class& shape);

// Questions about points, segments and directions.

void defineQuestions(ShapeClass& shape);
void defineQuestionsOfAreas(AreasClass& areas);
void defineQuestionsOfSet(RegionSetClass& set);
template <class Class>
void defineQuestionsOfOneCurve(Class& shape);

// Other shapes made from them.

void defineSetOperations(AreasClass& areas);
template <class Class>
void defineChanges(Class& shape);
template <class Class>
void defineWalks(Class& shape);

/// Deviation and alignment.
void defineComparison(ShapeClass& shape);

/// How shapes show themselves, also to other packages.
void defineDisplay(ShapeClass& shape);
/// One picture of several shapes.
void definePicture(nanobind::module_& module);

}  // namespace python
