// SPDX-License-Identifier: MIT
//
// The short proof that rings are simple, against every pair of edges.

#include <cntr/plane/starcentre.h>

#include <cmath>
#include <limits>
#include <vector>

#include <gtest/gtest.h>
#include <testing/shapes/shapes.h>
#include <tests/cntr/figures.h>

#include "simple_ring.h"

namespace {

using figures::reversed;
using figures::square;
using shapes::Points;
using simplering::isSimple;

bool isStarShaped(const Points& ring) {
  cntr::plane::Box box;
  for (const qcVector<2>& p : ring) box.add(p);
  return cntr::plane::starCentre(ring, box).has_value();
}

Points moved(Points ring, const qcVector<2>& by, double factor) {
  for (qcVector<2>& p : ring) p = p * factor + by;
  return ring;
}

/// Vertices in order of direction around the origin, 10 to 40 away, in `turns` turns.
Points star(shapes::Random& random, std::size_t n, std::size_t turns) {
  const Points directions = shapes::regularPolygon(n, 1.0, {0, 0});
  Points ring;
  for (std::size_t i = 0; i < n; ++i) {
    const double radius = random.uniform(10.0, 40.0);
    ring.push_back(directions[i * turns % n] * radius);
  }
  return ring;
}

TEST(StarShape, IsFoundInOutlinesOfSingleObjects) {
  EXPECT_TRUE(isStarShaped(square(10)));
  EXPECT_TRUE(isStarShaped(reversed(square(10))));
  for (const std::size_t n : {10U, 100U, 1000U, 5000U}) {
    EXPECT_TRUE(isStarShaped(shapes::regularPolygon(n, 7.0, {1, 2}))) << n;
    EXPECT_TRUE(isStarShaped(shapes::smoothStar(n))) << n;
    EXPECT_TRUE(isStarShaped(reversed(shapes::spikyStar(n)))) << n;
  }
}

TEST(StarShape, IsFoundInNearlyAllRandomStarsAnywhereAndAtAnySize) {
  int found = 0;
  constexpr int count = 3000;
  for (std::uint64_t seed = 0; seed < count; ++seed) {
    shapes::Random random(seed);
    const std::size_t n = 5 + random.below(200);
    Points ring = star(random, n, 1);
    if (random.chance(0.5)) ring = reversed(ring);
    const double x = random.uniform(-1e9, 1e9);
    const double size = std::ldexp(1.0, static_cast<int>(random.below(400)) - 200);
    if (random.chance(0.5)) ring = moved(ring, {x, -x}, 1.0);
    if (random.chance(0.5)) ring = moved(ring, {0, 0}, size);
    found += isStarShaped(ring) ? 1 : 0;
  }
  EXPECT_GT(found, count * 99 / 100);
}

TEST(StarShape, IsNoRingThatTouchesItselfOrTurnsTwice) {
  EXPECT_FALSE(isStarShaped({}));
  EXPECT_FALSE(isStarShaped(Points{{1, 1}}));
  EXPECT_FALSE(isStarShaped(Points{{0, 0}, {5, 0}}));
  EXPECT_FALSE(isStarShaped(Points{{0, 0}, {5, 0}, {0, 0}, {5, 0}}));
  EXPECT_FALSE(isStarShaped(shapes::starPolygon(7, 2, 10.0)));
  EXPECT_FALSE(isStarShaped(shapes::starPolygon(7, 3, 10.0)));
  EXPECT_FALSE(isStarShaped(Points{{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0}, {10, 0}, {10, 10}}));
  for (std::uint64_t seed = 0; seed < 200; ++seed) {
    shapes::Random random(seed);
    const Points twice = star(random, 11 + 2 * random.below(50), 2);
    EXPECT_FALSE(isStarShaped(twice)) << seed;
  }
}

TEST(StarShape, IsNoRingWithNumbersThatAreNotFiniteOrTooSmallToMultiply) {
  for (const double bad :
       {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(), 1e308}) {
    EXPECT_FALSE(isStarShaped(Points{{0, 0}, {bad, 0}, {bad, 10}, {0, 10}})) << bad;
  }
  EXPECT_FALSE(isStarShaped(moved(square(10), {0, 0}, 1e-150)));
}

TEST(StarShape, IsOnlyFoundWhereNoTwoEdgesMeet) {
  int found = 0;
  int missed = 0;
  for (std::uint64_t seed = 0; seed < 20000; ++seed) {
    shapes::Random random(seed);
    const std::size_t n = 3 + random.below(6);
    Points ring = shapes::gridPoints(random, n, 5);
    if (random.chance(0.3)) ring = moved(ring, {1e9 + 1.0 / 3.0, -1e9}, 1.0);
    if (isStarShaped(ring)) {
      ++found;
      ASSERT_TRUE(isSimple(ring)) << seed;
    } else if (isSimple(ring)) {
      ++missed;
    }
  }
  EXPECT_GT(found, 1000);
  EXPECT_LT(missed, found / 4);
}

TEST(StarShape, IsNotFoundWhereTheLastBitDecides) {
  for (std::uint64_t seed = 0; seed < 4000; ++seed) {
    shapes::Random random(seed);
    const std::size_t n = 6 + random.below(20);
    Points ring = star(random, n, 1);
    // A vertex is led to an edge on the other side, or as near as doubles get.
    const std::size_t edge = random.below(n);
    const double share = random.uniform();
    const qcVector<2> on = ring[edge] + (ring[(edge + 1) % n] - ring[edge]) * share;
    ring[(edge + n / 2) % n] = on;
    if (isStarShaped(ring)) {
      ASSERT_TRUE(isSimple(ring)) << seed;
    }
  }
}

}  // namespace
