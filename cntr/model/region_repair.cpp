// SPDX-License-Identifier: MIT
//
// Repair of a region whose boundary crosses itself, and the joining of two regions that cross.

#include <cntr/compute/repair.h>
#include <cntr/model/regioncache.h>

namespace {

/// The distance of the side test from an edge, in median edge lengths.
constexpr double probeShare = 0.01;

[[noreturn]] void throwInvalidContour() { throw qcContourDefs::BadParams(L"invalid contour"); }

}  // namespace

void qcRegion::repair(qcContourDefs::IntersectionMode mode) {
  if (mode == qcContourDefs::eOuterHull) outerHull(*this);
  if (mode == qcContourDefs::eRegularize) regularize(*this);
}

void qcRegion::regularize(qcRegion& dest) const { assignRepaired(dest, false); }

void qcRegion::outerHull(qcRegion& dest) const { assignRepaired(dest, true); }

void qcRegion::assignRepaired(qcRegion& dest, bool outerHullMode) const {
  if (!isSelfIntersecting()) {
    dest = *this;
    return;
  }
  qcPtrHandle<qcRegion>& known =
      outerHullMode ? regionCache().outerHull : regionCache().regularized;
  if (!known) {
    const qcPtrHandle<qcRegion> made(new qcRegion);
    outerHullRegularize(*made, outerHullMode);
    known = made;
  }
  const qcPtrHandle<qcRegion> kept = known;
  dest = *kept;
}

void qcRegion::outerHullRegularize(qcRegion& dest, bool outerHullMode) const {
  checkEmptyContour();
  const cntr::compute::Outline boundary(points());
  auto repaired = cntr::compute::traceBoundary(boundary, probeShare * medianFeatureSize());
  if (repaired && outerHullMode) repaired = cntr::compute::outerLoop(*repaired);
  if (!repaired) throwInvalidContour();
  dest = qcRegion(*repaired, qcContourDefs::eNoIntersectionRepair);
}

void qcRegion::splice(const qcRegion& other, qcRegion& dest) const {
  other.qcContour::checkEmptyContour();
  const auto joined = cntr::compute::splice(path(), other.crossingTarget());
  if (!joined) throw qcContourDefs::BadParams(L"spliced regions do not intersect");
  dest = qcRegion(*joined, qcContourDefs::eNoIntersectionRepair);
}
