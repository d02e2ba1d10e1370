// SPDX-License-Identifier: MIT
//
// How a shape's questions were answered. Nothing depends on these counts: with them the tests
// assert that the fast paths are taken, not only that all paths give the same answers.

#pragma once

#include <cstddef>

/// How many questions were answered in each way since the answers were last forgotten; a copy takes
/// the counts along. A contour that remembers nothing does not allocate just to count: its scans
/// and points are counted from the first answer on that it remembers.
struct qc_WaysTaken {
  /// Points by the grid of containment, points by even-odd parity, and points by casting a ray; the
  /// latter two search the edges by index or scan.
  std::size_t grid = 0;
  std::size_t parity = 0;
  std::size_t ray = 0;
  /// Searches of edges, or of a set's regions, with an index at hand, and without.
  std::size_t index = 0;
  std::size_t scan = 0;
  /// Vertices near a point, by a grid that was there already.
  std::size_t vertexGrid = 0;
};
