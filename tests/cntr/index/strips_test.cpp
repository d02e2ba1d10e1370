// SPDX-License-Identifier: MIT
//
// Turned boxes: they contain what they are made of, and are never reported as apart from what they
// touch. Also that self-crossing of spikes side by side, which uses them, gives the plain answer.

#include <cntr/index/strips.h>

#include <cmath>
#include <utility>
#include <vector>

#include <cntr/contour.h>
#include <gtest/gtest.h>
#include <testing/plain/edges.h>
#include <testing/shapes/shapes.h>
#include <testing/twin/repetitions.h>

namespace {

using cntr::index::areApart;
using cntr::index::EdgeIndex;
using cntr::index::MainDirection;
using cntr::index::Strip;
using cntr::index::Strips;
using cntr::plane::Edge;
using cntr::plane::Path;
using shapes::Point;
using shapes::Points;
using shapes::Random;

Strip strip(const Point& center, double degrees, double halfAlong, double halfAcross) {
  const double angle = degrees * (std::acos(-1.0) / 180.0);
  return {{std::cos(angle), std::sin(angle)}, center, halfAlong, halfAcross};
}

bool holds(const Strip& strip, const Point& p, double slack) {
  const Point d = p - strip.center;
  const Point across(-strip.along.y(), strip.along.x());
  return std::abs(d * strip.along) <= strip.halfAlong + slack &&
         std::abs(d * across) <= strip.halfAcross + slack;
}

TEST(MainDirectionTest, IsThatOfTheLongestEdgesEitherWay) {
  MainDirection direction;
  direction.add({3.0, 4.0});
  direction.add({-6.0, -8.0});
  direction.add({0.4, -0.3});
  EXPECT_NEAR(direction.along().x(), 0.6, 1e-12);
  EXPECT_NEAR(direction.along().y(), 0.8, 1e-12);
}

TEST(MainDirectionTest, IsTheXAxisWhereNoDirectionStandsOut) {
  EXPECT_EQ(MainDirection().along(), Point(1.0, 0.0));
  MainDirection square;
  square.add({1.0, 0.0});
  square.add({0.0, 1.0});
  EXPECT_EQ(square.along(), Point(1.0, 0.0));
}

TEST(StripTest, IsApartWhenSomeSideKeepsMoreThanTheMargin) {
  const Strip slanted = strip({0.0, 0.0}, 45.0, 10.0, 1.0);
  // Its axis-aligned box overlaps that of a neighbour that lies alongside, 3 away.
  const double away = 3.0 / std::sqrt(2.0);
  const Strip alongside = strip({away, -away}, 45.0, 10.0, 1.0);
  EXPECT_TRUE(areApart(slanted, alongside, 0.9));
  EXPECT_FALSE(areApart(slanted, alongside, 1.1));
  EXPECT_TRUE(areApart(slanted, strip({20.0, 20.0}, 45.0, 10.0, 1.0), 8.0));
  EXPECT_FALSE(areApart(slanted, strip({14.0, 14.0}, 45.0, 10.0, 1.0), 0.0));
  EXPECT_FALSE(areApart(slanted, strip({0.0, 0.0}, -45.0, 10.0, 1.0), 0.0));
}

TEST(StripTest, IsApartFromEdgesOnOneSideOfIt) {
  const Strip flat = strip({0.0, 0.0}, 0.0, 10.0, 1.0);
  EXPECT_TRUE(areApart(Edge{{-5.0, 1.5}, {5.0, 3.0}}, flat, 0.4));
  EXPECT_FALSE(areApart(Edge{{-5.0, 1.5}, {5.0, 3.0}}, flat, 0.6));
  EXPECT_TRUE(areApart(Edge{{-5.0, -1.5}, {5.0, -3.0}}, flat, 0.4));
  EXPECT_TRUE(areApart(Edge{{10.5, -9.0}, {10.5, 9.0}}, flat, 0.4));
  EXPECT_FALSE(areApart(Edge{{-5.0, 1.5}, {5.0, -3.0}}, flat, 0.0));
}

TEST(StripTest, IsApartFromNothingWithNumbersThatAreNone) {
  const Strip broken{{1.0, 0.0}, {std::nan(""), 0.0}, 1.0, 1.0};
  const Strip flat = strip({0.0, 100.0}, 0.0, 1.0, std::nan(""));
  EXPECT_FALSE(areApart(broken, flat, 0.0));
  EXPECT_FALSE(areApart(flat, broken, 0.0));
}

TEST(StripTest, IsNeverApartFromWhatSharesAPoint) {
  Random random(3);
  const auto any = [&random](double low, double high) { return random.uniform(low, high); };
  for (std::size_t i = 0; i < repetitions(20000); ++i) {
    const Point shared(any(-100.0, 100.0), any(-100.0, 100.0));
    // A strip that contains the shared point.
    const auto around = [&] {
      const Strip s = strip({0.0, 0.0}, any(0.0, 360.0), any(0.0, 50.0), any(0.0, 5.0));
      const Point across(-s.along.y(), s.along.x());
      const Point shift =
          s.along * (any(-1.0, 1.0) * s.halfAlong) + across * (any(-1.0, 1.0) * s.halfAcross);
      return Strip{s.along, shared + shift, s.halfAlong, s.halfAcross};
    };
    ASSERT_FALSE(areApart(around(), around(), 1e-9));
    const Point d(any(-50.0, 50.0), any(-50.0, 50.0));
    const double t = any(0.0, 1.0);
    ASSERT_FALSE(areApart(Edge{shared - d * t, shared + d * (1.0 - t)}, around(), 1e-9));
  }
}

/// The edges [first, last) under box i of a level.
std::pair<std::size_t, std::size_t> edgesUnder(const EdgeIndex& index, std::size_t level,
                                               std::size_t i) {
  const auto [first, last] = index.childrenOf(level, i);
  if (level == 0) return {first, last};
  return {edgesUnder(index, level - 1, first).first, edgesUnder(index, level - 1, last - 1).second};
}

TEST(StripsTest, HoldEveryVertexOfTheirRunAtEveryLevel) {
  for (std::uint64_t seed = 0; seed < repetitions(300); ++seed) {
    const shapes::Shape shape = shapes::anyFinite(seed, 700);
    const Path path{shape.points, shape.closed};
    if (path.edgeCount() == 0) continue;
    const EdgeIndex index(path);
    const double slack = 1e-12 * cntr::plane::largestCoordinate(index.bounds(), {});
    if (slack > 1e80) continue;
    const Strips strips(path, index);
    for (std::size_t level = 0; level < index.levelCount(); ++level) {
      for (std::size_t i = 0; i < index.boxes(level).size(); ++i) {
        const auto [first, last] = edgesUnder(index, level, i);
        for (std::size_t k = first; k < last; ++k) {
          ASSERT_TRUE(holds(strips.of(level, i), path.edge(k).from, slack)) << shape.name;
          ASSERT_TRUE(holds(strips.of(level, i), path.edge(k).to, slack)) << shape.name;
        }
      }
    }
  }
}

/// Spikes side by side, 100 long and `gap` apart, at a slant, closed by a bar.
Points spikes(std::size_t count, double gap, double angle) {
  Points points;
  for (std::size_t i = 0; i < count; ++i) {
    const double x = gap * static_cast<double>(i);
    points.emplace_back(x, i % 2 == 0 ? 0.0 : 100.0);
  }
  points.emplace_back(gap * static_cast<double>(count), -10.0);
  points.emplace_back(-gap, -10.0);
  shapes::rotate(points, angle);
  return points;
}

bool contourCrossesItself(const Points& points) {
  return qcContour(points, true, 0).isSelfIntersecting();
}

TEST(SelfCrossingOfSpikesTest, IsThePlainAnswer) {
  Random random(11);
  std::size_t crossing = 0;
  for (std::size_t i = 0; i < repetitions(400); ++i) {
    // Gaps from far below the touching distance to far above.
    const double gap = std::pow(10.0, random.uniform(-7.5, 0.5));
    Points points = spikes(40 + random.below(160), gap, random.uniform(0.0, 6.3));
    if (random.chance(0.7)) {
      // One tip leans over its neighbour, or nearly.
      Point& tip = points[random.below(points.size() - 2)];
      tip = tip + Point(random.uniform(-8.0, 8.0) * gap, random.uniform(-8.0, 8.0) * gap);
    }
    const bool expected = plain::isSelfIntersecting({points, true});
    ASSERT_EQ(contourCrossesItself(points), expected) << points.size() << " vertices, gap " << gap;
    if (expected) ++crossing;
  }
  EXPECT_GT(crossing, repetitions(400) / 10);
  EXPECT_LT(crossing, repetitions(400) - repetitions(400) / 10);
}

TEST(SelfCrossingOfSpikesTest, FindsTheOneCrossingOfALongOutline) {
  for (const std::size_t at : {3U, 4999U, 9990U}) {
    Points points = shapes::spikyStar(10000);
    ASSERT_FALSE(contourCrossesItself(points));
    points[at] = (points[at + 3] + points[at + 4]) * 0.5;
    EXPECT_TRUE(contourCrossesItself(points)) << at;
  }
}

TEST(SelfCrossingOfSpikesTest, HugeAndBrokenSpikesStayWithThePlainAnswer) {
  for (const double scale : {1e-300, 1e90, 1e120, 1e300}) {
    Points points = spikes(120, 0.01, 0.7);
    shapes::scaleAndShift(points, scale, {0.0, 0.0});
    EXPECT_EQ(contourCrossesItself(points), plain::isSelfIntersecting({points, true})) << scale;
  }
  Points points = spikes(120, 0.01, 0.7);
  points[60] = {std::nan(""), 1.0};
  EXPECT_EQ(contourCrossesItself(points), plain::isSelfIntersecting({points, true}));
}

}  // namespace
