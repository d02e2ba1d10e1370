// SPDX-License-Identifier: MIT
//
// The nearest edge of several paths and their winding numbers, against scans of all edges.

#include <cntr/compute/curves.h>

#include <cmath>
#include <vector>

#include <gtest/gtest.h>
#include <platform/core/kernels.h>
#include <testing/plain/deviation.h>
#include <testing/plain/filled.h>
#include <testing/shapes/shapes.h>

namespace {

using cntr::compute::Curves;
using cntr::plane::Path;
using shapes::Point;
using shapes::Points;

TEST(Curves, TellTheLeastDistanceBitForBit) {
  for (std::uint64_t seed = 0; seed < 400; ++seed) {
    shapes::Random random(seed);
    const shapes::Shape first = shapes::anyFinite(seed, 100);
    const shapes::Shape second = shapes::anyFinite(seed + 1000, 100);
    const std::vector<Path> paths = {{first.points, first.closed}, {second.points, second.closed}};
    if (first.points.empty()) continue;
    const Curves curves(paths);
    for (int i = 0; i < 20; ++i) {
      const Point p = shapes::queryPoint(random, random.chance(0.5) ? first.points : second.points);
      if (!std::isfinite(p.x()) || !std::isfinite(p.y())) continue;
      const Curves::Nearest nearest = curves.nearest(p);
      ASSERT_EQ(nearest.distance,
                plain::distanceToCurves(
                    {{first.points, first.closed}, {second.points, second.closed}}, p))
          << seed;
      const auto& [from, to] = curves.edges()[nearest.edge];
      ASSERT_EQ(qnKernel::distanceToSegment(p, from, to), nearest.distance) << seed;
    }
  }
}

TEST(Curves, HaveOneEdgeOfEachPathOfOneVertex) {
  const Points one = {{3, 4}};
  const Points two = {{0, 0}, {1, 0}};
  const std::vector<Path> paths = {
      {one, true}, {one, false}, {{}, true}, {two, false}, {two, true}};
  const Curves curves(paths);
  ASSERT_EQ(curves.edges().size(), 5U);
  EXPECT_EQ(curves.edges()[0].from, Point(3, 4));
  EXPECT_EQ(curves.edges()[0].to, Point(3, 4));
  EXPECT_EQ(curves.nearest({3, 8}).distance, 4.0);
}

TEST(Curves, CountHowOftenTheyRunAroundAPoint) {
  const Points square = {{0, 0}, {4, 0}, {4, 4}, {0, 4}};
  const Points hole = {{1, 1}, {1, 3}, {3, 3}, {3, 1}};
  const std::vector<Path> paths = {{square, true}, {hole, true}, {square, true}};
  const Curves curves(paths);
  EXPECT_EQ(curves.windingNumber({0.5, 1.0}), 2);
  EXPECT_EQ(curves.windingNumber({2, 2}), 1);
  EXPECT_EQ(curves.windingNumber({-1, 1}), 0);
  EXPECT_EQ(curves.windingNumber({5, 4}), 0);
}

TEST(Curves, CountAsTheDefinitionDoes) {
  for (std::uint64_t seed = 0; seed < 300; ++seed) {
    shapes::Random random(seed);
    const Points star = seed % 2 == 0 ? shapes::starPolygon(5 + 2 * random.below(20), 2, 100.0)
                                      : shapes::cloud(random, 3 + random.below(30));
    const std::vector<Path> paths = {{star, true}};
    const Curves curves(paths);
    for (const Point& p : shapes::pointsInBox(star, 50, seed)) {
      ASSERT_EQ(curves.windingNumber(p), plain::windingNumber(star, p)) << seed;
    }
  }
}

}  // namespace
