// SPDX-License-Identifier: MIT
//
// A contour as the computing functions see it: a list of vertices and a closed flag. It owns
// nothing.

#pragma once

#include <cstddef>
#include <span>

#include <cntr/plane/tolerances.h>

namespace cntr::plane {

/// One edge with its direction of travel.
struct Edge {
  qcVector<2> from;
  qcVector<2> to;
};

/// Vertices in order, and whether the last one joins the first.
struct Path {
  std::span<const qcVector<2>> points;
  bool closed = false;

  /// n for a closed path of n vertices, n - 1 for an open one.
  std::size_t edgeCount() const noexcept {
    if (points.empty()) return 0;
    return closed ? points.size() : points.size() - 1;
  }

  /// The vertex at which edge k ends: k on a closed path, k + 1 on an open one.
  std::size_t endOf(std::size_t k) const noexcept { return closed ? k : k + 1; }

  /// Edge k in the fixed order: on a closed path edge 0 joins the last vertex to the first.
  /// REQUIRES: k < edgeCount().
  Edge edge(std::size_t k) const noexcept {
    const std::size_t end = endOf(k);
    return {points[end == 0 ? points.size() - 1 : end - 1], points[end]};
  }
};

/// Calls visit(from, to) for every edge in the fixed order.
template <class Visit>
void forEachEdge(const Path& path, Visit visit) {
  if (path.points.empty()) return;
  const qcVector<2>* previous = path.closed ? &path.points.back() : &path.points.front();
  for (std::size_t i = path.closed ? 0 : 1; i < path.points.size(); ++i) {
    visit(*previous, path.points[i]);
    previous = &path.points[i];
  }
}

/// True for an edge whose ends coincide: it has no direction.
inline bool isDegenerate(const Edge& edge) noexcept { return coincide(edge.from, edge.to); }

}  // namespace cntr::plane
