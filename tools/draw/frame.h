// SPDX-License-Identifier: MIT
//
// Coordinates for queries of the library, whose tolerances are absolute and made for pixels.

#pragma once

#include <cntrformats/feature.h>
#include <tools/draw/box.h>

namespace tool {

/// Leaves coordinates unchanged for shapes about as large, and as far from the origin, as those in
/// images; others are moved to the origin and scaled by a power of two.
class Frame {
 public:
  /// For shapes in `box`.
  explicit Frame(const Box& box);

  qcVector<2> into(const qcVector<2>& p) const { return (p - origin_) * scale_; }
  double into(double length) const { return length * scale_; }
  qcVector<2> back(const qcVector<2>& p) const { return p * (1.0 / scale_) + origin_; }
  double back(double length) const { return length / scale_; }

  /// The same outlines in these coordinates, without edge elements.
  formats::Geometry into(const formats::Geometry& geometry) const;

 private:
  qcVector<2> origin_{0.0, 0.0};
  double scale_ = 1.0;
};

}  // namespace tool
