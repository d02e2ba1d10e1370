// SPDX-License-Identifier: MIT

#include <cntr/index/edgeindex.h>

#include <algorithm>
#include <cmath>

namespace cntr::index {

namespace {

std::vector<plane::Box> boxesOverEdges(const plane::Path& path) {
  std::vector<plane::Box> boxes((path.edgeCount() + EdgeIndex::leafSize - 1) / EdgeIndex::leafSize);
  std::size_t k = 0;
  plane::forEachEdge(path, [&](const qcVector<2>& a, const qcVector<2>& b) {
    plane::Box& box = boxes[k++ / EdgeIndex::leafSize];
    box.add(a);
    box.add(b);
  });
  return boxes;
}

bool isFinitePoint(const qcVector<2>& p) { return std::isfinite(p.x()) && std::isfinite(p.y()); }

}  // namespace

EdgeIndex::EdgeIndex(const plane::Path& path)
    : BoxHierarchy(boxesOverEdges(path), path.edgeCount()),
      isFinite_(std::all_of(path.points.begin(), path.points.end(), isFinitePoint)) {}

}  // namespace cntr::index
