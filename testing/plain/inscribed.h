// SPDX-License-Identifier: MIT
//
// The largest circle inside an area, by trying points.

#pragma once

#include <testing/plain/circle.h>
#include <testing/plain/filled.h>

namespace plain {

/// A circle in what the parts fill by the rule nonZero, its radius at most `tolerance` smaller than
/// that of the largest. Every square of the plane is cut in four until its middle is no farther
/// from a point that has been tried than allowed: distances change by no more than the way does.
/// Means nothing where an edge is not part of the boundary. Radius 0 where nothing is found.
Circle inscribedCircle(const Parts& parts, double tolerance);

}  // namespace plain
