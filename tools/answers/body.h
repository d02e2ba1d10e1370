// SPDX-License-Identifier: MIT
//
// Where the middle of an outline or line is, for pictures. Measures are in cntrtable/measures.h.

#pragma once

#include <cntrsets/rings.h>

namespace tool {

/// A centre for the eye: the centre of mass of an outline without its holes, even if they cross, or
/// the mean position of a line or of an outline without area.
qcVector<2> middleOf(const qcRings& part, bool closed);

}  // namespace tool
