// SPDX-License-Identifier: MIT
//
// Boxes sorted by place, under a hierarchy: finds those that touch a box or lie near a point.

#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include <cntr/index/boxhierarchy.h>

namespace cntr::index {

/// A tree over numbered boxes with finite corners. It never changes once built.
class BoxTree {
 public:
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

  /// The same in an order that takes longer to find and calls for fewer visits: where a visit costs
  /// more than a look at ten boxes.
  template <class Limit, class Visit>
  void forEachNearestFirst(const qcVector<2>& p, Limit limit, Visit visit) const {
    forEachRunByDistance(p, limit, [&](std::size_t first, std::size_t last) {
      visitNearestFirst(first, last, p, limit, visit);
    });
  }

 private:
  template <class Limit, class VisitRun>
  void forEachRunByDistance(const qcVector<2>& p, Limit limit, VisitRun visitRun) const {
    hierarchy_.forEachRunByBound(
        [&](const plane::Box& box) { return plane::squaredDistance(box, p); }, limit, visitRun);
  }

  /// The nearest of a run of boxes first: what a visit finds there rules out most of the others.
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
