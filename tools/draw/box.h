// SPDX-License-Identifier: MIT
//
// Upright rectangles that grow with their content.

#pragma once

#include <algorithm>
#include <limits>

#include <cntrformats/feature.h>

namespace tool {

struct Box {
  qcVector<2> low{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
  qcVector<2> high{-low};

  /// True until something is added.
  bool isEmpty() const noexcept { return !(low.x() <= high.x() && low.y() <= high.y()); }
  double width() const noexcept { return high.x() - low.x(); }
  double height() const noexcept { return high.y() - low.y(); }
  /// The longer side.
  double extent() const noexcept { return std::max(width(), height()); }
  qcVector<2> middle() const noexcept { return low + (high - low) * 0.5; }

  void enclose(const qcVector<2>& p) noexcept {
    low = {std::min(low.x(), p.x()), std::min(low.y(), p.y())};
    high = {std::max(high.x(), p.x()), std::max(high.y(), p.y())};
  }
  void enclose(const Box& other) noexcept {
    low = {std::min(low.x(), other.low.x()), std::min(low.y(), other.low.y())};
    high = {std::max(high.x(), other.high.x()), std::max(high.y(), other.high.y())};
  }
  /// The same box with a border all around.
  Box widened(double border) const noexcept {
    return {low - qcVector<2>(border, border), high + qcVector<2>(border, border)};
  }
  /// Whether the boxes share a point.
  bool meets(const Box& other) const noexcept {
    return low.x() <= other.high.x() && other.low.x() <= high.x() && low.y() <= other.high.y() &&
           other.low.y() <= high.y();
  }
  bool holds(const Box& other) const noexcept {
    return low.x() <= other.low.x() && low.y() <= other.low.y() && high.x() >= other.high.x() &&
           high.y() >= other.high.y();
  }
};

inline Box boxAround(const formats::Points& points) {
  Box box;
  for (const qcVector<2>& p : points) box.enclose(p);
  return box;
}

}  // namespace tool
