// SPDX-License-Identifier: MIT
//
// Length, mean position, median edge, nearest points, polygon, hull and ellipse of a contour.
// Whether answers are remembered is tested in contour_cache_test.cpp; the answers of thousands of
// shapes are compared with a second implementation in contour_properties_test.cpp.

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include <cntr/ellipse.h>
#include <cntr/region.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/core/hull.h>

#include <testing/shapes/numbers.h>
#include <testing/twin/same.h>
#include <tests/cntr/figures.h>
#include "contour_probe.h"
#include "plain_views.h"

namespace {

using figures::square;
using fixtures::verticesOf;
using testing::ElementsAre;

/// The lattice points at distance 65 from the origin: 36 of them, all at exactly this distance.
Points circleOfLatticePoints() {
  Points points;
  for (int x = -65; x <= 65; ++x) {
    for (int y = -65; y <= 65; ++y) {
      if (x * x + y * y == 65 * 65) points.emplace_back(x, y);
    }
  }
  return points;
}

Points rotatedBy(Points points, std::size_t shift) {
  std::rotate(points.begin(), points.begin() + static_cast<std::ptrdiff_t>(shift), points.end());
  return points;
}

TEST(ContourLengthTest, OfAnOpenContourIsTheSumOfItsEdges) {
  EXPECT_EQ(openContour({{0, 0}, {3, 0}, {3, 4}}).length(), 7.0);
}

TEST(ContourLengthTest, OfAClosedContourIncludesTheEdgeBackToTheFirstVertex) {
  EXPECT_EQ(closedContour({{0, 0}, {3, 0}, {3, 4}}).length(), 12.0);
}

TEST(ContourLengthTest, WithoutACurveIsZero) {
  for (const ContourProbe& contour : contoursWithoutCurve()) EXPECT_EQ(contour.length(), 0.0);
  EXPECT_EQ(closedContour({{notANumber, 1}}).length(), 0.0);
  EXPECT_EQ(closedContour({{1, infinity}}).length(), 0.0);
}

TEST(ContourLengthTest, OfTwoVerticesClosedCountsTheEdgeTwice) {
  EXPECT_EQ(closedContour({{0, 0}, {3, 4}}).length(), 10.0);
  EXPECT_EQ(openContour({{0, 0}, {3, 4}}).length(), 5.0);
}

TEST(ContourLengthTest, StartsTheSumWithTheClosingEdge) {
  // Next to 1e16 a single 1 is lost; added up first, three of them count.
  const Points points = {{0, 0}, {0, 1}, {0, 2}, {0, 3}, {1e16, 0}};
  EXPECT_EQ(closedContour(points).length(), 2e16);
  EXPECT_EQ(openContour(points).length(), 1e16 + 4);
}

TEST(ContourLengthTest, OfEqualVerticesIsZero) {
  EXPECT_EQ(closedContour(Points(5, {7, 8})).length(), 0.0);
}

TEST(ContourLengthTest, OfNumbersThatAreNotFiniteIsNotFinite) {
  EXPECT_TRUE(std::isnan(openContour({{0, 0}, {notANumber, 0}}).length()));
  EXPECT_EQ(openContour({{0, 0}, {infinity, 0}}).length(), infinity);
  EXPECT_TRUE(std::isnan(openContour({{infinity, 0}, {infinity, 0}}).length()));
  EXPECT_EQ(openContour({{0, 0}, {1e200, 0}}).length(), infinity);
}

TEST(ContourMeanPositionTest, OfASquareIsItsMiddle) {
  EXPECT_EQ(closedContour(square(2)).meanPosition(), Point(1, 1));
}

TEST(ContourMeanPositionTest, WeightsEdgesWithTheirLengths) {
  const Point mean = openContour({{0, 0}, {3, 0}, {3, 1}}).meanPosition();
  EXPECT_EQ(mean, Point((1.5 * 3 + 3) * 0.25, 0.5 * 0.25));
}

TEST(ContourMeanPositionTest, OfAnOpenContourLeavesTheClosingEdgeOut) {
  const Point mean = openContour({{0, 0}, {2, 0}, {2, 2}, {0, 2}}).meanPosition();
  EXPECT_EQ(mean, Point(8.0 * (1.0 / 6.0), 6.0 * (1.0 / 6.0)));
}

TEST(ContourMeanPositionTest, StartsItsSumsWithTheClosingEdge) {
  const Points points = {{0, 0}, {0, 1}, {0, 2}, {0, 3}, {1e16, 0}};
  const double half = 0.5e16;
  EXPECT_EQ(closedContour(points).meanPosition().x(), (half * 1e16 + half * 1e16) * (1.0 / 2e16));
  EXPECT_EQ(openContour(points).meanPosition().x(), half * 1e16 * (1.0 / (1e16 + 4)));
}

TEST(ContourMeanPositionTest, OfEqualVerticesIsNotFinite) {
  const Point mean = closedContour(Points(4, {1, 2})).meanPosition();
  EXPECT_FALSE(std::isfinite(mean.x()));
  EXPECT_FALSE(std::isfinite(mean.y()));
}

TEST(ContourMeanPositionTest, WithoutACurveThrowsEmptyContour) {
  for (const ContourProbe& contour : contoursWithoutCurve()) {
    expectEmptyContour([&] { contour.meanPosition(); });
  }
}

TEST(ContourMedianFeatureSizeTest, OfASquareIsItsSide) {
  EXPECT_EQ(closedContour(square(2)).medianFeatureSize(), 2.0);
}

TEST(ContourMedianFeatureSizeTest, OfAnEvenCountIsTheUpperOfTheTwoInTheMiddle) {
  EXPECT_EQ(openContour({{0, 0}, {1, 0}, {4, 0}}).medianFeatureSize(), 3.0);
  EXPECT_EQ(openContour({{0, 0}, {7, 0}, {8, 0}, {8, 3}, {8, 8}}).medianFeatureSize(), 5.0);
}

TEST(ContourMedianFeatureSizeTest, OfAnOddCountIsTheOneInTheMiddle) {
  EXPECT_EQ(openContour({{0, 0}, {7, 0}, {8, 0}, {8, 3}}).medianFeatureSize(), 3.0);
  EXPECT_EQ(closedContour({{0, 0}, {3, 0}, {3, 4}}).medianFeatureSize(), 4.0);
}

TEST(ContourMedianFeatureSizeTest, CountsLengthsThatAreNotNumbersAsTheLargest) {
  EXPECT_EQ(closedContour({{notANumber, 0}, {0, 0}, {1, 0}, {3, 0}, {6, 0}}).medianFeatureSize(),
            3.0);
  EXPECT_TRUE(
      std::isnan(closedContour({{notANumber, 0}, {0, 0}, {notANumber, 0}}).medianFeatureSize()));
}

TEST(ContourMedianFeatureSizeTest, WithoutACurveThrowsEmptyContour) {
  for (const ContourProbe& contour : contoursWithoutCurve()) {
    expectEmptyContour([&] { contour.medianFeatureSize(); });
  }
}

TEST(ContourClosestPointTest, IsTheFootOnAnEdgeOrTheEndOfOne) {
  const ContourProbe contour = openContour({{0, 0}, {4, 0}});
  EXPECT_EQ(contour.closestPoint({2, 3}, false), Point(2, 0));
  EXPECT_EQ(contour.closestPoint({5, 1}, false), Point(4, 0));
  EXPECT_EQ(contour.closestPoint({-1, 1}, false), Point(0, 0));
}

TEST(ContourClosestPointTest, LooksAtTheClosingEdgeOfAClosedContourOnly) {
  EXPECT_EQ(closedContour(square(2)).closestPoint({-1, 1}, false), Point(0, 1));
  EXPECT_EQ(openContour(square(2)).closestPoint({-1, 0.5}, false), Point(0, 0));
}

TEST(ContourClosestPointTest, IsOnTheEarlierEdgeOnTies) {
  EXPECT_EQ(closedContour(square(2)).closestPoint({1, 1}, false), Point(0, 1));
  EXPECT_EQ(openContour(square(2)).closestPoint({1, 1}, false), Point(1, 0));
}

TEST(ContourClosestPointTest, IsOnTheEarlierEdgeOnTiesInALongContourToo) {
  // The outline of a square of side 40 in steps of 1; each side has a middle at distance 20.
  Points points;
  for (int i = 0; i < 40; ++i) points.emplace_back(i, 0);
  for (int i = 0; i < 40; ++i) points.emplace_back(40, i);
  for (int i = 0; i < 40; ++i) points.emplace_back(40 - i, 40);
  for (int i = 0; i < 40; ++i) points.emplace_back(0, 40 - i);
  const Point middles[] = {{20, 0}, {40, 20}, {20, 40}, {0, 20}};
  for (std::size_t side = 0; side < 4; ++side) {
    const ContourProbe contour = closedContour(rotatedBy(points, 40 * side));
    EXPECT_EQ(contour.closestPoint({20, 20}, false), middles[side]);
    EXPECT_EQ(contour.closestVertexIndex({20, 20}), 20);
  }
}

TEST(ContourClosestPointTest, OfAnEdgeWithoutLengthIsItsVertex) {
  EXPECT_EQ(closedContour(Points(3, {5, 6})).closestPoint({1, 1}, false), Point(5, 6));
  EXPECT_EQ(openContour({{0, 0}, {0, 0}, {1, 0}}).closestPoint({-3, 0}, false), Point(0, 0));
}

TEST(ContourClosestPointTest, OnTheContourIsThePointItself) {
  EXPECT_EQ(closedContour(square(2)).closestPoint({2, 0.75}, false), Point(2, 0.75));
  EXPECT_EQ(closedContour(square(2)).closestPoint({2, 2}, false), Point(2, 2));
}

TEST(ContourClosestPointTest, WithVerticesOnlyIsTheNearestVertex) {
  EXPECT_EQ(closedContour(square(2)).closestPoint({1.5, 1.25}, true), Point(2, 2));
  EXPECT_EQ(openContour({{0, 0}, {4, 0}}).closestPoint({2.5, 3}, true), Point(4, 0));
}

TEST(ContourClosestPointTest, WithoutAFiniteDistanceIsTheOrigin) {
  for (const Point& p : {Point(notANumber, 0), Point(0, infinity), Point(-infinity, notANumber)}) {
    EXPECT_EQ(closedContour({{1, 1}, {2, 1}, {2, 2}}).closestPoint(p, false), Point(0, 0));
  }
  EXPECT_EQ(closedContour({{notANumber, 1}, {notANumber, 2}}).closestPoint({1, 1}, false),
            Point(0, 0));
  EXPECT_EQ(closedContour({{1e300, 0}, {1e300, 1}}).closestPoint({-1e300, 1}, false), Point(0, 0));
}

TEST(ContourClosestPointTest, WithoutAFiniteDistanceAndVerticesOnlyIsTheFirstVertex) {
  EXPECT_EQ(closedContour({{1, 1}, {2, 1}}).closestPoint({notANumber, 0}, true), Point(1, 1));
}

TEST(ContourClosestPointTest, PassesOverVerticesThatAreNotNumbers) {
  const ContourProbe contour = closedContour({{notANumber, 0}, {3, 0}, {5, 0}, {0, notANumber}});
  EXPECT_EQ(contour.closestPoint({4, 1}, false), Point(4, 0));
  EXPECT_EQ(contour.closestPoint({1, 0}, true), Point(3, 0));
}

TEST(ContourClosestPointTest, WithoutACurveThrowsEmptyContour) {
  for (const ContourProbe& contour : contoursWithoutCurve()) {
    expectEmptyContour([&] { contour.closestPoint({0, 0}, false); });
    expectEmptyContour([&] { contour.closestPoint({0, 0}, true); });
  }
}

TEST(ContourClosestVertexIndexTest, IsThatOfTheNearestVertex) {
  EXPECT_EQ(closedContour(square(2)).closestVertexIndex({1.5, 1.75}), 2);
  EXPECT_EQ(openContour({{0, 0}, {4, 0}}).closestVertexIndex({-1, 0}), 0);
  EXPECT_EQ(openContour({{0, 0}, {4, 0}}).closestVertexIndex({9, 0}), 1);
}

TEST(ContourClosestVertexIndexTest, IsTheLowestOnTies) {
  EXPECT_EQ(closedContour(square(2)).closestVertexIndex({1, 1}), 0);
  EXPECT_EQ(closedContour(square(2)).closestVertexIndex({2, 1}), 1);
  EXPECT_EQ(openContour({{1, 0}, {0, 0}, {0, 0}}).closestVertexIndex({0, 0}), 1);
}

TEST(ContourClosestVertexIndexTest, IsTheLowestOfManyEquallyFarVerticesInALongContour) {
  const Points points = circleOfLatticePoints();
  ASSERT_EQ(points.size(), 36U);
  for (std::size_t shift = 0; shift < points.size(); ++shift) {
    for (const bool closed : {false, true}) {
      const qcContour contour(rotatedBy(points, shift), closed, 0);
      EXPECT_EQ(contour.closestVertexIndex({0, 0}), 0) << "shifted by " << shift;
    }
  }
}

TEST(ContourClosestVertexIndexTest, CountsDistancesAsTiedThatAreEqualAfterRounding) {
  // The square of the first distance is greater by one unit in the last place; its root is not.
  const Point slightlyFarther(1, 1.2e-8);
  const Point nearer(1, 0);
  ASSERT_GT(slightlyFarther * slightlyFarther, nearer * nearer);
  ASSERT_EQ(slightlyFarther.len(), nearer.len());
  EXPECT_EQ(openContour({slightlyFarther, nearer}).closestVertexIndex({0, 0}), 0);
  Points points = {slightlyFarther};
  for (int i = 0; i < 50; ++i) points.emplace_back(2.0 + i, 5.0);
  points.push_back(nearer);
  for (int i = 50; i > 0; --i) points.emplace_back(2.0 + i, -5.0);
  EXPECT_EQ(openContour(points).closestVertexIndex({0, 0}), 0);
  EXPECT_EQ(closedContour(points).closestVertexIndex({0, 0}), 0);
}

TEST(ContourClosestVertexIndexTest, WithoutAFiniteDistanceIsZero) {
  EXPECT_EQ(closedContour(square(2)).closestVertexIndex({notANumber, 1}), 0);
  EXPECT_EQ(closedContour(square(2)).closestVertexIndex({1, -infinity}), 0);
  EXPECT_EQ(closedContour({{notANumber, 0}, {0, notANumber}}).closestVertexIndex({1, 1}), 0);
}

TEST(ContourClosestVertexIndexTest, WithoutACurveThrowsEmptyContour) {
  for (const ContourProbe& contour : contoursWithoutCurve()) {
    expectEmptyContour([&] { contour.closestVertexIndex({0, 0}); });
  }
}

TEST(ContourDistToPointTest, IsThatToTheNearestPointOrVertex) {
  const ContourProbe contour = openContour({{0, 0}, {8, 0}});
  EXPECT_EQ(contour.distToPoint({4, 3}, false), 3.0);
  EXPECT_EQ(contour.distToPoint({4, 3}, true), 5.0);
  EXPECT_EQ(contour.distToPoint({11, 4}, false), 5.0);
  EXPECT_EQ(contour.distToPoint({5, 0}, false), 0.0);
}

TEST(ContourDistToPointTest, WithoutAFiniteDistanceIsThatToTheOrigin) {
  EXPECT_EQ(closedContour(square(2)).distToPoint({infinity, 0}, false), infinity);
  EXPECT_TRUE(std::isnan(closedContour(square(2)).distToPoint({notANumber, 0}, false)));
}

TEST(ContourDistToPointTest, WithoutACurveThrowsEmptyContour) {
  for (const ContourProbe& contour : contoursWithoutCurve()) {
    expectEmptyContour([&] { contour.distToPoint({0, 0}, false); });
    expectEmptyContour([&] { contour.distToPoint({0, 0}, true); });
  }
}

TEST(ContourPolygonTest, OfAClosedContourRepeatsTheFirstVertexAtTheEnd) {
  const qcPolygon polygon = closedContour({{1, 2}, {3, 4}, {5, 7}}).polygon();
  EXPECT_THAT(verticesOf(polygon), ElementsAre(Point(1, 2), Point(3, 4), Point(5, 7), Point(1, 2)));
  EXPECT_EQ(polygon.fillMode(), qcPolygon::eEvenOdd);
}

TEST(ContourPolygonTest, OfAnOpenContourHasItsVertices) {
  const qcPolygon polygon = openContour({{1, 2}, {3, 4}, {5, 7}}).polygon();
  EXPECT_THAT(verticesOf(polygon), ElementsAre(Point(1, 2), Point(3, 4), Point(5, 7)));
  EXPECT_EQ(polygon.fillMode(), qcPolygon::eEvenOdd);
}

TEST(ContourPolygonTest, OfOneVertexHasTwoWhenClosed) {
  EXPECT_EQ(closedContour({{1, 2}}).polygon().size(), 2);
  EXPECT_EQ(openContour({{1, 2}}).polygon().size(), 1);
}

TEST(ContourPolygonTest, WithoutVerticesIsEmpty) {
  EXPECT_EQ(closedContour({}).polygon().size(), 0);
  EXPECT_EQ(openContour({}).polygon().size(), 0);
}

TEST(ContourPolygonTest, OfAClosedContourMakesAClosedContourThatKeepsTheRepeatedVertex) {
  const ContourProbe contour = closedContour({{1, 2}, {3, 4}, {5, 7}});
  const qcContour back(contour.polygon(), 9);
  EXPECT_TRUE(back.isClosed());
  EXPECT_EQ(back.points(), verticesOf(contour.polygon()));
  EXPECT_EQ(back.length(), contour.length());
}

TEST(ContourPolygonTest, OfAnOpenContourMakesTheSameContour) {
  const ContourProbe contour = openContour({{1, 2}, {3, 4}, {5, 7}});
  const qcContour back(contour.polygon(), 9);
  EXPECT_TRUE(back == contour);
}

TEST(ContourPolygonTest, WithoutVerticesMakesAnOpenContour) {
  const qcContour back(closedContour({}).polygon(), 9);
  EXPECT_FALSE(back.isClosed());
  EXPECT_TRUE(back.points().empty());
}

TEST(ContourConvexHullTest, IsARegionCounterClockwiseFromTheLowestLeftmostVertex) {
  const ContourProbe contour = openContour({{2, 2}, {1, 1}, {0, 2}, {2, 0}, {1, 0}, {0, 0}});
  qcRegion hull({{7, 7}, {8, 7}, {8, 8}}, qcContourDefs::eNoIntersectionRepair);
  hull.label(77);
  contour.convexHull(hull);
  EXPECT_THAT(hull.points(), ElementsAre(Point(0, 0), Point(2, 0), Point(2, 2), Point(0, 2)));
  EXPECT_EQ(hull.label(), 0U);
  EXPECT_TRUE(hull.isClosed());
  EXPECT_EQ(hull.area(false), 4.0);
}

TEST(ContourConvexHullTest, OfACollinearContourIsItsTwoExtremes) {
  qcRegion hull;
  closedContour({{1, 1}, {3, 3}, {0, 0}, {2, 2}}).convexHull(hull);
  EXPECT_THAT(hull.points(), ElementsAre(Point(0, 0), Point(3, 3)));
}

TEST(ContourConvexHullTest, OfEqualVerticesIsOneVertex) {
  qcRegion hull;
  closedContour(Points(5, {4, 2})).convexHull(hull);
  EXPECT_THAT(hull.points(), ElementsAre(Point(4, 2)));
}

TEST(ContourConvexHullTest, IsTheSameWhenAskedAgainWhateverBecameOfTheFirstAnswer) {
  const ContourProbe contour = closedContour(square(2));
  qcRegion first;
  contour.convexHull(first);
  first.points({{9, 9}});
  qcRegion second;
  contour.convexHull(second);
  EXPECT_EQ(second.points(), square(2));
}

TEST(ContourConvexHullTest, MayBeWrittenToTheRegionThatIsAsked) {
  qcRegion region({{0, 0}, {4, 0}, {1, 1}, {0, 4}}, qcContourDefs::eNoIntersectionRepair);
  region.convexHull(region);
  EXPECT_THAT(region.points(), ElementsAre(Point(0, 0), Point(4, 0), Point(0, 4)));
}

TEST(ContourConvexHullTest, WithoutACurveThrowsEmptyContourAndLeavesTheResult) {
  for (const ContourProbe& contour : contoursWithoutCurve()) {
    qcRegion hull(square(2), qcContourDefs::eNoIntersectionRepair);
    expectEmptyContour([&] { contour.convexHull(hull); });
    EXPECT_EQ(hull.points(), square(2));
  }
}

/// Points of the ellipse with semi-axes 5 and 3 around (10, 20), not turned.
Points ellipsePoints(int count) {
  Points points;
  for (int i = 0; i < count; ++i) {
    const double t = 2 * std::numbers::pi * i / count;
    points.emplace_back(10 + 5 * std::cos(t), 20 + 3 * std::sin(t));
  }
  return points;
}

std::pair<qcEllipse, double> fitted(const qcContour& contour) {
  qcEllipse ellipse;
  double residual = notANumber;
  contour.fitEllipse(ellipse, residual);
  return {ellipse, residual};
}

TEST(ContourFitEllipseTest, FindsTheEllipseOfItsVertices) {
  const auto [ellipse, residual] = fitted(closedContour(ellipsePoints(12)));
  EXPECT_NEAR(ellipse.geom().center.x(), 10, 1e-9);
  EXPECT_NEAR(ellipse.geom().center.y(), 20, 1e-9);
  EXPECT_NEAR(ellipse.geom().radius1, 5, 1e-9);
  EXPECT_NEAR(ellipse.geom().radius2, 3, 1e-9);
  EXPECT_NEAR(std::sin(ellipse.geom().rotation.toDouble()), 0, 1e-9);
  EXPECT_NEAR(residual, 0, 1e-9);
}

TEST(ContourFitEllipseTest, IsThatOfTheVerticesWhetherClosedOrOpen) {
  Points points = ellipsePoints(7);
  points[3] = points[3] + Point(0.25, -0.125);
  qcEllipse ellipse;
  double residual = notANumber;
  qf_FitEllipse(points, ellipse, residual);
  EXPECT_EQ(fitted(closedContour(points)), std::pair(ellipse, residual));
  EXPECT_EQ(fitted(openContour(points)), std::pair(ellipse, residual));
  EXPECT_GT(residual, 0.01);
}

TEST(ContourFitEllipseTest, OfTooFewVerticesIsACircle) {
  const auto [ellipse, residual] = fitted(openContour({{5, 0}, {0, 5}, {-5, 0}}));
  EXPECT_NEAR(ellipse.geom().radius1, 5, 1e-9);
  EXPECT_EQ(ellipse.geom().radius1, ellipse.geom().radius2);
  EXPECT_NEAR(residual, 0, 1e-9);
}

TEST(ContourFitEllipseTest, OfALineIsADefaultEllipseWithResidualMinusOne) {
  const auto [ellipse, residual] = fitted(openContour({{0, 0}, {1, 1}, {2, 2}, {3, 3}, {4, 4}}));
  EXPECT_EQ(ellipse, qcEllipse());
  EXPECT_EQ(residual, -1.0);
}

TEST(ContourFitEllipseTest, WithoutACurveThrowsEmptyContourAndLeavesTheResults) {
  for (const ContourProbe& contour : contoursWithoutCurve()) {
    qcEllipse ellipse(qcCircle({1, 2}, 3));
    double residual = 4;
    expectEmptyContour([&] { contour.fitEllipse(ellipse, residual); });
    EXPECT_EQ(ellipse, qcEllipse(qcCircle({1, 2}, 3)));
    EXPECT_EQ(residual, 4.0);
  }
}

TEST(ContourCurveTest, RefusesFewerThanTwoVerticesWhereACurveIsNeeded) {
  for (const ContourProbe& contour : contoursWithoutCurve()) {
    expectEmptyContour([&] { contour.checkEmptyContour(); });
  }
  EXPECT_NO_THROW(openContour({{0, 0}, {0, 0}}).checkEmptyContour());
}

}  // namespace
