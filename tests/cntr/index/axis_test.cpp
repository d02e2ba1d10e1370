// SPDX-License-Identifier: MIT

#include <cntr/index/axis.h>

#include <limits>

#include <gtest/gtest.h>
#include <testing/shapes/numbers.h>

namespace {

using cntr::index::Axis;

TEST(AxisTest, CountsEqualIntervalsFromZero) {
  const Axis axis(10, 20, 5);
  EXPECT_EQ(axis.intervalOf(10), 0U);
  EXPECT_EQ(axis.intervalOf(11.9), 0U);
  EXPECT_EQ(axis.intervalOf(12), 1U);
  EXPECT_EQ(axis.intervalOf(17.9), 3U);
  EXPECT_EQ(axis.intervalOf(18), 4U);
  EXPECT_EQ(axis.intervalOf(20), 4U);
}

TEST(AxisTest, PutsWhatLiesBeyondAnEndIntoTheIntervalThere) {
  const Axis axis(10, 20, 5);
  EXPECT_EQ(axis.intervalOf(-1e300), 0U);
  EXPECT_EQ(axis.intervalOf(-infinity), 0U);
  EXPECT_EQ(axis.intervalOf(1e300), 4U);
  EXPECT_EQ(axis.intervalOf(infinity), 4U);
}

TEST(AxisTest, PutsNanIntoTheFirstInterval) {
  EXPECT_EQ(Axis(10, 20, 5).intervalOf(notANumber), 0U);
}

TEST(AxisTest, WithoutLengthOrOfInfiniteLengthPutsItsEndsWhereNumbersBetweenThemAre) {
  const Axis point(3, 3, 4);
  EXPECT_EQ(point.intervalOf(3), 0U);
  constexpr double most = std::numeric_limits<double>::max();
  const Axis endless(-most, most, 4);
  EXPECT_EQ(endless.intervalOf(-most), 0U);
  EXPECT_EQ(endless.intervalOf(1), 0U);
  EXPECT_EQ(endless.intervalOf(most), 0U);
}

}  // namespace
