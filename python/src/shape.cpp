// SPDX-License-Identifier: MIT

#include <python/src/shape.h>

#include <algorithm>
#include <string>

#include <cntr/contourdefs.h>

namespace python {

namespace {

bool areEqual(const Curve& a, const Curve& b) {
  return a.contour() == b.contour() && a.edges == b.edges;
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
  parts.reserve(rings.size());
  for (const qcRings& part : rings) parts.push_back(partOf(part, label));
  return parts;
}

/// "outline", or "part 2, hole 1"; of a line, "line".
std::wstring nameOf(const Shape& shape, std::size_t part, std::size_t ring) {
  const bool isOneOfSeveral = shape.parts().size() > 1;
  const std::wstring place = isOneOfSeveral ? L"part " + std::to_wstring(part + 1) + L", " : L"";
  if (ring > 0) return place + L"hole " + std::to_wstring(ring);
  return place + (shape.isClosed() ? L"outline" : L"line");
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

void Shape::requireVertices(std::size_t fewest) const {
  if (parts_.empty()) throw qcContourDefs::EmptyRegionSet(L"the set has no regions");
  for (std::size_t part = 0; part < parts_.size(); ++part) {
    for (std::size_t ring = 0; ring <= parts_[part].holes.size(); ++ring) {
      const Curve& curve = ring == 0 ? parts_[part].outline : parts_[part].holes[ring - 1];
      const std::size_t count = curve.points().size();
      if (count >= fewest) continue;
      throw qcContourDefs::EmptyContour(
          nameOf(*this, part, ring) + L" has " + std::to_wstring(count) +
          (count == 1 ? L" point" : L" points") + L", but needs " + std::to_wstring(fewest));
    }
  }
}

Contour::Contour(Curve curve) : Shape(listOf({std::move(curve), {}})) {}

Region::Region(Part part) : Areas(listOf(std::move(part))) {}

Region::Region(const qcRings& rings, unsigned long label) : Region(partOf(rings, label)) {}

RegionSet::RegionSet(const std::vector<qcRings>& parts, unsigned long label)
    : Areas(partsOf(parts, label)) {}

}  // namespace python
