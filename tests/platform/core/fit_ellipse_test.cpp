// SPDX-License-Identifier: MIT
//
// Ellipse fits: ellipses that are recovered, failures, noise, parameters.

#include <platform/core/fit.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <platform/core/xform.h>

#include "fit_points.h"

namespace {

using namespace fit_points;

qcEllipseFitResults fitEllipse(const Points& points,
                               const qcEllipseFitParams& params = qcEllipseFitParams()) {
  qcEllipseFitResults results;
  qfEllipseFit(params, points, results);
  return results;
}

/// The largest of the errors of the centre over the first radius, of each radius over itself, and
/// of the direction.
double errorOf(const Geometry& fitted, const Geometry& truth) {
  const double turn = std::remainder(fitted.rotation.toDouble() - truth.rotation.toDouble(), pi);
  return std::max({distance(fitted.center, truth.center) / truth.radius1,
                   std::abs(fitted.radius1 / truth.radius1 - 1.0),
                   std::abs(fitted.radius2 / truth.radius2 - 1.0), std::abs(turn)});
}

// Ellipses that are recovered. The error of the answer is a small multiple of the rounding of the
// points, which is epsilon times their distance from the origin.

TEST(EllipseFitTest, GivesBackAnEllipseOfAnyScaleAndPlace) {
  for (const double scale : {1e-300, 1e-3, 1.0, 1e5, 1e250}) {
    for (const double radiiAway : {0.0, 1.0, 100.0, 1e4}) {
      const Point center = Point(radiiAway, -0.7 * radiiAway) * scale;
      const Geometry truth = ellipse(center, scale, 0.6 * scale, 0.7);
      const qcEllipseFitResults fitted = fitEllipse(arcOf(truth, 40));
      EXPECT_LT(errorOf(fitted.ellipse().geom(), truth), 20 * epsilon * (1.0 + radiiAway));
      EXPECT_LT(fitted.residual(), 4 * epsilon * (1.0 + radiiAway) * scale);
    }
  }
}

TEST(EllipseFitTest, GivesBackAnEllipseOfAnyDirection) {
  for (int degrees = -89; degrees <= 90; ++degrees) {
    const Geometry truth = ellipse(Point(30, 20), 5, 4, degrees * pi / 180);
    const Geometry fitted = fitEllipse(arcOf(truth, 12)).ellipse().geom();
    EXPECT_LT(errorOf(fitted, truth), 1e-13) << degrees;
    EXPECT_NEAR(fitted.rotation.toDouble(), degrees * pi / 180, 1e-12);
    EXPECT_EQ(fitted.skew, qcRadian(0.0));
  }
}

TEST(EllipseFitTest, GivesBackNarrowEllipses) {
  for (const double ratio : {0.999, 0.1, 1e-2, 1e-4, 1e-6}) {
    for (const double rotation : {0.0, 0.7, pi / 2}) {
      const Geometry truth = ellipse(Point(1, 2), 10, 10 * ratio, rotation);
      const double error = errorOf(fitEllipse(arcOf(truth, 40)).ellipse().geom(), truth);
      // The direction is lost as the ellipse gets round, the rest as it gets flat.
      EXPECT_LT(error, 50 * epsilon * (1.0 / (1.0 - ratio) + 1.0 / ratio)) << ratio;
    }
  }
}

TEST(EllipseFitTest, TheFirstRadiusIsTheLarger) {
  const Geometry fitted = fitEllipse(arcOf(ellipse(Point(), 3, 5, 0.25), 20)).ellipse().geom();
  EXPECT_NEAR(fitted.radius1, 5, 1e-14);
  EXPECT_NEAR(fitted.radius2, 3, 1e-14);
  EXPECT_NEAR(fitted.rotation.toDouble(), 0.25 - pi / 2, 1e-14);
}

TEST(EllipseFitTest, TheFirstRadiusIsNeverTheLesserAlsoOfCircles) {
  for (int i = 0; i < 1000; ++i) {
    const Geometry fitted = fitEllipse(arcOf(circle(Point(i, 7), 10.0 + i), 12)).ellipse().geom();
    EXPECT_LE(fitted.radius2, fitted.radius1) << i;
  }
}

TEST(EllipseFitTest, TwoPointsCountAsOneOnlyWithinRoundingErrors) {
  const Geometry truth = ellipse(Point(3, -2), 10, 6, 0.7);
  const auto fifthBesideTheFirst = [&truth](double apart) {
    Points points = arcOf(truth, 4);
    points.push_back(arcOf(truth, 1, apart)[0]);
    return points;
  };
  EXPECT_LT(fitEllipse(fifthBesideTheFirst(5e-13)).residual(), 1e-13);
  EXPECT_EQ(failureOf([&] { fitEllipse(fifthBesideTheFirst(5e-15)); }),
            L"the points do not determine an ellipse");
}

TEST(EllipseFitTest, GivesBackAnEllipseFromAnArc) {
  // What an arc of extent t tells of the whole is of the order t^4: the error grows as t^-5.
  for (const double extent : {3.0, 1.0, 0.3, 0.1}) {
    const Geometry truth = ellipse(Point(3, -2), 10, 6, 0.7);
    const double error = errorOf(fitEllipse(arcOf(truth, 40, 1.0, extent)).ellipse().geom(), truth);
    EXPECT_LT(error, 200 * epsilon * (1.0 + std::pow(extent, -5.0))) << extent;
  }
}

TEST(EllipseFitTest, FivePointsAreEnough) {
  const Geometry truth = ellipse(Point(3, -2), 10, 6, 0.7);
  EXPECT_LT(errorOf(fitEllipse(arcOf(truth, 5)).ellipse().geom(), truth), 1e-13);
}

TEST(EllipseFitTest, ManyPointsLoseNoDigits) {
  const Geometry truth = ellipse(Point(3, -2), 10, 6, 0.7);
  EXPECT_LT(errorOf(fitEllipse(arcOf(truth, 100000)).ellipse().geom(), truth), 1e-13);
}

TEST(EllipseFitTest, RepeatedPointsCountAsOften) {
  Points points = withNoise(arcOf(ellipse(Point(3, -2), 10, 6, 0.7), 20), 0.5);
  Points twice = points;
  twice.insert(twice.end(), points.begin(), points.end());
  const qcEllipseFitResults once = fitEllipse(points), again = fitEllipse(twice);
  EXPECT_LT(errorOf(again.ellipse().geom(), once.ellipse().geom()), 1e-13);
  EXPECT_NEAR(again.residual(), once.residual(), 1e-13);
}

TEST(EllipseFitTest, GivesBackACircleWithTheReferenceDirection) {
  for (const double reference : {0.0, 1.0, -7.0}) {
    const qcEllipseFitParams params(qcEllipseFitDefs::eLeastSquares, qcRadian(reference));
    const Geometry fitted =
        fitEllipse(arcOf(circle(Point(30, 20), 5), 40), params).ellipse().geom();
    EXPECT_NEAR(fitted.radius1, 5, 1e-13);
    EXPECT_NEAR(fitted.radius2, 5, 1e-13);
    EXPECT_GE(fitted.radius1, fitted.radius2);
    EXPECT_EQ(fitted.rotation, qcRadian(reference));
  }
}

TEST(EllipseFitTest, TheRotationIsWithinAQuarterTurnOfTheReference) {
  const Points points = arcOf(ellipse(Point(3, -2), 10, 6, 0.7), 40);
  for (double reference = -9.0; reference < 9.0; reference += 0.37) {
    const qcEllipseFitParams params(qcEllipseFitDefs::eLeastSquares, qcRadian(reference));
    const double rotation = fitEllipse(points, params).ellipse().geom().rotation.toDouble();
    EXPECT_GT(rotation, reference - pi / 2);
    EXPECT_LE(rotation, reference + pi / 2);
    EXPECT_NEAR(std::remainder(rotation - 0.7, pi), 0.0, 1e-13);
  }
}

TEST(EllipseFitTest, ExactlyAcrossTheReferenceIsAPositiveQuarterTurn) {
  const Points upright = {{0, 2},     {0, -2},     {1, 0},      {-1, 0},
                          {0.6, 1.6}, {-0.6, 1.6}, {0.6, -1.6}, {-0.6, -1.6}};
  EXPECT_EQ(fitEllipse(upright).ellipse().geom().rotation, qcRadian(pi / 2));
  const qcEllipseFitParams params(qcEllipseFitDefs::eLeastSquares, qcRadian(pi));
  EXPECT_EQ(fitEllipse(upright, params).ellipse().geom().rotation, qcRadian(pi + pi / 2));
}

TEST(EllipseFitTest, TheResidualIsTheRootMeanSquareDistance) {
  // Points moved outwards and inwards by turns along the normals of a long ellipse.
  const Geometry truth = ellipse(Point(100, 50), 80, 20, 0.4);
  Points points = arcOf(truth, 400);
  for (std::size_t i = 0; i < points.size(); ++i) {
    const double t = 2.0 * pi * static_cast<double>(i) / static_cast<double>(points.size());
    const Point normal = Point(20 * std::cos(t), 80 * std::sin(t)).unit();
    const qcMatrix<2> turn(qcRadian(0.4), qcRadian(0.4), 1, 1);
    points[i] = points[i] + turn * normal * (i % 2 == 0 ? 1e-4 : -1e-4);
  }
  const qcEllipseFitResults fitted = fitEllipse(points);
  EXPECT_NEAR(fitted.residual(), 1e-4, 1e-8);
  EXPECT_LT(errorOf(fitted.ellipse().geom(), truth), 1e-6);
}

TEST(EllipseFitTest, NoiseIsAveraged) {
  const Geometry truth = ellipse(Point(640, 480), 450, 300, 0.7);
  const qcEllipseFitResults fitted = fitEllipse(withNoise(arcOf(truth, 10000), 0.5));
  EXPECT_LT(errorOf(fitted.ellipse().geom(), truth), 1e-4);
  EXPECT_NEAR(fitted.residual(), 0.5, 0.02);
}

RC_GTEST_PROP(EllipseFitTest, FollowsAffineMaps, ()) {
  // The best ellipse of mapped points is the mapped best ellipse: F stays the same at each point.
  const auto number = [] { return *rc::gen::inRange(-100, 101) / 32.0; };
  const qcMatrix<2> matrix(number(), number(), number(), number());
  RC_PRE(std::abs(matrix.det()) > 0.1);
  const qcXform<2> map(matrix, Point(number(), number()));
  const Points points =
      withNoise(arcOf(ellipse(Point(3, -2), 10, 6, 0.7), 30), 0.5, *rc::gen::arbitrary<unsigned>());
  Points mapped;
  for (const Point& p : points) mapped.push_back(map * p);
  const Points curve = arcOf(fitEllipse(points).ellipse().geom(), 12);
  const Geometry fitted = fitEllipse(mapped).ellipse().geom();
  for (const Point& p : curve) {
    const Point q = map * p - fitted.center;
    const double cosine = std::cos(fitted.rotation.toDouble());
    const double sine = std::sin(fitted.rotation.toDouble());
    const double u = (q.x() * cosine + q.y() * sine) / fitted.radius1;
    const double v = (q.y() * cosine - q.x() * sine) / fitted.radius2;
    RC_ASSERT(std::abs(u * u + v * v - 1.0) < 1e-9);
  }
}

TEST(EllipseFitTest, SaysWhyPointsHaveNoEllipse) {
  const std::wstring notAnEllipse = L"the points lie on a curve that is not an ellipse";
  const std::wstring undetermined = L"the points do not determine an ellipse";
  const Failure failures[] = {
      {{}, L"too few points"},
      {{{0, 0}, {1, 0}, {1, 1}, {0, 1}}, L"too few points"},
      {Points(10, Point(3, 4)), L"the points coincide"},
      {{{0, 0}, {1, 1}, {2, 2}, {3, 3}, {5, 5}, {9, 9}}, L"the points lie on a line"},
      {{{1, 0}, {1, 1}, {1, 2}, {1, 3}, {1, 7}}, L"the points lie on a line"},
      {{{0, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0}, {1, 0}}, undetermined},
      {{{0, 0}, {1, 1}, {2, 2}, {3, 3}, {0, 1}}, undetermined},
      {{{0, 0}, {1, 0}, {1, 1}, {0, 1}, {0.5, 0.5}}, notAnEllipse},
      {{{0, 0}, {1, 0}, {2, 0}, {0, 1}, {1, 1}, {3, 1}, {4, 1}}, notAnEllipse},
      {{{-2, 4}, {-1, 1}, {0, 0}, {1, 1}, {2, 4}, {3, 9}}, notAnEllipse},
      {{{1, 1}, {2, 0.5}, {4, 0.25}, {8, 0.125}, {0.5, 2}, {0.25, 4}}, notAnEllipse},
      {{{1, 1}, {2, 0.5}, {-4, -0.25}, {-8, -0.125}, {0.5, 2}}, notAnEllipse}};
  for (const Failure& f : failures) {
    EXPECT_EQ(failureOf([&f] { fitEllipse(f.points); }), f.message);
  }
}

TEST(EllipseFitTest, RefusesPointsThatAreNotFinite) {
  for (const double bad : {infinity, -infinity, std::nan("")}) {
    for (const Point& p : {Point(bad, 1), Point(1, bad)}) {
      Points points = arcOf(ellipse(Point(), 3, 2, 0), 8);
      points.push_back(p);
      EXPECT_EQ(failureOf([&] { fitEllipse(points); }), L"a point is not finite");
    }
  }
}

TEST(EllipseFitTest, RefusesAReferenceThatIsNotFinite) {
  const Points points = arcOf(ellipse(Point(), 3, 2, 0), 8);
  for (const double bad : {infinity, std::nan("")}) {
    const qcEllipseFitParams params(qcEllipseFitDefs::eLeastSquares, qcRadian(bad));
    EXPECT_EQ(failureOf([&] { fitEllipse(points, params); }), L"the reference angle is not finite");
  }
}

TEST(EllipseFitTest, RoundedPointsOfOtherCurvesAreStillSeenAsSuch) {
  Points line, parabola, hyperbola;
  for (int i = -20; i <= 20; ++i) {
    const double t = i / 10.0;
    line.emplace_back(t, 0);
    parabola.emplace_back(t, t * t);
    hyperbola.emplace_back(t, std::sqrt(1.0 + t * t));
  }
  for (const double far : {0.0, 1.0, 1e3, 1e6}) {
    EXPECT_EQ(failureOf([&] { fitEllipse(elsewhere(line, far)); }), L"the points lie on a line");
    for (const Points& curve : {parabola, hyperbola}) {
      EXPECT_EQ(failureOf([&] { fitEllipse(elsewhere(curve, far)); }),
                L"the points lie on a curve that is not an ellipse");
    }
  }
}

TEST(EllipseFitTest, WhatIsNearAnotherCurveGetsItsBestEllipse) {
  Points hyperbola;
  for (int i = -20; i <= 20; ++i) hyperbola.emplace_back(i / 10.0, std::hypot(1.0, i / 10.0));
  const qcEllipseFitResults fitted = fitEllipse(withNoise(hyperbola, 1e-3));
  EXPECT_GT(fitted.ellipse().geom().radius1, 1.0);
  EXPECT_LT(fitted.residual(), 0.2);
}

TEST(EllipseFitTest, AFailedFitLeavesTheResultsAlone) {
  qcEllipseFitResults results(qcEllipse(circle(Point(1, 2), 3)), 4.0);
  EXPECT_THROW(qfEllipseFit(qcEllipseFitParams(), {}, results), qcFitError);
  EXPECT_EQ(results.ellipse(), qcEllipse(circle(Point(1, 2), 3)));
  EXPECT_EQ(results.residual(), 4.0);
}

TEST(EllipseFitTest, HugeCoordinatesDoNotOverflow) {
  const Geometry truth = ellipse(Point(2e307, -1e307), 8e307, 5e307, 0.7);
  EXPECT_LT(errorOf(fitEllipse(arcOf(truth, 20)).ellipse().geom(), truth), 1e-13);
}

TEST(EllipseFitTest, AnEllipseTooLargeForItsNumbersIsRefused) {
  // An arc at the end of the double range: the ellipse goes on far beyond it.
  const Points arc = arcOf(ellipse(Point(0, 0), 1.0, 0.6, 0.7), 40, 1.0, 0.5);
  Points huge;
  for (const Point& p : arc) huge.push_back((p - arc[0]) * 1.7e308 * 2.0);
  ASSERT_TRUE(std::all_of(huge.begin(), huge.end(), [](const Point& p) {
    return std::isfinite(p.x()) && std::isfinite(p.y());
  }));
  EXPECT_EQ(failureOf([&] { fitEllipse(huge); }), L"the curve is too large for double precision");
}

TEST(EllipseFitTest, LeavesOutTheFarthestPoints) {
  const Geometry truth = ellipse(Point(3, -2), 10, 6, 0.7);
  const Points points = withOutliers(arcOf(truth, 40), Point(40, 40), Point(-25, 5));
  const auto errorWith = [&](unsigned long count, double threshold) {
    const qcEllipseFitParams params(qcEllipseFitDefs::eLeastSquares, qcRadian(0), count, threshold);
    return errorOf(fitEllipse(points, params).ellipse().geom(), truth);
  };
  EXPECT_GT(errorWith(0, 0.5), 0.05);
  EXPECT_GT(errorWith(1, 0.5), 0.05);
  EXPECT_LT(errorWith(2, 0.5), 1e-13);
  EXPECT_LT(errorWith(20, 0.5), 1e-13) << "no more than lie beyond the threshold";
  EXPECT_GT(errorWith(2, 100.0), 0.05) << "none lies that far away";
  EXPECT_GT(errorWith(2, std::nan("")), 0.05);
}

TEST(EllipseFitTest, TheResidualIsThatOfThePointsThatWereFitted) {
  const Points points =
      withOutliers(arcOf(ellipse(Point(3, -2), 10, 6, 0.7), 40), Point(40, 40), Point(-25, 5));
  const qcEllipseFitParams params(qcEllipseFitDefs::eLeastSquares, qcRadian(0), 2, 0.5);
  EXPECT_GT(fitEllipse(points).residual(), 1.0);
  EXPECT_LT(fitEllipse(points, params).residual(), 1e-13);
}

TEST(EllipseFitTest, NeverLeavesFewerThanFivePoints) {
  const Points points = withNoise(arcOf(ellipse(Point(3, -2), 10, 6, 0.7), 12), 0.1);
  const qcEllipseFitParams params(qcEllipseFitDefs::eLeastSquares, qcRadian(0), 1000, 0.0);
  EXPECT_LT(fitEllipse(points, params).residual(), 1e-12) << "five points lie on their ellipse";
}

RC_GTEST_PROP(EllipseFitTest, FitsOrSaysWhyButNeverAnythingElse, ()) {
  const auto number = [] {
    return *rc::gen::element(0.0, 1.0, -1.0, 2.0, 0.5, 3.0, 1e-300, 1e300, -1e300, 1e-15);
  };
  Points points(*rc::gen::inRange<std::size_t>(5, 12));
  for (Point& p : points) {
    const double x = number();
    p = Point(x, number());
  }
  try {
    const qcEllipseFitResults fitted = fitEllipse(points);
    const Geometry& g = fitted.ellipse().geom();
    RC_ASSERT(std::isfinite(g.center.x()) && std::isfinite(g.center.y()));
    RC_ASSERT(std::isfinite(g.radius1) && g.radius1 >= g.radius2 && g.radius2 >= 0.0);
    RC_ASSERT(std::isfinite(g.rotation.toDouble()) && fitted.residual() >= 0.0);
  } catch (const qcFitError& e) {
    RC_ASSERT(!e.message().empty());
  }
}

}  // namespace
