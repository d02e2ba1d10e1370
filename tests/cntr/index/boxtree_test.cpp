// SPDX-License-Identifier: MIT
//
// The tree of boxes sorted by place, compared with testing every box.

#include <cntr/index/boxtree.h>

#include <algorithm>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <testing/shapes/numbers.h>
#include <testing/shapes/shapes.h>
#include <testing/twin/repetitions.h>

namespace {

using cntr::index::BoxTree;
using cntr::plane::Box;
using testing::ElementsAre;
using testing::IsEmpty;

using Numbers = std::vector<std::size_t>;

/// A box with corners on a grid, so that many touch.
Box anyBox(shapes::Random& random, std::size_t gridSize) {
  const auto x = static_cast<double>(random.below(gridSize));
  const auto y = static_cast<double>(random.below(gridSize));
  return {x, y, x + static_cast<double>(random.below(4)), y + static_cast<double>(random.below(4))};
}

std::vector<Box> anyBoxes(shapes::Random& random) {
  std::vector<Box> boxes(random.below(300));
  const std::size_t gridSize = 1 + random.below(60);
  for (Box& box : boxes) box = anyBox(random, gridSize);
  return boxes;
}

TEST(BoxTreeTest, WithoutBoxesFindsNothing) {
  const BoxTree tree({});
  EXPECT_THAT(tree.touching({-infinity, -infinity, infinity, infinity}), IsEmpty());
  tree.forEachByDistance(
      {0, 0}, [] { return infinity; }, [](std::size_t) { ADD_FAILURE(); });
  tree.forEachNearestFirst(
      {0, 0}, [] { return infinity; }, [](std::size_t) { ADD_FAILURE(); });
}

TEST(BoxTreeTest, FindsBoxesThatTouchInAscendingOrder) {
  const BoxTree tree({{4, 0, 5, 1}, {0, 0, 1, 1}, {2, 0, 3, 1}, {1, 1, 2, 2}});
  EXPECT_THAT(tree.touching({1, 0, 2, 1}), ElementsAre(1, 2, 3));
  EXPECT_THAT(tree.touching({-9, -9, 9, 9}), ElementsAre(0, 1, 2, 3));
  EXPECT_THAT(tree.touching({0, 5, 9, 9}), IsEmpty());
  EXPECT_EQ(tree.bounds().minX, 0);
  EXPECT_EQ(tree.bounds().maxX, 5);
  EXPECT_EQ(tree.bounds().maxY, 2);
}

TEST(BoxTreeTest, GoesOnUntilAVisitReturnsFalse) {
  const std::vector<Box> boxes(25, {0, 0, 1, 1});
  const BoxTree tree(boxes);
  int visits = 0;
  EXPECT_TRUE(tree.forEachTouching({1, 1, 2, 2}, [&](std::size_t) { return ++visits > 0; }));
  EXPECT_EQ(visits, 25);
  EXPECT_FALSE(tree.forEachTouching({1, 1, 2, 2}, [&](std::size_t) { return ++visits < 37; }));
  EXPECT_EQ(visits, 37);
  EXPECT_TRUE(tree.forEachTouching({3, 3, 4, 4}, [](std::size_t) { return false; }));
}

TEST(BoxTreeTest, FindsTheSameBoxesAsALookAtEveryOne) {
  shapes::Random random(31);
  for (std::size_t i = 0; i < repetitions(500); ++i) {
    const std::vector<Box> boxes = anyBoxes(random);
    const BoxTree tree(boxes);
    const Box wanted = anyBox(random, 60);
    Numbers expected;
    for (std::size_t k = 0; k < boxes.size(); ++k) {
      if (overlaps(boxes[k], wanted)) expected.push_back(k);
    }
    ASSERT_EQ(tree.touching(wanted), expected) << "round " << i;
  }
}

TEST(BoxTreeTest, FindsEveryBoxOnceInARound) {
  shapes::Random random(36);
  for (std::size_t i = 0; i < repetitions(300); ++i) {
    const std::vector<Box> boxes = anyBoxes(random);
    const BoxTree tree(boxes);
    BoxTree::Found found(tree);
    for (int round = 0; round < 3; ++round) {
      found.forget();
      std::vector<bool> isKnown(boxes.size(), false);
      for (int search = 0; search < 8; ++search) {
        const Box wanted = search == 7 ? tree.bounds() : anyBox(random, 60);
        Numbers expected;
        for (std::size_t k = 0; k < boxes.size(); ++k) {
          if (!isKnown[k] && overlaps(boxes[k], wanted)) expected.push_back(k);
          isKnown[k] = isKnown[k] || overlaps(boxes[k], wanted);
        }
        Numbers met;
        tree.forEachNewTouching(wanted, found, [&](std::size_t k) { met.push_back(k); });
        std::sort(met.begin(), met.end());
        ASSERT_EQ(met, expected) << "search " << search << " of round " << i;
      }
    }
  }
}

/// Both orders of visits.
const auto byDistance = [](const BoxTree& tree, const qcVector<2>& p, auto limit, auto visit) {
  tree.forEachByDistance(p, limit, visit);
};
const auto nearestFirst = [](const BoxTree& tree, const qcVector<2>& p, auto limit, auto visit) {
  tree.forEachNearestFirst(p, limit, visit);
};

template <class ForEach>
void expectEveryBoxOnce(ForEach forEach) {
  shapes::Random random(32);
  for (std::size_t i = 0; i < repetitions(100); ++i) {
    const std::vector<Box> boxes = anyBoxes(random);
    Numbers visited;
    forEach(
        BoxTree(boxes), qcVector<2>(20, 20), [] { return infinity; },
        [&](std::size_t number) { visited.push_back(number); });
    std::sort(visited.begin(), visited.end());
    ASSERT_EQ(visited.size(), boxes.size());
    for (std::size_t k = 0; k < visited.size(); ++k) EXPECT_EQ(visited[k], k);
  }
}

template <class ForEach>
void expectBoxesAtTheLimit(ForEach forEach) {
  const BoxTree tree({{3, 0, 4, 1}, {0, 2, 1, 3}, {0, 3.5, 1, 4}});
  Numbers visited;
  forEach(
      tree, qcVector<2>(0, 0), [] { return 9.0; },
      [&](std::size_t number) { visited.push_back(number); });
  std::sort(visited.begin(), visited.end());
  EXPECT_EQ(visited, (Numbers{0, 1}));
}

TEST(BoxTreeTest, VisitsBoxesAtExactlyTheLimitButNoneBeyond) {
  expectBoxesAtTheLimit(byDistance);
  expectBoxesAtTheLimit(nearestFirst);
}

TEST(BoxTreeTest, VisitsEveryBoxOnceByDistanceWhileThereIsNoLimit) {
  expectEveryBoxOnce(byDistance);
  expectEveryBoxOnce(nearestFirst);
}

/// Finds nearest boxes by lowering the limit. Returns the visits for each.
template <class ForEach>
double visitsToNearest(ForEach forEach) {
  shapes::Random random(33);
  std::size_t visits = 0;
  for (std::size_t i = 0; i < repetitions(500); ++i) {
    std::vector<Box> boxes(2000);
    for (Box& box : boxes) box = anyBox(random, 300);
    const double x = random.uniform(-50, 350);
    const double y = random.uniform(-50, 350);
    const qcVector<2> p(x, y);
    double best = infinity;
    forEach(
        BoxTree(boxes), p, [&] { return best; },
        [&](std::size_t number) {
          best = std::min(best, squaredDistance(boxes[number], p));
          ++visits;
        });
    double expected = infinity;
    for (const Box& box : boxes) expected = std::min(expected, squaredDistance(box, p));
    EXPECT_EQ(best, expected) << "round " << i;
  }
  return static_cast<double>(visits) / static_cast<double>(repetitions(500));
}

TEST(BoxTreeTest, FindsTheNearestBoxByLoweringTheLimitWithoutVisitingMany) {
  EXPECT_LT(visitsToNearest(byDistance), 40);
  EXPECT_LT(visitsToNearest(nearestFirst), 2);
}

}  // namespace
