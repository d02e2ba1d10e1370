// SPDX-License-Identifier: MIT

#include <cntrformats/number.h>

#include <gtest/gtest.h>

#include <limits>

#include <cntrformats/errors.h>

using namespace formats;

namespace {

std::string refusal(const char* text) {
  try {
    finiteNumber(text);
    return "";
  } catch (const FeatureError& error) {
    return error.what();
  }
}

}  // namespace

TEST(Number, AllDigitsReadBackAsTheSameNumber) {
  const double largest = std::numeric_limits<double>::max();
  for (const double value : {0.1, 1.0 / 3.0, 1e-310, largest, -largest, -12.5, 1e22, 383.5, -0.0}) {
    EXPECT_EQ(finiteNumber(allDigits(value)), value);
  }
  EXPECT_EQ(allDigits(383.5), "383.5");
  EXPECT_EQ(allDigits(-2.2250738585072014e-308), "-2.2250738585072014e-308");
}

TEST(Number, MayHaveASignAndAnExponent) {
  EXPECT_EQ(finiteNumber("+.5"), 0.5);
  EXPECT_EQ(finiteNumber("-1E2"), -100.0);
}

TEST(Number, OtherTextsAreNamed) {
  EXPECT_EQ(refusal("1x"), "'1x' is not a finite number");
  EXPECT_EQ(refusal(""), "'' is not a finite number");
  EXPECT_EQ(refusal(" 1"), "' 1' is not a finite number");
  EXPECT_EQ(refusal("inf"), "'inf' is not a finite number");
  EXPECT_EQ(refusal("+-5"), "'+-5' is not a finite number");
  EXPECT_EQ(refusal("nan"), "'nan' is not a finite number");
  EXPECT_EQ(refusal("1e999"), "'1e999' is too large or too small a number");
}
