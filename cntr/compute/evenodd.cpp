// SPDX-License-Identifier: MIT
//
// Parity is that of the number of edges that cross the horizontal line through p to its right. Only
// edges as near to that line as the distance of condition (b) are looked at, which settles (b) and
// (c) as well: no other edge or vertex is as near to p.
//
// The sign of cross(edge, p - start) tells whether p lies to the left of an edge. Divided by the
// length of the edge, that product is the distance of p from its line, with an error of less than
// containmentRounding. Where it does not exceed the margin, the sign would prove nothing, and an
// edge that crosses the horizontal line there comes about that near to p: there is no answer.

#include <cntr/compute/evenodd.h>

#include <algorithm>
#include <cmath>

#include <cntr/plane/containmentconditions.h>

namespace cntr::compute {

namespace {

using Vertices = std::span<const qcVector<2>>;
using Answer = index::ContainmentGrid::Answer;

/// At least the radius of condition (b): sin(pi / (2n)) is not less than 1 / n.
double clearRadius(std::size_t vertices) {
  return plane::containmentMargin * static_cast<double>(vertices);
}

/// Counts the edges to the right of a point, as long as the conditions hold.
class Count {
 public:
  Count(std::size_t vertices, const qcVector<2>& p)
      : p_(p),
        clear_(clearRadius(vertices)),
        low_(p.y() - clear_),
        high_(p.y() + clear_),
        left_(p.x() - clear_),
        right_(p.x() + clear_) {}

  bool isKnown() const noexcept { return isKnown_; }
  Parity result() const noexcept {
    if (!isKnown_) return {Answer::eUnknown, work_};
    return {isOdd_ ? Answer::eInside : Answer::eOutside, work_};
  }

  /// Counts an edge. NaN and infinite coordinates are ruled out by condition (e).
  void add(const qcVector<2>& a, const qcVector<2>& b) noexcept {
    if ((a.x() < left_ && b.x() < left_) || (a.x() > right_ && b.x() > right_)) {
      // Not near; to the right, the ends tell whether it crosses the line.
      if (a.x() > right_ && straddles(a, b)) isOdd_ = !isOdd_;
      return;
    }
    const qcVector<2> toEnd = b - p_;
    const qcVector<2> toStart = p_ - a;
    if (toEnd * toEnd < clear_ * clear_ || toStart * toStart < clear_ * clear_) {
      isKnown_ = false;
      return;
    }
    constexpr double margin = plane::containmentMargin;
    const qcVector<2> along = b - a;
    const double c = qnKernel::cross(along, toStart);
    const double square = along * along;
    if (!(c * c > margin * margin * square)) {
      const double place = toStart * along;
      if (straddles(a, b) || (place > 0.0 && place < square)) isKnown_ = false;
      return;
    }
    if (straddles(a, b) && (c > 0.0) == (b.y() > a.y())) isOdd_ = !isOdd_;
  }

  /// Counts the edges from `before` to the first vertex of the run, and on through the run.
  void add(const qcVector<2>& before, Vertices run) noexcept {
    work_ += run.size();
    const qcVector<2>* a = &before;
    bool wasBelow = a->y() < low_;
    bool wasAbove = a->y() > high_;
    for (const qcVector<2>& b : run) {
      const bool isBelow = b.y() < low_;
      const bool isAbove = b.y() > high_;
      if (!((wasBelow && isBelow) || (wasAbove && isAbove))) add(*a, b);
      a = &b;
      wasBelow = isBelow;
      wasAbove = isAbove;
    }
  }

  /// Counts a run of edges by its box and its ends, if that can be done.
  bool addWhole(const plane::Box& box, const qcVector<2>& start, const qcVector<2>& end) noexcept {
    ++work_;
    if (box.maxY < low_ || box.minY > high_ || box.maxX < left_) return true;
    if (!(box.minX > right_)) return false;
    if (straddles(start, end)) isOdd_ = !isOdd_;
    return true;
  }

 private:
  /// Half-open, so that a vertex on the line counts for one of its two edges where the path passes
  /// through the line, and for both or neither where it only touches the line.
  bool straddles(const qcVector<2>& a, const qcVector<2>& b) const noexcept {
    return (a.y() <= p_.y()) != (b.y() <= p_.y());
  }

  qcVector<2> p_;
  double clear_;
  /// The square within clear_ of p.
  double low_;
  double high_;
  double left_;
  double right_;
  std::size_t work_ = 1;
  bool isOdd_ = false;
  bool isKnown_ = true;
};

/// Descends into the boxes that neither miss the point nor lie wholly to its right.
class Descent {
 public:
  Descent(Vertices points, const index::EdgeIndex& index, Count& count)
      : points_(points), index_(index), count_(count) {}

  void run() {
    if (index_.levelCount() == 0) return;
    const std::size_t top = index_.levelCount() - 1;
    std::size_t edgesUnderBox = index::EdgeIndex::leafSize;
    for (std::size_t level = 0; level < top; ++level) edgesUnderBox *= index::EdgeIndex::fanOut;
    descend(top, 0, index_.boxes(top).size(), edgesUnderBox);
  }

 private:
  void descend(std::size_t level, std::size_t first, std::size_t last, std::size_t edgesUnderBox) {
    for (std::size_t i = first; i < last && count_.isKnown(); ++i) {
      const std::size_t begin = i * edgesUnderBox;
      const std::size_t end = std::min(begin + edgesUnderBox, points_.size());
      // On a closed path edge k ends at vertex k.
      const qcVector<2>& before = points_[begin == 0 ? points_.size() - 1 : begin - 1];
      if (count_.addWhole(index_.boxes(level)[i], before, points_[end - 1])) continue;
      if (level == 0) {
        count_.add(before, points_.subspan(begin, end - begin));
      } else {
        const auto [childrenBegin, childrenEnd] = index_.childrenOf(level, i);
        descend(level - 1, childrenBegin, childrenEnd, edgesUnderBox / index::EdgeIndex::fanOut);
      }
    }
  }

  Vertices points_;
  const index::EdgeIndex& index_;
  Count& count_;
};

/// What the extents tell: outside the box, no answer, or that the edges must be asked.
enum class Screened { eOutside, eUnknown, eAsk };

Screened screen(Vertices points, const Extents& extents, const qcVector<2>& p) {
  if (!extents.areSmall || points.size() < 3) return Screened::eUnknown;
  if (!plane::contains(extents.bounds, p)) return Screened::eOutside;
  if (!plane::rayEndsOutside(extents.bounds, points.front(), extents.radius, p)) {
    return Screened::eUnknown;
  }
  return Screened::eAsk;
}

/// `countEdges(count)` counts the edges that matter.
template <class CountEdges>
Parity parityBy(Vertices points, const Extents& extents, const qcVector<2>& p,
                CountEdges countEdges) {
  const Screened screened = screen(points, extents, p);
  if (screened == Screened::eOutside) return {Answer::eOutside};
  if (screened == Screened::eUnknown) return {};
  Count count(points.size(), p);
  countEdges(count);
  return count.result();
}

}  // namespace

Extents extentsOf(Vertices points) {
  // Even and odd vertices separately: two chains of comparisons run side by side.
  const qcVector<2>& first = points.front();
  plane::Box boxes[2] = {plane::edgeBox(first, first), plane::edgeBox(first, first)};
  double squares[2] = {0.0, 0.0};
  bool areSmall = true;
  const auto add = [&](const qcVector<2>& p, std::size_t chain) {
    boxes[chain].add(p);
    const qcVector<2> fromFirst = p - first;
    squares[chain] = qnKernel::greater(squares[chain], fromFirst * fromFirst);
    areSmall &= plane::isSmallEnough(p);
  };
  std::size_t i = 0;
  for (; i + 1 < points.size(); i += 2) {
    add(points[i], 0);
    add(points[i + 1], 1);
  }
  if (i < points.size()) add(points[i], 0);
  boxes[0].add(boxes[1]);
  return {boxes[0], std::sqrt(std::max(squares[0], squares[1])), areSmall};
}

Parity evenOdd(Vertices points, const Extents& extents, const qcVector<2>& p) {
  return parityBy(points, extents, p, [&](Count& count) { count.add(points.back(), points); });
}

Parity evenOdd(Vertices points, const index::EdgeIndex& index, const Extents& extents,
               const qcVector<2>& p) {
  return parityBy(points, extents, p, [&](Count& count) { Descent(points, index, count).run(); });
}

}  // namespace cntr::compute
