// SPDX-License-Identifier: MIT
//
// How densely boundaries are sampled.

#pragma once

#include <vector>

#include <cntr/contour.h>

namespace cntr::sets {

/// The length of a step along measured boundaries or lines unless a spacing is given: 1/1024 of
/// their length. 1 if they have none.
inline double usualSpacing(const std::vector<qcContour>& curves) {
  constexpr double step = 1.0 / 1024.0;
  double length = 0.0;
  for (const qcContour& curve : curves) length += curve.length();
  return length > 0.0 ? length * step : 1.0;
}

}  // namespace cntr::sets
