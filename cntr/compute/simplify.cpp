// SPDX-License-Identifier: MIT
//
// Chains of vertices are replaced by chords. Chords that get in the way of others are split again,
// in rounds that split all such chords at once, so that the order of paths and edges does not
// matter.

#include <cntr/compute/simplify.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

#include <cntr/compute/farthest.h>
#include <cntr/index/boxtree.h>
#include <cntr/index/edgeindex.h>
#include <cntr/index/policy.h>
#include <cntr/plane/orientation.h>
#include <platform/core/kernels.h>

namespace cntr::compute {

namespace {

using Point = qcVector<2>;

bool isFinite(const Point& p) noexcept { return std::isfinite(p.x()) && std::isfinite(p.y()); }

/// The vertices first, first + 1, ..., first + steps of a path, wrapping around if it is closed:
/// what one edge of the result stands for.
struct Chain {
  const plane::Path* path = nullptr;
  std::size_t first = 0;
  std::size_t steps = 0;

  /// Number of the vertex after `step` steps.
  std::size_t at(std::size_t step) const noexcept { return (first + step) % path->points.size(); }
  const Point& point(std::size_t step) const noexcept { return path->points[at(step)]; }
  const Point& from() const noexcept { return point(0); }
  const Point& to() const noexcept { return point(steps); }

  Chain head(std::size_t step) const noexcept { return {path, first, step}; }
  Chain tail(std::size_t step) const noexcept { return {path, at(step), steps - step}; }

  /// True when it stands for one edge: there is no vertex to put back.
  bool isEdge() const noexcept { return steps == 1; }
};

/// The vertex inside a chain that is farthest from its chord.
struct Farthest {
  std::size_t step = 1;
  double distance = -1.0;
};

/// REQUIRES: the chain has a vertex between its ends.
Farthest farthestFromChord(const Chain& chain) noexcept {
  Farthest farthest;
  for (std::size_t step = 1; step < chain.steps; ++step) {
    double distance = qnKernel::distanceToSegment(chain.point(step), chain.from(), chain.to());
    if (std::isnan(distance)) distance = std::numeric_limits<double>::infinity();
    if (distance > farthest.distance) farthest = {step, distance};
  }
  return farthest;
}

/// Appends the chains that stay within the tolerance, in order.
void appendWithin(double tolerance, const Chain& whole, std::vector<Chain>& chains) {
  std::vector<Chain> rest{whole};
  while (!rest.empty()) {
    const Chain chain = rest.back();
    rest.pop_back();
    if (!chain.isEdge()) {
      const Farthest farthest = farthestFromChord(chain);
      if (farthest.distance > tolerance) {
        rest.push_back(chain.tail(farthest.step));
        rest.push_back(chain.head(farthest.step));
        continue;
      }
    }
    chains.push_back(chain);
  }
}

/// The chains that a path begins with: one from end to end, or two between the vertices farthest
/// apart. Empty for a closed path whose vertices all coincide.
std::vector<Chain> wholeChains(const plane::Path& path) {
  const std::size_t n = path.points.size();
  if (n < 2) return {};
  if (!path.closed) return {{&path, 0, n - 1}};
  std::optional<index::EdgeIndex> index;
  if (index::wantsEdgeIndex(path.edgeCount())) index.emplace(path);
  const auto pair = farthestPair(path, index ? &*index : nullptr);
  if (pair) {
    return {{&path, pair->first, pair->second - pair->first},
            {&path, pair->second, n - pair->second + pair->first}};
  }
  if (std::all_of(path.points.begin(), path.points.end(), isFinite)) return {};
  return {{&path, 0, 1}, {&path, 1, n - 1}};
}

/// Whether two segments share a point.
bool meet(const Point& a, const Point& b, const Point& c, const Point& d) noexcept {
  const int ofC = plane::orientation(a, b, c);
  const int ofD = plane::orientation(a, b, d);
  const int ofA = plane::orientation(c, d, a);
  const int ofB = plane::orientation(c, d, b);
  if (ofC * ofD < 0 && ofA * ofB < 0) return true;
  const auto isOn = [](int side, const Point& p, const Point& from, const Point& to) {
    return side == 0 && plane::dotSign(p, from, p, to) <= 0;
  };
  return isOn(ofC, c, a, b) || isOn(ofD, d, a, b) || isOn(ofA, a, c, d) || isOn(ofB, b, c, d);
}

/// Whether the chords of two chains meet elsewhere than where one ends and the other begins.
bool meet(const Chain& a, const Chain& b) noexcept {
  const bool isBefore = a.path == b.path && a.at(a.steps) == b.first;
  const bool isAfter = a.path == b.path && b.at(b.steps) == a.first;
  if (isBefore && isAfter) return true;
  if (!isBefore && !isAfter) return meet(a.from(), a.to(), b.from(), b.to());
  const Point& shared = isBefore ? b.from() : a.from();
  const Point& before = isBefore ? a.from() : b.from();
  const Point& after = isBefore ? b.to() : a.to();
  return plane::orientation(before, shared, after) == 0 &&
         plane::dotSign(shared, before, shared, after) > 0;
}

plane::Box boxOf(const Chain& chain) noexcept { return plane::edgeBox(chain.from(), chain.to()); }

/// Whether p lies between a chain and its chord: the parity of the edges to the right of it.
bool isCutOff(const Chain& chain, const Point& p) noexcept {
  plane::Box box;
  for (std::size_t step = 0; step <= chain.steps; ++step) box.add(chain.point(step));
  if (!plane::contains(box, p)) return false;
  bool isInside = false;
  Point from = chain.to();
  for (std::size_t step = 0; step <= chain.steps; ++step) {
    const Point& to = chain.point(step);
    if ((from.y() > p.y()) != (to.y() > p.y())) {
      const int side = plane::orientation(from, to, p);
      if (side == (to.y() > from.y() ? 1 : -1)) isInside = !isInside;
    }
    from = to;
  }
  return isInside;
}

/// The chains of all paths, in order, and what has to be split.
class Chains {
 public:
  Chains(std::span<const plane::Path> paths, double tolerance)
      : paths_(paths), tolerance_(tolerance) {
    for (const plane::Path& path : paths) {
      for (const Chain& whole : wholeChains(path)) appendWithin(tolerance_, whole, chains_);
    }
  }

  /// Splits all chains that are in the way of others. False when there is none.
  bool split() {
    const std::vector<bool> isInTheWay = chainsInTheWay();
    std::vector<Chain> chains;
    bool isSplit = false;
    for (std::size_t i = 0; i < chains_.size(); ++i) {
      if (!isInTheWay[i]) {
        chains.push_back(chains_[i]);
        continue;
      }
      const std::size_t step = farthestFromChord(chains_[i]).step;
      appendWithin(tolerance_, chains_[i].head(step), chains);
      appendWithin(tolerance_, chains_[i].tail(step), chains);
      isSplit = true;
    }
    chains_ = std::move(chains);
    return isSplit;
  }

  /// The vertices where chains begin or end, for each path.
  std::vector<std::vector<std::size_t>> vertices() const {
    std::vector<std::vector<std::size_t>> kept(paths_.size());
    for (const Chain& chain : chains_) {
      auto& of = kept[static_cast<std::size_t>(chain.path - paths_.data())];
      of.push_back(chain.first);
      of.push_back(chain.at(chain.steps));
    }
    for (std::size_t i = 0; i < kept.size(); ++i) {
      if (kept[i].empty() && !paths_[i].points.empty()) kept[i].push_back(0);
      std::sort(kept[i].begin(), kept[i].end());
      kept[i].erase(std::unique(kept[i].begin(), kept[i].end()), kept[i].end());
    }
    return kept;
  }

 private:
  std::vector<bool> chainsInTheWay() const {
    std::vector<bool> isInTheWay(chains_.size(), false);
    std::vector<std::size_t> numbers;
    std::vector<plane::Box> boxes;
    for (std::size_t i = 0; i < chains_.size(); ++i) {
      if (!isFinite(chains_[i].from()) || !isFinite(chains_[i].to())) continue;
      numbers.push_back(i);
      boxes.push_back(boxOf(chains_[i]));
    }
    const index::BoxTree tree(boxes);
    const std::vector<const Chain*> firsts = firstChains();
    for (std::size_t k = 0; k < numbers.size(); ++k) {
      const Chain& chain = chains_[numbers[k]];
      if (chain.isEdge()) continue;
      const bool isClear = tree.forEachTouching(boxes[k], [&](std::size_t other) {
        return other == k || !meet(chain, chains_[numbers[other]]);
      });
      isInTheWay[numbers[k]] = !isClear || cutsOffAny(chain, firsts);
    }
    return isInTheWay;
  }

  /// The first chain of each path.
  std::vector<const Chain*> firstChains() const {
    std::vector<const Chain*> firsts;
    for (const Chain& chain : chains_) {
      if (firsts.empty() || firsts.back()->path != chain.path) firsts.push_back(&chain);
    }
    return firsts;
  }

  /// Whether another path lies between the chain and its chord.
  static bool cutsOffAny(const Chain& chain, const std::vector<const Chain*>& firsts) noexcept {
    return std::any_of(firsts.begin(), firsts.end(), [&](const Chain* other) {
      return other->path != chain.path && isCutOff(chain, other->from());
    });
  }

  std::span<const plane::Path> paths_;
  double tolerance_;
  std::vector<Chain> chains_;
};

}  // namespace

std::vector<std::vector<std::size_t>> keptVertices(std::span<const plane::Path> paths,
                                                   double tolerance) {
  Chains chains(paths, tolerance);
  while (chains.split()) {
  }
  return chains.vertices();
}

}  // namespace cntr::compute
