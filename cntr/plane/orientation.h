// SPDX-License-Identifier: MIT
//
// On which side of a line a point lies, and products of two directions, without error: exact as
// long as every product of two coordinates keeps all its digits, for coordinates that are 0 or from
// 1e-140 to 1e140 in absolute value.

#pragma once

#include <cmath>

#include <cntr/plane/exactsum.h>
#include <platform/core/vector.h>

namespace cntr::plane {

/// The error of a sum of two products of differences in doubles, relative to the sum of the
/// products' absolute values: (3 + 16 e) e with e = 2^-53, the bound of the first stage in
/// Shewchuk's orient2d.
inline constexpr double estimateError = 3.3306690738754716e-16;

/// Twice the signed area of the triangle.
inline ExactSum doubledArea(const qcVector<2>& a, const qcVector<2>& b,
                            const qcVector<2>& c) noexcept {
  ExactSum sum;
  sum.addProduct(a.x(), b.y());
  sum.addProduct(-a.y(), b.x());
  sum.addProduct(b.x(), c.y());
  sum.addProduct(-b.y(), c.x());
  sum.addProduct(c.x(), a.y());
  sum.addProduct(-c.y(), a.x());
  return sum;
}

/// The cross product of b - a and d - c.
inline ExactSum crossProduct(const qcVector<2>& a, const qcVector<2>& b, const qcVector<2>& c,
                             const qcVector<2>& d) noexcept {
  ExactSum sum;
  sum.addProduct(b.x(), d.y());
  sum.addProduct(-b.x(), c.y());
  sum.addProduct(-a.x(), d.y());
  sum.addProduct(a.x(), c.y());
  sum.addProduct(-b.y(), d.x());
  sum.addProduct(b.y(), c.x());
  sum.addProduct(a.y(), d.x());
  sum.addProduct(-a.y(), c.x());
  return sum;
}

/// The dot product of b - a and d - c.
inline ExactSum dotProduct(const qcVector<2>& a, const qcVector<2>& b, const qcVector<2>& c,
                           const qcVector<2>& d) noexcept {
  return crossProduct(a, b, {-c.y(), c.x()}, {-d.y(), d.x()});
}

/// The sign of the dot product of b - a and d - c: 1 for an angle of less than 90 degrees, 0 for 90
/// degrees or a zero vector, else -1. Always the true sign, like that of orientation().
inline int dotSign(const qcVector<2>& a, const qcVector<2>& b, const qcVector<2>& c,
                   const qcVector<2>& d) noexcept {
  const double first = (b.x() - a.x()) * (d.x() - c.x());
  const double second = (b.y() - a.y()) * (d.y() - c.y());
  const double estimate = first + second;
  if (std::abs(estimate) > estimateError * (std::abs(first) + std::abs(second)))
    return estimate > 0.0 ? 1 : -1;
  if (first == 0.0 && second == 0.0) return 0;
  return dotProduct(a, b, c, d).sign();
}

/// The same for the cross product: 1 when d - c points to the left of b - a.
inline int crossSign(const qcVector<2>& a, const qcVector<2>& b, const qcVector<2>& c,
                     const qcVector<2>& d) noexcept {
  return dotSign(a, b, {c.y(), -c.x()}, {d.y(), -d.x()});
}

/// 1 when c lies left of the line from a to b (a, b, c turn counter-clockwise with y up), -1 when
/// it lies right of it, 0 when the three are on one line or two of them coincide. Always the true
/// sign: a first estimate decides if its error bound allows, else the determinant is summed exactly
/// (J. R. Shewchuk, Adaptive Precision Floating-Point Arithmetic and Fast Robust Geometric
/// Predicates, 1997).
inline int orientation(const qcVector<2>& a, const qcVector<2>& b, const qcVector<2>& c) noexcept {
  const double left = (a.x() - c.x()) * (b.y() - c.y());
  const double right = (a.y() - c.y()) * (b.x() - c.x());
  const double estimate = left - right;
  if (std::abs(estimate) > estimateError * (std::abs(left) + std::abs(right)))
    return estimate > 0.0 ? 1 : -1;
  if (left == 0.0 && right == 0.0) return 0;
  return doubledArea(a, b, c).sign();
}

}  // namespace cntr::plane
