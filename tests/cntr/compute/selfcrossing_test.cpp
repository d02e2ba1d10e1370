// SPDX-License-Identifier: MIT
//
// Whether a path crosses itself, by scan and by index.

#include <cntr/compute/selfcrossing.h>

#include <testing/plain/edges.h>
#include <testing/twin/repetitions.h>

#include "subject.h"

namespace {

using subject::forEachShape;
using subject::infinity;
using subject::nan;
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
  // Its two edges end on the other one, which counts for the other one: its own ends are clear.
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
  EXPECT_FALSE(crossesItself({{nan, 0}, {4, 4}, {4, 0}, {0, 4}})) << "no box";
  EXPECT_TRUE(crossesItself({{0, 0}, {4, 4}, {4, 0}, {0, 4}, {nan, 9}}));
  EXPECT_FALSE(crossesItself({{0, 0}, {infinity, 0}, {0, infinity}}));
}

TEST(CrossesItselfTest, IsThatOfThePlainDefinition) {
  forEachShape(repetitions(800), shapes::any, 2, 100, [](const Subject& s, shapes::Random&) {
    EXPECT_EQ(crossesItself(s), plain::isSelfIntersecting(s.plain()));
  });
}

/// Exchanges two neighbours of a simple outline, which makes it cross itself there alone.
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

TEST(CrossesItselfTest, SpikesSideBySideDoNot) {
  // Boxes that all overlap, edges that keep clear: strips tell.
  Points points;
  for (int i = 0; i < 100; ++i) {
    points.emplace_back(3 * i, 5 * i);
    points.emplace_back(3 * i + 500, 5 * i + 400);
  }
  points.emplace_back(1000, -1000);
  const Subject s(points, true);
  EXPECT_EQ(crossesItself(s), plain::isSelfIntersecting(s.plain()));
}

}  // namespace
