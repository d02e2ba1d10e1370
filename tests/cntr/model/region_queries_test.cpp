// SPDX-License-Identifier: MIT
//
// Points, segments and contours against the region's boundaries.

#include <cmath>

#include <cntr/region.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "region_fixtures.h"

namespace {

using namespace fixtures;
using testing::ElementsAre;
using testing::IsEmpty;

/// The square from 0 to 10 with a hole from 2 to 8 that has a hole from 4 to 6.
qcRegion island() {
  return regionWith(square(0, 0, 10), {handle(square(2, 2, 6), {handle(square(4, 4, 2))})});
}

TEST(RegionInsideTest, PointsInTheSquareAreInside) {
  const qcRegion region(square(0, 0, 10), keep);
  for (const bool holes : {false, true}) {
    EXPECT_TRUE(region.inside({5, 5}, holes));
    EXPECT_TRUE(region.inside({0.1, 9.9}, holes));
    EXPECT_FALSE(region.inside({10.1, 5}, holes));
    EXPECT_FALSE(region.inside({5, -1}, holes));
    EXPECT_FALSE(region.inside({1e300, 5}, holes));
  }
}

TEST(RegionInsideTest, TheOrientationPlaysNoPart) {
  const qcRegion region({{0, 0}, {0, 10}, {10, 10}, {10, 0}}, keep);
  EXPECT_TRUE(region.inside({3, 4}, true));
  EXPECT_FALSE(region.inside({11, 4}, true));
}

TEST(RegionInsideTest, ANotchIsOutside) {
  const qcRegion region({{0, 0}, {10, 0}, {10, 10}, {5, 2}, {0, 10}}, keep);
  EXPECT_FALSE(region.inside({5, 8}, false));
  EXPECT_TRUE(region.inside({5, 1}, false));
  EXPECT_TRUE(region.inside({1, 6}, false));
  EXPECT_TRUE(region.inside({9, 6}, false));
}

TEST(RegionInsideTest, WhereTwoLobesOverlapIsOutside) {
  // Two turns of one outline round the middle.
  const qcRegion region({{0, 0}, {10, 0}, {10, 10}, {0, 10}, {1, 1}, {9, 1}, {9, 9}, {1, 9}}, keep);
  EXPECT_FALSE(region.inside({5.5, 5}, false));
}

TEST(RegionInsideTest, APointInAHoleIsOutsideWhenHolesCount) {
  const qcRegion region = squareWithHole();
  EXPECT_TRUE(region.inside({3, 3}, false));
  EXPECT_FALSE(region.inside({3, 3}, true));
  EXPECT_TRUE(region.inside({5, 5}, true));
}

TEST(RegionInsideTest, AnyHoleCounts) {
  const qcRegion region =
      regionWith(square(0, 0, 10), {handle(square(1, 1, 2)), handle(square(6, 6, 2))});
  EXPECT_FALSE(region.inside({2, 2}, true));
  EXPECT_FALSE(region.inside({7, 7}, true));
  EXPECT_TRUE(region.inside({4.5, 4.5}, true));
}

TEST(RegionInsideTest, AHoleOfAHoleIsInsideAgain) {
  const qcRegion region = island();
  EXPECT_TRUE(region.inside({1, 5}, true));
  EXPECT_FALSE(region.inside({3, 5}, true));
  EXPECT_TRUE(region.inside({5, 5}, true));
  EXPECT_TRUE(region.inside({3, 5}, false));
}

TEST(RegionInsideTest, AHoleWithinManyIsDecidedOnceForAll) {
  // Each level has the one before it twice as a hole and then a hole that holds the point: looked
  // at every time, the innermost would be looked at 2^60 times.
  const auto around = [](double reach) { return square(5 - reach, 5 - reach, 2 * reach); };
  const Handle holding = handle(around(0.01));
  Handle level = handle(around(0.02), {holding});
  for (int depth = 0; depth < 60; ++depth) {
    level = handle(around(0.03 + 0.01 * depth), {level, level, holding});
  }
  EXPECT_TRUE(regionWith(square(0, 0, 10), {level}).inside({5, 5}, true));
}

TEST(RegionInsideTest, AHoleOutsideTheBoundaryChangesNothing) {
  const qcRegion region = regionWith(square(0, 0, 10), {handle(square(20, 20, 5))});
  EXPECT_FALSE(region.inside({22, 22}, true));
  EXPECT_TRUE(region.inside({5, 5}, true));
}

TEST(RegionInsideTest, AVertexIsInsideAndSoIsWhatIsWithinAMillionthOfIt) {
  const qcRegion region(square(0, 0, 10), keep);
  for (const qcVector<2>& vertex : region.points()) EXPECT_TRUE(region.inside(vertex, false));
  EXPECT_TRUE(region.inside({0, 5e-7}, false));
  EXPECT_TRUE(region.inside({5e-7, 0}, false));
}

TEST(RegionInsideTest, OutsideTheBoundingBoxNoVertexCounts) {
  const qcRegion region(square(0, 0, 10), keep);
  EXPECT_FALSE(region.inside({-1e-9, 0}, false));
  EXPECT_FALSE(region.inside({0, -1e-9}, false));
}

TEST(RegionInsideTest, TheTipOfASpikeThatEnclosesNothingIsInside) {
  const qcRegion region({{0, 0}, {10, 0}, {10, 10}, {5, 10}, {5, 20}, {5, 10}, {0, 10}}, keep);
  EXPECT_TRUE(region.inside({5, 20}, false));
  EXPECT_TRUE(region.inside({5, 20 - 5e-7}, false));
  EXPECT_FALSE(region.inside({4, 19}, false));
}

TEST(RegionInsideTest, AVertexOfAHoleIsInTheHole) {
  const qcRegion region = squareWithHole();
  EXPECT_FALSE(region.inside({2, 2}, true));
  EXPECT_FALSE(region.inside({4, 4 - 5e-7}, true));
  EXPECT_TRUE(region.inside({2, 2}, false));
}

TEST(RegionInsideTest, NearACornerOfTheBoxTheRayCanFallShortOfTheFarSide) {
  // Three quarters of a diamond round the first vertex, which is 10 from the others: the ray is 20
  // long. From the corner (10, 10) it enters through the near side, 7.2 away; the far side is 21.5
  // away.
  const Points diamond = {{0, 0},  {5, 0},  {7, 0},  {10, 0},  {0, 10}, {-2, 8},
                          {-4, 6}, {-6, 4}, {-8, 2}, {-10, 0}, {0, -10}};
  EXPECT_TRUE(qcRegion(diamond, keep).inside({10, 10}, false));
  // If its list begins at its end, the same outline has a ray of twice the length.
  Points fromItsEnd(diamond.begin() + 3, diamond.end());
  fromItsEnd.insert(fromItsEnd.end(), diamond.begin(), diamond.begin() + 3);
  EXPECT_FALSE(qcRegion(fromItsEnd, keep).inside({10, 10}, false));
}

TEST(RegionInsideTest, TheRayStillFallsShortAfterManyQuestions) {
  // A disc whose first vertex is its middle, seen from close to its left: the widest view is
  // that of the long edge opposite, a little more than the ray's length away.
  Points disc = {{0, 0}};
  for (int degrees = 180; degrees < 540; degrees += 3) {
    if (degrees > 367 && degrees < 383) continue;
    disc.push_back(qcVector<2>(1.0, qcDegree(degrees)));
  }
  const qcRegion region(disc, keep);
  const qcVector<2> p(1.02, qcDegree(195));
  const bool first = region.inside(p, false);
  EXPECT_TRUE(first) << "the far side is out of reach";
  for (int i = 0; i < 100; ++i) ASSERT_EQ(region.inside(p, false), first) << i;
  EXPECT_FALSE(region.inside(qcVector<2>(1.02, qcDegree(135)), false));
}

TEST(RegionInsideTest, NoNumberIsOutside) {
  const qcRegion region(square(0, 0, 10), keep);
  EXPECT_FALSE(region.inside({std::nan(""), 5}, true));
  EXPECT_FALSE(region.inside({5, HUGE_VAL}, true));
}

TEST(RegionInsideTest, NeedsTwoVertices) {
  EXPECT_EQ(emptyContourOf([] { qcRegion().inside({0, 0}, false); }), L"");
  EXPECT_EQ(emptyContourOf([] { qcRegion(Points{{1, 1}}, keep).inside({1, 1}, false); }), L"");
  const qcRegion region(Points{{0, 0}, {4, 0}}, keep);
  EXPECT_TRUE(region.inside({4, 0}, false));
  EXPECT_FALSE(region.inside({2, 1}, false));
}

TEST(RegionInsideTest, ANullHoleIsMetByPointsInTheBoundaryAlone) {
  const qcRegion region = regionWithNullHole();
  EXPECT_THROW(region.inside({5, 5}, true), qcBadPointer);
  EXPECT_FALSE(region.inside({50, 50}, true));
  EXPECT_TRUE(region.inside({5, 5}, false));
}

TEST(RegionInsideTest, AHoleOfOneVertexThrows) {
  const qcRegion region = regionWith(square(0, 0, 10), {handle({{5, 5}})});
  EXPECT_EQ(emptyContourOf([&] { region.inside({3, 3}, true); }), L"");
}

TEST(RegionInsideTest, APointInAnEarlierHoleIsDecidedWithoutTheLaterOnes) {
  const qcRegion region = regionWith(square(0, 0, 10), {handle(square(2, 2, 2)), handle({{5, 5}})});
  EXPECT_FALSE(region.inside({3, 3}, true));
}

TEST(RegionInsideTest, AnswersFollowTheBoundary) {
  qcRegion region(square(0, 0, 10), keep);
  EXPECT_TRUE(region.inside({9, 9}, false));
  region.points(square(0, 0, 5));
  EXPECT_FALSE(region.inside({9, 9}, false));
}

TEST(RegionDistanceTest, ZeroInsideWhenAskedFor) {
  const qcRegion region = squareWithHole();
  EXPECT_EQ(region.distToPoint({1, 1}, false, true, true), 0.0);
  EXPECT_EQ(region.distToPoint({1, 1}, true, true, true), 0.0);
  EXPECT_EQ(region.distToPoint({1, 1}, false, true, false), 1.0);
}

TEST(RegionDistanceTest, InAHoleItIsTheDistanceToTheBoundary) {
  const qcRegion region = squareWithHole();
  EXPECT_EQ(region.distToPoint({2.5, 3}, false, true, true), 0.5);
  EXPECT_EQ(region.distToPoint({2.5, 3}, false, false, true), 0.0);
}

TEST(RegionDistanceTest, OutsideItIsTheDistanceToTheBoundary) {
  const qcRegion region = squareWithHole();
  EXPECT_EQ(region.distToPoint({13, 14}, false, true, true), 5.0);
  EXPECT_EQ(region.distToPoint({13, 14}, true, false, true), 5.0);
  EXPECT_EQ(region.distToPoint({13, 5}, true, false, false), std::sqrt(34.0));
}

TEST(RegionDistanceTest, HolesAreSearchedWhateverTheFlagUnlessForVertices) {
  const qcRegion region = squareWithHole();
  EXPECT_EQ(region.distToPoint({2.5, 3}, false, false, false), 0.5);
  EXPECT_EQ(region.distToPoint({2, 2}, true, false, false), std::sqrt(8.0));
  EXPECT_EQ(region.distToPoint({2, 2}, true, true, false), 0.0);
}

TEST(RegionNearestTest, TheNearestBoundaryPointMayLieOnAHole) {
  const qcRegion region = squareWithHole();
  for (const bool considerHoles : {false, true}) {
    EXPECT_EQ(region.closestPoint({3, 2.25}, false, considerHoles), qcVector<2>(3, 2));
    EXPECT_EQ(region.closestPoint({3, 0.25}, false, considerHoles), qcVector<2>(3, 0));
  }
}

TEST(RegionNearestTest, TheContourFormSearchesTheOuterBoundaryAlone) {
  EXPECT_EQ(squareWithHole().closestPoint({3, 2.25}, false), qcVector<2>(3, 0));
}

TEST(RegionNearestTest, TheNearestVertexMayLieOnAHoleWhenHolesCount) {
  const qcRegion region = squareWithHole();
  EXPECT_EQ(region.closestPoint({3.9, 3.8}, true, true), qcVector<2>(4, 4));
  EXPECT_EQ(region.closestPoint({3.9, 3.8}, true, false), qcVector<2>(0, 0));
}

TEST(RegionNearestTest, TheOuterBoundaryWinsTies) {
  // Halfway between the boundary at x = 0 and the hole at x = 2.
  EXPECT_EQ(squareWithHole().closestPoint({1, 3}, false, true), qcVector<2>(0, 3));
  long hole = 5;
  EXPECT_EQ(squareWithHole().closestVertexIndex({1, 1}, true, hole), 0);
  EXPECT_EQ(hole, -1);
}

TEST(RegionNearestTest, EarlierHolesWinTies) {
  const qcRegion region =
      regionWith(square(0, 0, 100), {handle(square(40, 40, 5)), handle(square(55, 40, 5))});
  EXPECT_EQ(region.closestPoint({50, 42}, false, true), qcVector<2>(45, 42));
  long hole = -5;
  EXPECT_EQ(region.closestVertexIndex({50, 40}, true, hole), 1);
  EXPECT_EQ(hole, 0);
}

TEST(RegionNearestTest, LaterHolesWinWhenTheyAreNearer) {
  const qcRegion region =
      regionWith(square(0, 0, 100), {handle(square(40, 40, 5)), handle(square(55, 40, 5))});
  EXPECT_EQ(region.closestPoint({50.5, 42}, false, true), qcVector<2>(55, 42));
  long hole = -5;
  EXPECT_EQ(region.closestVertexIndex({50.5, 40}, true, hole), 0);
  EXPECT_EQ(hole, 1);
  EXPECT_EQ(region.closestPoint({50.5, 40.1}, true, true), qcVector<2>(55, 40));
}

TEST(RegionNearestTest, HolesOfHolesAreNotSearched) {
  EXPECT_EQ(island().closestPoint({5, 4.25}, false, true), qcVector<2>(5, 2));
  long hole = -1;
  EXPECT_EQ(island().closestVertexIndex({4, 4}, true, hole), 0);
  EXPECT_EQ(hole, 0);
}

TEST(RegionNearestTest, WithoutHolesTheHoleIndexIsMinusOne) {
  long hole = 5;
  EXPECT_EQ(qcRegion(square(0, 0, 10), keep).closestVertexIndex({9, 9}, true, hole), 2);
  EXPECT_EQ(hole, -1);
}

TEST(RegionNearestTest, WhenHolesDoNotCountTheHoleIndexIsMinusOne) {
  long hole = 5;
  EXPECT_EQ(squareWithHole().closestVertexIndex({4, 4}, false, hole), 0);
  EXPECT_EQ(hole, -1);
}

TEST(RegionNearestTest, ANullHoleIsMetWhereHolesAreSearched) {
  const qcRegion region = regionWithNullHole();
  long hole = 0;
  EXPECT_THROW(region.closestVertexIndex({3, 3}, true, hole), qcBadPointer);
  EXPECT_THROW(region.closestPoint({3, 3}, true, true), qcBadPointer);
  EXPECT_THROW(region.closestPoint({3, 3}, false, false), qcBadPointer);
  EXPECT_THROW(region.distToPoint({30, 3}, false, false, true), qcBadPointer);
  EXPECT_EQ(region.closestVertexIndex({3, 3}, false, hole), 0);
  EXPECT_EQ(region.closestPoint({3, 3}, true, false), qcVector<2>(0, 0));
}

TEST(RegionNearestTest, NeedsTwoVertices) {
  const qcRegion region(Points{{1, 1}}, keep);
  long hole = 0;
  EXPECT_EQ(emptyContourOf([&] { region.closestPoint({0, 0}, false, true); }), L"");
  EXPECT_EQ(emptyContourOf([&] { region.closestPoint({0, 0}, true, true); }), L"");
  EXPECT_EQ(emptyContourOf([&] { region.closestVertexIndex({0, 0}, true, hole); }), L"");
  EXPECT_EQ(emptyContourOf([&] { region.distToPoint({0, 0}, false, false, false); }), L"");
}

TEST(RegionIntersectionsTest, HolesComeAfterTheBoundaryAndAreNotSorted) {
  const qcRegion region =
      regionWith(square(0, 0, 10), {handle(square(6, 2, 2)), handle(square(2, 2, 2))});
  const qcLineSeg across({-1, 3}, {11, 3});
  EXPECT_THAT(region.intersections(across, true, true),
              ElementsAre(qcVector<2>(0, 3), qcVector<2>(10, 3), qcVector<2>(6, 3),
                          qcVector<2>(8, 3), qcVector<2>(2, 3), qcVector<2>(4, 3)));
  EXPECT_THAT(region.intersections(across, true, false),
              ElementsAre(qcVector<2>(0, 3), qcVector<2>(10, 3)));
}

TEST(RegionIntersectionsTest, EveryBoundaryIsSortedAlongTheSegment) {
  const qcLineSeg backwards({11, 3}, {-1, 3});
  EXPECT_THAT(
      squareWithHole().intersections(backwards, true, true),
      ElementsAre(qcVector<2>(10, 3), qcVector<2>(0, 3), qcVector<2>(4, 3), qcVector<2>(2, 3)));
}

TEST(RegionIntersectionsTest, HolesOfHolesAreNotCrossed) {
  EXPECT_EQ(island().intersections(qcLineSeg({-1, 5}, {11, 5}), true, true).size(), 4U);
}

TEST(RegionIntersectionsTest, TheFlagForEndTouchesHoldsForHolesToo) {
  const qcLineSeg betweenHoleAndBoundary({0, 3}, {2, 3});
  EXPECT_EQ(squareWithHole().intersections(betweenHoleAndBoundary, true, true).size(), 2U);
  EXPECT_THAT(squareWithHole().intersections(betweenHoleAndBoundary, false, true), IsEmpty());
}

TEST(RegionIntersectionsTest, AContourCrossesTheBoundaryThenTheHoles) {
  const qcContour line(Points{{3, -1}, {3, 11}}, false, 0);
  EXPECT_THAT(
      squareWithHole().intersections(line, true),
      ElementsAre(qcVector<2>(3, 0), qcVector<2>(3, 10), qcVector<2>(3, 2), qcVector<2>(3, 4)));
  EXPECT_EQ(squareWithHole().intersections(line, false).size(), 2U);
}

TEST(RegionIntersectionsTest, TheOtherShapesHolesAreNotCrossed) {
  const qcRegion other = regionWith(square(100, 100, 50), {handle(square(3, 3, 20))});
  EXPECT_THAT(squareWithHole().intersections(other, true), IsEmpty());
}

TEST(RegionIntersectionsTest, AnEdgeThroughAVertexIsReportedForBothEdges) {
  const qcLineSeg diagonal({-1, -1}, {1, 1});
  EXPECT_EQ(qcRegion(square(0, 0, 10), keep).intersections(diagonal, true, true).size(), 2U);
}

TEST(RegionIntersectionsTest, ANullHoleIsMetWhenHolesCount) {
  const qcRegion region = regionWithNullHole();
  const qcLineSeg across({-1, 3}, {11, 3});
  EXPECT_THROW(region.intersections(across, true, true), qcBadPointer);
  EXPECT_THROW(region.intersections(qcContour(square(5, 5, 20), true, 0), true), qcBadPointer);
  EXPECT_EQ(region.intersections(across, true, false).size(), 2U);
}

TEST(RegionIntersectionsTest, NeedsTwoVertices) {
  const qcRegion region(Points{{1, 1}}, keep);
  EXPECT_EQ(emptyContourOf([&] { region.intersections(qcLineSeg(), true, true); }), L"");
  EXPECT_EQ(emptyContourOf([&] { region.intersections(qcContour({}, true, 0), true); }), L"");
  const qcRegion withThinHole = regionWith(square(0, 0, 10), {handle({{5, 5}})});
  EXPECT_EQ(emptyContourOf([&] { withThinHole.intersections(qcLineSeg(), true, true); }), L"");
}

// Many points at once. That the answers equal those for single points is tested in
// region_properties_test.cpp.

const Points places = {{1, 1}, {3, 3}, {5, 5}, {12, 5}};

TEST(RegionManyPointsTest, AreAnsweredInTheirOrder) {
  const qcRegion region = island();
  bool inside[4] = {};
  region.inside(places, true, inside);
  EXPECT_THAT(inside, ElementsAre(true, false, true, false));
  region.inside(places, false, inside);
  EXPECT_THAT(inside, ElementsAre(true, true, true, false));
  qcVector<2> nearest[4];
  region.closestPoint(places, true, false, nearest);
  EXPECT_THAT(nearest, ElementsAre(qcVector<2>(0, 0), qcVector<2>(0, 0), qcVector<2>(0, 0),
                                   qcVector<2>(10, 0)));
  region.closestPoint(places, true, true, nearest);
  EXPECT_THAT(nearest, ElementsAre(qcVector<2>(0, 0), qcVector<2>(2, 2), qcVector<2>(2, 2),
                                   qcVector<2>(8, 2)));
  double distances[4] = {};
  region.distToPoint(places, false, true, true, distances);
  EXPECT_THAT(distances, ElementsAre(0.0, 1.0, 0.0, 2.0));
  region.distToPoint(places, false, true, false, distances);
  EXPECT_THAT(distances, ElementsAre(1.0, 1.0, 3.0, 2.0));
  region.qcContour::distToPoint(places, true, distances);
  EXPECT_DOUBLE_EQ(distances[0], std::sqrt(2.0));
}

TEST(RegionManyPointsTest, NeedAsManyAnswers) {
  const qcRegion region = island();
  const std::wstring expected = L"as many answers as points are needed";
  bool inside[3] = {};
  double distances[5] = {7, 7, 7, 7, 7};
  qcVector<2> nearest[3];
  EXPECT_EQ(badParamsOf([&] { region.inside(places, true, inside); }), expected);
  EXPECT_EQ(badParamsOf([&] { region.closestPoint(places, true, true, nearest); }), expected);
  EXPECT_EQ(badParamsOf([&] { region.distToPoint(places, true, true, false, distances); }),
            expected);
  EXPECT_EQ(badParamsOf([&] { region.qcContour::closestPoint(places, true, nearest); }), expected);
  EXPECT_EQ(badParamsOf([&] { region.qcContour::distToPoint(places, true, distances); }), expected);
  EXPECT_THAT(distances, ElementsAre(7, 7, 7, 7, 7));
}

TEST(RegionManyPointsTest, OfNoneNothingIsAsked) {
  const qcRegion empty;
  empty.inside({}, true, {});
  empty.closestPoint({}, true, true, {});
  empty.distToPoint({}, true, true, true, {});
  empty.qcContour::closestPoint({}, true, {});
  empty.qcContour::distToPoint({}, true, {});
  bool inside[4] = {};
  EXPECT_THROW(empty.inside(places, true, inside), qcContourDefs::EmptyContour);
  qcVector<2> nearest[4];
  EXPECT_THROW(empty.closestPoint(places, true, true, nearest), qcContourDefs::EmptyContour);
}

}  // namespace
