// SPDX-License-Identifier: MIT
//
// Signs of dot and cross products against integers that cannot overflow, and expansions against the
// exact numbers of the literal definitions. Orientations are tested with libcntrsets' crossings.

#include <cntr/plane/orientation.h>

#include <cmath>

#include <cntr/plane/expansion.h>
#include <gtest/gtest.h>
#include <testing/plain/exact.h>
#include <testing/shapes/shapes.h>

namespace {

using cntr::plane::crossSign;
using cntr::plane::dotSign;
using cntr::plane::Expansion;
using cntr::plane::Twofold;
using plain::Exact;
using Point = qcVector<2>;

Point anyPoint(shapes::Random& random) {
  const double x = random.uniform(-1.0, 1.0);
  const double y = random.uniform(-1.0, 1.0);
  return {x, y};
}

Exact exactDot(const Point& a, const Point& b, const Point& c, const Point& d) {
  return (Exact(b.x()) - a.x()) * (Exact(d.x()) - c.x()) +
         (Exact(b.y()) - a.y()) * (Exact(d.y()) - c.y());
}

TEST(DotSign, IsThatOfTheExactProductForDirectionsAtNearlyRightAngles) {
  shapes::Random random(1);
  int lost = 0;
  for (int i = 0; i < 20000; ++i) {
    const Point a = anyPoint(random);
    const Point b = anyPoint(random);
    const Point c = anyPoint(random);
    const Point d = c + Point(a.y() - b.y(), b.x() - a.x()) * random.uniform(0.1, 2.0);
    const int sign = exactDot(a, b, c, d).sign();
    ASSERT_EQ(dotSign(a, b, c, d), sign) << i;
    ASSERT_EQ(dotSign(c, d, a, b), sign) << i;
    ASSERT_EQ(dotSign(b, a, c, d), -sign) << i;
    ASSERT_EQ(crossSign(a, b, {c.y(), -c.x()}, {d.y(), -d.x()}), -sign) << i;
    const double plain = (b - a) * (d - c);
    lost += sign != (plain > 0.0) - (plain < 0.0);
  }
  // Otherwise these directions would not exercise the exact sum.
  EXPECT_GT(lost, 100);
}

TEST(DotSign, IsZeroForRightAnglesAndDirectionsWithoutLength) {
  EXPECT_EQ(dotSign({1, 1}, {4, 5}, {2, 2}, {-2, 5}), 0);
  EXPECT_EQ(dotSign({1, 1}, {1, 1}, {2, 2}, {-2, 5}), 0);
  EXPECT_EQ(crossSign({1, 1}, {4, 5}, {0, 0}, {6, 8}), 0);
  EXPECT_EQ(crossSign({0, 0}, {1, 0}, {5, 5}, {5, 6}), 1);
  EXPECT_EQ(crossSign({0, 0}, {1, 0}, {5, 6}, {5, 5}), -1);
}

TEST(Expansion, HasTheSignsOfPolynomialsThatNearlyVanish) {
  shapes::Random random(2);
  int lost = 0;
  for (int i = 0; i < 2000; ++i) {
    // (a - b)(a + b) - (a a - b b) with one number a unit in the last place away.
    const double a = random.uniform(0.5, 2.0);
    const double b = a * (1.0 + random.uniform(-1e-14, 1e-14));
    const double c = random.chance(0.5) ? a : std::nextafter(a, 3.0);
    const auto make = [](double value) { return Expansion::difference(value, 0.0); };
    const Expansion left = Expansion::difference(a, b) * (make(a) + make(b));
    const Expansion right = make(c) * make(c) - make(b) * make(b);
    const Exact exact = (Exact(a) - b) * (Exact(a) + b) - (Exact(c) * c - Exact(b) * b);
    ASSERT_EQ((left - right).sign(), exact.sign()) << i;
    ASSERT_EQ(((left - right) * (left - right) * make(-1.0)).sign(), exact.sign() == 0 ? 0 : -1);
    const double plain = (a - b) * (a + b) - (c * c - b * b);
    lost += exact.sign() != (plain > 0.0) - (plain < 0.0);
  }
  EXPECT_GT(lost, 100);
}

TEST(Twofold, HasRootsOfTwiceTheDigits) {
  shapes::Random random(3);
  for (int i = 0; i < 1000; ++i) {
    const double value = random.uniform(0.0, 1e6);
    const Twofold root = rootOf(Twofold(value));
    EXPECT_EQ(root.high, std::sqrt(value));
    const Exact sum = Exact(root.high) + root.low;
    const Exact error = sum * sum - value;
    const Exact size = error.sign() < 0 ? -error : error;
    EXPECT_LE(plain::nearest(size), value * 0x1p-98);
  }
  EXPECT_EQ(rootOf(Twofold(0.0)).high, 0.0);
}

}  // namespace
