// SPDX-License-Identifier: MIT
//
// The smallest rectangle, strip and circle: hand-written cases that fix the conventions, and the
// literal definitions in exact numbers for points on which doubles go wrong.

#include <cntr/descriptors.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <vector>

#include <cntr/contourdefs.h>
#include <gtest/gtest.h>
#include <testing/plain/descriptors.h>
#include <testing/shapes/numbers.h>
#include <testing/twin/repetitions.h>
#include <tests/cntr/compute/hard_points.h>

namespace {

using shapes::Point;
using shapes::Points;

Points permuted(const Points& points, std::uint64_t seed) {
  shapes::Random random(seed);
  Points order = points;
  for (std::size_t i = order.size(); i > 1; --i) std::swap(order[i - 1], order[random.below(i)]);
  order.push_back(order.front());
  return order;
}

/// Within a unit in the last place, plus 1e-28 of the largest coordinate.
void expectRounded(double answer, double exact, double largest) {
  const double unit = std::nextafter(std::abs(exact), infinity) - std::abs(exact);
  EXPECT_LE(std::abs(answer - exact), unit + 1e-28 * largest) << answer << " for " << exact;
}

void expectRounded(const Point& answer, const Point& exact, double largest) {
  expectRounded(answer.x(), exact.x(), largest);
  expectRounded(answer.y(), exact.y(), largest);
}

double largestOf(const Points& points) {
  double largest = 0.0;
  for (const Point& p : points) largest = std::max({largest, std::abs(p.x()), std::abs(p.y())});
  return largest;
}

/// The sum of the distances between corners when those of the definition begin with the one at
/// `first`.
double distanceApart(const qcOrientedRect& rect, const plain::OrientedRect& exact,
                     std::size_t first) {
  double sum = 0.0;
  for (std::size_t i = 0; i < 4; ++i) {
    sum += rect.corners[i].distance(exact.corners[(first + i) % 4]);
  }
  return sum;
}

struct RectCase {
  std::string what;
  Points points;
  qcOrientedRect rect;
};

TEST(MinimumAreaRect, TypedCases) {
  const RectCase cases[] = {
      {"one point", {{3, 4}}, {{3, 4}, 0, 0, qcDegree(0), {{{3, 4}, {3, 4}, {3, 4}, {3, 4}}}}},
      {"one point again and again",
       {{3, 4}, {3, 4}, {3, 4}},
       {{3, 4}, 0, 0, qcDegree(0), {{{3, 4}, {3, 4}, {3, 4}, {3, 4}}}}},
      {"a level line",
       {{3, 1}, {1, 1}, {5, 1}},
       {{3, 1}, 4, 0, qcDegree(0), {{{1, 1}, {5, 1}, {5, 1}, {1, 1}}}}},
      {"an upright line",
       {{1, 3}, {1, 5}, {1, 1}},
       {{1, 3}, 4, 0, qcDegree(90), {{{1, 1}, {1, 5}, {1, 5}, {1, 1}}}}},
      {"a rising line",
       {{0, 0}, {3, 3}, {1, 1}},
       {{1.5, 1.5}, std::sqrt(18.0), 0, qcDegree(45), {{{0, 0}, {3, 3}, {3, 3}, {0, 0}}}}},
      {"a falling line",
       {{0, 3}, {3, 0}},
       {{1.5, 1.5}, std::sqrt(18.0), 0, qcDegree(-45), {{{0, 3}, {3, 0}, {3, 0}, {0, 3}}}}},
      {"a lying rectangle",
       {{0, 0}, {4, 0}, {4, 2}, {0, 2}, {2, 1}},
       {{2, 1}, 4, 2, qcDegree(0), {{{0, 0}, {4, 0}, {4, 2}, {0, 2}}}}},
      {"a standing rectangle",
       {{0, 0}, {2, 0}, {2, 4}, {0, 4}},
       {{1, 2}, 4, 2, qcDegree(90), {{{2, 0}, {2, 4}, {0, 4}, {0, 0}}}}},
      {"a square lies on its edge",
       {{0, 0}, {2, 0}, {2, 2}, {0, 2}},
       {{1, 1}, 2, 2, qcDegree(0), {{{0, 0}, {2, 0}, {2, 2}, {0, 2}}}}},
      {"a square on its corner takes the falling edge",
       {{0, 2}, {2, 0}, {4, 2}, {2, 4}},
       {{2, 2}, std::sqrt(8.0), std::sqrt(8.0), qcDegree(-45), {{{0, 2}, {2, 0}, {4, 2}, {2, 4}}}}},
      {"of a triangle's edges the first",
       {{0, 0}, {4, 0}, {0, 3}},
       {{2, 1.5}, 4, 3, qcDegree(0), {{{0, 0}, {4, 0}, {4, 3}, {0, 3}}}}}};
  for (const RectCase& c : cases) {
    const qcOrientedRect rect = qf_MinimumAreaRect(c.points);
    EXPECT_EQ(rect.center, c.rect.center) << c.what;
    EXPECT_EQ(rect.length, c.rect.length) << c.what;
    EXPECT_EQ(rect.width, c.rect.width) << c.what;
    EXPECT_EQ(rect.angle.toDouble(), c.rect.angle.toDouble()) << c.what;
    EXPECT_FALSE(std::signbit(rect.angle.toDouble()) && rect.angle.toDouble() == 0.0) << c.what;
    EXPECT_EQ(rect.corners, c.rect.corners) << c.what;
  }
}

TEST(MinimumAreaRect, IsTheOneOfTheDefinition) {
  for (std::uint64_t seed = 0; seed < repetitions(2500); ++seed) {
    SCOPED_TRACE(seed);
    const Points points = hard_points::make(seed);
    const double largest = largestOf(points);
    const qcOrientedRect rect = qf_MinimumAreaRect(points);
    const plain::OrientedRect exact = plain::minimumAreaRect(points);
    expectRounded(rect.center, exact.center, largest);
    expectRounded(rect.length, exact.length, 0.0);
    expectRounded(rect.width, exact.width, 0.0);
    EXPECT_NEAR(rect.angle.toDouble(), exact.angle, 1e-13);
    // The definition begins with the corner on the hull edge.
    std::size_t first = 0;
    for (std::size_t i = 1; i < 4; ++i) {
      if (distanceApart(rect, exact, i) < distanceApart(rect, exact, first)) first = i;
    }
    for (std::size_t i = 0; i < 4; ++i) {
      expectRounded(rect.corners[i], exact.corners[(first + i) % 4], largest);
    }
  }
}

TEST(MinimumAreaRect, HasCornersThatGoWithItsAngle) {
  for (std::uint64_t seed = 0; seed < repetitions(500); ++seed) {
    shapes::Random random(seed);
    Points points = shapes::cloud(random, 3 + random.below(10));
    const qcOrientedRect rect = qf_MinimumAreaRect(points);
    const auto& c = rect.corners;
    const Point along = Point(1.0, qcRadian(rect.angle)) * rect.length;
    const Point up(-along.y() * rect.width / rect.length, along.x() * rect.width / rect.length);
    EXPECT_TRUE(qfRealEq(c[1] - c[0], along, 1e-9)) << seed;
    EXPECT_TRUE(qfRealEq(c[3] - c[0], up, 1e-9)) << seed;
    EXPECT_TRUE(qfRealEq(c[2] - c[1], up, 1e-9)) << seed;
    EXPECT_TRUE(qfRealEq((c[0] + c[2]) * 0.5, rect.center, 1e-9)) << seed;
    EXPECT_GT(rect.angle.toDouble(), -90.0);
    EXPECT_LE(rect.angle.toDouble(), 90.0);
    EXPECT_GE(rect.length, rect.width);
  }
}

TEST(MinimumAreaRect, HasTheAngleOfAnUprightLineOnOneThatIsNearlyUpright) {
  for (const double x : {1e-20, -1e-20}) {
    for (const Points& points : {Points{{0, 0}, {x, 1}}, Points{{0, 1}, {x, 0}}}) {
      const qcOrientedRect rect = qf_MinimumAreaRect(points);
      EXPECT_EQ(rect.angle.toDouble(), 90.0);
      EXPECT_EQ(rect.length, 1.0);
    }
  }
}

TEST(MinimumWidth, TypedCases) {
  EXPECT_EQ(qf_MinimumWidth(Points{{3, 4}}), (qcWidth{0.0, qcDegree(0)}));
  EXPECT_EQ(qf_MinimumWidth(Points{{0, 0}, {4, 0}}), (qcWidth{0.0, qcDegree(90)}));
  EXPECT_EQ(qf_MinimumWidth(Points{{0, 0}, {0, 4}}), (qcWidth{0.0, qcDegree(0)}));
  EXPECT_EQ(qf_MinimumWidth(Points{{0, 0}, {4, 4}, {1, 1}}), (qcWidth{0.0, qcDegree(-45)}));
  EXPECT_EQ(qf_MinimumWidth(Points{{0, 0}, {2, 0}, {2, 4}, {0, 4}}), (qcWidth{2.0, qcDegree(0)}));
  EXPECT_EQ(qf_MinimumWidth(Points{{0, 0}, {4, 0}, {4, 2}, {0, 2}}), (qcWidth{2.0, qcDegree(90)}));
  EXPECT_EQ(qf_MinimumWidth(Points{{0, 0}, {2, 0}, {2, 2}, {0, 2}}), (qcWidth{2.0, qcDegree(90)}));
  EXPECT_EQ(qf_MinimumWidth(Points{{0, 0}, {4, 0}, {0, 3}}).width, 2.4);
  // Zeros have no sign.
  EXPECT_FALSE(std::signbit(qf_MinimumWidth(Points{{0, 0}, {0, 4}}).angle.toDouble()));
  EXPECT_FALSE(
      std::signbit(qf_MinimumWidth(Points{{0, 4}, {2, 0}, {2, 4}, {0, 0}}).angle.toDouble()));
}

TEST(MinimumWidth, IsThatOfTheDefinition) {
  for (std::uint64_t seed = 0; seed < repetitions(2500); ++seed) {
    SCOPED_TRACE(seed);
    const Points points = hard_points::make(seed);
    const qcWidth width = qf_MinimumWidth(points);
    const plain::Width exact = plain::minimumWidth(points);
    expectRounded(width.width, exact.width, 0.0);
    EXPECT_NEAR(width.angle.toDouble(), exact.angle, 1e-13);
  }
}

TEST(MinimumCircle, TypedCases) {
  EXPECT_EQ(qf_MinimumCircle(Points{{3, 4}, {3, 4}}), qcCircle({3, 4}, 0));
  EXPECT_EQ(qf_MinimumCircle(Points{{0, 0}, {6, 8}}), qcCircle({3, 4}, 5));
  EXPECT_EQ(qf_MinimumCircle(Points{{0, 0}, {6, 8}, {3, 4}, {1, 1}}), qcCircle({3, 4}, 5));
  EXPECT_EQ(qf_MinimumCircle(Points{{0, 0}, {6, 0}, {6, 8}, {0, 8}}), qcCircle({3, 4}, 5));
  EXPECT_EQ(qf_MinimumCircle(Points{{3, 4}, {-5, 0}, {4, -3}}), qcCircle({0, 0}, 5));
  EXPECT_EQ(qf_MinimumCircle(Points{{-5, 0}, {5, 0}, {0, 1}}), qcCircle({0, 0}, 5));
}

TEST(MinimumCircle, IsThatOfTheDefinition) {
  for (std::uint64_t seed = 0; seed < repetitions(1200); ++seed) {
    SCOPED_TRACE(seed);
    const Points points = hard_points::make(seed);
    const qcCircle circle = qf_MinimumCircle(points);
    const plain::Circle exact = plain::minimumCircle(points);
    expectRounded(circle.center(), exact.center, largestOf(points));
    expectRounded(circle.radius(), exact.radius, 0.0);
  }
}

TEST(MinimumCircle, OfAThinTriangleKeepsTheDigitsOfItsShortSide) {
  // Seen from the apex, the height of the centre would be a difference of almost equal numbers.
  for (const double thin : {1e-3, 1e-12, 1e-20, 1e-40}) {
    const Points triangle = {{0.0, 0.4 * thin}, {1.0, 0.0}, {1.0, thin}};
    for (int quarters = 0; quarters < 4; ++quarters) {
      Points turned = triangle;
      for (Point& p : turned) {
        if (quarters % 2 == 1) p = Point(p.y(), p.x());
        if (quarters >= 2) p = -p;
      }
      SCOPED_TRACE(thin);
      const qcCircle circle = qf_MinimumCircle(turned);
      const plain::Circle exact = plain::minimumCircle(turned);
      expectRounded(circle.center(), exact.center, 1e-20 * thin);
      expectRounded(circle.radius(), exact.radius, 0.0);
    }
  }
}

TEST(MinimumCircle, IsComputedFromTheShortestSideTheFirstOnTies) {
  // Of centres this near to the origin, rounding leaves other digits from each of the three points.
  const Points evenSides = {{1000000000, 0},
                            {6.1232339953846092e-08, 1000000000.0000002},
                            {-999999999.99999988, 1.2246467990769218e-07},
                            {-1.8369701987446299e-07, -999999999.99999988}};
  EXPECT_EQ(qf_MinimumCircle(evenSides),
            qcCircle({-5.9604644775390612e-08, 1.7881393432617188e-07}, 1000000000.0000001));
  const Points anySides = {{5, 0},
                           {3.0616169976923054e-16, 5},
                           {-5, 6.1232339953846089e-16},
                           {-9.1848509937231497e-16, -5}};
  EXPECT_EQ(qf_MinimumCircle(anySides), qcCircle({0, -3.1554436208840473e-32}, 5));
  const Points largeSides = {{3000000000.0000005, 4000000000},
                             {-4000000000, 3000000000.0000005},
                             {-3000000000.0000005, -4000000000},
                             {4000000000.000001, -3000000000}};
  EXPECT_EQ(qf_MinimumCircle(largeSides),
            qcCircle({3.3378601074218727e-07, 4.7683715820312522e-08}, 5000000000.000001));
}

TEST(Descriptors, DependNeitherOnOrderNorOnRepetition) {
  for (std::uint64_t seed = 0; seed < repetitions(600); ++seed) {
    const Points points =
        seed % 2 == 0 ? hard_points::make(seed) : shapes::anyFinite(seed, 300).points;
    if (points.empty()) continue;
    const Points order = permuted(points, seed);
    EXPECT_EQ(qf_MinimumAreaRect(order), qf_MinimumAreaRect(points)) << seed;
    EXPECT_EQ(qf_MinimumWidth(order), qf_MinimumWidth(points)) << seed;
    EXPECT_EQ(qf_MinimumCircle(order), qf_MinimumCircle(points)) << seed;
  }
}

TEST(Descriptors, ScaleWithPowersOfTwo) {
  for (std::uint64_t seed = 0; seed < repetitions(200); ++seed) {
    const Points points = hard_points::make(seed);
    for (const double factor : {0x1p-800, 0x1p-300, 0x1p300, 0x1p900}) {
      Points scaled;
      for (const Point& p : points) scaled.push_back(p * factor);
      EXPECT_EQ(qf_MinimumAreaRect(scaled).length, qf_MinimumAreaRect(points).length * factor);
      EXPECT_EQ(qf_MinimumAreaRect(scaled).center, qf_MinimumAreaRect(points).center * factor);
      EXPECT_EQ(qf_MinimumWidth(scaled).width, qf_MinimumWidth(points).width * factor);
      EXPECT_EQ(qf_MinimumCircle(scaled).radius(), qf_MinimumCircle(points).radius() * factor);
    }
  }
}

TEST(Descriptors, NeedAPoint) {
  for (const Points& points : {Points{}, Points{{notANumber, 1}, {2, notANumber}}}) {
    EXPECT_THROW(qf_MinimumAreaRect(points), qcContourDefs::EmptyContour);
    EXPECT_THROW(qf_MinimumWidth(points), qcContourDefs::EmptyContour);
    EXPECT_THROW(qf_MinimumCircle(points), qcContourDefs::EmptyContour);
  }
}

TEST(Descriptors, LeaveOutPointsWithoutNumbers) {
  const Points points = {{0, 0}, {notANumber, 50}, {6, 0}, {6, 8}, {50, notANumber}, {0, 8}};
  EXPECT_EQ(qf_MinimumAreaRect(points).length, 8.0);
  EXPECT_EQ(qf_MinimumWidth(points).width, 6.0);
  EXPECT_EQ(qf_MinimumCircle(points), qcCircle({3, 4}, 5));
}

TEST(Descriptors, HaveNoNumbersWithAnInfinitePoint) {
  const Points points = {{0, 0}, {infinity, 0}, {6, 8}};
  const qcOrientedRect rect = qf_MinimumAreaRect(points);
  for (const double number : {rect.length, rect.width, rect.angle.toDouble(), rect.center.x(),
                              rect.center.y(), rect.corners[0].x(), rect.corners[3].y()}) {
    EXPECT_TRUE(std::isnan(number));
  }
  EXPECT_TRUE(std::isnan(qf_MinimumWidth(points).width));
  EXPECT_TRUE(std::isnan(qf_MinimumWidth(points).angle.toDouble()));
  EXPECT_TRUE(std::isnan(qf_MinimumCircle(points).radius()));
  EXPECT_TRUE(std::isnan(qf_MinimumCircle(points).center().y()));
}

}  // namespace
