// SPDX-License-Identifier: MIT
//
// The shape classes and the arithmetic behind them. Their records are in shapes_archive_test.cpp.

#include <platform/core/shapes.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <testing/shapes/numbers.h>

namespace {

using Vector = qcVector<2>;

TEST(PointTest, IsAVectorAsAnObject) {
  EXPECT_EQ(qcPoint().pos(), Vector());
  const qcPoint point(Vector(1, 2));
  const Vector& converted = point;
  EXPECT_EQ(converted, Vector(1, 2));
  EXPECT_EQ(point.distToPoint(Vector(4, 6)), 5.0);
  EXPECT_EQ(point, qcPoint(Vector(1, 2)));
  EXPECT_FALSE(point == qcPoint(Vector(1, 3)));
}

TEST(LineTest, DefaultPassesNowhere) {
  EXPECT_EQ(qcLine().pos(), Vector());
  EXPECT_EQ(qcLine().dir(), Vector());
}

TEST(LineTest, KeepsItsDirectionAsGiven) {
  const qcLine line(Vector(1, 2), Vector(30, 40));
  EXPECT_EQ(line.pos(), Vector(1, 2));
  EXPECT_EQ(line.dir(), Vector(30, 40));
  EXPECT_EQ(line, qcLine(Vector(1, 2), Vector(30, 40)));
  EXPECT_FALSE(line == qcLine(Vector(1, 2), Vector(3, 4)));
  EXPECT_FALSE(line == qcLine(Vector(0, 2), Vector(30, 40)));
}

TEST(LineTest, FindsWhereLinesMeet) {
  const qcLine flat(Vector(1, 2), Vector(4, 0));
  const qcLine steep(Vector(7, 0), Vector(0, -3));
  EXPECT_EQ(flat.intersect(steep).pos(), Vector(7, 2));
  EXPECT_EQ(steep.intersect(flat).pos(), Vector(7, 2));
}

TEST(LineTest, MeetingPointIsCalculatedFromTheFirstLine) {
  const Vector p1(0.1, 0.2), d1(0.3, 0.7), p2(5.5, -1.25), d2(-0.9, 0.4);
  const double c = d1.x() * d2.y() - d1.y() * d2.x();
  const Vector between = p2 - p1;
  const double t = (between.x() * d2.y() - between.y() * d2.x()) / c;
  EXPECT_EQ(qcLine(p1, d1).intersect(qcLine(p2, d2)).pos(), p1 + d1 * t);
}

TEST(LineTest, ParallelLinesMeetOpposite) {
  const qcLine line(Vector(1, 1), Vector(2, 0));
  EXPECT_EQ(line.intersect(qcLine(Vector(9, 5), Vector(-4, 0))).pos(), Vector(9, 1));
  EXPECT_EQ(line.intersect(line).pos(), Vector(1, 1));
}

TEST(LineTest, LinesOfZeroDirectionMeetAtTheFirstOnesNearestPoint) {
  const qcLine nowhere(Vector(3, 4), Vector());
  const qcLine line(Vector(1, 1), Vector(2, 0));
  EXPECT_EQ(nowhere.intersect(line).pos(), Vector(3, 4));
  EXPECT_EQ(line.intersect(nowhere).pos(), Vector(3, 1));
  EXPECT_EQ(nowhere.intersect(qcLine()).pos(), Vector(3, 4));
}

TEST(LineTest, ParallelMeansASineOfAtMostOneInATrillion) {
  const qcLine line(Vector(), Vector(3, 0));
  EXPECT_TRUE(line.isParallel(qcLine(Vector(1, 7), Vector(-5, 0))));
  EXPECT_TRUE(line.isParallel(qcLine(Vector(), Vector(1, 0.9e-12))));
  EXPECT_TRUE(line.isParallel(qcLine(Vector(), Vector(-1, 0.9e-12))));
  EXPECT_FALSE(line.isParallel(qcLine(Vector(), Vector(1, 1.1e-12))));
  EXPECT_FALSE(line.isParallel(qcLine(Vector(), Vector(0, 1))));
}

TEST(LineTest, ParallelismDoesNotDependOnScale) {
  const Vector nearly(1, 0.9e-12), hardly(1, 1.1e-12);
  for (const double scale : {1e-100, 1e-6, 1e6, 1e100}) {
    const qcLine line(Vector(), Vector(scale, 0));
    EXPECT_TRUE(line.isParallel(qcLine(Vector(), nearly * scale)));
    EXPECT_FALSE(line.isParallel(qcLine(Vector(), hardly * scale)));
  }
}

TEST(LineTest, ZeroDirectionIsParallelToEverything) {
  const qcLine line(Vector(), Vector(1, 2));
  EXPECT_TRUE(line.isParallel(qcLine()));
  EXPECT_TRUE(qcLine().isParallel(line));
  EXPECT_TRUE(qcLine().isParallel(qcLine()));
  EXPECT_FALSE(line.isParallel(qcLine(Vector(), Vector(notANumber, 0))));
}

TEST(LineTest, ProjectsOnItself) {
  const qcLine line(Vector(1, 1), Vector(0, 10));
  EXPECT_EQ(line.proj(Vector(5, 7)).pos(), Vector(1, 7));
  const Vector p(0.3, 0.9), point(0.1, 0.2), d(0.7, -0.4);
  EXPECT_EQ(qcLine(point, d).proj(p).pos(), point + d * (((p - point) * d) / (d * d)));
}

TEST(LineTest, ProjectsOnItsPointWithoutADirection) {
  EXPECT_EQ(qcLine(Vector(1, 1), Vector()).proj(Vector(5, 7)).pos(), Vector(1, 1));
}

TEST(LineTest, DistanceIsPerpendicular) {
  const qcLine line(Vector(1, 1), Vector(0, 10));
  EXPECT_EQ(line.distToPoint(Vector(5, 1000)), 4.0);
  EXPECT_EQ(line.distToPoint(Vector(-2, 0)), 3.0);
  EXPECT_EQ(line.distToPoint(Vector(1, -50)), 0.0);
  const Vector p(0.3, 0.9), point(0.1, 0.2), d(0.7, -0.4), off = p - point;
  EXPECT_EQ(qcLine(point, d).distToPoint(p), std::abs(d.x() * off.y() - d.y() * off.x()) / d.len());
}

TEST(LineTest, DistanceWithoutADirectionIsThatToThePoint) {
  EXPECT_EQ(qcLine(Vector(1, 1), Vector()).distToPoint(Vector(4, 5)), 5.0);
}

TEST(LineSegTest, HasTwoEnds) {
  EXPECT_EQ(qcLineSeg().p1(), Vector());
  EXPECT_EQ(qcLineSeg().p2(), Vector());
  const qcLineSeg segment(Vector(1, 2), Vector(3, 5));
  EXPECT_EQ(segment.p1(), Vector(1, 2));
  EXPECT_EQ(segment.p2(), Vector(3, 5));
  EXPECT_EQ(segment, qcLineSeg(Vector(1, 2), Vector(3, 5)));
  EXPECT_FALSE(segment == qcLineSeg(Vector(3, 5), Vector(1, 2)));
  EXPECT_FALSE(segment == qcLineSeg(Vector(1, 2), Vector(3, 6)));
}

TEST(LineSegTest, ItsLineLeadsFromTheFirstEndToTheSecond) {
  EXPECT_EQ(qcLineSeg(Vector(1, 2), Vector(3, 5)).line(), qcLine(Vector(1, 2), Vector(2, 3)));
}

struct SegmentDistance {
  Vector p;
  double distance;
};

TEST(LineSegTest, DistanceIsToTheClosedSegment) {
  const qcLineSeg segment(Vector(0, 0), Vector(10, 0));
  const SegmentDistance cases[] = {
      {Vector(5, 3), 3},  {Vector(0, -2), 2},        {Vector(10, 2), 2}, {Vector(-3, 4), 5},
      {Vector(13, 4), 5}, {Vector(4, 0), 0},         {Vector(0, 0), 0},  {Vector(10, 0), 0},
      {Vector(-6, 0), 6}, {Vector(1e9, 0), 1e9 - 10}};
  for (const SegmentDistance& c : cases) EXPECT_EQ(segment.distToPoint(c.p), c.distance);
}

TEST(LineSegTest, WithoutALengthDistanceIsThatToItsPoint) {
  const qcLineSeg segment(Vector(1, 1), Vector(1, 1));
  EXPECT_EQ(segment.distToPoint(Vector(4, 5)), 5.0);
  EXPECT_EQ(segment.distToPoint(Vector(1, 1)), 0.0);
}

TEST(LineSegTest, WithAParameterThatIsNoNumberTheFirstEndCounts) {
  // The square of this length is 0 in double precision: t is 0/0.
  const qcLineSeg tiny(Vector(0, 0), Vector(1e-170, 0));
  EXPECT_EQ(tiny.distToPoint(Vector(0, 2)), 2.0);
  EXPECT_TRUE(std::isnan(qcLineSeg(Vector(0, 0), Vector(1, 0)).distToPoint(Vector(notANumber, 0))));
  EXPECT_EQ(qcLineSeg(Vector(0, 0), Vector(notANumber, 0)).distToPoint(Vector(3, 4)), 5.0);
}

TEST(LineSegTest, DistanceIsCalculatedFromTheFirstEnd) {
  const Vector a(0.1, 0.2), b(0.8, -0.5), p(0.5, 0.3), d = b - a;
  const double t = ((p - a) * d) / (d * d);
  ASSERT_TRUE(t > 0.0 && t < 1.0);
  EXPECT_EQ(qcLineSeg(a, b).distToPoint(p), p.distance(a + d * t));
}

TEST(RectTest, DefaultIsZeroSizeAtTheOrigin) {
  EXPECT_EQ(qcRect().ul(), Vector());
  EXPECT_EQ(qcRect().lr(), Vector());
}

TEST(RectTest, TakesItsCornersInAnyOrder) {
  const qcRect expected(qcPoint(Vector(1, 2)), qcPoint(Vector(4, 7)));
  EXPECT_EQ(expected.ul(), Vector(1, 2));
  EXPECT_EQ(expected.lr(), Vector(4, 7));
  EXPECT_EQ(qcRect(qcPoint(Vector(4, 7)), qcPoint(Vector(1, 2))), expected);
  EXPECT_EQ(qcRect(qcPoint(Vector(4, 2)), qcPoint(Vector(1, 7))), expected);
  EXPECT_EQ(qcRect(qcPoint(Vector(1, 7)), qcPoint(Vector(4, 2))), expected);
  EXPECT_EQ(qcRect::ofCorners(Vector(1, 2), Vector(4, 7)), expected);
  EXPECT_EQ(qcRect::ofCorners(Vector(4, 2), Vector(1, 7)), expected);
}

TEST(RectTest, KeepsItsCornersExactly) {
  // 1e16 + 1 is not a double, so a stored width would lose one of the corners.
  const qcRect rect(qcPoint(Vector(1e16, -1.0)), qcPoint(Vector(1.0, 0.1)));
  EXPECT_EQ(rect.ul(), Vector(1.0, -1.0));
  EXPECT_EQ(rect.lr(), Vector(1e16, 0.1));
}

TEST(RectTest, KeepsACornerBesideOneThatIsNoNumber) {
  const qcRect rect(qcPoint(Vector(notANumber, 1)), qcPoint(Vector(5, 0)));
  EXPECT_TRUE(std::isnan(rect.ul().x()));
  EXPECT_EQ(rect.lr(), Vector(5, 1));
  EXPECT_EQ(rect.ul().y(), 0.0);
}

TEST(RectTest, TakesOriginAndSize) {
  const qcRect rect(Vector(1, 2), Vector(3, 5));
  EXPECT_EQ(rect.ul(), Vector(1, 2));
  EXPECT_EQ(rect.lr(), Vector(4, 7));
  EXPECT_EQ(rect.width(), 3.0);
  EXPECT_EQ(rect.height(), 5.0);
}

TEST(RectTest, SizesMayBeNegative) {
  const qcRect rect(Vector(1, 2), Vector(-3, -5));
  EXPECT_EQ(rect.ul(), Vector(-2, -3));
  EXPECT_EQ(rect.lr(), Vector(1, 2));
}

TEST(RectTest, EqualityAsksBothCorners) {
  const qcRect rect(Vector(1, 2), Vector(3, 5));
  EXPECT_EQ(rect, qcRect(Vector(1, 2), Vector(3, 5)));
  EXPECT_FALSE(rect == qcRect(Vector(1, 2), Vector(3, 6)));
  EXPECT_FALSE(rect == qcRect(Vector(0, 2), Vector(4, 5)));
}

TEST(RectTest, EncloseIsTheSmallestAroundBoth) {
  const qcRect a(Vector(0, 0), Vector(2, 9)), b(Vector(1, -3), Vector(5, 4));
  const qcRect both(qcPoint(Vector(0, -3)), qcPoint(Vector(6, 9)));
  EXPECT_EQ(a.enclose(b), both);
  EXPECT_EQ(b.enclose(a), both);
  EXPECT_EQ(both.enclose(a), both);
}

TEST(RectTest, EnclosePassesOverWhatIsNoNumber) {
  const qcRect rect(Vector(0, 0), Vector(2, 9));
  const Vector none(notANumber, notANumber);
  const qcRect bad{qcPoint(none), qcPoint(none)};
  EXPECT_EQ(rect.enclose(bad), rect);
  const qcRect kept = bad.enclose(rect);
  EXPECT_TRUE(std::isnan(kept.ul().x()) && std::isnan(kept.ul().y()));
  EXPECT_TRUE(std::isnan(kept.lr().x()) && std::isnan(kept.lr().y()));
}

TEST(RectTest, WithinIncludesTheBoundary) {
  const qcRect rect(Vector(1, 2), Vector(3, 5));
  for (const double x : {1.0, 2.5, 4.0}) {
    for (const double y : {2.0, 3.0, 7.0}) EXPECT_TRUE(rect.within(Vector(x, y)));
  }
  EXPECT_FALSE(rect.within(Vector(std::nextafter(1.0, 0.0), 3)));
  EXPECT_FALSE(rect.within(Vector(std::nextafter(4.0, 5.0), 3)));
  EXPECT_FALSE(rect.within(Vector(2, std::nextafter(2.0, 0.0))));
  EXPECT_FALSE(rect.within(Vector(2, std::nextafter(7.0, 8.0))));
  EXPECT_FALSE(rect.within(Vector(notANumber, 3)));
}

TEST(RectTest, ZeroSizeHoldsItsPoint) {
  EXPECT_TRUE(qcRect().within(Vector()));
  EXPECT_FALSE(qcRect().within(Vector(0, 1e-300)));
}

RC_GTEST_PROP(RectTest, EncloseHoldsWhatEitherHolds, ()) {
  const auto vector = [] {
    return Vector(*rc::gen::inRange(-9, 10) / 4.0, *rc::gen::inRange(-9, 10) / 4.0);
  };
  const qcRect a{qcPoint(vector()), qcPoint(vector())}, b{qcPoint(vector()), qcPoint(vector())};
  const Vector p = vector();
  if (a.within(p) || b.within(p)) RC_ASSERT(a.enclose(b).within(p));
  RC_ASSERT(a.enclose(b).ul().x() == std::min(a.ul().x(), b.ul().x()));
  RC_ASSERT(a.enclose(b).ul().y() == std::min(a.ul().y(), b.ul().y()));
  RC_ASSERT(a.enclose(b).lr().x() == std::max(a.lr().x(), b.lr().x()));
  RC_ASSERT(a.enclose(b).lr().y() == std::max(a.lr().y(), b.lr().y()));
}

TEST(CircleTest, HasCentreAndRadius) {
  EXPECT_EQ(qcCircle(), qcCircle(Vector(0, 0), 0.0));
  const qcCircle circle(Vector(1, 2), 3.0);
  EXPECT_EQ(circle.center(), Vector(1, 2));
  EXPECT_EQ(circle.radius(), 3.0);
  EXPECT_FALSE(circle == qcCircle(Vector(1, 2), 4.0));
  EXPECT_FALSE(circle == qcCircle(Vector(1, 3), 3.0));
}

TEST(EllipseTest, DefaultIsNothingAtTheOrigin) {
  const qcEllipse nothing;
  const qcEllipse::qcEllipseGeom& geom = nothing.geom();
  EXPECT_EQ(geom.center, Vector());
  EXPECT_EQ(geom.radius1, 0.0);
  EXPECT_EQ(geom.radius2, 0.0);
  EXPECT_EQ(geom.rotation, qcRadian(0.0));
  EXPECT_EQ(geom.skew, qcRadian(0.0));
}

TEST(EllipseTest, OfACircleHasItsRadiusTwice) {
  const qcEllipse ellipse(qcCircle(Vector(1, 2), 3.0));
  EXPECT_EQ(ellipse.geom(),
            (qcEllipse::qcEllipseGeom{Vector(1, 2), 3.0, 3.0, qcRadian(0.0), qcRadian(0.0)}));
}

TEST(EllipseTest, KeepsItsGeometry) {
  const qcEllipse::qcEllipseGeom geom{Vector(1, 2), 3.0, 2.0, qcRadian(9.0), qcRadian(0.1)};
  EXPECT_EQ(qcEllipse(geom).geom(), geom);
  EXPECT_EQ(qcEllipse(geom), qcEllipse(geom));
  for (const qcEllipse::qcEllipseGeom& other :
       {qcEllipse::qcEllipseGeom{Vector(1, 3), 3.0, 2.0, qcRadian(9.0), qcRadian(0.1)},
        qcEllipse::qcEllipseGeom{Vector(1, 2), 4.0, 2.0, qcRadian(9.0), qcRadian(0.1)},
        qcEllipse::qcEllipseGeom{Vector(1, 2), 3.0, 1.0, qcRadian(9.0), qcRadian(0.1)},
        qcEllipse::qcEllipseGeom{Vector(1, 2), 3.0, 2.0, qcRadian(8.0), qcRadian(0.1)},
        qcEllipse::qcEllipseGeom{Vector(1, 2), 3.0, 2.0, qcRadian(9.0), qcRadian(0.2)}}) {
    EXPECT_FALSE(qcEllipse(geom) == qcEllipse(other));
  }
}

TEST(PolygonTest, DefaultIsEmptyAndEvenOdd) {
  EXPECT_EQ(qcPolygon().size(), 0);
  EXPECT_EQ(qcPolygon().fillMode(), qcPolygon::eEvenOdd);
  EXPECT_THROW(qcPolygon()[0], qcPolygon::BadIndex);
}

TEST(PolygonTest, HasItsVerticesInOrder) {
  const qcPolygon polygon({Vector(1, 2), Vector(3, 4), Vector(5, 6)}, qcPolygon::eNonZero);
  ASSERT_EQ(polygon.size(), 3);
  EXPECT_EQ(polygon[0], Vector(1, 2));
  EXPECT_EQ(polygon[2], Vector(5, 6));
  EXPECT_EQ(polygon.fillMode(), qcPolygon::eNonZero);
}

TEST(PolygonTest, RefusesIndicesOutOfRange) {
  const qcPolygon polygon({Vector(1, 2), Vector(3, 4)});
  EXPECT_THROW(polygon[2], qcPolygon::BadIndex);
  EXPECT_THROW(polygon[-1], qcPolygon::BadIndex);
  EXPECT_THROW(polygon[std::numeric_limits<long>::max()], qcPolygon::BadIndex);
  EXPECT_THROW(polygon[std::numeric_limits<long>::min()], qcPolygon::BadIndex);
}

TEST(PolygonTest, BadIndexRethrowsAsItself) {
  auto* const error = new qcPolygon::BadIndex;
  EXPECT_THROW(error->suicideAndRethrow(), qcPolygon::BadIndex);
}

TEST(PolygonTest, EqualityAsksVerticesAndFillMode) {
  const std::vector<Vector> vertices = {Vector(1, 2), Vector(3, 4)};
  EXPECT_EQ(qcPolygon(vertices), qcPolygon(vertices));
  EXPECT_FALSE(qcPolygon(vertices) == qcPolygon(vertices, qcPolygon::eNonZero));
  EXPECT_FALSE(qcPolygon(vertices) == qcPolygon({Vector(1, 2), Vector(3, 5)}));
  EXPECT_FALSE(qcPolygon(vertices) == qcPolygon({Vector(1, 2)}));
}

TEST(ShapesTest, CopiesCarryTheValueButNoTracking) {
  qcCircle circle(Vector(1, 2), 3.0);
  circle.isTracking(true);
  const qcCircle copy(circle);
  EXPECT_EQ(copy, circle);
  EXPECT_FALSE(copy.isTracking());
  qcCircle assigned;
  assigned = circle;
  EXPECT_EQ(assigned, circle);
  EXPECT_FALSE(assigned.isTracking());
}

RC_GTEST_PROP(ShapesTest, NumbersThatAreNoneNeverThrow, ()) {
  const auto number = [] {
    return *rc::gen::element(0.0, -0.0, 1.0, -1e-300, 1e308, -1e308, infinity, -infinity,
                             std::nan(""));
  };
  const auto vector = [&] { return Vector(number(), number()); };
  const qcLine line(vector(), vector()), other(vector(), vector());
  const Vector p = vector();
  static_cast<void>(line.intersect(other));
  static_cast<void>(line.proj(p));
  static_cast<void>(line.isParallel(other));
  const double toLine = line.distToPoint(p);
  const double toSegment = qcLineSeg(vector(), vector()).distToPoint(p);
  RC_ASSERT(!(toLine < 0.0) && !(toSegment < 0.0));
}

}  // namespace
