// SPDX-License-Identifier: MIT

#include <cntr/compute/containment.h>

#include <algorithm>

#include <cntr/compute/cleardirection.h>
#include <cntr/plane/tolerances.h>

namespace cntr::compute {

namespace {

bool isOnOneOf(std::span<const qcVector<2>> vertices, const qcVector<2>& p) {
  return std::any_of(vertices.begin(), vertices.end(), [&](const qcVector<2>& vertex) {
    return !((vertex - p).len() > plane::touchDistance);
  });
}

/// A vertex with a NaN coordinate counts as being at p, which no box would show.
bool canUseIndex(const CrossingTarget& target) {
  return target.index != nullptr && target.index->isFinite();
}

qcVector<2> rayDirection(const CrossingTarget& target, const qcVector<2>& p) {
  return canUseIndex(target) ? clearDirection(target.path, *target.index, p)
                             : clearDirection(target.path, p);
}

bool isOnVertex(const CrossingTarget& target, const qcVector<2>& p) {
  if (!canUseIndex(target)) return isOnOneOf(target.path.points, p);
  // Rounding is monotonic: no box is computed to be farther away than the vertices in it.
  constexpr double reach = plane::touchDistance * plane::touchDistance * (1.0 + 1e-9);
  return !target.index->forEachRun(
      [&](const plane::Box& box) { return plane::squaredDistance(box, p) <= reach; },
      [&](std::size_t first, std::size_t last) {
        return !isOnOneOf(target.path.points.subspan(first, last - first), p);
      });
}

}  // namespace

std::size_t rayCrossings(const CrossingTarget& target, double reach, const qcVector<2>& p,
                         bool bothDirections) {
  if (!plane::contains(target.bounds, p)) return 0;
  if (isOnVertex(target, p)) return 1;
  const qcVector<2> ray = rayDirection(target, p) * reach;
  const std::size_t count = countCrossings(target, p, p + ray, false);
  if (!bothDirections) return count;
  return std::min(count, countCrossings(target, p, p - ray, false));
}

}  // namespace cntr::compute
