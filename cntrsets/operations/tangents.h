// SPDX-License-Identifier: MIT
//
// Where the smallest of several distances is largest, as far as their tangents tell.

#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include <platform/core/vector.h>

namespace cntr::sets {

/// Tangents of distances from sides, and the linear program for the point in an upright rectangle
/// about the origin where the smallest of them is largest.
class TangentProgram {
 public:
  /// A distance from a side that is known at a point.
  struct Known {
    std::size_t side;
    qcVector<2> at;
    /// From the side to the point; its length is the distance.
    qcVector<2> offset;
    double distance;
  };

  /// A side that determines the solution, and its weight.
  struct Share {
    std::size_t side = 0;
    double weight = 0.0;
  };

  struct Solution {
    qcVector<2> at;
    /// The smallest distance there according to the tangents.
    double value = 0.0;
    /// Weights are at least 0 and sum to 1.
    std::array<Share, 3> shares;
  };

  void clear() { tangents_.clear(); }
  /// The distance grows in the direction of the offset, with slope 1.
  void add(const Known& known) {
    const double inverse = known.distance > 0.0 ? 1.0 / known.distance : 0.0;
    const qcVector<2> growth = known.offset * inverse;
    tangents_.push_back({known.side,
                         known.distance - growth.x() * known.at.x() - growth.y() * known.at.y(),
                         growth});
  }

  /// The dual simplex method: starting with the tangent that is smallest at the origin and the
  /// corner towards which it grows, the tangent or side of the rectangle that the point violates
  /// most replaces one of those that determined it. It ends with the solution, or near it after a
  /// number of steps; the weights meet their conditions in any case. REQUIRES: at least one
  /// tangent.
  Solution solve(const qcVector<2>& half) const;

 private:
  struct Tangent {
    std::size_t side;
    /// At the origin.
    double value;
    qcVector<2> growth;
  };

  struct Row;
  Row rowOf(std::size_t tangent) const;
  Row mostViolated(const std::array<double, 3>& at, const qcVector<2>& half) const;

  std::vector<Tangent> tangents_;
};

}  // namespace cntr::sets
