// SPDX-License-Identifier: MIT
//
// Two boundaries that cross, joined into one.

#include <cntr/compute/repair.h>

#include <gmock/gmock.h>
#include <testing/plain/repair.h>
#include <testing/twin/repetitions.h>
#include <testing/twin/same.h>
#include <tests/cntr/figures.h>

#include "subject.h"

namespace {

using figures::square;
using subject::forEachShape;
using subject::Point;
using subject::Points;
using subject::Subject;
using testing::ElementsAre;

/// The answer of the scan, empty if the two do not cross; it must be that of the index as well.
Points spliced(const Subject& mine, const Subject& other) {
  const auto scanned = cntr::compute::splice(mine.path(), other.scanned());
  const auto indexed = cntr::compute::splice(mine.path(), other.indexed());
  EXPECT_EQ(indexed.has_value(), scanned.has_value());
  if (scanned && indexed) {
    EXPECT_TRUE(same::same(*indexed, *scanned));
  }
  return scanned.value_or(Points());
}

Points spliced(const Points& mine, const Points& other) {
  return spliced(Subject(mine, true), Subject(other, true));
}

TEST(SpliceTest, RunsRoundTheOneAndThenRoundTheOtherFromTheirFirstCrossing) {
  // Edge 2 of the square, from (4, 0) to (4, 4), meets edge 3 of the other one, its upper side.
  EXPECT_THAT(spliced(square(4), {{2, -2}, {6, -2}, {6, 2}, {2, 2}}),
              ElementsAre(Point(2, 0), Point(4, 0), Point(4, 4), Point(0, 4), Point(0, 0),
                          Point(2, 0), Point(2, -2), Point(6, -2), Point(6, 2), Point(2, 2)));
}

TEST(SpliceTest, TakesTheFirstOfSeveralCrossingsAlongTheEdge) {
  const Points bar = {{-1, 1}, {5, 1}, {5, 2}, {-1, 2}};
  const Points joined = spliced(square(4), bar);
  ASSERT_FALSE(joined.empty());
  EXPECT_EQ(joined.front(), Point(0, 2)) << "the closing edge runs down from (0, 4)";
}

TEST(SpliceTest, IsNothingForBoundariesThatDoNotCross) {
  EXPECT_TRUE(spliced(square(4), {{1, 1}, {3, 1}, {3, 3}}).empty());
  EXPECT_TRUE(spliced(square(4), {{9, 9}, {10, 9}, {10, 10}}).empty());
  EXPECT_TRUE(spliced(Points{{1, 1}}, square(4)).empty());
  EXPECT_TRUE(spliced(Points{{notANumber, 1}, {1, notANumber}}, square(4)).empty());
}

TEST(SpliceTest, TouchesCount) {
  EXPECT_EQ(spliced(square(4), {{4, 2}, {8, 0}, {8, 4}}).size(), 9U);
}

TEST(SpliceTest, AnEdgeWithoutLengthContributesTheOrigin) {
  const Points joined = spliced({{1, 1}, {1, 1}, {5, 1}, {5, 5}}, {{3, 0}, {4, 0}, {4, 2}, {3, 2}});
  EXPECT_THAT(joined, testing::Contains(Point(0, 0)).Times(1));
}

TEST(SpliceTest, DoesNotStartAtAnEdgeWithoutLength) {
  // The closing edge is 8e-16 long and would cross the lower side of the other one.
  const Points mine = {{0, 4e-16}, {5, 5}, {0, -4e-16}};
  const Points other = {{-1, 0}, {1, 0}, {0.5, -9}};
  const Points joined = spliced(mine, other);
  EXPECT_TRUE(same::same(joined, plain::splice({mine, {}}, {other, {}}).points));
  ASSERT_EQ(joined.size(), 8U);
  EXPECT_EQ(joined[1], Point(0, -4e-16)) << "edge 2 is the first";
}

TEST(SpliceTest, IsThatOfThePlainDefinition) {
  forEachShape(repetitions(600), shapes::any, 2, 60, [](const Subject& s, shapes::Random& random) {
    const shapes::Shape other = shapes::any(random.next(), 60);
    if (other.points.size() < 2) return;
    const Subject mine(s.points(), true);
    const Subject second(other.points, true);
    const auto expected = same::outcome([&] {
      return plain::splice({s.points(), {}}, {other.points, {}}).points;
    });
    const Points* const joined = std::get_if<Points>(&expected);
    EXPECT_TRUE(same::same(spliced(mine, second), joined == nullptr ? Points() : *joined));
  });
}

}  // namespace
