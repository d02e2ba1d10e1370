// SPDX-License-Identifier: MIT
//
// A tree over edges in order, balanced by chance: when two trees become one, each provides the root
// with a probability equal to its share of the edges (C. Martinez, S. Roura, "Randomized binary
// search trees", Journal of the ACM 45, 1998). The numbers come from a fixed seed, and the answers
// do not depend on them.

#include <cntr/compute/growingboundary.h>

#include <bit>
#include <utility>

#include <cntr/compute/repair.h>

namespace cntr::compute {

namespace {

/// True for (0, 0) with positive zeros: what the end of an edge without length becomes.
bool isOrigin(const qcVector<2>& p) {
  return std::bit_cast<std::uint64_t>(p.x()) == 0 && std::bit_cast<std::uint64_t>(p.y()) == 0;
}

}  // namespace

GrowingBoundary::GrowingBoundary(const plane::Path& path) {
  trees_.reserve(path.edgeCount());
  plane::forEachEdge(path, [&](const qcVector<2>& from, const qcVector<2>& to) {
    const Node node = add(from, to, plane::edgeBox(from, to));
    if (plane::isDegenerate({from, to}) && !isOrigin(to)) withoutLength_.push_back(node);
  });
  root_ = balanced(0, static_cast<Node>(trees_.size()));
}

GrowingBoundary::Node GrowingBoundary::add(const qcVector<2>& from, const qcVector<2>& to,
                                           const plane::Box& searched) {
  Tree tree;
  tree.edge = {from, to};
  tree.box = plane::edgeBox(from, to);
  tree.searched = searched;
  trees_.push_back(tree);
  return static_cast<Node>(trees_.size() - 1);
}

GrowingBoundary::Node GrowingBoundary::balanced(Node first, Node last) {
  if (first == last) return none;
  const Node middle = first + (last - first) / 2;
  trees_[middle].before = balanced(first, middle);
  trees_[middle].after = balanced(middle + 1, last);
  renew(middle);
  return middle;
}

void GrowingBoundary::renew(Node node) {
  Tree& tree = trees_[node];
  tree.box = plane::edgeBox(tree.edge.from, tree.edge.to);
  tree.size = 1;
  for (const Node part : {tree.before, tree.after}) {
    if (part == none) continue;
    tree.box.add(trees_[part].box);
    tree.size += trees_[part].size;
    trees_[part].above = node;
  }
}

void GrowingBoundary::renewUpFrom(Node node) {
  for (; node != none; node = trees_[node].above) renew(node);
}

GrowingBoundary::Node GrowingBoundary::merged(Node first, Node second) {
  if (first == none) return second;
  if (second == none) return first;
  // A step of G. Marsaglia's xorshift64, "Xorshift RNGs", Journal of Statistical Software 8, 2003.
  random_ ^= random_ << 13U;
  random_ ^= random_ >> 7U;
  random_ ^= random_ << 17U;
  const std::uint64_t size = std::uint64_t{trees_[first].size} + trees_[second].size;
  if (random_ % size < trees_[first].size) {
    trees_[first].after = merged(trees_[first].after, second);
    renew(first);
    return first;
  }
  trees_[second].before = merged(first, trees_[second].before);
  renew(second);
  return second;
}

void GrowingBoundary::startAt(Node edge) {
  Node front = trees_[edge].before;
  Node back = edge;
  trees_[edge].before = none;
  renew(edge);
  Node child = edge;
  for (Node above = trees_[edge].above; above != none;) {
    const Node next = trees_[above].above;
    if (trees_[above].after == child) {
      trees_[above].after = front;
      front = above;
    } else {
      trees_[above].before = back;
      back = above;
    }
    renew(above);
    child = above;
    above = next;
  }
  root_ = merged(back, front);
  trees_[root_].above = none;
}

GrowingBoundary::Node GrowingBoundary::following(Node edge) const {
  Node node = trees_[edge].after;
  if (node == none) {
    for (node = trees_[edge].above; node != none && trees_[node].after == edge;) {
      edge = node;
      node = trees_[node].above;
    }
    if (node != none) return node;
    node = root_;
  }
  while (trees_[node].before != none) node = trees_[node].before;
  return node;
}

template <class MayMatter, class Visit>
bool GrowingBoundary::forEachEdge(Node tree, const MayMatter& mayMatter, const Visit& visit) const {
  if (tree == none || !mayMatter(trees_[tree].box)) return true;
  return forEachEdge(trees_[tree].before, mayMatter, visit) && visit(tree) &&
         forEachEdge(trees_[tree].after, mayMatter, visit);
}

std::vector<qcVector<2>> GrowingBoundary::points() const {
  std::vector<qcVector<2>> points;
  points.reserve(trees_.size());
  forEachEdge(
      root_, [](const plane::Box&) { return true; },
      [&](Node node) {
        points.push_back(trees_[node].edge.to);
        return true;
      });
  return points;
}

bool GrowingBoundary::isCrossedBy(const CrossingTarget& other) const {
  const plane::Box& bounds = trees_[root_].box;
  return !forEachEdgeNear(other, bounds, [&](const plane::Edge& asking) {
    const Probe probe(asking.from, asking.to, true, bounds);
    return forEachEdge(
        root_, [&](const plane::Box& box) { return probe.mayMeet(box); },
        [&](Node node) { return !probe.crossingWith(trees_[node].edge); });
  });
}

std::optional<GrowingBoundary::Joint> GrowingBoundary::jointWith(
    const CrossingTarget& other) const {
  std::optional<Joint> first;
  forEachEdge(
      root_, [&](const plane::Box& box) { return plane::overlaps(other.bounds, box); },
      [&](Node node) {
        const plane::Edge& edge = trees_[node].edge;
        if (plane::isDegenerate(edge)) return true;
        const std::optional<Crossing> met = firstCrossing(other, edge.from, edge.to, true);
        if (!met) return true;
        first = {node, *met};
        return false;
      });
  return first;
}

std::vector<GrowingBoundary::Node> GrowingBoundary::flattened() {
  std::vector<Node> changed;
  for (const Node node : std::exchange(withoutLength_, {})) {
    trees_[node].edge.to = qcVector<2>();
    const Node next = following(node);
    trees_[next].edge.from = qcVector<2>();
    changed.push_back(node);
    changed.push_back(next);
  }
  for (const Node node : changed) renewUpFrom(node);
  return changed;
}

std::optional<std::vector<plane::Box>> GrowingBoundary::join(const CrossingTarget& other) {
  const std::optional<Joint> joint = jointWith(other);
  if (!joint) return {};
  const qcVector<2> x = joint->crossing.point;
  std::vector<Node> changed = flattened();

  startAt(joint->edge);
  const qcVector<2> end = trees_[joint->edge].edge.from;
  trees_[joint->edge].edge.from = x;
  renewUpFrom(joint->edge);
  changed.push_back(joint->edge);

  const Node rest = add(end, x, trees_[joint->edge].searched);
  changed.push_back(rest);
  qcVector<2> last = x;
  for (const qcVector<2>& p : endsRound(other.path, joint->crossing.edge)) {
    changed.push_back(add(last, p, {}));
    last = p;
  }
  const Node closing = add(last, x, {});
  changed.push_back(closing);
  root_ = merged(closing, merged(root_, balanced(rest, closing)));
  trees_[root_].above = none;
  return toSearch(changed);
}

std::vector<plane::Box> GrowingBoundary::toSearch(const std::vector<Node>& changed) {
  // Room for the rounding of the remaining parts when the edge is divided again and again.
  const double room = plane::crossingMargin(plane::largestCoordinate(trees_[root_].box, {}));
  std::vector<plane::Box> boxes;
  for (const Node node : changed) {
    Tree& tree = trees_[node];
    const auto& [from, to] = tree.edge;
    if (plane::isDegenerate(tree.edge) && !isOrigin(to)) withoutLength_.push_back(node);
    if (plane::contains(tree.searched, from) && plane::contains(tree.searched, to)) continue;
    tree.searched = plane::edgeBox(from, to);
    tree.searched.minX -= room;
    tree.searched.minY -= room;
    tree.searched.maxX += room;
    tree.searched.maxY += room;
    boxes.push_back(tree.searched);
  }
  return boxes;
}

}  // namespace cntr::compute
