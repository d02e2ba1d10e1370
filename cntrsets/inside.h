// SPDX-License-Identifier: MIT
//
// Which points lie in a feature: the answer of the program, of tables and of joins.

#pragma once

#include <span>
#include <vector>

#include <cntrsets/export.h>
#include <cntrsets/rings.h>

/// @addtogroup setoperations
/// @{

/// For each point whether it lies in the feature's filled set (eNonZero, see sets.h).
///
/// For rings that are simple or touch (filled.h) this is the answer of the library's regions:
/// inside some part's outline as qcRegion::inside() sees it and, likewise, in none of that part's
/// holes. But a point that is outside by the exact number of edges on one side of it, and farther
/// than 1e-6 from every edge, is outside: the ray by which a region decides can be too short near a
/// corner of the bounding box.
///
/// For rings that cross or overlap exact winding numbers decide, of points on an edge those just
/// beyond it: an edge between two filled faces is inside, one on the boundary may fall on either
/// side.
///
/// Rings of less than 3 vertices hold no points, and no point outside the box of all outlines is
/// inside. Throws qcContourDefs::BadParams "a coordinate is not a finite number" for vertices;
/// points may have any coordinates. As fast as qf_RingContact() and regions for a few points; with
/// as many points as vertices O((n + m) log n) for well-behaved outlines, O(n m) at worst.
CNTRSETS_EXPORT std::vector<bool> qf_Inside(const std::vector<qcRings>& feature,
                                            std::span<const qcVector<2>> points);

/// @}
