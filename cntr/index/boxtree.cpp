// SPDX-License-Identifier: MIT
//
// Boxes are sorted by their centres: first into vertical strips of about equally many boxes, as
// many strips as there are runs in a strip, then upwards within each strip (S. T. Leutenegger, M.
// A. Lopez, J. Edgington, "STR: a simple and efficient algorithm for R-tree packing", ICDE 1997).

#include <cntr/index/boxtree.h>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace cntr::index {

namespace {

std::vector<std::size_t> sortedByPlace(const std::vector<plane::Box>& boxes) {
  std::vector<std::size_t> numbers(boxes.size());
  std::iota(numbers.begin(), numbers.end(), std::size_t{0});
  const auto x = [&](std::size_t i) { return boxes[i].minX * 0.5 + boxes[i].maxX * 0.5; };
  const auto y = [&](std::size_t i) { return boxes[i].minY * 0.5 + boxes[i].maxY * 0.5; };
  std::sort(numbers.begin(), numbers.end(),
            [&](std::size_t a, std::size_t b) { return x(a) < x(b); });
  const double runs = static_cast<double>(boxes.size()) / BoxHierarchy::leafSize;
  const auto runsInStrip = static_cast<std::size_t>(std::ceil(std::sqrt(runs)));
  const std::size_t stripSize = std::max<std::size_t>(runsInStrip, 1) * BoxHierarchy::leafSize;
  for (std::size_t first = 0; first < numbers.size(); first += stripSize) {
    const std::size_t last = std::min(first + stripSize, numbers.size());
    std::sort(numbers.begin() + static_cast<std::ptrdiff_t>(first),
              numbers.begin() + static_cast<std::ptrdiff_t>(last),
              [&](std::size_t a, std::size_t b) { return y(a) < y(b); });
  }
  return numbers;
}

std::vector<plane::Box> inOrder(const std::vector<plane::Box>& boxes,
                                const std::vector<std::size_t>& numbers) {
  std::vector<plane::Box> sorted;
  sorted.reserve(boxes.size());
  for (const std::size_t number : numbers) sorted.push_back(boxes[number]);
  return sorted;
}

std::vector<plane::Box> leavesOver(const std::vector<plane::Box>& boxes) {
  std::vector<plane::Box> leaves((boxes.size() + BoxHierarchy::leafSize - 1) /
                                 BoxHierarchy::leafSize);
  for (std::size_t i = 0; i < boxes.size(); ++i) leaves[i / BoxHierarchy::leafSize].add(boxes[i]);
  return leaves;
}

}  // namespace

BoxTree::BoxTree(const std::vector<plane::Box>& boxes)
    : numbers_(sortedByPlace(boxes)),
      boxes_(inOrder(boxes, numbers_)),
      hierarchy_(leavesOver(boxes_), boxes_.size()) {}

BoxTree::Found::Found(const BoxTree& tree) : slots_(tree.boxes_.size(), 0) {
  for (std::size_t level = 0; level < tree.hierarchy_.levelCount(); ++level) {
    levels_.emplace_back(tree.hierarchy_.boxes(level).size());
    wholes_.emplace_back(tree.hierarchy_.boxes(level).size(), 0);
  }
}

std::vector<std::size_t> BoxTree::touching(const plane::Box& box) const {
  std::vector<std::size_t> found;
  forEachTouching(box, [&](std::size_t number) {
    found.push_back(number);
    return true;
  });
  std::sort(found.begin(), found.end());
  return found;
}

}  // namespace cntr::index
