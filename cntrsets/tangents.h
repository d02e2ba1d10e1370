// SPDX-License-Identifier: MIT
//
// Where the least of several distances is largest, as far as their tangents tell.

#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include <platform/core/vector.h>

namespace cntr::sets {

/// Tangents of distances from sides, and the linear program of the point in an upright rectangle
/// about the origin where the least of them is largest.
class TangentProgram {
 public:
  /// A distance from a side, known at a point.
  struct Known {
    std::size_t side;
    qcVector<2> at;
    /// From the side to the point, as long as the distance.
    qcVector<2> offset;
    double distance;
  };

  /// A side that decides the solution, and how much.
  struct Share {
    std::size_t side = 0;
    double weight = 0.0;
  };

  struct Solution {
    qcVector<2> at;
    /// What the tangents tell of the least distance there.
    double value = 0.0;
    /// Weights are at least 0 and sum to 1.
    std::array<Share, 3> shares;
  };

  void clear() { tangents_.clear(); }
  /// The distance grows in the direction of the offset, by as much as the way.
  void add(const Known& known) {
    const double inverse = known.distance > 0.0 ? 1.0 / known.distance : 0.0;
    const qcVector<2> growth = known.offset * inverse;
    tangents_.push_back({known.side,
                         known.distance - growth.x() * known.at.x() - growth.y() * known.at.y(),
                         growth});
  }

  /// The dual simplex method: from the tangent that is least at the origin and the corner that it
  /// grows to, the tangent or border that the point violates most takes the place of one that
  /// decided before. It ends with the solution, or near it after a number of steps; the weights
  /// meet their conditions in any case. REQUIRES: at least one tangent.
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
