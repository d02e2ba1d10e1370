// SPDX-License-Identifier: MIT
//
// The one policy that decides when an index is built. Making an index costs time, for which the
// answers that it speeds up must pay. The times given with each threshold are those of
// bench/index_bench on one core of an AMD EPYC, g++ 12 at -O3, for smooth stars of n vertices: run
// it to choose new thresholds. Whether a containment grid can answer for an outline at all is told
// by ContainmentGrid::isPossible().
//
// A vertex grid has no threshold: it is made for the first query with a tolerance. For 1,000
// vertices it takes 13 us to make and 0.05 us to ask, a scan takes 2.5 us.

#pragma once

#include <cstddef>

namespace cntr::index {

/// Boxes over the edges of a path, made for the first question about its edges.
///
/// n                   16    32    64
/// make               0.08  0.14  0.24  us
/// segment, index       31    31    21  ns
/// segment, scan        65   116   180
/// nearest, index       59    69    72
/// nearest, scan        48    87   182
constexpr bool wantsEdgeIndex(std::size_t edges) noexcept { return edges >= 32; }

/// The same for the vertex farthest in a direction; `directions` is the number of directions asked
/// for so far, including this one. A scan takes 0.91 us for 1,000 vertices and 85 us for 100,000,
/// the index 0.14 and 0.74 us; making the index takes 3.4 and 330 us, as long as 4 scans.
constexpr bool wantsIndexForDirections(std::size_t directions) noexcept { return directions > 4; }

// Containment. A question that no grid answers is answered by even-odd parity (compute/evenodd.h)
// and costs work: the number of vertices, edges and boxes that it looks at, summed over the
// questions; 1 to 2 ns each. Where parity fails, the ray is cast, for which no further index is
// made.
//
// n                       16    100   1000  10000  100000
// take the extents      0.03   0.16    1.5     15     154  us
// parity, scan            17     99    720   7900   80000  ns
// make boxes            0.08   0.34    4.2     35     424  us
// parity, boxes           16     20     22     35      24  ns (spikes: 3000 for 100,000)
// make grid              3.5     10     92    960   15400  us
// grid                     6      7      6      6       5  ns

/// The extents of the vertices are remembered from the second point on: a shape asked about a
/// single point allocates nothing.
constexpr bool remembersExtents(std::size_t work) noexcept { return work > 0; }

/// Boxes over the edges, once as much work has been done as it takes to make them, or if they
/// already exist.
constexpr bool wantsEdgeIndexForParity(std::size_t vertices, std::size_t work,
                                       bool isThere) noexcept {
  constexpr std::size_t workPerVertex = 4;
  return wantsEdgeIndex(vertices) && (isThere || work >= workPerVertex * vertices);
}

/// The grid, once as much work has been done as it takes to make it.
constexpr bool wantsContainmentGrid(std::size_t vertices, std::size_t work) noexcept {
  constexpr std::size_t workPerVertex = 64;
  constexpr std::size_t verticesOfEmptyGrid = 32;
  return work >= workPerVertex * (vertices + verticesOfEmptyGrid);
}

/// The regions of a set by place, made for its first question.
///
/// regions              4     8    16    32
/// make               120   150   160   290  ns
/// point, index        22    19    19    23
/// point, scan         28    46    75   123
constexpr bool wantsRegionIndex(std::size_t regions) noexcept { return regions >= 8; }

/// The edges of all regions of a set by place, for one search for crossings that has met this many
/// pairs of regions whose boxes share a point. For 10,000 nested squares, a pair takes 90 ns, all
/// pairs 4.6 s, the search by edges 0.06 s.
constexpr bool wantsEdgesOfSet(std::size_t regions, std::size_t pairs) noexcept {
  constexpr std::size_t pairsPerRegion = 16;
  return pairs >= pairsPerRegion * regions;
}

/// Strips and parallels, for one search for a self-crossing that has compared edges in different
/// boxes `comparisons` times. Making them takes 12 ns per edge, a comparison 8 ns.
constexpr bool wantsStrips(std::size_t edges, std::size_t comparisons) noexcept {
  return comparisons >= edges;
}

}  // namespace cntr::index
