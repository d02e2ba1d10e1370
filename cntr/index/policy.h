// SPDX-License-Identifier: MIT
//
// The one policy that decides when an index is built. An index costs time to make; the answers it
// speeds up have to pay for it. The times beside each threshold are those of bench/index_bench on
// one core of an AMD EPYC, g++ 12 at -O3, for smooth stars of n vertices: run it to choose anew.
// Whether a grid of containment can answer for an outline at all is for that grid to say
// (ContainmentGrid::isPossible()).
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

/// The same for the vertex farthest in a direction: `directions` were asked for so far, this one
/// included. To find one by scanning takes 0.91 us for 1,000 vertices and 85 us for 100,000, by the
/// index 0.14 and 0.74 us; making that takes 3.4 and 330 us, as long as 4 scans.
constexpr bool wantsIndexForDirections(std::size_t directions) noexcept { return directions > 4; }

/// The containment grid: `queries` points were asked about so far, this one included.
///
/// n                  100  1000  10000  100000
/// make               7.2    50    420    6600  us
/// one point, by ray  0.7   1.3    2.8     7.3
/// made after           2    16    157    1563  points
/// costs as much as    10    39    150     900  rays
constexpr bool wantsContainmentGrid(std::size_t vertices, std::size_t queries) noexcept {
  constexpr std::size_t verticesPerQuery = 64;
  return queries >= 1 + vertices / verticesPerQuery;
}

/// The regions of a set by place, made for its first question.
///
/// regions              4     8    16    32
/// make               120   150   160   290  ns
/// point, index        22    19    19    23
/// point, scan         28    46    75   123
constexpr bool wantsRegionIndex(std::size_t regions) noexcept { return regions >= 8; }

/// Strips and parallels, for one search for a self-crossing that has compared edges in different
/// boxes `comparisons` times. They take 12 ns for each edge to make, a comparison takes 8 ns.
constexpr bool wantsStrips(std::size_t edges, std::size_t comparisons) noexcept {
  return comparisons >= edges;
}

}  // namespace cntr::index
