// SPDX-License-Identifier: MIT
//
// The direction of the ray that decides containment: it keeps clear of all vertices.

#pragma once

#include <cntr/compute/crossings.h>

namespace cntr::compute {

/// The bisector of the first gap of more than pi / n, in ascending order of angle from the x axis,
/// between the directions from p to the n vertices of a closed path: a unit vector. The x axis when
/// there is no such gap.
/// REQUIRES: the path is closed and has a vertex.
qcVector<2> clearDirection(const plane::Path& path, const qcVector<2>& p);

/// The same, by the index of the path.
/// REQUIRES: all coordinates are finite, those of p too.
qcVector<2> clearDirection(const plane::Path& path, const index::EdgeIndex& index,
                           const qcVector<2>& p);

}  // namespace cntr::compute
