// SPDX-License-Identifier: MIT
//
// One segment against one edge: what counts as a crossing, and that the cheap tests never reject
// one.

#include <cntr/compute/probe.h>

#include <testing/twin/repetitions.h>
#include <testing/twin/same.h>

#include "subject.h"

namespace {

using cntr::compute::Probe;
using cntr::plane::Box;
using cntr::plane::Edge;
using subject::Point;
using subject::Points;

const Box probeBounds{-10, -10, 10, 10};

std::optional<Point> crossing(const Point& a, const Point& b, bool touches, const Edge& edge) {
  return Probe(a, b, touches, probeBounds).crossingWith(edge);
}

TEST(ProbeTest, CrossesAnEdgeInOnePoint) {
  EXPECT_EQ(crossing({0, 0}, {4, 4}, true, {{0, 4}, {4, 0}}), Point(2, 2));
  EXPECT_EQ(crossing({0, 0}, {4, 4}, true, {{4, 0}, {0, 4}}), Point(2, 2));
  EXPECT_FALSE(crossing({0, 0}, {1, 1}, true, {{0, 4}, {4, 0}}).has_value()) << "ends before";
  EXPECT_FALSE(crossing({0, 0}, {4, 4}, true, {{0, 4}, {1, 3}}).has_value()) << "passes by";
}

TEST(ProbeTest, AnEndWithinAMillionthOfTheEdgeTouches) {
  const Edge edge{{4, -4}, {4, 4}};
  for (const double off : {0.0, 0.5e-6, 0.9e-6}) {
    EXPECT_TRUE(crossing({0, 0}, {4 + off, 0}, true, edge).has_value()) << off;
    EXPECT_FALSE(crossing({0, 0}, {4 + off, 0}, false, edge).has_value()) << off;
    EXPECT_FALSE(crossing({4 + off, 0}, {0, 0}, false, edge).has_value()) << off;
  }
  EXPECT_TRUE(crossing({0, 0}, {4 + 1.5e-6, 0}, false, edge).has_value());
  EXPECT_FALSE(crossing({0, 0}, {4 - 0.5e-6, 0}, true, edge).has_value()) << "boxes apart";
}

TEST(ProbeTest, AnEndAtTheTouchDistanceItselfTouches) {
  constexpr double touch = cntr::plane::touchDistance;
  EXPECT_FALSE(crossing({touch, 0}, {-3, 0}, false, {{0, -4}, {0, 4}}).has_value());
}

TEST(ProbeTest, LinesThatMeetAtTheTouchDistanceItselfFromAnEndDoNotCross) {
  // They meet at (0, u), without rounding.
  constexpr double u = cntr::plane::touchDistance;
  const Edge upright{{0, 0}, {0, -4 * u}};
  const Edge slanted{{-2 * u, -u}, {2 * u, 3 * u}};
  EXPECT_FALSE(crossing(slanted.from, slanted.to, true, upright).has_value());
  EXPECT_FALSE(crossing(upright.from, upright.to, true, slanted).has_value());
  const Edge longer{{0, u}, {0, -4 * u}};
  EXPECT_EQ(crossing(longer.from, longer.to, true, slanted), Point(0, u));
}

TEST(ProbeTest, DoesNotCrossWhatIsParallelOrHasNoLength) {
  EXPECT_FALSE(crossing({0, 0}, {4, 0}, true, {{1, 0}, {3, 0}}).has_value());
  EXPECT_FALSE(crossing({0, 0}, {4, 0}, true, {{2, 0}, {2, 0}}).has_value());
  EXPECT_FALSE(crossing({0, 0}, {4, 0}, true, {{2, 0}, {2, 1e-15}}).has_value());
  EXPECT_TRUE(crossing({0, 0}, {4, 0}, true, {{2, -1e-14}, {2, 1e-14}}).has_value());
  EXPECT_FALSE(crossing({2, 0}, {2, 0}, true, {{1, -1}, {3, 1}}).has_value());
}

TEST(ProbeTest, DoesNotCrossNan) {
  EXPECT_FALSE(crossing({0, notANumber}, {4, 0}, true, {{2, -1}, {2, 1}}).has_value());
  EXPECT_FALSE(crossing({0, 0}, {4, 0}, true, {{2, notANumber}, {2, 1}}).has_value());
}

TEST(ProbeTest, KeysAscendAlongTheSegment) {
  const Probe probe({1, 1}, {4, 5}, true, probeBounds);
  EXPECT_EQ(probe.key({1, 1}), 0.0);
  EXPECT_EQ(probe.key({4, 5}), 25.0);
  EXPECT_LT(probe.key({2, 2}), probe.key({3, 3}));
  EXPECT_LT(probe.key({0, 0}), 0.0);
}

TEST(ProbeTest, RulesOutBoxesAsideOfItsLine) {
  const Probe probe({0, 0}, {8, 8}, true, probeBounds);
  EXPECT_TRUE(probe.mayMeet({2, 2, 3, 3}));
  EXPECT_TRUE(probe.mayMeet({2, 0, 4, 2})) << "a corner on the line";
  EXPECT_FALSE(probe.mayMeet({4, 0, 6, 2})) << "in the segment's box, but aside";
  EXPECT_FALSE(probe.mayMeet({8.1, 8.1, 9, 9})) << "beyond the end";
}

TEST(ProbeTest, MeetsTheBoxOfEveryEdgeThatItCrossesInThePointOfThePlainDefinition) {
  std::size_t crossed = 0;
  for (std::uint64_t seed = 1; seed <= repetitions(4000); ++seed) {
    shapes::Random random(seed);
    const Points points = shapes::anyFinite(seed, 30).points;
    if (points.size() < 2) continue;
    const Box box = cntr::compute::boundingBox(points);
    const shapes::Segment segment = shapes::querySegment(random, points);
    const Probe probe(segment.a, segment.b, random.chance(0.5), box);
    const cntr::plane::Path path{points, true};
    for (std::size_t k = 0; k < path.edgeCount(); ++k) {
      const Edge edge = path.edge(k);
      const std::optional<Point> p = probe.crossingWith(edge);
      if (!p) continue;
      ++crossed;
      EXPECT_TRUE(same::same(*p, plain::intersect(plain::lineOf({edge.from, edge.to}),
                                                  plain::lineOf({segment.a, segment.b}))));
      EXPECT_TRUE(probe.mayMeet(cntr::plane::edgeBox(edge.from, edge.to))) << seed;
    }
  }
  EXPECT_GT(crossed, repetitions(1000));
}

}  // namespace
