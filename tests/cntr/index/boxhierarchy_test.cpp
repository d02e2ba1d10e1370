// SPDX-License-Identifier: MIT
//
// The hierarchy of boxes: its levels, and the order of its searches. Searches over the edges of
// real outlines are in edgeindex_test.cpp.

#include <cntr/index/boxhierarchy.h>

#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <testing/shapes/numbers.h>

namespace {

using cntr::index::BoxHierarchy;
using cntr::plane::Box;
using testing::ElementsAre;

constexpr std::size_t leafSize = BoxHierarchy::leafSize;
constexpr std::size_t fanOut = BoxHierarchy::fanOut;

/// Slot i is the point (i, 0).
BoxHierarchy pointsOnAxis(std::size_t count) {
  std::vector<Box> leaves((count + leafSize - 1) / leafSize);
  for (std::size_t i = 0; i < count; ++i) {
    leaves[i / leafSize].add(qcVector<2>(static_cast<double>(i), 0));
  }
  return {leaves, count};
}

TEST(BoxHierarchyTest, WithoutSlotsHoldsNothing) {
  const BoxHierarchy nothing = pointsOnAxis(0);
  EXPECT_EQ(nothing.slotCount(), 0U);
  EXPECT_EQ(nothing.levelCount(), 0U);
  EXPECT_GT(nothing.bounds().minX, nothing.bounds().maxX);
  const auto fail = [](std::size_t, std::size_t) { return ADD_FAILURE(), true; };
  EXPECT_TRUE(nothing.forEachRun([](const Box&) { return true; }, fail));
  nothing.forEachRunByBound([](const Box&) { return 0.0; }, [] { return infinity; }, fail);
}

TEST(BoxHierarchyTest, HasLevelsUpToOneThatAFewBoxesMake) {
  EXPECT_EQ(pointsOnAxis(1).levelCount(), 1U);
  EXPECT_EQ(pointsOnAxis(leafSize * fanOut).levelCount(), 1U);
  EXPECT_EQ(pointsOnAxis(leafSize * fanOut + 1).levelCount(), 2U);
  EXPECT_EQ(pointsOnAxis(leafSize * fanOut * fanOut).levelCount(), 2U);
  EXPECT_EQ(pointsOnAxis(leafSize * fanOut * fanOut + 1).levelCount(), 3U);
}

TEST(BoxHierarchyTest, HoldsEveryBoxInItsParentAndEverySlotOnce) {
  for (const std::size_t count : {1U, 7U, 8U, 9U, 64U, 65U, 100U, 512U, 513U, 1000U, 5000U}) {
    const BoxHierarchy tree = pointsOnAxis(count);
    for (std::size_t level = 0; level < tree.levelCount(); ++level) {
      const std::size_t below = level == 0 ? count : tree.boxes(level - 1).size();
      std::size_t next = 0;
      for (std::size_t i = 0; i < tree.boxes(level).size(); ++i) {
        const auto [first, last] = tree.childrenOf(level, i);
        ASSERT_EQ(first, next);
        ASSERT_LT(first, last);
        next = last;
        const Box& box = tree.boxes(level)[i];
        const double low =
            level == 0 ? static_cast<double>(first) : tree.boxes(level - 1)[first].minX;
        const double high =
            level == 0 ? static_cast<double>(last - 1) : tree.boxes(level - 1)[last - 1].maxX;
        EXPECT_EQ(box.minX, low);
        EXPECT_EQ(box.maxX, high);
      }
      EXPECT_EQ(next, below);
    }
    EXPECT_EQ(tree.bounds().minX, 0.0);
    EXPECT_EQ(tree.bounds().maxX, static_cast<double>(count - 1));
  }
}

TEST(BoxHierarchyTest, VisitsRunsInOrder) {
  const BoxHierarchy tree = pointsOnAxis(1000);
  std::vector<std::size_t> firsts;
  tree.forEachRun([](const Box& box) { return box.maxX >= 500 && box.minX <= 530; },
                  [&](std::size_t first, std::size_t last) {
                    EXPECT_LE(last, first + leafSize);
                    firsts.push_back(first);
                    return true;
                  });
  EXPECT_THAT(firsts, ElementsAre(500, 510, 520, 530));
}

TEST(BoxHierarchyTest, VisitsRunsInAscendingOrderOfTheirBound) {
  // From the right end leftwards, which is not the order of the slots.
  const BoxHierarchy tree = pointsOnAxis(1000);
  std::vector<std::size_t> firsts;
  tree.forEachRunByBound([](const Box& box) { return 999 - box.maxX; }, [] { return infinity; },
                         [&](std::size_t first, std::size_t) { firsts.push_back(first); });
  ASSERT_EQ(firsts.size(), 100U);
  for (std::size_t i = 0; i < firsts.size(); ++i) EXPECT_EQ(firsts[i], 990 - leafSize * i);
}

TEST(BoxHierarchyTest, VisitsRunsWhoseBoundIsTheLimitAndNoneBeyond) {
  const BoxHierarchy tree = pointsOnAxis(1000);
  std::vector<std::size_t> firsts;
  tree.forEachRunByBound([](const Box& box) { return 999 - box.maxX; }, [] { return 20.0; },
                         [&](std::size_t first, std::size_t) { firsts.push_back(first); });
  EXPECT_THAT(firsts, ElementsAre(990, 980, 970));
}

TEST(BoxHierarchyTest, StopsWhereVisitsHaveLoweredTheLimit) {
  const BoxHierarchy tree = pointsOnAxis(1000);
  double limit = infinity;
  std::vector<std::size_t> firsts;
  tree.forEachRunByBound([](const Box& box) { return 999 - box.maxX; }, [&] { return limit; },
                         [&](std::size_t first, std::size_t) {
                           firsts.push_back(first);
                           limit = 10;
                         });
  EXPECT_THAT(firsts, ElementsAre(990, 980));
}

}  // namespace
