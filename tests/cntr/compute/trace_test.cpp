// SPDX-License-Identifier: MIT
//
// The walk along the outside of a boundary. What regions make of it is tested in
// tests/cntr/model/region_repair_test.cpp.

#include <cntr/compute/repair.h>

#include <gmock/gmock.h>
#include <testing/plain/measures.h>
#include <testing/plain/repair.h>
#include <testing/twin/repetitions.h>
#include <testing/twin/same.h>
#include <tests/cntr/figures.h>

#include "subject.h"

namespace {

using cntr::compute::Outline;
using cntr::compute::startingEdge;
using cntr::compute::traceBoundary;
using figures::square;
using subject::forEachShape;
using subject::Point;
using subject::Points;
using subject::Subject;
using testing::ElementsAre;

constexpr double probeDistance = 0.01;

TEST(StartingEdgeTest, IsTheFirstOnTheOutside) {
  EXPECT_EQ(startingEdge(Outline(square(4)), probeDistance), 0U);
  // The first two edges cross the others.
  EXPECT_EQ(startingEdge(Outline({{0, 0}, {4, 4}, {4, 0}, {0, 4}}), probeDistance), 1U);
}

TEST(StartingEdgeTest, MeetsNothingButItsNeighbours) {
  // A vertex touches edge 0 from within.
  EXPECT_EQ(startingEdge(Outline({{0, 0}, {4, 0}, {4, 4}, {2, 0}, {0, 4}}), probeDistance), 1U);
}

TEST(StartingEdgeTest, IsNeverTheClosingEdge) {
  // Edges 0 to 3 cross each other in pairs; only the closing edge lies free.
  const Points points = {{0, 0}, {4, 4}, {0, 4}, {4, 0}};
  EXPECT_EQ(startingEdge(Outline(points), probeDistance), 1U);
  EXPECT_FALSE(startingEdge(Outline({{0, 0}, {4, 4}}), probeDistance).has_value());
}

TEST(StartingEdgeTest, IsNoneWhereAllVerticesAreOneOrNan) {
  EXPECT_FALSE(startingEdge(Outline({{1, 1}}), probeDistance).has_value());
  EXPECT_FALSE(startingEdge(Outline(Points(9, {1, 1})), probeDistance).has_value());
  EXPECT_FALSE(
      startingEdge(Outline({{notANumber, 1}, {1, notANumber}, {2, 2}}), probeDistance).has_value());
  EXPECT_FALSE(traceBoundary(Outline(Points(9, {1, 1})), probeDistance).has_value());
}

TEST(TraceBoundaryTest, GoesOnceRoundASimpleOne) {
  EXPECT_THAT(traceBoundary(Outline(square(4)), probeDistance).value(),
              ElementsAre(Point(4, 0), Point(4, 4), Point(0, 4), Point(0, 0)));
}

TEST(TraceBoundaryTest, TurnsOntoEveryEdgeThatItMeets) {
  EXPECT_THAT(
      traceBoundary(Outline({{0, 0}, {4, 4}, {4, 0}, {0, 4}}), probeDistance).value(),
      ElementsAre(Point(4, 0), Point(2, 2), Point(0, 0), Point(0, 4), Point(2, 2), Point(4, 4)));
}

TEST(TraceBoundaryTest, IsThatOfThePlainDefinition) {
  std::size_t traced = 0;
  forEachShape(repetitions(1200), shapes::any, 3, 50, [&](const Subject& s, shapes::Random&) {
    const plain::Region region{s.points(), {}};
    const Outline outline(s.points());
    const double across = 0.01 * plain::medianFeatureSize(plain::boundary(region));
    const auto start =
        same::outcome([&] { return static_cast<long>(plain::startingEdge(region)); });
    const auto found = startingEdge(outline, across);
    ASSERT_EQ(found.has_value(), start.index() == 0);
    if (found) {
      EXPECT_EQ(static_cast<long>(*found), std::get<0>(start));
    }
    const auto expected = same::outcome([&] { return plain::tracedBoundary(region); });
    const auto walk = traceBoundary(outline, across);
    ASSERT_EQ(walk.has_value(), expected.index() == 0);
    if (!walk) return;
    EXPECT_TRUE(same::same(*walk, std::get<0>(expected)));
    ++traced;
  });
  EXPECT_GT(traced, repetitions(200));
}

}  // namespace
