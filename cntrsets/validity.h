// SPDX-License-Identifier: MIT
//
// GEOS's judgement of a feature. Separate from geos.h, so that set operations do not see GEOS's
// names.

#pragma once

#include <string>
#include <vector>

#include <cntrsets/rings.h>

namespace cntr::sets {

/// Why the feature is not valid as a simple feature of OGC, in GEOS's words; empty when it is.
/// REQUIRES: rings have at least 3 vertices. O(n log n).
std::string flawOf(const std::vector<qcRings>& feature);

}  // namespace cntr::sets
