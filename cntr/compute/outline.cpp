// SPDX-License-Identifier: MIT

#include <cntr/compute/outline.h>

#include <cntr/compute/extents.h>

namespace cntr::compute {

CrossingTarget Outline::target() const {
  if (!bounds_) bounds_ = boundingBox(points_);
  const plane::Path path{points_, true};
  if (!edges_ && index::EdgeIndex::isWorthwhile(path)) {
    edges_ = std::make_unique<index::EdgeIndex>(path);
  }
  return {path, *bounds_, edges_.get()};
}

std::vector<Crossing> Outline::crossingsWith(const qcVector<2>& a, const qcVector<2>& b,
                                             bool countEndpointTouches) const {
  return crossings(target(), a, b, countEndpointTouches);
}

std::size_t Outline::rayCrossingsFrom(const qcVector<2>& p, bool bothDirections) const {
  if (!bounds_) bounds_ = boundingBox(points_);
  if (!plane::overlaps(*bounds_, plane::edgeBox(p, p))) return 0;
  if (!reach_) reach_ = 2.0 * radiusFromFirst(points_);
  return rayCrossings(target(), *reach_, p, bothDirections);
}

}  // namespace cntr::compute
