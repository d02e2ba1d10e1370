// SPDX-License-Identifier: MIT
//
// The point of a curve that is farthest from another.

#pragma once

#include <cntr/compute/curves.h>

namespace cntr::compute {

/// The distance from `to` of a point of `from` that is, within the tolerance, the farthest from it;
/// `known` if there is none that is farther than that by more than the tolerance. The method stands
/// with qf_Hausdorff() (cntr/deviation.h).
/// REQUIRES: tolerance > 0.
double farthestFrom(const Curves& from, const Curves& to, double known, double tolerance);

}  // namespace cntr::compute
