// SPDX-License-Identifier: MIT
//
// The smallest of the rectangles and strips around a convex polygon, one of which lies on each
// edge.

#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include <platform/core/vector.h>

namespace cntr::compute {

/// The rectangle around a convex polygon with a side on the edge from `from` to `to`: the vertices
/// that its other sides go through.
struct Caliper {
  std::size_t from = 0;
  std::size_t to = 0;
  /// The first and the last vertex in the direction of the edge, and the one farthest from it.
  std::size_t back = 0;
  std::size_t front = 0;
  std::size_t top = 0;
};

/// The rectangle with the smallest area; of several, the one on the first edge from vertex 0.
/// Exact: equal areas compare equal. O(h) for h vertices. REQUIRES: a hull of exactHull() with at
/// least 2 vertices.
///
/// Rotating calipers: G. T. Toussaint, Solving Geometric Problems with the Rotating Calipers, 1983;
/// that a side lies on an edge: H. Freeman, R. Shapira, Determining the Minimum-Area Encasing
/// Rectangle for an Arbitrary Closed Curve, 1975.
Caliper smallestRectangle(std::span<const qcVector<2>> hull);

/// The rectangle with the smallest width across its edge, by the same rules.
Caliper narrowestStrip(std::span<const qcVector<2>> hull);

/// Whether the rectangle is at least as long along its edge as across it. Exact.
bool isLongAlongEdge(std::span<const qcVector<2>> hull, const Caliper& caliper);

}  // namespace cntr::compute
