// SPDX-License-Identifier: MIT
//
// On which side of a line a point lies, without error, and where two segments cross, nearly
// without. Exact while every product of two coordinates keeps all its digits: coordinates of size
// 1e-140 to 1e140, or 0. faces/noding.h scales what it is given into that range.

#pragma once

#include <platform/core/vector.h>

namespace cntr::sets {

using Point = qcVector<2>;

/// 1 when c lies left of the line from a to b (a, b, c turn counter-clockwise with y up), -1 when
/// it lies right of it, 0 when the three are on one line or two of them coincide. Always the true
/// sign: a first estimate decides when its error bound allows, and else the determinant is summed
/// exactly (J. R. Shewchuk, Adaptive Precision Floating-Point Arithmetic and Fast Robust Geometric
/// Predicates, 1997).
int orientation(const Point& a, const Point& b, const Point& c) noexcept;

/// The point in which the segments a-b and c-d cross: within one unit in the last place of the true
/// one in both coordinates, mostly the nearest that there is, and inside the boxes of both
/// segments. REQUIRES: they cross properly, each one's ends lying strictly on different sides of
/// the other.
Point crossing(const Point& a, const Point& b, const Point& c, const Point& d) noexcept;

}  // namespace cntr::sets
