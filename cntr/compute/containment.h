// SPDX-License-Identifier: MIT
//
// How often a ray from a point crosses a closed path, in a direction that keeps clear of all
// vertices.

#pragma once

#include <cntr/compute/crossings.h>

namespace cntr::compute {

/// The number of crossings of a ray from p with the path, end touches not counted; with
/// `bothDirections` the smaller number of the ray and its opposite. An odd number means inside.
///
/// 0 for p outside the bounding box, 1 for p within 1e-6 of a vertex. The ray is `reach` long and
/// bisects the first gap of more than pi / n, in ascending order of angle from the x axis, between
/// the directions to the n vertices.
/// REQUIRES: the path is closed and has a vertex.
std::size_t rayCrossings(const CrossingTarget& target, double reach, const qcVector<2>& p,
                         bool bothDirections);

}  // namespace cntr::compute
