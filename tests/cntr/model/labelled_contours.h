// SPDX-License-Identifier: MIT
//
// Contours with a label, for tests of functions that take contours.

#pragma once

#include <vector>

#include <cntr/contour.h>

namespace labelled {

using Contours = std::vector<qcContour>;

inline qcContour closed(const std::vector<qcVector<2>>& points) { return {points, true, 7}; }
inline qcContour open(const std::vector<qcVector<2>>& points) { return {points, false, 7}; }

}  // namespace labelled
