// SPDX-License-Identifier: MIT
//
// Round lengths of scale bars.

#include <tools/draw/scalebar.h>

#include <gtest/gtest.h>

using tool::scaleBarFor;

TEST(ScaleBar, IsTheLongestRoundNumberThatFits) {
  EXPECT_EQ(scaleBarFor(10.0, {}).length, 10.0);
  EXPECT_EQ(scaleBarFor(19.9, {}).length, 10.0);
  EXPECT_EQ(scaleBarFor(20.0, {}).length, 20.0);
  EXPECT_EQ(scaleBarFor(49.9, {}).length, 20.0);
  EXPECT_EQ(scaleBarFor(50.0, {}).length, 50.0);
  EXPECT_EQ(scaleBarFor(99.9, {}).length, 50.0);
  EXPECT_EQ(scaleBarFor(0.03, {}).length, 0.02);
  EXPECT_EQ(scaleBarFor(50.0, {}).text, "50 px");
}

TEST(ScaleBar, IsRoundInItsUnit) {
  const tool::ScaleBar bar = scaleBarFor(100.0, {0.25, "um"});
  EXPECT_EQ(bar.text, "20 um");
  EXPECT_EQ(bar.length, 80.0);
}
