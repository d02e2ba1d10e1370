// SPDX-License-Identifier: MIT
//
// Points at equal steps, on paths where they can be counted.

#include <cntr/compute/resample.h>

#include <gtest/gtest.h>
#include <testing/shapes/shapes.h>
#include <tests/cntr/figures.h>

namespace {

using cntr::compute::lengthFromStart;
using cntr::compute::pointsAtSteps;
using cntr::plane::Path;
using figures::square;
using Points = std::vector<qcVector<2>>;

TEST(Resample, GoesRoundClosedPaths) {
  EXPECT_EQ(lengthFromStart({square(4), true}), 16.0);
  EXPECT_EQ(pointsAtSteps({square(4), true}, 16.0, 4), square(4));
  EXPECT_EQ(pointsAtSteps({square(4), true}, 16.0, 8),
            (Points{{0, 0}, {2, 0}, {4, 0}, {4, 2}, {4, 4}, {2, 4}, {0, 4}, {0, 2}}));
  EXPECT_EQ(pointsAtSteps({square(4), true}, 16.0, 2), (Points{{0, 0}, {4, 4}}));
}

TEST(Resample, EndsWithTheLastVertexOfOpenPaths) {
  EXPECT_EQ(lengthFromStart({square(4), false}), 12.0);
  EXPECT_EQ(pointsAtSteps({square(4), false}, 12.0, 1), (Points{{0, 0}, {0, 4}}));
  EXPECT_EQ(pointsAtSteps({square(4), false}, 12.0, 2), (Points{{0, 0}, {4, 2}, {0, 4}}));
}

TEST(Resample, PassesVerticesThatAreRepeated) {
  const Points line = {{0, 0}, {0, 0}, {1, 0}, {1, 0}, {4, 0}, {4, 0}};
  EXPECT_EQ(pointsAtSteps({line, false}, 4.0, 4), (Points{{0, 0}, {1, 0}, {2, 0}, {3, 0}, {4, 0}}));
}

TEST(Resample, EndsOnTheLastEdgeWhateverTheRounding) {
  for (std::uint64_t seed = 0; seed < 300; ++seed) {
    shapes::Random random(seed);
    Points points = shapes::cloud(random, 2 + random.below(30));
    // The sums of the edges are rounded to as little as the last edge is long.
    points.push_back(points.back() + qcVector<2>(random.uniform(0.0, 1e-12), 0.0));
    const Path path{points, false};
    const double length = lengthFromStart(path);
    for (const std::size_t steps : {std::size_t{1}, std::size_t{7}, std::size_t{100000}}) {
      const Points stepped = pointsAtSteps(path, length, steps);
      ASSERT_EQ(stepped.size(), steps + 1) << seed;
      EXPECT_EQ(stepped.back(), points.back()) << seed;
      for (std::size_t i = 1; i < stepped.size(); ++i) {
        ASSERT_LE(stepped[i - 1].distance(stepped[i]),
                  length / static_cast<double>(steps) * (1.0 + 1e-9))
            << seed;
      }
    }
  }
}

}  // namespace
