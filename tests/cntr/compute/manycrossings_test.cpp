// SPDX-License-Identifier: MIT
//
// Whether any of many paths crosses another, compared with the pairs one by one.

#include <cntr/compute/manycrossings.h>

#include <cntr/compute/crossings.h>
#include <cntr/compute/extents.h>
#include <gtest/gtest.h>
#include <testing/shapes/shapes.h>
#include <testing/twin/repetitions.h>
#include <tests/cntr/figures.h>

namespace {

using figures::square;
using Points = std::vector<qcVector<2>>;

/// The answer, which must be that of all pairs.
bool anyCrosses(const std::vector<Points>& outlines) {
  std::vector<cntr::plane::Path> paths;
  for (const Points& outline : outlines) paths.push_back({outline, true});
  bool expected = false;
  for (std::size_t i = 0; i < paths.size(); ++i) {
    if (paths[i].points.empty()) continue;
    const auto bounds = cntr::compute::boundingBox(paths[i].points);
    for (std::size_t j = i + 1; j < paths.size(); ++j) {
      expected = expected || cntr::compute::crosses({paths[i], bounds}, {paths[j], {}});
    }
  }
  EXPECT_EQ(cntr::compute::anyCrossesAnother(paths), expected);
  return expected;
}

TEST(AnyCrossesAnotherTest, NoneOfSquaresInSquares) {
  std::vector<Points> squares;
  for (int i = 0; i < 50; ++i) squares.push_back(square(i, i, 200.0 - 2.0 * i));
  EXPECT_FALSE(anyCrosses(squares));
  squares.push_back(square(-5, -5, 10));
  EXPECT_TRUE(anyCrosses(squares));
}

TEST(AnyCrossesAnotherTest, ATouchCounts) {
  EXPECT_TRUE(anyCrosses({square(2), square(2, 2, 2)}));
  EXPECT_FALSE(anyCrosses({square(2), square(2.1, 2.1, 2)}));
}

TEST(AnyCrossesAnotherTest, APathThatCrossesItselfDoesNot) {
  EXPECT_FALSE(anyCrosses({{{0, 0}, {4, 4}, {4, 0}, {0, 4}}, square(9, 9, 2)}));
  EXPECT_FALSE(anyCrosses({}));
  EXPECT_FALSE(anyCrosses({{}, {{1, 1}}}));
}

TEST(AnyCrossesAnotherTest, AnswersAsAllPairsDo) {
  std::size_t crossing = 0;
  for (std::uint64_t seed = 1; seed <= repetitions(1500); ++seed) {
    SCOPED_TRACE(seed);
    shapes::Random random(seed);
    std::vector<Points> outlines;
    const std::size_t count = 2 + random.below(5);
    while (outlines.size() < count) {
      Points outline = shapes::anyFinite(random.next(), 20).points;
      const double scale = random.chance(0.3) ? 0.01 : 1.0;
      const double x = random.uniform(-400.0, 400.0);
      const double y = random.uniform(-400.0, 400.0);
      if (random.chance(0.5)) shapes::scaleAndShift(outline, scale, {x, y});
      outlines.push_back(outline);
    }
    if (anyCrosses(outlines)) ++crossing;
  }
  EXPECT_GT(crossing, repetitions(1500) / 10);
  EXPECT_LT(crossing, repetitions(1500) * 9 / 10);
}

}  // namespace
