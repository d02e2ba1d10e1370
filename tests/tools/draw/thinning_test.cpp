// SPDX-License-Identifier: MIT
//
// Thinned and clipped lines and rings: how far they are from the original, and what they keep.

#include <tools/draw/thinning.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <cmath>

#include <platform/core/shapes.h>

using formats::Points;
using testing::ElementsAre;
using tool::Box;
using tool::clippedLine;
using tool::clippedRing;
using tool::thinnedLine;
using tool::thinnedRing;

namespace {

using P = qcVector<2>;

double distanceTo(const Points& line, const P& p) {
  double least = p.distance(line.front());
  for (std::size_t i = 1; i < line.size(); ++i) {
    least = std::min(least, qcLineSeg(line[i - 1], line[i]).distToPoint(p));
  }
  return least;
}

/// A walk in steps of about 1, with jitter and turns.
Points walk() {
  Points points;
  P at(0, 0);
  double angle = 0.0;
  const int count = *rc::gen::inRange(1, 200);
  for (int i = 0; i < count; ++i) {
    points.push_back(at);
    angle += *rc::gen::inRange(-30, 31) / 10.0 * (*rc::gen::inRange(0, 4) == 0 ? 1.0 : 0.1);
    at = at + P(std::cos(angle), std::sin(angle)) * (*rc::gen::inRange(0, 20) / 10.0);
  }
  return points;
}

/// The winding number of a ring around a point that is not on it.
int windings(const Points& ring, const P& p) {
  int count = 0;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const P a = ring[i] - p;
    const P b = ring[(i + 1) % ring.size()] - p;
    const double cross = a.x() * b.y() - a.y() * b.x();
    if (a.y() <= 0.0 && b.y() > 0.0 && cross > 0.0) ++count;
    if (a.y() > 0.0 && b.y() <= 0.0 && cross < 0.0) --count;
  }
  return count;
}

const Box window{{0, 0}, {10, 10}};

}  // namespace

TEST(ThinnedLine, KeepsLinesOfUpToTwoVertices) {
  EXPECT_THAT(thinnedLine({}, 1.0), ElementsAre());
  EXPECT_THAT(thinnedLine({{1, 2}}, 1.0), ElementsAre(P(1, 2)));
  EXPECT_THAT(thinnedLine({{1, 2}, {1, 2}}, 1.0), ElementsAre(P(1, 2), P(1, 2)));
}

TEST(ThinnedLine, LeavesOutWhatIsOnAStraightLine) {
  EXPECT_THAT(thinnedLine({{0, 0}, {1, 0}, {2, 0}, {9, 0}, {9, 4}, {9, 8}}, 0.0),
              ElementsAre(P(0, 0), P(9, 0), P(9, 8)));
}

TEST(ThinnedLine, LeavesOutWhatIsNearAndKeepsWhatIsFar) {
  // The limit across the line is 2 / sqrt(5) of the tolerance.
  EXPECT_THAT(thinnedLine({{0, 0}, {5, 0.89}, {10, 0}}, 1.0), ElementsAre(P(0, 0), P(10, 0)));
  EXPECT_THAT(thinnedLine({{0, 0}, {5, 0.91}, {10, 0}}, 1.0),
              ElementsAre(P(0, 0), P(5, 0.91), P(10, 0)));
  EXPECT_THAT(thinnedLine({{0, 0}, {5, -0.89}, {10, 0}}, 1.0), ElementsAre(P(0, 0), P(10, 0)));
  EXPECT_THAT(thinnedLine({{0, 0}, {5, -0.91}, {10, 0}}, 1.0),
              ElementsAre(P(0, 0), P(5, -0.91), P(10, 0)));
}

TEST(ThinnedLine, KeepsASpikeThatRunsBackAlongItself) {
  EXPECT_THAT(thinnedLine({{0, 0}, {10, 0}, {4, 0}}, 1.0), ElementsAre(P(0, 0), P(10, 0), P(4, 0)));
  EXPECT_THAT(thinnedLine({{0, 0}, {10, 0}, {9.6, 0}}, 1.0), ElementsAre(P(0, 0), P(9.6, 0)));
  EXPECT_THAT(thinnedLine({{0, 0}, {10, 0}, {9.5, 0}}, 1.0),
              ElementsAre(P(0, 0), P(10, 0), P(9.5, 0)));
}

RC_GTEST_PROP(ThinnedLine, IsWithinTheToleranceOfEachVertex, ()) {
  const Points points = walk();
  const double tolerance = *rc::gen::inRange(0, 50) / 10.0;
  const Points kept = thinnedLine(points, tolerance);
  RC_ASSERT(kept.front() == points.front());
  RC_ASSERT(kept.back() == points.back());
  for (const P& p : points) RC_ASSERT(distanceTo(kept, p) <= tolerance + 1e-9);
  std::size_t at = 0;
  for (const P& p : points) {
    if (at < kept.size() && kept[at] == p) ++at;
  }
  RC_ASSERT(at == kept.size());
}

TEST(ThinnedRing, ClosesItselfAndKeepsTheFirstVertex) {
  EXPECT_THAT(thinnedRing({{5, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 5}, {0, 0}}, 0.1),
              ElementsAre(P(5, 0), P(10, 0), P(10, 10), P(0, 10), P(0, 0)));
  EXPECT_THAT(thinnedRing({}, 0.1), ElementsAre());
}

TEST(ThinnedRing, OfATinyRingOneVertexIsLeft) {
  EXPECT_THAT(thinnedRing({{1, 1}, {1.1, 1}, {1.1, 1.1}}, 1.0), ElementsAre(P(1, 1)));
}

TEST(ClippedLine, EndsAtTheBorder) {
  EXPECT_THAT(clippedLine({{5, 5}, {15, 5}}, window), ElementsAre(P(5, 5), P(10, 5)));
  EXPECT_THAT(clippedLine({{5, 15}, {5, 5}}, window), ElementsAre(P(5, 10), P(5, 5)));
  EXPECT_THAT(clippedLine({{-5, 5}, {5, 5}, {5, -5}}, window),
              ElementsAre(P(0, 5), P(5, 5), P(5, 0)));
  EXPECT_THAT(clippedLine({{11, 1}, {12, 2}}, window), ElementsAre());
}

TEST(ClippedLine, FollowsTheBorderWhileItIsOutside) {
  EXPECT_THAT(clippedLine({{5, 2}, {15, 2}, {15, 8}, {5, 8}}, window),
              ElementsAre(P(5, 2), P(10, 2), P(10, 8), P(5, 8)));
}

TEST(ClippedRing, HasTheCornersOfABoxInsideIt) {
  EXPECT_THAT(clippedRing({{-100, -100}, {100, -100}, {100, 100}, {-100, 100}}, window),
              testing::UnorderedElementsAre(P(0, 0), P(10, 0), P(10, 10), P(0, 10)));
  EXPECT_THAT(clippedRing({{20, 20}, {30, 20}, {30, 30}}, window), ElementsAre());
  EXPECT_THAT(clippedRing({{2, 2}, {8, 2}, {8, 8}}, window),
              ElementsAre(P(2, 2), P(8, 2), P(8, 8)));
}

RC_GTEST_PROP(ClippedRing, WindsAroundPointsInsideAsBefore, ()) {
  Points ring;
  const int count = *rc::gen::inRange(3, 12);
  for (int i = 0; i < count; ++i) {
    ring.push_back(P(*rc::gen::inRange(-20, 30), *rc::gen::inRange(-20, 30)));
  }
  const Points inside = clippedRing(ring, window);
  for (const P& p : inside) {
    RC_ASSERT(p.x() >= -1e-9 && p.x() <= 10 + 1e-9 && p.y() >= -1e-9 && p.y() <= 10 + 1e-9);
  }
  for (const P& p : {P(1.013, 2.017), P(5.031, 5.057), P(8.911, 3.519), P(3.303, 9.709)}) {
    RC_ASSERT(windings(inside, p) == windings(ring, p));
  }
}
