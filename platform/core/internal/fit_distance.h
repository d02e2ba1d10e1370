// SPDX-License-Identifier: MIT
//
// Distance from a point to an ellipse (internal to the fits).

#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include <platform/core/vector.h>

namespace qnFit {

/// Doubles computed side by side: each gets the same bits as on its own.
constexpr std::size_t lanes = 4;
using Lanes = double __attribute__((vector_size(lanes * sizeof(double))));

inline bool isGreaterInAny(double a, double b) noexcept { return a > b; }

[[gnu::always_inline]] inline bool isGreaterInAny(const Lanes& a, const Lanes& b) noexcept {
  const auto greater = a > b;
  return (greater[0] | greater[1] | greater[2] | greater[3]) != 0;
}

/// Newton's steps to the foot of a perpendicular, see distanceToEllipse(). Where no step leads
/// further, w, m0 and m1 stay as they are. REQUIRES: w > 0.
template <class Number>
[[gnu::always_inline]] inline void climbToFoot(const Number& x, const Number& y, double gap,
                                               Number& w, Number& m0, Number& m1) noexcept {
  constexpr int maxSteps = 100;
  for (int step = 0; step < maxSteps; ++step) {
    const Number excess = m0 * m0 + m1 * m1 - 1.0;
    const Number next = w + 0.5 * excess / (m0 * m0 / (w + gap) + m1 * m1 / w);
    if (!isGreaterInAny(next, w)) break;
    w = next > w ? next : w;
    m0 = x / (w + gap);
    m1 = y / w;
  }
}

/// Distance from p to the ellipse around the origin with semi-axes a >= b > 0 along x and y.
///
/// The foot of the perpendicular is (a m0, b m1) with m0 = (a/b) x / (w + gap) and m1 = y / w,
/// where x and y are |p| / b, gap is (a/b)^2 - 1 and w > 0 solves m0^2 + m1^2 = 1 (D. Eberly,
/// "Distance from a point to an ellipse, an ellipsoid, or a hyperellipsoid"). That sum falls with w
/// and is convex, so Newton's method, started where one of the terms is 1 and neither is greater,
/// climbs to the root without ever overshooting.
inline double distanceToEllipse(const qcVector<2>& p, double a, double b) noexcept {
  const double ratio = a / b;
  const double gap = (ratio - 1.0) * (ratio + 1.0);
  const double x = ratio * (std::abs(p.x()) / b);
  const double y = std::abs(p.y()) / b;
  if (x == 0.0 && y == 0.0) return b;
  double w = std::max(y, x - gap);
  // Inside, on the major axis: the foot lies off the axis, where the perpendicular meets the curve.
  double m0 = x / (w + gap);
  double m1 = w == 0.0 ? std::sqrt(std::max(0.0, 1.0 - m0 * m0)) : y / w;
  if (w > 0.0) climbToFoot(x, y, gap, w, m0, m1);
  const double across = m0 / ratio;
  return b * std::abs(w - 1.0) * std::sqrt(across * across + m1 * m1);
}

/// The same of several points at once.
inline std::array<double, lanes> distancesToEllipse(const std::array<qcVector<2>, lanes>& points,
                                                    double a, double b) noexcept {
  const double ratio = a / b;
  const double gap = (ratio - 1.0) * (ratio + 1.0);
  std::array<double, lanes> distances;
  Lanes x;
  Lanes y;
  Lanes w;
  bool climb = true;
  for (std::size_t i = 0; i < lanes; ++i) {
    x[i] = ratio * (std::abs(points[i].x()) / b);
    y[i] = std::abs(points[i].y()) / b;
    w[i] = std::max(y[i], x[i] - gap);
    climb = climb && w[i] > 0.0;
  }
  if (!climb) {
    for (std::size_t i = 0; i < lanes; ++i) distances[i] = distanceToEllipse(points[i], a, b);
    return distances;
  }
  Lanes m0 = x / (w + gap);
  Lanes m1 = y / w;
  climbToFoot(x, y, gap, w, m0, m1);
  const Lanes across = m0 / ratio;
  const Lanes squares = across * across + m1 * m1;
  for (std::size_t i = 0; i < lanes; ++i)
    distances[i] = b * std::abs(w[i] - 1.0) * std::sqrt(squares[i]);
  return distances;
}

}  // namespace qnFit
