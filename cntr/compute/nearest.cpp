// SPDX-License-Identifier: MIT
//
// Both searches keep the best distance so far and visit runs of edges whose box could hold a nearer
// one, nearest box first. A box may be passed over only when nothing in it can reach the best
// *computed* distance, not even on a tie.
//
// Vertices: subtraction, squaring, addition and square root are monotonic in floating point, so the
// squared distance of a box, computed the same way, never exceeds that of a vertex in it. Square
// roots merge squares that differ by less than about 2^-52 of their size, hence the widening by
// `tieSlack`.
//
// Edges: the nearest point of an edge is a vertex or a + d * t with t in (0, 1), which rounding
// moves by no more than a few units in the last place of the largest coordinate involved;
// `roundingSlack` of them is well above that.

#include <cntr/compute/nearest.h>

#include <cmath>
#include <limits>

namespace cntr::compute {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double epsilon = std::numeric_limits<double>::epsilon();
constexpr double tieSlack = 1.0 + 4.0 * epsilon;
constexpr double roundingSlack = 16.0 * epsilon;

/// The best candidate of a search: nearest first, then lowest number.
struct Best {
  double distance = infinity;
  std::size_t number = 0;

  void offer(double candidate, std::size_t candidateNumber) noexcept {
    if (candidate < distance ||
        (candidate == distance && candidateNumber < number && distance < infinity)) {
      distance = candidate;
      number = candidateNumber;
    }
  }
};

/// Calls visitRun(first, last) for the runs of edges that the index cannot rule out; without an
/// index for all edges at once.
template <class Limit, class VisitRun>
void searchRuns(const Path& path, const index::EdgeIndex* index, const qcVector<2>& p, Limit limit,
                VisitRun visitRun) {
  if (index != nullptr) {
    index->forEachRunByDistance(p, limit, visitRun);
  } else {
    visitRun(std::size_t{0}, path.edgeCount());
  }
}

/// The largest size of a coordinate of the path or of p.
double largestCoordinate(const index::Box& box, const qcVector<2>& p) {
  return std::max({std::abs(box.minX), std::abs(box.maxX), std::abs(box.minY), std::abs(box.maxY),
                   std::abs(p.x()), std::abs(p.y())});
}

}  // namespace

std::size_t closestVertex(const Path& path, const index::EdgeIndex* index, const qcVector<2>& p) {
  Best best;
  if (!path.closed) best.offer(p.distance(path.points.front()), 0);
  const auto limit = [&] { return best.distance * best.distance * tieSlack; };
  searchRuns(path, index, p, limit, [&](std::size_t first, std::size_t last) {
    for (std::size_t k = first; k < last; ++k) {
      const std::size_t vertex = path.endOf(k);
      best.offer(p.distance(path.points[vertex]), vertex);
    }
  });
  return best.number;
}

qcVector<2> closestPoint(const Path& path, const index::EdgeIndex* index, const qcVector<2>& p) {
  Best best;
  const double slack =
      index == nullptr ? 0.0 : roundingSlack * largestCoordinate(index->bounds(), p);
  const auto limit = [&] {
    const double reach = best.distance + slack;
    return reach * reach * tieSlack;
  };
  searchRuns(path, index, p, limit, [&](std::size_t first, std::size_t last) {
    for (std::size_t k = first; k < last; ++k) {
      const Edge edge = path.edge(k);
      best.offer(qnKernel::distanceToSegment(p, edge.from, edge.to), k);
    }
  });
  if (best.distance == infinity) return {};
  const Edge edge = path.edge(best.number);
  return qnKernel::closestOnSegment(p, edge.from, edge.to);
}

}  // namespace cntr::compute
