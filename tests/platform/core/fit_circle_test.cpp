// SPDX-License-Identifier: MIT
//
// Circle fits: circles that are recovered, the least sum of squares, failures, parameters.

#include <platform/core/fit.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "fit_points.h"

namespace {

using namespace fit_points;

qcCircleFitResults fitCircle(const Points& points,
                             const qcCircleFitParams& params = qcCircleFitParams()) {
  qcCircleFitResults results;
  qfCircleFit(params, points, results);
  return results;
}

/// The larger error of centre and radius, both relative to the radius.
double errorOf(const qcCircle& fitted, const Geometry& truth) {
  return std::max(distance(fitted.center(), truth.center) / truth.radius1,
                  std::abs(fitted.radius() / truth.radius1 - 1.0));
}

TEST(CircleFitTest, GivesBackACircleOfAnyScaleAndPlace) {
  for (const double scale : {1e-300, 1e-3, 1.0, 1e5, 1e250}) {
    for (const double radiiAway : {0.0, 1.0, 100.0, 1e4}) {
      const Geometry truth = circle(Point(radiiAway, -0.7 * radiiAway) * scale, scale);
      const qcCircleFitResults fitted = fitCircle(arcOf(truth, 40));
      EXPECT_LT(errorOf(fitted.circle(), truth), 20 * epsilon * (1.0 + radiiAway));
      EXPECT_LT(fitted.residual(), 8 * epsilon * (1.0 + radiiAway) * scale);
    }
  }
}

TEST(CircleFitTest, ThreePointsGiveTheCircleThroughThem) {
  const qcCircleFitResults fitted = fitCircle({{0, 0}, {8, 0}, {0, 6}});
  EXPECT_NEAR(fitted.circle().center().x(), 4, 1e-14);
  EXPECT_NEAR(fitted.circle().center().y(), 3, 1e-14);
  EXPECT_NEAR(fitted.circle().radius(), 5, 1e-14);
  EXPECT_NEAR(fitted.residual(), 0, 1e-14);
}

TEST(CircleFitTest, GivesBackACircleFromAnArc) {
  // The rise of an arc of extent t over its chord is of the order t^2.
  for (const double extent : {3.0, 1.0, 0.1, 0.01, 1e-3, 1e-4, 1e-5}) {
    const Geometry truth = circle(Point(3, -2), 10);
    const double error = errorOf(fitCircle(arcOf(truth, 40, 1.0, extent)).circle(), truth);
    EXPECT_LT(error, 20 * epsilon + 30 * epsilon / (extent * extent)) << extent;
  }
}

TEST(CircleFitTest, NoiseIsAveraged) {
  const Geometry truth = circle(Point(640, 480), 450);
  const qcCircleFitResults fitted = fitCircle(withNoise(arcOf(truth, 10000), 0.5));
  EXPECT_LT(errorOf(fitted.circle(), truth), 1e-4);
  EXPECT_NEAR(fitted.residual(), 0.5, 0.02);
}

double sumOfSquares(const Points& points, const Point& center) {
  double mean = 0.0, sum = 0.0;
  for (const Point& p : points) mean += p.distance(center);
  mean /= static_cast<double>(points.size());
  for (const Point& p : points) sum += std::pow(p.distance(center) - mean, 2);
  return sum;
}

void expectLeast(const Points& points) {
  const qcCircle fitted = fitCircle(points).circle();
  const double least = sumOfSquares(points, fitted.center());
  for (int i = 0; i < 16; ++i) {
    const Point step(1e-3 * fitted.radius(), qcRadian(i * pi / 8));
    EXPECT_LE(least, sumOfSquares(points, fitted.center() + step));
  }
}

TEST(CircleFitTest, NoCircleNearbyIsBetter) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    expectLeast(withNoise(arcOf(circle(Point(3, -2), 10), 30), 2.0, seed));
    expectLeast(withNoise(arcOf(circle(Point(3, -2), 10), 30, 0.0, 1.5), 0.3, seed));
  }
}

TEST(CircleFitTest, IsNotMisledBySymmetry) {
  // The algebraic start lies on the axis of symmetry, where the sum has a saddle, or on a point.
  expectLeast({{0, 1}, {2, 0}, {1, 2}, {1, 1}});
  expectLeast({{-1, -1}, {1, -1}, {1, 1}, {-1, 1}, {0, 0}});
  expectLeast({{-1, 0}, {1, 0}, {0, 1}, {0, -1}, {0, 0}});
}

TEST(CircleFitTest, FollowsFlatMinimaToTheEnd) {
  // The sum hardly changes near its least value; its derivative still tells where that is.
  const Points points = {{3, 2}, {0, 0}, {0, 0}, {2, 2}, {2, 1}};
  const qcCircle fitted = fitCircle(points).circle();
  Point gradient;
  for (const Point& p : points) {
    const double off = p.distance(fitted.center()) - fitted.radius();
    gradient = gradient + (p - fitted.center()).unit() * off;
  }
  EXPECT_LT(gradient.len(), 1e-13);
}

TEST(CircleFitTest, RadiusIsTheMeanDistance) {
  const Points points = withNoise(arcOf(circle(Point(3, -2), 10), 30), 2.0);
  const qcCircleFitResults fitted = fitCircle(points);
  double mean = 0.0;
  for (const Point& p : points) mean += p.distance(fitted.circle().center()) / 30.0;
  EXPECT_NEAR(fitted.circle().radius(), mean, 1e-13);
  EXPECT_NEAR(fitted.residual(), std::sqrt(sumOfSquares(points, fitted.circle().center()) / 30.0),
              1e-13);
}

TEST(CircleFitTest, RelaxedStepsArriveAtTheSameCircle) {
  const Points points = withNoise(arcOf(circle(Point(3, -2), 10), 30, 0.0, 2.0), 0.5);
  const qcCircle full = fitCircle(points).circle();
  for (const double relaxation : {0.9, 0.5, 0.1, 0.01}) {
    const qcCircleFitParams params(qcCircleFitDefs::eLeastSquares, relaxation);
    const qcCircle relaxed = fitCircle(points, params).circle();
    EXPECT_LT(relaxed.center().distance(full.center()), 1e-12) << relaxation;
    EXPECT_NEAR(relaxed.radius(), full.radius(), 1e-12) << relaxation;
  }
}

TEST(CircleFitTest, RefusesRelaxationsThatAreNoShare) {
  const Points points = arcOf(circle(Point(), 3), 8);
  for (const double bad : {0.0, -1.0, 1.5, infinity, std::nan("")}) {
    const qcCircleFitParams params(qcCircleFitDefs::eLeastSquares, bad);
    EXPECT_EQ(failureOf([&] { fitCircle(points, params); }), L"the relaxation is not in (0, 1]");
  }
}

TEST(CircleFitTest, SaysWhyPointsHaveNoCircle) {
  const Failure failures[] = {{{}, L"too few points"},
                              {{{0, 0}, {1, 0}}, L"too few points"},
                              {{{3, 4}, {3, 4}, {3, 4}}, L"the points coincide"},
                              {{{3, 4}, {3, 4}, {5, 4}}, L"the points lie on a line"},
                              {{{0, 0}, {1, 1}, {2, 2}}, L"the points lie on a line"},
                              {{{1, 0}, {1, 1}, {1, 7}}, L"the points lie on a line"},
                              {{{0, 0}, {1, std::nan("")}, {0, 1}}, L"a point is not finite"},
                              {{{0, 0}, {1, infinity}, {0, 1}}, L"a point is not finite"},
                              {{{0, 0}, {-infinity, 0}, {0, 1}}, L"a point is not finite"}};
  for (const Failure& f : failures) {
    EXPECT_EQ(failureOf([&f] { fitCircle(f.points); }), f.message);
  }
  for (const double far : {0.0, 1.0, 1e6}) {
    const Points line = elsewhere({{0, 0}, {1, 0}, {2, 0}, {3, 0}, {7, 0}}, far);
    EXPECT_EQ(failureOf([&] { fitCircle(line); }), L"the points lie on a line");
  }
}

TEST(CircleFitTest, PointsSoNearALineThatRoundingHidesTheirCurvatureHaveNoCircle) {
  for (const double height : {1e-8, 1e-10, -1e-12}) {
    EXPECT_EQ(failureOf([&] {
                fitCircle({{-1, 0}, {0, height}, {1, 0}});
              }),
              L"the points lie on a line");
  }
  const Geometry truth = circle(Point(0, -5e5), 5e5 + 1e-6);
  EXPECT_LT(errorOf(fitCircle({{-1, 0}, {0, 1e-6}, {1, 0}}).circle(), truth), 1e-3);
}

TEST(CircleFitTest, PointsInBalanceAboutALineHaveNoCircle) {
  // No curvature to either side: the larger the circle, the better.
  const Points failures[] = {{{-2, 0.1}, {-1, -0.1}, {1, 0.1}, {2, -0.1}},
                             {{-3, 0.001}, {-1, -0.001}, {0, 0}, {1, 0.001}, {3, -0.001}},
                             {{1, 0}, {1, 1}, {0, 3}, {0, 2}},
                             {{1, 1}, {4, 0}, {3, 0}, {0, 1}}};
  for (const Points& points : failures) {
    EXPECT_EQ(failureOf([&] { fitCircle(points); }), L"the points determine no circle");
  }
}

TEST(CircleFitTest, AFailedFitLeavesTheResultsAlone) {
  qcCircleFitResults results(qcCircle(Point(1, 2), 3), 4.0);
  EXPECT_THROW(qfCircleFit(qcCircleFitParams(), {}, results), qcFitError);
  EXPECT_EQ(results.circle(), qcCircle(Point(1, 2), 3));
  EXPECT_EQ(results.residual(), 4.0);
}

TEST(CircleFitTest, HugeCoordinatesDoNotOverflow) {
  const Geometry truth = circle(Point(2e307, -1e307), 8e307);
  EXPECT_LT(errorOf(fitCircle(arcOf(truth, 20)).circle(), truth), 1e-13);
}

TEST(CircleFitTest, ACircleTooLargeForItsNumbersIsRefused) {
  const Points farCenter = {{-1.7e308, 0}, {0, 1e307}, {1.7e308, 0}};
  // Around (0, -1.6e308) with radius 2e308.
  const Points longRadius = {{-1.2e308, 0}, {0, 4e307}, {1.2e308, 0}};
  for (const Points& points : {farCenter, longRadius}) {
    EXPECT_EQ(failureOf([&] { fitCircle(points); }),
              L"the curve is too large for double precision");
  }
}

TEST(CircleFitTest, LeavesOutTheFarthestPoints) {
  const Geometry truth = circle(Point(3, -2), 10);
  const Points points = withOutliers(arcOf(truth, 40), Point(18, 5), Point(-11, -9));
  const auto errorWith = [&](unsigned long count, double threshold) {
    const qcCircleFitParams params(qcCircleFitDefs::eLeastSquares, 1.0, count, threshold);
    return errorOf(fitCircle(points, params).circle(), truth);
  };
  EXPECT_GT(errorWith(0, 0.5), 0.02);
  EXPECT_GT(errorWith(1, 0.5), 0.02);
  EXPECT_LT(errorWith(2, 0.5), 1e-13);
  EXPECT_LT(errorWith(20, 0.5), 1e-13) << "no more than lie beyond the threshold";
  EXPECT_GT(errorWith(2, 100.0), 0.02) << "none lies that far away";
}

TEST(CircleFitTest, KeepsAPointAtTheThresholdItself) {
  // Every point is exactly 0.5 off the circle of radius 1.5.
  const Points points = {{2, 0}, {0, 1}, {-2, 0}, {0, -1}};
  const qcCircleFitParams params(qcCircleFitDefs::eLeastSquares, 1.0, 1, 0.5);
  EXPECT_EQ(fitCircle(points, params).residual(), 0.5);
}

TEST(CircleFitTest, NeverLeavesFewerThanThreePoints) {
  const Points points = withNoise(arcOf(circle(Point(3, -2), 10), 12), 0.1);
  const qcCircleFitParams params(qcCircleFitDefs::eLeastSquares, 1.0, 1000, 0.0);
  EXPECT_LT(fitCircle(points, params).residual(), 1e-12) << "three points lie on their circle";
}

RC_GTEST_PROP(CircleFitTest, FitsOrSaysWhyButNeverAnythingElse, ()) {
  const auto number = [] {
    return *rc::gen::element(0.0, 1.0, -1.0, 2.0, 0.5, 3.0, 1e-300, 1e300, -1e300, 1e-15);
  };
  Points points(*rc::gen::inRange<std::size_t>(3, 12));
  for (Point& p : points) {
    const double x = number();
    p = Point(x, number());
  }
  try {
    const qcCircleFitResults fitted = fitCircle(points);
    const Point& center = fitted.circle().center();
    RC_ASSERT(std::isfinite(center.x()) && std::isfinite(center.y()));
    RC_ASSERT(std::isfinite(fitted.circle().radius()) && fitted.circle().radius() > 0.0);
    RC_ASSERT(fitted.residual() >= 0.0);
  } catch (const qcFitError& e) {
    RC_ASSERT(!e.message().empty());
  }
}

}  // namespace
