// SPDX-License-Identifier: MIT
//
// How a shape's questions were answered. Nothing depends on these counts: tests use them to assert
// that the fast paths are taken, not only that all paths give the same answers.

#pragma once

#include <cstddef>

/// How many questions have been answered in each way since the answers were last forgotten; a copy
/// takes the counts along. A contour that remembers nothing does not allocate just to count: its
/// scans and points are counted from the first remembered answer on.
struct qc_WaysTaken {
  /// Points by the containment grid, by even-odd parity, and by casting a ray; the latter two
  /// search the edges by index or scan.
  std::size_t grid = 0;
  std::size_t parity = 0;
  std::size_t ray = 0;
  /// Searches of edges, or of a set's regions, with an index and without.
  std::size_t index = 0;
  std::size_t scan = 0;
  /// Vertices near a point, by a grid that already existed.
  std::size_t vertexGrid = 0;
};
