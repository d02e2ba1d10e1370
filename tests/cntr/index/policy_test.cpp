// SPDX-License-Identifier: MIT
//
// From which size or question on an index is made. That shapes follow the policy is tested in
// waystaken_test.cpp.

#include <cntr/index/policy.h>

#include <gtest/gtest.h>

namespace {

using namespace cntr::index;

TEST(PolicyTest, WantsAnEdgeIndexFrom32EdgesOn) {
  EXPECT_FALSE(wantsEdgeIndex(0));
  EXPECT_FALSE(wantsEdgeIndex(31));
  EXPECT_TRUE(wantsEdgeIndex(32));
}

TEST(PolicyTest, WantsAnIndexForTheFifthDirection) {
  EXPECT_FALSE(wantsIndexForDirections(1));
  EXPECT_FALSE(wantsIndexForDirections(4));
  EXPECT_TRUE(wantsIndexForDirections(5));
  EXPECT_TRUE(wantsIndexForDirections(1000000));
}

TEST(PolicyTest, WantsAContainmentGridAfterAQuestionForEvery64Vertices) {
  EXPECT_TRUE(wantsContainmentGrid(63, 1));
  EXPECT_FALSE(wantsContainmentGrid(64, 1));
  EXPECT_TRUE(wantsContainmentGrid(64, 2));
  EXPECT_FALSE(wantsContainmentGrid(6400, 100));
  EXPECT_TRUE(wantsContainmentGrid(6400, 101));
  EXPECT_TRUE(wantsContainmentGrid(6400, 102)) << "the first time may have failed";
}

TEST(PolicyTest, WantsARegionIndexFrom8RegionsOn) {
  EXPECT_FALSE(wantsRegionIndex(7));
  EXPECT_TRUE(wantsRegionIndex(8));
}

TEST(PolicyTest, WantsStripsAfterAComparisonForEveryEdge) {
  EXPECT_FALSE(wantsStrips(100, 99));
  EXPECT_TRUE(wantsStrips(100, 100));
}

}  // namespace
