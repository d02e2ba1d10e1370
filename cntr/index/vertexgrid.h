// SPDX-License-Identifier: MIT
//
// The vertices of a contour in a grid of square cells, one grid for each tolerance: finds the
// vertices within the tolerance of a point by looking at nine cells.

#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

#include <platform/core/vector.h>

namespace cntr::index {

/// Vertex indices by cell. The cell of a coordinate v is v * (1 / tolerance) rounded to the nearest
/// integer, halves away from zero; numbers beyond 64 bits go to the outermost cells.
class VertexGrid {
 public:
  VertexGrid(std::span<const qcVector<2>> points, double tolerance);

  double tolerance() const noexcept { return tolerance_; }

  /// The vertices nearer than the tolerance to p: cell by cell around p's (x-major), ascending
  /// within a cell. REQUIRES: `points` are those that the grid was made of.
  std::vector<int> near(std::span<const qcVector<2>> points, const qcVector<2>& p) const;

  /// Ordered x-major, as near() goes through them.
  struct Cell {
    std::int64_t x;
    std::int64_t y;
    // NOLINTNEXTLINE(modernize-use-nullptr): clang-tidy takes the default for a null.
    auto operator<=>(const Cell&) const noexcept = default;
  };
  static Cell cellOf(const qcVector<2>& p, double tolerance) noexcept;

 private:
  struct CellHash {
    std::size_t operator()(const Cell& cell) const noexcept;
  };

  double tolerance_;
  std::unordered_map<Cell, std::vector<int>, CellHash> cells_;
};

}  // namespace cntr::index
