// SPDX-License-Identifier: MIT
//
// Repair of a feature whose outlines cross themselves or each other.

#pragma once

#include <optional>
#include <string>

#include <cntr/contourdefs.h>
#include <cntrformats/feature.h>

namespace tool {

struct Repair {
  /// The new outlines; none when nothing had to change.
  std::optional<formats::Geometry> geometry;
  /// One line for the user: what was done, or why nothing.
  std::string account;
};

/// Repairs a feature of one outline as a region, one of several as a region set. Sets are repaired
/// again until their outlines no longer cross, as far as that helps. Holes of outlines that change
/// are left out.
///
/// Throws FeatureError when an outline cannot be repaired.
Repair repaired(const formats::Geometry& geometry, qcContourDefs::IntersectionMode mode);

}  // namespace tool
