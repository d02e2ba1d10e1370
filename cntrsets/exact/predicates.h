// SPDX-License-Identifier: MIT
//
// Where two segments cross, nearly without error; on which side of a line a point lies is in
// cntr/plane/orientation.h. Exact as long as every product of two coordinates keeps all its digits:
// for coordinates that are 0 or from leastCoordinate to 2^480 in absolute value. faces/filledset.h
// scales its input into that range, and crossings stay in it.

#pragma once

#include <cntr/plane/orientation.h>

namespace cntr::sets {

using Point = qcVector<2>;
using plane::orientation;

/// Products of smaller non-zero numbers lose digits.
inline constexpr double leastCoordinate = 0x1p-465;

/// The point in which the segments a-b and c-d cross: mostly the nearest double in both
/// coordinates; within one unit in the last place of the true value, or 2^-98 of the extent of a-b
/// if that is more; 0 for values smaller than leastCoordinate; and inside the boxes of both
/// segments. REQUIRES: they cross properly: the ends of each lie strictly on different sides of the
/// other.
Point crossing(const Point& a, const Point& b, const Point& c, const Point& d) noexcept;

}  // namespace cntr::sets
