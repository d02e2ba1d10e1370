// SPDX-License-Identifier: MIT
//
// A boundary grows while the pass continues over the places after it. Each edge that it gains
// tells, once, which boundaries come near it. Those whose place the pass has yet to reach wait for
// it, the lowest place first.

#include <cntr/compute/merging.h>

#include <functional>
#include <limits>
#include <numeric>
#include <queue>
#include <utility>

#include <cntr/compute/growingboundary.h>
#include <cntr/compute/manycrossings.h>
#include <cntr/index/policy.h>

namespace cntr::compute {

namespace {

constexpr std::size_t nowhere = std::numeric_limits<std::size_t>::max();

/// The numbers of the boundaries by place.
class WorkingList {
 public:
  explicit WorkingList(std::size_t count) : numberAt_(count) {
    std::iota(numberAt_.begin(), numberAt_.end(), std::size_t{0});
    placeOf_ = numberAt_;
  }

  std::size_t size() const noexcept { return numberAt_.size(); }
  std::size_t numberAt(std::size_t place) const { return numberAt_[place]; }
  /// `nowhere` for boundaries that have been given up.
  std::size_t placeOf(std::size_t number) const { return placeOf_[number]; }

  /// The last boundary takes the place.
  void giveUp(std::size_t place) {
    placeOf_[numberAt_[place]] = nowhere;
    const std::size_t last = numberAt_.back();
    numberAt_.pop_back();
    if (place == size()) return;
    numberAt_[place] = last;
    placeOf_[last] = place;
  }

 private:
  std::vector<std::size_t> numberAt_;
  std::vector<std::size_t> placeOf_;
};

/// Tells which boundaries come near a box: by their own boxes, or by those of their edges once the
/// former have proved to overlap too often. What has been found for a boundary is not looked at
/// again for it, however it grows.
class Neighbours {
 public:
  Neighbours(const std::vector<CrossingTarget>& boundaries, const index::RegionIndex& index)
      : boundaries_(boundaries), index_(index), found_(index.tree) {}

  /// Calls visit(number) for the boundaries near one of them, including this one, and begins to
  /// keep track of what has been found for it.
  template <class Visit>
  void forEachNear(std::size_t number, Visit visit) {
    if (!edges_ && index::wantsEdgesOfSet(boundaries_.size(), pairs_)) {
      edges_.emplace(paths());
      found_ = index::BoxTree::Found(edges_->tree());
    }
    found_.forget();
    if (!edges_) return forEachNew(index_.boxes[number], visit);
    plane::forEachEdge(boundaries_[number].path,
                       [&](const qcVector<2>& from, const qcVector<2>& to) {
                         forEachNew(plane::edgeBox(from, to), visit);
                       });
  }

  /// The same for those near a box that have not been found for the boundary yet; some may be
  /// visited several times.
  template <class Visit>
  void forEachNew(const plane::Box& box, Visit visit) {
    if (edges_) {
      edges_->tree().forEachNewTouching(box, found_,
                                        [&](std::size_t edge) { visit(edges_->all()[edge].path); });
    } else {
      index_.tree.forEachNewTouching(box, found_, [&](std::size_t number) {
        ++pairs_;
        visit(number);
      });
    }
  }

 private:
  std::vector<plane::Path> paths() const {
    std::vector<plane::Path> paths;
    paths.reserve(boundaries_.size());
    for (const CrossingTarget& boundary : boundaries_) paths.push_back(boundary.path);
    return paths;
  }

  const std::vector<CrossingTarget>& boundaries_;
  const index::RegionIndex& index_;
  index::BoxTree::Found found_;
  std::size_t pairs_ = 0;
  std::optional<OwnedEdges> edges_;
};

class Merging {
 public:
  Merging(const std::vector<CrossingTarget>& boundaries, const index::RegionIndex& index)
      : boundaries_(boundaries),
        neighbours_(boundaries, index),
        list_(boundaries.size()),
        awaitedAt_(boundaries.size(), nowhere) {}

  std::optional<std::vector<Remaining>> run() {
    std::vector<Remaining> left;
    for (std::size_t i = 0; i < list_.size(); ++i) {
      std::optional<std::vector<qcVector<2>>> joined = joinLater(i);
      if (!joined) return {};
      left.push_back({list_.numberAt(i), *std::move(joined)});
    }
    return left;
  }

 private:
  /// What the boundary at place i becomes when those at later places that cross it are joined to
  /// it: no vertices if none crosses it, nothing if one cannot be joined.
  std::optional<std::vector<qcVector<2>>> joinLater(std::size_t i) {
    const CrossingTarget& first = boundaries_[list_.numberAt(i)];
    std::optional<GrowingBoundary> grown;
    waiting_ = {};
    neighbours_.forEachNear(list_.numberAt(i), [&](std::size_t near) { await(near, i, i); });
    while (!waiting_.empty()) {
      const std::size_t j = waiting_.top();
      waiting_.pop();
      if (j >= list_.size()) break;
      const CrossingTarget& other = boundaries_[list_.numberAt(j)];
      if (!(grown ? grown->isCrossedBy(other) : crosses(first, other))) continue;
      if (!grown) grown.emplace(first.path);
      const auto changed = grown->join(other);
      if (!changed) return {};
      list_.giveUp(j);
      for (const plane::Box& box : *changed) {
        neighbours_.forEachNew(box, [&](std::size_t near) { await(near, i, j); });
      }
    }
    return grown ? grown->points() : std::vector<qcVector<2>>();
  }

  /// Lets a boundary wait for the pass of place i, which has come to `reached`, if its place lies
  /// beyond that.
  void await(std::size_t number, std::size_t i, std::size_t reached) {
    const std::size_t place = list_.placeOf(number);
    if (place == nowhere || place <= reached || awaitedAt_[number] == i) return;
    awaitedAt_[number] = i;
    waiting_.push(place);
  }

  const std::vector<CrossingTarget>& boundaries_;
  Neighbours neighbours_;
  WorkingList list_;
  /// For each boundary, the last place for which it has waited.
  std::vector<std::size_t> awaitedAt_;
  /// The places that the pass has yet to look at, the lowest on top.
  std::priority_queue<std::size_t, std::vector<std::size_t>, std::greater<>> waiting_;
};

}  // namespace

std::optional<std::vector<Remaining>> mergeCrossing(const std::vector<CrossingTarget>& boundaries,
                                                    const index::RegionIndex& index) {
  return Merging(boundaries, index).run();
}

}  // namespace cntr::compute
