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

/// Calls visit(place, ring) for every outline or line, each followed by its holes if asked for.
template <class Visit>
void forEachRing(const std::vector<qcRings>& parts, bool withHoles, const Visit& visit) {
  for (std::size_t i = 0; i < parts.size(); ++i) {
    Place place;
    if (parts.size() > 1) place.part = i + 1;
    visit(place, parts[i].outline);
    for (std::size_t k = 0; withHoles && k < parts[i].holes.size(); ++k) {
      place.hole = k + 1;
      visit(place, parts[i].holes[k]);
    }
  }
}

}  // namespace

qcPtrHandle<qcContour> makeContour(const Points& points, bool closed) {
  return qcPtrHandle<qcContour>(new qcContour(points, closed, 0));
}

qcPtrHandle<qcRegion> makeRegion(const qcRings& part, bool withHoles) {
  qcPtrHandle<qcRegion> region(new qcRegion(part.outline, asGiven));
  if (withHoles) addHoles(*region, part.holes);
  return region;
}

qcRect boxOf(const Points& points) {
  return makeContour(points, false)->encloseRect(qcXform<2>::I);
}

std::vector<qcContour> curvesOf(const std::vector<qcRings>& parts, bool closed) {
  std::vector<qcContour> curves;
  forEachRing(parts, true, [&](const Place& /*place*/, const Points& ring) {
    curves.emplace_back(ring, closed, 0);
  });
  return curves;
}

std::vector<Boundary> boundariesOf(const Geometry& geometry, bool withHoles) {
  std::vector<Boundary> boundaries;
  forEachRing(geometry.parts, withHoles, [&](const Place& place, const Points& ring) {
    boundaries.push_back({place, makeContour(ring, geometry.closed)});
  });
  return boundaries;
}

}  // namespace formats
