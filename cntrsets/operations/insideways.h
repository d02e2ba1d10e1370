// SPDX-License-Identifier: MIT
//
// How the points asked of a qcInside were answered. Nothing depends on these counts: tests use them
// to assert that the fast paths are taken, not only that all paths give the same answers.

#pragma once

#include <cstddef>

#include <cntrsets/inside.h>

/// Counts the points in the box of all outlines.
struct qc_InsideWays {
  static const qc_InsideWays& of(const qcInside& inside);

  /// By a cell of the grid.
  std::size_t grid = 0;
  /// By winding numbers and regions: with the edges sorted into slabs, and looking at all edges.
  std::size_t slabs = 0;
  std::size_t edges = 0;
};
