// SPDX-License-Identifier: MIT
//
// Distance from a point to an ellipse.

#include <platform/core/internal/fit_distance.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace {

using Point = qcVector<2>;
using qnFit::distanceToEllipse;

TEST(EllipseDistanceTest, OnTheAxesItIsThatToTheNearerEnd) {
  EXPECT_DOUBLE_EQ(distanceToEllipse(Point(7, 0), 5, 3), 2.0);
  EXPECT_DOUBLE_EQ(distanceToEllipse(Point(-7, 0), 5, 3), 2.0);
  EXPECT_DOUBLE_EQ(distanceToEllipse(Point(0, 4), 5, 3), 1.0);
  EXPECT_DOUBLE_EQ(distanceToEllipse(Point(0, -4), 5, 3), 1.0);
  EXPECT_DOUBLE_EQ(distanceToEllipse(Point(0, 2), 5, 3), 1.0);
  EXPECT_EQ(distanceToEllipse(Point(5, 0), 5, 3), 0.0);
  EXPECT_EQ(distanceToEllipse(Point(0, 3), 5, 3), 0.0);
}

TEST(EllipseDistanceTest, FromTheCentreItIsTheMinorAxis) {
  EXPECT_EQ(distanceToEllipse(Point(0, 0), 5, 3), 3.0);
  EXPECT_EQ(distanceToEllipse(Point(-0.0, 0), 5, 5), 5.0);
}

TEST(EllipseDistanceTest, BetweenTheCurvaturesCentresTheFootLeavesTheMajorAxis) {
  // Between -16/5 and 16/5 the nearest point is not the end of the axis: the square of the distance
  // from (x, 0) is b^2 (1 - x^2 / (a^2 - b^2)).
  for (const double x : {0.001, 1.0, -2.0, 3.0, 3.2}) {
    EXPECT_NEAR(distanceToEllipse(Point(x, 0), 5, 3), 3.0 * std::sqrt(1.0 - x * x / 16.0), 1e-15);
  }
  EXPECT_NEAR(distanceToEllipse(Point(3.5, 0), 5, 3), 1.5, 1e-15);
}

TEST(EllipseDistanceTest, OfACircleIsTheDifferenceOfRadii) {
  EXPECT_DOUBLE_EQ(distanceToEllipse(Point(6, 8), 5, 5), 5.0);
  EXPECT_DOUBLE_EQ(distanceToEllipse(Point(0.3, -0.4), 5, 5), 4.5);
}

TEST(EllipseDistanceTest, ScalesWithTheShape) {
  const double once = distanceToEllipse(Point(4, 3), 5, 3);
  EXPECT_EQ(distanceToEllipse(Point(std::ldexp(4, 600), std::ldexp(3, 600)), std::ldexp(5, 600),
                              std::ldexp(3, 600)),
            std::ldexp(once, 600));
  EXPECT_EQ(distanceToEllipse(Point(std::ldexp(4, -600), std::ldexp(3, -600)), std::ldexp(5, -600),
                              std::ldexp(3, -600)),
            std::ldexp(once, -600));
}

/// The smallest distance to the points of a fine polygon, each refined by golden section.
double searchedDistance(const Point& p, double a, double b) {
  const auto at = [&](double t) { return p.distance(Point(a * std::cos(t), b * std::sin(t))); };
  constexpr int steps = 720;
  const double width = 2.0 * std::numbers::pi / steps;
  int best = 0;
  for (int i = 1; i < steps; ++i) {
    if (at(i * width) < at(best * width)) best = i;
  }
  double low = (best - 1) * width;
  double high = (best + 1) * width;
  const double golden = (std::sqrt(5.0) - 1.0) / 2.0;
  while (high - low > 1e-9) {
    const double left = high - golden * (high - low);
    const double right = low + golden * (high - low);
    (at(left) < at(right) ? high : low) = at(left) < at(right) ? right : left;
  }
  return at(0.5 * (low + high));
}

RC_GTEST_PROP(EllipseDistanceTest, IsTheLeastThatASearchFinds, ()) {
  const double a = *rc::gen::inRange(1, 400) / 16.0;
  const double b = std::min(a, *rc::gen::inRange(1, 400) / 16.0);
  const Point p(*rc::gen::inRange(-500, 500) / 16.0, *rc::gen::inRange(-500, 500) / 16.0);
  const double found = searchedDistance(p, a, b);
  RC_ASSERT(std::abs(distanceToEllipse(p, a, b) - found) <= 1e-9 * (1.0 + found));
}

RC_GTEST_PROP(EllipseDistanceTest, IsWhatThePointWasMovedAlongTheNormal, ()) {
  const double a = *rc::gen::inRange(16, 400) / 16.0;
  const double b = std::min(a, *rc::gen::inRange(1, 400) / 16.0);
  const double t = *rc::gen::inRange(-1000, 1000) / 250.0;
  // Inwards no farther than the smallest radius of curvature, b^2 / a.
  const double offset = *rc::gen::inRange(-900, 5000) / 1000.0 * (b * b / a);
  const Point foot(a * std::cos(t), b * std::sin(t));
  const Point normal = Point(b * std::cos(t), a * std::sin(t)).unit();
  const double distance = distanceToEllipse(foot + normal * offset, a, b);
  RC_ASSERT(std::abs(distance - std::abs(offset)) <= 1e-13 * (a + std::abs(offset)));
}

TEST(EllipseDistanceTest, NarrowEllipsesAreNoTrouble) {
  for (const double b : {1e-3, 1e-6, 1e-9, 1e-12}) {
    // To first order in b the foot is straight below.
    EXPECT_NEAR(distanceToEllipse(Point(0.5, 0.25), 1, b), 0.25 - b * std::sqrt(0.75),
                b * b + 1e-15);
    EXPECT_NEAR(distanceToEllipse(Point(1.25, 0), 1, b), 0.25, 1e-15);
    EXPECT_NEAR(distanceToEllipse(Point(0.5, 0), 1, b), b * std::sqrt(0.75), 1e-6 * b);
  }
}

/// Inside and outside, on the axes and at the centre, far away, or not a number.
Point anyPoint(std::mt19937_64& random) {
  const auto coordinate = [&random] {
    std::uniform_real_distribution<double> near(-3.0, 3.0);
    const double value = near(random);
    switch (random() % 16) {
      case 0:
        return 0.0;
      case 1:
        return value * 1e300;
      case 2:
        return value * 1e-300;
      case 3:
        return random() % 8 == 0 ? std::numeric_limits<double>::quiet_NaN() : value;
      default:
        return value;
    }
  };
  const double x = coordinate();
  const double y = coordinate();
  return {x, y};
}

TEST(EllipseDistanceTest, OfSeveralPointsAtOnceIsThatOfEach) {
  std::mt19937_64 random(1);
  for (int round = 0; round < 20000; ++round) {
    const double a = std::ldexp(1.0 + static_cast<double>(random() % 1000) / 1000.0,
                                static_cast<int>(random() % 8) - 4);
    const double b = random() % 4 == 0 ? a : a / (1.0 + static_cast<double>(random() % 100000));
    std::array<Point, qnFit::lanes> points;
    for (Point& p : points) p = anyPoint(random);
    const auto distances = qnFit::distancesToEllipse(points, a, b);
    for (std::size_t i = 0; i < points.size(); ++i) {
      const double alone = distanceToEllipse(points[i], a, b);
      if (std::isnan(alone) && std::isnan(distances[i])) continue;
      ASSERT_EQ(distances[i], alone) << round;
    }
  }
}

}  // namespace
