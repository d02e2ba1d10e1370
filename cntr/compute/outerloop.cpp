// SPDX-License-Identifier: MIT
//
// From a traced boundary to one simple loop: cut it where it touches itself, drop loops inside
// others, join loops that touch.
//
// Each of the three passes is defined as a scan that starts over after every change. They go on
// where they are instead: what was found free of work before a change stays free of it, because
// cutting leaves other loops alone, dropping a loop adds nothing to compare with, and a joined loop
// has no vertices but those of its two parts. Vertices stay where they are, so which of them lie in
// one place is found once, for all loops.

#include <algorithm>
#include <cstdint>
#include <tuple>

#include <cntr/compute/repair.h>

namespace cntr::compute {

namespace {

/// Vertices within this of each other lie in one place.
constexpr double samePlace = 1e-6;

/// A vertex by its number in the traced boundary.
using Vertex = std::uint32_t;
using Loop = std::vector<Vertex>;

/// Which vertices lie in one place with each.
class Places {
 public:
  explicit Places(const std::vector<qcVector<2>>& points)
      : points_(points), grid_(points, samePlace) {
    // So many that all are remembered as long as few lie in each place. Where many do, the list of
    // each of them would hold all of them.
    const std::size_t mostRemembered = 16 * points.size();
    starts_.reserve(points.size() + 1);
    starts_.push_back(0);
    for (const qcVector<2>& p : points) {
      const std::vector<int> near = grid_.near(points, p);
      if (shared_.size() + near.size() > mostRemembered) break;
      shared_.insert(shared_.end(), near.begin(), near.end());
      starts_.push_back(shared_.size());
    }
  }

  /// With the vertex itself, unless its coordinates are not finite. Holds until the next call.
  std::span<const Vertex> at(Vertex v) const {
    if (v + 1 < starts_.size()) {
      return std::span(shared_).subspan(starts_[v], starts_[v + 1] - starts_[v]);
    }
    const std::vector<int> near = grid_.near(points_, points_[v]);
    last_.assign(near.begin(), near.end());
    return last_;
  }

 private:
  const std::vector<qcVector<2>>& points_;
  index::VertexGrid grid_;
  /// For the first vertices, the place where its list starts, and one end more.
  std::vector<std::size_t> starts_;
  std::vector<Vertex> shared_;
  mutable std::vector<Vertex> last_;
};

/// The loops that a traced boundary is cut into and joined to.
class Loops {
 public:
  explicit Loops(const std::vector<qcVector<2>>& points)
      : points_(points), places_(points), loopOf_(points.size()), positionOf_(points.size()) {
    Loop all(points.size());
    for (std::size_t i = 0; i < all.size(); ++i) all[i] = static_cast<Vertex>(i);
    add(std::move(all));
  }

  void cutAll() {
    for (std::size_t i = 0; i < loops_.size();) {
      if (!cutFirstTouch(i)) ++i;
    }
  }

  void dropNested() {
    std::vector<Outline> outlines;
    for (const Loop& loop : loops_) outlines.emplace_back(pointsOf(loop));
    for (std::size_t i = 0; i < loops_.size();) {
      if (!isNested(outlines, i)) {
        ++i;
        continue;
      }
      if (i + 1 < outlines.size()) outlines[i] = std::move(outlines.back());
      outlines.pop_back();
      drop(i);
    }
  }

  void joinAll() {
    for (std::size_t i = 0; i < loops_.size(); ++i) {
      for (std::size_t j = nextTouching(i); j < loops_.size(); j = nextTouching(i)) join(i, j);
    }
  }

  std::optional<std::vector<qcVector<2>>> first() const {
    if (loops_.empty()) return {};
    return pointsOf(loops_.front());
  }

 private:
  std::vector<qcVector<2>> pointsOf(const Loop& loop) const {
    std::vector<qcVector<2>> points;
    points.reserve(loop.size());
    for (const Vertex v : loop) points.push_back(points_[v]);
    return points;
  }

  void add(Loop loop) {
    loops_.emplace_back();
    assign(loops_.size() - 1, std::move(loop));
  }

  void assign(std::size_t i, Loop loop) {
    for (std::size_t k = 0; k < loop.size(); ++k) {
      loopOf_[loop[k]] = i;
      positionOf_[loop[k]] = k;
    }
    loops_[i] = std::move(loop);
  }

  /// Takes loop i out; the last one moves into its place.
  void drop(std::size_t i) {
    for (const Vertex v : loops_[i]) loopOf_[v] = none;
    Loop last = std::move(loops_.back());
    loops_.pop_back();
    if (i < loops_.size()) assign(i, std::move(last));
  }

  /// Takes loop i out; the later ones move up.
  void erase(std::size_t i) {
    for (const Vertex v : loops_[i]) loopOf_[v] = none;
    loops_.erase(loops_.begin() + static_cast<std::ptrdiff_t>(i));
    for (std::size_t k = i; k < loops_.size(); ++k) assign(k, std::move(loops_[k]));
  }

  /// Vertices first, first + 1, ..., first + count - 1, going round the loop.
  static Loop arc(const Loop& loop, std::size_t first, std::size_t count) {
    Loop vertices;
    vertices.reserve(count);
    for (std::size_t i = 0; i < count; ++i) vertices.push_back(loop[(first + i) % loop.size()]);
    return vertices;
  }

  /// The first vertex of loop i in one place with v, other than v, in the order in which a grid
  /// over that loop lists them: by cells, ascending within a cell.
  std::optional<Vertex> firstListed(Vertex v, std::size_t i) const {
    std::optional<Vertex> first;
    for (const Vertex other : places_.at(v)) {
      if (loopOf_[other] != i || other == v) continue;
      if (!first || isListedBefore(other, *first)) first = other;
    }
    return first;
  }

  bool isListedBefore(Vertex a, Vertex b) const {
    const auto cellA = index::VertexGrid::cellOf(points_[a], samePlace);
    const auto cellB = index::VertexGrid::cellOf(points_[b], samePlace);
    return std::tuple(cellA, positionOf_[a]) < std::tuple(cellB, positionOf_[b]);
  }

  /// Cuts loop i in two at its first touch with itself; false when there is none. A piece of a
  /// single vertex bounds nothing and is dropped; when that leaves nothing, so is the loop.
  bool cutFirstTouch(std::size_t i) {
    for (std::size_t a = 0; a < loops_[i].size(); ++a) {
      const Vertex v = loops_[i][a];
      if (places_.at(v).size() < 2) continue;
      if (const std::optional<Vertex> other = firstListed(v, i)) {
        cut(i, a, positionOf_[*other]);
        return true;
      }
    }
    return false;
  }

  void cut(std::size_t i, std::size_t a, std::size_t b) {
    const Loop whole = std::move(loops_[i]);
    const std::size_t length = b > a ? b - a : b + whole.size() - a;
    Loop kept = arc(whole, a, length);
    Loop split = arc(whole, a + length, whole.size() - length);
    if (kept.size() == 1) std::swap(kept, split);
    if (split.size() == 1) loopOf_[split.front()] = none;
    if (kept.size() == 1) {
      loops_[i] = std::move(kept);
      erase(i);
      return;
    }
    assign(i, std::move(kept));
    if (split.size() > 1) add(std::move(split));
  }

  bool isNested(const std::vector<Outline>& outlines, std::size_t i) const {
    const std::vector<qcVector<2>>& points = outlines[i].points();
    const qcVector<2> middle = (points[0] + points[1]) * 0.5;
    for (std::size_t j = 0; j < outlines.size(); ++j) {
      if (j != i && outlines[j].holds(middle)) return true;
    }
    return false;
  }

  /// The first loop after i that touches it; the number of loops when there is none.
  std::size_t nextTouching(std::size_t i) const {
    std::size_t next = loops_.size();
    for (const Vertex v : loops_[i]) {
      for (const Vertex other : places_.at(v)) {
        const std::size_t j = loopOf_[other];
        if (j != none && j > i) next = std::min(next, j);
      }
    }
    return next;
  }

  /// Joins loop j to loop i at the first vertex of loop i that lies in one place with one of loop
  /// j.
  void join(std::size_t i, std::size_t j) {
    for (std::size_t a = 0; a < loops_[i].size(); ++a) {
      const std::optional<Vertex> other = firstListed(loops_[i][a], j);
      if (!other) continue;
      Loop joined = arc(loops_[i], a, loops_[i].size());
      const Loop added = arc(loops_[j], positionOf_[*other], loops_[j].size());
      joined.insert(joined.end(), added.begin(), added.end());
      drop(j);
      assign(i, std::move(joined));
      return;
    }
  }

  static constexpr std::size_t none = static_cast<std::size_t>(-1);

  const std::vector<qcVector<2>>& points_;
  Places places_;
  std::vector<Loop> loops_;
  /// For each vertex its loop, or none, and its position in that.
  std::vector<std::size_t> loopOf_;
  std::vector<std::size_t> positionOf_;
};

}  // namespace

std::optional<std::vector<qcVector<2>>> outerLoop(const std::vector<qcVector<2>>& traced) {
  Loops loops(traced);
  loops.cutAll();
  loops.dropNested();
  loops.joinAll();
  return loops.first();
}

}  // namespace cntr::compute
