// SPDX-License-Identifier: MIT
//
// Boxes sorted by place, under a hierarchy: finds those that touch a box or lie near a point.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include <cntr/index/boxhierarchy.h>

namespace cntr::index {

/// A tree over numbered boxes with finite corners. It never changes once built.
class BoxTree {
 public:
  /// What one round of searches has found, so that later searches of the round skip it.
  class Found {
   public:
    explicit Found(const BoxTree& tree);
    /// Begins a new round, in which nothing has been found yet. O(1).
    void forget() noexcept { ++round_; }

   private:
    friend class BoxTree;
    /// How many of the boxes under a box of the hierarchy have been found in a round.
    struct Share {
      std::uint64_t round = 0;
      std::uint32_t count = 0;
    };

    std::uint64_t round_ = 1;
    std::vector<std::vector<Share>> levels_;
    /// The round in which each box of each level was found as a whole, and each slot.
    std::vector<std::vector<std::uint64_t>> wholes_;
    std::vector<std::uint64_t> slots_;
  };

  explicit BoxTree(const std::vector<plane::Box>& boxes);

  /// The box of all boxes.
  const plane::Box& bounds() const noexcept { return hierarchy_.bounds(); }

  /// Calls visit(number) for the boxes that share a point with `box`, in no particular order, until
  /// a visit returns false; touching counts. Returns false when a visit did.
  template <class Visit>
  bool forEachTouching(const plane::Box& box, Visit visit) const {
    return hierarchy_.forEachRun([&](const plane::Box& node) { return plane::overlaps(node, box); },
                                 [&](std::size_t first, std::size_t last) {
                                   for (std::size_t slot = first; slot < last; ++slot) {
                                     if (!plane::overlaps(boxes_[slot], box)) continue;
                                     if (!visit(numbers_[slot])) return false;
                                   }
                                   return true;
                                 });
  }

  /// Calls visit(number) for those of them that this round has not found yet. In a round each box
  /// is visited at most once, and parts of the tree that have been found as a whole cost nothing.
  template <class Visit>
  void forEachNewTouching(const plane::Box& box, Found& found, Visit visit) const {
    const std::size_t top = hierarchy_.levelCount();
    if (top == 0) return;
    for (std::size_t i = 0; i < hierarchy_.boxes(top - 1).size(); ++i) {
      findNew(top - 1, i, box, found, visit);
    }
  }

  /// The numbers of the boxes that share a point with `box`, ascending; touching counts.
  std::vector<std::size_t> touching(const plane::Box& box) const;

  /// Calls visit(number) in roughly ascending order of the squared distance of the boxes from p, as
  /// long as that does not exceed `limit()`, which the visits may lower.
  template <class Limit, class Visit>
  void forEachByDistance(const qcVector<2>& p, Limit limit, Visit visit) const {
    forEachRunByDistance(p, limit, [&](std::size_t first, std::size_t last) {
      for (std::size_t slot = first; slot < last; ++slot) {
        if (plane::squaredDistance(boxes_[slot], p) > limit()) continue;
        visit(numbers_[slot]);
      }
    });
  }

  /// The same in an order that takes longer to find but needs fewer visits: for visits that cost
  /// more than a look at ten boxes.
  template <class Limit, class Visit>
  void forEachNearestFirst(const qcVector<2>& p, Limit limit, Visit visit) const {
    forEachRunByDistance(p, limit, [&](std::size_t first, std::size_t last) {
      visitNearestFirst(first, last, p, limit, visit);
    });
  }

 private:
  /// Visits what is new under box i of a level; true when nothing is left under it.
  template <class Visit>
  bool findNew(std::size_t level, std::size_t i, const plane::Box& box, Found& found,
               Visit& visit) const {
    const auto [first, last] = hierarchy_.childrenOf(level, i);
    Found::Share& share = found.levels_[level][i];
    if (share.round != found.round_) share = {found.round_, 0};
    if (share.count == last - first) return true;
    if (!plane::overlaps(hierarchy_.boxes(level)[i], box)) return false;
    for (std::size_t child = first; child < last; ++child) {
      std::uint64_t& known = level == 0 ? found.slots_[child] : found.wholes_[level - 1][child];
      if (known == found.round_) continue;
      if (level > 0) {
        if (!findNew(level - 1, child, box, found, visit)) continue;
      } else if (plane::overlaps(boxes_[child], box)) {
        visit(numbers_[child]);
      } else {
        continue;
      }
      known = found.round_;
      ++share.count;
    }
    return share.count == last - first;
  }

  template <class Limit, class VisitRun>
  void forEachRunByDistance(const qcVector<2>& p, Limit limit, VisitRun visitRun) const {
    hierarchy_.forEachRunByBound(
        [&](const plane::Box& box) { return plane::squaredDistance(box, p); }, limit, visitRun);
  }

  /// Visits the nearest of a run of boxes first: what is found there rules out most of the others.
  template <class Limit, class Visit>
  void visitNearestFirst(std::size_t first, std::size_t last, const qcVector<2>& p, Limit& limit,
                         Visit& visit) const {
    std::array<double, BoxHierarchy::leafSize> distances{};
    std::array<std::size_t, BoxHierarchy::leafSize> numbers{};
    std::size_t left = 0;
    for (std::size_t slot = first; slot < last; ++slot) {
      distances[left] = plane::squaredDistance(boxes_[slot], p);
      numbers[left++] = numbers_[slot];
    }
    while (left > 0) {
      std::size_t next = 0;
      for (std::size_t i = 1; i < left; ++i) next = distances[i] < distances[next] ? i : next;
      if (distances[next] > limit()) return;
      visit(numbers[next]);
      --left;
      distances[next] = distances[left];
      numbers[next] = numbers[left];
    }
  }

  /// In sorted order, and the number of each.
  std::vector<std::size_t> numbers_;
  std::vector<plane::Box> boxes_;
  BoxHierarchy hierarchy_;
};

}  // namespace cntr::index
