// SPDX-License-Identifier: MIT
//
// The conditions for one point and for all points of a cell.

#include <cntr/plane/containmentconditions.h>

#include <cmath>

#include <gtest/gtest.h>
#include <testing/shapes/shapes.h>

namespace {

using cntr::plane::Box;
using cntr::plane::containmentMargin;
using shapes::Point;

/// A box with its first vertex in the middle: the ray, 2 * 50 long, is too short from its corners.
const Box outlineBounds{-50, -50, 50, 50};
const Point first(0, 0);
constexpr double outlineRadius = 50.0;

TEST(ContainmentConditionsTest, VerticesKeepTheMarginFromTheRay) {
  EXPECT_DOUBLE_EQ(cntr::plane::vertexMargin(1), containmentMargin);
  EXPECT_DOUBLE_EQ(cntr::plane::vertexMargin(3), 2.0 * containmentMargin);
  EXPECT_GT(cntr::plane::vertexMargin(100), 63.0 * containmentMargin);
}

TEST(ContainmentConditionsTest, TheRayEndsOutsideNearTheFirstVertexOrTheMiddle) {
  const auto ends = [](const Point& p) {
    return cntr::plane::rayEndsOutside(outlineBounds, first, outlineRadius, p);
  };
  EXPECT_TRUE(ends({0, 0}));
  EXPECT_TRUE(ends({49, 0})) << "near the first vertex";
  EXPECT_FALSE(ends({50, 0})) << "the margin is missing";
  EXPECT_FALSE(ends({40, 40}));
  const Box narrow{-50, -1, 50, 1};
  EXPECT_TRUE(cntr::plane::rayEndsOutside(narrow, Point(-90, 0), 70.0, Point(30, 0)))
      << "near enough to the farthest corner";
  EXPECT_FALSE(cntr::plane::rayEndsOutside(narrow, Point(-90, 0), 40.0, Point(30, 0)));
}

TEST(ContainmentConditionsTest, WhatHoldsForACellHoldsForItsPoints) {
  shapes::Random random(1);
  std::size_t sure = 0;
  for (int i = 0; i < 2000; ++i) {
    const double x = random.uniform(-50, 40);
    const double y = random.uniform(-50, 40);
    const Box cell{x, y, x + random.uniform(0, 10), y + random.uniform(0, 10)};
    const bool allEnd = cntr::plane::rayEndsOutside(outlineBounds, first, outlineRadius, cell);
    bool cornersEnd = true;
    for (const Point& p : {Point(cell.minX, cell.minY), Point(cell.maxX, cell.minY),
                           Point(cell.minX, cell.maxY), Point(cell.maxX, cell.maxY)}) {
      cornersEnd &= cntr::plane::rayEndsOutside(outlineBounds, first, outlineRadius, p);
    }
    ASSERT_EQ(allEnd, cornersEnd) << i;
    sure += allEnd ? 1 : 0;
  }
  EXPECT_GT(sure, 500U);
  EXPECT_LT(sure, 1900U);
}

TEST(ContainmentConditionsTest, ACellKeepsTheMarginAsPointsDo) {
  const auto ends = [](double right) {
    return cntr::plane::rayEndsOutside(outlineBounds, first, outlineRadius, Box{0, 0, right, 0});
  };
  EXPECT_TRUE(ends(outlineRadius - 1.01 * containmentMargin));
  EXPECT_FALSE(ends(outlineRadius - 0.99 * containmentMargin));
}

TEST(ContainmentConditionsTest, TheRayAlwaysEndsOutsideOfABoxThatIsNarrowForItsLength) {
  const double diagonal = std::hypot(6, 8);
  EXPECT_FALSE(cntr::plane::rayAlwaysEndsOutside({0, 0, 6, 8}, 0.5 * diagonal));
  EXPECT_TRUE(
      cntr::plane::rayAlwaysEndsOutside({0, 0, 6, 8}, 0.5 * diagonal + 1.01 * containmentMargin));
  EXPECT_FALSE(
      cntr::plane::rayAlwaysEndsOutside({0, 0, 6, 8}, 0.5 * diagonal + 0.99 * containmentMargin));
}

TEST(ContainmentConditionsTest, CoordinatesAreSmallBelowAMillion) {
  EXPECT_TRUE(cntr::plane::isSmallEnough({-999999, 999999}));
  EXPECT_FALSE(cntr::plane::isSmallEnough({1e6, 0}));
  EXPECT_FALSE(cntr::plane::isSmallEnough({0, -1e6}));
  EXPECT_FALSE(cntr::plane::isSmallEnough({std::nan(""), 0}));
}

TEST(ContainmentConditionsTest, ALineCrossesAHeightBetweenItsEnds) {
  EXPECT_EQ(cntr::plane::crossingX({0, 0}, {4, 8}, 2), 1.0);
  EXPECT_EQ(cntr::plane::crossingX({4, 8}, {0, 0}, 6), 3.0);
}

}  // namespace
