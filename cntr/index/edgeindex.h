// SPDX-License-Identifier: MIT
//
// The edge index: boxes over runs of consecutive edges, boxes over runs of boxes, up to one root.
//
// A contour is walked in order, so neighbours in the list are neighbours in the plane: no sorting
// is needed, the boxes are filled in one pass, and whatever a query visits comes out in edge order.
// The index holds boxes alone; it refers to no vertices, and can always be thrown away. Every
// search visits a superset of the edges that matter: the caller decides each one by the same
// arithmetic that a plain scan would use, so the answers are those of the scan, bit for bit.

#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>
#include <vector>

#include <cntr/compute/path.h>
#include <cntr/index/box.h>

namespace cntr::index {

/// Boxes over the edges of one path.
class EdgeIndex {
 public:
  /// Edges under one box of the lowest level, and boxes under one box of the levels above.
  static constexpr std::size_t leafEdges = 8;
  static constexpr std::size_t fanOut = 8;

  /// Paths of fewer edges answer by plain scans, which are as quick as the index there.
  static bool isWorthwhile(const compute::Path& path) noexcept { return path.edgeCount() >= 32; }

  explicit EdgeIndex(const compute::Path& path);

  /// Visits, in edge order, runs of consecutive edges [first, last) whose box passes `mayMatter`.
  /// `visitRun(first, last)` returns false to end the search. Returns false when it was ended.
  template <class MayMatter, class VisitRun>
  bool forEachRun(MayMatter mayMatter, VisitRun visitRun) const {
    return levels_.empty() ||
           descend(levels_.size() - 1, 0, levels_.back().size(), mayMatter, visitRun);
  }

  /// Visits runs of edges in ascending order of `boundOf(box)`, a bound of what the box can offer,
  /// as long as that is not above `limit()`, which the visits may lower.
  template <class BoundOf, class Limit, class VisitRun>
  void forEachRunByBound(BoundOf boundOf, Limit limit, VisitRun visitRun) const {
    if (!levels_.empty()) {
      descendByBound(levels_.size() - 1, 0, levels_.back().size(), boundOf, limit, visitRun);
    }
  }

  // The tree, for joins: level 0 lies over the edges, the last level has at most fanOut boxes.

  std::size_t levelCount() const noexcept { return levels_.size(); }
  const std::vector<Box>& boxes(std::size_t level) const noexcept { return levels_[level]; }
  /// The boxes [first, last) of the level below that box i of `level` holds; for level 0 the edges.
  std::pair<std::size_t, std::size_t> childrenOf(std::size_t level, std::size_t i) const noexcept {
    return level == 0 ? std::pair(i * leafEdges, endOfLeaf(i))
                      : std::pair(i * fanOut, endOfNode(level, i));
  }

  std::size_t edgeCount() const noexcept { return edgeCount_; }
  /// The box of all vertices that have an edge.
  const Box& bounds() const noexcept { return bounds_; }
  /// True when all coordinates are finite numbers. Boxes pass over vertices that are not numbers.
  bool isFinite() const noexcept { return isFinite_; }

 private:
  using Level = std::vector<Box>;

  template <class MayMatter, class VisitRun>
  bool descend(std::size_t level, std::size_t first, std::size_t last, MayMatter& mayMatter,
               VisitRun& visitRun) const {
    for (std::size_t i = first; i < last; ++i) {
      if (!mayMatter(levels_[level][i])) continue;
      const bool goOn =
          level == 0 ? visitRun(i * leafEdges, endOfLeaf(i))
                     : descend(level - 1, i * fanOut, endOfNode(level, i), mayMatter, visitRun);
      if (!goOn) return false;
    }
    return true;
  }

  template <class BoundOf, class Limit, class VisitRun>
  void descendByBound(std::size_t level, std::size_t first, std::size_t last, BoundOf& boundOf,
                      Limit& limit, VisitRun& visitRun) const;

  std::size_t endOfLeaf(std::size_t leaf) const noexcept {
    return std::min((leaf + 1) * leafEdges, edgeCount_);
  }
  std::size_t endOfNode(std::size_t level, std::size_t node) const noexcept {
    return std::min((node + 1) * fanOut, levels_[level - 1].size());
  }

  std::size_t edgeCount_;
  Box bounds_;
  bool isFinite_;
  /// levels_[0] lies over the edges; the last level has at most fanOut boxes.
  std::vector<Level> levels_;
};

/// Squared distance from p to the nearest point of `box`; 0 inside.
inline double squaredDistance(const Box& box, const qcVector<2>& p) noexcept {
  const double dx = std::max(std::max(box.minX - p.x(), p.x() - box.maxX), 0.0);
  const double dy = std::max(std::max(box.minY - p.y(), p.y() - box.maxY), 0.0);
  return dx * dx + dy * dy;
}

template <class BoundOf, class Limit, class VisitRun>
void EdgeIndex::descendByBound(std::size_t level, std::size_t first, std::size_t last,
                               BoundOf& boundOf, Limit& limit, VisitRun& visitRun) const {
  struct Child {
    double bound;
    std::size_t index;
  };
  std::array<Child, fanOut> children;
  std::size_t count = 0;
  for (std::size_t i = first; i < last; ++i) {
    const double bound = boundOf(levels_[level][i]);
    if (bound > limit()) continue;
    std::size_t at = count++;
    for (; at > 0 && children[at - 1].bound > bound; --at) children[at] = children[at - 1];
    children[at] = {bound, i};
  }
  for (std::size_t i = 0; i < count && !(children[i].bound > limit()); ++i) {
    const std::size_t child = children[i].index;
    if (level == 0) {
      visitRun(child * leafEdges, endOfLeaf(child));
    } else {
      descendByBound(level - 1, child * fanOut, endOfNode(level, child), boundOf, limit, visitRun);
    }
  }
}

}  // namespace cntr::index
