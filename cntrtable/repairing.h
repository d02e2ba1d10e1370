// SPDX-License-Identifier: MIT
//
// Repair of many features at once, on several threads.

#pragma once

#include <cntrtable/export.h>
#include <cntrtable/outlines.h>
#include <platform/core/shapes.h>

/// @addtogroup tables
/// @{

/// What each feature fills by the rule, in the normal form of cntrsets/sets.h, with its label;
/// lines are kept unchanged. A feature that fills nothing, or that cannot be repaired, becomes
/// eNothing with a problem that says why; those that were eNothing stay so. Edge elements are left
/// out.
///
/// `threads` is the number of threads that share the work, 0 for as many as there are processors;
/// the result does not depend on it.
CNTRTABLE_EXPORT qcOutlines qf_MakeValid(const qcOutlines& outlines, qcPolygon::PolyFillMode rule,
                                         unsigned threads = 0);

/// @}
