// SPDX-License-Identifier: MIT
//
// The size, or the amount of work, from which an index is made. waystaken_test.cpp tests that
// shapes follow the policy.

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

TEST(PolicyTest, RemembersTheExtentsFromTheSecondPointOn) {
  EXPECT_FALSE(remembersExtents(0));
  EXPECT_TRUE(remembersExtents(1));
}

TEST(PolicyTest, WantsAnEdgeIndexForParityAfterFourScans) {
  EXPECT_FALSE(wantsEdgeIndexForParity(100, 399, false));
  EXPECT_TRUE(wantsEdgeIndexForParity(100, 400, false));
  EXPECT_TRUE(wantsEdgeIndexForParity(100, 1, true)) << "it is there already";
  EXPECT_FALSE(wantsEdgeIndexForParity(31, 1000000, false));
}

TEST(PolicyTest, WantsAContainmentGridWhenTheWorkDoneWouldHaveMadeIt) {
  EXPECT_FALSE(wantsContainmentGrid(0, 2047));
  EXPECT_TRUE(wantsContainmentGrid(0, 2048));
  EXPECT_FALSE(wantsContainmentGrid(1000, 66047));
  EXPECT_TRUE(wantsContainmentGrid(1000, 66048));
  EXPECT_TRUE(wantsContainmentGrid(1000, 66100)) << "the first time may have failed";
}

TEST(PolicyTest, WantsARegionIndexFrom8RegionsOn) {
  EXPECT_FALSE(wantsRegionIndex(7));
  EXPECT_TRUE(wantsRegionIndex(8));
}

TEST(PolicyTest, WantsTheEdgesOfASetAfter16PairsForEveryRegion) {
  EXPECT_FALSE(wantsEdgesOfSet(100, 1599));
  EXPECT_TRUE(wantsEdgesOfSet(100, 1600));
}

TEST(PolicyTest, WantsStripsAfterAComparisonForEveryEdge) {
  EXPECT_FALSE(wantsStrips(100, 99));
  EXPECT_TRUE(wantsStrips(100, 100));
}

}  // namespace
