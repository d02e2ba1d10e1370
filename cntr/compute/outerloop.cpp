// SPDX-License-Identifier: MIT
//
// From a traced boundary to one simple loop: cut it where it touches itself, drop loops inside
// others, join loops that touch.
//
// Each of the three passes is defined as a scan that starts over after every change. Here they
// continue where they are: what needed no work before a change needs none after it, because cutting
// leaves other loops alone, dropping a loop adds nothing to compare with, and a joined loop has
// only the vertices of its two parts. A vertex found to touch nothing in its loop is not looked at
// again, and of two pieces only the smaller one is relabelled. What stays quadratic at worst: a
// loop is looked for in every other one whose box holds its first edge, the way along a loop to the
// first of several places where the next one touches it may be long, and many vertices may lie in
// one place.

#include <cmath>
#include <cstdint>
#include <functional>
#include <numeric>
#include <optional>
#include <queue>
#include <tuple>
#include <utility>
#include <vector>

#include <cntr/compute/repair.h>
#include <cntr/compute/rings.h>
#include <cntr/index/boxtree.h>

namespace cntr::compute {

namespace {

/// The first vertex of `ring` in the same place as v, other than v, in the order in which a grid
/// over that ring lists them: cell by cell, ascending within a cell. REQUIRES: the ring's vertices
/// ascend from its start on, except for one step down. Those of a ring do until another is joined
/// to it.
std::optional<Vertex> firstListed(const Rings& rings, Vertex v, Label ring) {
  const auto count = static_cast<Vertex>(rings.vertexCount());
  const Vertex start = rings[ring].start;
  const auto place = [&](Vertex vertex) {
    const Vertex position = vertex >= start ? vertex - start : vertex + (count - start);
    return std::tuple(rings.places().cellOf(vertex), position);
  };
  std::optional<Vertex> first;
  rings.places().forEachAt(v, [&](Vertex other) {
    if (rings.labelOf(other) != ring || other == v) return;
    if (!first || place(other) < place(*first)) first = other;
  });
  return first;
}

/// Cuts a boundary where it touches itself.
class Cutting {
 public:
  explicit Cutting(Rings& rings) : rings_(rings), loops_{0}, scanned_{none} {}

  /// The loops, in the order in which they were made.
  std::vector<Label> run() {
    for (std::size_t i = 0; i < loops_.size();) {
      if (!cutFirstTouch(i)) ++i;
    }
    return std::move(loops_);
  }

 private:
  /// Cuts loop i in two at its first touch with itself; false when there is none.
  bool cutFirstTouch(std::size_t i) {
    const Label loop = loops_[i];
    const Vertex start = rings_[loop].start;
    const Vertex end = scanned_[loop] == none ? start : scanned_[loop];
    Vertex v = start;
    do {
      if (const auto other = firstListed(rings_, v, loop)) {
        cut(i, v, *other);
        return true;
      }
      v = rings_.after(v);
    } while (v != end);
    return false;
  }

  /// Cuts loop i from its first touch a to the vertex b that it touches. A piece of a single vertex
  /// bounds nothing and is dropped; when that leaves nothing, so is the loop.
  void cut(std::size_t i, Vertex a, Vertex b) {
    const Label whole = loops_[i];
    const Vertex start = rings_[whole].start;
    // What has been scanned, before the loop's start or from there to a, ends the second piece.
    const Vertex passed = a == start ? none : start;
    const Vertex scanned = scanned_[whole] == none ? passed : scanned_[whole];
    auto [kept, split] = rings_.cut(a, b);
    scanned_.resize(rings_.labelCount());
    scanned_[kept] = none;
    scanned_[split] = scanned;
    if (rings_[kept].size == 1) std::swap(kept, split);
    if (rings_[split].size == 1) rings_.drop(split);
    loops_[i] = kept;
    if (rings_[kept].size == 1) {
      rings_.drop(kept);
      loops_.erase(loops_.begin() + static_cast<std::ptrdiff_t>(i));
    } else if (rings_[split].size > 1) {
      loops_.push_back(split);
    }
  }

  Rings& rings_;
  std::vector<Label> loops_;
  /// For each ring a vertex from which on, to the ring's end, all are known to touch nothing in it,
  /// or none.
  std::vector<Vertex> scanned_;
};

/// The loops while those inside others are dropped.
class Nesting {
 public:
  Nesting(const Rings& rings, const std::vector<Label>& loops) : isDropped_(loops.size(), false) {
    outlines_.reserve(loops.size());
    std::vector<plane::Box> boxes;
    boxes.reserve(loops.size());
    bool areFinite = true;
    for (const Label loop : loops) {
      outlines_.emplace_back(rings.pointsOf(loop));
      boxes.push_back(outlines_.back().bounds());
      areFinite &= isFinite(boxes.back());
    }
    if (areFinite) tree_.emplace(boxes);
  }

  /// True when the loop lies in one that has not been dropped; loops keep their first numbers.
  bool isNested(std::size_t loop) const {
    const std::vector<qcVector<2>>& points = outlines_[loop].points();
    const qcVector<2> middle = (points[0] + points[1]) * 0.5;
    const auto doesNotHold = [&](std::size_t other) {
      return other == loop || isDropped_[other] || !outlines_[other].holds(middle);
    };
    if (tree_) return !tree_->forEachTouching(plane::edgeBox(middle, middle), doesNotHold);
    for (std::size_t other = 0; other < outlines_.size(); ++other) {
      if (!doesNotHold(other)) return true;
    }
    return false;
  }

  void drop(std::size_t loop) { isDropped_[loop] = true; }

 private:
  static bool isFinite(const plane::Box& box) {
    return std::isfinite(box.minX) && std::isfinite(box.minY) && std::isfinite(box.maxX) &&
           std::isfinite(box.maxY);
  }

  std::vector<Outline> outlines_;
  std::vector<bool> isDropped_;
  /// Over the boxes of the loops, if all are finite.
  std::optional<index::BoxTree> tree_;
};

/// Drops the loops inside others; the last loop moves into the place of a dropped one.
void dropNested(Rings& rings, std::vector<Label>& loops) {
  Nesting nesting(rings, loops);
  std::vector<std::size_t> numbers(loops.size());
  std::iota(numbers.begin(), numbers.end(), std::size_t{0});
  for (std::size_t i = 0; i < loops.size();) {
    if (!nesting.isNested(numbers[i])) {
      ++i;
      continue;
    }
    nesting.drop(numbers[i]);
    numbers[i] = numbers.back();
    numbers.pop_back();
    rings.drop(loops[i]);
    loops[i] = loops.back();
    loops.pop_back();
  }
}

/// Joins all loops that touch one, always the one with the lowest place next. The last loop moves
/// into the place of a joined one.
class Joining {
 public:
  Joining(Rings& rings, std::vector<Label>& loops)
      : rings_(rings),
        loops_(loops),
        placeOf_(rings.labelCount(), none),
        isWaiting_(rings.labelCount(), false),
        touched_(rings.vertexCount(), none) {
    for (std::size_t i = 0; i < loops.size(); ++i) placeOf_[loops[i]] = static_cast<Place>(i);
  }

  /// Joins everything that touches the first loop, and whatever touches that.
  void joinToFirst() {
    if (loops_.empty()) return;
    const Label first = loops_.front();
    await(first, first);
    while (!waiting_.empty()) {
      const auto [place, loop] = waiting_.top();
      waiting_.pop();
      if (placeOf_[loop] == place) join(first, loop);
    }
  }

 private:
  using Place = std::uint32_t;
  using Waiting = std::pair<Place, Label>;

  /// Notes the loops that touch `loop`, a part of `first` or about to become one.
  void await(Label loop, Label first) {
    rings_.forEachVertex(loop, [&](Vertex v) {
      rings_.places().forEachAt(v, [&](Vertex other) {
        const Label near = rings_.labelOf(other);
        if (near == none || near == first || isWaiting_[near]) return;
        isWaiting_[near] = true;
        waiting_.emplace(placeOf_[near], near);
      });
    });
  }

  /// Joins `loop` at the first vertex of `first` that is in the same place as one of its own.
  void join(Label first, Label loop) {
    await(loop, first);
    std::size_t touching = 0;
    Vertex a = none;  // the only one, if it is
    rings_.forEachVertex(loop, [&](Vertex v) {
      rings_.places().forEachAt(v, [&](Vertex other) {
        if (touched_[other] == loop) return;
        touched_[other] = loop;
        if (rings_.labelOf(other) != first) return;
        ++touching;
        a = other;
      });
    });
    if (touching > 1) a = firstTouching(loop, rings_[first].start, touching);
    rings_.join(a, *firstListed(rings_, a, loop));
    fillPlaceOf(loop);
  }

  /// The first vertex from `start` on that touches the loop, of `count` in that ring: the first one
  /// met going forward, or the last one going backward, whichever is nearer.
  Vertex firstTouching(Label loop, Vertex start, std::size_t count) const {
    Vertex ahead = start;
    Vertex behind = start;
    while (touched_[ahead] != loop) {
      ahead = rings_.after(ahead);
      behind = rings_.before(behind);
      if (touched_[behind] == loop && --count == 0) return behind;
    }
    return ahead;
  }

  void fillPlaceOf(Label joined) {
    const Place place = std::exchange(placeOf_[joined], none);
    const Label last = loops_.back();
    loops_[place] = last;
    loops_.pop_back();
    if (last == joined) return;
    placeOf_[last] = place;
    if (isWaiting_[last]) waiting_.emplace(place, last);
  }

  Rings& rings_;
  std::vector<Label>& loops_;
  /// By label: the place in loops_, and whether the loop is or was waiting.
  std::vector<Place> placeOf_;
  std::vector<bool> isWaiting_;
  /// The loops that touch the first one, the lowest place on top; places may be outdated.
  std::priority_queue<Waiting, std::vector<Waiting>, std::greater<>> waiting_;
  /// For each vertex the last loop that was seen to touch it.
  std::vector<Label> touched_;
};

}  // namespace

std::optional<std::vector<qcVector<2>>> outerLoop(const std::vector<qcVector<2>>& traced) {
  Rings rings(traced);
  std::vector<Label> loops = Cutting(rings).run();
  dropNested(rings, loops);
  Joining(rings, loops).joinToFirst();
  if (loops.empty()) return {};
  return rings.pointsOf(loops.front());
}

}  // namespace cntr::compute
