// SPDX-License-Identifier: MIT
//
// The largest circle inside outlines with holes.

#pragma once

#include <vector>

#include <cntrsets/export.h>
#include <cntrsets/filled.h>
#include <cntrsets/rings.h>
#include <platform/core/shapes.h>

/// @addtogroup setoperations
/// @{

/// A circle inside the feature's filled set (eNonZero, see sets.h; boundaries of parts that lie
/// within the set do not count), whose radius is at most `tolerance` smaller than that of the
/// largest one. If there are several largest circles, it is always the same one for the same
/// feature. A feature that fills nothing gives a circle of radius 0 about (0, 0), one without room
/// for a circle larger than the tolerance a circle of radius 0 about a vertex.
///
/// The radius is the distance of the centre from the boundary, up to rounding: 1e-15 of the extent
/// (the longer side of the bounding box), and that of the centre's coordinates. A tolerance below
/// 1e-10 of the extent is raised to that. Throws qcContourDefs::BadParams "tolerance is not
/// positive", "a coordinate is not a finite number", "the feature is too thin for the tolerance"
/// when the search would take more than about a second (2^20 pieces plus 256 per vertex), and what
/// qf_MakeValid() throws for rings that touch, cross or overlap.
///
/// The bounding box is halved repeatedly, and a piece is dropped when none of its points can be
/// farther from the boundary, by more than the tolerance, than the farthest point so far (P.
/// Hansen, D. Peeters, D. Richard, J.-F. Thisse, "The minisum and minimax location problems
/// revisited", Operations Research 33, 1985). Halves are searched in depth; when that finds nothing
/// better for a while, the piece that can reach farthest is next. What a piece can reach is bounded
/// by the edges near it: distances from edges are convex, and a weighted mean of them, with weights
/// from the linear program of their tangents, is largest at a corner. O(n log n) for most outlines,
/// and less than qf_RingContact() takes. The worst case is a gap between edges that has the same
/// width all along: each vertex beside it then takes a number of pieces that grows with log(width /
/// tolerance). If n edges are equally far from a point, finding the nearest one there takes O(n). A
/// shape much longer than wide takes a number of pieces that grows with length / width, as long as
/// the width exceeds the tolerance.
CNTRSETS_EXPORT qcCircle qf_InscribedCircle(const std::vector<qcRings>& feature, double tolerance);

/// The same for a feature whose contact is known.
CNTRSETS_EXPORT qcCircle qf_InscribedCircle(const std::vector<qcRings>& feature,
                                            qcRingContact contact, double tolerance);

/// @}
