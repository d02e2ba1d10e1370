// SPDX-License-Identifier: MIT

#include <cntrformats/number.h>

#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cstdint>
#include <limits>
#include <string_view>

#include <cntrformats/errors.h>
#include <testing/shapes/shapes.h>

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
  EXPECT_EQ(refusal("1:"), "'1:' is not a finite number") << "the character behind 9";
  EXPECT_EQ(refusal(""), "'' is not a finite number");
  EXPECT_EQ(refusal(" 1"), "' 1' is not a finite number");
  EXPECT_EQ(refusal("inf"), "'inf' is not a finite number");
  EXPECT_EQ(refusal("+-5"), "'+-5' is not a finite number");
  EXPECT_EQ(refusal("nan"), "'nan' is not a finite number");
  EXPECT_EQ(refusal("1e999x"), "'1e999x' is not a finite number");
  EXPECT_EQ(refusal("1e999"), "'1e999' is too large or too small a number");
}

namespace {

/// Texts of digits, points, signs, exponents and what ends them.
std::string randomNumber(shapes::Random& random) {
  const std::string_view characters = random.chance(0.5) ? "0123456789" : "012345.6789eE+-x ";
  std::string text(random.chance(0.3) ? "-" : "");
  const std::size_t length = 1 + random.below(22);
  const std::size_t point = random.below(25);
  for (std::size_t i = 0; i < length; ++i) {
    if (i == point) text += '.';
    text += characters[random.below(characters.size())];
  }
  return text;
}

}  // namespace

TEST(Number, IsReadAsByFromCharsToTheBit) {
  shapes::Random random(1);
  for (int i = 0; i < 200000; ++i) {
    const std::string text = randomNumber(random);
    const char* const end = text.data() + text.size();
    double expected = 0.0;
    double value = 0.0;
    const auto first = std::from_chars(text.data(), end, expected);
    const auto second = formats::readNumber(text.data(), end, value);
    ASSERT_EQ(second.ptr, first.ptr) << text;
    ASSERT_EQ(second.ec, first.ec) << text;
    ASSERT_EQ(std::bit_cast<std::uint64_t>(value), std::bit_cast<std::uint64_t>(expected)) << text;
  }
}
