// SPDX-License-Identifier: MIT
//
// Pairs of boxes of the index are searched from the root down, as long as their farthest corners
// are as far apart as the best pair so far; a first good pair comes from going to the farthest
// vertex and on from there. Rounding is monotonic, so no pair of vertices is computed to be farther
// apart than the corners of their boxes. Square roots merge squares that differ by less than about
// 2^-52 of their size, hence `tieSlack`: what can still tie is visited.

#include <cntr/compute/farthest.h>

#include <algorithm>
#include <limits>
#include <tuple>

namespace cntr::compute {

namespace {

constexpr double tieSlack = 1.0 + 4.0 * std::numeric_limits<double>::epsilon();

/// The farthest pair so far.
class Best {
 public:
  void offer(const Path& path, std::size_t i, std::size_t j) {
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
  bool reaches(double squaredDistance) const { return !(squaredDistance * tieSlack < square_); }

  std::optional<VertexPair> found() const {
    return pair_.distance > 0.0 ? std::optional(pair_) : std::nullopt;
  }
  const VertexPair& pair() const { return pair_; }

 private:
  VertexPair pair_{0, 0, 0.0};
  double square_ = 0.0;
};

double squaredReach(const index::Box& a, const index::Box& b) {
  const double dx = std::max(a.maxX - b.minX, b.maxX - a.minX);
  const double dy = std::max(a.maxY - b.minY, b.maxY - a.minY);
  return dx * dx + dy * dy;
}

/// Visits all pairs of boxes of the index, and of vertices, that can reach the best pair.
class Search {
 public:
  Search(const Path& path, const index::EdgeIndex& index, Best& best)
      : path_(path), index_(index), best_(best) {}

  void run() {
    const std::size_t top = index_.levelCount() - 1;
    const std::size_t count = index_.boxes(top).size();
    for (std::size_t a = 0; a < count; ++a) {
      for (std::size_t b = a; b < count; ++b) visit(top, a, b);
    }
  }

 private:
  void visit(std::size_t level, std::size_t a, std::size_t b) {
    if (!best_.reaches(squaredReach(index_.boxes(level)[a], index_.boxes(level)[b]))) return;
    const auto [firstA, lastA] = index_.childrenOf(level, a);
    const auto [firstB, lastB] = index_.childrenOf(level, b);
    for (std::size_t i = firstA; i < lastA; ++i) {
      for (std::size_t j = std::max(i, firstB); j < lastB; ++j) {
        if (level == 0) {
          best_.offer(path_, path_.endOf(i), path_.endOf(j));
        } else {
          visit(level - 1, i, j);
        }
      }
    }
  }

  const Path& path_;
  const index::EdgeIndex& index_;
  Best& best_;
};

void offerAllFrom(const Path& path, std::size_t i, Best& best) {
  for (std::size_t j = 0; j < path.points.size(); ++j) best.offer(path, i, j);
}

std::optional<VertexPair> farthestPairByScan(const Path& path) {
  VertexPair best{0, 0, 0.0};
  for (std::size_t i = 0; i < path.points.size(); ++i) {
    for (std::size_t j = i + 1; j < path.points.size(); ++j) {
      const double distance = path.points[i].distance(path.points[j]);
      if (distance > best.distance) best = {i, j, distance};
    }
  }
  return best.distance > 0.0 ? std::optional(best) : std::nullopt;
}

}  // namespace

std::optional<VertexPair> farthestPair(const Path& path, const index::EdgeIndex* index) {
  if (index == nullptr || !index->isFinite()) return farthestPairByScan(path);
  Best best;
  offerAllFrom(path, 0, best);
  offerAllFrom(path, best.pair().second, best);
  Search(path, *index, best).run();
  return best.found();
}

}  // namespace cntr::compute
