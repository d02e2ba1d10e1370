// SPDX-License-Identifier: MIT

#include <cntr/index/boxhierarchy.h>

namespace cntr::index {

namespace {

std::vector<plane::Box> boxesOver(const std::vector<plane::Box>& below) {
  std::vector<plane::Box> boxes((below.size() + BoxHierarchy::fanOut - 1) / BoxHierarchy::fanOut);
  for (std::size_t i = 0; i < below.size(); ++i) boxes[i / BoxHierarchy::fanOut].add(below[i]);
  return boxes;
}

}  // namespace

BoxHierarchy::BoxHierarchy(std::vector<plane::Box> leaves, std::size_t slotCount)
    : slotCount_(slotCount) {
  if (leaves.empty()) return;
  levels_.push_back(std::move(leaves));
  while (levels_.back().size() > fanOut) levels_.push_back(boxesOver(levels_.back()));
  for (const plane::Box& box : levels_.back()) bounds_.add(box);
}

}  // namespace cntr::index
