// SPDX-License-Identifier: MIT
//
// A closed path that owns its vertices and what questions about them need: for the repair of
// boundaries, whose loops come and go. The shapes of callers keep the same in what they remember.

#pragma once

#include <optional>
#include <vector>

#include <cntr/compute/containment.h>
#include <cntr/compute/evenodd.h>

namespace cntr::compute {

/// A closed outline of at least one vertex.
class Outline {
 public:
  /// O(n).
  explicit Outline(std::vector<qcVector<2>> points);

  const std::vector<qcVector<2>>& points() const noexcept { return points_; }
  std::size_t size() const noexcept { return points_.size(); }
  /// The box of the vertices; holds() is false for points outside it.
  const plane::Box& bounds() const noexcept { return bounds_; }

  /// See firstCrossing().
  std::optional<Crossing> firstCrossingWith(const qcVector<2>& a, const qcVector<2>& b,
                                            bool countEndpointTouches) const;
  /// See countCrossings().
  std::size_t countCrossingsWith(const qcVector<2>& a, const qcVector<2>& b,
                                 bool countEndpointTouches, std::size_t most) const;
  /// See rayCrossings().
  std::size_t rayCrossingsFrom(const qcVector<2>& p, bool bothDirections) const;
  /// True when rayCrossingsFrom(p, false) is odd. Mostly by even-odd parity, which needs no ray.
  bool holds(const qcVector<2>& p) const;

 private:
  plane::Path path() const noexcept { return {points_, true}; }
  CrossingTarget target() const noexcept { return {path(), bounds_, edges_ ? &*edges_ : nullptr}; }

  std::vector<qcVector<2>> points_;
  plane::Box bounds_;
  /// For parity.
  Extents extents_;
  /// Nothing for short outlines.
  std::optional<index::EdgeIndex> edges_;
  /// The length of the ray that decides containment.
  double reach_;
};

}  // namespace cntr::compute
