// SPDX-License-Identifier: MIT
//
// The one pass that joins boundaries that cross, compared with the same pass over all pairs.

#include <cntr/compute/merging.h>

#include <cntr/compute/repair.h>
#include <gtest/gtest.h>
#include <testing/twin/repetitions.h>
#include <testing/twin/same.h>
#include <tests/cntr/figures.h>

#include "many_boundaries.h"

namespace {

using cntr::compute::Remaining;
using figures::rectangle;
using subject::Points;
using subject::Subject;

/// What the pass over all pairs leaves.
std::optional<std::vector<Remaining>> mergedPairByPair(const std::vector<Points>& all) {
  std::vector<Remaining> list;
  for (std::size_t k = 0; k < all.size(); ++k) list.push_back({k, {}});
  const auto pointsOf = [&](const Remaining& one) {
    return one.joined.empty() ? all[one.number] : one.joined;
  };
  for (std::size_t i = 0; i + 1 < list.size(); ++i) {
    for (std::size_t j = i + 1; j < list.size(); ++j) {
      const Subject mine(pointsOf(list[i]), true);
      const Subject other(pointsOf(list[j]), true);
      if (!cntr::compute::crosses(mine.scanned(), other.scanned())) continue;
      const auto joined = cntr::compute::splice(mine.path(), other.scanned());
      if (!joined) return {};
      list[i].joined = *joined;
      list[j] = list.back();
      list.pop_back();
    }
  }
  return list;
}

std::optional<std::vector<Remaining>> merged(const std::vector<Points>& all) {
  std::deque<Subject> subjects;
  std::vector<cntr::compute::CrossingTarget> targets;
  std::vector<cntr::plane::Box> boxes;
  for (const Points& points : all) {
    const Subject& subject = subjects.emplace_back(points, true);
    targets.push_back(points.size() % 2 == 0 ? subject.indexed() : subject.scanned());
    boxes.push_back(targets.back().bounds);
  }
  return cntr::compute::mergeCrossing(targets, cntr::index::RegionIndex(boxes));
}

/// Compares the two. Returns how many are left, 0 if one could not be spliced.
std::size_t expectMergedAsPairs(const std::vector<Points>& all) {
  const auto expected = mergedPairByPair(all);
  const auto found = merged(all);
  EXPECT_EQ(found.has_value(), expected.has_value());
  if (!expected || !found) return 0;
  EXPECT_EQ(found->size(), expected->size());
  for (std::size_t k = 0; k < std::min(found->size(), expected->size()); ++k) {
    EXPECT_EQ((*found)[k].number, (*expected)[k].number) << "at place " << k;
    EXPECT_TRUE(same::same((*found)[k].joined, (*expected)[k].joined)) << "at place " << k;
  }
  return expected->size();
}

std::vector<Points> inARow(int count) {
  std::vector<Points> tiles;
  for (int k = 0; k < count; ++k) tiles.push_back(rectangle(3 + k, 5, 1, 1));
  return tiles;
}

TEST(MergeCrossingTest, LeavesWhatLiesApart) {
  EXPECT_EQ(expectMergedAsPairs({}), 0U);
  EXPECT_EQ(expectMergedAsPairs({rectangle(0, 0, 1, 1)}), 1U);
  EXPECT_EQ(
      expectMergedAsPairs({rectangle(0, 0, 9, 9), rectangle(1, 1, 1, 1), rectangle(3, 3, 1, 1)}),
      3U);
}

TEST(MergeCrossingTest, TheOneMovedIntoAPlaceIsPassedBy) {
  // 0 meets 1, the last one takes its place, 0 meets 2, and so on to the middle of the row; then
  // the other half, which came in reverse, likewise.
  EXPECT_EQ(expectMergedAsPairs(inARow(16)), 4U);
  EXPECT_EQ(expectMergedAsPairs(inARow(17)), 4U);
}

TEST(MergeCrossingTest, JoinsWhatComesNearAsTheBoundaryGrows) {
  // Each link meets only the one before it, in the order of the list and against it.
  std::vector<Points> chain;
  for (int k = 0; k < 40; ++k) chain.push_back(rectangle(k, 0.3 * k, 1.2, 1.1));
  expectMergedAsPairs(chain);
  std::reverse(chain.begin(), chain.end());
  expectMergedAsPairs(chain);
}

TEST(MergeCrossingTest, WhatIsNestedIsLookedForByItsEdges) {
  std::vector<Points> squares;
  for (int k = 0; k < 200; ++k) squares.push_back(rectangle(k, k, 1000 - 2 * k, 1000 - 2 * k));
  EXPECT_EQ(expectMergedAsPairs(squares), 200U);
  squares.insert(squares.begin() + 150, rectangle(120.25, 120.25, 1.5, 1.5));
  EXPECT_EQ(expectMergedAsPairs(squares), 200U);
}

/// Merges squares that lie apart, but for the last two, which cross, by an index that says
/// something else: that the last two lie apart, while each of the first `overlapping` meets all of
/// these.
std::size_t leftWhenMisled(std::size_t count, std::size_t overlapping) {
  std::deque<Subject> subjects;
  std::vector<cntr::compute::CrossingTarget> targets;
  std::vector<cntr::plane::Box> boxes;
  for (std::size_t k = 0; k < count; ++k) {
    const double x = 10.0 * static_cast<double>(k);
    subjects.emplace_back(rectangle(k + 1 < count ? x : x - 8, k + 1 < count ? 0 : 2, 5, 5), true);
    targets.push_back(subjects.back().scanned());
    const double place = k < overlapping ? 0.0 : x;
    boxes.push_back({place, 1e4, place + 1, 1e4 + 1});
  }
  EXPECT_TRUE(cntr::compute::crosses(targets[count - 2], targets[count - 1]));
  const auto left = cntr::compute::mergeCrossing(targets, cntr::index::RegionIndex(boxes));
  return left ? left->size() : 0;
}

TEST(MergeCrossingTest, LooksWhereTheIndexTells) { EXPECT_EQ(leftWhenMisled(60, 1), 60U); }

TEST(MergeCrossingTest, LooksByTheEdgesOnceManyBoxesHaveOverlapped) {
  // 16 pairs for each are enough, which the boxes of the first 58 give, those of 20 do not.
  EXPECT_EQ(leftWhenMisled(60, 58), 59U);
  EXPECT_EQ(leftWhenMisled(60, 20), 60U);
}

TEST(MergeCrossingTest, TwoThatMeetFromOneSideAloneCannotBeSpliced) {
  const std::vector<Points> pair = {{{-1, -2}, {1, -2}, {1, 0}, {-1, 0}},
                                    {{0, 0}, {0, 5e-16}, {0, 5}, {0.5, 5}, {0.5, 5e-16}, {0.5, 0}}};
  EXPECT_FALSE(mergedPairByPair(pair));
  EXPECT_FALSE(merged(pair));
}

TEST(MergeCrossingTest, AnyBoundariesAreMergedAsPairs) {
  std::size_t remaining = 0;
  std::size_t total = 0;
  for (std::uint64_t seed = 1; seed <= repetitions(1000) && !HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    shapes::Random random(seed);
    const std::vector<Points> all = boundaries::any(random, seed % 10 == 0 ? 90 : 25);
    remaining += expectMergedAsPairs(all);
    total += all.size();
  }
  EXPECT_LT(remaining, total * 3 / 4);
  EXPECT_GT(remaining, total / 10);
}

}  // namespace
