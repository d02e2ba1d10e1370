// SPDX-License-Identifier: MIT

#include <cntr/compute/rings.h>

#include <cntr/plane/tolerances.h>

namespace cntr::compute {

Places::Places(const std::vector<qcVector<2>>& points)
    : points_(points), grid_(points, plane::touchDistance) {
  // Enough to remember every list as long as few vertices share a place. Where many do, each of
  // their lists would hold all of them.
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

index::VertexGrid::Cell Places::cellOf(Vertex v) const {
  return index::VertexGrid::cellOf(points_[v], plane::touchDistance);
}

Rings::Rings(const std::vector<qcVector<2>>& points)
    : points_(points),
      places_(points),
      next_(points.size()),
      previous_(points.size()),
      labelOf_(points.size(), 0),
      rings_{{0, points.size()}} {
  const auto last = static_cast<Vertex>(points.size() - 1);
  for (Vertex v = 0; v < last; ++v) link(v, v + 1);
  link(last, 0);
}

std::vector<qcVector<2>> Rings::pointsOf(Label ring) const {
  std::vector<qcVector<2>> points;
  points.reserve(rings_[ring].size);
  forEachVertex(ring, [&](Vertex v) { points.push_back(points_[v]); });
  return points;
}

Rings::Pieces Rings::cut(Vertex a, Vertex b) {
  const Label whole = labelOf_[a];
  const auto fresh = static_cast<Label>(rings_.size());
  const std::size_t size = rings_[whole].size;
  // Walk from both cuts at once, to find the smaller piece without walking the whole larger one.
  std::size_t smaller = 1;
  Vertex fromA = next_[a];
  Vertex fromB = next_[b];
  for (; fromA != b && fromB != a; ++smaller) {
    fromA = next_[fromA];
    fromB = next_[fromB];
  }
  const bool firstIsSmaller = fromA == b;
  rings_.push_back({firstIsSmaller ? a : b, smaller});
  rings_[whole] = {firstIsSmaller ? b : a, size - smaller};
  const Vertex endOfFirst = previous_[b];
  const Vertex endOfSecond = previous_[a];
  link(endOfFirst, a);
  link(endOfSecond, b);
  relabel(rings_[fresh].start, smaller, fresh);
  return firstIsSmaller ? Pieces{fresh, whole} : Pieces{whole, fresh};
}

void Rings::join(Vertex a, Vertex b) {
  const Label joined = labelOf_[a];
  const Label added = labelOf_[b];
  relabel(b, rings_[added].size, joined);
  rings_[joined] = {a, rings_[joined].size + rings_[added].size};
  const Vertex endOfJoined = previous_[a];
  const Vertex endOfAdded = previous_[b];
  link(endOfJoined, b);
  link(endOfAdded, a);
}

void Rings::drop(Label ring) { relabel(rings_[ring].start, rings_[ring].size, none); }

void Rings::link(Vertex from, Vertex to) {
  next_[from] = to;
  previous_[to] = from;
}

void Rings::relabel(Vertex start, std::size_t count, Label label) {
  for (Vertex v = start; count > 0; --count, v = next_[v]) labelOf_[v] = label;
}

}  // namespace cntr::compute
