// SPDX-License-Identifier: MIT
//
// The boundary that others are joined to, compared with splice() of lists of vertices.

#include <cntr/compute/growingboundary.h>

#include <cntr/compute/repair.h>
#include <gtest/gtest.h>
#include <testing/twin/repetitions.h>
#include <testing/twin/same.h>
#include <tests/cntr/figures.h>

#include "many_boundaries.h"

namespace {

using cntr::compute::GrowingBoundary;
using figures::rectangle;
using subject::Point;
using subject::Points;
using subject::Subject;

/// Tests and joins one after the other, and compares with lists. Returns the number of joints.
std::size_t expectSpliced(const std::vector<Points>& parts) {
  Points expected = parts.front();
  GrowingBoundary grown({expected, true});
  std::size_t joints = 0;
  for (std::size_t k = 1; k < parts.size() && !testing::Test::HasFailure(); ++k) {
    SCOPED_TRACE(k);
    const Subject mine(expected, true);
    const Subject other(parts[k], true);
    EXPECT_EQ(grown.isCrossedBy(other.scanned()),
              cntr::compute::crosses(mine.scanned(), other.scanned()));
    EXPECT_EQ(grown.isCrossedBy(other.indexed()), grown.isCrossedBy(other.scanned()));
    const auto joined = cntr::compute::splice(mine.path(), other.scanned());
    EXPECT_EQ(grown.join(other.indexed()).has_value(), joined.has_value());
    if (joined) {
      expected = *joined;
      ++joints;
    }
    EXPECT_TRUE(same::same(grown.points(), expected));
  }
  return joints;
}

TEST(GrowingBoundaryTest, StartsWithTheVerticesOfTheFirst) {
  const Points points = rectangle(1, 2, 3, 4);
  EXPECT_EQ(GrowingBoundary({points, true}).points(), points);
  const Points one = {{1, 2}};
  EXPECT_EQ(GrowingBoundary({one, true}).points(), one);
}

TEST(GrowingBoundaryTest, RunsRoundEachOneThatIsJoined) {
  EXPECT_EQ(expectSpliced({rectangle(0, 0, 4, 4), rectangle(2, -2, 4, 4), rectangle(-2, 1, 3, 1),
                           rectangle(5, -3, 9, 2)}),
            3U);
}

TEST(GrowingBoundaryTest, StaysAsItIsWhenNothingCrosses) {
  EXPECT_EQ(expectSpliced({rectangle(0, 0, 4, 4), rectangle(1, 1, 2, 2), rectangle(9, 9, 1, 1)}),
            0U);
}

TEST(GrowingBoundaryTest, SendsEdgesWithoutLengthToTheOriginWithTheNextJoint) {
  // Tiles that meet at their corners leave such edges at every joint.
  std::vector<Points> tiles;
  for (int k = 0; k < 12; ++k) tiles.push_back(rectangle(3 + k, 5, 1, 1));
  EXPECT_EQ(expectSpliced(tiles), 11U);
  tiles.insert(tiles.begin() + 3, {{4, 5}, {4, 5}, {4, 5}, {7, 7}});
  EXPECT_EQ(expectSpliced(tiles), 12U);
  tiles.insert(tiles.begin(), {{4, 4}, {6, 6}, {6, 6}, {4, 6}});
  EXPECT_EQ(expectSpliced(tiles), 13U);
  // Negative zero has different bits.
  EXPECT_EQ(expectSpliced({{{-0.0, 0.0}, {-0.0, 0.0}, {2, 0}, {2, 2}},
                           rectangle(1, -1, 5, 1.5),
                           rectangle(5, -2, 3, 3)}),
            2U);
}

TEST(GrowingBoundaryTest, IsNotJoinedAtAnEdgeWithoutLengthThatWouldCross) {
  // The second edge meets the rectangle in the origin, but its length of 5e-16 counts as none; the
  // third one begins there.
  EXPECT_EQ(expectSpliced({{{0, 0}, {0, 5e-16}, {0, 5}, {0.5, 5}, {0.5, 2}, {0.5, 0}},
                           rectangle(-1, -2, 2, 2)}),
            1U);
}

TEST(GrowingBoundaryTest, GivesWhatIsNewToTheSearchAndNoPartOfAnEdgeAgain) {
  const Points bar = rectangle(0, 0, 1000, 1);
  GrowingBoundary grown({bar, true});
  for (int k = 0; k < 50; ++k) {
    const Points tooth = rectangle(10.0 * k + 5, -1, 2, 1.5);
    const Subject other(tooth, true);
    const auto toSearch = grown.join(other.scanned());
    ASSERT_TRUE(toSearch);
    // All four edges of the tooth are new, one of them in two parts.
    EXPECT_GE(toSearch->size(), 5U);
    for (const auto& box : *toSearch) EXPECT_LT(box.maxX - box.minX, 3.0) << "no part of the bar";
  }
}

TEST(GrowingBoundaryTest, IsSpliceForAnyBoundaries) {
  std::size_t joints = 0;
  for (std::uint64_t seed = 1; seed <= repetitions(600) && !HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    shapes::Random random(seed);
    joints += expectSpliced(boundaries::any(random, 30));
  }
  EXPECT_GT(joints, repetitions(600));
}

}  // namespace
