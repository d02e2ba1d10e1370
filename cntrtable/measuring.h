// SPDX-License-Identifier: MIT
//
// Measures of many features at once, on several threads.

#pragma once

#include <span>
#include <string>

#include <cntrtable/arrow.h>
#include <cntrtable/export.h>
#include <cntrtable/outlines.h>

/// @addtogroup tables
/// @{

/// A record batch with a row for each feature: the columns asked for, in that order, then `status`
/// ("ok" or "failed") and `note` (a remark on the row, null if there is none). The columns are
/// those of docs/measures.md: numbers as 64-bit floating point, counts as 64-bit integers, yes and
/// no as booleans, null if the question has no meaning; `note` may be among the names and changes
/// nothing. Answers are in the unit of the coordinates, and rings that cross or overlap are
/// measured as filled.
///
/// A row fails, and has only a note, when its feature is eNothing, when a ring has fewer than 3 or
/// a line fewer than 2 vertices, and when a coordinate is not a finite number.
///
/// `threads` is the number of threads that share the work, 0 for as many as there are processors;
/// the answers do not depend on it, bit for bit. Throws qcContourDefs::BadParams for a name that is
/// not a measure or is given twice.
CNTRTABLE_EXPORT qcArrowColumn qf_Measure(const qcOutlines& outlines,
                                          std::span<const std::string> columns,
                                          unsigned threads = 0);

/// @}
