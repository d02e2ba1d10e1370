// SPDX-License-Identifier: MIT
//
// Points at equal steps along a path.

#pragma once

#include <cstddef>
#include <vector>

#include <cntr/plane/path.h>

namespace cntr::compute {

/// The length of the path from its first vertex on: added up in this order, unlike that of
/// compute/length.h for closed paths.
double lengthFromStart(const plane::Path& path) noexcept;

/// The points 0, 1, ... of `steps` equal steps along the path from its first vertex: `steps` of
/// them on a closed path; on an open one, one more: its last vertex. REQUIRES: `length` is
/// lengthFromStart(path), finite and positive; steps > 0.
std::vector<qcVector<2>> pointsAtSteps(const plane::Path& path, double length, std::size_t steps);

}  // namespace cntr::compute
