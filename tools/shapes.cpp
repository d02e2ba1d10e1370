// SPDX-License-Identifier: MIT

#include <tools/shapes.h>

#include <string>

#include <tools/errors.h>

namespace tool {

namespace {

constexpr auto asGiven = qcContourDefs::eNoIntersectionRepair;

std::string nameOfBadHole(const qcRegion& region, const std::vector<RegionHandle>& holes) {
  std::size_t k = 0;
  while (k + 1 < holes.size() && region.intersections(*holes[k]).empty()) ++k;
  return "hole " + std::to_string(k + 1);
}

/// Twice the area up to which the library takes a polygon for a line.
constexpr double smallestDoubleArea = 1e-6;

/// A clockwise outline with reflex corners has no meaningful moments.
qc_InertiaData solid(const Points& outline) {
  return qf_InertiaDataPolygon(counterClockwise(outline));
}

qc_InertiaData takenAway(const qc_InertiaData& body) {
  return qc_InertiaData(-body.area(), body.centerOfMass(), body.inertiaMatrix());
}

}  // namespace

RegionHandle makeRegion(const Points& outline) {
  return RegionHandle(new qcRegion(outline, asGiven));
}

qcPtrHandle<qcRegion> makeRegionWithHoles(const Part& part) {
  qcPtrHandle<qcRegion> region(new qcRegion(part.outline, asGiven));
  std::vector<RegionHandle> holes;
  for (const Points& hole : part.holes) holes.push_back(makeRegion(hole));
  try {
    region->holes(holes);
  } catch (const qcContourDefs::BadParams&) {
    throw FeatureError(nameOfBadHole(*region, holes) + " crosses or touches its outline");
  }
  return region;
}

qcRegionSet makeRegionSet(const std::vector<Part>& parts, bool withHoles) {
  std::vector<RegionHandle> regions;
  regions.reserve(parts.size());
  for (const Part& part : parts) {
    regions.push_back(withHoles ? makeRegionWithHoles(part) : makeRegion(part.outline));
  }
  return {regions, asGiven};
}

// Relative to the first vertex, which saves digits far from the origin.
double signedArea(const Points& ring) {
  double sum = 0.0;
  for (std::size_t i = 2; i < ring.size(); ++i) {
    const qcVector<2> a = ring[i - 1] - ring[0];
    const qcVector<2> b = ring[i] - ring[0];
    sum += a.x() * b.y() - a.y() * b.x();
  }
  return sum / 2.0;
}

Points counterClockwise(const Points& outline) {
  if (signedArea(outline) >= 0.0) return outline;
  return {outline.rbegin(), outline.rend()};
}

qcRect boxOf(const Points& points) {
  return qcContour(points, false, 0).encloseRect(qcXform<2>::I);
}

bool isArea(double area) { return 2.0 * area > smallestDoubleArea; }

qc_InertiaData inertiaOf(const std::vector<Part>& parts, bool withHoles) {
  qc_InertiaData sum;
  for (const Part& part : parts) {
    sum = sum + solid(part.outline);
    if (!withHoles) continue;
    for (const Points& hole : part.holes) sum = sum + takenAway(solid(hole));
  }
  return sum;
}

}  // namespace tool
