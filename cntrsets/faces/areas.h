// SPDX-License-Identifier: MIT
//
// The areas of faces, with which the set operations check their own work: however rings cross, each
// one's signed area is that of the faces, every face counted as often as the ring winds around it.

#pragma once

#include <span>
#include <vector>

#include <cntr/plane/twofold.h>
#include <cntrsets/faces/faces.h>
#include <cntrsets/rings.h>

namespace cntr::sets {

using plane::Twofold;

/// For each of `faces.windings` the area of all faces that have it together, 0 for the outside.
/// O(n). REQUIRES: coordinates as for node().
std::vector<Twofold> areasOf(const Faces& faces);

/// The sum of the rings' signed areas, counter-clockwise positive. O(n).
Twofold areaOf(const std::vector<qcRings>& parts);

/// Whether the areas of the faces are those of the rings that `edges` walk along, when the faces'
/// boundaries lie at most `moved` from these. O(n).
bool areasAgree(std::span<const Piece> edges, const Faces& faces, std::span<const Twofold> areas,
                double moved);

/// How far the sum of `vertices` products of coordinates up to 2^480 may be from the true one.
double roundingOfAreas(std::size_t vertices);

}  // namespace cntr::sets
