// SPDX-License-Identifier: MIT

#include <cntr/index/edgeindex.h>

#include <algorithm>
#include <cmath>

namespace cntr::index {

namespace {

std::vector<Box> boxesOverEdges(const compute::Path& path) {
  std::vector<Box> boxes((path.edgeCount() + EdgeIndex::leafEdges - 1) / EdgeIndex::leafEdges);
  std::size_t k = 0;
  compute::forEachEdge(path, [&](const qcVector<2>& a, const qcVector<2>& b) {
    Box& box = boxes[k++ / EdgeIndex::leafEdges];
    box.add(a);
    box.add(b);
  });
  return boxes;
}

std::vector<Box> boxesOverBoxes(const std::vector<Box>& below) {
  std::vector<Box> boxes((below.size() + EdgeIndex::fanOut - 1) / EdgeIndex::fanOut);
  for (std::size_t i = 0; i < below.size(); ++i) boxes[i / EdgeIndex::fanOut].add(below[i]);
  return boxes;
}

bool isFinitePoint(const qcVector<2>& p) { return std::isfinite(p.x()) && std::isfinite(p.y()); }

}  // namespace

EdgeIndex::EdgeIndex(const compute::Path& path)
    : edgeCount_(path.edgeCount()),
      isFinite_(std::all_of(path.points.begin(), path.points.end(), isFinitePoint)) {
  if (edgeCount_ == 0) return;
  levels_.push_back(boxesOverEdges(path));
  while (levels_.back().size() > fanOut) levels_.push_back(boxesOverBoxes(levels_.back()));
  for (const Box& box : levels_.back()) bounds_.add(box);
}

}  // namespace cntr::index
