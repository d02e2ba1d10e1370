// SPDX-License-Identifier: MIT
//
// The curve from which a ring's offset is cut.

#pragma once

#include <span>
#include <vector>

#include <cntrsets/exact/predicates.h>

namespace cntr::sets {

/// The ring with every edge moved by `distance` to its right (to its left when negative). Where the
/// moved edges leave a gap they are joined by an arc around the vertex, elsewhere through the
/// vertex itself. With an area on the left of all its rings, the winding numbers about these curves
/// sum to more than 0 exactly at the points of the offset area: outwards they are those of the area
/// plus those of a rectangle or a sector at each edge and vertex, none of which winds backwards;
/// inwards those of the complement are subtracted.
///
/// Arcs are chords that leave them by at most `arcTolerance`.
/// REQUIRES: no two neighbouring vertices are equal; no edge runs back along the one before it.
std::vector<Point> offsetCurve(std::span<const Point> ring, double distance, double arcTolerance);

}  // namespace cntr::sets
