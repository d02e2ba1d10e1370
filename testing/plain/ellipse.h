// SPDX-License-Identifier: MIT
//
// The ellipse of given second moments, and the standard deviation.

#pragma once

#include <vector>

#include <testing/plain/moments.h>

namespace plain {

/// `radius1` lies along `rotation` (radians), `radius2` across it.
struct Ellipse {
  Point center{0.0, 0.0};
  double radius1 = 0.0;
  double radius2 = 0.0;
  double rotation = 0.0;
};

/// The solid ellipse with the centre and second moments of `inertia`; throws `singular` unless both
/// principal moments exceed 1e-12.
Ellipse ellipseOf(const Inertia& inertia);

/// Population standard deviation; NaN for an empty list.
double standardDeviation(const std::vector<double>& values);

}  // namespace plain
