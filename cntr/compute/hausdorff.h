// SPDX-License-Identifier: MIT
//
// The point of a curve that is farthest from another.

#pragma once

#include <cntr/compute/curves.h>

namespace cntr::compute {

/// The distance from `to` of the point of `from` that is farthest from it, within the tolerance;
/// `known` if no point is farther than that by more than the tolerance. qf_Hausdorff()
/// (cntr/deviation.h) describes the method.
/// REQUIRES: tolerance > 0.
double farthestFrom(const Curves& from, const Curves& to, double known, double tolerance);

}  // namespace cntr::compute
