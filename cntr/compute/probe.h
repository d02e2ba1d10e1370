// SPDX-License-Identifier: MIT
//
// One segment that is asked what it crosses: the test that decides each edge, and two cheap ones
// that rule out edges and whole boxes without changing an answer.
//
// A crossing point is within 1e-6 of the segment and of its edge, so the edge comes within 2e-6 of
// the segment's line, give or take the rounding of coordinates. What keeps farther away from that
// line, on one side of it, is not crossed. With the line's direction d a point q is |cross(d, q -
// a)| / |d| away; a box of centre c and half extents h reaches (|d.y| h.x + |d.x| h.y) / |d|
// towards it.

#pragma once

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include <cntr/plane/box.h>
#include <cntr/plane/path.h>

namespace cntr::compute {

/// A crossing point lies nearer than this to both segments; an end of the segment that comes as
/// near as this to an edge touches it.
inline constexpr double touchDistance = 1e-6;

/// The segment that is being asked about.
class Probe {
 public:
  /// `bounds` is the bounding box of the edges that will be asked about.
  Probe(const qcVector<2>& a, const qcVector<2>& b, bool countEndpointTouches,
        const plane::Box& bounds)
      : a_(a),
        b_(b),
        direction_(b - a),
        box_(plane::edgeBox(a, b)),
        margin_(marginFor(bounds)),
        countEndpointTouches_(countEndpointTouches) {}

  /// Position along the segment, from a.
  double key(const qcVector<2>& p) const noexcept { return (p - a_) * direction_; }

  /// False when no edge in the box can be crossed.
  bool mayMeet(const plane::Box& box) const noexcept {
    return plane::overlaps(box, box_) && !passesBy(box);
  }

  /// The crossing point of the segment with an edge, if they cross.
  std::optional<qcVector<2>> crossingWith(const plane::Edge& edge) const noexcept {
    if (!plane::overlaps(plane::edgeBox(edge.from, edge.to), box_)) return {};
    if (passesBy(edge) || plane::isDegenerate(edge)) return {};
    const qcVector<2> along = edge.to - edge.from;
    if (qnKernel::isParallel(along, direction_)) return {};
    if (!countEndpointTouches_ && (touches(edge, a_) || touches(edge, b_))) return {};
    const qcVector<2> p = qnKernel::intersectLines(edge.from, along, a_, direction_);
    if (!(qnKernel::distanceToSegment(p, edge.from, edge.to) < touchDistance)) return {};
    if (!(qnKernel::distanceToSegment(p, a_, b_) < touchDistance)) return {};
    return p;
  }

 private:
  static bool touches(const plane::Edge& edge, const qcVector<2>& end) noexcept {
    return qnKernel::distanceToSegment(end, edge.from, edge.to) <= touchDistance;
  }

  // In the next two numbers that overflow, or are none, rule nothing out.

  bool passesBy(const plane::Edge& edge) const noexcept {
    const double from = qnKernel::cross(direction_, edge.from - a_);
    const double to = qnKernel::cross(direction_, edge.to - a_);
    return (from > margin_ && to > margin_) || (from < -margin_ && to < -margin_);
  }

  bool passesBy(const plane::Box& box) const noexcept {
    const qcVector<2> center((box.minX + box.maxX) * 0.5, (box.minY + box.maxY) * 0.5);
    const double reach = std::abs(direction_.y()) * ((box.maxX - box.minX) * 0.5) +
                         std::abs(direction_.x()) * ((box.maxY - box.minY) * 0.5);
    return std::abs(qnKernel::cross(direction_, center - a_)) > reach + margin_;
  }

  /// More than 2e-6 and all rounding, times a bound of |d|.
  double marginFor(const plane::Box& bounds) const noexcept {
    const double scale = std::max({std::abs(bounds.minX), std::abs(bounds.maxX),
                                   std::abs(bounds.minY), std::abs(bounds.maxY), std::abs(a_.x()),
                                   std::abs(a_.y()), std::abs(b_.x()), std::abs(b_.y())});
    return (3.0 * touchDistance + 64.0 * std::numeric_limits<double>::epsilon() * scale) *
           (std::abs(direction_.x()) + std::abs(direction_.y()));
  }

  qcVector<2> a_;
  qcVector<2> b_;
  qcVector<2> direction_;
  plane::Box box_;
  double margin_;
  bool countEndpointTouches_;
};

}  // namespace cntr::compute
