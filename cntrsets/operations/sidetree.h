// SPDX-License-Identifier: MIT
//
// The edges of an area's boundary under a tree of boxes, to find the one nearest to a point and the
// side of the boundary on which a point lies.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include <cntr/plane/box.h>
#include <cntrsets/frame.h>
#include <cntrsets/operations/ringlist.h>

namespace cntr::sets {

/// An edge that is not degenerate.
struct Side {
  Side(const Point& a_, const Point& b_)
      : a(a_),
        b(b_),
        along(b_ - a_),
        inverse(1.0 / (along.x() * along.x() + along.y() * along.y())) {}

  /// From the nearest point of the side to `p`.
  Point offsetTo(const Point& p) const {
    const double dx = p.x() - a.x();
    const double dy = p.y() - a.y();
    const double share = std::min(std::max((dx * along.x() + dy * along.y()) * inverse, 0.0), 1.0);
    return {dx - share * along.x(), dy - share * along.y()};
  }

  Point a;
  Point b;
  /// From a to b.
  Point along;
  /// 1 over the square of its length.
  double inverse;
};

/// The sides of all rings, in the coordinates of the frame.
std::vector<Side> sidesOf(const RingList& list, const Frame& frame);

/// A tree over sides, to which it refers. Sides that are joined end to end stand together in the
/// list.
class SideTree {
 public:
  /// The side nearest to a point, the vector from it to the point, and the length of that vector.
  struct Nearest {
    std::size_t side = 0;
    Point offset;
    double distance = 0.0;
  };

  /// REQUIRES: at least one side. O(n log n).
  explicit SideTree(std::span<const Side> sides);

  const Side& side(std::size_t i) const { return sides_[i]; }
  const plane::Box& bounds() const { return nodes_.front().box; }

  /// `guess` is a side that is probably near.
  Nearest nearest(const Point& p, std::size_t guess) const;

  // The side of the boundary is that of the point moved a tiny bit to the right and much less
  // upwards, where it is on no side.

  /// Whether a ray from the point crosses an odd number of sides.
  bool isInside(const Point& p) const;
  /// The same for the point `to` when it is known for the point `from`: the nearer the two, the
  /// faster.
  bool isInside(const Point& to, const Point& from, bool fromIsInside) const;

 private:
  /// A box and its contents: two nodes, the first of which is the next one, or a run of sides.
  struct Node {
    plane::Box box;
    std::uint32_t second = 0;
    std::uint32_t firstSide = 0;
    std::uint32_t endOfSides = 0;
  };

  void build(std::span<Node> leaves);

  /// Calls visit(side) for the sides in boxes that touch `box`.
  template <class Visit>
  void forEachNear(const plane::Box& box, Visit visit) const;

  std::span<const Side> sides_;
  std::vector<Node> nodes_;
};

}  // namespace cntr::sets
