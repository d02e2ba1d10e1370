// SPDX-License-Identifier: MIT

#include <tools/answers/body.h>

#include <cntrformats/rings.h>

namespace tool {

using namespace formats;

namespace {

/// Twice the area up to which the library takes a polygon for a line.
constexpr double smallestDoubleArea = 1e-6;

/// A clockwise outline with reflex corners has no meaningful moments, so it is turned.
qc_InertiaData solid(const Points& outline) {
  if (signedArea(outline) >= 0.0) return qf_InertiaDataPolygon(outline);
  return qf_InertiaDataPolygon(Points(outline.rbegin(), outline.rend()));
}

qc_InertiaData takenAway(const qc_InertiaData& body) {
  return qc_InertiaData(-body.area(), body.centerOfMass(), body.inertiaMatrix());
}

}  // namespace

bool isArea(double area) { return 2.0 * area > smallestDoubleArea; }

qc_InertiaData inertiaOf(const std::vector<qcRings>& parts, bool withHoles) {
  qc_InertiaData sum;
  for (const qcRings& part : parts) {
    sum = sum + solid(part.outline);
    if (!withHoles) continue;
    for (const Points& hole : part.holes) sum = sum + takenAway(solid(hole));
  }
  return sum;
}

qcVector<2> centreOf(const qcRegionSet& set, bool withHoles) {
  const std::vector<RegionHandle> regions = set.regions();
  return regions.size() == 1 ? regions.front()->centerOfMass(withHoles)
                             : set.centerOfMass(withHoles);
}

qcVector<2> middleOf(const qcRings& part, bool closed) {
  const qc_InertiaData body = closed ? inertiaOf({part}, true) : qc_InertiaData();
  if (isArea(body.area())) return body.centerOfMass();
  const ContourHandle contour = makeContour(part.outline, closed);
  return contour->length() > 0.0 ? contour->meanPosition() : part.outline.front();
}

}  // namespace tool
