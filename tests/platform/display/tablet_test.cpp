// SPDX-License-Identifier: MIT
//
// Colours and layers. The drawing surfaces are in recordingtablet_test.cpp and svgtablet_test.cpp.

#include <platform/display/tablet.h>

#include <gtest/gtest.h>

namespace {

TEST(ColorTest, HasThreeChannels) {
  constexpr qcColor color(1, 2, 3);
  EXPECT_EQ(color.r(), 1);
  EXPECT_EQ(color.g(), 2);
  EXPECT_EQ(color.b(), 3);
  EXPECT_EQ(color, qcColor(1, 2, 3));
  EXPECT_NE(color, qcColor(0, 2, 3));
  EXPECT_NE(color, qcColor(1, 0, 3));
  EXPECT_NE(color, qcColor(1, 2, 0));
}

TEST(ColorTest, HasTheUsualNames) {
  EXPECT_EQ(qcColor::black, qcColor(0, 0, 0));
  EXPECT_EQ(qcColor::white, qcColor(255, 255, 255));
  EXPECT_EQ(qcColor::red, qcColor(255, 0, 0));
  EXPECT_EQ(qcColor::green, qcColor(0, 255, 0));
  EXPECT_EQ(qcColor::blue, qcColor(0, 0, 255));
  EXPECT_EQ(qcColor::cyan, qcColor(0, 255, 255));
  EXPECT_EQ(qcColor::magenta, qcColor(255, 0, 255));
  EXPECT_EQ(qcColor::yellow, qcColor(255, 255, 0));
  EXPECT_EQ(qcColor::orange, qcColor(255, 165, 0));
  EXPECT_EQ(qcColor::grey, qcColor(128, 128, 128));
}

TEST(TabletTest, LayersHaveTheirNumbers) {
  EXPECT_EQ(qcUITablet::eImageLayer, 0);
  EXPECT_EQ(qcUITablet::eOverlayLayer, 1);
}

}  // namespace
