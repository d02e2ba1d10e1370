// SPDX-License-Identifier: MIT
//
// Where two segments cross, nearly without error; on which side of a line a point lies is in
// cntr/plane/orientation.h. Exact while every product of two coordinates keeps all its digits:
// coordinates of size 1e-140 to 1e140, or 0. faces/noding.h scales what it is given into that
// range.

#pragma once

#include <cntr/plane/orientation.h>

namespace cntr::sets {

using Point = qcVector<2>;
using plane::orientation;

/// The point in which the segments a-b and c-d cross: within one unit in the last place of the true
/// one in both coordinates, mostly the nearest that there is, and inside the boxes of both
/// segments. REQUIRES: they cross properly, each one's ends lying strictly on different sides of
/// the other.
Point crossing(const Point& a, const Point& b, const Point& c, const Point& d) noexcept;

}  // namespace cntr::sets
