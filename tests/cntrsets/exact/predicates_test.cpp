// SPDX-License-Identifier: MIT
//
// Orientations and crossings against integer arithmetic that cannot overflow.

#include <cntrsets/exact/predicates.h>

#include <cmath>
#include <cstdint>

#include <gtest/gtest.h>
#include <testing/shapes/shapes.h>

namespace {

using cntr::sets::crossing;
using cntr::sets::orientation;
using Point = qcVector<2>;
__extension__ using Wide = __int128;

Wide wide(double value) { return static_cast<Wide>(value); }

Wide determinant(const Point& a, const Point& b, const Point& c) {
  return (wide(a.x()) - wide(c.x())) * (wide(b.y()) - wide(c.y())) -
         (wide(a.y()) - wide(c.y())) * (wide(b.x()) - wide(c.x()));
}

int signOf(Wide value) { return value > 0 ? 1 : value < 0 ? -1 : 0; }

/// An integer point with large coordinates, on or next to the line through two others.
Point beside(const Point& a, const Point& b, shapes::Random& random) {
  const double t = random.uniform(-1.0, 2.0);
  return {std::round(a.x() + t * (b.x() - a.x())) + static_cast<double>(random.below(3)) - 1.0,
          std::round(a.y() + t * (b.y() - a.y())) + static_cast<double>(random.below(3)) - 1.0};
}

Point anyInteger(shapes::Random& random, double largest) {
  return {std::round(random.uniform(-largest, largest)),
          std::round(random.uniform(-largest, largest))};
}

TEST(Orientation, IsTheSignOfTheExactDeterminant) {
  shapes::Random random(1);
  int lost = 0;
  for (int i = 0; i < 200000; ++i) {
    const Point a = anyInteger(random, 0x1p52);
    const Point b =
        random.chance(0.5) ? anyInteger(random, 0x1p52) : a + anyInteger(random, 0x1p20);
    const Point c = random.chance(0.2) ? a * 0.5 + b * 0.5 : beside(a, b, random);
    const Point rounded(std::round(c.x()), std::round(c.y()));
    EXPECT_EQ(orientation(a, b, rounded), signOf(determinant(a, b, rounded)));
    const double plain = (a.x() - rounded.x()) * (b.y() - rounded.y()) -
                         (a.y() - rounded.y()) * (b.x() - rounded.x());
    lost += signOf(determinant(a, b, rounded)) != (plain > 0.0) - (plain < 0.0);
  }
  // Otherwise these points would not exercise the exact sum.
  EXPECT_GT(lost, 100);
}

TEST(Orientation, TurnsItsSignWithTheOrderOfItsPoints) {
  shapes::Random random(2);
  for (int i = 0; i < 20000; ++i) {
    const Point a(random.uniform(), random.uniform());
    const Point b(random.uniform(), random.uniform());
    const double t = random.uniform();
    const Point c = a * (1.0 - t) + b * t;
    const int sign = orientation(a, b, c);
    EXPECT_EQ(orientation(b, c, a), sign);
    EXPECT_EQ(orientation(c, a, b), sign);
    EXPECT_EQ(orientation(b, a, c), -sign);
    EXPECT_EQ(orientation(a, c, b), -sign);
    EXPECT_EQ(orientation(c, b, a), -sign);
  }
}

TEST(Orientation, IsZeroWhenPointsCoincide) {
  const Point a(0.1, 0.7);
  const Point b(1e100, -3.0);
  EXPECT_EQ(orientation(a, a, b), 0);
  EXPECT_EQ(orientation(a, b, a), 0);
  EXPECT_EQ(orientation(b, a, a), 0);
  EXPECT_EQ(orientation(a, a, a), 0);
}

TEST(Orientation, SeesTheLastBitAtBothEndsOfTheRange) {
  for (const double scale : {0x1p-400, 1.0, 0x1p+480}) {
    const Point a(0.5 * scale, 0.5 * scale);
    const Point b(12.0 * scale, 12.0 * scale);
    const Point on(24.0 * scale, 24.0 * scale);
    EXPECT_EQ(orientation(a, b, on), 0);
    EXPECT_EQ(orientation(a, b, {on.x(), std::nextafter(on.y(), INFINITY)}), 1);
    EXPECT_EQ(orientation(a, b, {on.x(), std::nextafter(on.y(), 0.0)}), -1);
  }
}

/// Whether `value` is within half a unit in the last place of numerator / denominator.
bool isNearest(double value, Wide numerator, Wide denominator) {
  const auto exact = static_cast<long double>(numerator) / static_cast<long double>(denominator);
  const double unit = std::nextafter(std::abs(value), INFINITY) - std::abs(value);
  return std::abs(exact - static_cast<long double>(value)) <=
         0.5005L * static_cast<long double>(unit);
}

TEST(Crossing, IsTheNearestPointOfDoubles) {
  shapes::Random random(3);
  int crossed = 0;
  for (int i = 0; i < 100000; ++i) {
    const Point a = anyInteger(random, 0x1p28);
    const Point b = random.chance(0.5) ? anyInteger(random, 0x1p28) : beside(a, a * -1.0, random);
    const Point c = random.chance(0.5) ? anyInteger(random, 0x1p28) : beside(a, b, random);
    const Point d = random.chance(0.5) ? anyInteger(random, 0x1p28) : beside(a, b, random);
    if (orientation(a, b, c) * orientation(a, b, d) >= 0) continue;
    if (orientation(c, d, a) * orientation(c, d, b) >= 0) continue;
    ++crossed;
    // a + (b - a) * n / m, over the common denominator m.
    const Wide n = determinant(a, c, d);
    const Wide m = (wide(b.x()) - wide(a.x())) * (wide(d.y()) - wide(c.y())) -
                   (wide(b.y()) - wide(a.y())) * (wide(d.x()) - wide(c.x()));
    const Point p = crossing(a, b, c, d);
    EXPECT_TRUE(isNearest(p.x(), wide(a.x()) * m + (wide(b.x()) - wide(a.x())) * n, m)) << i;
    EXPECT_TRUE(isNearest(p.y(), wide(a.y()) * m + (wide(b.y()) - wide(a.y())) * n, m)) << i;
  }
  EXPECT_GT(crossed, 5000);
}

TEST(Crossing, StaysInTheBoxesOfBothSegments) {
  const Point p = crossing({0.0, 0.1}, {1.0, 0.1}, {0.3, 0.0}, {0.3, 1.0});
  EXPECT_EQ(p, Point(0.3, 0.1));
  // Along a segment of 2^100, the crossing is only known to within a few units.
  for (int i = 1; i < 100; ++i) {
    const double x = 0.1 * i;
    for (const double side : {-1.0, 1.0}) {
      const Point far = {side * 0x1.23456789p100, 0.7};
      const Point near = {-side * 0x1.98765432p100, 0.7};
      EXPECT_EQ(crossing(far, near, {x, -3.1}, {x, 9.3}), Point(x, 0.7)) << i;
      EXPECT_EQ(crossing({far.y(), far.x()}, {near.y(), near.x()}, {-3.1, x}, {9.3, x}),
                Point(0.7, x))
          << i;
    }
  }
}

TEST(Crossing, IsAsNearWhenTheExtentOfASegmentIsNoDouble) {
  const Point p = crossing({-0x1p60, 0}, {3, 0}, {0, -1}, {2, 1});
  EXPECT_NEAR(p.x(), 1.0, 0x1p-37);
  EXPECT_EQ(p.y(), 0.0);
}

TEST(Crossing, IsZeroWhereProductsWouldLoseDigits) {
  // It lies at about a fifth of the least coordinate.
  const double least = cntr::sets::leastCoordinate;
  EXPECT_EQ(crossing({-least, -1}, {2 * least, 1.5}, {-1, 0}, {1, 0}), Point(0, 0));
  EXPECT_EQ(crossing({-1, -least}, {1.5, 2 * least}, {0, -1}, {0, 1}), Point(0, 0));
  EXPECT_EQ(crossing({-4 * least, -1}, {-2 * least, 1}, {-1, 0}, {1, 0}), Point(-3 * least, 0));
}

}  // namespace
