// SPDX-License-Identifier: MIT
//
// Ellipses from second moments and from points, and the standard deviation. The fitters themselves
// are tested with the platform.

#include <cntr/ellipse.h>

#include <cmath>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <platform/core/fit.h>
#include <testing/plain/ellipse.h>
#include <testing/shapes/numbers.h>
#include <testing/shapes/shapes.h>

#include <testing/twin/same.h>

namespace {

using Point = qcVector<2>;
using Points = std::vector<Point>;

/// The record of a solid ellipse in closed form: semi-axis a along `angle`, b across.
qc_InertiaData solidEllipse(const Point& center, double a, double b, double angle) {
  const double along = pi * a * a * a * b / 4;
  const double across = pi * a * b * b * b / 4;
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  const double mixed = (along - across) * s * c;
  const qcMatrix<2> matrix(along * c * c + across * s * s, mixed, mixed,
                           along * s * s + across * c * c);
  return qc_InertiaData(pi * a * b, center, matrix);
}

qc_InertiaData recordOfMoments(double xx, double xy, double yy) {
  return qc_InertiaData(1.0, {}, qcMatrix<2>(xx, xy, xy, yy));
}

/// The difference of two directions, which are the same after half a turn.
double betweenDirections(double a, double b) { return std::remainder(a - b, pi); }

TEST(EllipseFromInertiaDataTest, OfACircleIsTheCircle) {
  const qc_InertiaData circle(4 * pi, {5, 6}, qcMatrix<2>(4 * pi, 0, 0, 4 * pi));
  const auto geom = qf_EllipseFromInertiaData(circle).geom();
  EXPECT_EQ(geom.center, Point(5, 6));
  EXPECT_NEAR(geom.radius1, 2, 1e-15);
  EXPECT_NEAR(geom.radius2, 2, 1e-15);
  EXPECT_EQ(geom.rotation, qcRadian(0));
  EXPECT_EQ(geom.skew, qcRadian(0));
}

TEST(EllipseFromInertiaDataTest, OfARectangleHasItsRatioOfSidesButNotItsExtent) {
  const auto geom =
      qf_EllipseFromInertiaData(qf_InertiaDataPolygon({{0, 0}, {4, 0}, {4, 2}, {0, 2}})).geom();
  EXPECT_NEAR(geom.center.x(), 2, 1e-12);
  EXPECT_NEAR(geom.center.y(), 1, 1e-12);
  EXPECT_NEAR(geom.radius1 / geom.radius2, 2, 1e-12);
  EXPECT_NEAR(geom.rotation.toDouble(), 0, 1e-12);
  // From pi a^3 b / 4 = 4^3 2 / 12 and a = 2 b.
  EXPECT_NEAR(geom.radius2, std::pow(16 / (3 * pi), 0.25), 1e-12);
}

TEST(EllipseFromInertiaDataTest, OfAnUprightRectangleLiesAlongY) {
  const auto geom =
      qf_EllipseFromInertiaData(qf_InertiaDataPolygon({{0, 0}, {2, 0}, {2, 4}, {0, 4}})).geom();
  EXPECT_NEAR(std::abs(geom.rotation.toDouble()), pi / 2, 1e-12);
  EXPECT_NEAR(geom.radius1 / geom.radius2, 2, 1e-12);
}

/// The scale at which the smaller of the two moments is 1e-12, below which nothing counts as an
/// ellipse.
double smallestScale(double ratio) { return std::pow(4e-12 / (pi * ratio * ratio * ratio), 0.25); }

TEST(EllipseFromInertiaDataTest, FindsTheAxesOfEllipsesOfAllSizesInAllDirections) {
  int found = 0;
  for (double size = 1e-3; size <= 1.01e5; size *= 10) {
    for (const double ratio : {0.999, 0.75, 0.5, 0.1, 0.01}) {
      if (size < smallestScale(ratio) * 1.001) continue;
      for (int degrees = -180; degrees <= 180; degrees += 5) {
        const double angle = degrees * pi / 180;
        const Point center(3 * size, -size);
        const auto data = solidEllipse(center, size, ratio * size, angle);
        const auto geom = qf_EllipseFromInertiaData(data).geom();
        // The smaller moment is the difference of larger numbers.
        const double loss = 1e-14 / (ratio * ratio);
        EXPECT_EQ(geom.center, center);
        EXPECT_NEAR(geom.radius1 / size, 1, loss) << size << ' ' << ratio << ' ' << degrees;
        EXPECT_NEAR(geom.radius2 / (ratio * size), 1, loss) << size << ' ' << ratio << degrees;
        EXPECT_NEAR(betweenDirections(geom.rotation.toDouble(), angle), 0, 1e-15 / (1 - ratio))
            << size << ' ' << ratio << ' ' << degrees;
        EXPECT_EQ(geom.skew, qcRadian(0));
        ++found;
      }
    }
  }
  EXPECT_GT(found, 2000);
}

TEST(EllipseFromInertiaDataTest, PutsTheLargerRadiusFirst) {
  const auto geom = qf_EllipseFromInertiaData(solidEllipse({}, 3, 7, 0.2)).geom();
  EXPECT_NEAR(geom.radius1, 7, 1e-12);
  EXPECT_NEAR(geom.radius2, 3, 1e-12);
  EXPECT_NEAR(geom.rotation.toDouble(), 0.2 - pi / 2, 1e-12);
}

TEST(EllipseFromInertiaDataTest, RotatesByAtMostAQuarterTurn) {
  EXPECT_DOUBLE_EQ(qf_EllipseFromInertiaData(recordOfMoments(1, 0, 2)).geom().rotation.toDouble(),
                   pi / 2);
  EXPECT_DOUBLE_EQ(
      qf_EllipseFromInertiaData(recordOfMoments(1, -0.0, 2)).geom().rotation.toDouble(), -pi / 2);
  EXPECT_DOUBLE_EQ(qf_EllipseFromInertiaData(recordOfMoments(2, 1, 2)).geom().rotation.toDouble(),
                   pi / 4);
  EXPECT_DOUBLE_EQ(qf_EllipseFromInertiaData(recordOfMoments(2, -1, 2)).geom().rotation.toDouble(),
                   -pi / 4);
}

TEST(EllipseFromInertiaDataTest, FindsTheEllipseThatAFinePolygonApproximates) {
  for (const double angle : {0.0, 0.3, 1.2, -0.8, 2.9}) {
    Points points;
    for (int i = 0; i < 20000; ++i) {
      const double t = 2 * pi * i / 20000;
      const double x = 50 * std::cos(t);
      const double y = 20 * std::sin(t);
      points.emplace_back(100 + x * std::cos(angle) - y * std::sin(angle),
                          -30 + x * std::sin(angle) + y * std::cos(angle));
    }
    const auto geom = qf_EllipseFromInertiaData(qf_InertiaDataPolygon(points)).geom();
    EXPECT_NEAR(geom.center.x(), 100, 1e-6);
    EXPECT_NEAR(geom.center.y(), -30, 1e-6);
    EXPECT_NEAR(geom.radius1, 50, 1e-5);
    EXPECT_NEAR(geom.radius2, 20, 1e-5);
    EXPECT_NEAR(betweenDirections(geom.rotation.toDouble(), angle), 0, 1e-7);
  }
}

TEST(EllipseFromInertiaDataTest, IsTheSameForAClockwisePolygon) {
  const Points points = {{0, 0}, {7, 1}, {9, 4}, {3, 6}};
  const auto there = qf_EllipseFromInertiaData(qf_InertiaDataPolygon(points)).geom();
  const Points reversed(points.rbegin(), points.rend());
  const auto back = qf_EllipseFromInertiaData(qf_InertiaDataPolygon(reversed)).geom();
  EXPECT_NEAR(back.center.distance(there.center), 0, 1e-12);
  EXPECT_NEAR(back.radius1, there.radius1, 1e-12);
  EXPECT_NEAR(back.radius2, there.radius2, 1e-12);
  EXPECT_NEAR(back.rotation.toDouble(), there.rotation.toDouble(), 1e-12);
}

TEST(EllipseFromInertiaDataTest, DoesNotUseTheArea) {
  const qcMatrix<2> matrix(5, 1, 1, 3);
  const qcEllipse expected = qf_EllipseFromInertiaData(qc_InertiaData(1, {1, 2}, matrix));
  for (const double area : {0.0, -1.0, 1e9, notANumber}) {
    EXPECT_EQ(qf_EllipseFromInertiaData(qc_InertiaData(area, {1, 2}, matrix)), expected);
  }
}

TEST(EllipseFromInertiaDataTest, TakesMomentsOfEitherSign) {
  const auto positive = qf_EllipseFromInertiaData(recordOfMoments(2, 0, 1)).geom();
  const auto negative = qf_EllipseFromInertiaData(recordOfMoments(-1, 0, -2)).geom();
  EXPECT_EQ(negative.radius1, positive.radius2);
  EXPECT_EQ(negative.radius2, positive.radius1);
  EXPECT_EQ(negative.rotation, qcRadian(0));
}

TEST(EllipseFromInertiaDataTest, ThrowsSingularWithoutABody) {
  EXPECT_THROW(qf_EllipseFromInertiaData({}), qcMathError::Singular);
  EXPECT_THROW(qf_EllipseFromInertiaData(qf_InertiaDataPolygon({})), qcMathError::Singular);
  EXPECT_THROW(qf_EllipseFromInertiaData(qf_InertiaDataPolygon({{0, 0}, {9, 9}})),
               qcMathError::Singular);
  EXPECT_THROW(qf_EllipseFromInertiaData(qf_InertiaDataPolygon({{0, 0}, {1, 1}, {2, 2}})),
               qcMathError::Singular);
}

TEST(EllipseFromInertiaDataTest, ThrowsSingularWhenAPrincipalMomentIsAtMost1em12) {
  const double above = std::nextafter(1e-12, 1.0);
  EXPECT_THROW(qf_EllipseFromInertiaData(recordOfMoments(1e-12, 0, 1e-12)), qcMathError::Singular);
  EXPECT_THROW(qf_EllipseFromInertiaData(recordOfMoments(1, 0, 1e-12)), qcMathError::Singular);
  EXPECT_THROW(qf_EllipseFromInertiaData(recordOfMoments(above, 0, 1e-12)), qcMathError::Singular);
  EXPECT_THROW(qf_EllipseFromInertiaData(recordOfMoments(1, 0, 0)), qcMathError::Singular);
  EXPECT_NO_THROW(qf_EllipseFromInertiaData(recordOfMoments(above, 0, above)));
  EXPECT_NO_THROW(qf_EllipseFromInertiaData(recordOfMoments(-1, 0, -above)));
}

TEST(EllipseFromInertiaDataTest, ThrowsSingularForNumbersThatAreNone) {
  EXPECT_THROW(qf_EllipseFromInertiaData(recordOfMoments(notANumber, 0, 1)), qcMathError::Singular);
  EXPECT_THROW(qf_EllipseFromInertiaData(recordOfMoments(1, notANumber, 1)), qcMathError::Singular);
  EXPECT_THROW(qf_EllipseFromInertiaData(recordOfMoments(infinity, 0, infinity)),
               qcMathError::Singular);
}

TEST(EllipseFromInertiaDataTest, AgreesWithThePlainAnswerOnAnyRecord) {
  shapes::Random random(11);
  int ellipses = 0;
  for (int i = 0; i < 20000; ++i) {
    const double scale = std::pow(10.0, random.uniform(-14, 12));
    const double xx = scale * random.uniform(-1, 1);
    const double yy = scale * random.uniform(-1, 1) * (random.chance(0.2) ? 1e-6 : 1);
    const double xy = random.chance(0.2) ? 0.0 : scale * random.uniform(-1, 1);
    const Point center(random.uniform(), random.uniform());
    const qc_InertiaData data(scale, center, qcMatrix<2>(xx, xy, xy, yy));
    const plain::Inertia plainData{scale, center, {xx, xy, xy, yy, xx * yy - xy * xy}};
    ASSERT_TRUE(same::sameOutcome([&] { return qf_EllipseFromInertiaData(data); },
                                  [&] { return plain::ellipseOf(plainData); }))
        << xx << ' ' << xy << ' ' << yy;
    ellipses += xx * xx > 1e-20 && yy * yy > 1e-20 ? 1 : 0;
  }
  EXPECT_GT(ellipses, 1000);
}

std::pair<qcEllipse, double> fitted(const Points& points) {
  qcEllipse ellipse(qcCircle({9, 9}, 9));
  double residual = notANumber;
  qf_FitEllipse(points, ellipse, residual);
  return {ellipse, residual};
}

qcEllipseFitResults ellipseFit(const Points& points) {
  qcEllipseFitResults results;
  qfEllipseFit(qcEllipseFitParams(), points, results);
  return results;
}

qcCircleFitResults circleFit(const Points& points) {
  qcCircleFitResults results;
  qfCircleFit(qcCircleFitParams(), points, results);
  return results;
}

/// Points near the ellipse with semi-axes 8 and 3, turned by 0.4 around (20, 10).
Points nearEllipse(double noise) {
  shapes::Random random(3);
  Points points;
  for (int i = 0; i < 40; ++i) {
    const double t = 2 * pi * i / 40;
    const double x = (8 + noise * random.uniform(-1, 1)) * std::cos(t);
    const double y = (3 + noise * random.uniform(-1, 1)) * std::sin(t);
    points.emplace_back(20 + x * std::cos(0.4) - y * std::sin(0.4),
                        10 + x * std::sin(0.4) + y * std::cos(0.4));
  }
  return points;
}

/// Points that only a circle fits: the ellipse fit throws.
const Points circleOnly[] = {
    {{5, 0}, {0, 5}, {-5, 0}},
    {{5, 0}, {0, 5}, {-5, 0}, {0, -5.5}},
    {{5, 0}, {0, 5}, {-5, 0}, {5, 0}, {0, 5}, {-5, 0}, {5, 0}},
};

/// Points that nothing fits: both fits throw.
const Points hopeless[] = {
    {},
    {{1, 2}},
    {{1, 2}, {3, 4}},
    Points(7, {1, 2}),
    {{0, 0}, {1, 1}, {2, 2}, {3, 3}, {4, 4}, {5, 5}},
    {{0, 0}, {1, 0}, {0, 1}, {1, 1}, {2, 3}, {notANumber, 2}},
    {{0, 0}, {1, 0}, {0, 1}, {1, 1}, {2, 3}, {2, infinity}},
    {{0, 0}, {notANumber, 0}, {0, 1}},
};

TEST(FitEllipseTest, GivesTheEllipseAndResidualOfTheEllipseFit) {
  for (const double noise : {0.0, 0.1, 0.5}) {
    const Points points = nearEllipse(noise);
    const qcEllipseFitResults expected = ellipseFit(points);
    EXPECT_EQ(fitted(points), std::pair(expected.ellipse(), expected.residual()));
  }
}

TEST(FitEllipseTest, FindsTheEllipseThatThePointsLieOn) {
  const auto [ellipse, residual] = fitted(nearEllipse(0));
  EXPECT_NEAR(ellipse.geom().center.x(), 20, 1e-9);
  EXPECT_NEAR(ellipse.geom().center.y(), 10, 1e-9);
  EXPECT_NEAR(ellipse.geom().radius1, 8, 1e-9);
  EXPECT_NEAR(ellipse.geom().radius2, 3, 1e-9);
  EXPECT_NEAR(ellipse.geom().rotation.toDouble(), 0.4, 1e-9);
  EXPECT_NEAR(residual, 0, 1e-9);
}

TEST(FitEllipseTest, GivesTheCircleAndItsResidualWhereNoEllipseFits) {
  for (const Points& points : circleOnly) {
    ASSERT_THROW(ellipseFit(points), qcException);
    const qcCircleFitResults expected = circleFit(points);
    const auto [ellipse, residual] = fitted(points);
    EXPECT_EQ(ellipse, qcEllipse(expected.circle()));
    EXPECT_EQ(residual, expected.residual());
    EXPECT_EQ(ellipse.geom().radius1, ellipse.geom().radius2);
    EXPECT_GT(ellipse.geom().radius1, 1);
    EXPECT_GE(residual, 0);
  }
}

TEST(FitEllipseTest, GivesADefaultEllipseAndMinusOneWhereNothingFits) {
  for (const Points& points : hopeless) {
    ASSERT_THROW(ellipseFit(points), qcException);
    ASSERT_THROW(circleFit(points), qcException);
    EXPECT_EQ(fitted(points), std::pair(qcEllipse(), -1.0)) << points.size() << " points";
  }
}

/// Which of the fits take these points: 0 the ellipse fit, 1 only the circle fit, 2 neither.
std::size_t levelOf(const Points& points) {
  try {
    ellipseFit(points);
    return 0;
  } catch (const qcException&) {
  }
  try {
    circleFit(points);
    return 1;
  } catch (const qcException&) {
  }
  return 2;
}

TEST(FitEllipseTest, NeverThrowsWhateverThePoints) {
  int seen[3] = {};
  for (std::uint64_t seed = 0; seed < 3000; ++seed) {
    const shapes::Shape shape = shapes::any(seed, 60);
    const std::size_t level = levelOf(shape.points);
    const auto [ellipse, residual] = fitted(shape.points);
    EXPECT_EQ(residual == -1.0, level == 2) << shape.name;
    EXPECT_EQ(ellipse == qcEllipse(), level == 2) << shape.name;
    EXPECT_TRUE(level == 2 || residual >= 0) << residual << ' ' << shape.name;
    ++seen[level];
  }
  EXPECT_GT(seen[0], 1000);
  EXPECT_GT(seen[1], 30);
  EXPECT_GT(seen[2], 100);
}

TEST(FitEllipseTest, OfEdgeElementsIsThatOfTheirPositions) {
  const auto expectSame = [](const Points& points) {
    std::vector<qcEdgelet> edgelets;
    for (const Point& p : points)
      edgelets.emplace_back(p, static_cast<unsigned short>(7), qcAngle8(9));
    qcEllipse ellipse(qcCircle({9, 9}, 9));
    double residual = notANumber;
    qf_FitEllipse(edgelets, ellipse, residual);
    EXPECT_EQ(std::pair(ellipse, residual), fitted(points));
  };
  expectSame(nearEllipse(0.3));
  for (const Points& points : circleOnly) expectSame(points);
  for (const Points& points : hopeless) expectSame(points);
}

TEST(StdDevTest, DividesByTheNumberOfValues) {
  EXPECT_EQ(qf_StdDev({1, 2, 3, 4}), std::sqrt(1.25));
  EXPECT_EQ(qf_StdDev({-4, 4}), 4.0);
}

TEST(StdDevTest, OfEqualValuesIsZero) {
  EXPECT_EQ(qf_StdDev({7}), 0.0);
  EXPECT_EQ(qf_StdDev({2.5, 2.5, 2.5, 2.5}), 0.0);
}

TEST(StdDevTest, OfNoValuesIsNotANumber) { EXPECT_TRUE(std::isnan(qf_StdDev({}))); }

TEST(StdDevTest, MultipliesWithTheReciprocalOfTheCount) {
  // 49 * (1 / 49) rounds to less than 1; a quotient would give 0 here.
  const std::vector<double> values(49, 1.0);
  EXPECT_NE(qf_StdDev(values), 0.0);
  EXPECT_NEAR(qf_StdDev(values), 0.0, 1e-14);
}

TEST(StdDevTest, AgreesWithThePlainAnswer) {
  shapes::Random random(5);
  for (int i = 0; i < 2000; ++i) {
    std::vector<double> values(random.below(60));
    for (double& value : values) value = random.uniform(-1e3, 1e6);
    if (random.chance(0.05) && !values.empty())
      values.back() = random.chance(0.5) ? notANumber : infinity;
    ASSERT_TRUE(same::same(qf_StdDev(values), plain::standardDeviation(values))) << i;
  }
}

}  // namespace
