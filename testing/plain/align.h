// SPDX-License-Identifier: MIT
//
// The rigid motion of least root mean square distance, by trial: rotations all around in small
// steps, then downhill from the best of them by the literal distance alone. It is slow and not
// exact.

#pragma once

#include <testing/plain/contour.h>

namespace plain {

struct Aligned {
  /// A rotation about the origin, in radians, followed by a shift.
  double angle = 0.0;
  Point shift{0.0, 0.0};
  double residual = 0.0;
};

/// REQUIRES: finite coordinates, a measured length above 0.
Aligned align(const std::vector<Contour>& measured, const std::vector<Contour>& nominal);

}  // namespace plain
