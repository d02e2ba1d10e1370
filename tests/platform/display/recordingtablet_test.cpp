// SPDX-License-Identifier: MIT
//
// The drawing surface that remembers what was drawn.

#include <platform/display/recordingtablet.h>

#include <memory>

#include <gtest/gtest.h>

namespace {

using Pair = qcPair<double>;

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
