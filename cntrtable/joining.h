// SPDX-License-Identifier: MIT
//
// Which of many points lie in which of many outlines.

#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include <cntrtable/export.h>
#include <cntrtable/outlines.h>

/// @addtogroup tables
/// @{

/// Pairs of an outline and a point that lies in it, as numbers from 0: pair number i is outlines[i]
/// and points[i].
struct qcInsidePairs {
  /// The feature of each pair.
  std::vector<std::int64_t> outlines;
  /// The point of each pair.
  std::vector<std::int64_t> points;
};

/// All pairs of a feature and a point for which qf_Inside (cntrsets/inside.h) says that the point
/// lies in the feature, sorted by feature, then by point. Lines hold no points, nor do features
/// that are eNothing or have a coordinate that is not a finite number. Points, x and y in turn, may
/// have any coordinates.
///
/// Only the points in a feature's box are tested. `threads` is the number of threads that share
/// the work, 0 for as many as there are processors; the pairs do not depend on it. Throws
/// qcContourDefs::BadParams for an odd number of coordinates.
CNTRTABLE_EXPORT qcInsidePairs qf_InsideJoin(const qcOutlines& outlines,
                                             std::span<const double> points, unsigned threads = 0);

/// @}
