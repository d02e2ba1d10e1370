// SPDX-License-Identifier: MIT
//
// A short proof that most outlines of single objects meet nowhere, which spares them the sweep of
// faces.h.

#pragma once

#include <span>

#include <cntrsets/exact/predicates.h>

namespace cntr::sets {

/// True when a point was found around which the ring runs once, always the same way: every
/// half-line from there meets it exactly once, so that it shares no point but the vertices between
/// neighbouring edges. False says nothing, of rings that are not star-shaped and of those that are
/// so by too little, or have coordinates that are too large, too small or not finite.
///
/// The point is looked for by cutting a box around the ring with the lines of the edges that cannot
/// be seen from the middle of what is left (A. Y. Levin's method of centres of gravity), and what
/// is found is checked against every edge, rounding included. O(n), about 10 ns for each vertex.
bool isStarShaped(std::span<const Point> ring) noexcept;

}  // namespace cntr::sets
