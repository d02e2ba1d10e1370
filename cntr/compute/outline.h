// SPDX-License-Identifier: MIT
//
// A closed path that owns its vertices and builds what questions about it need, once: for the
// repair of boundaries, whose loops come and go. Shapes that callers hold remember the same things
// in their caches.

#pragma once

#include <memory>
#include <optional>
#include <vector>

#include <cntr/compute/containment.h>
#include <cntr/index/vertexgrid.h>

namespace cntr::compute {

/// A closed outline of at least one vertex.
class Outline {
 public:
  explicit Outline(std::vector<qcVector<2>> points) : points_(std::move(points)) {}

  const std::vector<qcVector<2>>& points() const noexcept { return points_; }
  std::size_t size() const noexcept { return points_.size(); }

  /// See crossings().
  std::vector<Crossing> crossingsWith(const qcVector<2>& a, const qcVector<2>& b,
                                      bool countEndpointTouches) const;
  /// See rayCrossings().
  std::size_t rayCrossingsFrom(const qcVector<2>& p, bool bothDirections) const;
  bool holds(const qcVector<2>& p) const { return rayCrossingsFrom(p, false) % 2 == 1; }

 private:
  CrossingTarget target() const;

  std::vector<qcVector<2>> points_;
  mutable std::optional<plane::Box> bounds_;
  mutable std::unique_ptr<index::EdgeIndex> edges_;
  mutable std::optional<double> reach_;
};

}  // namespace cntr::compute
