// SPDX-License-Identifier: MIT
//
// The rings around the faces that a rule keeps.

#pragma once

#include <vector>

#include <cntrsets/faces/faces.h>
#include <cntrsets/rings.h>

namespace cntr::sets {

/// The boundary of all faces whose windings are kept (`kept[i]` for `faces.windings[i]`), in the
/// normal form of sets.h: a part for each piece of the area that is connected by more than points,
/// no ring passing a vertex twice. It depends only on the set of boundary edges. O(n log n).
/// REQUIRES: the outside is not kept.
std::vector<qcRings> boundaryOf(const Faces& faces, const std::vector<bool>& kept);

}  // namespace cntr::sets
