// SPDX-License-Identifier: MIT
//
// The number of points from which slabs and grids are made. inside_test.cpp tests that qcInside
// follows the policy.

#include <cntrsets/operations/policy.h>

#include <gtest/gtest.h>

using namespace cntr::sets;

TEST(SetsPolicy, WantsSlabsForTheEighthPoint) {
  EXPECT_FALSE(wantsSlabs(7));
  EXPECT_TRUE(wantsSlabs(8));
  EXPECT_TRUE(wantsSlabs(9)) << "the first time may have failed";
}

TEST(SetsPolicy, WantsAGridAfterTwoPointsForEveryVertexAndSomeMore) {
  EXPECT_FALSE(wantsInsideGrid(0, 63));
  EXPECT_TRUE(wantsInsideGrid(0, 64));
  EXPECT_FALSE(wantsInsideGrid(1000, 2063));
  EXPECT_TRUE(wantsInsideGrid(1000, 2064));
  EXPECT_TRUE(wantsInsideGrid(1000, 2065)) << "the first time may have failed";
}
