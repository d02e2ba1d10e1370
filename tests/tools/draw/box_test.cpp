// SPDX-License-Identifier: MIT
//
// Boxes that grow, and how they lie relative to each other.

#include <tools/draw/box.h>

#include <gtest/gtest.h>

using tool::Box;
using tool::boxAround;

namespace {

using P = qcVector<2>;

constexpr Box box(double x, double y, double width, double height) {
  return {{x, y}, {x + width, y + height}};
}

}  // namespace

TEST(Box, IsEmptyUntilItHoldsSomething) {
  Box none;
  EXPECT_TRUE(none.isEmpty());
  none.enclose(P(3, 4));
  EXPECT_FALSE(none.isEmpty());
  EXPECT_EQ(none.low, P(3, 4));
  EXPECT_EQ(none.high, P(3, 4));
  EXPECT_TRUE(boxAround({}).isEmpty());
}

TEST(Box, GrowsWithPointsAndBoxes) {
  Box grown = boxAround({{3, 4}, {1, 9}, {2, -1}});
  EXPECT_EQ(grown.low, P(1, -1));
  EXPECT_EQ(grown.high, P(3, 9));
  grown.enclose(box(-5, 0, 20, 30));
  EXPECT_EQ(grown.low, P(-5, -1));
  EXPECT_EQ(grown.high, P(15, 30));
  grown.enclose(Box());
  EXPECT_EQ(grown.low, P(-5, -1));
  EXPECT_EQ(grown.high, P(15, 30));
}

TEST(Box, HasSidesAndAMiddle) {
  EXPECT_EQ(box(1, 2, 3, 4).width(), 3.0);
  EXPECT_EQ(box(1, 2, 3, 4).height(), 4.0);
  EXPECT_EQ(box(1, 2, 3, 4).extent(), 4.0);
  EXPECT_EQ(box(1, 2, 5, 4).extent(), 5.0);
  EXPECT_EQ(box(1, 2, 4, 6).middle(), P(3, 5));
}

TEST(Box, GetsABorderAllAround) {
  const Box wide = box(1, 2, 3, 4).widened(10);
  EXPECT_EQ(wide.low, P(-9, -8));
  EXPECT_EQ(wide.high, P(14, 16));
}

TEST(Box, MeetsWhatSharesAPointWithIt) {
  const Box middle = box(0, 0, 10, 10);
  EXPECT_TRUE(middle.meets(box(10, 10, 5, 5)));
  EXPECT_TRUE(middle.meets(box(-5, -5, 5, 5)));
  EXPECT_TRUE(middle.meets(box(2, 2, 1, 1)));
  EXPECT_FALSE(middle.meets(box(11, 0, 5, 5)));
  EXPECT_FALSE(middle.meets(box(-6, 0, 5, 5)));
  EXPECT_FALSE(middle.meets(box(0, 11, 5, 5)));
  EXPECT_FALSE(middle.meets(box(0, -6, 5, 5)));
}

TEST(Box, HoldsWhatDoesNotReachBeyondIt) {
  const Box outer = box(0, 0, 10, 10);
  EXPECT_TRUE(outer.holds(outer));
  EXPECT_TRUE(outer.holds(box(2, 2, 1, 1)));
  EXPECT_FALSE(outer.holds(box(-1, 2, 5, 5)));
  EXPECT_FALSE(outer.holds(box(2, -1, 5, 5)));
  EXPECT_FALSE(outer.holds(box(6, 2, 5, 5)));
  EXPECT_FALSE(outer.holds(box(2, 6, 5, 5)));
}
