// SPDX-License-Identifier: MIT
//
// Where a segment crosses a path. See qcContour::intersections() for what counts as a crossing.
// Whether a path crosses itself is asked in selfcrossing.h.

#pragma once

#include <cstddef>
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

/// The number of crossings().
std::size_t countCrossings(const CrossingTarget& target, const qcVector<2>& a, const qcVector<2>& b,
                           bool countEndpointTouches);

/// True when there are any crossings().
bool isCrossed(const CrossingTarget& target, const plane::Edge& segment, bool countEndpointTouches);

/// True when an edge of `other` crosses the path of `target`, end touches counted.
bool crosses(const CrossingTarget& target, const plane::Path& other);

}  // namespace cntr::compute
