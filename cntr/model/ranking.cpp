// SPDX-License-Identifier: MIT

#include <cntr/model/ranking.h>

namespace cntr::model {

namespace {

std::uint64_t priorityOf(std::uint32_t tree) noexcept {
  std::uint64_t hash = tree * 0x9E3779B97F4A7C15U;
  hash ^= hash >> 32U;
  return hash * 0xBF58476D1CE4E5B9U;
}

}  // namespace

void Ranking::count(Tree tree) noexcept {
  Node& node = nodes_[tree];
  node.count = nodes_[node.left].count + nodes_[node.right].count + 1;
}

std::pair<Ranking::Tree, Ranking::Tree> Ranking::split(Tree tree, std::size_t rank) noexcept {
  if (tree == none) return {none, none};
  Node& node = nodes_[tree];
  const std::size_t inLeft = nodes_[node.left].count;
  if (rank <= inLeft) {
    const auto [first, second] = split(node.left, rank);
    node.left = second;
    count(tree);
    return {first, tree};
  }
  const auto [first, second] = split(node.right, rank - inLeft - 1);
  node.right = first;
  count(tree);
  return {tree, second};
}

Ranking::Tree Ranking::join(Tree first, Tree second) noexcept {
  if (first == none) return second;
  if (second == none) return first;
  if (priorityOf(first) > priorityOf(second)) {
    nodes_[first].right = join(nodes_[first].right, second);
    count(first);
    return first;
  }
  nodes_[second].left = join(first, nodes_[second].left);
  count(second);
  return second;
}

void Ranking::insert(std::size_t rank, Item item) noexcept {
  const Tree fresh = item + 1;
  nodes_[fresh] = {none, none, 1};
  const auto [first, second] = split(root_, rank);
  root_ = join(join(first, fresh), second);
}

Ranking::Item Ranking::erase(std::size_t rank) noexcept {
  const auto [first, rest] = split(root_, rank);
  const auto [erased, last] = split(rest, 1);
  root_ = join(first, last);
  return erased - 1;
}

Ranking::Item Ranking::at(std::size_t rank) const noexcept {
  Tree tree = root_;
  while (true) {
    const Node& node = nodes_[tree];
    const std::size_t inLeft = nodes_[node.left].count;
    if (rank == inLeft) return tree - 1;
    tree = rank < inLeft ? node.left : node.right;
    if (rank > inLeft) rank -= inLeft + 1;
  }
}

}  // namespace cntr::model
