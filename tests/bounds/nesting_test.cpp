// SPDX-License-Identifier: MIT
//
// Holes in holes: chains longer than the stack is deep, and holes shared so often that there are
// more ways to the innermost one than could ever be followed.

#include <vector>

#include <cntr/regionst.h>
#include <gtest/gtest.h>

#include "worst_shapes.h"

namespace {

using Handle = qcPtrHandle<qcRegion>;
using Handles = std::vector<Handle>;

Handle squareAround(const qcVector<2>& center, double radius) {
  const double x = center.x();
  const double y = center.y();
  return Handle(new qcRegion({{x - radius, y - radius},
                              {x + radius, y - radius},
                              {x + radius, y + radius},
                              {x - radius, y + radius}},
                             keep));
}

/// Squares around `center`, each a hole of the next one, `handles` times.
Handle nested(int levels, std::size_t handles, const qcVector<2>& center = {}) {
  Handle region = squareAround(center, 1.0);
  for (int i = 1; i < levels; ++i) {
    const Handle around = squareAround(center, 1.0 + i);
    around->holes(Handles(handles, region));
    region = around;
  }
  return region;
}

constexpr int longChain = 100000;

TEST(NestingTest, ALongChainOfHolesIsAskedAndReleased) {
  Handle region = nested(longChain, 1);
  EXPECT_FALSE(region->inside({0, 0}, true)) << "in an odd number of holes";
  EXPECT_TRUE(region->inside({0, longChain - 0.5}, true)) << "in no hole";
  EXPECT_FALSE(region->inside({0, longChain - 1.5}, true)) << "in one hole";
  EXPECT_TRUE(region->inside({0, longChain - 2.5}, true)) << "in a hole of a hole";
  region = Handle();
}

TEST(NestingTest, ASetOfLongChainsOfHolesIsAsked) {
  Handles regions;
  for (int i = 0; i < 10; ++i) regions.push_back(nested(2000, 1, {5000.0 * i, 0}));
  const qcRegionSet set(regions, keep);
  EXPECT_FALSE(set.inside({0, 0}, true));
  EXPECT_TRUE(set.inside({5000, 1999.5}, true));
}

TEST(NestingTest, HolesThatAreSharedAtEveryLevelAreDecidedOnce) {
  // Two to the power of 100 ways to the innermost one.
  const Handle region = nested(101, 2);
  EXPECT_TRUE(region->inside({0, 0}, true));
  EXPECT_FALSE(region->inside({0, 99.5}, true));
  EXPECT_TRUE(region->inside({0, 100.5}, true));
  Handles regions(10, region);
  const qcRegionSet set(regions, keep);
  EXPECT_TRUE(set.inside({0, 0}, true));
  EXPECT_FALSE(set.inside({0, 99.5}, true));
  EXPECT_EQ(set.distToPoint({0, 0}, false, true, true), 0.0);
}

TEST(NestingTest, SharedHolesDecideAsSeparateOnes) {
  for (const std::size_t handles : {1U, 2U, 3U}) {
    const Handle shared = nested(6, handles);
    for (double y = 0.5; y < 8.0; y += 1.0) {
      const int boundaries = static_cast<int>(6.0 - y + 0.5);
      EXPECT_EQ(shared->inside({0, y}, true), boundaries % 2 == 1) << y;
    }
  }
}

}  // namespace
