// SPDX-License-Identifier: MIT
//
// The middle of an outline or line, for pictures. Measures are in cntrtable/measures.h.

#pragma once

#include <cntrsets/rings.h>

namespace tool {

/// A visual centre: the centre of mass of an outline without its holes, even if they cross it, or
/// the mean position of a line or of an outline without area.
qcVector<2> middleOf(const qcRings& part, bool closed);

}  // namespace tool
