// SPDX-License-Identifier: MIT
//
// Moments of polygons: against formulas of the figures that have one, and bit for bit against a
// second implementation (testing/plain/moments.h) on thousands of shapes.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <ostream>
#include <vector>

#include <cntr/inertia.h>
#include <gtest/gtest.h>
#include <testing/plain/moments.h>
#include <testing/shapes/numbers.h>
#include <testing/shapes/shapes.h>

#include <testing/twin/same.h>
#include <tests/cntr/figures.h>

namespace {

using figures::rectangle;
using figures::reversed;
using Point = qcVector<2>;
using Points = std::vector<Point>;

std::vector<qcEdgelet> edgeletsAt(const Points& points) {
  std::vector<qcEdgelet> edgelets;
  for (const Point& p : points) edgelets.emplace_back(p, 100, qcAngle8(17));
  return edgelets;
}

const Points unitSquare = rectangle(0, 0, 1, 1);

// Expected values of the three functions, from formulas.
struct Body {
  double area = 0.0;
  Point center;
  double xx = 0.0;
  double yy = 0.0;
  double xy = 0.0;
};

/// Expects `actual` to be `expected` within a few roundings of the largest number involved.
void expectNear(const qc_InertiaData& actual, const Body& expected) {
  const double size = std::max({expected.center.len(), 1.0});
  const double moment = std::max(expected.xx, expected.yy);
  EXPECT_NEAR(actual.area(), expected.area, 1e-12 * std::abs(expected.area));
  EXPECT_NEAR(actual.centerOfMass().x(), expected.center.x(), 1e-12 * size);
  EXPECT_NEAR(actual.centerOfMass().y(), expected.center.y(), 1e-12 * size);
  EXPECT_NEAR(actual.inertiaMatrix().element(0, 0), expected.xx, 1e-11 * moment);
  EXPECT_NEAR(actual.inertiaMatrix().element(1, 1), expected.yy, 1e-11 * moment);
  EXPECT_NEAR(actual.inertiaMatrix().element(0, 1), expected.xy, 1e-11 * moment);
  EXPECT_NEAR(actual.inertiaMatrix().element(1, 0), expected.xy, 1e-11 * moment);
  EXPECT_NEAR(actual.inertiaMatrix().det(), expected.xx * expected.yy - expected.xy * expected.xy,
              1e-10 * moment * moment);
}

/// The moments of a body turned about the origin.
Body turned(const Body& body, double angle) {
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  return {body.area,
          {c * body.center.x() - s * body.center.y(), s * body.center.x() + c * body.center.y()},
          c * c * body.xx - 2 * s * c * body.xy + s * s * body.yy,
          s * s * body.xx + 2 * s * c * body.xy + c * c * body.yy,
          (c * c - s * s) * body.xy + s * c * (body.xx - body.yy)};
}

Body moved(Body body, const Point& by) {
  body.center = body.center + by;
  return body;
}

Points moved(Points points, const Point& by) {
  for (Point& p : points) p = p + by;
  return points;
}

Body rectangleBody(double x, double y, double width, double height) {
  const double area = width * height;
  return {area,
          {x + width / 2, y + height / 2},
          area * width * width / 12,
          area * height * height / 12,
          0.0};
}

/// Moments of a triangle about its centroid: a twelfth of its area times the sums over its corners.
Body triangleBody(const Points& corners) {
  Body body;
  const Point& a = corners[0];
  body.area = 0.5 * ((corners[1].x() - a.x()) * (corners[2].y() - a.y()) -
                     (corners[1].y() - a.y()) * (corners[2].x() - a.x()));
  body.center = (corners[0] + corners[1] + corners[2]) * (1.0 / 3.0);
  for (const Point& corner : corners) {
    const Point d = corner - body.center;
    body.xx += std::abs(body.area) / 12 * d.x() * d.x();
    body.yy += std::abs(body.area) / 12 * d.y() * d.y();
    body.xy += std::abs(body.area) / 12 * d.x() * d.y();
  }
  return body;
}

/// An ellipse's inscribed polygon: the regular polygon of radius 1, stretched along both axes.
Points ellipsePolygon(std::size_t n, double radiusX, double radiusY) {
  Points points = shapes::regularPolygon(n, 1.0, {0, 0});
  for (Point& p : points) p = Point(radiusX * p.x(), radiusY * p.y());
  return points;
}

Body ellipsePolygonBody(std::size_t n, double radiusX, double radiusY) {
  const double step = 2 * std::numbers::pi / static_cast<double>(n);
  const double area = static_cast<double>(n) / 2 * std::sin(step) * radiusX * radiusY;
  const double moment = area * (2 + std::cos(step)) / 12;
  return {area, {0, 0}, moment * radiusX * radiusX, moment * radiusY * radiusY, 0.0};
}

bool same(const qc_InertiaData& a, const plain::Inertia& b) {
  const qcMatrix<2>& m = a.inertiaMatrix();
  return same::same(a.area(), b.area) && same::same(a.centerOfMass(), b.center) &&
         same::same(m.element(0, 0), b.matrix.e00) && same::same(m.element(0, 1), b.matrix.e01) &&
         same::same(m.element(1, 0), b.matrix.e10) && same::same(m.element(1, 1), b.matrix.e11) &&
         same::same(m.det(), b.matrix.det);
}

plain::Inertia plainInertia(const qc_InertiaData& data) {
  const qcMatrix<2>& m = data.inertiaMatrix();
  return {data.area(),
          data.centerOfMass(),
          {m.element(0, 0), m.element(0, 1), m.element(1, 0), m.element(1, 1), m.det()}};
}

bool same(const qc_InertiaData& a, const qc_InertiaData& b) { return same(a, plainInertia(b)); }

TEST(AreaTest, OfASquareOfSide2Is4InEitherOrientation) {
  EXPECT_EQ(qf_Area(rectangle(5, 7, 2, 2)), 4.0);
  EXPECT_EQ(qf_Area(reversed(rectangle(5, 7, 2, 2))), 4.0);
}

TEST(AreaTest, OfFewerThanThreePointsIsZero) {
  EXPECT_EQ(qf_Area(Points()), 0.0);
  EXPECT_EQ(qf_Area(Points{{5, 7}}), 0.0);
  EXPECT_EQ(qf_Area(Points{{5, 7}, {11, 13}}), 0.0);
}

TEST(AreaTest, IsNeverANegativeZero) {
  EXPECT_FALSE(std::signbit(qf_Area(Points())));
  EXPECT_FALSE(std::signbit(qf_Area(Points{{0, 0}, {0, -1}, {0, -2}})));
}

TEST(AreaTest, OfLobesOfOppositeOrientationIsTheirDifference) {
  EXPECT_EQ(qf_Area(Points{{0, 0}, {2, 2}, {2, 0}, {0, 2}}), 0.0);
  EXPECT_EQ(qf_Area(Points{{0, 0}, {4, 4}, {4, 2}, {0, 6}, {0, 0}}), 8.0);
}

TEST(AreaTest, OfEdgeletsIsThatOfTheirPositions) {
  EXPECT_EQ(qf_Area(edgeletsAt(rectangle(5, 7, 2, 2))), 4.0);
  EXPECT_EQ(qf_Area(edgeletsAt(reversed(rectangle(5, 7, 2, 2)))), 4.0);
}

TEST(AreaTest, OfFewerThanThreeEdgeletsIsZeroWhateverTheirPositions) {
  EXPECT_EQ(qf_Area(std::vector<qcEdgelet>()), 0.0);
  EXPECT_EQ(qf_Area(edgeletsAt({{notANumber, 0}})), 0.0);
  EXPECT_EQ(qf_Area(edgeletsAt({{infinity, 7}, {11, infinity}})), 0.0);
}

TEST(CenterOfMassTest, OfASquareIsItsMiddleInEitherOrientation) {
  const Points square = {{1, 1}, {3, 1}, {3, 3}, {1, 3}};
  EXPECT_EQ(qnContour::centerOfMass(square), Point(2, 2));
  EXPECT_TRUE(qfRealEq(qnContour::centerOfMass(reversed(square)), Point(2, 2), 1e-15));
}

TEST(CenterOfMassTest, OfFewerThanThreePointsIsTheOrigin) {
  EXPECT_EQ(qnContour::centerOfMass({}), Point(0, 0));
  EXPECT_EQ(qnContour::centerOfMass({{5, 7}}), Point(0, 0));
  EXPECT_EQ(qnContour::centerOfMass({{5, 7}, {11, 13}}), Point(0, 0));
  EXPECT_EQ(qnContour::centerOfMass({{notANumber, 7}, {11, infinity}}), Point(0, 0));
}

TEST(CenterOfMassTest, GoesByTwoMoreNames) {
  const Points points = {{1, 1}, {7, 2}, {8, 9}, {0, 5}};
  const Point center = qnContour::centerOfMass(points);
  EXPECT_EQ(qf_CenterOfMass(points), center);
  EXPECT_EQ(qf_CenterOfMass(edgeletsAt(points)), center);
  EXPECT_EQ(qf_CenterOfMass(edgeletsAt({{5, 7}, {11, 13}})), Point(0, 0));
}

/// A triangle of area `w` / 2.
Points triangleOfTwiceTheArea(double w) { return {{0, 0}, {1, 0}, {1, w}}; }

TEST(CenterOfMassTest, IsTheOriginUpToTwiceAnAreaOf1e6) {
  EXPECT_EQ(qnContour::centerOfMass(triangleOfTwiceTheArea(1e-6)), Point(0, 0));
  EXPECT_EQ(qnContour::centerOfMass(triangleOfTwiceTheArea(-1e-6)), Point(0, 0));
  const double above = std::nextafter(1e-6, 1.0);
  EXPECT_NEAR(qnContour::centerOfMass(triangleOfTwiceTheArea(above)).x(), 2.0 / 3.0, 1e-15);
  EXPECT_NEAR(qnContour::centerOfMass(triangleOfTwiceTheArea(-above)).x(), 2.0 / 3.0, 1e-15);
}

TEST(CenterOfMassTest, OfAShapeAThousandthAcrossIsTheOrigin) {
  EXPECT_EQ(qnContour::centerOfMass(rectangle(50, 50, 0.0007, 0.0007)), Point(0, 0));
  EXPECT_NEAR(qnContour::centerOfMass(rectangle(50, 50, 0.0015, 0.0015)).x(), 50.00075, 1e-5);
}

/// A thin triangle with a sliver of area `w` / 2 that reaches far from the origin.
Points withSliver(double w) {
  constexpr double far = 0x1p40;
  return {{0, 0}, {far, 0}, {far, w / far}, {0, 0}, {1, 0}, {1, 1e-5}};
}

TEST(CenterOfMassTest, LeavesEdgesOutThatSpan1e15OrLessWithTheOrigin) {
  const Point without = qnContour::centerOfMass({{0, 0}, {1, 0}, {1, 1e-5}});
  EXPECT_EQ(qnContour::centerOfMass(withSliver(1e-15)), without);
  EXPECT_EQ(qnContour::centerOfMass(withSliver(-1e-15)), without);
  EXPECT_GT(qnContour::centerOfMass(withSliver(std::nextafter(1e-15, 1.0))).x(), without.x() + 50);
  EXPECT_LT(qnContour::centerOfMass(withSliver(-std::nextafter(1e-15, 1.0))).x(), without.x() - 50);
}

TEST(CenterOfMassTest, OfAPolygonThroughTheOriginIsThatOfItsOtherEdges) {
  EXPECT_EQ(qnContour::centerOfMass(rectangle(0, 0, 2, 2)), Point(1, 1));
  EXPECT_EQ(qnContour::centerOfMass({{-1, 0}, {1, 0}, {1, 2}, {-1, 2}}), Point(0, 1));
}

TEST(CenterOfMassTest, DoesNotThrowOnSliversOrNumbersThatAreNotFinite) {
  EXPECT_NO_THROW(qnContour::centerOfMass({{1, 1}, {2, 2}, {3, 3}}));
  EXPECT_NO_THROW(qnContour::centerOfMass({{1e8, 1e8}, {2e8, 2e8 + 1e-7}, {3e8, 3e8}}));
  EXPECT_NO_THROW(qnContour::centerOfMass({{notANumber, 1}, {2, infinity}, {3, 3}}));
}

TEST(InertiaOfAPolygonTest, OfFewerThanThreePointsIsNothing) {
  for (const Points& points : {Points(), Points{{5, 7}}, Points{{5, 7}, {11, 13}}}) {
    EXPECT_TRUE(same(qf_InertiaDataPolygon(points), plain::Inertia()));
  }
}

TEST(InertiaOfAPolygonTest, OfTheUnitSquareIsATwelfthInBothDirections) {
  expectNear(qf_InertiaDataPolygon(unitSquare), {1, {0.5, 0.5}, 1.0 / 12, 1.0 / 12, 0});
}

TEST(InertiaOfAPolygonTest, OfTheClockwiseSquareHasNegativeAreaAndTheSameMatrix) {
  expectNear(qf_InertiaDataPolygon(reversed(unitSquare)), {-1, {0.5, 0.5}, 1.0 / 12, 1.0 / 12, 0});
}

TEST(InertiaOfAPolygonTest, OfRectanglesIsThatOfTheFormula) {
  expectNear(qf_InertiaDataPolygon(rectangle(3, -2, 8, 2)), rectangleBody(3, -2, 8, 2));
  expectNear(qf_InertiaDataPolygon(rectangle(-1000, 500, 0.5, 40)),
             rectangleBody(-1000, 500, 0.5, 40));
}

TEST(InertiaOfAPolygonTest, OfTurnedRectanglesIsTheTurnedFormula) {
  for (int degrees = -180; degrees <= 180; degrees += 15) {
    const double angle = degrees * std::numbers::pi / 180;
    Points points = rectangle(10, 20, 8, 2);
    shapes::rotate(points, angle);
    expectNear(qf_InertiaDataPolygon(points), turned(rectangleBody(10, 20, 8, 2), angle));
  }
}

const std::vector<Points> triangles = {
    {{0, 0}, {4, 0}, {0, 3}},              // right-angled
    {{0, 0}, {10, 0}, {12, 1}},            // the apex beyond the end of its base
    {{0, 0}, {10, 0}, {-3, 1}},            // before its start
    {{5, 5}, {6, 9}, {-7, 8}},             // oblique
    {{100, 100}, {101, 100}, {100, 140}},  // slender
};

TEST(InertiaOfAPolygonTest, OfTrianglesIsThatOfTheFormulaFromEveryCorner) {
  for (Points corners : triangles) {
    for (int i = 0; i < 3; ++i) {
      std::rotate(corners.begin(), corners.begin() + 1, corners.end());
      expectNear(qf_InertiaDataPolygon(corners), triangleBody(corners));
      expectNear(qf_InertiaDataPolygon(reversed(corners)), triangleBody(reversed(corners)));
    }
  }
}

TEST(InertiaOfAPolygonTest, OfPolygonsInEllipsesIsThatOfTheFormula) {
  for (const std::size_t n : {5U, 12U, 1000U}) {
    for (const double angle : {0.0, 0.3, 1.0, 2.0, -1.2}) {
      Points points = ellipsePolygon(n, 7, 2);
      shapes::rotate(points, angle);
      const Body body = turned(ellipsePolygonBody(n, 7, 2), angle);
      expectNear(qf_InertiaDataPolygon(points), body);
      expectNear(qf_InertiaDataPolygon(moved(points, {30, -20})), moved(body, {30, -20}));
    }
  }
}

TEST(InertiaOfAPolygonTest, OfOutlinesWithReflexCornersAddsAndSubtracts) {
  const Points corner = {{0, 0}, {6, 0}, {6, 1}, {1, 1}, {1, 5}, {0, 5}};
  const qc_InertiaData expected =
      qf_InertiaDataPolygon(rectangle(0, 0, 6, 1)) + qf_InertiaDataPolygon(rectangle(0, 1, 1, 4));
  const qcMatrix<2>& m = expected.inertiaMatrix();
  EXPECT_EQ(expected.area(), 10.0);
  expectNear(qf_InertiaDataPolygon(corner),
             {10.0, expected.centerOfMass(), m.element(0, 0), m.element(1, 1), m.element(0, 1)});
}

TEST(InertiaOfAPolygonTest, MovesWithThePolygon) {
  for (std::uint64_t seed = 1; seed <= 50; ++seed) {
    const Points points = shapes::smoothStar(20 + seed, seed);
    const qc_InertiaData here = qf_InertiaDataPolygon(points);
    const qcMatrix<2>& m = here.inertiaMatrix();
    const Body body{here.area(), here.centerOfMass(), m.element(0, 0), m.element(1, 1),
                    m.element(0, 1)};
    expectNear(qf_InertiaDataPolygon(moved(points, {-640, 333.25})), moved(body, {-640, 333.25}));
  }
}

TEST(InertiaOfAPolygonTest, OfAConvexPolygonReversedDiffersInTheSignOfItsAreaAlone) {
  Points points = ellipsePolygon(17, 7, 2);
  shapes::rotate(points, 0.7);
  Body body = turned(ellipsePolygonBody(17, 7, 2), 0.7);
  body.area = -body.area;
  expectNear(qf_InertiaDataPolygon(reversed(points)), body);
}

TEST(InertiaOfAPolygonTest, OfEqualPointsIsNothing) {
  const qc_InertiaData data = qf_InertiaDataPolygon({{5, 7}, {5, 7}, {5, 7}});
  EXPECT_EQ(data.area(), 0.0);
  EXPECT_EQ(data.inertiaMatrix(), qcMatrix<2>(0, 0, 0, 0));
}

TEST(InertiaDataTest, OfNothingIsZeroThroughout) {
  EXPECT_TRUE(same(qc_InertiaData(), plain::Inertia()));
  EXPECT_TRUE(same(qc_InertiaData(0.0), plain::Inertia()));
}

TEST(InertiaDataTest, HoldsWhatItIsMadeOf) {
  const qc_InertiaData data(-3, {1, 2}, qcMatrix<2>(4, 5, 6, 7));
  EXPECT_EQ(data.area(), -3.0);
  EXPECT_EQ(data.centerOfMass(), Point(1, 2));
  EXPECT_EQ(data.inertiaMatrix(), qcMatrix<2>(4, 5, 6, 7));
}

/// A matrix that remembers the determinant of its earlier elements.
qcMatrix<2> withOldDeterminant() {
  qcMatrix<2> matrix(2, 0, 0, 2);
  matrix.element(0, 0, 50);
  return matrix;
}

TEST(InertiaDataTest, KeepsTheDeterminantThatTheMatrixRemembers) {
  EXPECT_EQ(qc_InertiaData(1, {1, 2}, withOldDeterminant()).inertiaMatrix().det(), 4.0);
}

TEST(InertiaDataTest, CopiesEveryMember) {
  const qc_InertiaData data(-3, {1, 2}, withOldDeterminant());
  qc_InertiaData assigned;
  assigned = data;
  EXPECT_TRUE(same(assigned, data));
}

TEST(InertiaSumTest, WithNothingIsTheOtherBodyExactly) {
  const qc_InertiaData body(3, {0.1, 0.2}, withOldDeterminant());
  EXPECT_TRUE(same(qc_InertiaData() + body, body));
  EXPECT_TRUE(same(body + qc_InertiaData(), body));
  const qc_InertiaData masslessElsewhere(-0.0, {9, 9}, qcMatrix<2>(9, 9, 9, 9));
  EXPECT_TRUE(same(masslessElsewhere + body, body));
  EXPECT_TRUE(same(body + masslessElsewhere, body));
}

TEST(InertiaSumTest, OfTwoHalvesIsTheWhole) {
  expectNear(
      qf_InertiaDataPolygon(rectangle(0, 0, 3, 2)) + qf_InertiaDataPolygon(rectangle(3, 0, 5, 2)),
      rectangleBody(0, 0, 8, 2));
}

TEST(InertiaSumTest, OfTwoClockwiseHalvesIsTheClockwiseWhole) {
  Body body = rectangleBody(0, 0, 8, 2);
  body.area = -body.area;
  expectNear(qf_InertiaDataPolygon(reversed(rectangle(0, 0, 3, 2))) +
                 qf_InertiaDataPolygon(reversed(rectangle(3, 0, 5, 2))),
             body);
}

TEST(InertiaSumTest, OfABodyOfArea4AndAHoleOfArea1SubtractsTheHole) {
  const qc_InertiaData body(4, {1, 2}, qcMatrix<2>(10, 1, 1, 20));
  const qc_InertiaData hole(-1, {2, 5}, qcMatrix<2>(0.5, 0.25, 0.25, 0.75));
  // The centre is (4 (1, 2) - (2, 5)) / 3 = (2/3, 1). From there the body lies at (1/3, 1), the
  // hole at (4/3, 4).
  const Body expected{3,
                      {2.0 / 3, 1},
                      10 - 0.5 + 4.0 / 9 - 16.0 / 9,
                      20 - 0.75 + 4 - 16,
                      1 - 0.25 + 4.0 / 3 - 16.0 / 3};
  expectNear(body + hole, expected);
  expectNear(hole + body, expected);
}

TEST(InertiaSumTest, OfAPlateAndAHoleIsThatOfTheFormula) {
  // A plate of 8 by 6 with a hole of 2 by 1, its middle at (1, 2) from the plate's.
  const Body plate = rectangleBody(-4, -3, 8, 6);
  const Body hole = rectangleBody(0, 1.5, 2, 1);
  const double area = plate.area - hole.area;
  const Point center = hole.center * (-hole.area / area);
  const auto left = [&](double ofPlate, double ofHole, double plateArm, double holeArm) {
    return ofPlate + plate.area * plateArm - ofHole - hole.area * holeArm;
  };
  const Point p = plate.center - center;
  const Point h = hole.center - center;
  const Body expected{area, center, left(plate.xx, hole.xx, p.x() * p.x(), h.x() * h.x()),
                      left(plate.yy, hole.yy, p.y() * p.y(), h.y() * h.y()),
                      left(plate.xy, hole.xy, p.x() * p.y(), h.x() * h.y())};
  expectNear(qf_InertiaDataPolygon(rectangle(-4, -3, 8, 6)) +
                 qf_InertiaDataPolygon(reversed(rectangle(0, 1.5, 2, 1))),
             expected);
}

TEST(InertiaSumTest, OfABodyAndALargerHoleHasNegativeAreaAndMoments) {
  const qc_InertiaData body(1, {0, 0}, qcMatrix<2>(1, 0, 0, 1));
  const qc_InertiaData hole(-2, {0, 0}, qcMatrix<2>(8, 0, 0, 8));
  for (const qc_InertiaData& sum : {body + hole, hole + body}) {
    EXPECT_EQ(sum.area(), -1.0);
    EXPECT_EQ(sum.inertiaMatrix(), qcMatrix<2>(-7, 0, 0, -7));
    EXPECT_EQ(sum.inertiaMatrix().det(), 49.0);
  }
}

TEST(InertiaSumTest, OfAreasThatCancelHasItsCentreAtTheOrigin) {
  const qc_InertiaData body(2, {5, 5}, qcMatrix<2>(3, 0, 0, 3));
  const qc_InertiaData hole(-2, {5, 5}, qcMatrix<2>(1, 0, 0, 1));
  const qc_InertiaData sum = body + hole;
  EXPECT_EQ(sum.area(), 0.0);
  EXPECT_EQ(sum.centerOfMass(), Point(0, 0));
  EXPECT_EQ(sum.inertiaMatrix(), qcMatrix<2>(2, 0, 0, 2));
}

TEST(InertiaSumTest, CountsAreasThatCancelUpTo1e16AsCancelled) {
  const qc_InertiaData none(0.5e-16, {4, 4});
  EXPECT_EQ((none + qc_InertiaData(0.5e-16, {4, 4})).centerOfMass(), Point(0, 0));
  EXPECT_EQ((none + qc_InertiaData(0.5000001e-16, {4, 4})).centerOfMass().x(), 4.0);
}

TEST(InertiaSumTest, OfAreasWhoseProductUnderflowsAddsWithTheirSigns) {
  const qc_InertiaData body(1e-200, {3, 0}, qcMatrix<2>(1, 0, 0, 1));
  const qc_InertiaData hole(-1e-200, {5, 0}, qcMatrix<2>(8, 0, 0, 8));
  EXPECT_EQ((body + hole).inertiaMatrix().element(0, 0), 9.0);
  EXPECT_EQ((hole + body).inertiaMatrix().element(0, 0), 9.0);
}

TEST(InertiaSumTest, TakesTheMixedMomentFromTheFirstRow) {
  const qc_InertiaData body(1, {0, 0}, qcMatrix<2>(1, 0.5, 77, 1));
  const qc_InertiaData sum = body + qc_InertiaData(1, {0, 0}, qcMatrix<2>(1, 0.25, 88, 1));
  EXPECT_EQ(sum.inertiaMatrix(), qcMatrix<2>(2, 0.75, 0.75, 2));
}

/// Numbers of all sizes and both signs, now and then zero, equal to others, or not finite.
double anyNumber(shapes::Random& random) {
  if (random.chance(0.05)) return 0.0;
  if (random.chance(0.02)) return random.chance(0.5) ? notANumber : infinity;
  if (random.chance(0.3)) return static_cast<double>(random.below(9)) - 4.0;
  const double exponent = random.chance(0.1) ? random.uniform(-320, 300) : random.uniform(-20, 20);
  return random.uniform(-1, 1) * std::pow(10.0, exponent);
}

qc_InertiaData anyBody(shapes::Random& random) {
  const auto number = [&random] { return anyNumber(random); };
  const double area = number();
  const double x = number();
  const double y = number();
  const double xx = number();
  const double xy = number();
  const double yx = random.chance(0.9) ? xy : number();
  return qc_InertiaData(area, {x, y}, qcMatrix<2>(xx, xy, yx, number()));
}

TEST(InertiaPropertyTest, SumsOfAnyTwoBodiesAreTheSameToTheBit) {
  shapes::Random random(1);
  for (int round = 0; round < 100000; ++round) {
    const qc_InertiaData first = anyBody(random);
    const qc_InertiaData second = anyBody(random);
    ASSERT_TRUE(same(first + second, plain::combine(plainInertia(first), plainInertia(second))))
        << round;
  }
}

/// Every shape in four ways: as drawn, reversed, and both as edge elements.
void expectSameMoments(const shapes::Shape& shape, std::uint64_t seed) {
  for (const Points& points : {shape.points, reversed(shape.points)}) {
    const Point center = plain::centerOfMass(points);
    const double area = plain::area(points);
    const std::vector<qcEdgelet> edgelets = edgeletsAt(points);
    ASSERT_TRUE(same::same(qf_Area(points), area)) << shape.name << ", seed " << seed;
    ASSERT_TRUE(same::same(qf_Area(edgelets), points.size() > 2 ? area : 0.0)) << shape.name;
    ASSERT_TRUE(same::same(qnContour::centerOfMass(points), center)) << shape.name << ' ' << seed;
    ASSERT_TRUE(same::same(qf_CenterOfMass(points), center)) << shape.name << ' ' << seed;
    ASSERT_TRUE(same::same(qf_CenterOfMass(edgelets), center)) << shape.name << ' ' << seed;
    ASSERT_TRUE(same(qf_InertiaDataPolygon(points), plain::polygonInertia(points)))
        << shape.name << ", seed " << seed;
  }
}

TEST(InertiaPropertyTest, MomentsOfSmallShapesAreTheSameToTheBit) {
  for (std::uint64_t seed = 0; seed < 20000; ++seed) {
    expectSameMoments(shapes::any(seed, 12), seed);
    if (HasFatalFailure()) return;
  }
}

TEST(InertiaPropertyTest, MomentsOfLargerShapesAreTheSameToTheBit) {
  for (std::uint64_t seed = 0; seed < 1000; ++seed) {
    expectSameMoments(shapes::any(seed, 300), seed);
    if (HasFatalFailure()) return;
  }
}

TEST(InertiaPropertyTest, MomentsWithATriangleOfExactlyTheAreaOfASliverAreTheSameToTheBit) {
  // An area of 1e-6 is that of a sliver, and its triangle is added last. In the second shape, which
  // runs as much one way as the other, the triangle runs clockwise, and the mean area is 0.
  const Points positive{{-0.5, -2e-6}, {0.5, -2e-6}, {1, -1e-6},
                        {0.5, 2e-6},   {-0.5, 2e-6}, {-1, 1e-6}};
  const Points balanced{{1, 0}, {1, -2e-6}, {0, 1}, {1, 0}, {1, 2e-6}, {0, -1}};
  expectSameMoments({"positive", positive}, 0);
  expectSameMoments({"balanced", balanced}, 0);
}

TEST(InertiaPropertyTest, MomentsFarFromTheOriginAreTheSameToTheBit) {
  for (std::uint64_t seed = 0; seed < 5000; ++seed) {
    shapes::Shape shape = shapes::any(seed, 12);
    shapes::Random random(seed);
    const double shift = std::pow(10.0, random.uniform(3, 12));
    shapes::scaleAndShift(shape.points, std::pow(10.0, random.uniform(-6, 6)), {shift, -shift});
    expectSameMoments(shape, seed);
    if (HasFatalFailure()) return;
  }
}

TEST(InertiaPropertyTest, MomentsOfTheTimedShapesAreTheSameToTheBit) {
  for (const std::size_t n : {10U, 1000U, 20000U}) {
    for (const Points& points : {shapes::smoothStar(n), shapes::spikyStar(n), shapes::comb(n),
                                 shapes::crossingStar(n), shapes::spiral(n, 5)}) {
      expectSameMoments({"a timed shape", points, true}, n);
      if (HasFatalFailure()) return;
    }
  }
}

}  // namespace
