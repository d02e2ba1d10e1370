// SPDX-License-Identifier: MIT
//
// Pairs of boxes of the index are searched from the root down, as long as their farthest corners
// are as far apart as the best pair so far; a first good pair is found by going to the farthest
// vertex and on from there. Rounding is monotonic, so no pair of vertices is computed to be farther
// apart than the corners of their boxes. Square roots merge squares, hence `tieSlack`: what can
// still tie is visited, but only where it would come before the best pair.
//
// A vertex with a NaN coordinate has no distance to any other. If there are NaN or infinite
// coordinates, the search works on a copy without the vertices that have a NaN.

#include <cntr/compute/farthest.h>

#include <algorithm>
#include <cmath>
#include <tuple>
#include <vector>

#include <cntr/index/policy.h>
#include <cntr/plane/lanes.h>
#include <cntr/plane/tolerances.h>

namespace cntr::compute {

namespace {

/// The farthest pair so far.
class FarthestPair {
 public:
  void offer(const plane::Path& path, std::size_t i, std::size_t j) {
    const qcVector<2> difference = path.points[i] - path.points[j];
    if (!reaches(difference * difference)) return;
    const double distance = difference.len();
    const auto [first, second] = std::minmax(i, j);
    const bool isEarlierTie = distance == pair_.distance &&
                              std::tuple(first, second) < std::tuple(pair_.first, pair_.second);
    if (distance > pair_.distance || isEarlierTie) pair_ = {first, second, distance};
    square_ = pair_.distance * pair_.distance;
  }

  /// False when pairs of this squared distance, and nearer ones, cannot even tie.
  bool reaches(double squaredDistance) const {
    return !(squaredDistance * plane::tieSlack < square_);
  }

  /// False when no pair of vertices from `first` and `second` on, at most this squared distance
  /// apart, can be better.
  bool mayBeBeaten(double squaredDistance, std::size_t first, std::size_t second) const {
    const double distance = std::sqrt(squaredDistance);
    if (!(distance > 0.0) || !reaches(squaredDistance)) return false;
    return distance > pair_.distance ||
           std::tuple(first, second) < std::tuple(pair_.first, pair_.second);
  }

  std::optional<VertexPair> found() const {
    return pair_.distance > 0.0 ? std::optional(pair_) : std::nullopt;
  }
  const VertexPair& pair() const { return pair_; }

 private:
  VertexPair pair_{0, 0, 0.0};
  double square_ = 0.0;
};

/// The larger value; NaN only when both are.
double greaterReach(double a, double b) { return a > b || std::isnan(b) ? a : b; }

/// NaN when all the vertices are infinitely far out on the same side: then every distance is NaN.
double squaredReach(const plane::Box& a, const plane::Box& b) {
  const double dx = greaterReach(a.maxX - b.minX, b.maxX - a.minX);
  const double dy = greaterReach(a.maxY - b.minY, b.maxY - a.minY);
  return dx * dx + dy * dy;
}

/// Visits all pairs of boxes of the index, and of vertices, that can reach the best pair.
class Search {
 public:
  Search(const plane::Path& path, const index::EdgeIndex& index, FarthestPair& best)
      : path_(path), index_(index), best_(best) {}

  void run() {
    const std::size_t top = index_.levelCount() - 1;
    const std::size_t count = index_.boxes(top).size();
    for (std::size_t a = 0; a < count; ++a) {
      for (std::size_t b = a; b < count; ++b) visit(top, a, b);
    }
  }

 private:
  /// The lowest vertex at which an edge under a box ends.
  std::size_t lowestVertex(std::size_t level, std::size_t box) const {
    for (; level > 0; --level) box = index_.childrenOf(level, box).first;
    return path_.endOf(index_.childrenOf(0, box).first);
  }

  void visit(std::size_t level, std::size_t a, std::size_t b) {
    const double reach = squaredReach(index_.boxes(level)[a], index_.boxes(level)[b]);
    if (!best_.mayBeBeaten(reach, lowestVertex(level, a), lowestVertex(level, b))) return;
    if (level == 0) return compare(a, b);
    const auto [firstA, lastA] = index_.childrenOf(level, a);
    const auto [firstB, lastB] = index_.childrenOf(level, b);
    for (std::size_t i = firstA; i < lastA; ++i) {
      for (std::size_t j = std::max(i, firstB); j < lastB; ++j) visit(level - 1, i, j);
    }
  }

  /// Offers the pairs of vertices under two boxes of edges, if one of them may reach the best.
  void compare(std::size_t a, std::size_t b) {
    const auto [firstA, lastA] = index_.childrenOf(0, a);
    const auto [firstB, lastB] = index_.childrenOf(0, b);
    const plane::Box& box = index_.boxes(0)[b];
    for (std::size_t i = firstA; i < lastA; ++i) {
      const qcVector<2>& p = path_.points[path_.endOf(i)];
      if (!best_.reaches(squaredReach(plane::edgeBox(p, p), box))) continue;
      for (std::size_t j = std::max(i + 1, firstB); j < lastB; ++j)
        best_.offer(path_, path_.endOf(i), path_.endOf(j));
    }
  }

  const plane::Path& path_;
  const index::EdgeIndex& index_;
  FarthestPair& best_;
};

void offerAllFrom(const plane::Path& path, std::size_t i, FarthestPair& best) {
  for (std::size_t j = 0; j < path.points.size(); ++j) best.offer(path, i, j);
}

/// The squared distances of the vertices j and j + 1 from p.
plane::Pair squaresFrom(const plane::Path& path, std::size_t j, const qcVector<2>& p) {
  const qcVector<2>& q = path.points[j];
  const qcVector<2>& r = path.points[j + 1];
  const plane::Pair fromP{p.x(), p.y()};
  const plane::Pair toQ = plane::Pair{q.x(), q.y()} - fromP;
  const plane::Pair toR = plane::Pair{r.x(), r.y()} - fromP;
  const plane::Pair q2 = toQ * toQ;
  const plane::Pair r2 = toR * toR;
  return __builtin_shufflevector(q2, r2, 0, 2) + __builtin_shufflevector(q2, r2, 1, 3);
}

/// The largest squared distance from vertex i to a later one. NaN is ignored.
double largestSquareFrom(const plane::Path& path, std::size_t i) {
  const std::size_t n = path.points.size();
  plane::Pair largest{};
  // If the number of later vertices is odd, vertex i itself makes it even.
  for (std::size_t j = i + (n - i) % 2; j < n; j += 2) {
    const plane::Pair squares = squaresFrom(path, j, path.points[i]);
    largest = largest < squares ? squares : largest;
  }
  return qnKernel::greater(largest[0], largest[1]);
}

/// The first vertex after i whose computed distance from it is `distance`, the root of `square`.
/// REQUIRES: there is one, and none is farther from vertex i.
std::size_t firstAt(double distance, double square, const plane::Path& path, std::size_t i) {
  for (std::size_t j = i + 1;; ++j) {
    const qcVector<2> difference = path.points[i] - path.points[j];
    const bool mayTie = difference * difference * plane::tieSlack >= square;
    if (mayTie && difference.len() == distance) return j;
  }
}

/// True when the computed roots of two squares are equal. REQUIRES: the first one is smaller.
bool haveOneRoot(double smaller, double larger) {
  return smaller * plane::tieSlack >= larger && std::sqrt(smaller) == std::sqrt(larger);
}

/// Square roots are monotonic: only a larger square can have a larger root.
std::optional<VertexPair> farthestPairByScan(const plane::Path& path) {
  std::size_t first = 0;
  double largest = 0.0;
  for (std::size_t i = 0; i < path.points.size(); ++i) {
    const double square = largestSquareFrom(path, i);
    if (!(square > largest) || haveOneRoot(largest, square)) continue;
    first = i;
    largest = square;
  }
  if (largest == 0.0) return {};
  const double distance = std::sqrt(largest);
  return VertexPair{first, firstAt(distance, largest, path, first), distance};
}

std::optional<VertexPair> farthestPairByIndex(const plane::Path& path,
                                              const index::EdgeIndex& index) {
  FarthestPair best;
  offerAllFrom(path, 0, best);
  offerAllFrom(path, best.pair().second, best);
  Search(path, index, best).run();
  return best.found();
}

std::optional<VertexPair> farthestPairOfNumbers(const plane::Path& path) {
  std::vector<qcVector<2>> points;
  std::vector<std::size_t> numbers;
  for (std::size_t i = 0; i < path.points.size(); ++i) {
    if (std::isnan(path.points[i].x()) || std::isnan(path.points[i].y())) continue;
    points.push_back(path.points[i]);
    numbers.push_back(i);
  }
  const plane::Path rest{points, true};
  std::optional<VertexPair> pair = index::wantsEdgeIndex(rest.edgeCount())
                                       ? farthestPairByIndex(rest, index::EdgeIndex(rest))
                                       : farthestPairByScan(rest);
  if (pair) *pair = {numbers[pair->first], numbers[pair->second], pair->distance};
  return pair;
}

}  // namespace

std::optional<VertexPair> farthestPair(const plane::Path& path, const index::EdgeIndex* index) {
  if (index == nullptr) return farthestPairByScan(path);
  return index->isFinite() ? farthestPairByIndex(path, *index) : farthestPairOfNumbers(path);
}

}  // namespace cntr::compute
