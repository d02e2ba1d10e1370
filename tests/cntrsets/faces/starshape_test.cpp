// SPDX-License-Identifier: MIT
//
// The short proofs that rings are simple, against every pair of edges and against the sweep.

#include <cntrsets/faces/starshape.h>

#include <cmath>
#include <limits>

#include <cntr/plane/orientation.h>
#include <cntrsets/filled.h>
#include <gtest/gtest.h>
#include <tests/cntrsets/features.h>

namespace {

using cntr::plane::dotSign;
using cntr::sets::isStarShaped;
using cntr::sets::orientation;
using features::Feature;
using features::Points;

/// Neighbours never repeat a vertex.
Points withoutRepeats(const Points& ring) {
  Points result;
  for (const qcVector<2>& p : ring)
    if (result.empty() || result.back() != p) result.push_back(p);
  while (result.size() > 1 && result.front() == result.back()) result.pop_back();
  return result;
}

bool isOn(const qcVector<2>& a, const qcVector<2>& b, const qcVector<2>& p) {
  return orientation(a, b, p) == 0 && dotSign(p, a, p, b) <= 0;
}

bool meet(const qcVector<2>& a, const qcVector<2>& b, const qcVector<2>& c, const qcVector<2>& d) {
  if (isOn(a, b, c) || isOn(a, b, d) || isOn(c, d, a) || isOn(c, d, b)) return true;
  return orientation(a, b, c) * orientation(a, b, d) < 0 &&
         orientation(c, d, a) * orientation(c, d, b) < 0;
}

/// Asked of every pair of edges.
bool isSimple(const Points& given) {
  const Points ring = withoutRepeats(given);
  const std::size_t n = ring.size();
  if (n < 3) return n < 2;
  const auto at = [&](std::size_t i) { return ring[i % n]; };
  for (std::size_t i = 0; i < n; ++i) {
    if (isOn(at(i), at(i + 1), at(i + 2)) || isOn(at(i + 1), at(i + 2), at(i))) return false;
    for (std::size_t j = i + 2; j < n; ++j) {
      const bool areNeighbours = j + 1 == i + n;
      if (!areNeighbours && meet(at(i), at(i + 1), at(j), at(j + 1))) return false;
    }
  }
  return true;
}

Points moved(Points ring, const qcVector<2>& by, double factor) {
  for (qcVector<2>& p : ring) p = p * factor + by;
  return ring;
}

/// Vertices in the order of directions around the origin, 10 to 40 away; of `turns` turns.
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
  EXPECT_TRUE(isStarShaped(features::square));
  EXPECT_TRUE(isStarShaped(features::reversed(features::square)));
  for (const std::size_t n : {10U, 100U, 1000U, 5000U}) {
    EXPECT_TRUE(isStarShaped(shapes::regularPolygon(n, 7.0, {1, 2}))) << n;
    EXPECT_TRUE(isStarShaped(shapes::smoothStar(n))) << n;
    EXPECT_TRUE(isStarShaped(features::reversed(shapes::spikyStar(n)))) << n;
  }
}

TEST(StarShape, IsFoundInNearlyAllRandomStarsAnywhereAndAtAnySize) {
  int found = 0;
  constexpr int count = 3000;
  for (std::uint64_t seed = 0; seed < count; ++seed) {
    shapes::Random random(seed);
    const std::size_t n = 5 + random.below(200);
    Points ring = star(random, n, 1);
    if (random.chance(0.5)) ring = features::reversed(ring);
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
  EXPECT_FALSE(isStarShaped(moved(features::square, {0, 0}, 1e-150)));
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

/// The same with a triangle beside it, which keeps the proof for single rings out.
qcRingContact contactBySweep(const Points& ring) {
  return qf_RingContact(
      {{ring, {}}, {{{-1e10, -1e10}, {-1e10, -1e10 + 1.0}, {-1e10 + 1.0, -1e10}}, {}}});
}

TEST(RingContact, OfSingleRingsIsThatOfTheSweep) {
  int simple = 0;
  for (std::uint64_t seed = 0; seed < 6000; ++seed) {
    shapes::Random random(seed);
    const std::size_t kind = random.below(7);
    const std::size_t n = 4 + random.below(kind < 2 ? 5 : 40);
    Points ring;
    switch (kind) {
      case 0:
        ring = shapes::gridPoints(random, n, 4);
        break;
      case 1:
        ring = shapes::cloud(random, n);
        break;
      case 2:
        ring = shapes::gridWalk(random, n);
        break;
      case 3:
        ring = shapes::skyline(random, n);
        break;
      case 4:
        ring = shapes::closedWalk(random, n);
        break;
      case 5:
        ring = shapes::comb(10 + n, seed + 1);
        break;
      default:
        ring = star(random, n, 1);
        break;
    }
    if (random.chance(0.2)) shapes::repeatVertices(random, ring, ring.size() + 5);
    if (random.chance(0.2)) shapes::addVerticesOnEdges(random, ring, ring.size() + 3);
    const qcRingContact contact = qf_RingContact({{ring, {}}});
    ASSERT_EQ(contact, contactBySweep(ring)) << seed;
    ASSERT_EQ(contact == qcRingContact::eSimple, isSimple(ring)) << seed;
    simple += contact == qcRingContact::eSimple ? 1 : 0;
  }
  EXPECT_GT(simple, 2000);
}

}  // namespace
