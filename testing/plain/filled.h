// SPDX-License-Identifier: MIT
//
// What outlines with holes fill, by the definition: winding numbers counted ring by ring and point
// by point, and the area summed over vertical strips between all vertices and crossings.

#pragma once

#include <vector>

#include <testing/plain/geometry.h>

namespace plain {

/// An outline and its holes, in any direction.
struct Part {
  Points outline;
  std::vector<Points> holes;
};
using Parts = std::vector<Part>;

enum class Rule { nonZero, evenOdd };

/// How often the ring runs around `p`, counter-clockwise counting as positive. Meaningless for
/// points on it.
int windingNumber(const Points& ring, const Point& p);

/// Whether `p` is in what the parts fill: by `nonZero` when some part's outline winds around it and
/// none of that part's holes does; by `evenOdd` when the winding numbers of all rings sum to an odd
/// number.
bool fills(const Parts& parts, Rule rule, const Point& p);

/// The distance from `p` to the nearest edge of any ring, infinite without edges.
double distanceToRings(const Parts& parts, const Point& p);

/// The area of what the parts fill. O(n^3) for n vertices.
double filledArea(const Parts& parts, Rule rule);

}  // namespace plain
