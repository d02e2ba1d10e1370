// SPDX-License-Identifier: MIT
//
// The hull by exact turns against its definition, and against every point of larger sets.

#include <cntr/compute/exacthull.h>

#include <algorithm>
#include <cmath>

#include <cntr/plane/orientation.h>
#include <gtest/gtest.h>
#include <platform/core/hull.h>
#include <testing/plain/descriptors.h>
#include <testing/shapes/numbers.h>
#include <testing/shapes/shapes.h>

#include "hard_points.h"

namespace {

using cntr::compute::exactHull;
using cntr::compute::ExactHull;
using shapes::Point;
using shapes::Points;

Points unscaled(const ExactHull& hull) {
  Points points;
  for (const Point& p : hull.vertices) {
    points.emplace_back(std::ldexp(p.x(), -hull.exponent), std::ldexp(p.y(), -hull.exponent));
  }
  return points;
}

/// Whether `hull` is strictly convex, counter-clockwise, and holds all points.
bool isHullOf(const Points& hull, const Points& points) {
  for (std::size_t i = 0; i < hull.size(); ++i) {
    const Point& a = hull[i];
    const Point& b = hull[(i + 1) % hull.size()];
    if (cntr::plane::orientation(a, b, hull[(i + 2) % hull.size()]) <= 0) return false;
    for (const Point& p : points) {
      if (cntr::plane::orientation(a, b, p) < 0) return false;
    }
  }
  return true;
}

TEST(ExactHull, IsTheHullOfTheDefinition) {
  int lost = 0;
  for (std::uint64_t seed = 0; seed < 3000; ++seed) {
    const Points points = hard_points::make(seed);
    const Points hull = unscaled(exactHull(points));
    ASSERT_EQ(hull, plain::exactHull(points)) << seed;
    Points rounded;
    qfConvexHull(points, rounded);
    lost += rounded != hull;
  }
  // Otherwise computing the turns in plain doubles would be enough.
  EXPECT_GT(lost, 100);
}

TEST(ExactHull, HoldsEveryPointOfLargeSets) {
  for (std::uint64_t seed = 0; seed < 300; ++seed) {
    const Points points = shapes::anyFinite(seed, 600).points;
    const Points hull = unscaled(exactHull(points));
    if (hull.size() >= 3) {
      ASSERT_TRUE(isHullOf(hull, points)) << seed;
      const Point& first =
          *std::min_element(points.begin(), points.end(), [](const Point& a, const Point& b) {
            return a.x() < b.x() || (a.x() == b.x() && a.y() < b.y());
          });
      ASSERT_EQ(hull.front(), first) << seed;
    }
  }
}

TEST(ExactHull, DoesNotDependOnTheOrderOfItsPoints) {
  for (const Points& points :
       {shapes::smoothStar(3000), shapes::comb(500), shapes::spikyStar(100)}) {
    const Points hull = unscaled(exactHull(points));
    EXPECT_TRUE(isHullOf(hull, points));
    Points turned(points.rbegin(), points.rend());
    std::rotate(turned.begin(), turned.begin() + 77, turned.end());
    EXPECT_EQ(unscaled(exactHull(turned)), hull);
  }
}

TEST(ExactHull, LeavesOutNumbersThatAreNone) {
  Points points = shapes::smoothStar(200);
  const Points hull = unscaled(exactHull(points));
  points.insert(points.begin() + 50, {notANumber, 1e9});
  points.insert(points.begin(), {1e9, notANumber});
  points.emplace_back(notANumber, infinity);
  EXPECT_EQ(unscaled(exactHull(points)), hull);
  EXPECT_TRUE(exactHull(Points{{notANumber, 0}}).vertices.empty());
  EXPECT_TRUE(exactHull(Points{{notANumber, 0}}).finite);
  EXPECT_TRUE(exactHull(Points{}).vertices.empty());
}

TEST(ExactHull, SaysThatACoordinateIsInfinite) {
  EXPECT_FALSE(exactHull(Points{{0, 0}, {infinity, 0}, {0, 1}}).finite);
  EXPECT_FALSE(exactHull(Points{{0, 0}, {1, -infinity}}).finite);
}

TEST(ExactHull, ScalesTheLargestAndTheSmallestNumbers) {
  for (const double size : {5e-324, 1e-300, 1e-160, 1e160, 1e300}) {
    const Points points = {{0, 0}, {4 * size, 0}, {4 * size, 4 * size}, {0, 4 * size}};
    EXPECT_EQ(unscaled(exactHull(points)), points) << size;
  }
}

}  // namespace
