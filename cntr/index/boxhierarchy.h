// SPDX-License-Identifier: MIT
//
// A hierarchy of boxes: boxes over runs of consecutive items, boxes over runs of boxes, up to a few
// at the top. The items are numbered slots that stand for edges of a path (edgeindex.h) or boxes
// sorted by place (boxtree.h). It holds only boxes.

#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>
#include <vector>

#include <cntr/plane/box.h>

namespace cntr::index {

/// Boxes over consecutive slots 0 .. slotCount() - 1.
class BoxHierarchy {
 public:
  /// Slots under one box of the lowest level, and boxes under one box of the levels above. With 10
  /// and 8 the boxes take 3.7 bytes per slot; no other choice from 8 to 16 and 4 to 16 was faster.
  static constexpr std::size_t leafSize = 10;
  static constexpr std::size_t fanOut = 8;

  /// `leaves` are the boxes of the lowest level, one per `leafSize` slots.
  BoxHierarchy(std::vector<plane::Box> leaves, std::size_t slotCount);

  /// Visits, in order, runs of consecutive slots [first, last) whose box passes `mayMatter`.
  /// `visitRun(first, last)` returns false to end the search. Returns false when a visit ended it.
  template <class MayMatter, class VisitRun>
  bool forEachRun(MayMatter mayMatter, VisitRun visitRun) const {
    return levels_.empty() ||
           descend(levels_.size() - 1, 0, levels_.back().size(), mayMatter, visitRun);
  }

  /// Visits the runs of slots for which `boundOf(box)`, a bound of what the box can offer, is not
  /// above `limit()`, which the visits may lower. Among siblings the box with the lowest bound
  /// comes first: what it offers rules out most of the others, so there is no need to sort them.
  template <class BoundOf, class Limit, class VisitRun>
  void forEachRunByBound(BoundOf boundOf, Limit limit, VisitRun visitRun) const {
    if (!levels_.empty()) {
      descendByBound(levels_.size() - 1, 0, levels_.back().size(), boundOf, limit, visitRun);
    }
  }

  // The tree, for joins: level 0 lies over the slots, the last level has at most fanOut boxes.

  std::size_t levelCount() const noexcept { return levels_.size(); }
  const std::vector<plane::Box>& boxes(std::size_t level) const noexcept { return levels_[level]; }
  /// The range [first, last) of boxes of the level below under box i of `level`; for level 0, of
  /// slots.
  std::pair<std::size_t, std::size_t> childrenOf(std::size_t level, std::size_t i) const noexcept {
    return level == 0 ? std::pair(i * leafSize, endOfLeaf(i))
                      : std::pair(i * fanOut, endOfNode(level, i));
  }

  std::size_t slotCount() const noexcept { return slotCount_; }
  /// The box of everything.
  const plane::Box& bounds() const noexcept { return bounds_; }

 private:
  using Level = std::vector<plane::Box>;

  template <class MayMatter, class VisitRun>
  bool descend(std::size_t level, std::size_t first, std::size_t last, MayMatter& mayMatter,
               VisitRun& visitRun) const {
    for (std::size_t i = first; i < last; ++i) {
      if (!mayMatter(levels_[level][i])) continue;
      const bool goOn =
          level == 0 ? visitRun(i * leafSize, endOfLeaf(i))
                     : descend(level - 1, i * fanOut, endOfNode(level, i), mayMatter, visitRun);
      if (!goOn) return false;
    }
    return true;
  }

  template <class BoundOf, class Limit, class VisitRun>
  void descendByBound(std::size_t level, std::size_t first, std::size_t last, BoundOf& boundOf,
                      Limit& limit, VisitRun& visitRun) const;

  std::size_t endOfLeaf(std::size_t leaf) const noexcept {
    return std::min((leaf + 1) * leafSize, slotCount_);
  }
  std::size_t endOfNode(std::size_t level, std::size_t node) const noexcept {
    return std::min((node + 1) * fanOut, levels_[level - 1].size());
  }

  std::size_t slotCount_;
  plane::Box bounds_;
  /// levels_[0] lies over the slots; the last level has at most fanOut boxes.
  std::vector<Level> levels_;
};

template <class BoundOf, class Limit, class VisitRun>
void BoxHierarchy::descendByBound(std::size_t level, std::size_t first, std::size_t last,
                                  BoundOf& boundOf, Limit& limit, VisitRun& visitRun) const {
  std::array<double, fanOut> bounds{};
  std::array<std::size_t, fanOut> boxes{};
  std::size_t left = 0;
  for (std::size_t i = first; i < last; ++i) {
    const double bound = boundOf(levels_[level][i]);
    if (bound > limit()) continue;
    bounds[left] = bound;
    boxes[left++] = i;
  }
  while (left > 0) {
    std::size_t next = 0;
    for (std::size_t i = 1; i < left; ++i) next = bounds[i] < bounds[next] ? i : next;
    if (bounds[next] > limit()) return;
    const std::size_t box = boxes[next];
    --left;
    bounds[next] = bounds[left];
    boxes[next] = boxes[left];
    if (level == 0) {
      visitRun(box * leafSize, endOfLeaf(box));
    } else {
      descendByBound(level - 1, box * fanOut, endOfNode(level, box), boundOf, limit, visitRun);
    }
  }
}

}  // namespace cntr::index
