// SPDX-License-Identifier: MIT
//
// The sides of an area's boundary, and the tree over them against scans of all sides.

#include <cntrsets/operations/sidetree.h>

#include <algorithm>
#include <cmath>
#include <string>

#include <gtest/gtest.h>
#include <testing/shapes/numbers.h>
#include <testing/shapes/shapes.h>
#include <tests/cntrsets/operations/sides.h>

namespace {

using cntr::sets::Frame;
using cntr::sets::RingList;
using cntr::sets::Side;
using cntr::sets::sidesOf;
using cntr::sets::SideTree;
using features::box;
using features::Points;
using Point = qcVector<2>;

/// Rings on the integer grid below 8: vertices meet vertices and sides, sides overlap.
std::vector<Side> gridSides(std::uint64_t seed) {
  shapes::Random random(seed);
  std::vector<Points> rings(1 + random.below(4));
  for (Points& ring : rings) ring = shapes::gridPoints(random, 2 + random.below(40), 8);
  std::vector<Side> sides = features::sidesOf(rings);
  return sides.empty() ? features::sidesOf({features::square}) : sides;
}

/// Whether a ray to the right from the point crosses an odd number of sides, none of which passes
/// through it or has an end at its height.
bool isInsideByDefinition(const std::vector<Side>& sides, const Point& p) {
  bool isInside = false;
  for (const Side& side : sides) {
    if ((side.a.y() < p.y()) == (side.b.y() < p.y())) continue;
    const double share = (p.y() - side.a.y()) / side.along.y();
    if (side.a.x() + share * side.along.x() > p.x()) isInside = !isInside;
  }
  return isInside;
}

/// The point moved to the right, and much less upwards: on no side with ends on the grid.
Point moved(const Point& p) { return {p.x() + 1e-3, p.y() + 1e-7}; }

TEST(SideTest, OffsetsStartAtTheNearestPoint) {
  const Side side({1, 1}, {5, 4});
  EXPECT_EQ(side.along, Point(4, 3));
  EXPECT_EQ(side.inverse, 1.0 / 25.0);
  EXPECT_EQ(side.offsetTo({0, 1}), Point(-1, 0)) << "before its first end";
  EXPECT_EQ(side.offsetTo({6, 6}), Point(1, 2)) << "beyond its last end";
  EXPECT_EQ(side.offsetTo({5, 4}), Point(0, 0)) << "at an end";
  const Point offset = side.offsetTo({0, 6.5});
  EXPECT_NEAR(offset.x(), -3.0, 1e-15) << "beside its middle";
  EXPECT_NEAR(offset.y(), 4.0, 1e-15) << "beside its middle";
}

TEST(SidesOfTest, AreThoseOfAllRingsWhoseEndsDiffer) {
  const std::vector<qcRings> feature{
      {{{0, 0}, {4, 0}, {4, 0}, {4, 4}, {0, 0}}, {{}, {{1, 1}}, {{2, 1}, {3, 2}}}}};
  const RingList list(feature);
  const Frame frame(list.rings());
  Points ends;
  for (const Side& side : sidesOf(list, frame)) {
    ends.push_back(frame.restored(side.a));
    ends.push_back(frame.restored(side.b));
  }
  EXPECT_EQ(
      ends,
      (Points{{0, 0}, {4, 0}, {4, 0}, {4, 4}, {4, 4}, {0, 0}, {3, 2}, {2, 1}, {2, 1}, {3, 2}}));
}

TEST(SidesOfTest, HaveTheCoordinatesOfTheFrame) {
  const std::vector<qcRings> feature{{box(1000, 1000, 1004, 1008), {}}};
  const RingList list(feature);
  const std::vector<Side> sides = sidesOf(list, Frame(list.rings()));
  ASSERT_EQ(sides.size(), 4U);
  EXPECT_EQ(sides[1].along, Point(0.5, 0.0));
  EXPECT_EQ(sides[1].a, Point(-0.25, -0.5));
}

TEST(SideTreeTest, ItsBoundsAreTheBoxOfAllSides) {
  const std::vector<Side> sides =
      features::sidesOf({box(0, 1, 2, 3), box(-5, 2, -4, 9), {{7, -3}, {7, -2}}});
  const SideTree tree(sides);
  const cntr::plane::Box& bounds = tree.bounds();
  EXPECT_EQ(bounds.minX, -5);
  EXPECT_EQ(bounds.minY, -3);
  EXPECT_EQ(bounds.maxX, 7);
  EXPECT_EQ(bounds.maxY, 9);
}

TEST(SideTreeTest, FindsTheNearestSideWhateverTheGuess) {
  for (std::uint64_t seed = 0; seed < 100; ++seed) {
    const std::vector<Side> sides = gridSides(seed);
    const SideTree tree(sides);
    shapes::Random random(seed + 1000);
    for (int query = 0; query < 20; ++query) {
      const Point p(random.uniform(-3.0, 11.0), random.uniform(-3.0, 11.0));
      double least = infinity;
      for (const Side& side : sides) least = std::min(least, side.offsetTo(p).len());
      const SideTree::Nearest nearest = tree.nearest(p, random.below(sides.size()));
      const std::string what = "seed " + std::to_string(seed);
      EXPECT_NEAR(nearest.distance, least, 1e-15 * 16) << what;
      EXPECT_EQ(nearest.offset, sides[nearest.side].offsetTo(p)) << what;
      EXPECT_NEAR(nearest.distance, nearest.offset.len(), 1e-15 * 16) << what;
    }
  }
}

TEST(SideTreeTest, PointsOnTheGridLieOnTheSideOfTheirRightNeighbour) {
  for (std::uint64_t seed = 0; seed < 100; ++seed) {
    const std::vector<Side> sides = gridSides(seed);
    const SideTree tree(sides);
    for (int x = -1; x <= 8; ++x) {
      for (int y = -1; y <= 8; ++y) {
        const Point p(x, y);
        EXPECT_EQ(tree.isInside(p), isInsideByDefinition(sides, moved(p)))
            << "seed " << seed << ", " << x << " " << y;
      }
    }
  }
}

TEST(SideTreeTest, APointKnownLeadsToEveryOther) {
  for (std::uint64_t seed = 0; seed < 50; ++seed) {
    const std::vector<Side> sides = gridSides(seed);
    const SideTree tree(sides);
    shapes::Random random(seed + 2000);
    const auto anyPoint = [&] {
      return Point(static_cast<double>(random.below(10)) - 1.0,
                   static_cast<double>(random.below(10)) - 1.0);
    };
    Point from = anyPoint();
    bool fromIsInside = tree.isInside(from);
    for (int step = 0; step < 100; ++step) {
      const Point to = random.chance(0.3)   ? Point(from.x(), anyPoint().y())
                       : random.chance(0.3) ? Point(anyPoint().x(), from.y())
                                            : anyPoint();
      const bool toIsInside = tree.isInside(to, from, fromIsInside);
      EXPECT_EQ(toIsInside, isInsideByDefinition(sides, moved(to)))
          << "seed " << seed << ", from " << from.x() << " " << from.y() << " to " << to.x() << " "
          << to.y();
      from = to;
      fromIsInside = toIsInside;
    }
  }
}

TEST(SideTreeTest, ManySidesInARowAreFoundLikeFew) {
  const std::vector<Side> sides = features::sidesOf({shapes::regularPolygon(20000, 1.0, {0, 0})});
  const SideTree tree(sides);
  for (const double angle : {0.1, 1.0, 2.5, 4.0}) {
    const Point direction(std::cos(angle), std::sin(angle));
    EXPECT_TRUE(tree.isInside(direction * 0.999));
    EXPECT_FALSE(tree.isInside(direction * 1.001));
    EXPECT_NEAR(tree.nearest(direction * 0.5, 0).distance, 0.5, 1e-7);
    EXPECT_NEAR(tree.nearest(direction * 2.0, 19999).distance, 1.0, 1e-7);
  }
}

}  // namespace
