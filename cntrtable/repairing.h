// SPDX-License-Identifier: MIT
//
// Repair of many features at once, on several threads.

#pragma once

#include <cntrtable/export.h>
#include <cntrtable/outlines.h>
#include <platform/core/shapes.h>

/// What each feature fills by the rule, in the normal form of cntrsets/sets.h, with its label;
/// lines as they are. A feature that fills nothing, or that cannot be repaired, is eNothing with a
/// problem that says why, and those that were eNothing stay so. Edge elements are left out.
///
/// `threads` is how many share the work, 0 for as many as there are processors: the result is the
/// same whatever their number.
CNTRTABLE_EXPORT qcOutlines qf_MakeValid(const qcOutlines& outlines, qcPolygon::PolyFillMode rule,
                                         unsigned threads = 0);
