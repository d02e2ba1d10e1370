// SPDX-License-Identifier: MIT
//
// Whether a path crosses itself, by scan and by index.

#include <cntr/compute/selfcrossing.h>

#include <algorithm>
#include <cmath>

#include <cntr/plane/starcentre.h>
#include <testing/plain/edges.h>
#include <testing/twin/repetitions.h>

#include "subject.h"

namespace {

using subject::forEachShape;
using subject::Point;
using subject::Points;
using subject::Subject;

/// The answer of the scan, which must be that of the index as well.
bool crossesItself(const Subject& s) {
  const bool scanned = cntr::compute::crossesItself(s.scanned());
  EXPECT_EQ(cntr::compute::crossesItself(s.indexed()), scanned) << "by index";
  return scanned;
}

bool crossesItself(const Points& points) { return crossesItself(Subject(points, true)); }

TEST(CrossesItselfTest, ABowTieDoesAndASquareDoesNot) {
  EXPECT_TRUE(crossesItself({{0, 0}, {4, 4}, {4, 0}, {0, 4}}));
  EXPECT_FALSE(crossesItself({{0, 0}, {4, 0}, {4, 4}, {0, 4}}));
}

TEST(CrossesItselfTest, TheClosingEdgeCountsOnClosedPathsOnly) {
  const Points points = {{0, 0}, {4, 2}, {4, 0}, {2, -2}, {2, 4}};
  EXPECT_TRUE(crossesItself(Subject(points, true)));
  const Points hook = {{0, 2}, {4, 2}, {2, 4}, {2, 3}, {8, 0}};
  EXPECT_TRUE(crossesItself(Subject(hook, true)));
  const Points open = {{0, 0}, {4, 0}, {4, 4}, {2, -4}};
  EXPECT_TRUE(crossesItself(Subject(open, false)));
  const Points zigzag = {{0, 0}, {4, 4}, {0, 4}, {4, 0}};
  EXPECT_TRUE(crossesItself(Subject(zigzag, false)));
  const Points turn = {{0, 0}, {4, 1}, {3, 2}, {1, -4}};
  EXPECT_TRUE(crossesItself(Subject(turn, false)));
}

TEST(CrossesItselfTest, EdgesThatMeetInAVertexDoNot) {
  EXPECT_FALSE(crossesItself({{0, 0}, {2, 2}, {4, 0}, {4, 4}, {2, 2}, {0, 4}}));
}

TEST(CrossesItselfTest, AVertexInsideAnotherEdgeDoes) {
  // Both edges at the vertex end on the other edge, which crosses them: its own ends are clear.
  EXPECT_TRUE(crossesItself({{0, 0}, {4, 0}, {4, 4}, {2, 0}, {0, 4}}));
  EXPECT_FALSE(crossesItself({{0, 0}, {4, 0}, {4, 4}, {2, 0.5e-6}, {0, 4}})) << "boxes apart";
}

TEST(CrossesItselfTest, AVertexInsideAnEdgeAlongAnAxisDoesWhicheverWayTheyGo) {
  // An edge back along an axis passes the vertex where the edges turned onto it.
  const Points down = {{2, 5}, {2, 0}, {5, 0}, {1, 0}, {1, -5}};
  for (const bool swapped : {false, true}) {
    for (const double x : {1.0, -1.0}) {
      for (const double y : {1.0, -1.0}) {
        Points points;
        for (const auto& p : down) {
          points.emplace_back(x * (swapped ? p.y() : p.x()), y * (swapped ? p.x() : p.y()));
        }
        EXPECT_TRUE(crossesItself(Subject(points, false)));
      }
    }
  }
}

TEST(CrossesItselfTest, ParallelEdgesOnOneLineDoNot) {
  EXPECT_FALSE(crossesItself({{0, 0}, {4, 0}, {1, 0}, {3, 0}}));
  EXPECT_FALSE(crossesItself(Subject(Points(100, {1, 1}), true)));
  Points there = {{0, 0}};
  for (int i = 1; i < 200; ++i) there.emplace_back(i % 2 == 0 ? 0 : 10 + i, 0);
  EXPECT_FALSE(crossesItself(there));
}

TEST(CrossesItselfTest, SoFewVerticesDoNot) {
  EXPECT_FALSE(crossesItself({{1, 1}}));
  EXPECT_FALSE(crossesItself({{1, 1}, {2, 3}}));
  EXPECT_FALSE(crossesItself({{1, 1}, {2, 3}, {5, 1}}));
}

TEST(CrossesItselfTest, NanCrossesNothing) {
  EXPECT_FALSE(crossesItself({{notANumber, 0}, {4, 4}, {4, 0}, {0, 4}})) << "no box";
  EXPECT_TRUE(crossesItself({{0, 0}, {4, 4}, {4, 0}, {0, 4}, {notANumber, 9}}));
  EXPECT_FALSE(crossesItself({{0, 0}, {infinity, 0}, {0, infinity}}));
}

TEST(CrossesItselfTest, IsThatOfThePlainDefinition) {
  forEachShape(repetitions(800), shapes::any, 2, 100, [](const Subject& s, shapes::Random&) {
    EXPECT_EQ(crossesItself(s), plain::isSelfIntersecting(s.plain()));
  });
}

/// Exchanges two neighbours of a simple outline, which makes it cross itself only there.
Points withOneCrossing(Points points, std::size_t at) {
  std::swap(points[at], points[at + 1]);
  return points;
}

TEST(CrossesItselfTest, OneCrossingIsFoundWhereverItIs) {
  for (const Points& points :
       {shapes::spikyStar(300), shapes::comb(300), shapes::regularPolygon(300, 400, {0, 0})}) {
    EXPECT_FALSE(crossesItself(points));
    for (std::size_t at = 0; at + 1 < points.size(); at += 13) {
      const Subject s(withOneCrossing(points, at), true);
      EXPECT_EQ(crossesItself(s), plain::isSelfIntersecting(s.plain())) << at;
    }
  }
}

/// An open path there and back; the boxes of all its edges overlap.
Points slantedSpikes(int count) {
  Points points;
  for (int i = 0; i < count; ++i) {
    points.emplace_back(3 * i, 5 * i);
    points.emplace_back(3 * i + 500, 5 * i + 400);
  }
  return points;
}

TEST(CrossesItselfTest, SpikesSideBySideDoNot) {
  // Boxes that all overlap, but edges that keep clear: the strips decide.
  Points points = slantedSpikes(100);
  points.emplace_back(1000, -1000);
  const Subject s(points, true);
  EXPECT_EQ(crossesItself(s), plain::isSelfIntersecting(s.plain()));
}

/// How many pairs of edges are compared for each edge of a path that does not cross itself.
double comparisonsPerEdge(const Points& points) {
  const Subject s(points, false);
  const auto search = cntr::compute::searchSelfCrossing(s.indexed());
  EXPECT_FALSE(search.crosses);
  EXPECT_EQ(cntr::compute::searchSelfCrossing(s.scanned()).comparisons, 0U);
  return static_cast<double>(search.comparisons) / static_cast<double>(s.path().edgeCount());
}

TEST(CrossesItselfTest, OfSpikesSideBySideFewArePairedOnceThereAreStrips) {
  EXPECT_GT(comparisonsPerEdge(slantedSpikes(50)), 1.0) << "so strips are made";
  EXPECT_LT(comparisonsPerEdge(slantedSpikes(1000)), 20.0);
}

TEST(CrossesItselfTest, OfEdgesOnOneLineFewArePairedOnceParallelsAreKnown) {
  Points there{{0, 0}};
  for (int i = 1; i < 1000; ++i) there.emplace_back(i % 2 == 0 ? 0 : 10 + i, 0);
  const double each = comparisonsPerEdge(there);
  EXPECT_GT(each, 1.0) << "so they are looked for";
  EXPECT_LT(each, 20.0);
}

bool isClearStar(const Subject& s) {
  return cntr::compute::isClearStar(s.path(), s.scanned().bounds);
}

TEST(IsClearStarTest, TellsStarsOfWhichNoEdgesComeNear) {
  for (const std::size_t n : {3U, 4U, 10U, 100U, 1000U, 10000U}) {
    EXPECT_TRUE(isClearStar(Subject(shapes::regularPolygon(n, 7.0, {1, 2}), true))) << n;
    EXPECT_TRUE(isClearStar(Subject(shapes::smoothStar(n), true))) << n;
    EXPECT_TRUE(isClearStar(Subject(shapes::spikyStar(n), true))) << n;
    EXPECT_TRUE(isClearStar(Subject(shapes::spikyStar(n), false))) << n;
  }
  EXPECT_TRUE(isClearStar(Subject({{0, 0}, {4, 0}, {4, 0}, {4, 4}, {0, 4}, {0, 0}}, true)));
}

TEST(IsClearStarTest, IsNoOtherShape) {
  EXPECT_FALSE(isClearStar(Subject(shapes::comb(100), true)));
  EXPECT_FALSE(isClearStar(Subject(shapes::crossingStar(100), true)));
  EXPECT_FALSE(isClearStar(Subject(shapes::starPolygon(7, 2, 10.0), true)));
  EXPECT_FALSE(isClearStar(Subject({{0, 0}, {4, 0}}, true)));
  EXPECT_FALSE(isClearStar(Subject({{0, 0}, {1e61, 0}, {1e61, 1e61}, {0, 1e61}}, true)));
  EXPECT_FALSE(isClearStar(Subject({{notANumber, 0}, {4, 0}, {4, 4}, {0, 4}}, true)));
  EXPECT_FALSE(isClearStar(Subject({{0, 0}, {4, 0}, {4, notANumber}, {0, 4}}, true)));
}

TEST(IsClearStarTest, IsNoRingThatComesNearTheMiddleAnywhere) {
  // Seen from near (0, 0), no edge is narrower than about 1e-3, but a vertex is only 1e-3 away.
  const Points near{{1e-3, 0}, {1, 1}, {-1, 1}, {-1, -1}, {1, -1}};
  for (std::size_t first = 0; first < near.size(); ++first) {
    Points turned = near;
    std::rotate(turned.begin(), turned.begin() + static_cast<std::ptrdiff_t>(first), turned.end());
    EXPECT_FALSE(isClearStar(Subject(turned, true))) << first;
  }
}

/// A star with runs of vertices in nearly the same direction, as seen from within.
Points starOfNarrowSpikes(shapes::Random& random) {
  const std::size_t spikes = 3 + random.below(5);
  const double step = std::ldexp(1.0, -10 - static_cast<int>(random.below(20)));
  Points points;
  for (const Point& direction : shapes::regularPolygon(spikes, 1.0, {0, 0})) {
    const Point turned(-direction.y(), direction.x());
    const std::size_t run = 1 + random.below(4);
    for (std::size_t i = 0; i < run; ++i) {
      const double turn = step * static_cast<double>(i);
      points.push_back((direction + turned * turn) * random.uniform(1.0, 20.0));
    }
  }
  if (random.chance(0.3)) {
    for (Point& p : points) p = p + Point(1e5 + 1.0 / 3.0, -1e4);
  }
  if (random.chance(0.5)) std::reverse(points.begin(), points.end());
  return points;
}

TEST(IsClearStarTest, CrossesNothingByThePlainDefinition) {
  std::size_t clear = 0;
  std::size_t crossingStars = 0;
  for (std::uint64_t seed = 0; seed < repetitions(20000); ++seed) {
    shapes::Random random(seed);
    const Subject s(starOfNarrowSpikes(random), random.chance(0.8));
    const bool crosses = plain::isSelfIntersecting(s.plain());
    if (isClearStar(s)) {
      ++clear;
      ASSERT_FALSE(crosses) << seed;
    } else if (crosses && cntr::plane::starCentre(s.points(), s.scanned().bounds)) {
      ++crossingStars;
    }
    ASSERT_EQ(crossesItself(s), crosses) << seed;
  }
  EXPECT_GT(clear, repetitions(20000) / 4);
  EXPECT_GT(crossingStars, repetitions(20000) / 100);
}

}  // namespace
