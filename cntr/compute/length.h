// SPDX-License-Identifier: MIT
//
// Measures of a path as a wire: its length, its mean position, its median edge.

#pragma once

#include <cntr/plane/path.h>

namespace cntr::compute {

/// Sum of the edge lengths in the fixed order.
double length(const plane::Path& path);

/// Sum of ((a + b) * 0.5) * |ab| over the edges, times 1 / sum of |ab|. Not finite when all edges
/// have length 0.
qcVector<2> meanPosition(const plane::Path& path);

/// The edge length at index count / 2 of the ascending lengths; 0 without edges. NaN lengths sort
/// last.
double medianEdgeLength(const plane::Path& path);

}  // namespace cntr::compute
