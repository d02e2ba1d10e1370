// SPDX-License-Identifier: MIT
//
// Outlines with holes as plain values: what files, tables and set operations work on. Unlike
// qcRegion they remember no answers and refuse nothing. Operations on them are in sets.h.

#pragma once

#include <vector>

#include <cntr/region.h>
#include <cntrsets/export.h>

/// @addtogroup setoperations
/// @{

/// One part of a feature: an outline and its holes, each a list of vertices, the last of which is
/// joined to the first. The winding of a ring does not matter. A feature is a
/// std::vector<qcRings>.
struct qcRings {
  /// The outer ring.
  std::vector<qcVector<2>> outline;
  /// The rings of the holes.
  std::vector<std::vector<qcVector<2>>> holes;

  /// Equal vertices in the same order from the same start; holes in the same order.
  bool operator==(const qcRings&) const = default;
};

/// The region with this outline and these holes, label 0, nothing repaired. Throws
/// qcContourDefs::BadParams "holes cannot intersect region" when a hole crosses or touches the
/// outline, as qcRegion::holes() does. O(n log n) for well-behaved outlines.
CNTRSETS_EXPORT qcRegion qf_ToRegion(const qcRings& rings);

/// @}
