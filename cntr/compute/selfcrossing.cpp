// SPDX-License-Identifier: MIT
//
// A join of the edge index with itself: only edges whose boxes share a point are compared, each
// pair both ways. Runs of edges that go strictly one way along an axis cannot cross within
// themselves: the boxes of two of their edges that do not follow each other share no point, and
// edges that follow each other touch at their common vertex. Most of a smooth outline is dismissed
// that way, at every level of the index.
//
// Where that still leaves many pairs of edges to compare, as with spikes side by side, strips
// (index/strips.h) rule out more: edges that cross come within the crossing margin of each other
// (plane/tolerances.h). Runs of edges that are all parallel, such as edges along one line, are
// ruled out as well (index/parallels.h).

#include <cntr/compute/selfcrossing.h>

#include <algorithm>
#include <array>
#include <optional>

#include <cntr/compute/probe.h>
#include <cntr/index/parallels.h>
#include <cntr/index/policy.h>
#include <cntr/index/strips.h>
#include <cntr/plane/tolerances.h>

namespace cntr::compute {

namespace {

/// The ways in which a run of edges strictly goes, as bits; none for a run that turns back.
using Ways = unsigned;
constexpr Ways anyWay = 15;

Ways waysOf(const plane::Edge& edge) {
  return (edge.to.x() > edge.from.x() ? 1U : 0U) | (edge.to.x() < edge.from.x() ? 2U : 0U) |
         (edge.to.y() > edge.from.y() ? 4U : 0U) | (edge.to.y() < edge.from.y() ? 8U : 0U);
}

bool cross(const plane::Edge& one, const plane::Edge& other, const plane::Box& bounds) {
  if (!plane::overlaps(plane::edgeBox(one.from, one.to), plane::edgeBox(other.from, other.to))) {
    return false;
  }
  if (plane::isDegenerate(one) || plane::isDegenerate(other)) return false;
  return Probe(one.from, one.to, false, bounds).crossingWith(other).has_value() ||
         Probe(other.from, other.to, false, bounds).crossingWith(one).has_value();
}

bool crossesItselfByScan(const CrossingTarget& target) {
  const plane::Path& path = target.path;
  for (std::size_t i = 0; i < path.edgeCount(); ++i) {
    for (std::size_t j = i + 1; j < path.edgeCount(); ++j) {
      if (cross(path.edge(i), path.edge(j), target.bounds)) return true;
    }
  }
  return false;
}

/// The children [first, last) of a box of the index.
using Range = std::pair<std::size_t, std::size_t>;

class Join {
 public:
  explicit Join(const CrossingTarget& target)
      : path_(target.path), index_(*target.index), bounds_(target.bounds) {}

  bool run() {
    const std::size_t top = index_.levelCount() - 1;
    joinSelf(top + 1, {0, index_.boxes(top).size()});
    return crosses_;
  }

 private:
  static constexpr std::size_t mostChildren =
      std::max(index::EdgeIndex::fanOut, index::EdgeIndex::leafSize);

  /// Compares what lies under one box with itself; `level` is that of the box, 0 meaning that its
  /// children are edges. Returns the ways that all of it goes.
  Ways joinSelf(std::size_t level, const Range& children) {
    std::array<Ways, mostChildren> ways{};
    Ways common = anyWay;
    const auto [first, last] = children;
    for (std::size_t i = first; i < last && !crosses_; ++i) {
      ways[i - first] =
          level == 0 ? waysOf(path_.edge(i)) : joinSelf(level - 1, index_.childrenOf(level - 1, i));
      common &= ways[i - first];
    }
    if (common == 0) joinSiblings(level, children, ways);
    return common;
  }

  void joinSiblings(std::size_t level, const Range& children,
                    const std::array<Ways, mostChildren>& ways) {
    const auto [first, last] = children;
    for (std::size_t i = first; i < last; ++i) {
      Ways oneWay = ways[i - first];
      for (std::size_t j = i + 1; j < last && !crosses_; ++j) {
        oneWay &= ways[j - first];
        if (oneWay == 0) joinChildren(level, i, j);
      }
    }
  }

  /// Compares child i with child j of boxes of `level`.
  void joinChildren(std::size_t level, std::size_t i, std::size_t j) {
    if (level == 0) {
      crosses_ = crosses_ || cross(path_.edge(i), path_.edge(j), bounds_);
    } else if (mayMeet(level - 1, i, j)) {
      joinPair(level - 1, i, j);
    }
  }

  /// Compares what lies under box a with what lies under box b of `level`.
  void joinPair(std::size_t level, std::size_t a, std::size_t b) {
    std::array<std::size_t, mostChildren> inA{};
    std::array<std::size_t, mostChildren> inB{};
    const std::size_t countA = childrenMeeting(level, a, b, inA);
    const std::size_t countB = childrenMeeting(level, b, a, inB);
    if (level == 0) countComparisons(countA * countB);
    for (std::size_t i = 0; i < countA; ++i) {
      for (std::size_t j = 0; j < countB && !crosses_; ++j) joinChildren(level, inA[i], inB[j]);
    }
  }

  /// The children of `parent` that may meet something in `other`, both boxes of `level`.
  std::size_t childrenMeeting(std::size_t level, std::size_t parent, std::size_t other,
                              std::array<std::size_t, mostChildren>& meeting) const {
    std::size_t count = 0;
    const auto [first, last] = index_.childrenOf(level, parent);
    for (std::size_t i = first; i < last; ++i) {
      if (mayChildMeet(level, i, other)) meeting[count++] = i;
    }
    return count;
  }

  bool mayMeet(std::size_t level, std::size_t i, std::size_t j) const {
    return plane::overlaps(index_.boxes(level)[i], index_.boxes(level)[j]) &&
           !(parallels_ && parallels_->areParallel(level, i, j)) &&
           !(strips_ && index::areApart(strips_->of(level, i), strips_->of(level, j), margin_));
  }

  bool mayChildMeet(std::size_t level, std::size_t child, std::size_t other) const {
    if (!plane::overlaps(boxOfChild(level, child), index_.boxes(level)[other])) return false;
    if (!strips_) return true;
    const index::Strip& strip = strips_->of(level, other);
    return level > 0 ? !index::areApart(strips_->of(level - 1, child), strip, margin_)
                     : !index::areApart(path_.edge(child), strip, margin_);
  }

  void countComparisons(std::size_t comparisons) {
    comparisons_ += comparisons;
    if (parallels_ || !index::wantsStrips(path_.edgeCount(), comparisons_)) return;
    parallels_.emplace(path_, index_);
    if (!index_.isFinite()) return;
    const double scale = plane::largestCoordinate(bounds_, {});
    if (scale > index::Strips::largestCoordinate) return;
    strips_.emplace(path_, index_);
    margin_ = plane::crossingMargin(scale);
  }

  plane::Box boxOfChild(std::size_t level, std::size_t i) const {
    if (level > 0) return index_.boxes(level - 1)[i];
    const plane::Edge edge = path_.edge(i);
    return plane::edgeBox(edge.from, edge.to);
  }

  const plane::Path& path_;
  const index::EdgeIndex& index_;
  const plane::Box& bounds_;
  /// Comparisons of edges in different boxes so far.
  std::size_t comparisons_ = 0;
  /// Made when there have been many.
  std::optional<index::Parallels> parallels_;
  std::optional<index::Strips> strips_;
  /// How far apart strips must be to rule out a crossing.
  double margin_ = 0.0;
  bool crosses_ = false;
};

}  // namespace

bool crossesItself(const CrossingTarget& target) {
  // Bounds that are not numbers touch no segment, so nothing crosses.
  if (!plane::overlaps(target.bounds, target.bounds)) return false;
  return target.index == nullptr ? crossesItselfByScan(target) : Join(target).run();
}

}  // namespace cntr::compute
