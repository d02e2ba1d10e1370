// SPDX-License-Identifier: MIT
//
// The vertices of a contour in a grid of square cells, one grid for each tolerance: finds the
// vertices within the tolerance of a point by looking at nine cells.

#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <span>
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
  /// within a cell. REQUIRES: `points` are those the grid was made from.
  std::vector<int> near(std::span<const qcVector<2>> points, const qcVector<2>& p) const;

  /// Ordered x-major, as near() visits them.
  struct Cell {
    std::int64_t x;
    std::int64_t y;
    // NOLINTNEXTLINE(modernize-use-nullptr): clang-tidy takes the default for a null.
    auto operator<=>(const Cell&) const noexcept = default;
  };
  static Cell cellOf(const qcVector<2>& p, double tolerance) noexcept;

 private:
  /// The vertices of a cell: `count` of them from indices_[first] on. A free slot has a count of 0.
  struct Slot {
    Cell cell{};
    std::uint32_t first = 0;
    std::uint32_t count = 0;
  };

  /// The slot of the cell, or the free one where it would be.
  std::size_t slotOf(const Cell& cell) const noexcept;
  void countVertices(std::span<const qcVector<2>> points);
  void fillCells(std::span<const qcVector<2>> points);

  /// Notes that there is a vertex in the block of 4 by 4 cells around this one.
  void occupyBlockOf(const Cell& cell) noexcept;
  /// False when no cell from `first` to `last` holds a vertex: for most points this is found in one
  /// or two looks, where nine cells would have to be looked up.
  bool mayHoldVertex(const Cell& first, const Cell& last) const noexcept;

  double tolerance_;
  /// A bit for each block, by hash; blocks may share one.
  std::vector<std::uint64_t> occupied_;
  /// A hash table with linear probing; its size is a power of two.
  std::vector<Slot> slots_;
  /// The vertices cell by cell, ascending within each.
  std::vector<int> indices_;
};

}  // namespace cntr::index
