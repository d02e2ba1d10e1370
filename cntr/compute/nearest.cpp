// SPDX-License-Identifier: MIT
//
// Both searches keep the best distance so far and visit runs of edges whose box could hold a nearer
// one, nearest box first. A box may be passed over only when nothing in it can reach the best
// *computed* distance, not even on a tie.
//
// Subtraction, squaring, addition and square root are monotonic in floating point, so the squared
// distance of a box, computed the same way, never exceeds that of a point in it. The limit is
// widened by `tieSlack`, because square roots merge squares. The computed nearest point of an edge
// lies in the edge's box (qnKernel::closestOnSegment).

#include <cntr/compute/nearest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include <cntr/plane/lanes.h>
#include <cntr/plane/tolerances.h>

namespace cntr::compute {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

/// The best candidate of a search: nearest first, then lowest number.
class NearestCandidate {
 public:
  /// Offers a candidate, given the vector from it to p.
  void offer(const qcVector<2>& difference, std::size_t number) noexcept {
    if (difference * difference > limit_) return;
    const double distance = difference.len();
    if (distance < distance_ || (distance == distance_ && number < number_)) {
      distance_ = distance;
      number_ = number;
      limit_ = distance * distance * plane::tieSlack;
    }
  }

  /// No candidate of a larger squared distance can be better.
  double limit() const noexcept { return limit_; }
  bool isFound() const noexcept { return distance_ < infinity; }
  std::size_t number() const noexcept { return number_; }

 private:
  double distance_ = infinity;
  double limit_ = infinity;
  std::size_t number_ = 0;
};

/// Calls visitRun(first, last) for the runs of edges that the index cannot rule out; without an
/// index, once for all edges.
template <class VisitRun>
void searchRuns(const plane::Path& path, const index::EdgeIndex* index, const qcVector<2>& p,
                const NearestCandidate& best, VisitRun visitRun) {
  if (index != nullptr) {
    index->forEachRunByBound([&p](const plane::Box& box) { return plane::squaredDistance(box, p); },
                             [&best] { return best.limit(); }, visitRun);
  } else {
    visitRun(std::size_t{0}, path.edgeCount());
  }
}

/// True when nothing in the box can be better.
bool isBeyond(const plane::Box& box, const qcVector<2>& p, const NearestCandidate& best) {
  return plane::squaredDistance(box, p) > best.limit();
}

/// The candidate to begin with, if any. It does not change the answer: the search would meet it
/// anyway.
using Start = std::optional<std::size_t>;

std::size_t searchVertex(const plane::Path& path, const index::EdgeIndex* index,
                         const qcVector<2>& p, Start start) {
  NearestCandidate best;
  if (start) best.offer(p - path.points[*start], *start);
  if (!path.closed) best.offer(p - path.points.front(), 0);
  searchRuns(path, index, p, best, [&](std::size_t first, std::size_t last) {
    for (std::size_t v = path.endOf(first); v < path.endOf(last); ++v) {
      best.offer(p - path.points[v], v);
    }
  });
  return best.number();
}

Start searchEdge(const plane::Path& path, const index::EdgeIndex* index, const qcVector<2>& p,
                 Start start) {
  NearestCandidate best;
  if (start) {
    const plane::Edge edge = path.edge(*start);
    best.offer(p - qnKernel::closestOnSegment(p, edge.from, edge.to), *start);
  }
  searchRuns(path, index, p, best, [&](std::size_t first, std::size_t last) {
    // The boxes of single edges are worth looking at once something near has been found.
    const bool isLater = index != nullptr && best.isFound();
    qcVector<2> from = path.edge(first).from;
    for (std::size_t k = first; k < last; ++k) {
      const qcVector<2>& to = path.points[path.endOf(k)];
      if (!(isLater && isBeyond(plane::edgeBox(from, to), p, best))) {
        best.offer(p - qnKernel::closestOnSegment(p, from, to), k);
      }
      from = to;
    }
  });
  return best.isFound() ? Start(best.number()) : std::nullopt;
}

using plane::Pair;

/// Two points, and the nearest point so far to each.
class TwoSearches {
 public:
  TwoSearches(const qcVector<2>& first, const qcVector<2>& second)
      : x_{first.x(), second.x()}, y_{first.y(), second.y()} {}

  /// The arithmetic of closestOnSegment(), for both.
  void offerEdge(const qcVector<2>& from, const qcVector<2>& to) noexcept {
    const qcVector<2> d = to - from;
    const Pair fromX{from.x(), from.x()};
    const Pair fromY{from.y(), from.y()};
    const Pair toX{to.x(), to.x()};
    const Pair toY{to.y(), to.y()};
    const Pair t = ((x_ - fromX) * d.x() + (y_ - fromY) * d.y()) / (d * d);
    const auto isAfter = t > 0.0;
    const auto isBeyond = t >= 1.0;
    const Pair x = isAfter ? (isBeyond ? toX : fromX + d.x() * t) : fromX;
    const Pair y = isAfter ? (isBeyond ? toY : fromY + d.y() * t) : fromY;
    const Pair dx = x_ - x;
    const Pair dy = y_ - y;
    offer(x, y, dx * dx + dy * dy);
  }

  qcVector<2> first() const noexcept { return {nearestX_[0], nearestY_[0]}; }
  qcVector<2> second() const noexcept { return {nearestX_[1], nearestY_[1]}; }

 private:
  /// Of equally near candidates the first counts. Square roots merge squares: where two squares are
  /// that close, the roots decide.
  void offer(const Pair& x, const Pair& y, const Pair& square) noexcept {
    auto isNearer = square < square_;
    const auto isClose = isNearer & (square * plane::tieSlack >= square_);
    if ((isClose[0] | isClose[1]) != 0) isNearer = rootsOf(square) < rootsOf(square_);
    square_ = isNearer ? square : square_;
    nearestX_ = isNearer ? x : nearestX_;
    nearestY_ = isNearer ? y : nearestY_;
  }

  static Pair rootsOf(const Pair& square) noexcept {
    return Pair{std::sqrt(square[0]), std::sqrt(square[1])};
  }

  Pair x_;
  Pair y_;
  Pair nearestX_{};
  Pair nearestY_{};
  Pair square_{infinity, infinity};
};

qcVector<2> pointOf(const plane::Path& path, Start edgeNumber, const qcVector<2>& p) {
  if (!edgeNumber) return {};
  const plane::Edge edge = path.edge(*edgeNumber);
  return qnKernel::closestOnSegment(p, edge.from, edge.to);
}

}  // namespace

std::size_t closestVertex(const plane::Path& path, const index::EdgeIndex* index,
                          const qcVector<2>& p) {
  return searchVertex(path, index, p, {});
}

qcVector<2> closestPoint(const plane::Path& path, const index::EdgeIndex* index,
                         const qcVector<2>& p) {
  return pointOf(path, searchEdge(path, index, p, {}), p);
}

void closestPoints(const plane::Path& path, std::span<const qcVector<2>> points,
                   std::span<qcVector<2>> answers) {
  for (std::size_t i = 0; i < points.size(); i += 2) {
    const std::size_t next = std::min(i + 1, points.size() - 1);
    TwoSearches searches(points[i], points[next]);
    plane::forEachEdge(path, [&searches](const qcVector<2>& from, const qcVector<2>& to) {
      searches.offerEdge(from, to);
    });
    answers[i] = searches.first();
    answers[next] = searches.second();
  }
}

std::size_t NearestSearch::closestVertex(const qcVector<2>& p) {
  lastVertex_ = searchVertex(path_, index_, p, lastVertex_);
  return *lastVertex_;
}

qcVector<2> NearestSearch::closestPoint(const qcVector<2>& p) {
  lastEdge_ = searchEdge(path_, index_, p, lastEdge_);
  return pointOf(path_, lastEdge_, p);
}

}  // namespace cntr::compute
