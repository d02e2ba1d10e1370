// SPDX-License-Identifier: MIT

#include <cntrformats/shapes.h>

#include <string>

#include <cntrformats/errors.h>

namespace formats {

namespace {

constexpr auto asGiven = qcContourDefs::eNoIntersectionRepair;

std::string nameOfBadHole(const qcRegion& region, const std::vector<RegionHandle>& holes) {
  std::size_t k = 0;
  while (k + 1 < holes.size() && region.intersections(*holes[k]).empty()) ++k;
  return "hole " + std::to_string(k + 1);
}

void addHoles(qcRegion& region, const std::vector<Points>& rings) {
  std::vector<RegionHandle> holes;
  holes.reserve(rings.size());
  for (const Points& ring : rings) holes.emplace_back(new qcRegion(ring, asGiven));
  try {
    region.holes(holes);
  } catch (const qcContourDefs::BadParams&) {
    throw FeatureError(nameOfBadHole(region, holes) + " crosses or touches its outline");
  }
}

}  // namespace

ContourHandle makeContour(const Points& points, bool closed) {
  return ContourHandle(new qcContour(points, closed, 0));
}

qcPtrHandle<qcRegion> makeRegion(const qcRings& part, bool withHoles) {
  qcPtrHandle<qcRegion> region(new qcRegion(part.outline, asGiven));
  if (withHoles) addHoles(*region, part.holes);
  return region;
}

qcRegionSet makeRegionSet(const std::vector<qcRings>& parts, bool withHoles) {
  std::vector<RegionHandle> regions;
  regions.reserve(parts.size());
  for (const qcRings& part : parts) regions.emplace_back(makeRegion(part, withHoles));
  return {regions, asGiven};
}

qcRect boxOf(const Points& points) {
  return makeContour(points, false)->encloseRect(qcXform<2>::I);
}

std::vector<Boundary> boundariesOf(const Geometry& geometry, bool withHoles) {
  const auto& parts = geometry.parts;
  std::vector<Boundary> boundaries;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    Place place;
    if (parts.size() > 1) place.part = i + 1;
    boundaries.push_back({place, makeContour(parts[i].outline, geometry.closed)});
    for (std::size_t k = 0; withHoles && k < parts[i].holes.size(); ++k) {
      place.hole = k + 1;
      boundaries.push_back({place, makeContour(parts[i].holes[k], true)});
    }
  }
  return boundaries;
}

}  // namespace formats
