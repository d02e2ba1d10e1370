// SPDX-License-Identifier: MIT
//
// Colours and the drawing surface that remembers.

#include <platform/display/tablet.h>

#include <memory>

#include <gtest/gtest.h>

#include <platform/display/recordingtablet.h>

namespace {

using Pair = qcPair<double>;

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

TEST(RecordingTabletTest, RemembersEverySegmentInOrder) {
  const auto tablet = std::make_unique<qcRecordingTablet>();
  qcUITablet& surface = *tablet;
  EXPECT_TRUE(tablet->segments().empty());
  surface.drawLineSeg(Pair(1, 2), Pair(3, 4), qcColor::red, qcUITablet::eOverlayLayer);
  surface.drawLineSeg(Pair(5, 6), Pair(7, 8), qcColor::blue, qcUITablet::eImageLayer);
  const qcRecordingTablet::Segment first{Pair(1, 2), Pair(3, 4), qcColor::red,
                                         qcUITablet::eOverlayLayer};
  const qcRecordingTablet::Segment second{Pair(5, 6), Pair(7, 8), qcColor::blue,
                                          qcUITablet::eImageLayer};
  ASSERT_EQ(tablet->segments().size(), 2U);
  EXPECT_EQ(tablet->segments()[0], first);
  EXPECT_EQ(tablet->segments()[1], second);
}

TEST(RecordingTabletTest, CanBeCleared) {
  qcRecordingTablet tablet;
  tablet.drawLineSeg(Pair(1, 2), Pair(3, 4), qcColor::red, qcUITablet::eOverlayLayer);
  tablet.clear();
  EXPECT_TRUE(tablet.segments().empty());
}

}  // namespace
