// SPDX-License-Identifier: MIT
//
// Shapes made from others: moved, with fewer vertices, repaired, united. They are made from copies,
// so that nothing waits for the original shape. A result from a single shape has its label; edge
// elements stay with vertices that are kept in place.

#include <nanobind/stl/string.h>

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <cntr/region.h>
#include <cntr/regionst.h>
#include <cntr/simplify.h>
#include <cntrsets/sets.h>
#include <python/src/arrays.h>
#include <python/src/shapebindings.h>
#include <python/src/texts.h>

namespace nb = nanobind;

namespace python {

namespace {

constexpr auto asGiven = qcContourDefs::eNoIntersectionRepair;

/// A shape of the same class.
template <class Same>
Same madeOf(std::vector<Part> parts) {
  if constexpr (std::is_same_v<Same, Contour>) {
    return Contour(std::move(parts.front().outline));
  } else if constexpr (std::is_same_v<Same, Region>) {
    return Region(std::move(parts.front()));
  } else {
    return RegionSet(std::move(parts));
  }
}

/// The parts with each curve replaced by the answer about it, curve by curve in their order.
template <class Change>
std::vector<Part> changed(const Shape& shape, Change change) {
  std::vector<Part> parts;
  for (const Part& part : shape.parts()) {
    parts.push_back({change(part.outline), {}});
    for (const Curve& hole : part.holes) parts.back().holes.push_back(change(hole));
  }
  return parts;
}

template <class Same>
Same transformed(const Same& shape, nb::handle matrix) {
  const std::vector<double> m = matrixOf(matrix, "matrix", 2, 3);
  const qcXform<2> xform(qcMatrix<2>(m[0], m[1], m[3], m[4]), qcVector<2>(m[2], m[5]));
  const nb::gil_scoped_release released;
  return madeOf<Same>(changed(shape, [&xform](const Curve& curve) {
    qcContour image({}, curve.isClosed(), curve.label());
    Curve(curve).contour().map(xform, image);
    return Curve(image);
  }));
}

template <class Element>
std::vector<Element> picked(const std::vector<Element>& elements,
                            const std::vector<std::size_t>& numbers) {
  std::vector<Element> kept;
  if (elements.empty()) return kept;
  kept.reserve(numbers.size());
  for (const std::size_t i : numbers) kept.push_back(elements[i]);
  return kept;
}

template <class Same>
Same simplified(const Same& shape, double tolerance) {
  const nb::gil_scoped_release released;
  std::vector<qcContour> contours;
  for (const Curve* const curve : shape.curves()) contours.push_back(Curve(*curve).contour());
  const std::vector<std::vector<std::size_t>> kept = qf_KeptVertices(contours, tolerance);
  auto next = kept.begin();
  return madeOf<Same>(changed(shape, [&next](const Curve& curve) {
    const std::vector<std::size_t>& numbers = *next++;
    return Curve(qcContour(picked(curve.points(), numbers), curve.isClosed(), curve.label()),
                 {picked(curve.edges.magnitudes, numbers), picked(curve.edges.angles, numbers)});
  }));
}

enum class Walk { eRegularize, eOuterHull };

void repair(const auto& shape, Walk walk, auto& repaired) {
  if (walk == Walk::eRegularize) {
    shape.regularize(repaired);
  } else {
    shape.outerHull(repaired);
  }
}

Region walked(const Region& region, Walk walk) {
  const nb::gil_scoped_release released;
  const qcRegion outline(region.part().outline.points(), asGiven);
  if (!outline.isSelfIntersecting()) return Region(region.part());
  qcRegion repaired;
  repair(outline, walk, repaired);
  return {qcRings{repaired.points(), {}}, region.part().label()};
}

qcRings ringsOf(const qcRegion& region) {
  qcRings rings{region.points(), {}};
  for (const auto& hole : region.holes()) rings.holes.push_back(hole->points());
  return rings;
}

RegionSet walked(const RegionSet& set, Walk walk) {
  const nb::gil_scoped_release released;
  std::vector<qcPtrHandle_const<qcRegion>> regions;
  for (const qcRings& rings : set.rings()) regions.emplace_back(new qcRegion(qf_ToRegion(rings)));
  const qcRegionSet whole(regions, asGiven);
  if (!whole.isSelfIntersecting()) return RegionSet(set.parts());
  qcRegionSet repaired({}, asGiven);
  repair(whole, walk, repaired);
  std::vector<qcRings> parts;
  for (const auto& region : repaired.regions()) parts.push_back(ringsOf(*region));
  return {parts, 0};
}

unsigned long labelOf(const Areas& areas) {
  return areas.parts().size() == 1 ? areas.parts().front().label() : 0;
}

RegionSet madeValid(const Areas& areas, const std::string& rule) {
  const qcPolygon::PolyFillMode mode = ruleNamed(rule);
  const nb::gil_scoped_release released;
  return {qf_MakeValid(areas.rings(), mode), labelOf(areas)};
}

using Operation = std::vector<qcRings> (*)(const std::vector<qcRings>&,
                                           const std::vector<qcRings>&);

template <Operation Combine>
RegionSet combined(const Areas& a, const Areas& b) {
  const nb::gil_scoped_release released;
  return {Combine(a.rings(), b.rings()), 0};
}

}  // namespace

void defineSetOperations(AreasClass& areas) {
  areas.def("make_valid", madeValid, nb::arg("rule") = "nonzero",
            nb::sig("def make_valid(self, rule: typing.Literal['nonzero', 'evenodd'] = 'nonzero') "
                    "-> RegionSet"),
            "The set that is filled by the rule, as regions that neither cross nor overlap: valid\n"
            "simple features in normal form, with the same area.");
  areas.def("__or__", combined<qf_Union>, nb::is_operator(),
            nb::sig("def __or__(self, other: Areas, /) -> RegionSet"), "The union.");
  areas.def("__and__", combined<qf_Intersection>, nb::is_operator(),
            nb::sig("def __and__(self, other: Areas, /) -> RegionSet"), "The intersection.");
  areas.def("__sub__", combined<qf_Difference>, nb::is_operator(),
            nb::sig("def __sub__(self, other: Areas, /) -> RegionSet"),
            "The difference: this shape without the other.");
  areas.def("__xor__", combined<qf_SymmetricDifference>, nb::is_operator(),
            nb::sig("def __xor__(self, other: Areas, /) -> RegionSet"),
            "The symmetric difference.");
}

template <class Class>
void defineChanges(Class& shape) {
  using Self = typename Class::Type;
  const auto name = nb::cast<std::string>(shape.attr("__name__"));
  const std::string transform = "def transform(self, matrix: numpy.typing.ArrayLike) -> " + name;
  shape.def("transform", transformed<Self>, nb::arg("matrix").none(), nb::sig(transform.c_str()),
            "The shape mapped by a matrix of shape (2, 3): (x, y) moves to matrix @ (x, y, 1).\n"
            "Edge elements are dropped.");
  shape.def("simplify", simplified<Self>, nb::arg("tolerance"),
            "The shape with only those vertices that are needed to stay within the tolerance.\n"
            "Rings that did not cross before do not cross afterwards. Remaining vertices keep\n"
            "their edge elements.");
}

template <class Class>
void defineWalks(Class& shape) {
  using Self = typename Class::Type;
  shape.def(
      "regularize", [](const Self& self) { return walked(self, Walk::eRegularize); },
      "The shape repaired by a walk along outlines that cross, which turns at every\n"
      "crossing. Areas that are covered twice are left out, and so are holes; a shape that\n"
      "does not cross itself is unchanged. make_valid() keeps the area instead.");
  shape.def(
      "outer_hull", [](const Self& self) { return walked(self, Walk::eOuterHull); },
      "The result of the same walk without loops that lie inside others. A shape that does\n"
      "not cross itself is unchanged.");
}

template void defineChanges(ContourClass& shape);
template void defineChanges(RegionClass& shape);
template void defineChanges(RegionSetClass& shape);
template void defineWalks(RegionClass& shape);
template void defineWalks(RegionSetClass& shape);

}  // namespace python
