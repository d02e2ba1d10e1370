// SPDX-License-Identifier: MIT
//
// Finds pieces that come near each other: a binary tree of boxes over the pieces in their order.
// Consecutive pieces of a ring lie close together, which keeps the boxes small without sorting.

#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

#include <cntr/plane/box.h>
#include <cntrsets/faces/noding.h>

namespace cntr::sets {

/// Boxes of single pieces, of pairs of them, of pairs of pairs, up to one box for all.
class PieceTree {
 public:
  explicit PieceTree(const std::vector<Piece>& pieces) {
    if (pieces.empty()) return;
    std::vector<plane::Box> boxes;
    boxes.reserve(pieces.size());
    for (const Piece& piece : pieces) boxes.push_back(plane::edgeBox(piece.from, piece.to));
    levels_.push_back(std::move(boxes));
    while (levels_.back().size() > 1) levels_.push_back(pairsOf(levels_.back()));
  }

  /// Calls visit(i, j) for every two pieces i < j whose boxes share a point.
  template <class Visit>
  void forEachPair(Visit visit) const {
    if (!levels_.empty()) within(levels_.size() - 1, 0, visit);
  }

 private:
  static std::vector<plane::Box> pairsOf(const std::vector<plane::Box>& boxes) {
    std::vector<plane::Box> pairs((boxes.size() + 1) / 2);
    for (std::size_t i = 0; i < boxes.size(); ++i) pairs[i / 2].add(boxes[i]);
    return pairs;
  }

  template <class Visit>
  void within(std::size_t level, std::size_t node, Visit& visit) const {
    if (level == 0) return;
    const std::size_t first = 2 * node;
    within(level - 1, first, visit);
    if (first + 1 == levels_[level - 1].size()) return;
    within(level - 1, first + 1, visit);
    across(level - 1, first, first + 1, visit);
  }

  template <class Visit>
  void across(std::size_t level, std::size_t a, std::size_t b, Visit& visit) const {
    if (!plane::overlaps(levels_[level][a], levels_[level][b])) return;
    if (level == 0) return visit(a, b);
    const std::size_t count = levels_[level - 1].size();
    for (std::size_t i = 2 * a; i < std::min(2 * a + 2, count); ++i)
      for (std::size_t j = 2 * b; j < std::min(2 * b + 2, count); ++j)
        across(level - 1, i, j, visit);
  }

  /// levels_[0] has a box for each piece, the last level one box.
  std::vector<std::vector<plane::Box>> levels_;
};

}  // namespace cntr::sets
