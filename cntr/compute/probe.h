// SPDX-License-Identifier: MIT
//
// A segment and what it crosses: the test that decides each edge, and two cheap ones that rule out
// edges and whole boxes without changing an answer.
//
// An edge that crosses the segment comes within the crossing margin (plane/tolerances.h) of the
// segment's line. Edges that stay farther away, on one side of the line, are not crossed. A point q
// lies |cross(d, q - a)| / |d| away from the line through a with direction d; a box with centre c
// and half extents h reaches (|d.y| h.x + |d.x| h.y) / |d| towards it, and (|d.x| h.x + |d.y| h.y)
// / |d| along it.

#pragma once

#include <algorithm>
#include <cmath>
#include <optional>

#include <cntr/plane/box.h>
#include <cntr/plane/path.h>
#include <cntr/plane/tolerances.h>

namespace cntr::compute {

/// The segment in question.
class Probe {
 public:
  /// `bounds` is the bounding box of the edges to be tested.
  Probe(const qcVector<2>& a, const qcVector<2>& b, bool countEndpointTouches,
        const plane::Box& bounds)
      : Probe({a, b}, countEndpointTouches, marginFor(bounds, a, b)) {}

  /// The same when the crossing margin of the segment and the edges is known.
  Probe(const plane::Edge& segment, bool countEndpointTouches, double crossingMargin)
      : a_(segment.from),
        b_(segment.to),
        direction_(b_ - a_),
        box_(plane::edgeBox(a_, b_)),
        margin_(crossingMargin * (std::abs(direction_.x()) + std::abs(direction_.y()))),
        countEndpointTouches_(countEndpointTouches) {}

  /// Position along the segment, from a.
  double key(const qcVector<2>& p) const noexcept { return (p - a_) * direction_; }

  /// No crossing with an edge in the box has a key below this.
  double leastKey(const plane::Box& box) const noexcept {
    const double reach = std::abs(direction_.x()) * ((box.maxX - box.minX) * 0.5) +
                         std::abs(direction_.y()) * ((box.maxY - box.minY) * 0.5);
    return key(centerOf(box)) - reach - margin_;
  }

  /// False when no edge in the box can be crossed.
  bool mayMeet(const plane::Box& box) const noexcept {
    return plane::overlaps(box, box_) && !passesBy(box);
  }

  /// True when the edge certainly lies on one side of the segment's line: neither crosses the
  /// other. Also false when a product overflows or is NaN.
  bool passesBy(const plane::Edge& edge) const noexcept {
    const double from = qnKernel::cross(direction_, edge.from - a_);
    const double to = qnKernel::cross(direction_, edge.to - a_);
    return (from > margin_ && to > margin_) || (from < -margin_ && to < -margin_);
  }

  /// The crossing point of the segment with an edge, if they cross.
  std::optional<qcVector<2>> crossingWith(const plane::Edge& edge) const noexcept {
    if (!plane::overlaps(plane::edgeBox(edge.from, edge.to), box_)) return {};
    if (passesBy(edge) || plane::isDegenerate(edge)) return {};
    const qcVector<2> along = edge.to - edge.from;
    if (qnKernel::isParallel(along, direction_)) return {};
    if (!countEndpointTouches_ && (touches(edge, a_) || touches(edge, b_))) return {};
    const qcVector<2> p = qnKernel::intersectLines(edge.from, along, a_, direction_);
    if (!(qnKernel::distanceToSegment(p, edge.from, edge.to) < plane::touchDistance)) return {};
    if (!(qnKernel::distanceToSegment(p, a_, b_) < plane::touchDistance)) return {};
    return p;
  }

 private:
  static bool touches(const plane::Edge& edge, const qcVector<2>& end) noexcept {
    return qnKernel::distanceToSegment(end, edge.from, edge.to) <= plane::touchDistance;
  }

  static qcVector<2> centerOf(const plane::Box& box) noexcept {
    return {(box.minX + box.maxX) * 0.5, (box.minY + box.maxY) * 0.5};
  }

  /// Also false when a product overflows or is NaN.
  bool passesBy(const plane::Box& box) const noexcept {
    const double reach = std::abs(direction_.y()) * ((box.maxX - box.minX) * 0.5) +
                         std::abs(direction_.x()) * ((box.maxY - box.minY) * 0.5);
    return std::abs(qnKernel::cross(direction_, centerOf(box) - a_)) > reach + margin_;
  }

  static double marginFor(const plane::Box& bounds, const qcVector<2>& a,
                          const qcVector<2>& b) noexcept {
    return plane::crossingMargin(
        std::max({plane::largestCoordinate(bounds, a), std::abs(b.x()), std::abs(b.y())}));
  }

  qcVector<2> a_;
  qcVector<2> b_;
  qcVector<2> direction_;
  plane::Box box_;
  /// The crossing margin times an upper bound of |d|.
  double margin_;
  bool countEndpointTouches_;
};

}  // namespace cntr::compute
