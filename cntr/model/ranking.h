// SPDX-License-Identifier: MIT
//
// An order of numbered items kept by rank: items are inserted, found and removed by rank, each in
// O(log n). What the items are does not matter.

#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace cntr::model {

/// A treap whose priorities are hashes of the item numbers (R. Seidel and C. R. Aragon, "Randomized
/// search trees", Algorithmica 16, 1996).
class Ranking {
 public:
  /// Items by number.
  using Item = std::uint32_t;

  std::size_t size() const noexcept { return nodes_.empty() ? 0 : nodes_[root_].count; }

  /// Makes room for the items below `count`: inserting them then allocates nothing.
  void makeRoomFor(std::size_t count) { nodes_.resize(std::max(nodes_.size(), count + 1)); }

  /// REQUIRES: rank <= size(); there is room for the item, and it is not in the order yet.
  void insert(std::size_t rank, Item item) noexcept;
  /// Removes an item. REQUIRES: rank < size().
  Item erase(std::size_t rank) noexcept;
  /// REQUIRES: rank < size().
  Item at(std::size_t rank) const noexcept;

  /// The number of leading items for which isBefore(item) holds. REQUIRES: it holds for no item
  /// after one for which it does not.
  template <class IsBefore>
  std::size_t countWhile(IsBefore isBefore) const {
    std::size_t count = 0;
    for (Tree tree = root_; tree != none;) {
      const Node& node = nodes_[tree];
      const bool goesRight = isBefore(tree - 1);
      if (goesRight) count += nodes_[node.left].count + 1U;
      tree = goesRight ? node.right : node.left;
    }
    return count;
  }

 private:
  /// A subtree by the number of its root: the number of its item plus one.
  using Tree = std::uint32_t;
  static constexpr Tree none = 0;

  struct Node {
    Tree left = none;
    Tree right = none;
    std::uint32_t count = 0;
  };

  void count(Tree tree) noexcept;
  /// The first `rank` items, and the rest.
  std::pair<Tree, Tree> split(Tree tree, std::size_t rank) noexcept;
  Tree join(Tree first, Tree second) noexcept;

  /// Node 0 stands for the empty tree.
  std::vector<Node> nodes_;
  Tree root_ = none;
};

}  // namespace cntr::model
