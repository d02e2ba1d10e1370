// SPDX-License-Identifier: MIT
//
// The rings of features in one list, and what their windings mean for filled sets.

#pragma once

#include <cstddef>
#include <cstdlib>
#include <span>
#include <vector>

#include <cntrsets/faces/faces.h>
#include <cntrsets/rings.h>

namespace cntr::sets {

/// The rings of one or two features, parts one after the other, outlines before their holes. It
/// refers to the features.
class RingList {
 public:
  explicit RingList(const std::vector<qcRings>& feature) { add(feature, 0); }
  /// The rings of one part without holes.
  explicit RingList(std::span<const Point> outline) : rings_{outline}, roles_{{0, 0, false}} {}
  RingList(const std::vector<qcRings>& a, const std::vector<qcRings>& b) {
    add(a, 0);
    add(b, 1);
  }

  const std::vector<std::span<const Point>>& rings() const { return rings_; }
  bool isHole(std::size_t ring) const { return roles_[ring].isHole; }

  /// Whether a face with these windings is in the filled set of a feature by the rule eNonZero.
  bool fills(int feature, const Windings& windings) const {
    for (std::size_t i = 0; i < windings.size(); ++i) {
      const Role& role = roles_[windings[i].ring];
      if (role.feature != feature || role.isHole) continue;
      if (i + 1 == windings.size() || roles_[windings[i + 1].ring].part != role.part) return true;
    }
    return false;
  }

  /// Whether the areas of the rings, positive for outlines and negative for holes, sum to what the
  /// features fill in a face with these windings.
  bool isSumOfRings(const Windings& windings) const {
    int sum = 0;
    for (const Winding& winding : windings) {
      if (std::abs(winding.times) != 1) return false;
      sum += isHole(winding.ring) ? -1 : 1;
    }
    return sum == (fills(0, windings) || fills(1, windings) ? 1 : 0);
  }

 private:
  /// What a ring is.
  struct Role {
    int feature;
    std::size_t part;
    bool isHole;
  };

  void add(const std::vector<qcRings>& feature, int number) {
    for (const qcRings& part : feature) {
      rings_.emplace_back(part.outline);
      roles_.push_back({number, parts_, false});
      for (const std::vector<Point>& hole : part.holes) {
        rings_.emplace_back(hole);
        roles_.push_back({number, parts_, true});
      }
      ++parts_;
    }
  }

  std::vector<std::span<const Point>> rings_;
  std::vector<Role> roles_;
  std::size_t parts_ = 0;
};

}  // namespace cntr::sets
