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
//
// The outline of a single object is mostly a ring around some point c, with each edge in a sector
// of its own. Edges that follow each other never cross: the end that they share touches both.
// Between any two others lies the sector of a third edge, with an angle phi. They come nearest to
// each other at a vertex of one, at least r from c, and seen from c the other is at an angle of at
// least phi from it: so they are at least r sin(phi) apart, or r when phi is a right angle or more.
// With the cross product k of the third edge's ends as seen from c, and the largest distance R of a
// vertex, that is at least r k / R^2. Where this exceeds the crossing margin for all edges, nothing
// crosses.

#include <cntr/compute/selfcrossing.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>

#include <cntr/compute/probe.h>
#include <cntr/index/parallels.h>
#include <cntr/index/policy.h>
#include <cntr/index/strips.h>
#include <cntr/plane/starcentre.h>
#include <cntr/plane/tolerances.h>

namespace cntr::compute {

namespace {

/// Products of up to four coordinates of this size stay finite.
constexpr double largestScale = 1e60;

/// The directions in which a run of edges strictly goes, as bits; none for a run that turns back.
using Ways = unsigned;
constexpr Ways anyWay = 15;

Ways waysOf(const plane::Edge& edge) {
  return (edge.to.x() > edge.from.x() ? 1U : 0U) | (edge.to.x() < edge.from.x() ? 2U : 0U) |
         (edge.to.y() > edge.from.y() ? 4U : 0U) | (edge.to.y() < edge.from.y() ? 8U : 0U);
}

/// Compares two edges of a path, each as the one whose ends must keep clear of the other.
class EdgePairs {
 public:
  explicit EdgePairs(const CrossingTarget& target)
      : path_(target.path),
        scale_(plane::largestCoordinate(target.bounds, {})),
        margin_(plane::crossingMargin(scale_)) {}

  bool cross(std::size_t i, std::size_t j) const {
    if (areNeighbours(i, j)) return false;
    const plane::Edge one = path_.edge(i);
    const plane::Edge other = path_.edge(j);
    if (!plane::overlaps(plane::edgeBox(one.from, one.to), plane::edgeBox(other.from, other.to))) {
      return false;
    }
    const Probe probe(one, false, margin_);
    if (probe.passesBy(other)) return false;
    const Probe reverse(other, false, margin_);
    if (reverse.passesBy(one)) return false;
    if (plane::isDegenerate(one) || plane::isDegenerate(other)) return false;
    return probe.crossingWith(other).has_value() || reverse.crossingWith(one).has_value();
  }

  const plane::Path& path() const noexcept { return path_; }
  /// The largest coordinate of the path.
  double scale() const noexcept { return scale_; }
  /// Edges farther apart than this do not cross.
  double margin() const noexcept { return margin_; }

 private:
  /// Whether of the edges i < j one begins where the other ends: that end touches both. Squares of
  /// larger coordinates overflow, and nothing touches.
  bool areNeighbours(std::size_t i, std::size_t j) const noexcept {
    if (!(scale_ <= largestScale)) return false;
    return j == i + 1 || (path_.closed && i == 0 && j + 1 == path_.edgeCount());
  }

  plane::Path path_;
  double scale_;
  double margin_;
};

bool crossesItselfByScan(const EdgePairs& pairs) {
  const std::size_t count = pairs.path().edgeCount();
  for (std::size_t i = 0; i < count; ++i) {
    for (std::size_t j = i + 1; j < count; ++j) {
      if (pairs.cross(i, j)) return true;
    }
  }
  return false;
}

/// The children [first, last) of a box of the index.
using Range = std::pair<std::size_t, std::size_t>;

class Join {
 public:
  Join(const EdgePairs& pairs, const index::EdgeIndex& index)
      : pairs_(pairs), path_(pairs.path()), index_(index) {}

  SelfCrossingSearch run() {
    const std::size_t top = index_.levelCount() - 1;
    joinSelf(top + 1, {0, index_.boxes(top).size()});
    return {crosses_, comparisons_};
  }

 private:
  static constexpr std::size_t mostChildren =
      std::max(index::EdgeIndex::fanOut, index::EdgeIndex::leafSize);

  /// Compares what lies under one box with itself; `level` is that of the box, 0 meaning that its
  /// children are edges. Returns the directions in which all of it goes.
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
      crosses_ = crosses_ || pairs_.cross(i, j);
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
           !(strips_ &&
             index::areApart(strips_->of(level, i), strips_->of(level, j), pairs_.margin()));
  }

  bool mayChildMeet(std::size_t level, std::size_t child, std::size_t other) const {
    if (!plane::overlaps(boxOfChild(level, child), index_.boxes(level)[other])) return false;
    if (!strips_) return true;
    const index::Strip& strip = strips_->of(level, other);
    return level > 0 ? !index::areApart(strips_->of(level - 1, child), strip, pairs_.margin())
                     : !index::areApart(path_.edge(child), strip, pairs_.margin());
  }

  void countComparisons(std::size_t comparisons) {
    comparisons_ += comparisons;
    if (parallels_ || !index::wantsStrips(path_.edgeCount(), comparisons_)) return;
    parallels_.emplace(path_, index_);
    if (!index_.isFinite()) return;
    if (pairs_.scale() > index::Strips::largestCoordinate) return;
    strips_.emplace(path_, index_);
  }

  plane::Box boxOfChild(std::size_t level, std::size_t i) const {
    if (level > 0) return index_.boxes(level - 1)[i];
    const plane::Edge edge = path_.edge(i);
    return plane::edgeBox(edge.from, edge.to);
  }

  const EdgePairs& pairs_;
  const plane::Path& path_;
  const index::EdgeIndex& index_;
  /// Comparisons of edges in different boxes so far.
  std::size_t comparisons_ = 0;
  /// Made when there have been many comparisons.
  std::optional<index::Parallels> parallels_;
  std::optional<index::Strips> strips_;
  bool crosses_ = false;
};

/// A ring as seen from a point c within it.
struct View {
  /// The smallest cross product of the ends of an edge; edges of length 0 do not count.
  double leastCross = std::numeric_limits<double>::infinity();
  /// Squared distances of vertices from c.
  double nearest = std::numeric_limits<double>::infinity();
  double farthest = 0.0;

  /// An edge, its ends as seen from c.
  void add(const qcVector<2>& from, const qcVector<2>& to) noexcept {
    if (from == to) return;
    const double squaredDistance = to * to;
    leastCross = std::min(leastCross, std::abs(qnKernel::cross(from, to)));
    nearest = std::min(nearest, squaredDistance);
    farthest = std::max(farthest, squaredDistance);
  }
};

}  // namespace

bool isClearStar(const plane::Path& path, const plane::Box& bounds) {
  const double scale = plane::largestCoordinate(bounds, {});
  if (!(scale <= largestScale)) return false;
  const std::optional<qcVector<2>> centre = plane::starCentre(path.points, bounds);
  if (!centre) return false;
  View view;
  qcVector<2> from = path.points.back() - *centre;
  for (const qcVector<2>& p : path.points) {
    const qcVector<2> to = p - *centre;
    view.add(from, to);
    from = to;
  }
  // The margin is many times the rounding of the coordinates: twice the margin covers that of the
  // view, too.
  return std::sqrt(view.nearest) * view.leastCross >
         2.0 * plane::crossingMargin(scale) * view.farthest;
}

SelfCrossingSearch searchSelfCrossing(const CrossingTarget& target) {
  // Bounds with a NaN touch no segment, so nothing crosses.
  if (!plane::overlaps(target.bounds, target.bounds)) return {};
  const EdgePairs pairs(target);
  if (target.index == nullptr) return {crossesItselfByScan(pairs)};
  return Join(pairs, *target.index).run();
}

}  // namespace cntr::compute
