// SPDX-License-Identifier: MIT
//
// Circles, extremal vertices, enclosing rectangles and images of a contour. What is remembered is
// tested in contour_cache_test.cpp; the answers of thousands of shapes are compared with a second
// implementation in contour_properties_test.cpp.

#include <cmath>
#include <limits>

#include <cntr/region.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <testing/shapes/numbers.h>
#include <testing/twin/same.h>
#include <tests/cntr/figures.h>
#include <tests/cntr/next_doubles.h>
#include "contour_probe.h"

namespace {

using figures::square;
using testing::ElementsAre;

constexpr auto ofFarthestPair = qcContourDefs::eFarthestVertexPair;
constexpr auto fromFirst = qcContourDefs::eFromFirstVertex;

long extremalIndex(const Points& points, double angle) {
  return closedContour(points).extremalVertexIndex(qcRadian(angle));
}

TEST(ContourEncloseCircleTest, OfTheFarthestPairIsCentredBetweenThem) {
  const qcCircle circle = closedContour(square(2)).encloseCircle(ofFarthestPair);
  EXPECT_EQ(circle, qcCircle({1, 1}, std::sqrt(8.0) * 0.5));
}

TEST(ContourEncloseCircleTest, OfTheFarthestPairMayLeaveOtherVerticesOutside) {
  const Points triangle = {{0, 0}, {4, 0}, {2, 3}};
  const qcCircle circle = closedContour(triangle).encloseCircle(ofFarthestPair);
  EXPECT_EQ(circle, qcCircle({2, 0}, 2));
}

TEST(ContourEncloseCircleTest, OfTheFarthestPairIsOfTheFirstPairOnTies) {
  // From (0, 0) both others are 10 away, and nearer to each other.
  const Point apex(0, 0), right(10, 0), above(6, 8);
  const auto centre = [](const Points& points) {
    return closedContour(points).encloseCircle(ofFarthestPair).center();
  };
  EXPECT_EQ(centre({apex, right, above}), Point(5, 0));
  EXPECT_EQ(centre({apex, above, right}), Point(3, 4));
  EXPECT_EQ(centre({right, apex, above}), Point(5, 0));
  EXPECT_EQ(centre({above, right, apex}), Point(3, 4));
  EXPECT_EQ(centre({right, above, apex}), Point(5, 0));
}

TEST(ContourEncloseCircleTest, OfTheFarthestPairIsOfTheFirstPairAmongManyDiameters) {
  // All six diameters of this dodecagon of lattice points have the same length.
  const Points dodecagon = {{5, 0},  {4, 3},   {3, 4},   {0, 5},  {-3, 4}, {-4, 3},
                            {-5, 0}, {-4, -3}, {-3, -4}, {0, -5}, {3, -4}, {4, -3}};
  Points shifted;
  for (std::size_t i = 0; i < dodecagon.size(); ++i) {
    shifted.push_back(dodecagon[i] + Point(100, 0));
  }
  shifted.push_back({95, 0});
  EXPECT_EQ(closedContour(shifted).encloseCircle(ofFarthestPair), qcCircle({100, 0}, 5));
}

TEST(ContourEncloseCircleTest, FromTheFirstVertexReachesTheFarthest) {
  const qcCircle circle = closedContour(square(2)).encloseCircle(fromFirst);
  EXPECT_EQ(circle, qcCircle({0, 0}, std::sqrt(8.0)));
  EXPECT_EQ(openContour({{2, 0}, {0, 0}, {7, 0}}).encloseCircle(fromFirst), qcCircle({2, 0}, 5));
}

TEST(ContourEncloseCircleTest, IsTheSameOpenOrClosed) {
  for (const auto mode : {ofFarthestPair, fromFirst}) {
    EXPECT_EQ(openContour(square(2)).encloseCircle(mode),
              closedContour(square(2)).encloseCircle(mode));
  }
}

TEST(ContourEncloseCircleTest, OfTheFarthestPairIsDefaultWhenNoTwoVerticesDiffer) {
  EXPECT_EQ(closedContour({}).encloseCircle(ofFarthestPair), qcCircle());
  EXPECT_EQ(closedContour({{3, 4}}).encloseCircle(ofFarthestPair), qcCircle());
  EXPECT_EQ(closedContour(Points(6, {3, 4})).encloseCircle(ofFarthestPair), qcCircle());
}

TEST(ContourEncloseCircleTest, OfEqualVerticesNeverShowsAnEarlierShapesCircle) {
  ContourProbe contour = closedContour(square(2));
  ASSERT_GT(contour.encloseCircle(ofFarthestPair).radius(), 0);
  contour.points(Points(3, {3, 4}));
  EXPECT_EQ(contour.encloseCircle(ofFarthestPair), qcCircle());
}

TEST(ContourEncloseCircleTest, FromTheFirstVertexHasRadiusZeroWhenNoTwoVerticesDiffer) {
  EXPECT_EQ(closedContour({{3, 4}}).encloseCircle(fromFirst), qcCircle({3, 4}, 0));
  EXPECT_EQ(closedContour(Points(6, {3, 4})).encloseCircle(fromFirst), qcCircle({3, 4}, 0));
}

TEST(ContourEncloseCircleTest, FromTheFirstVertexThrowsEmptyContourWithoutVertices) {
  expectEmptyContour([] { closedContour({}).encloseCircle(fromFirst); });
  expectEmptyContour([] { openContour({}).diameter(fromFirst); });
}

TEST(ContourEncloseCircleTest, PassesOverVerticesThatAreNotNumbers) {
  const Points points = {{0, 0}, {notANumber, 1}, {6, 8}, {1, notANumber}};
  EXPECT_EQ(closedContour(points).encloseCircle(ofFarthestPair), qcCircle({3, 4}, 5));
  EXPECT_EQ(closedContour(points).encloseCircle(fromFirst), qcCircle({0, 0}, 10));
  EXPECT_EQ(closedContour({{notANumber, 0}, {1, notANumber}}).encloseCircle(ofFarthestPair),
            qcCircle());
}

TEST(ContourEncloseCircleTest, OfInfiniteVerticesIsInfinite) {
  const Points points = {{0, 0}, {1, 1}, {infinity, 0}};
  EXPECT_EQ(closedContour(points).encloseCircle(ofFarthestPair).radius(), infinity);
  EXPECT_EQ(closedContour(points).encloseCircle(fromFirst).radius(), infinity);
}

TEST(ContourEncloseCircleTest, RefusesAnyOtherMode) {
  for (const int mode : {2, -1, 1000000}) {
    const auto unknown = static_cast<qcContourDefs::DiameterMode>(mode);
    for (const Points& points : {square(2), Points()}) {
      const ContourProbe contour = closedContour(points);
      const std::wstring message = L"diameterMode is not one of the valid enums";
      expectBadParams(message, [&] { contour.encloseCircle(unknown); });
      expectBadParams(message, [&] { contour.diameter(unknown); });
    }
  }
}

TEST(ContourDiameterTest, IsTwiceTheRadius) {
  EXPECT_EQ(closedContour(square(2)).diameter(ofFarthestPair), std::sqrt(8.0));
  EXPECT_EQ(closedContour(square(2)).diameter(fromFirst), 2 * std::sqrt(8.0));
  EXPECT_EQ(closedContour({}).diameter(ofFarthestPair), 0.0);
}

TEST(ContourExtremalVertexTest, IsTheFarthestAlongAnAxisAndTheLowestOnTies) {
  EXPECT_EQ(extremalIndex(square(2), 0), 1);
  EXPECT_EQ(extremalIndex(square(2), pi / 2), 2);
  EXPECT_EQ(extremalIndex(square(2), pi), 0);
  EXPECT_EQ(extremalIndex(square(2), -pi / 2), 0);
  EXPECT_EQ(extremalIndex(square(2), 1.5 * pi), 0);
  EXPECT_EQ(extremalIndex(square(2), 2 * pi), 1);
}

TEST(ContourExtremalVertexTest, IsTheFarthestBetweenTheAxes) {
  EXPECT_EQ(extremalIndex(square(2), pi / 4), 2);
  EXPECT_EQ(extremalIndex(square(2), 0.75 * pi), 3);
  EXPECT_EQ(extremalIndex(square(2), -0.75 * pi), 0);
  EXPECT_EQ(extremalIndex(square(2), -pi / 4), 1);
  const qcVector<2> position = closedContour(square(2)).extremalVertexPosition(qcDegree(100));
  EXPECT_EQ(position, Point(0, 2));
}

TEST(ContourExtremalVertexTest, IsDecidedOnExactCoordinatesAlongAnAxis) {
  // By the rounded cosine of a right angle the second vertex would lie farther.
  EXPECT_EQ(extremalIndex({{0, 1}, {1e17, 1}}, pi / 2), 0);
  EXPECT_EQ(extremalIndex({{0, 1}, {-1e17, 1}}, -pi / 2), 0);
  EXPECT_EQ(extremalIndex({{0, -1}, {-1e17, -1}}, -pi / 2), 0);
  EXPECT_EQ(extremalIndex({{0, 0}, {0, 1e17}}, pi), 0);
  EXPECT_EQ(extremalIndex({{0, 0}, {0, -1e17}}, -pi), 0);
  EXPECT_EQ(extremalIndex({{0, 0}, {0, -1e17}}, 2 * pi), 0);
}

TEST(ContourExtremalVertexTest, IsAlongAnAxisWhenTheDirectionIsWithin1em15) {
  ASSERT_EQ(std::sin(1e-15), 1e-15);
  EXPECT_EQ(extremalIndex({{0, 0}, {0, 1e17}}, 1e-15), 0);
  EXPECT_EQ(extremalIndex({{0, 0}, {0, 1e17}}, justAbove(1e-15)), 1);
  EXPECT_EQ(extremalIndex({{0, 0}, {0, -1e17}}, -1e-15), 0);
  EXPECT_EQ(extremalIndex({{0, 0}, {0, -1e17}}, -justAbove(1e-15)), 1);
}

TEST(ContourExtremalVertexTest, IsMinusOneWithoutAVertexThatComparesGreater) {
  EXPECT_EQ(extremalIndex({{notANumber, 0}, {notANumber, 1}}, 0), -1);
  EXPECT_EQ(extremalIndex({{-infinity, 0}, {-infinity, 1}}, 0), -1);
  constexpr double largest = std::numeric_limits<double>::max();
  EXPECT_EQ(extremalIndex({{-largest, 0}, {-largest, 1}}, 0), -1);
  EXPECT_EQ(extremalIndex(square(2), notANumber), -1);
  EXPECT_EQ(extremalIndex(square(2), infinity), -1);
}

TEST(ContourExtremalVertexTest, PassesOverVerticesThatAreNotNumbers) {
  EXPECT_EQ(extremalIndex({{notANumber, 0}, {1, 1}, {2, notANumber}}, 0), 2);
  EXPECT_EQ(extremalIndex({{notANumber, 0}, {1, 1}, {2, notANumber}}, 1), 1);
  EXPECT_EQ(extremalIndex({{1, 0}, {infinity, 0}, {2, 0}}, 0), 1);
}

TEST(ContourExtremalVertexTest, HasNoPositionWhereItHasNoIndex) {
  expectBadParams(L"",
                  [] { closedContour(square(2)).extremalVertexPosition(qcRadian(notANumber)); });
  expectBadParams(L"", [] {
    closedContour({{notANumber, 0}, {notANumber, 1}}).extremalVertexPosition(qcRadian(0));
  });
}

TEST(ContourExtremalVertexTest, IsComputedAfreshFromNewVertices) {
  ContourProbe contour = closedContour(square(2));
  EXPECT_EQ(contour.extremalVertexIndex(qcRadian(0)), 1);
  contour.setPoints({{5, 0}, {1, 1}, {0, 1}});
  EXPECT_EQ(contour.extremalVertexIndex(qcRadian(0)), 0);
  contour.points({{5, 0}, {1, 1}, {9, 1}});
  EXPECT_EQ(contour.extremalVertexIndex(qcRadian(0)), 2);
}

TEST(ContourExtremalVertexTest, WithoutACurveThrowsEmptyContour) {
  for (const ContourProbe& contour : contoursWithoutCurve()) {
    expectEmptyContour([&] { contour.extremalVertexIndex(qcRadian(0)); });
    expectEmptyContour([&] { contour.extremalVertexPosition(qcRadian(0)); });
  }
}

qcRect rect(const Point& lower, const Point& upper) {
  return qcRect(qcPoint(lower), qcPoint(upper));
}

TEST(ContourEncloseRectTest, SpansTheVertices) {
  const Points triangle = {{1, 5}, {3, -2}, {-4, 0}};
  EXPECT_EQ(closedContour(triangle).encloseRect(qcXform<2>::I), rect({-4, -2}, {3, 5}));
  EXPECT_EQ(openContour({{1, 1}, {1, 1}}).encloseRect(qcXform<2>::I), rect({1, 1}, {1, 1}));
}

TEST(ContourEncloseRectTest, SpansTheMappedVertices) {
  // A quarter turn, twice the size, moved: (x, y) -> (10 - 2y, 2x).
  const qcXform<2> turn(qcMatrix<2>(0, -2, 2, 0), {10, 0});
  const Points triangle = {{1, 5}, {3, -2}, {-4, 0}};
  EXPECT_EQ(closedContour(triangle).encloseRect(turn), rect({0, -8}, {14, 6}));
}

TEST(ContourEncloseRectTest, UsesTheVerticesAsTheyAreWithin1em15OfTheIdentity) {
  const ContourProbe contour = openContour({{1, 1}, {2, 2}});
  const auto lowerX = [&](const qcXform<2>& xform) { return contour.encloseRect(xform).ul().x(); };
  EXPECT_EQ(lowerX({qcMatrix<2>(), {1e-15, 0}}), 1.0);
  EXPECT_EQ(lowerX({qcMatrix<2>(), {0, 1e-15}}), 1.0);
  EXPECT_NE(lowerX({qcMatrix<2>(), {justAbove(1e-15), 0}}), 1.0);
  EXPECT_EQ(lowerX({qcMatrix<2>(1, 1e-15, 0, 1), {0, 0}}), 1.0);
  EXPECT_NE(lowerX({qcMatrix<2>(1, justAbove(1e-15), 0, 1), {0, 0}}), 1.0);
}

TEST(ContourEncloseRectTest, KeepsAFirstCoordinateThatIsNotANumberAndPassesOverLaterOnes) {
  const qcRect later =
      openContour({{1, 2}, {notANumber, 5}, {3, notANumber}}).encloseRect(qcXform<2>::I);
  EXPECT_EQ(later, rect({1, 2}, {3, 5}));
  const qcRect first = openContour({{notANumber, 2}, {1, 5}}).encloseRect(qcXform<2>::I);
  EXPECT_TRUE(std::isnan(first.ul().x()));
  EXPECT_TRUE(std::isnan(first.lr().x()));
  EXPECT_EQ(first.ul().y(), 2);
  EXPECT_EQ(first.lr().y(), 5);
}

TEST(ContourEncloseRectTest, ReachesToInfinityWhereAVertexDoes) {
  const qcRect found = openContour({{1, 2}, {-infinity, 0}, {0, infinity}}).encloseRect({});
  EXPECT_EQ(found, rect({-infinity, 0}, {1, infinity}));
}

TEST(ContourEncloseRectTest, WithoutACurveThrowsEmptyContour) {
  for (const ContourProbe& contour : contoursWithoutCurve()) {
    expectEmptyContour([&] { contour.encloseRect(qcXform<2>::I); });
  }
}

/// (x, y) -> (2x + 1, 3y - 1).
const qcXform<2> stretch(qcMatrix<2>(2, 0, 0, 3), {1, -1});

TEST(ContourMapTest, MapsEveryVertexInOrder) {
  qcContour image({}, true, 0);
  openContour({{0, 0}, {1, 1}, {5, 2}}).map(stretch, image);
  EXPECT_THAT(image.points(), ElementsAre(Point(1, -1), Point(3, 2), Point(11, 5)));
}

TEST(ContourMapTest, KeepsClosednessAndLabelAndResetsTheCapacity) {
  for (const bool closed : {true, false}) {
    qcContour contour(square(2), closed, 42);
    contour.cachedVectorSize(9);
    qcContour image({{7, 7}}, !closed, 1);
    image.cachedVectorSize(5);
    contour.map(stretch, image);
    EXPECT_EQ(image.isClosed(), closed);
    EXPECT_EQ(image.label(), 42U);
    EXPECT_EQ(image.cachedVectorSize(), 3);
  }
}

TEST(ContourMapTest, ForgetsTheAnswersOfTheResult) {
  ContourProbe image = closedContour(square(2));
  ASSERT_EQ(image.length(), 8.0);
  ASSERT_EQ(image.extremalVertexIndex(qcRadian(0)), 1);
  closedContour({{9, 0}, {0, 0}, {0, 1}}).map(qcXform<2>::I, image);
  EXPECT_EQ(image.extremalVertexIndex(qcRadian(0)), 0);
  EXPECT_EQ(image.encloseRect(qcXform<2>::I), rect({0, 0}, {9, 1}));
  EXPECT_EQ(image.length(), 10 + std::sqrt(82.0));
}

TEST(ContourMapTest, MayBeWrittenToTheContourItself) {
  ContourProbe contour = closedContour(square(2));
  ASSERT_EQ(contour.length(), 8.0);
  contour.map(stretch, contour);
  EXPECT_THAT(contour.points(), ElementsAre(Point(1, -1), Point(5, -1), Point(5, 5), Point(1, 5)));
  EXPECT_EQ(contour.length(), 20.0);
}

TEST(ContourMapTest, IntoARegionKeepsItsHolesAndForgetsItsAnswers) {
  qcRegion region({{0, 0}, {40, 0}, {40, 40}, {0, 40}}, qcContourDefs::eNoIntersectionRepair);
  const qcPtrHandle<qcRegion> hole(
      new qcRegion({{10, 10}, {11, 10}, {11, 11}}, qcContourDefs::eNoIntersectionRepair));
  region.holes(std::vector<qcPtrHandle<qcRegion>>{hole});
  ASSERT_EQ(region.area(true), 1599.5);
  qcContour& boundary = region;
  closedContour({{0, 0}, {20, 0}, {20, 20}, {0, 20}}).map(qcXform<2>::I, boundary);
  EXPECT_EQ(region.holes().size(), 1U);
  EXPECT_EQ(region.area(true), 399.5);
}

TEST(ContourMapTest, WithoutVerticesIsEmpty) {
  qcContour image(square(2), true, 1);
  openContour({}).map(stretch, image);
  EXPECT_TRUE(image.points().empty());
  EXPECT_FALSE(image.isClosed());
}

TEST(ContourMapTest, AsksWhetherTheContourSaysThatItIsClosed) {
  const qcRegion region(qcContour(square(2), false, 3), qcContourDefs::eNoIntersectionRepair);
  qcContour image({}, false, 0);
  const qcContour& boundary = region;
  boundary.map(qcXform<2>::I, image);
  EXPECT_TRUE(image.isClosed());
}

}  // namespace
