// SPDX-License-Identifier: MIT
//
// Repair of a closed boundary that crosses itself: the walk along its outside, the clean-up of what
// the walk traced, and the joining of two boundaries that cross.

#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include <cntr/compute/outline.h>

namespace cntr::compute {

/// The first edge, from vertex i to i + 1, that certainly lies on the outside of the figure: only
/// its neighbours meet it, and one of its sides, tested at the distance `probe` from its middle, is
/// outside. The closing edge is not tried.
std::optional<std::size_t> startingEdge(const Outline& boundary, double probe);

/// Walks the boundary from the starting edge on, turning onto every edge that it meets, until it is
/// back where it started. Nothing when there is no starting edge, or when the walk returns to an
/// earlier state without meeting its start.
std::optional<std::vector<qcVector<2>>> traceBoundary(const Outline& boundary, double probe);

/// The first of the loops that remain when `traced` is cut where it touches itself within 1e-6,
/// loops inside others are dropped, and loops that touch are joined. Nothing when none remains.
/// REQUIRES: at least 2 vertices.
std::optional<std::vector<qcVector<2>>> outerLoop(const std::vector<qcVector<2>>& traced);

/// The ends of all edges of a closed path, from edge `first` around to the one before it. An edge
/// whose ends coincide contributes the origin, as its segment is a default one.
std::vector<qcVector<2>> endsRound(const plane::Path& path, std::size_t first);

/// One boundary that runs around `mine` and then around `other`, from the first crossing of an edge
/// of `mine` with `other`: through the crossing, the endsRound() of `mine` from the crossed edge
/// on, the crossing again, and those of `other`. Nothing when they do not cross. To join many
/// boundaries, see growingboundary.h.
std::optional<std::vector<qcVector<2>>> splice(const plane::Path& mine,
                                               const CrossingTarget& other);

}  // namespace cntr::compute
