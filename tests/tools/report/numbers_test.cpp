// SPDX-License-Identifier: MIT

#include <tools/report/numbers.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

using tool::alignedNumbers;
using Texts = std::vector<std::string>;

TEST(Numbers, AColumnShowsSixDigitsOfItsLargestNumber) {
  EXPECT_EQ(alignedNumbers({1342.0625, 12.375, -0.25}), (Texts{"1342.06", "12.38", "-0.25"}));
  EXPECT_EQ(alignedNumbers({1234567.5, 2345}), (Texts{"1234568", "2345"}));
  EXPECT_EQ(alignedNumbers({0.5, 0.25}), (Texts{"0.500000", "0.250000"}));
}

TEST(Numbers, AColumnOfZerosIsShort) { EXPECT_EQ(alignedNumbers({0.0, -0.0}), (Texts{"0", "0"})); }

TEST(Numbers, AnEmptyColumnStaysEmpty) { EXPECT_EQ(alignedNumbers({}), Texts()); }

TEST(Numbers, SmallNumbersKeepTheirDigits) {
  EXPECT_EQ(alignedNumbers({12345.678, 0.00012345}), (Texts{"12345.7", "0.00012345"}));
}

TEST(Numbers, NoiseBesideALargeNumberIsZero) {
  EXPECT_EQ(alignedNumbers({1000.0, -1e-10}), (Texts{"1000.00", "0.00"}));
  EXPECT_EQ(alignedNumbers({-2e-17}), (Texts{"0"}));
}

TEST(Numbers, NineDecimalsAndTwelveDigitsAreTheMostWithoutAnExponent) {
  EXPECT_EQ(alignedNumbers({1.5e-4}), (Texts{"0.000150000"}));
  EXPECT_EQ(alignedNumbers({1.5e-5}), (Texts{"1.5e-05"}));
  EXPECT_EQ(alignedNumbers({1.5e11}), (Texts{"150000000000"}));
  EXPECT_EQ(alignedNumbers({1.5e12}), (Texts{"1.5e+12"}));
}

TEST(Numbers, VeryLargeAndVerySmallOnesHaveExponents) {
  EXPECT_EQ(alignedNumbers({1.25e15}), (Texts{"1.25e+15"}));
  EXPECT_EQ(alignedNumbers({1.25e-7, 2.5e-7}), (Texts{"1.25e-07", "2.5e-07"}));
}
