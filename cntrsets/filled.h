// SPDX-License-Identifier: MIT
//
// Measures of what outlines with holes fill, and how their rings lie in relation to each other. The
// filled set (eNonZero) is defined in sets.h.

#pragma once

#include <vector>

#include <cntr/inertia.h>
#include <cntrsets/export.h>
#include <cntrsets/rings.h>

/// @addtogroup setoperations
/// @{

/// How the rings of a feature lie in relation to each other.
enum class qcRingContact {
  /// They share no points except the vertices between neighbouring edges.
  eSimple,
  /// They share points but bound the filled set simply nevertheless: a hole that meets its outline,
  /// holes or parts with a common corner or edge, a ring that passes a vertex twice or runs back
  /// along itself.
  eTouches,
  /// Two edges cross, or a ring winds around some points counter-clockwise and around others
  /// clockwise.
  eCrosses,
  /// No edges cross, but an area is covered twice: a hole outside its outline or in another hole, a
  /// part within a part, a ring walked twice.
  eOverlaps
};

/// Decided exactly, on the coordinates as given, except that those smaller than the largest by a
/// factor of more than 2^944, about 1e284, count as 0; a feature without edges is simple. Throws
/// qcContourDefs::BadParams "a coordinate is not a finite number". O(n log n) for well-behaved
/// outlines, about 0.3 us per vertex; O(n), about 15 ns per vertex, for a single ring that runs
/// around some point once, always in the same direction. O(n^2) for nested rings: 0.6 s for 4,000
/// squares.
CNTRSETS_EXPORT qcRingContact qf_RingContact(const std::vector<qcRings>& feature);

/// Area, centre of mass and second moments about it of the filled set; the empty record when
/// nothing is filled. Rings that are simple or touch are summed as given, outlines positive and
/// holes negative, whatever their winding; for rings that cross or overlap, the result of
/// qf_MakeValid(feature, eNonZero) is measured, whose exceptions pass through.
///
/// Summed with twice the digits of a double, relative to an origin within the feature: for up to
/// 10,000 vertices, up to 1e9 from the origin, the area is accurate to 1e-12 of the bounding box's,
/// the second moments to that times the squared extent (the longer side of the box), the centre to
/// 1e-12 of the extent times (box area / area), each plus one rounding. Sizes whose fourth power
/// overflows or vanishes give infinite or zero moments.
CNTRSETS_EXPORT qc_InertiaData qf_FilledMoments(const std::vector<qcRings>& feature);

/// The same for a feature whose contact is known.
CNTRSETS_EXPORT qc_InertiaData qf_FilledMoments(const std::vector<qcRings>& feature,
                                                qcRingContact contact);

/// Only the area, the same bits, in a fraction of the time.
CNTRSETS_EXPORT double qf_FilledArea(const std::vector<qcRings>& feature, qcRingContact contact);

/// @}
