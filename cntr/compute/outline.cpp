// SPDX-License-Identifier: MIT

#include <cntr/compute/outline.h>

#include <utility>

#include <cntr/compute/extents.h>
#include <cntr/index/policy.h>

namespace cntr::compute {

Outline::Outline(std::vector<qcVector<2>> points)
    : points_(std::move(points)),
      bounds_(boundingBox(points_)),
      reach_(2.0 * radiusFromFirst(points_)) {
  if (index::wantsEdgeIndex(path().edgeCount())) edges_.emplace(path());
}

std::vector<Crossing> Outline::crossingsWith(const qcVector<2>& a, const qcVector<2>& b,
                                             bool countEndpointTouches) const {
  return crossings(target(), a, b, countEndpointTouches);
}

std::size_t Outline::rayCrossingsFrom(const qcVector<2>& p, bool bothDirections) const {
  return rayCrossings(target(), reach_, p, bothDirections);
}

}  // namespace cntr::compute
