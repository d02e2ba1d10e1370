// SPDX-License-Identifier: MIT
//
// Distance from a point to an ellipse (internal to the fits).

#pragma once

#include <algorithm>
#include <cmath>

#include <platform/core/vector.h>

namespace qnFit {

/// Distance from p to the ellipse around the origin with semi-axes a >= b > 0 along x and y.
///
/// The foot of the perpendicular is (a m0, b m1) with m0 = (a/b) x / (w + gap) and m1 = y / w,
/// where x and y are |p| / b, gap is (a/b)^2 - 1 and w > 0 solves m0^2 + m1^2 = 1 (D. Eberly,
/// "Distance from a point to an ellipse, an ellipsoid, or a hyperellipsoid"). That sum falls with w
/// and is convex, so Newton's method, started where one of the terms is 1 and neither is greater,
/// climbs to the root without ever overshooting.
inline double distanceToEllipse(const qcVector<2>& p, double a, double b) noexcept {
  constexpr int maxSteps = 100;
  const double ratio = a / b;
  const double gap = (ratio - 1.0) * (ratio + 1.0);
  const double x = ratio * (std::abs(p.x()) / b);
  const double y = std::abs(p.y()) / b;
  if (x == 0.0 && y == 0.0) return b;
  double w = std::max(y, x - gap);
  // On the major axis, inside: the foot is where the perpendicular meets the curve, off the axis.
  double m0 = x / (w + gap);
  double m1 = w == 0.0 ? std::sqrt(std::max(0.0, 1.0 - m0 * m0)) : y / w;
  for (int step = 0; step < maxSteps && w > 0.0; ++step) {
    const double excess = m0 * m0 + m1 * m1 - 1.0;
    const double next = w + 0.5 * excess / (m0 * m0 / (w + gap) + m1 * m1 / w);
    if (!(next > w)) break;
    w = next;
    m0 = x / (w + gap);
    m1 = y / w;
  }
  const double across = m0 / ratio;
  return b * std::abs(w - 1.0) * std::sqrt(across * across + m1 * m1);
}

}  // namespace qnFit
