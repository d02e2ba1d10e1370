// SPDX-License-Identifier: MIT
//
// The point of an area that is farthest from its boundary. inscribed.h describes the method.

#pragma once

#include <cstddef>
#include <span>

#include <cntrsets/operations/sidetree.h>

namespace cntr::sets {

/// A point inside and its distance from the boundary.
struct Room {
  Point centre;
  double radius = 0.0;
  /// How many pieces of the bounding box were searched to find it.
  std::size_t pieces = 0;
};

/// A point whose distance from all sides is at most `tolerance` less than the largest in the area,
/// which is where a ray crosses an odd number of sides. Radius 0, at an end of a side, when no
/// distance exceeds the tolerance. REQUIRES: at least one side, none that runs along another,
/// coordinates of about 1, a positive tolerance. Throws qcContourDefs::BadParams "the feature is
/// too thin for the tolerance".
Room roomiest(std::span<const Side> sides, double tolerance);

}  // namespace cntr::sets
