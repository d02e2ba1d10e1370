// SPDX-License-Identifier: MIT
//
// Points found in boxes against testing every point.

#include <cntrtable/pointstrips.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include <testing/shapes/numbers.h>
#include <testing/shapes/shapes.h>

namespace {

using cntr::plane::Box;
using Numbers = std::vector<std::int64_t>;

Numbers found(const table::PointStrips& strips, const Box& box) {
  Numbers numbers;
  strips.forEachIn(box, [&numbers](const table::NumberedPoint& p) { numbers.push_back(p.number); });
  std::sort(numbers.begin(), numbers.end());
  return numbers;
}

Numbers plainlyFound(const std::vector<double>& coordinates, const Box& box) {
  Numbers numbers;
  for (std::size_t i = 0; i < coordinates.size(); i += 2) {
    const double x = coordinates[i];
    const double y = coordinates[i + 1];
    if (std::isfinite(x) && std::isfinite(y) && box.minX <= x && x <= box.maxX && box.minY <= y &&
        y <= box.maxY)
      numbers.push_back(static_cast<std::int64_t>(i / 2));
  }
  return numbers;
}

/// One of few coordinates, so that points lie on borders of boxes and strips; now and then not a
/// finite one.
double anyCoordinate(shapes::Random& random, double unit) {
  if (random.chance(0.02)) return random.chance(0.5) ? infinity : std::nan("");
  const auto steps = static_cast<double>(random.below(16));
  return unit * steps;
}

}  // namespace

TEST(PointStrips, FindsThePointsInABoxOrOnItsBoundary) {
  std::size_t all = 0;
  for (std::uint64_t seed = 0; seed < 500; ++seed) {
    shapes::Random random(seed);
    const double units[] = {1.0, 0.0, 1e-300, 1e307, 0.1};
    const double unitX = units[random.below(5)];
    const double unitY = units[random.below(5)];
    std::vector<double> coordinates;
    for (std::size_t i = random.below(300); i > 0; --i) {
      coordinates.push_back(anyCoordinate(random, unitX));
      coordinates.push_back(anyCoordinate(random, unitY));
    }
    const table::PointStrips strips(coordinates);
    for (int i = 0; i < 20; ++i) {
      const double x = unitX * (static_cast<double>(random.below(18)) - 1.0);
      const double y = unitY * (static_cast<double>(random.below(18)) - 1.0);
      const double width = unitX * static_cast<double>(random.below(8));
      const double height = unitY * static_cast<double>(random.below(8));
      const Box box{x, y, x + width, y + height};
      const Numbers numbers = found(strips, box);
      ASSERT_EQ(numbers, plainlyFound(coordinates, box)) << "seed " << seed;
      all += numbers.size();
    }
  }
  EXPECT_GT(all, 10000U);
}

TEST(PointStrips, FindsNothingInAnEmptyBoxNorAmongNoPoints) {
  const std::vector<double> coordinates{1, 1, 2, 2};
  EXPECT_TRUE(found(table::PointStrips(coordinates), Box()).empty());
  EXPECT_TRUE(found(table::PointStrips({}), {-infinity, -infinity, infinity, infinity}).empty());
}

TEST(PointStrips, TakesBoxesThatReachToInfinity) {
  const std::vector<double> coordinates{1, 1, 2, infinity, 3, 3};
  EXPECT_THAT(found(table::PointStrips(coordinates), {-infinity, -infinity, infinity, infinity}),
              testing::ElementsAre(0, 2));
}

TEST(PointStrips, LooksAtFewPointsOutsideABox) {
  constexpr std::size_t count = 40000;
  const auto none = [](const table::NumberedPoint&) {};
  shapes::Random random(3);
  std::vector<double> coordinates;
  for (std::size_t i = 0; i < 2 * count; ++i) coordinates.push_back(random.uniform(0.0, 100.0));
  const Box middle{40, 40, 60, 60};
  const std::size_t inside = plainlyFound(coordinates, middle).size();
  EXPECT_GT(inside, count / 30);
  // Two strips are cut by the box, a fifth of each at its height.
  const std::size_t looks = table::PointStrips(coordinates).forEachIn(middle, none);
  EXPECT_GE(looks, inside);
  EXPECT_LT(looks, inside + 200);

  // Points far away make no difference.
  for (const double far : {1e9, -1e300, 1e300}) coordinates.insert(coordinates.end(), {far, far});
  const std::size_t looksBesideFar = table::PointStrips(coordinates).forEachIn(middle, none);
  EXPECT_GE(looksBesideFar, inside);
  EXPECT_LT(looksBesideFar, inside + 200);
}

TEST(PointStrips, LooksAtThePointsInABoxAloneWhereAllAreAboveEachOther) {
  std::vector<double> coordinates;
  for (int i = 10000; i > 0; --i) {
    coordinates.push_back(7.0);
    coordinates.push_back(i);
  }
  std::size_t visits = 0;
  const std::size_t looks =
      table::PointStrips(coordinates)
          .forEachIn({0, 200, 10, 299}, [&visits](const table::NumberedPoint&) { ++visits; });
  EXPECT_EQ(visits, 100U);
  EXPECT_EQ(looks, 100U);
}
