// SPDX-License-Identifier: MIT
//
// Which shapes are moved and scaled before the library is asked, and that answers come back.

#include <tools/draw/frame.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

using testing::ElementsAre;
using tool::Box;
using tool::Frame;

namespace {

using P = qcVector<2>;

bool isIdentity(const Box& box) {
  const Frame frame(box);
  return frame.into(box.low) == box.low && frame.into(box.high) == box.high &&
         frame.into(1.0) == 1.0;
}

}  // namespace

TEST(Frame, LeavesShapesLikeThoseInImagesAlone) {
  EXPECT_TRUE(isIdentity({{0, 0}, {1, 0.5}}));
  EXPECT_TRUE(isIdentity({{-1e6, -1e6}, {1e6, 1e6}}));
  EXPECT_FALSE(isIdentity({{0, 0}, {0.99, 0.5}}));
  EXPECT_FALSE(isIdentity({{-1.1e6, 0}, {-1e6, 1}}));
  EXPECT_FALSE(isIdentity({{0, -1.1e6}, {1, -1e6}}));
  EXPECT_FALSE(isIdentity({{1e6, 0}, {1.1e6, 1}}));
  EXPECT_FALSE(isIdentity({{0, 1e6}, {1, 1.1e6}}));
}

TEST(Frame, MovesOthersToTheOriginAndScalesThemByAPowerOfTwo) {
  const Frame tiny(Box{{0, 0}, {std::ldexp(1.0, -20), std::ldexp(1.0, -22)}});
  EXPECT_EQ(tiny.into(P(0, 0)), P(-256, -64));
  EXPECT_EQ(tiny.into(P(std::ldexp(1.0, -20), std::ldexp(1.0, -22))), P(256, 64));
  EXPECT_EQ(tiny.into(std::ldexp(1.0, -20)), 512.0);
  const Frame far(Box{{1e9, 0}, {1e9 + 3, 1}});
  EXPECT_EQ(far.into(1.0), 256.0);
  EXPECT_EQ(far.into(P(1e9, 0)), P(-384, -128));
}

TEST(Frame, PointsAndLengthsComeBack) {
  const Frame frame(Box{{1e9, 1e9}, {1e9 + 16, 1e9 + 4}});
  EXPECT_EQ(frame.back(frame.into(P(1e9 + 3, 1e9 + 2))), P(1e9 + 3, 1e9 + 2));
  EXPECT_EQ(frame.back(frame.into(5.0)), 5.0);
}

TEST(Frame, ASinglePointIsOnlyMoved) {
  const Frame frame(Box{{5, 7}, {5, 7}});
  EXPECT_EQ(frame.into(P(5, 7)), P(0, 0));
  EXPECT_EQ(frame.into(1.0), 1.0);
}

TEST(Frame, MovesOutlinesAndHoles) {
  formats::Geometry geometry;
  geometry.closed = true;
  geometry.multiple = true;
  geometry.parts = {{{{4e6, 0}, {4e6 + 512, 0}, {4e6, 512}}, {{{4e6 + 256, 256}}}}};
  const Frame frame(Box{{4e6, 0}, {4e6 + 512, 512}});
  const formats::Geometry framed = frame.into(geometry);
  EXPECT_TRUE(framed.closed);
  EXPECT_TRUE(framed.multiple);
  EXPECT_THAT(framed.parts.at(0).outline, ElementsAre(P(-256, -256), P(256, -256), P(-256, 256)));
  EXPECT_THAT(framed.parts.at(0).holes, ElementsAre(ElementsAre(P(0, 0))));
  geometry.closed = false;
  geometry.multiple = false;
  EXPECT_FALSE(frame.into(geometry).closed);
  EXPECT_FALSE(frame.into(geometry).multiple);
}
