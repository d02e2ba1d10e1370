// SPDX-License-Identifier: MIT
//
// Both searches keep the best distance so far and visit runs of edges whose box could hold a nearer
// one, nearest box first. A box may be passed over only when nothing in it can reach the best
// *computed* distance, not even on a tie.
//
// Vertices: subtraction, squaring, addition and square root are monotonic in floating point, so the
// squared distance of a box, computed the same way, never exceeds that of a vertex in it. The limit
// is widened by `tieSlack`, because square roots merge squares.
//
// Edges: the nearest point of an edge is a vertex or a + d * t with t in (0, 1), which rounding
// moves out of the box by at most nearestPointRounding().

#include <cntr/compute/nearest.h>

#include <cmath>
#include <limits>

#include <cntr/plane/tolerances.h>

namespace cntr::compute {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

/// The best candidate of a search: nearest first, then lowest number.
class NearestCandidate {
 public:
  /// `slack` is how much nearer than its box a candidate may be computed to be.
  explicit NearestCandidate(double slack) : slack_(slack) {}

  /// Offers a candidate by the vector from it to p.
  void offer(const qcVector<2>& difference, std::size_t number) noexcept {
    if (difference * difference > limit_) return;
    const double distance = difference.len();
    if (distance < distance_ || (distance == distance_ && number < number_)) {
      distance_ = distance;
      number_ = number;
      const double reach = distance + slack_;
      limit_ = reach * reach * plane::tieSlack;
    }
  }

  /// No candidate of a larger squared distance can be better.
  double limit() const noexcept { return limit_; }
  bool isFound() const noexcept { return distance_ < infinity; }
  std::size_t number() const noexcept { return number_; }

 private:
  double slack_;
  double distance_ = infinity;
  double limit_ = infinity;
  std::size_t number_ = 0;
};

/// Calls visitRun(first, last) for the runs of edges that the index cannot rule out; without an
/// index for all edges at once.
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

}  // namespace

std::size_t closestVertex(const plane::Path& path, const index::EdgeIndex* index,
                          const qcVector<2>& p) {
  NearestCandidate best(0.0);
  if (!path.closed) best.offer(p - path.points.front(), 0);
  searchRuns(path, index, p, best, [&](std::size_t first, std::size_t last) {
    for (std::size_t v = path.endOf(first); v < path.endOf(last); ++v) {
      best.offer(p - path.points[v], v);
    }
  });
  return best.number();
}

qcVector<2> closestPoint(const plane::Path& path, const index::EdgeIndex* index,
                         const qcVector<2>& p) {
  NearestCandidate best(
      index == nullptr ? 0.0
                       : plane::nearestPointRounding(plane::largestCoordinate(index->bounds(), p)));
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
  if (!best.isFound()) return {};
  const plane::Edge edge = path.edge(best.number());
  return qnKernel::closestOnSegment(p, edge.from, edge.to);
}

}  // namespace cntr::compute
