// SPDX-License-Identifier: MIT
//
// Whether a path crosses itself.

#pragma once

#include <cntr/compute/crossings.h>

namespace cntr::compute {

/// True when an edge that is not degenerate crosses another one, end touches not counted: either of
/// the two may be the one whose ends must keep clear of the other.
bool crossesItself(const CrossingTarget& target);

}  // namespace cntr::compute
