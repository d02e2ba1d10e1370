// SPDX-License-Identifier: MIT
//
// The order in which many points are visited: each once, neighbours near each other.

#include <cntr/compute/visitingorder.h>

#include <algorithm>
#include <numeric>

#include <gtest/gtest.h>
#include <testing/shapes/numbers.h>
#include <testing/shapes/shapes.h>

namespace {

using Point = qcVector<2>;
using Points = std::vector<Point>;

std::vector<std::size_t> orderOf(const Points& points) {
  std::vector<std::size_t> order = cntr::compute::visitingOrder(points);
  std::vector<std::size_t> sorted = order;
  std::sort(sorted.begin(), sorted.end());
  std::vector<std::size_t> all(points.size());
  std::iota(all.begin(), all.end(), std::size_t{0});
  EXPECT_EQ(sorted, all) << "each point once";
  return order;
}

double wayThrough(const Points& points, const std::vector<std::size_t>& order) {
  double way = 0.0;
  for (std::size_t i = 1; i < order.size(); ++i) {
    way += points[order[i - 1]].distance(points[order[i]]);
  }
  return way;
}

TEST(VisitingOrderTest, IsAsShortAsThereAreCells) {
  shapes::Random random(1);
  Points points;
  for (int i = 0; i < 5000; ++i) {
    const double x = random.uniform(-3.0, 7.0);
    const double y = random.uniform(100.0, 200.0);
    points.emplace_back(x * 10.0, y);
  }
  // 50 rows of 50 cells, 2 high and wide: about 3 cells further from each point to the next.
  EXPECT_LT(wayThrough(points, orderOf(points)), 5000.0 * 3.0);
}

TEST(VisitingOrderTest, ReturnsInTheNextRow) {
  Points points;
  for (int y = 0; y < 4; ++y) {
    for (int x = 0; x < 4; ++x) {
      points.emplace_back(x, y);
      points.emplace_back(x, y);
    }
  }
  EXPECT_LE(wayThrough(points, orderOf(points)), 15.0);
}

TEST(VisitingOrderTest, TakesFewPointsOnePlaceAndNoNumbers) {
  EXPECT_TRUE(orderOf({}).empty());
  EXPECT_EQ(orderOf({{1, 2}}).size(), 1U);
  orderOf(Points(100, {3, 4}));
  orderOf({{notANumber, 1}, {1, notANumber}, {infinity, 0}, {0, -infinity}});
  orderOf(
      {{notANumber, 1}, {1, 2}, {5, 5}, {infinity, 0}, {0, -infinity}, {1e308, 1}, {-1e308, 1}});
}

}  // namespace
