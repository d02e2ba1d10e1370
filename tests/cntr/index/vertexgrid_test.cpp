// SPDX-License-Identifier: MIT
//
// The grid of vertices. What a contour makes of it is tested in contour_edges_test.cpp.

#include <cntr/index/vertexgrid.h>

#include <cmath>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <testing/plain/edges.h>
#include <testing/shapes/numbers.h>
#include <testing/shapes/shapes.h>

namespace {

using cntr::index::VertexGrid;
using testing::ElementsAre;
using testing::IsEmpty;

using Point = qcVector<2>;
using Points = std::vector<Point>;

TEST(VertexGridTest, TellsItsTolerance) { EXPECT_EQ(VertexGrid(Points(), 0.25).tolerance(), 0.25); }

TEST(VertexGridTest, WithoutVerticesFindsNothing) {
  EXPECT_THAT(VertexGrid(Points(), 1).near(Points(), {0, 0}), IsEmpty());
}

TEST(VertexGridTest, FindsVerticesInAllNineCellsAndNotInTheOthers) {
  // One vertex for each cell of 5 by 5, as near to the middle as the cell allows.
  Points points;
  for (int x = -2; x <= 2; ++x) {
    for (int y = -2; y <= 2; ++y) points.emplace_back(0.6 * x, 0.6 * y);
  }
  const VertexGrid grid(points, 1);
  EXPECT_THAT(grid.near(points, {0, 0}), ElementsAre(6, 7, 8, 11, 12, 13, 16, 17, 18));
}

TEST(VertexGridTest, AsksForTheDistanceToo) {
  const Points points = {{0.9, 0.9}, {0.9, 0}};
  EXPECT_THAT(VertexGrid(points, 1).near(points, {0, 0}), ElementsAre(1));
}

TEST(VertexGridTest, PutsNumbersBeyond64BitsInTheOutermostCells) {
  const double edge = std::ldexp(1.0, 63);
  const Points points = {{edge, 0}, {-edge, 0}, {std::nextafter(edge, 0), 0}, {1e300, 0}};
  const VertexGrid grid(points, 1);
  EXPECT_THAT(grid.near(points, {edge, 0}), ElementsAre(0));
  EXPECT_THAT(grid.near(points, {-edge, 0}), ElementsAre(1));
  EXPECT_THAT(grid.near(points, {std::nextafter(edge, 0), 0}), ElementsAre(2));
  EXPECT_THAT(grid.near(points, {1e300, 0}), ElementsAre(3));
  EXPECT_THAT(grid.near(points, {infinity, 0}), IsEmpty());
}

TEST(VertexGridTest, FindsNothingByNumbersThatAreNone) {
  const Points points = {{notANumber, notANumber}, {0, 0}, {infinity, -infinity}};
  const VertexGrid grid(points, 1);
  EXPECT_THAT(grid.near(points, {notANumber, 0}), IsEmpty());
  EXPECT_THAT(grid.near(points, {infinity, -infinity}), IsEmpty());
  EXPECT_THAT(grid.near(points, {0, 0}), ElementsAre(1));
}

TEST(VertexGridTest, FindsEveryVertexNearerThanTheTolerance) {
  // As many as a plain scan finds.
  shapes::Random random(21);
  int found = 0;
  for (int round = 0; round < 300; ++round) {
    const Points points = shapes::closedWalk(random, 60);
    const double tolerance = std::pow(10.0, random.uniform(-3, 2));
    const VertexGrid grid(points, tolerance);
    const Point p = points[random.below(points.size())] + Point(tolerance * random.uniform(), 0);
    std::size_t expected = 0;
    for (const Point& vertex : points) expected += vertex.distance(p) < tolerance ? 1U : 0U;
    ASSERT_EQ(grid.near(points, p).size(), expected) << round;
    found += static_cast<int>(expected);
  }
  EXPECT_GT(found, 1000);
}

TEST(VertexGridTest, AnswersInTheOrderOfThePlainAnswer) {
  shapes::Random random(22);
  for (int round = 0; round < 300; ++round) {
    const Points points = shapes::gridPoints(random, 80, 12);
    const double tolerance = 0.25 * static_cast<double>(1 + random.below(16));
    const Point p(0.25 * static_cast<double>(random.below(48)),
                  0.5 * static_cast<double>(random.below(24)));
    ASSERT_EQ(VertexGrid(points, tolerance).near(points, p),
              plain::vertexIndex({points, true}, p, tolerance))
        << round;
  }
}

}  // namespace
