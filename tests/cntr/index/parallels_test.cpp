// SPDX-License-Identifier: MIT
//
// Runs of parallel edges: what is called parallel never crosses.

#include <cntr/index/parallels.h>

#include <cmath>
#include <limits>
#include <vector>

#include <gtest/gtest.h>
#include <testing/shapes/shapes.h>
#include <testing/twin/repetitions.h>

namespace {

using cntr::index::EdgeIndex;
using cntr::index::Parallels;
using cntr::plane::Edge;
using cntr::plane::Path;
using Point = qcVector<2>;
using Points = std::vector<Point>;

/// Whether the first two of the lowest boxes are parallel. Each holds EdgeIndex::leafSize edges.
bool firstTwoAreParallel(const Points& points) {
  const Path path{points, false};
  const EdgeIndex index(path);
  EXPECT_GE(index.boxes(0).size(), 2U);
  return Parallels(path, index).areParallel(0, 0, 1);
}

/// Vertices of enough edges for two boxes, all in one direction.
Points straight(const Point& direction) {
  Points points;
  for (std::size_t i = 0; i <= 2 * EdgeIndex::leafSize; ++i) {
    points.push_back(direction * static_cast<double>(i));
  }
  return points;
}

TEST(ParallelsTest, EdgesAlongALineAre) {
  EXPECT_TRUE(firstTwoAreParallel(straight({1, 0})));
  EXPECT_TRUE(firstTwoAreParallel(straight({0, -2})));
  EXPECT_TRUE(firstTwoAreParallel(straight({3, 7})));
  EXPECT_TRUE(firstTwoAreParallel(straight({0.1, 0.3}))) << "in spite of rounding";
}

TEST(ParallelsTest, EdgesThereAndBackAre) {
  Points points;
  for (int i = 0; i <= 40; ++i) points.emplace_back(i % 2 == 0 ? 0 : 10 + i, 0);
  EXPECT_TRUE(firstTwoAreParallel(points));
}

TEST(ParallelsTest, OneEdgeInAnotherDirectionIsEnoughNotToBe) {
  for (const std::size_t at : {std::size_t{1}, EdgeIndex::leafSize + 1}) {
    Points points = straight({1, 0});
    points[at] = points[at] + Point(0, 1e-9);
    EXPECT_FALSE(firstTwoAreParallel(points)) << at;
  }
}

TEST(ParallelsTest, TwoDirectionsAreNot) {
  Points points = straight({1, 0});
  for (std::size_t i = EdgeIndex::leafSize + 1; i < points.size(); ++i) {
    points[i] = points[i - 1] + Point(0, 1);
  }
  EXPECT_FALSE(firstTwoAreParallel(points));
}

TEST(ParallelsTest, EdgesThatCanCrossNothingDoNotMatter) {
  const std::size_t half = EdgeIndex::leafSize / 2;
  Points degenerate = straight({1, 0});
  degenerate[half] = degenerate[half - 1];
  EXPECT_TRUE(firstTwoAreParallel(degenerate));
  Points infinite = straight({1, 0});
  infinite[half] = Point(std::numeric_limits<double>::infinity(), 7);
  EXPECT_TRUE(firstTwoAreParallel(infinite));
  infinite[half] = Point(7, -std::numeric_limits<double>::infinity());
  EXPECT_TRUE(firstTwoAreParallel(infinite));
  EXPECT_TRUE(firstTwoAreParallel(Points(2 * EdgeIndex::leafSize + 1, {3, 3})));
}

TEST(ParallelsTest, EdgesWhoseLengthOverflowsAreTakenToGoAnyWay) {
  EXPECT_FALSE(firstTwoAreParallel(straight({1e200, 0})));
  EXPECT_FALSE(firstTwoAreParallel(straight({0, 1e100})));
  EXPECT_TRUE(firstTwoAreParallel(straight({0, 1e98})));
}

TEST(ParallelsTest, ARunIsParallelWhenAllOfItIs) {
  // Two boxes on the third level; only the last edge goes another way.
  const std::size_t edges = EdgeIndex::leafSize * EdgeIndex::fanOut * EdgeIndex::fanOut * 2;
  Points points;
  for (std::size_t i = 0; i <= edges; ++i) points.emplace_back(static_cast<double>(i), 2.0);
  for (const bool isBent : {false, true}) {
    if (isBent) points.back() = {points.back().x(), 3.0};
    const Path path{points, false};
    const EdgeIndex index(path);
    ASSERT_EQ(index.levelCount(), 3U);
    const Parallels parallels(path, index);
    EXPECT_TRUE(parallels.areParallel(2, 0, 0));
    EXPECT_EQ(parallels.areParallel(2, 0, 1), !isBent);
    EXPECT_TRUE(parallels.areParallel(1, 0, 14));
    EXPECT_EQ(parallels.areParallel(1, 0, 15), !isBent);
  }
}

TEST(ParallelsTest, WhatIsParallelIsSoByTheKernelAtEveryLevel) {
  for (std::uint64_t seed = 1; seed <= repetitions(60); ++seed) {
    shapes::Random random(seed);
    const Points points =
        seed % 2 == 0 ? shapes::collinear(random, 300) : shapes::gridWalk(random, 300);
    const Path path{points, true};
    const EdgeIndex index(path);
    const Parallels parallels(path, index);
    for (std::size_t i = 0; i < index.boxes(0).size(); ++i) {
      for (std::size_t j = i; j < index.boxes(0).size(); ++j) {
        if (!parallels.areParallel(0, i, j)) continue;
        const auto [firstA, lastA] = index.childrenOf(0, i);
        const auto [firstB, lastB] = index.childrenOf(0, j);
        for (std::size_t a = firstA; a < lastA; ++a) {
          for (std::size_t b = firstB; b < lastB; ++b) {
            const Edge one = path.edge(a);
            const Edge other = path.edge(b);
            EXPECT_TRUE(isDegenerate(one) || isDegenerate(other) ||
                        qnKernel::isParallel(one.to - one.from, other.to - other.from));
          }
        }
      }
    }
  }
}

}  // namespace
