// SPDX-License-Identifier: MIT
//
// Repair of a region whose outer boundary crosses itself, and the joining of two regions that cross
// each other. Holes are not carried over.

#pragma once

#include <cstddef>

#include <testing/plain/region.h>

namespace plain {

/// The first edge (from vertex i to i + 1) that certainly lies on the outside of the figure; throws
/// `badParams` if there is none.
std::size_t startingEdge(const Region& region);

/// The walk from that edge that turns onto every edge it meets until it is back at its start;
/// throws `badParams` when it never gets back.
Points tracedBoundary(const Region& region);

/// The walk cut where it touches itself, without loops inside others, and joined where loops touch.
Region cleanedHull(const Points& traced);

/// The region itself when its boundary does not cross itself, else the traced boundary.
Region regularize(const Region& region);

/// The region itself when its boundary does not cross itself, else the cleaned trace.
Region outerHull(const Region& region);

/// One boundary around both from their first crossing; throws `badParams` when they do not meet.
Region splice(const Region& region, const Region& other);

}  // namespace plain
