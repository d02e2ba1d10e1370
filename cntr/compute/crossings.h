// SPDX-License-Identifier: MIT
//
// Where a segment crosses a path. See qcContour::intersections() for what counts as a crossing.
// selfcrossing.h tells whether a path crosses itself.

#pragma once

#include <cstddef>
#include <limits>
#include <optional>
#include <vector>

#include <cntr/index/edgeindex.h>
#include <cntr/plane/path.h>

namespace cntr::compute {

/// A path prepared for questions about crossings.
struct CrossingTarget {
  plane::Path path;
  /// The box of all vertices, see boundingBox(): a segment that does not touch it crosses nothing.
  plane::Box bounds;
  /// The index of the path, or null for a plain scan.
  const index::EdgeIndex* index = nullptr;
};

struct Crossing {
  qcVector<2> point;
  std::size_t edge;
};

/// The crossings of the segment a-b, ascending by (point - a).(b - a). Equal positions are left in
/// the order in which an exchange sort leaves them.
std::vector<Crossing> crossings(const CrossingTarget& target, const qcVector<2>& a,
                                const qcVector<2>& b, bool countEndpointTouches);

/// The first of the crossings(), if there are any. About O(log n) with an index, however many edges
/// the segment crosses beyond it.
std::optional<Crossing> firstCrossing(const CrossingTarget& target, const qcVector<2>& a,
                                      const qcVector<2>& b, bool countEndpointTouches);

/// The number of crossings(), or `most` when there are more.
std::size_t countCrossings(const CrossingTarget& target, const qcVector<2>& a, const qcVector<2>& b,
                           bool countEndpointTouches,
                           std::size_t most = std::numeric_limits<std::size_t>::max());

/// True when there are any crossings().
bool isCrossed(const CrossingTarget& target, const plane::Edge& segment, bool countEndpointTouches);

/// True when an edge of `other` crosses the path of `target`, end touches counted.
bool crosses(const CrossingTarget& target, const CrossingTarget& other);

/// Calls visit(edge) for the edges of `target` in order until it returns false, except runs of
/// edges whose boxes share no point with `box`. Returns false when a visit did.
template <class Visit>
bool forEachEdgeNear(const CrossingTarget& target, const plane::Box& box, Visit visit) {
  const auto visitRun = [&](std::size_t first, std::size_t last) {
    for (std::size_t k = first; k < last; ++k) {
      if (!visit(target.path.edge(k))) return false;
    }
    return true;
  };
  if (target.index == nullptr) return visitRun(0, target.path.edgeCount());
  return target.index->forEachRun([&](const plane::Box& run) { return plane::overlaps(run, box); },
                                  visitRun);
}

}  // namespace cntr::compute
