// SPDX-License-Identifier: MIT

#include <cntr/compute/outline.h>

#include <utility>

#include <cntr/compute/extents.h>
#include <cntr/index/policy.h>

namespace cntr::compute {

Outline::Outline(std::vector<qcVector<2>> points)
    : points_(std::move(points)),
      bounds_(boundingBox(points_)),
      extents_(extentsOf(points_)),
      reach_(2.0 * radiusFromFirst(points_)) {
  if (index::wantsEdgeIndex(path().edgeCount())) edges_.emplace(path());
}

std::optional<Crossing> Outline::firstCrossingWith(const qcVector<2>& a, const qcVector<2>& b,
                                                   bool countEndpointTouches) const {
  return firstCrossing(target(), a, b, countEndpointTouches);
}

std::size_t Outline::countCrossingsWith(const qcVector<2>& a, const qcVector<2>& b,
                                        bool countEndpointTouches, std::size_t most) const {
  return countCrossings(target(), a, b, countEndpointTouches, most);
}

std::size_t Outline::rayCrossingsFrom(const qcVector<2>& p, bool bothDirections) const {
  return rayCrossings(target(), reach_, p, bothDirections);
}

bool Outline::holds(const qcVector<2>& p) const {
  using Location = index::ContainmentGrid::Answer;
  const Location location =
      edges_ ? evenOdd(points_, *edges_, extents_, p).answer : evenOdd(points_, extents_, p).answer;
  if (location != Location::eUnknown) return location == Location::eInside;
  return rayCrossingsFrom(p, false) % 2 == 1;
}

}  // namespace cntr::compute
