// SPDX-License-Identifier: MIT
//
// A region set looks only where its index tells it to. Each question is asked of sets whose index
// is wrong on purpose: a question that believes it has another answer than one that looks at all
// regions. A question that fetched the index and then looked at everything would give the right
// answers in every other test, and be counted as answered by the index.

#include <memory>
#include <utility>
#include <vector>

#include <cntr/index/regionindex.h>
#include <cntr/regionst.h>
#include <gtest/gtest.h>

#include "region_fixtures.h"
#include "remembered.h"

namespace {

using namespace fixtures;
using cntr::index::BoxGrid;
using cntr::index::BoxTree;
using cntr::index::RegionIndex;
using cntr::plane::Box;
using Boxes = std::vector<Box>;

constexpr double side = 5.0;
const qcVector<2> inTheFirst(2, 2);

/// Square k of a row, in which neighbours lie as far apart as they are wide.
Points tile(std::size_t k) { return square(2.0 * side * static_cast<double>(k), 0, side); }

qcRegionSet row(std::size_t count) {
  Handles regions;
  for (std::size_t k = 0; k < count; ++k) regions.push_back(handle(tile(k)));
  return {regions, keep};
}

/// The same, but the last one lies over the one before it and reaches beyond.
qcRegionSet rowThatCrosses(std::size_t count) {
  Handles regions = row(count - 1).regions();
  regions.push_back(handle(square(2.0 * side * static_cast<double>(count - 2) + 2.0, 2.0, side)));
  return {regions, keep};
}

Boxes boxesOfRow(std::size_t count) {
  Boxes boxes;
  for (std::size_t k = 0; k < count; ++k) {
    const double x = 2.0 * side * static_cast<double>(k);
    boxes.push_back({x, 0, x + side, side});
  }
  return boxes;
}

/// As if the row began at its other end.
Boxes reversed(const Boxes& boxes) { return {boxes.rbegin(), boxes.rend()}; }

void mislead(const qcRegionSet& set, RegionIndex index) {
  qc_RegionSetCache& known = qc_RememberedBy::set(set);
  known.index = std::make_shared<const RegionIndex>(std::move(index));
  known.indexIsKnown = true;
}

TEST(SetIndexUseTest, APointIsLookedForWhereTheIndexTells) {
  const qcRegionSet set = row(10);
  EXPECT_TRUE(set.inside(inTheFirst, false));
  mislead(set, RegionIndex(reversed(boxesOfRow(10))));
  EXPECT_FALSE(set.inside(inTheFirst, false));
}

TEST(SetIndexUseTest, APointIsLookedUpInTheGridIfThereIsOne) {
  const qcRegionSet set = row(10);
  RegionIndex index(boxesOfRow(10));
  ASSERT_TRUE(index.grid);
  index.grid = BoxGrid::make(reversed(boxesOfRow(10)));
  mislead(set, index);
  EXPECT_FALSE(set.inside(inTheFirst, false)) << "only the grid is wrong";
  index.grid.reset();
  mislead(set, index);
  EXPECT_TRUE(set.inside(inTheFirst, false)) << "the tree is right";
  index.tree = BoxTree(reversed(boxesOfRow(10)));
  mislead(set, index);
  EXPECT_FALSE(set.inside(inTheFirst, false)) << "the tree is wrong, too";
  index.grid = BoxGrid::make(boxesOfRow(10));
  mislead(set, index);
  EXPECT_TRUE(set.inside(inTheFirst, false)) << "only the tree is wrong";
}

TEST(SetIndexUseTest, TheNearestRegionIsLookedForWhereTheIndexTells) {
  const qcRegionSet set = row(10);
  EXPECT_EQ(set.distToPoint(inTheFirst, false, false, false), 2.0);
  RegionIndex index(boxesOfRow(10));
  index.tree = BoxTree(reversed(boxesOfRow(10)));
  mislead(set, index);
  EXPECT_GT(set.distToPoint(inTheFirst, false, false, false), 20.0);
}

TEST(SetIndexUseTest, CrossingsAreLookedForWhereTheIndexTells) {
  EXPECT_TRUE(rowThatCrosses(10).isSelfIntersecting());
  const qcRegionSet misled = rowThatCrosses(10);
  mislead(misled, RegionIndex(boxesOfRow(10)));
  EXPECT_FALSE(misled.isSelfIntersecting());
}

TEST(SetIndexUseTest, CrossingsAreLookedForByTheEdgesOnceManyBoxesHaveOverlapped) {
  // The last two lie apart by the index, while each of the first ones meets all of these: 16 pairs
  // for each region are enough.
  for (const std::size_t overlapping : {20U, 58U}) {
    const qcRegionSet set = rowThatCrosses(60);
    Boxes boxes = boxesOfRow(60);
    for (std::size_t k = 0; k < overlapping; ++k) boxes[k] = boxes[0];
    mislead(set, RegionIndex(boxes));
    EXPECT_EQ(set.isSelfIntersecting(), overlapping == 58U);
  }
}

TEST(SetIndexUseTest, WhatIsToBeMergedIsLookedForWhereTheIndexTells) {
  const qcRegionSet set = rowThatCrosses(10);
  qcRegionSet repaired({}, keep);
  set.regularize(repaired);
  EXPECT_EQ(repaired.regions().size(), 9U);
  const qcRegionSet misled = rowThatCrosses(10);
  EXPECT_TRUE(misled.isSelfIntersecting());
  mislead(misled, RegionIndex(boxesOfRow(10)));
  misled.regularize(repaired);
  EXPECT_EQ(repaired.regions().size(), 10U);
}

}  // namespace
