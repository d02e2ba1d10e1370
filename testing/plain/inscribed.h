// SPDX-License-Identifier: MIT
//
// The largest circle inside an area, by trying points.

#pragma once

#include <testing/plain/circle.h>
#include <testing/plain/filled.h>

namespace plain {

/// A circle in what the parts fill by the rule nonZero, its radius at most `tolerance` below the
/// largest. Every square of the plane is cut in four until its middle is close enough to a point
/// already tried: the distance from the boundary changes by no more than the point moves.
/// Meaningless where an edge is not part of the boundary. Radius 0 when no circle is found.
Circle inscribedCircle(const Parts& parts, double tolerance);

}  // namespace plain
