// SPDX-License-Identifier: MIT
//
// The extremal vertex of a contour in a direction, its box under a transform, and its image.

#pragma once

#include <testing/plain/contour.h>

namespace plain {

/// A 2x2 matrix by rows, with the determinant last computed for it.
struct Matrix {
  double e00 = 0.0;
  double e01 = 0.0;
  double e10 = 0.0;
  double e11 = 0.0;
  double det = 0.0;
};

/// Maps p to matrix p + translation.
struct Transform {
  Matrix matrix;
  Point translation;
};

Transform identity();
Point map(const Transform& transform, const Point& p);

/// Index of the first vertex farthest along (cos angle, sin angle); -1 if none exceeds the most
/// negative double. The four axis directions are decided on the coordinates themselves.
long extremalVertexIndex(const Contour& contour, double angle);

/// That vertex; throws `badParams` where the index is -1.
Point extremalVertexPosition(const Contour& contour, double angle);

/// The smallest box around the mapped vertices.
Box encloseRect(const Contour& contour, const Transform& transform);

/// The contour with every vertex mapped; closed as before.
Contour map(const Contour& contour, const Transform& transform);

}  // namespace plain
