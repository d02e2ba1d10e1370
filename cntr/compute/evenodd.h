// SPDX-License-Identifier: MIT
//
// Containment by even-odd parity, in one pass over the vertices or through the index of the edges.
// It needs no angle and no ray, and answers where conditions (a) to (e) of index/containmentgrid.h
// hold.

#pragma once

#include <span>

#include <cntr/index/containmentgrid.h>
#include <cntr/index/edgeindex.h>

namespace cntr::compute {

/// What the conditions need to know of the vertices alone.
struct Extents {
  /// The box of the vertices, and the largest distance of a vertex from the first one.
  plane::Box bounds;
  double radius = 0.0;
  /// Condition (e): every coordinate is small enough. The numbers above mean nothing otherwise.
  bool areSmall = false;
};

/// REQUIRES: at least one vertex.
Extents extentsOf(std::span<const qcVector<2>> points);

struct Parity {
  index::ContainmentGrid::Answer answer = index::ContainmentGrid::Answer::eUnknown;
  /// The number of edges and boxes that were looked at, plus 1.
  std::size_t work = 1;
};

/// Where p lies with respect to the closed path through `points`, as the ray of rayCrossings()
/// would tell; eUnknown where a condition fails. `extents` are those of the points. O(n).
Parity evenOdd(std::span<const qcVector<2>> points, const Extents& extents, const qcVector<2>& p);

/// The same through the index of the closed path. O(log n) for well-behaved outlines, O(n) at
/// worst.
Parity evenOdd(std::span<const qcVector<2>> points, const index::EdgeIndex& index,
               const Extents& extents, const qcVector<2>& p);

}  // namespace cntr::compute
