// SPDX-License-Identifier: MIT
//
// Repair of a feature by the library's own operations, which follow an outline and turn at its
// crossings.

#pragma once

#include <optional>

#include <cntr/contourdefs.h>
#include <cntrformats/feature.h>

namespace tool {

struct WalkRepair {
  using Mode = qcContourDefs::IntersectionMode;

  formats::Geometry geometry;
  bool stillCrosses = false;
};

/// Repairs a feature of one outline as a region, one of several as a region set; empty when no
/// outline crosses itself or another. Sets are repaired again until their outlines no longer cross,
/// as far as that helps. Holes of outlines that change are left out.
///
/// Throws FeatureError when an outline cannot be repaired.
std::optional<WalkRepair> walkRepaired(const formats::Geometry& geometry, WalkRepair::Mode mode);

}  // namespace tool
