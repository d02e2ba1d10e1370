// SPDX-License-Identifier: MIT
//
// Many points sorted by place, to find those in a box.

#pragma once

#include <algorithm>
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

/// Points in vertical strips from left to right, as many points in each as there are strips, so
/// that a few points far from all others do no harm. Within a strip they are sorted upwards. Points
/// whose coordinates are not finite are left out.
class PointStrips {
 public:
  /// Takes points, x and y in turn. O(n log n).
  explicit PointStrips(std::span<const double> coordinates);

  /// Calls visit(point) for each point in the box or on its boundary, in any order. Returns the
  /// number of points looked at: those at the height of the box in the strips that it touches.
  template <class Visit>
  std::size_t forEachIn(const cntr::plane::Box& box, Visit visit) const {
    std::size_t looks = 0;
    const std::size_t end = stripsUpTo(box.maxX);
    for (std::size_t strip = firstStrip(box.minX); strip < end; ++strip) {
      for (const NumberedPoint& point : above(strip, box.minY)) {
        if (point.position.y() > box.maxY) break;
        ++looks;
        if (contains(box, point.position)) visit(point);
      }
    }
    return looks;
  }

 private:
  /// The first strip that may contain points at x or to the right of it.
  std::size_t firstStrip(double x) const noexcept;
  /// How many strips begin at x or to the left of it.
  std::size_t stripsUpTo(double x) const noexcept;
  /// The points of a strip from the height y on.
  std::span<const NumberedPoint> above(std::size_t strip, double y) const noexcept;

  std::vector<NumberedPoint> points_;
  /// The last strip may have fewer.
  std::size_t pointsInStrip_ = 1;
  /// The x of the leftmost point of each strip.
  std::vector<double> begins_;
};

}  // namespace table
