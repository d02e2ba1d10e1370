// SPDX-License-Identifier: MIT
//
// What a small shape may cost: few allocations, few bytes.

#include <cntr/region.h>
#include <gtest/gtest.h>
#include <testing/heap/heap.h>

namespace {

TEST(SmallShapesTest, ARegionOfFourVerticesIsMeasuredAndAskedInThreeAllocations) {
  if (!heap::counts) GTEST_SKIP() << "the heap of the libraries is not counted here";
  const std::vector<qcVector<2>> outline = {{0, 0}, {4, 0}, {5, 3}, {0, 3}};
  const long before = heap::blocksMade();
  const heap::Watch watch;
  {
    const qcRegion region(outline, qcContourDefs::eNoIntersectionRepair);
    EXPECT_EQ(region.area(false), 13.5);
    EXPECT_TRUE(region.inside({1, 1}, false));
    EXPECT_LE(watch.peakBytes() + sizeof region, 500U);
  }
  EXPECT_LE(heap::blocksMade() - before, 3);
}

}  // namespace
