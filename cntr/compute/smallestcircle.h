// SPDX-License-Identifier: MIT
//
// The points on which the smallest circle around a set of points rests.

#pragma once

#include <array>
#include <cstddef>
#include <span>

#include <platform/core/vector.h>

namespace cntr::compute {

/// One point, the two ends of a diameter, or three points of an acute triangle, counter-clockwise.
struct CircleSupport {
  std::array<qcVector<2>, 3> points;
  std::size_t count = 0;
};

/// The support of the smallest circle around the vertices of a hull of exactHull(), which is not
/// empty. Decided by exact predicates: no point lies outside the circle, and no smaller one holds
/// them all. If the circle has several supports, which one is returned depends on the hull alone.
///
/// Expected O(h) for h vertices, taken in a random order that comes from a fixed seed; E. Welzl,
/// Smallest Enclosing Disks (Balls and Ellipsoids), 1991. A search in doubles for a good start, B.
/// Gaertner, Fast and Robust Smallest Enclosing Balls, 1999, leaves one pass over the vertices in
/// all but odd cases.
CircleSupport smallestCircle(std::span<const qcVector<2>> hull);

}  // namespace cntr::compute
