// SPDX-License-Identifier: MIT
//
// Repair of a closed boundary that crosses itself: the walk along its outside, the clean-up of what
// the walk traced, and the joining of two boundaries that cross.

#pragma once

#include <optional>
#include <vector>

#include <cntr/compute/outline.h>

namespace cntr::compute {

/// Walks the boundary from the first edge that certainly lies on the outside of the figure, turning
/// onto every edge that it meets, until it is back where it started. `probe` is how far from the
/// middle of an edge its two sides are tested. Nothing when no edge can start the walk, or when the
/// walk comes back to a state that it has been in without meeting its start.
std::optional<std::vector<qcVector<2>>> traceBoundary(const Outline& boundary, double probe);

/// The first of the loops that are left when `traced` is cut where it touches itself within 1e-6,
/// loops inside others are dropped, and loops that touch are joined. Nothing when none is left.
std::optional<std::vector<qcVector<2>>> outerLoop(const std::vector<qcVector<2>>& traced);

/// One boundary that runs round `mine` and then round `other`, from the first crossing of an edge
/// of `mine` with `other`. Nothing when they do not cross. An edge whose ends coincide contributes
/// the origin: its segment is a default one.
std::optional<std::vector<qcVector<2>>> splice(const Path& mine, const CrossingTarget& other);

}  // namespace cntr::compute
