// SPDX-License-Identifier: MIT
//
// A closed path that owns its vertices and what questions about them need: for the repair of
// boundaries, whose loops come and go. Shapes that callers hold keep the same in what they
// remember.

#pragma once

#include <optional>
#include <vector>

#include <cntr/compute/containment.h>

namespace cntr::compute {

/// A closed outline of at least one vertex.
class Outline {
 public:
  /// O(n).
  explicit Outline(std::vector<qcVector<2>> points);

  const std::vector<qcVector<2>>& points() const noexcept { return points_; }
  std::size_t size() const noexcept { return points_.size(); }
  /// The box of the vertices; points outside it are not held.
  const plane::Box& bounds() const noexcept { return bounds_; }

  /// See crossings().
  std::vector<Crossing> crossingsWith(const qcVector<2>& a, const qcVector<2>& b,
                                      bool countEndpointTouches) const;
  /// See rayCrossings().
  std::size_t rayCrossingsFrom(const qcVector<2>& p, bool bothDirections) const;
  bool holds(const qcVector<2>& p) const { return rayCrossingsFrom(p, false) % 2 == 1; }

 private:
  plane::Path path() const noexcept { return {points_, true}; }
  CrossingTarget target() const noexcept { return {path(), bounds_, edges_ ? &*edges_ : nullptr}; }

  std::vector<qcVector<2>> points_;
  plane::Box bounds_;
  /// Nothing for short outlines.
  std::optional<index::EdgeIndex> edges_;
  /// The length of the ray that decides containment.
  double reach_;
};

}  // namespace cntr::compute
