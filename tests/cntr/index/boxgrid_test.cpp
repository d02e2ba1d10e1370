// SPDX-License-Identifier: MIT
//
// The grid of boxes, compared with testing every box, and when there is no grid.

#include <cntr/index/boxgrid.h>

#include <algorithm>
#include <limits>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <testing/shapes/numbers.h>
#include <testing/shapes/shapes.h>
#include <testing/twin/repetitions.h>

namespace {

using cntr::index::BoxGrid;
using cntr::plane::Box;
using testing::Contains;
using testing::Le;
using testing::SizeIs;

using Boxes = std::vector<Box>;
using Numbers = std::vector<std::size_t>;

Numbers near(const BoxGrid& grid, const qcVector<2>& p) {
  Numbers numbers;
  grid.forEachNear(p, [&](std::size_t number) {
    numbers.push_back(number);
    return true;
  });
  return numbers;
}

/// Unit squares in rows, a quarter apart.
Boxes squares(std::size_t perRow, std::size_t rows) {
  Boxes boxes;
  for (std::size_t row = 0; row < rows; ++row) {
    for (std::size_t column = 0; column < perRow; ++column) {
      const double x = 1.25 * static_cast<double>(column);
      const double y = 1.25 * static_cast<double>(row);
      boxes.push_back({x, y, x + 1, y + 1});
    }
  }
  return boxes;
}

/// Boxes with corners on a lattice, so that many share sides with each other and with cells.
Boxes latticeBoxes(shapes::Random& random) {
  Boxes boxes(1 + random.below(200));
  const double unit = random.below(2) == 0 ? 1.0 : random.uniform(0.001, 1000.0);
  const std::size_t extent = 1 + random.below(80);
  const std::size_t largest = 1 + random.below(6);
  for (Box& box : boxes) {
    const auto x = static_cast<double>(random.below(extent));
    const auto y = static_cast<double>(random.below(extent));
    const auto width = static_cast<double>(random.below(largest));
    const auto height = static_cast<double>(random.below(largest));
    box = {unit * x, unit * y, unit * (x + width), unit * (y + height)};
  }
  return boxes;
}

/// A corner of a box, or a place between two of them.
qcVector<2> anyPlace(shapes::Random& random, const Boxes& boxes) {
  const Box& a = boxes[random.below(boxes.size())];
  const Box& b = boxes[random.below(boxes.size())];
  const double share = random.below(2) == 0 ? 0.0 : random.uniform(0.0, 1.0);
  return {a.minX + share * (b.maxX - a.minX), a.maxY + share * (b.minY - a.maxY)};
}

TEST(BoxGridTest, ListsAmongFewAllBoxesThatHoldAPoint) {
  shapes::Random random(41);
  std::size_t made = 0;
  for (std::size_t i = 0; i < repetitions(2000); ++i) {
    const Boxes boxes = latticeBoxes(random);
    const auto grid = BoxGrid::make(boxes);
    if (!grid) continue;
    ++made;
    for (int question = 0; question < 10; ++question) {
      const qcVector<2> p = anyPlace(random, boxes);
      const Numbers found = near(*grid, p);
      EXPECT_LE(found.size(), BoxGrid::longestList);
      EXPECT_TRUE(std::is_sorted(found.begin(), found.end()));
      for (std::size_t k = 0; k < boxes.size(); ++k) {
        if (!contains(boxes[k], p)) continue;
        ASSERT_THAT(found, Contains(k)) << "round " << i;
      }
    }
  }
  EXPECT_GT(made, repetitions(2000) / 2);
}

TEST(BoxGridTest, LooksAtFourOrFewerOfManySquaresInRows) {
  const Boxes boxes = squares(100, 100);
  const auto grid = BoxGrid::make(boxes);
  ASSERT_TRUE(grid);
  std::size_t most = 0;
  shapes::Random random(42);
  for (int i = 0; i < 1000; ++i) {
    const double x = random.uniform(0, 125);
    const double y = random.uniform(0, 125);
    most = std::max(most, near(*grid, {x, y}).size());
  }
  EXPECT_LE(most, 4U);
}

TEST(BoxGridTest, EndsWithTheFirstVisitThatReturnsFalse) {
  const auto grid = BoxGrid::make(Boxes(5, {0, 0, 1, 1}));
  ASSERT_TRUE(grid);
  int visits = 0;
  EXPECT_FALSE(grid->forEachNear({0.5, 0.5}, [&](std::size_t) { return ++visits < 3; }));
  EXPECT_EQ(visits, 3);
  EXPECT_TRUE(grid->forEachNear({0.5, 0.5}, [&](std::size_t) { return ++visits < 9; }));
  EXPECT_EQ(visits, 8);
}

TEST(BoxGridTest, TakesPointsAnywhereAndNan) {
  const auto grid = BoxGrid::make(squares(4, 4));
  ASSERT_TRUE(grid);
  for (const double x : {-infinity, -1e300, 1e300, infinity, notANumber}) {
    for (const double y : {-infinity, 0.5, infinity, notANumber})
      EXPECT_THAT(near(*grid, {x, y}), SizeIs(Le(4)));
  }
}

TEST(BoxGridTest, SuitsBoxesWithoutExtentAndOfHugeExtent) {
  constexpr double most = std::numeric_limits<double>::max();
  const auto points = BoxGrid::make(Boxes(9, {2, 3, 2, 3}));
  ASSERT_TRUE(points);
  EXPECT_THAT(near(*points, {2, 3}), SizeIs(9));
  const auto huge = BoxGrid::make(Boxes(9, {-most, -most, most, most}));
  ASSERT_TRUE(huge);
  EXPECT_THAT(near(*huge, {1, 1}), SizeIs(9));
}

TEST(BoxGridTest, IsMadeForAsManyBoxesInACellAsItListsAndNoMore) {
  EXPECT_TRUE(BoxGrid::make(Boxes(BoxGrid::longestList, {0, 0, 1, 1})));
  EXPECT_FALSE(BoxGrid::make(Boxes(BoxGrid::longestList + 1, {0, 0, 1, 1})));
  EXPECT_FALSE(BoxGrid::make({}));
}

TEST(BoxGridTest, IsNotMadeWhereMostBoxesCrowdOneCell) {
  Boxes boxes(100, {0, 0, 1, 1});
  boxes.push_back({1e6, 1e6, 1e6 + 1, 1e6 + 1});
  EXPECT_FALSE(BoxGrid::make(boxes));
}

TEST(BoxGridTest, IsNotMadeWhereBoxesLieInMoreThanEightCellsEach) {
  Boxes boxes = squares(40, 40);
  boxes.push_back({0, 0, 50, 50});
  EXPECT_TRUE(BoxGrid::make(boxes));
  for (int i = 0; i < 5; ++i) boxes.push_back({0, 0, 50, 50});
  EXPECT_FALSE(BoxGrid::make(boxes)) << "about ten";
}

TEST(BoxGridTest, HasFewCellsForSmallBoxesFarApart) {
  shapes::Random random(43);
  Boxes boxes;
  for (int i = 0; i < 100; ++i) {
    const double x = random.uniform(0, 100);
    const double y = random.uniform(0, 100);
    boxes.push_back({x, y, x + 0.001, y + 0.001});
  }
  const auto grid = BoxGrid::make(boxes);
  ASSERT_TRUE(grid);
  std::size_t listed = 0;
  for (int i = 0; i < 1000; ++i) {
    const double x = random.uniform(0, 100);
    const double y = random.uniform(0, 100);
    listed += near(*grid, {x, y}).size();
  }
  EXPECT_GT(listed, 400U) << "two cells for a box, and half a box in a cell";
}

}  // namespace
