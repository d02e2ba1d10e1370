// SPDX-License-Identifier: MIT
//
// Contours with fewer vertices, and contours with vertices at equal steps, by their definitions.

#pragma once

#include <testing/plain/contour.h>

namespace plain {

/// Several contours simplified together. O(n^2) and more.
std::vector<Contour> simplify(const std::vector<Contour>& contours, double tolerance);

/// Throws `badParams` for a spacing that is not positive, and for a length that is not finite.
Contour resample(const Contour& contour, double spacing);

}  // namespace plain
