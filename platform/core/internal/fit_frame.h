// SPDX-License-Identifier: MIT
//
// The coordinates in which curves are fitted (internal to the fits): points brought near the origin
// and to a size of about 1, and the linear map that gives them the same spread in every direction.
// fit_ellipse.cpp and fit_circle.cpp use it.

#pragma once

#include <vector>

#include <platform/core/vector.h>

namespace qnFit {

using Point = qcVector<2>;
using Points = std::vector<Point>;

/// A power of two as a factor; the product is rounded once, as by ldexp. Powers that no double can
/// hold are applied in two steps, the first of which loses nothing.
class PowerOfTwo {
 public:
  /// REQUIRES: exponent >= -1074.
  explicit PowerOfTwo(int exponent) noexcept;

  friend double operator*(double value, const PowerOfTwo& power) noexcept {
    return value * power.first_ * power.second_;
  }
  friend Point operator*(const Point& p, const PowerOfTwo& power) noexcept {
    return {p.x() * power, p.y() * power};
  }

 private:
  double first_;
  double second_;
};

/// Scales by a power of two, so that no bit is lost and nothing overflows, then shifts.
class Frame {
 public:
  /// The frame in which the largest coordinate was between 1/2 and 1 before the shift of the mean
  /// to the origin. Throws qcFitError when there are fewer than `atLeast` points or one of them is
  /// not finite.
  Frame(const Points& points, std::size_t atLeast);

  Point enter(const Point& p) const noexcept;
  Points enter(const Points& points) const;
  /// The point in the caller's coordinates. Throws qcFitError when it overflows.
  Point leave(const Point& p) const;
  /// A length of the frame in the points' unit. Throws qcFitError when it overflows.
  double leave(double length) const;

 private:
  PowerOfTwo enlarging_{0};
  PowerOfTwo shrinking_{0};
  Point mean_;
};

/// The map (u, v) -> (xu * u, yu * u + yv * v) from coordinates in which the points have unit
/// variance and no correlation to those of the frame.
struct Spread {
  double xu;
  double yu;
  double yv;
  /// The spread of the points across their main direction, in the frame's unit.
  double across;

  /// Throws qcFitError when the points lie on one line, within their own rounding errors.
  explicit Spread(const Points& framed);

  Point toFrame(const Point& p) const noexcept { return {xu * p.x(), yu * p.x() + yv * p.y()}; }
  Point fromFrame(const Point& p) const noexcept {
    const double u = p.x() / xu;
    return {u, (p.y() - yu * u) / yv};
  }
};

}  // namespace qnFit
