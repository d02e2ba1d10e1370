// SPDX-License-Identifier: MIT
//
// Numbers of two doubles against the exact numbers of the literal definitions: what is exact, how
// accurate the rest is, and that lanes give the same.

#include <cntr/plane/twofold.h>

#include <cmath>
#include <limits>

#include <cntr/plane/lanes.h>
#include <gtest/gtest.h>
#include <testing/plain/exact.h>
#include <testing/shapes/shapes.h>

namespace {

using cntr::plane::Lanes;
using cntr::plane::productOf;
using cntr::plane::restOfProduct;
using cntr::plane::rootOf;
using cntr::plane::sumOf;
using cntr::plane::Twofold;
using cntr::plane::TwofoldOf;
using plain::Exact;

constexpr int cases = 5000;

/// A number of any sign, from 2^-30 to 2^30 in size.
double anyFiniteNumber(shapes::Random& random) {
  const int exponent = static_cast<int>(random.below(60)) - 30;
  const double digits = random.uniform(0.5, 1.0);
  return std::ldexp(random.chance(0.5) ? digits : -digits, exponent);
}

Twofold anyTwofold(shapes::Random& random) {
  const double high = anyFiniteNumber(random);
  return sumOf(high, high * random.uniform(-0x1p-54, 0x1p-54));
}

Exact exactly(const Twofold& number) { return Exact(number.high) + number.low; }

Exact sizeOf(const Exact& number) { return number.sign() < 0 ? -number : number; }

/// Whether the two differ by at most 2^-98 of `size`.
bool agree(const Exact& a, const Exact& b, const Exact& size) {
  return sizeOf(a - b) <= sizeOf(size) * 0x1p-98;
}

/// The second double is at most half a unit in the last place of the first.
bool isNormal(const Twofold& number) { return number.high + number.low == number.high; }

TEST(TwofoldTest, SumsOfDoublesAreExact) {
  shapes::Random random(1);
  for (int i = 0; i < cases; ++i) {
    const double a = anyFiniteNumber(random);
    const double b = anyFiniteNumber(random);
    const Twofold sum = sumOf(a, b);
    ASSERT_EQ(sum.high, a + b);
    ASSERT_EQ(exactly(sum), Exact(a) + b) << a << " " << b;
  }
}

TEST(TwofoldTest, ProductsOfDoublesAreExact) {
  shapes::Random random(2);
  for (int i = 0; i < cases; ++i) {
    const double a = anyFiniteNumber(random);
    const double b = anyFiniteNumber(random);
    const Twofold product = productOf(a, b);
    ASSERT_EQ(product.high, a * b);
    ASSERT_EQ(exactly(product), Exact(a) * b) << a << " " << b;
  }
}

TEST(TwofoldTest, TheRestOfAProductIsTheSameByHalves) {
  shapes::Random random(3);
  for (int i = 0; i < cases; ++i) {
    const double a = anyFiniteNumber(random);
    const double b = anyFiniteNumber(random);
    ASSERT_EQ(restOfProduct<double>(a, b, a * b), restOfProduct(a, b, a * b)) << a << " " << b;
  }
}

TEST(TwofoldTest, TheRestOfAProductIsExactForTheLargestDoubles) {
  const double largest = std::numeric_limits<double>::max();
  const double small = 0.75 + 0x1p-50;
  const double product = largest * small;
  EXPECT_EQ(Exact(product) + restOfProduct(largest, small, product), Exact(largest) * small);
  EXPECT_EQ(Exact(product) + restOfProduct(small, largest, product), Exact(largest) * small);
}

TEST(TwofoldTest, SumsAndDifferencesAreAccurate) {
  shapes::Random random(4);
  for (int i = 0; i < cases; ++i) {
    const Twofold a = anyTwofold(random);
    const Twofold b = anyTwofold(random);
    const Exact larger = std::max(sizeOf(exactly(a)), sizeOf(exactly(b)));
    ASSERT_TRUE(agree(exactly(a + b), exactly(a) + exactly(b), larger)) << i;
    ASSERT_TRUE(agree(exactly(a - b), exactly(a) - exactly(b), larger)) << i;
    ASSERT_TRUE(isNormal(a + b)) << i;
    ASSERT_TRUE(isNormal(a - b)) << i;
  }
}

TEST(TwofoldTest, WhatIsTakenFromItselfLeavesNothing) {
  shapes::Random random(5);
  const Twofold a = anyTwofold(random);
  EXPECT_EQ((a - a).high, 0.0);
  EXPECT_EQ((a - a).low, 0.0);
  EXPECT_EQ(exactly(-a), -exactly(a));
}

TEST(TwofoldTest, ProductsAreAccurate) {
  shapes::Random random(6);
  for (int i = 0; i < cases; ++i) {
    const Twofold a = anyTwofold(random);
    const Twofold b = anyTwofold(random);
    const Exact product = exactly(a) * exactly(b);
    ASSERT_TRUE(agree(exactly(a * b), product, product)) << i;
    ASSERT_TRUE(isNormal(a * b)) << i;
  }
}

TEST(TwofoldTest, QuotientsAreAccurate) {
  shapes::Random random(7);
  for (int i = 0; i < cases; ++i) {
    const Twofold a = anyTwofold(random);
    const Twofold b = anyTwofold(random);
    ASSERT_TRUE(agree(exactly(a / b) * exactly(b), exactly(a), exactly(a))) << i;
    ASSERT_TRUE(isNormal(a / b)) << i;
  }
}

TEST(TwofoldTest, RootsAreAccurate) {
  shapes::Random random(8);
  for (int i = 0; i < cases; ++i) {
    const Twofold any = anyTwofold(random);
    const Twofold a = any.high < 0.0 ? -any : any;
    const Twofold root = rootOf(a);
    ASSERT_TRUE(agree(exactly(root) * exactly(root), exactly(a), exactly(a))) << i;
    ASSERT_TRUE(isNormal(root)) << i;
  }
}

TEST(TwofoldTest, TheRootOfZeroIsZeroOfItsSign) {
  EXPECT_EQ(rootOf(Twofold(0.0)).high, 0.0);
  EXPECT_TRUE(std::signbit(rootOf(Twofold(-0.0)).high));
}

TEST(TwofoldTest, LanesAreComputedAsSingleNumbers) {
  shapes::Random random(9);
  for (int i = 0; i < cases; ++i) {
    TwofoldOf<Lanes> a;
    TwofoldOf<Lanes> b;
    std::array<Twofold, cntr::plane::lanes> as;
    std::array<Twofold, cntr::plane::lanes> bs;
    for (std::size_t lane = 0; lane < cntr::plane::lanes; ++lane) {
      as[lane] = anyTwofold(random);
      bs[lane] = anyTwofold(random);
      a.high[lane] = as[lane].high;
      a.low[lane] = as[lane].low;
      b.high[lane] = bs[lane].high;
      b.low[lane] = bs[lane].low;
    }
    const TwofoldOf<Lanes> sum = a + b;
    const TwofoldOf<Lanes> product = a * b;
    for (std::size_t lane = 0; lane < cntr::plane::lanes; ++lane) {
      ASSERT_EQ(sum.high[lane], (as[lane] + bs[lane]).high);
      ASSERT_EQ(sum.low[lane], (as[lane] + bs[lane]).low);
      ASSERT_EQ(product.high[lane], (as[lane] * bs[lane]).high);
      ASSERT_EQ(product.low[lane], (as[lane] * bs[lane]).low);
    }
  }
}

}  // namespace
