// SPDX-License-Identifier: MIT
//
// Boxes of bare doubles.

#include <cntr/plane/box.h>

#include <cmath>

#include <gtest/gtest.h>
#include <testing/shapes/numbers.h>
#include <tests/cntr/next_doubles.h>

namespace {

using cntr::plane::Box;
using cntr::plane::contains;
using cntr::plane::edgeBox;
using cntr::plane::largestCoordinate;
using cntr::plane::overlaps;

void expectBox(const Box& box, double minX, double minY, double maxX, double maxY) {
  EXPECT_EQ(box.minX, minX);
  EXPECT_EQ(box.minY, minY);
  EXPECT_EQ(box.maxX, maxX);
  EXPECT_EQ(box.maxY, maxY);
}

TEST(BoxTest, IsEmptyAtFirst) {
  EXPECT_FALSE(overlaps(Box(), {-1, -1, 1, 1}));
  EXPECT_FALSE(overlaps({-1, -1, 1, 1}, Box()));
  EXPECT_FALSE(overlaps(Box(), Box()));
}

TEST(BoxTest, GrowsToHoldPoints) {
  Box box;
  box.add(qcVector<2>(3, -2));
  expectBox(box, 3, -2, 3, -2);
  box.add(qcVector<2>(1, 5));
  expectBox(box, 1, -2, 3, 5);
  box.add(qcVector<2>(2, 0));
  expectBox(box, 1, -2, 3, 5);
}

TEST(BoxTest, GrowsToHoldBoxes) {
  Box box;
  box.add(Box{0, 1, 2, 3});
  expectBox(box, 0, 1, 2, 3);
  box.add(Box{-5, 2, 1, 9});
  expectBox(box, -5, 1, 2, 9);
  box.add(Box());
  expectBox(box, -5, 1, 2, 9);
}

TEST(BoxTest, PassesOverNumbersThatAreNone) {
  Box box;
  box.add(qcVector<2>(notANumber, 1));
  box.add(qcVector<2>(2, notANumber));
  expectBox(box, 2, 1, 2, 1);
  box.add(qcVector<2>(infinity, 0));
  expectBox(box, 2, 0, infinity, 1);
}

TEST(BoxTest, OfAnEdgeSpansItsEnds) {
  expectBox(edgeBox({3, 1}, {2, 5}), 2, 1, 3, 5);
  expectBox(edgeBox({2, 5}, {3, 1}), 2, 1, 3, 5);
}

TEST(BoxTest, OfAnEdgeKeepsAFirstCoordinateThatIsNotANumberAndPassesOverASecond) {
  expectBox(edgeBox({3, 1}, {notANumber, 5}), 3, 1, 3, 5);
  const Box box = edgeBox({notANumber, 1}, {3, 5});
  EXPECT_TRUE(std::isnan(box.minX));
  EXPECT_TRUE(std::isnan(box.maxX));
  EXPECT_EQ(box.minY, 1);
  EXPECT_EQ(box.maxY, 5);
}

TEST(BoxTest, OverlapsWhatTouchesIt) {
  const Box box{0, 0, 2, 2};
  EXPECT_TRUE(overlaps(box, {2, 0, 3, 2}));
  EXPECT_TRUE(overlaps(box, {-1, 0, 0, 2}));
  EXPECT_TRUE(overlaps(box, {0, 2, 2, 3}));
  EXPECT_TRUE(overlaps(box, {0, -1, 2, 0}));
  EXPECT_TRUE(overlaps(box, {2, 2, 2, 2}));
  EXPECT_TRUE(overlaps(box, {0.5, 0.5, 1, 1}));
  EXPECT_TRUE(overlaps(box, {-9, -9, 9, 9}));
}

TEST(BoxTest, DoesNotOverlapWhatLiesBesideIt) {
  const Box box{0, 0, 2, 2};
  EXPECT_FALSE(overlaps(box, {justAbove(2), 0, 3, 2}));
  EXPECT_FALSE(overlaps(box, {-1, 0, justBelow(0), 2}));
  EXPECT_FALSE(overlaps(box, {0, justAbove(2), 2, 3}));
  EXPECT_FALSE(overlaps(box, {0, -1, 2, justBelow(0)}));
}

TEST(BoxTest, SharesNothingThroughAnUpperCornerThatIsNotANumber) {
  const Box other{0, 0, 1, 1};
  EXPECT_FALSE(overlaps({0, 0, notANumber, 1}, other));
  EXPECT_FALSE(overlaps({0, 0, 1, notANumber}, other));
  EXPECT_TRUE(overlaps({notANumber, 0, 1, 1}, other));
  EXPECT_TRUE(overlaps({0, notANumber, 1, 1}, other));
}

TEST(BoxTest, ContainsItsBoundary) {
  const Box box{0, 0, 2, 4};
  for (const auto& p : {qcVector<2>(1, 1), {0, 1}, {2, 1}, {1, 0}, {1, 4}, {0, 0}, {2, 4}}) {
    EXPECT_TRUE(contains(box, p)) << p.x() << ' ' << p.y();
  }
  for (const auto& p :
       {qcVector<2>(justBelow(0), 1), {justAbove(2), 1}, {1, justBelow(0)}, {1, justAbove(4)}}) {
    EXPECT_FALSE(contains(box, p)) << p.x() << ' ' << p.y();
  }
  EXPECT_FALSE(contains(Box(), {0, 0}));
}

TEST(BoxTest, ContainsNoNaN) {
  EXPECT_FALSE(contains({0, 0, 2, 4}, {notANumber, 1}));
  EXPECT_FALSE(contains({0, 0, 2, 4}, {1, notANumber}));
  EXPECT_FALSE(contains({notANumber, 0, 2, 4}, {1, 1}));
  EXPECT_FALSE(contains({0, notANumber, 2, 4}, {1, 1}));
  EXPECT_FALSE(contains({0, 0, notANumber, 4}, {1, 1}));
  EXPECT_FALSE(contains({0, 0, 2, notANumber}, {1, 1}));
}

TEST(BoxTest, TellsTheSquaredDistanceOfAPoint) {
  const Box box{0, 0, 2, 4};
  EXPECT_EQ(squaredDistance(box, {1, 1}), 0);
  EXPECT_EQ(squaredDistance(box, {2, 4}), 0);
  EXPECT_EQ(squaredDistance(box, {5, 1}), 9);
  EXPECT_EQ(squaredDistance(box, {-3, 1}), 9);
  EXPECT_EQ(squaredDistance(box, {1, 7}), 9);
  EXPECT_EQ(squaredDistance(box, {1, -3}), 9);
  EXPECT_EQ(squaredDistance(box, {5, 8}), 25);
  EXPECT_EQ(squaredDistance(Box(), {5, 8}), infinity);
}

TEST(BoxTest, TellsTheLargestSizeOfACoordinate) {
  const Box box{-3, -5, 2, 4};
  EXPECT_EQ(largestCoordinate(box, {0, 0}), 5);
  EXPECT_EQ(largestCoordinate(box, {-9, 0}), 9);
  EXPECT_EQ(largestCoordinate(box, {0, 7}), 7);
  EXPECT_EQ(largestCoordinate({0, 0, 6, 1}, {0, 0}), 6);
  EXPECT_EQ(largestCoordinate({-8, 0, 6, 1}, {0, 0}), 8);
  EXPECT_EQ(largestCoordinate({0, 0, 1, 10}, {0, 0}), 10);
}

}  // namespace
