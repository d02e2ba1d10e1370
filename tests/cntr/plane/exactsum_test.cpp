// SPDX-License-Identifier: MIT
//
// Sums of products against the exact numbers of the literal definitions.

#include <cntr/plane/exactsum.h>

#include <cmath>

#include <gtest/gtest.h>
#include <testing/plain/exact.h>
#include <testing/shapes/shapes.h>

namespace {

using cntr::plane::ExactSum;
using cntr::plane::Twofold;
using plain::Exact;

TEST(ExactSumTest, OfNothingIsZero) {
  const ExactSum sum;
  EXPECT_EQ(sum.sign(), 0);
  EXPECT_EQ(sum.rounded().high, 0.0);
  EXPECT_EQ(sum.rounded().low, 0.0);
}

TEST(ExactSumTest, KeepsWhatALargeNumberWouldSwallow) {
  ExactSum sum;
  sum.add(0x1p200);
  sum.add(0x1p-200);
  sum.add(-0x1p200);
  EXPECT_EQ(sum.sign(), 1);
  EXPECT_EQ(sum.rounded().high, 0x1p-200);
  sum.add(-0x1p-200);
  EXPECT_EQ(sum.sign(), 0);
}

TEST(ExactSumTest, OfEightProductsAndANumberIsExact) {
  for (std::uint64_t seed = 0; seed < 3000; ++seed) {
    shapes::Random random(seed);
    const auto anyNumber = [&random] {
      const int exponent = static_cast<int>(random.below(200)) - 100;
      const double digits = random.uniform(-1.0, 1.0);
      return std::ldexp(digits, exponent);
    };
    ExactSum sum;
    Exact exact;
    double last = 0.0;
    for (int i = 0; i < 8; ++i) {
      const double a = anyNumber();
      const double b = anyNumber();
      sum.addProduct(a, b);
      exact = exact + Exact(a) * b;
      last = a * b;
    }
    // Now and then, nearly all of it is taken away again.
    const double rest = random.chance(0.5) ? -sum.rounded().high : -last;
    sum.add(rest);
    exact = exact + rest;
    ASSERT_EQ(sum.sign(), exact.sign()) << seed;
    const Twofold rounded = sum.rounded();
    const Exact error = Exact(rounded.high) + rounded.low - exact;
    const Exact size = exact.sign() < 0 ? -exact : exact;
    ASSERT_LE(error.sign() < 0 ? -error : error, size * 0x1p-100) << seed;
  }
}

}  // namespace
