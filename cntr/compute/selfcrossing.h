// SPDX-License-Identifier: MIT
//
// Whether a path crosses itself.

#pragma once

#include <cntr/compute/crossings.h>

namespace cntr::compute {

/// What a search for a self-crossing has found.
struct SelfCrossingSearch {
  bool crosses = false;
  /// The pairs of edges in different boxes of the index that were compared; none without an index.
  /// No answer depends on it: it lets tests see that strips and parallels rule out most pairs.
  std::size_t comparisons = 0;
};

/// Whether an edge that is not degenerate crosses another one, end touches not counted: either of
/// the two may be the one whose ends must keep clear of the other.
SelfCrossingSearch searchSelfCrossing(const CrossingTarget& target);

/// The same without the count.
inline bool crossesItself(const CrossingTarget& target) {
  return searchSelfCrossing(target).crosses;
}

/// True when the ring of the vertices is star-shaped (plane/starcentre.h) and its edges keep so far
/// apart that none crosses another: then crossesItself() is false and needs no index. False proves
/// nothing. `bounds` is the box of all vertices. O(n), some nanoseconds for each vertex.
bool isClearStar(const plane::Path& path, const plane::Box& bounds);

}  // namespace cntr::compute
