// SPDX-License-Identifier: MIT
//
// The two quick enclosing circles of a contour's vertices, and their diameters.

#pragma once

#include <testing/plain/geometry.h>

namespace plain {

struct Circle {
  Point center{0.0, 0.0};
  double radius = 0.0;
};

/// The circle over the two farthest vertices, the first such pair on ties; the default circle when
/// all vertices are equal.
Circle farthestPairCircle(const Points& points);

/// The circle around the first vertex that reaches the farthest one; throws `emptyContour` without
/// vertices.
Circle firstVertexCircle(const Points& points);

/// Mode 0 is the farthest pair, mode 1 the first vertex; throws `badParams` for any other.
Circle encloseCircle(const Points& points, int mode);

double diameter(const Points& points, int mode);

}  // namespace plain
