// SPDX-License-Identifier: MIT
//
// The one policy that decides when qcInside makes what speeds it up. As in cntr/index/policy.h,
// making it costs time, for which the answers that it speeds up must pay. The times are those of
// bench/inside_bench on one core of an AMD EPYC, g++ 12 at -O3, for smooth stars of n vertices.
//
// n                          16    100   1000  10000
// sort into slabs          0.35    2.1     23    690  us
// winding, all edges         71    230   1900  16000  ns
// winding, slabs             34     34     37     45  ns
// make grid                 2.2    6.4     50    700  us
// point before the grid     170    220    350    440  ns, with all that the first one makes
// point, grid                 3      2      2      2  ns

#pragma once

#include <cstddef>

namespace cntr::sets {

/// The edges of a feature, sorted into slabs by height; `questions` is the number of points that
/// were asked of its edges, including this one. Slabs have paid for themselves after about as many
/// points again, and after 43 for 10,000 vertices.
constexpr bool wantsSlabs(std::size_t questions) noexcept { return questions >= 8; }

/// The grid, for a feature of so many vertices. It takes up to 300 bytes per vertex and waits for
/// several times as many points as would have paid for the time: for 1,000 vertices, 150 would.
constexpr bool wantsInsideGrid(std::size_t vertices, std::size_t questions) noexcept {
  constexpr std::size_t verticesOfEmptyGrid = 32;
  return questions >= 2 * (vertices + verticesOfEmptyGrid);
}

}  // namespace cntr::sets
