// SPDX-License-Identifier: MIT
//
// The rigid motion that brings points nearest to curves.

#pragma once

#include <span>
#include <vector>

#include <cntr/compute/curves.h>

namespace cntr::compute {

/// A point that stands for a length of a boundary.
struct WeighedPoint {
  qcVector<2> at;
  double weight = 0.0;
};

/// A rotation about the centre of the points that are moved, and the `place` to which the centre
/// moves.
struct Pose {
  /// The unit vector to which the rotation brings the x axis.
  qcVector<2> direction{1.0, 0.0};
  qcVector<2> place;
};

struct Alignment {
  Pose pose;
  qcVector<2> center;
  double residual = 0.0;
  int steps = 0;
  bool settled = false;
};

/// The pose in which the points `moved` have the least root mean square distance from `curves`;
/// `fixed` are points of these. qf_Align() (cntr/deviation.h) describes the method.
/// REQUIRES: both have points and a positive weight.
Alignment align(std::span<const WeighedPoint> moved, std::span<const WeighedPoint> fixed,
                const Curves& curves);

}  // namespace cntr::compute
