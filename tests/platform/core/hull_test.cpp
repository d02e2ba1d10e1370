// SPDX-License-Identifier: MIT
//
// Convex hull: hand-written cases, an independent answer on small grids, and the plain chain, bit
// for bit, on many points.

#include <platform/core/hull.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <testing/shapes/numbers.h>

namespace {

using Point = qcVector<2>;
using Points = std::vector<Point>;

Points hullOf(const Points& points) {
  Points hull = {Point(99, 99)};
  qfConvexHull(points, hull);
  return hull;
}

struct HullCase {
  std::string what;
  Points points;
  Points hull;
};

TEST(HullTest, TypedCases) {
  const HullCase cases[] = {
      {"nothing", {}, {}},
      {"one point", {{3, 4}}, {{3, 4}}},
      {"one point again and again", {{3, 4}, {3, 4}, {3, 4}}, {{3, 4}}},
      {"two points", {{5, 1}, {3, 4}}, {{3, 4}, {5, 1}}},
      {"two points above each other", {{3, 4}, {3, 1}, {3, 4}}, {{3, 1}, {3, 4}}},
      {"a line", {{2, 2}, {0, 0}, {3, 3}, {1, 1}}, {{0, 0}, {3, 3}}},
      {"a vertical line", {{1, 2}, {1, 0}, {1, 3}, {1, 1}}, {{1, 0}, {1, 3}}},
      {"a triangle either way", {{0, 0}, {0, 2}, {2, 0}}, {{0, 0}, {2, 0}, {0, 2}}},
      {"a triangle", {{2, 0}, {0, 2}, {0, 0}}, {{0, 0}, {2, 0}, {0, 2}}},
      {"a square with all its middles",
       {{2, 2}, {1, 2}, {0, 2}, {0, 1}, {0, 0}, {1, 0}, {2, 0}, {2, 1}, {1, 1}},
       {{0, 0}, {2, 0}, {2, 2}, {0, 2}}},
      {"every corner twice",
       {{0, 0}, {2, 0}, {2, 2}, {0, 2}, {0, 0}, {2, 0}, {2, 2}, {0, 2}},
       {{0, 0}, {2, 0}, {2, 2}, {0, 2}}},
      {"a star",
       {{0, 3}, {-1, 1}, {-3, 0}, {-1, -1}, {0, -3}, {1, -1}, {3, 0}, {1, 1}},
       {{-3, 0}, {0, -3}, {3, 0}, {0, 3}}}};
  for (const HullCase& c : cases) EXPECT_EQ(hullOf(c.points), c.hull) << c.what;
}

TEST(HullTest, MayReplaceItsOwnInput) {
  Points points = {{0, 0}, {1, 1}, {2, 0}, {1, 3}, {2, 0}};
  qfConvexHull(points, points);
  EXPECT_EQ(points, (Points{{0, 0}, {2, 0}, {1, 3}}));
}

TEST(HullTest, LeavesOutWhatIsNoNumber) {
  const Points square = {{0, 0}, {2, 0}, {2, 2}, {0, 2}};
  Points points = square;
  points.emplace_back(notANumber, 1);
  points.emplace_back(1, notANumber);
  points.insert(points.begin(), Point(notANumber, notANumber));
  EXPECT_EQ(hullOf(points), square);
  EXPECT_TRUE(hullOf(Points(100, Point(notANumber, 0))).empty());
  Points many;
  for (int i = 0; i < 50; ++i) {
    many.insert(many.end(), square.begin(), square.end());
    many.emplace_back(notANumber, i);
    many.emplace_back(i, notANumber);
  }
  EXPECT_EQ(hullOf(many), square);
}

TEST(HullTest, ManyPointsMayLieFartherApartThanADoubleCanTell) {
  const Points corners = {{-1.5e308, 0}, {0, -1}, {1.5e308, 0}, {0, 1}};
  Points points;
  for (int i = 0; i < 20; ++i) points.insert(points.end(), corners.begin(), corners.end());
  EXPECT_EQ(hullOf(points), corners);
}

TEST(HullTest, OfEqualZerosTheFirstIsKept) {
  const Points hull = hullOf({{-0.0, 0.0}, {0.0, -0.0}, {1, 0}, {0, 1}});
  ASSERT_EQ(hull.size(), 3U);
  EXPECT_TRUE(std::signbit(hull[0].x()));
  EXPECT_FALSE(std::signbit(hull[0].y()));
}

TEST(HullTest, TurnsAreDecidedInPlainDoubles) {
  // At b the way turns left: (2^27 + 1) (2^28 + 1) exceeds 2^27 (2^28 + 3) by 1. The products are
  // equal in double precision.
  const double m = std::ldexp(1.0, 27);
  const Point a(0, 0), b(m + 1, m), c(2 * m + 3, 2 * m + 1), top(0, 3 * m);
  EXPECT_EQ(hullOf({a, b, c, top}), (Points{a, c, top}));
  EXPECT_EQ(hullOf({a, b - Point(0, 1), c, top}), (Points{a, b - Point(0, 1), c, top}));
}

/// All points that are corners of the hull of points with small integer coordinates, by asking for
/// every pair whether all others are on its left.
Points cornersByPairs(Points points) {
  std::sort(points.begin(), points.end(), [](const Point& a, const Point& b) {
    return a.x() < b.x() || (a.x() == b.x() && a.y() < b.y());
  });
  points.erase(std::unique(points.begin(), points.end()), points.end());
  const auto isEdge = [&](const Point& a, const Point& b) {
    return std::all_of(points.begin(), points.end(), [&](const Point& c) {
      const Point ab = b - a, ac = c - a;
      const double cross = ab.x() * ac.y() - ab.y() * ac.x();
      return cross > 0.0 || (cross == 0.0 && ab * ac >= 0.0 && ac * ac <= ab * ab);
    });
  };
  if (points.size() < 2) return points;
  Points corners = {points[0]};
  for (;;) {
    const auto next = std::find_if(points.begin(), points.end(), [&](const Point& p) {
      return !(p == corners.back()) && isEdge(corners.back(), p);
    });
    if (*next == points[0]) return corners;
    corners.push_back(*next);
  }
}

RC_GTEST_PROP(HullTest, IsTheCornersOnGrids, ()) {
  const int size = *rc::gen::inRange(1, 9);
  const auto count = *rc::gen::inRange<std::size_t>(0, 90);
  Points points;
  for (std::size_t i = 0; i < count; ++i) {
    points.emplace_back(*rc::gen::inRange(0, size), *rc::gen::inRange(-size, size));
  }
  RC_ASSERT(hullOf(points) == cornersByPairs(points));
}

void extendChain(Points& chain, std::size_t start, const Point& p) {
  const auto superfluous = [&] {
    const Point a = chain.end()[-2], b = chain.end()[-1];
    return (b.x() - a.x()) * (p.y() - a.y()) - (b.y() - a.y()) * (p.x() - a.x()) <= 0.0;
  };
  while (chain.size() >= start + 2 && superfluous()) chain.pop_back();
  chain.push_back(p);
}

/// Andrew's chains over one sort.
Points plainHull(Points points) {
  std::stable_sort(points.begin(), points.end(), [](const Point& a, const Point& b) {
    return a.x() != b.x() ? a.x() < b.x() : a.y() < b.y();
  });
  points.erase(std::unique(points.begin(), points.end()), points.end());
  if (points.size() < 2) return points;
  Points hull;
  for (const Point& p : points) extendChain(hull, 0, p);
  const std::size_t lowerEnd = hull.size() - 1;
  for (std::size_t i = points.size() - 1; i-- > 0;) extendChain(hull, lowerEnd, points[i]);
  hull.pop_back();
  return hull;
}

bool sameBits(const Points& a, const Points& b) {
  const auto same = [](const Point& p, const Point& q) {
    return std::bit_cast<std::uint64_t>(p.x()) == std::bit_cast<std::uint64_t>(q.x()) &&
           std::bit_cast<std::uint64_t>(p.y()) == std::bit_cast<std::uint64_t>(q.y());
  };
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), same);
}

/// Ways to draw a coordinate that make sorting hard: evenly, piled up, in steps, huge, with zeros
/// of both signs, with infinities.
double coordinate(std::mt19937_64& random, int way) {
  const double u = std::ldexp(static_cast<double>(random() >> 11U), -53);
  switch (way) {
    case 0:
      return u * 1000.0;
    case 1:
      return u < 0.01 ? 1e9 * u : 5.0 + 1e-9 * u;
    case 2:
      return std::floor(u * 6.0);
    case 3:
      return (u - 0.5) * 1.7e308 * 2.0;
    case 4:
      return u < 0.5 ? -0.0 : std::floor(u * 4.0) - 2.0;
    case 5:
      return u < 0.01 ? infinity : u > 0.99 ? -infinity : u;
    case 6:
      return std::ldexp(u, static_cast<int>(random() % 2000) - 1000);
    default:
      return u / 3.0 * std::numeric_limits<double>::denorm_min() * 10.0;
  }
}

TEST(HullTest, IsThePlainChainBitForBit) {
  std::mt19937_64 random(1);
  for (const std::size_t count : {1U, 5U, 31U, 32U, 33U, 100U, 1000U, 5000U}) {
    for (int xWay = 0; xWay < 8; ++xWay) {
      for (int yWay = 0; yWay < 8; ++yWay) {
        Points points;
        for (std::size_t i = 0; i < count; ++i) {
          const double x = coordinate(random, xWay);
          points.emplace_back(x, coordinate(random, yWay));
        }
        ASSERT_TRUE(sameBits(hullOf(points), plainHull(points)))
            << count << " points, drawn in ways " << xWay << " and " << yWay;
      }
    }
  }
}

TEST(HullTest, IsThePlainChainOnNearlyRoundShapes) {
  std::mt19937_64 random(2);
  for (const std::size_t count : {100U, 10000U, 100000U}) {
    for (const double noise : {0.0, 1e-12, 0.01, 10.0}) {
      Points points;
      for (std::size_t i = 0; i < count; ++i) {
        const double radius = 450.0 + noise * std::ldexp(static_cast<double>(random()), -64);
        const double angle =
            6.283185307179586 * static_cast<double>(i) / static_cast<double>(count);
        points.push_back(Point(640, 480) + Point(radius, qcRadian(angle)));
      }
      ASSERT_TRUE(sameBits(hullOf(points), plainHull(points))) << count << " " << noise;
    }
  }
}

}  // namespace
