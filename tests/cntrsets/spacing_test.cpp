// SPDX-License-Identifier: MIT

#include <cntrsets/spacing.h>

#include <gtest/gtest.h>

using cntr::sets::usualSpacing;

TEST(SpacingTest, IsAFractionOfTheWholeLength) {
  const qcContour outline({{0, 0}, {1024, 0}, {1024, 1024}, {0, 1024}}, true, 0);
  const qcContour line({{0, 0}, {512, 0}}, false, 0);
  EXPECT_EQ(usualSpacing({outline}), 4.0);
  EXPECT_EQ(usualSpacing({outline, line}), 4.5);
}

TEST(SpacingTest, IsPositiveWithoutALength) {
  EXPECT_EQ(usualSpacing({}), 1.0);
  EXPECT_EQ(usualSpacing({qcContour({{3, 3}, {3, 3}}, false, 0)}), 1.0);
}
