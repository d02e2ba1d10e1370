// SPDX-License-Identifier: MIT

#include <cntrsets/operations/sidetree.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include <cntr/plane/orientation.h>

namespace cntr::sets {

namespace {

/// Sides of a leaf; from 4 to 16 makes little difference.
constexpr std::size_t leafSize = 8;
/// No path down the tree is longer.
constexpr std::size_t mostLevels = 64;

bool isLeftOf(const Side& side, const Point& p) {
  const int turn = plane::orientation(side.a, side.b, p);
  return side.b.y() > side.a.y() ? turn > 0 : turn < 0;
}

bool isAbove(const Side& side, const Point& p) {
  const int turn = plane::orientation(side.a, side.b, p);
  if (turn == 0 && side.a.y() == side.b.y()) return true;
  // A point on the side, moved to the right, comes to lie above it if the side falls.
  if (turn == 0) return (side.b.y() < side.a.y()) == (side.b.x() > side.a.x());
  return side.b.x() > side.a.x() ? turn > 0 : turn < 0;
}

bool passesHeight(const Side& side, double y) { return (side.a.y() <= y) != (side.b.y() <= y); }
bool passesAbscissa(const Side& side, double x) { return (side.a.x() <= x) != (side.b.x() <= x); }

double squareOf(const Point& v) { return v.x() * v.x() + v.y() * v.y(); }

}  // namespace

SideTree::SideTree(std::span<const Side> sides) : sides_(sides) {
  std::vector<Node> leaves;
  for (std::size_t i = 0; i < sides.size(); ++i) {
    const bool isJoined = i > 0 && sides[i - 1].b == sides[i].a;
    if (!isJoined || leaves.back().endOfSides - leaves.back().firstSide == leafSize)
      leaves.push_back({{}, 0, static_cast<std::uint32_t>(i), 0});
    leaves.back().box.add(sides[i].a);
    leaves.back().box.add(sides[i].b);
    leaves.back().endOfSides = static_cast<std::uint32_t>(i + 1);
  }
  nodes_.reserve(2 * leaves.size());
  build(leaves);
}

/// Halves the leaves along the longer side of their box.
void SideTree::build(std::span<Node> leaves) {
  if (leaves.size() == 1) {
    nodes_.push_back(leaves.front());
    return;
  }
  const std::size_t self = nodes_.size();
  nodes_.emplace_back();
  plane::Box& box = nodes_.back().box;
  for (const Node& leaf : leaves) box.add(leaf.box);
  const bool isWide = box.maxX - box.minX > box.maxY - box.minY;
  const auto middle = leaves.begin() + static_cast<std::ptrdiff_t>(leaves.size() / 2);
  std::nth_element(leaves.begin(), middle, leaves.end(), [isWide](const Node& a, const Node& b) {
    return isWide ? a.box.minX + a.box.maxX < b.box.minX + b.box.maxX
                  : a.box.minY + a.box.maxY < b.box.minY + b.box.maxY;
  });
  build(leaves.first(leaves.size() / 2));
  nodes_[self].second = static_cast<std::uint32_t>(nodes_.size());
  build(leaves.subspan(leaves.size() / 2));
}

SideTree::Nearest SideTree::nearest(const Point& p, std::size_t guess) const {
  Nearest found{guess, sides_[guess].offsetTo(p), 0.0};
  double least = squareOf(found.offset);
  struct Waiting {
    std::size_t node;
    double square;
  };
  std::array<Waiting, mostLevels> waiting;
  std::size_t count = 0;
  waiting[count++] = {0, plane::squaredDistance(bounds(), p)};
  while (count > 0) {
    const Waiting next = waiting[--count];
    if (!(next.square < least)) continue;
    const Node& node = nodes_[next.node];
    for (std::size_t i = node.firstSide; i < node.endOfSides; ++i) {
      const Point offset = sides_[i].offsetTo(p);
      const double square = squareOf(offset);
      if (!(square < least)) continue;
      least = square;
      found.side = i;
      found.offset = offset;
    }
    if (node.second == 0) continue;
    Waiting near{next.node + 1, plane::squaredDistance(nodes_[next.node + 1].box, p)};
    Waiting far{node.second, plane::squaredDistance(nodes_[node.second].box, p)};
    if (far.square < near.square) std::swap(near, far);
    if (far.square < least) waiting[count++] = far;
    if (near.square < least) waiting[count++] = near;
  }
  found.distance = std::sqrt(least);
  return found;
}

template <class Visit>
void SideTree::forEachNear(const plane::Box& box, Visit visit) const {
  std::array<std::size_t, mostLevels> waiting;
  std::size_t count = 0;
  waiting[count++] = 0;
  while (count > 0) {
    const std::size_t at = waiting[--count];
    const Node& node = nodes_[at];
    if (!plane::overlaps(node.box, box)) continue;
    for (std::size_t i = node.firstSide; i < node.endOfSides; ++i) visit(sides_[i]);
    if (node.second == 0) continue;
    waiting[count++] = node.second;
    waiting[count++] = at + 1;
  }
}

bool SideTree::isInside(const Point& p) const {
  bool isInside = false;
  forEachNear({p.x(), p.y(), std::numeric_limits<double>::infinity(), p.y()},
              [&](const Side& side) {
                if (passesHeight(side, p.y()) && isLeftOf(side, p)) isInside = !isInside;
              });
  return isInside;
}

bool SideTree::isInside(const Point& to, const Point& from, bool fromIsInside) const {
  bool isInside = fromIsInside;
  const Point corner(to.x(), from.y());
  if (!(corner == from)) {
    forEachNear(plane::edgeBox(from, corner), [&](const Side& side) {
      if (passesHeight(side, from.y()) && isLeftOf(side, from) != isLeftOf(side, corner))
        isInside = !isInside;
    });
  }
  if (!(to == corner)) {
    forEachNear(plane::edgeBox(corner, to), [&](const Side& side) {
      if (passesAbscissa(side, to.x()) && isAbove(side, corner) != isAbove(side, to))
        isInside = !isInside;
    });
  }
  return isInside;
}

std::vector<Side> sidesOf(const RingList& list, const Frame& frame) {
  std::vector<Side> sides;
  std::size_t count = 0;
  for (const std::span<const Point>& ring : list.rings()) count += ring.size();
  sides.reserve(count);
  for (const std::span<const Point>& ring : list.rings()) {
    if (ring.empty()) continue;
    Point from = frame.local(ring.back());
    for (const Point& p : ring) {
      const Point to = frame.local(p);
      if (!(from == to)) sides.emplace_back(from, to);
      from = to;
    }
  }
  return sides;
}

}  // namespace cntr::sets
