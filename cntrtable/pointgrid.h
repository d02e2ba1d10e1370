// SPDX-License-Identifier: MIT
//
// Many points sorted by place, to find those in a box.

#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include <cntr/plane/box.h>

namespace table {

/// A point and its number in the list that it comes from.
struct NumberedPoint {
  qcVector<2> position;
  std::int64_t number;
};

/// Points in the cells of a grid, those whose coordinates are not finite left out.
class PointGrid {
 public:
  /// Of points, x and y in turn. O(n).
  explicit PointGrid(std::span<const double> coordinates);

  /// Calls visit(point) for each point in the box or on its boundary, in any order.
  template <class Visit>
  void forEachIn(const cntr::plane::Box& box, Visit visit) const {
    if (points_.empty() || !overlaps(bounds_, box)) return;
    const std::size_t first = columnOf(box.minX);
    const std::size_t last = columnOf(box.maxX);
    for (std::size_t row = rowOf(box.minY); row <= rowOf(box.maxY); ++row) {
      const std::size_t end = begins_[row * columns_ + last + 1];
      for (std::size_t i = begins_[row * columns_ + first]; i < end; ++i)
        if (contains(box, points_[i].position)) visit(points_[i]);
    }
  }

 private:
  // The nearest cell's for coordinates outside the bounds.

  std::size_t columnOf(double x) const noexcept {
    return cellOf((x - bounds_.minX) * columnsPerUnit_, columns_);
  }
  std::size_t rowOf(double y) const noexcept {
    return cellOf((y - bounds_.minY) * rowsPerUnit_, rows_);
  }
  static std::size_t cellOf(double place, std::size_t count) noexcept;

  cntr::plane::Box bounds_;
  std::size_t columns_ = 1;
  std::size_t rows_ = 1;
  double columnsPerUnit_ = 0.0;
  double rowsPerUnit_ = 0.0;
  /// Where each cell's points begin, row by row, and after the last where they end.
  std::vector<std::size_t> begins_;
  std::vector<NumberedPoint> points_;
};

}  // namespace table
