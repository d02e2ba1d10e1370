// SPDX-License-Identifier: MIT
//
// The areas of faces, with which the set operations check their own work: however rings cross, the
// signed area of each is that of the faces, each counted as often as the ring winds around it.

#pragma once

#include <span>
#include <vector>

#include <cntr/plane/twofold.h>
#include <cntrsets/faces/faces.h>
#include <cntrsets/rings.h>

namespace cntr::sets {

using plane::Twofold;

/// For each of `faces.windings` the total area of all faces that have it, 0 for the outside. O(n).
/// REQUIRES: coordinates as for node().
std::vector<Twofold> areasOf(const Faces& faces);

/// The sum of the rings' signed areas, counter-clockwise positive. O(n).
Twofold areaOf(const std::vector<qcRings>& parts);

/// Whether the areas of the faces agree with those of the rings along `edges`, when the boundaries
/// of the faces lie at most `moved` away from these. O(n).
bool areasAgree(std::span<const Piece> edges, const Faces& faces, std::span<const Twofold> areas,
                double moved);

/// How far the sum of `vertices` products of coordinates up to 2^480 may be from the true one.
double roundingOfAreas(std::size_t vertices);

}  // namespace cntr::sets
