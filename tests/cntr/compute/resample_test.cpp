// SPDX-License-Identifier: MIT
//
// Points at equal steps, on paths where they can be counted.

#include <cntr/compute/resample.h>

#include <gtest/gtest.h>

namespace {

using cntr::compute::lengthFromStart;
using cntr::compute::pointsAtSteps;
using cntr::plane::Path;
using Points = std::vector<qcVector<2>>;

const Points square = {{0, 0}, {4, 0}, {4, 4}, {0, 4}};

TEST(Resample, GoesRoundClosedPaths) {
  EXPECT_EQ(lengthFromStart({square, true}), 16.0);
  EXPECT_EQ(pointsAtSteps({square, true}, 16.0, 4), square);
  EXPECT_EQ(pointsAtSteps({square, true}, 16.0, 8),
            (Points{{0, 0}, {2, 0}, {4, 0}, {4, 2}, {4, 4}, {2, 4}, {0, 4}, {0, 2}}));
  EXPECT_EQ(pointsAtSteps({square, true}, 16.0, 2), (Points{{0, 0}, {4, 4}}));
}

TEST(Resample, EndsWithTheLastVertexOfOpenPaths) {
  EXPECT_EQ(lengthFromStart({square, false}), 12.0);
  EXPECT_EQ(pointsAtSteps({square, false}, 12.0, 1), (Points{{0, 0}, {0, 4}}));
  EXPECT_EQ(pointsAtSteps({square, false}, 12.0, 2), (Points{{0, 0}, {4, 2}, {0, 4}}));
}

TEST(Resample, PassesVerticesThatAreRepeated) {
  const Points line = {{0, 0}, {0, 0}, {1, 0}, {1, 0}, {4, 0}, {4, 0}};
  EXPECT_EQ(pointsAtSteps({line, false}, 4.0, 4), (Points{{0, 0}, {1, 0}, {2, 0}, {3, 0}, {4, 0}}));
}

}  // namespace
