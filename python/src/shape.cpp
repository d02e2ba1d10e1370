// SPDX-License-Identifier: MIT

#include <python/src/shape.h>

#include <algorithm>

namespace python {

namespace {

bool areEqual(const Curve& a, const Curve& b) {
  return a.contour == b.contour && a.edges == b.edges;
}

std::vector<Part> listOf(Part part) {
  std::vector<Part> parts;
  parts.push_back(std::move(part));
  return parts;
}

Part partOf(const qcRings& rings, unsigned long label) {
  Part part{Curve(qcContour(rings.outline, true, label)), {}};
  for (const std::vector<qcVector<2>>& hole : rings.holes)
    part.holes.emplace_back(qcContour(hole, true, 0));
  return part;
}

std::vector<Part> partsOf(const std::vector<qcRings>& rings, unsigned long label) {
  std::vector<Part> parts;
  for (const qcRings& part : rings) parts.push_back(partOf(part, label));
  return parts;
}

}  // namespace

bool Part::operator==(const Part& other) const {
  return areEqual(outline, other.outline) &&
         std::equal(holes.begin(), holes.end(), other.holes.begin(), other.holes.end(), areEqual);
}

std::vector<qcRings> Shape::rings() const {
  std::vector<qcRings> rings;
  for (const Part& part : parts_) {
    rings.push_back({part.outline.points(), {}});
    for (const Curve& hole : part.holes) rings.back().holes.push_back(hole.points());
  }
  return rings;
}

std::vector<const Curve*> Shape::curves() const {
  std::vector<const Curve*> curves;
  for (const Part& part : parts_) {
    curves.push_back(&part.outline);
    for (const Curve& hole : part.holes) curves.push_back(&hole);
  }
  return curves;
}

Contour::Contour(Curve curve) : Shape(listOf({std::move(curve), {}})) {}

Region::Region(Part part) : Shape(listOf(std::move(part))) {}

Region::Region(const qcRings& rings, unsigned long label) : Region(partOf(rings, label)) {}

RegionSet::RegionSet(const std::vector<qcRings>& parts, unsigned long label)
    : Shape(partsOf(parts, label)) {}

}  // namespace python
