// SPDX-License-Identifier: MIT
//
// The arithmetic of points, lines, segments and boxes on bare vectors: one definition each, used by
// the shape classes of shapes.h and by every loop over vertices. The expressions and their order
// determine the library's answers: a change here changes them.

#pragma once

#include <cmath>

#include <platform/core/vector.h>

/// @addtogroup plane
/// @{

namespace qnKernel {

/// z component of the cross product, a.x*b.y - a.y*b.x: positive when b lies counter-clockwise of
/// a.
inline double cross(const qcVector<2>& a, const qcVector<2>& b) noexcept {
  return a.x() * b.y() - a.y() * b.x();
}

/// The foot of the perpendicular from p on the line through `point` along d:
/// point + d * (((p - point).d) / (d.d)); `point` itself when d.d is 0.
inline qcVector<2> projectOnLine(const qcVector<2>& p, const qcVector<2>& point,
                                 const qcVector<2>& d) noexcept {
  const double dd = d * d;
  return dd == 0.0 ? point : point + d * (((p - point) * d) / dd);
}

/// |cross(d, p - point)| / |d|; the distance to `point` when |d| is 0.
inline double distanceToLine(const qcVector<2>& p, const qcVector<2>& point,
                             const qcVector<2>& d) noexcept {
  const double length = d.len();
  return length == 0.0 ? p.distance(point) : std::abs(cross(d, p - point)) / length;
}

/// The sine of the largest angle between parallel directions.
inline constexpr double parallelSine = 1e-12;

/// True when |cross(d1, d2)| <= parallelSine * |d1| * |d2|: a zero direction is parallel to
/// everything.
inline bool isParallel(const qcVector<2>& d1, const qcVector<2>& d2) noexcept {
  return std::abs(cross(d1, d2)) <= parallelSine * d1.len() * d2.len();
}

/// Where the line (p1, d1) meets the line (p2, d2): p1 + d1 * (cross(p2 - p1, d2) / c) with
/// c = cross(d1, d2); when c is 0, the point of the first line nearest to p2.
inline qcVector<2> intersectLines(const qcVector<2>& p1, const qcVector<2>& d1,
                                  const qcVector<2>& p2, const qcVector<2>& d2) noexcept {
  const double c = cross(d1, d2);
  return c == 0.0 ? projectOnLine(p2, p1, d1) : p1 + d1 * (cross(p2 - p1, d2) / c);
}

/// The point of the segment a-b nearest to p. With t = ((p - a).(b - a)) / |b - a|^2: a unless
/// t > 0 (also for a segment of length 0), b when t >= 1, else a + (b - a) * t. However that is
/// rounded, it lies in the box of a and b: (b - a) is rounded by at most half a unit in its last
/// place, and a t below 1 takes as much away from it again.
inline qcVector<2> closestOnSegment(const qcVector<2>& p, const qcVector<2>& a,
                                    const qcVector<2>& b) noexcept {
  const qcVector<2> d = b - a;
  const double t = ((p - a) * d) / (d * d);
  if (!(t > 0.0)) return a;
  if (t >= 1.0) return b;
  return a + d * t;
}

/// Distance from p to closestOnSegment(p, a, b).
inline double distanceToSegment(const qcVector<2>& p, const qcVector<2>& a,
                                const qcVector<2>& b) noexcept {
  return p.distance(closestOnSegment(p, a, b));
}

/// The smaller value; the first one when either is NaN.
inline double lesser(double first, double second) noexcept {
  return second < first ? second : first;
}
/// The larger value; the first one when either is NaN.
inline double greater(double first, double second) noexcept {
  return second > first ? second : first;
}

}  // namespace qnKernel

/// @}
