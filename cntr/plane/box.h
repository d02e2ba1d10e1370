// SPDX-License-Identifier: MIT
//
// Axis-aligned boxes of bare doubles, for loops and indexes. The shape class is qcRect.

#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

#include <platform/core/kernels.h>

namespace cntr::plane {

/// The corners of the smaller and of the larger coordinates. A default box is empty: it overlaps
/// nothing, and any box or point joined to it replaces it.
struct Box {
  double minX = std::numeric_limits<double>::infinity();
  double minY = std::numeric_limits<double>::infinity();
  double maxX = -std::numeric_limits<double>::infinity();
  double maxY = -std::numeric_limits<double>::infinity();

  /// Grows to hold p; NaN coordinates are ignored.
  void add(const qcVector<2>& p) noexcept {
    minX = qnKernel::lesser(minX, p.x());
    minY = qnKernel::lesser(minY, p.y());
    maxX = qnKernel::greater(maxX, p.x());
    maxY = qnKernel::greater(maxY, p.y());
  }
  void add(const Box& other) noexcept {
    minX = qnKernel::lesser(minX, other.minX);
    minY = qnKernel::lesser(minY, other.minY);
    maxX = qnKernel::greater(maxX, other.maxX);
    maxY = qnKernel::greater(maxY, other.maxY);
  }
};

/// The box of an edge: the rectangle of its first point, enlarged by its second. A NaN in the first
/// point stays, one in the second is ignored.
inline Box edgeBox(const qcVector<2>& a, const qcVector<2>& b) noexcept {
  return {qnKernel::lesser(a.x(), b.x()), qnKernel::lesser(a.y(), b.y()),
          qnKernel::greater(a.x(), b.x()), qnKernel::greater(a.y(), b.y())};
}

/// True when the boxes share a point; touching counts. A NaN in an upper corner of `box` rules out
/// any shared point; one in a lower corner is ignored.
inline bool overlaps(const Box& box, const Box& other) noexcept {
  return box.maxX >= other.minX && !(box.minX > other.maxX) && box.maxY >= other.minY &&
         !(box.minY > other.maxY);
}

/// True when p lies in the box or on its boundary; false when a number of either is NaN.
inline bool contains(const Box& box, const qcVector<2>& p) noexcept {
  return p.x() >= box.minX && p.x() <= box.maxX && p.y() >= box.minY && p.y() <= box.maxY;
}

/// The largest absolute value of a coordinate of the box or of p.
inline double largestCoordinate(const Box& box, const qcVector<2>& p) noexcept {
  return std::max({std::abs(box.minX), std::abs(box.maxX), std::abs(box.minY), std::abs(box.maxY),
                   std::abs(p.x()), std::abs(p.y())});
}

/// Squared distance from p to the nearest point of `box`; 0 inside.
inline double squaredDistance(const Box& box, const qcVector<2>& p) noexcept {
  const double dx = std::max(std::max(box.minX - p.x(), p.x() - box.maxX), 0.0);
  const double dy = std::max(std::max(box.minY - p.y(), p.y() - box.maxY), 0.0);
  return dx * dx + dy * dy;
}

}  // namespace cntr::plane
