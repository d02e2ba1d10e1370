// SPDX-License-Identifier: MIT
//
// The vertex of a path that lies farthest in a direction. Closedness does not matter.

#pragma once

#include <cntr/index/edgeindex.h>
#include <cntr/plane/path.h>

namespace cntr::compute {

/// The lowest index among the vertices farthest in the direction of `angle`; -1 when no vertex
/// compares greater than the most negative double. `index`, if not null, is that of the path.
///
/// A direction within 1e-15 of an axis is decided on the bare coordinate, without the rounding of
/// cosine and sine; any other on sin * y + cos * x.
long extremalVertex(const plane::Path& path, const index::EdgeIndex* index, const qcRadian& angle);

}  // namespace cntr::compute
