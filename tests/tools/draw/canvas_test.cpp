// SPDX-License-Identifier: MIT
//
// Coordinates and marks in pixels, with the y axis downwards and upwards.

#include <tools/draw/canvas.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using tool::Box;
using tool::Canvas;

namespace {

using P = qcVector<2>;

// A pixel is 0.25.
const Canvas down(Box{{10, 20}, {14, 22}}, 16.0, false);
const Canvas up(Box{{10, 20}, {14, 22}}, 16.0, true);

template <typename Kind>
Kind mapped(const Canvas& canvas, const Kind& mark) {
  return std::get<Kind>(canvas.map(tool::Mark(mark)));
}

}  // namespace

TEST(Canvas, TheLongerSideHasTheSize) {
  EXPECT_EQ(down.pixel(), 0.25);
  EXPECT_EQ(down.width(), 16.0);
  EXPECT_EQ(down.height(), 8.0);
  EXPECT_EQ(Canvas(Box{{0, 0}, {1, 4}}, 8.0, false).width(), 2.0);
}

TEST(Canvas, MapsPointsAndLengths) {
  EXPECT_EQ(down.map(P(11, 20.5)), P(4, 2));
  EXPECT_EQ(up.map(P(11, 20.5)), P(4, 6));
  EXPECT_EQ(down.map(3.0), 12.0);
  EXPECT_THAT(up.map(formats::Points{{10, 22}, {14, 20}}), ElementsAre(P(0, 0), P(16, 8)));
}

TEST(Canvas, MapsBoxes) {
  const Box box{{11, 20}, {12, 20.5}};
  EXPECT_EQ(down.map(box).low, P(4, 0));
  EXPECT_EQ(down.map(box).high, P(8, 2));
  EXPECT_EQ(up.map(box).low, P(4, 6));
  EXPECT_EQ(up.map(box).high, P(8, 8));
  EXPECT_EQ(mapped(up, box).low, P(4, 6));
}

TEST(Canvas, MapsMarks) {
  const auto circle = mapped(up, tool::Circle{{11, 20.5}, 1});
  EXPECT_EQ(circle.centre, P(4, 6));
  EXPECT_EQ(circle.radius, 4.0);
  const tool::Ellipse tilted{{11, 20.5}, 2, 1, 0.5};
  const auto ellipse = mapped(down, tilted);
  EXPECT_EQ(ellipse.centre, P(4, 2));
  EXPECT_EQ(ellipse.along, 8.0);
  EXPECT_EQ(ellipse.across, 4.0);
  EXPECT_EQ(ellipse.angle, 0.5);
  EXPECT_EQ(mapped(up, tilted).angle, -0.5);
  const auto tint = mapped(up, tool::Tint{{11, 20.5}, {14, 22}, -7.0});
  EXPECT_EQ(tint.from, P(4, 6));
  EXPECT_EQ(tint.to, P(16, 0));
  EXPECT_EQ(tint.value, -7.0);
  EXPECT_THAT(mapped(down, tool::Ring{{{10, 20}, {14, 20}}}).points,
              ElementsAre(P(0, 0), P(16, 0)));
  EXPECT_EQ(mapped(down, tool::Segment{{10, 20}, {14, 22}}).from, P(0, 0));
  EXPECT_EQ(mapped(down, tool::Segment{{10, 20}, {14, 22}}).to, P(16, 8));
  EXPECT_EQ(mapped(down, tool::Cross{{11, 20.5}}).at, P(4, 2));
  EXPECT_EQ(mapped(down, tool::Spot{{11, 20.5}}).at, P(4, 2));
}
