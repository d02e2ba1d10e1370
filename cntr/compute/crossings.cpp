// SPDX-License-Identifier: MIT
//
// Each edge is decided by Probe::crossingWith(), alone. The index only rules out runs of edges: by
// the box of the segment, which is part of the definition, and, so that a long slanting segment
// does not degrade to a scan, by the distance of a box from the segment's line.

#include <cntr/compute/crossings.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace cntr::compute {

namespace {

/// A crossing point lies nearer than this to both segments; an end of the segment that comes as
/// near as this to an edge touches it.
constexpr double touch = 1e-6;

/// The segment that is being asked about.
class Probe {
 public:
  Probe(const qcVector<2>& a, const qcVector<2>& b, bool countEndpointTouches)
      : a_(a),
        b_(b),
        direction_(b - a),
        box_(index::edgeBox(a, b)),
        countEndpointTouches_(countEndpointTouches) {}

  const index::Box& box() const noexcept { return box_; }

  /// Position along the segment, from a.
  double key(const qcVector<2>& p) const noexcept { return (p - a_) * direction_; }

  /// The crossing point of the segment with an edge, if they cross.
  std::optional<qcVector<2>> crossingWith(const Edge& edge) const noexcept {
    if (!index::overlaps(index::edgeBox(edge.from, edge.to), box_)) return {};
    if (isDegenerate(edge)) return {};
    const qcVector<2> along = edge.to - edge.from;
    if (qnKernel::isParallel(along, direction_)) return {};
    if (!countEndpointTouches_ && (touches(edge, a_) || touches(edge, b_))) return {};
    const qcVector<2> p = qnKernel::intersectLines(edge.from, along, a_, direction_);
    if (!(qnKernel::distanceToSegment(p, edge.from, edge.to) < touch)) return {};
    if (!(qnKernel::distanceToSegment(p, a_, b_) < touch)) return {};
    return p;
  }

 private:
  static bool touches(const Edge& edge, const qcVector<2>& end) noexcept {
    return qnKernel::distanceToSegment(end, edge.from, edge.to) <= touch;
  }

  qcVector<2> a_;
  qcVector<2> b_;
  qcVector<2> direction_;
  index::Box box_;
  bool countEndpointTouches_;
};

/// Rules out boxes that the carrying line of a segment passes by.
///
/// A crossing point is within 1e-6 of the segment and of its edge, so the edge's box comes within
/// 2e-6 of the line, give or take the rounding of coordinates of size `scale`. With the line's
/// normal n = (-d.y, d.x) a box of centre c and half extents h stays clear when |n.(c - a)| > |d.y|
/// h.x + |d.x| h.y + margin |d|.
class LineFilter {
 public:
  LineFilter(const qcVector<2>& a, const qcVector<2>& b, const index::Box& bounds)
      : a_(a), direction_(b - a) {
    const double scale = std::max({std::abs(bounds.minX), std::abs(bounds.maxX),
                                   std::abs(bounds.minY), std::abs(bounds.maxY), std::abs(a.x()),
                                   std::abs(a.y()), std::abs(b.x()), std::abs(b.y())});
    margin_ = (3.0 * touch + 64.0 * std::numeric_limits<double>::epsilon() * scale) *
              (std::abs(direction_.x()) + std::abs(direction_.y()));
  }

  /// Numbers that overflow never rule a box out.
  bool passesBy(const index::Box& box) const noexcept {
    const qcVector<2> center((box.minX + box.maxX) * 0.5, (box.minY + box.maxY) * 0.5);
    const double reach = std::abs(direction_.y()) * ((box.maxX - box.minX) * 0.5) +
                         std::abs(direction_.x()) * ((box.maxY - box.minY) * 0.5);
    return std::abs(qnKernel::cross(direction_, center - a_)) > reach + margin_;
  }

 private:
  qcVector<2> a_;
  qcVector<2> direction_;
  double margin_;
};

/// Calls found(point, edge) for the crossings in edge order until it returns false.
template <class Found>
void forEachCrossing(const CrossingTarget& target, const qcVector<2>& a, const qcVector<2>& b,
                     bool countEndpointTouches, Found found) {
  const Probe probe(a, b, countEndpointTouches);
  if (!index::overlaps(target.bounds, probe.box())) return;
  const auto visitRun = [&](std::size_t first, std::size_t last) {
    for (std::size_t k = first; k < last; ++k) {
      const std::optional<qcVector<2>> p = probe.crossingWith(target.path.edge(k));
      if (p && !found(*p, k)) return false;
    }
    return true;
  };
  if (target.index == nullptr) {
    visitRun(0, target.path.edgeCount());
    return;
  }
  const LineFilter line(a, b, target.index->bounds());
  target.index->forEachRun(
      [&](const index::Box& box) {
        return index::overlaps(box, probe.box()) && !line.passesBy(box);
      },
      visitRun);
}

bool isCrossed(const CrossingTarget& target, const Edge& segment, bool countEndpointTouches) {
  bool crossed = false;
  forEachCrossing(target, segment.from, segment.to, countEndpointTouches,
                  [&](const qcVector<2>&, std::size_t) {
                    crossed = true;
                    return false;
                  });
  return crossed;
}

struct Keyed {
  double key;
  Crossing crossing;
};

/// The sort that defines the order of equal keys: position i is compared with every later one and
/// exchanged when that is smaller.
void exchangeSort(std::vector<Keyed>& list) {
  for (std::size_t i = 0; i < list.size(); ++i) {
    for (std::size_t j = i + 1; j < list.size(); ++j) {
      if (list[i].key > list[j].key) std::swap(list[i], list[j]);
    }
  }
}

/// Any sort gives the same order when all keys differ; it is quicker for long lists.
void sortByKey(std::vector<Keyed>& list) {
  constexpr std::size_t shortList = 16;
  if (list.size() <= shortList) return exchangeSort(list);
  const auto byKey = [](const Keyed& x, const Keyed& y) { return x.key < y.key; };
  const auto isNumber = [](const Keyed& x) { return !std::isnan(x.key); };
  if (!std::all_of(list.begin(), list.end(), isNumber)) return exchangeSort(list);
  std::vector<Keyed> sorted = list;
  std::sort(sorted.begin(), sorted.end(), byKey);
  const auto equalKey = [](const Keyed& x, const Keyed& y) { return x.key == y.key; };
  if (std::adjacent_find(sorted.begin(), sorted.end(), equalKey) != sorted.end()) {
    return exchangeSort(list);
  }
  list = std::move(sorted);
}

}  // namespace

std::vector<Crossing> crossings(const CrossingTarget& target, const qcVector<2>& a,
                                const qcVector<2>& b, bool countEndpointTouches) {
  std::vector<Keyed> found;
  const Probe probe(a, b, countEndpointTouches);
  forEachCrossing(target, a, b, countEndpointTouches, [&](const qcVector<2>& p, std::size_t edge) {
    found.push_back({probe.key(p), {p, edge}});
    return true;
  });
  sortByKey(found);
  std::vector<Crossing> result;
  result.reserve(found.size());
  for (const Keyed& keyed : found) result.push_back(keyed.crossing);
  return result;
}

std::size_t countCrossings(const CrossingTarget& target, const qcVector<2>& a, const qcVector<2>& b,
                           bool countEndpointTouches) {
  std::size_t count = 0;
  forEachCrossing(target, a, b, countEndpointTouches, [&](const qcVector<2>&, std::size_t) {
    ++count;
    return true;
  });
  return count;
}

bool crosses(const CrossingTarget& target, const Path& other) {
  for (std::size_t k = 0; k < other.edgeCount(); ++k) {
    if (isCrossed(target, other.edge(k), true)) return true;
  }
  return false;
}

bool crossesItself(const CrossingTarget& target) {
  for (std::size_t k = 0; k < target.path.edgeCount(); ++k) {
    const Edge edge = target.path.edge(k);
    if (!isDegenerate(edge) && isCrossed(target, edge, false)) return true;
  }
  return false;
}

}  // namespace cntr::compute
