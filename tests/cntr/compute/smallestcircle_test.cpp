// SPDX-License-Identifier: MIT
//
// The support of the smallest circle: exact certificates that it holds all points and that no
// smaller circle does, for few hard points and for many.

#include <cntr/compute/smallestcircle.h>

#include <algorithm>
#include <vector>

#include <cntr/compute/exacthull.h>
#include <gtest/gtest.h>
#include <testing/plain/exact.h>

#include "hard_points.h"

namespace {

using cntr::compute::CircleSupport;
using plain::Exact;
using shapes::Point;
using shapes::Points;

struct Exact2 {
  Exact x;
  Exact y;
};

Exact2 from(const Point& a, const Point& b) { return {Exact(b.x()) - a.x(), Exact(b.y()) - a.y()}; }
Exact dot(const Exact2& a, const Exact2& b) { return a.x * b.x + a.y * b.y; }
Exact cross(const Exact2& a, const Exact2& b) { return a.x * b.y - a.y * b.x; }

/// Whether p is outside the circle on a diameter, or through three points that turn
/// counter-clockwise.
bool isOutside(const CircleSupport& circle, const Point& p) {
  const auto& [a, b, c] = circle.points;
  const Exact2 u = from(p, a);
  const Exact2 v = from(p, b);
  if (circle.count == 1) return p != a;
  if (circle.count == 2) return dot(u, v).sign() > 0;
  const Exact2 w = from(p, c);
  const Exact inside = dot(u, u) * cross(v, w) + dot(v, v) * cross(w, u) + dot(w, w) * cross(u, v);
  return inside.sign() < 0;
}

/// A circle on a diameter, or on a triangle whose angles are all acute, is the smallest around
/// them.
bool isSmallestAroundItself(const CircleSupport& circle) {
  const auto& [a, b, c] = circle.points;
  if (circle.count < 3) return circle.count == 1 || a != b;
  return cross(from(a, b), from(a, c)).sign() > 0 && dot(from(a, b), from(a, c)).sign() > 0 &&
         dot(from(b, c), from(b, a)).sign() > 0 && dot(from(c, a), from(c, b)).sign() > 0;
}

void expectToBeSmallest(const Points& hull) {
  const CircleSupport circle = cntr::compute::smallestCircle(hull);
  EXPECT_TRUE(isSmallestAroundItself(circle));
  for (std::size_t i = 0; i < circle.count; ++i) {
    EXPECT_NE(std::find(hull.begin(), hull.end(), circle.points[i]), hull.end());
  }
  EXPECT_TRUE(
      std::none_of(hull.begin(), hull.end(), [&](const Point& p) { return isOutside(circle, p); }));
}

TEST(SmallestCircle, IsCertifiedForHardPoints) {
  for (std::uint64_t seed = 0; seed < 3000; ++seed) {
    SCOPED_TRACE(seed);
    expectToBeSmallest(cntr::compute::exactHull(hard_points::make(seed)).vertices);
  }
}

TEST(SmallestCircle, IsCertifiedForManyPoints) {
  for (const Points& points :
       {shapes::smoothStar(2000), shapes::spikyStar(3000), shapes::comb(400),
        shapes::regularPolygon(300, 450, Point(1e6, 3)), shapes::regularPolygon(64, 1, Point())}) {
    expectToBeSmallest(cntr::compute::exactHull(points).vertices);
  }
  for (std::uint64_t seed = 0; seed < 100; ++seed) {
    SCOPED_TRACE(seed);
    const Points hull = cntr::compute::exactHull(shapes::anyFinite(seed, 200).points).vertices;
    if (!hull.empty()) expectToBeSmallest(hull);
  }
}

TEST(SmallestCircle, RestsOnTwoPointsWhereARightAngleLies) {
  const CircleSupport circle = cntr::compute::smallestCircle(Points{{0, 0}, {4, 0}, {4, 3}});
  EXPECT_EQ(circle.count, 2U);
  const CircleSupport square =
      cntr::compute::smallestCircle(Points{{0, 0}, {4, 0}, {4, 4}, {0, 4}});
  EXPECT_EQ(square.count, 2U);
  EXPECT_EQ(cntr::compute::smallestCircle(Points{{7, 8}}).count, 1U);
}

}  // namespace
