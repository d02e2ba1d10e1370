// SPDX-License-Identifier: MIT
//
// The convex hull by exact turns, the basis of the smallest rectangle, width and circle. The hull
// that programs ask for, platform/core/hull.h, decides its turns in plain doubles.

#pragma once

#include <span>
#include <vector>

#include <platform/core/vector.h>

namespace cntr::compute {

/// The hull of a set of points: counter-clockwise from the lowest-leftmost vertex (smallest x, then
/// smallest y), without duplicates and without points in the middle of an edge.
struct ExactHull {
  /// The vertices times 2^exponent. Polynomials of degree six in their coordinates are exact.
  std::vector<qcVector<2>> vertices;
  int exponent = 0;
  /// False when a coordinate is infinite; then there are no vertices.
  bool finite = true;
};

/// The hull of `points`; those with a NaN coordinate are left out. Exact where every coordinate is
/// 0 or at least 1e-80 of the largest. O(n log n): points that lie clearly inside are found in O(n)
/// by bands along x and left out before the others are sorted (S. G. Akl, G. T. Toussaint, A Fast
/// Convex Hull Algorithm, 1978); the turns are those of A. M. Andrew, Another Efficient Algorithm
/// for Convex Hulls in Two Dimensions, 1979.
ExactHull exactHull(std::span<const qcVector<2>> points);

}  // namespace cntr::compute
