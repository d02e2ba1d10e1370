// SPDX-License-Identifier: MIT
//
// The time and memory that the comments promise, on the worst inputs to which the promises apply.
// The inputs are so large that every answer takes at most a second or two as promised, but would
// take from minutes to hours in time quadratic in the input.

#include <algorithm>
#include <cstddef>
#include <memory>
#include <vector>

#include <cntrsets/filled.h>
#include <cntrsets/inscribed.h>
#include <cntrsets/inside.h>
#include <cntrsets/sets.h>
#include <gtest/gtest.h>
#include <testing/heap/heap.h>
#include <testing/shapes/shapes.h>
#include <tests/cntrsets/features.h>

namespace {

using features::box;
using features::Feature;
using features::Points;

Points squareAt(double x, double y, double size) { return box(x, y, x + size, y + size); }

/// A plate with `rows` times `rows` square holes of side 1 in steps of `step`.
Feature plateWithHoles(int rows, double step) {
  Feature feature{{squareAt(-1, -1, rows * step + 1), {}}};
  for (int i = 0; i < rows * rows; ++i) {
    feature.front().holes.push_back(squareAt(step * (i % rows), step * (i / rows), 1));
  }
  return feature;
}

TEST(SetCostTest, OfTellingHowRingsMeet) {
  EXPECT_EQ(qf_RingContact({{shapes::spikyStar(200000), {}}}), qcRingContact::eSimple);
  EXPECT_EQ(qf_RingContact({{shapes::comb(200000), {}}}), qcRingContact::eSimple);
  EXPECT_EQ(qf_RingContact({{shapes::crossingStar(200000), {}}}), qcRingContact::eCrosses);
  EXPECT_EQ(qf_RingContact(plateWithHoles(200, 2)), qcRingContact::eSimple);
  EXPECT_EQ(qf_RingContact(plateWithHoles(200, 1)), qcRingContact::eTouches);
}

TEST(SetCostTest, OfMeasuringWhatManyRingsFill) {
  EXPECT_DOUBLE_EQ(qf_FilledMoments(plateWithHoles(200, 2)).area(), 401.0 * 401.0 - 40000.0);
}

TEST(SetCostTest, OfAskingAboutManyPoints) {
  const Feature star{{shapes::smoothStar(100000), {}}};
  const Points points = shapes::pointsInBox(star.front().outline, 200000);
  const std::vector<bool> isInside = qf_Inside(star, points);
  EXPECT_GT(std::count(isInside.begin(), isInside.end(), true), 100000);
}

TEST(SetCostTest, OfAskingAboutManyPointsIsAtMost300BytesForEachVertex) {
  if (!heap::counts) GTEST_SKIP() << "the heap of the libraries is not counted here";
  for (const Points& outline : {shapes::smoothStar(20000), shapes::spikyStar(20000),
                                shapes::comb(20000), shapes::crossingStar(20000)}) {
    const Feature feature{{outline, {}}};
    const Points points = shapes::pointsInBox(outline, 40000);
    const auto answers = std::make_unique<bool[]>(points.size());
    const qcInside inside(feature);
    const std::size_t before = heap::bytesAlive();
    inside.contains(points, {answers.get(), points.size()});
    inside.contains(points, {answers.get(), points.size()});
    EXPECT_LE(heap::bytesAlive() - before, 300 * outline.size());
  }
}

TEST(SetCostTest, OfRepairingWhatCrossesInManyPlaces) {
  const Feature repaired = qf_MakeValid({{shapes::crossingStar(100000), {}}}, qcPolygon::eNonZero);
  EXPECT_GT(repaired.front().outline.size(), 80000U);
}

TEST(SetCostTest, OfCombiningRowsOfRectangles) {
  Feature row;
  for (int i = 0; i < 10000; ++i) row.push_back({box(2 * i, 0, 2 * i + 1, 3), {}});
  const Feature bar{{box(-1, 1, 20000, 2), {}}};
  EXPECT_EQ(qf_Union(row, bar).size(), 1U);
  EXPECT_EQ(qf_Intersection(row, bar).size(), 10000U);
  EXPECT_EQ(qf_Difference(row, bar).size(), 20000U);
  EXPECT_EQ(qf_SymmetricDifference(row, bar).size(), 30001U);
}

TEST(SetCostTest, OfOffsettingALongOutline) {
  const Feature grown = qf_Offset({{shapes::smoothStar(20000), {}}}, 0.5, 0.05);
  ASSERT_EQ(grown.size(), 1U);
  EXPECT_GT(grown.front().outline.size(), 10000U);
}

TEST(SetCostTest, OfTheLargestCircleInside) {
  EXPECT_GT(qf_InscribedCircle({{shapes::smoothStar(100000), {}}}, 1e-3).radius(), 300);
  EXPECT_NEAR(qf_InscribedCircle(plateWithHoles(100, 3), 1e-3).radius(), 1.0, 0.5);
}

TEST(SetCostTest, OfARegionWithManyHoles) {
  EXPECT_EQ(qf_ToRegion(plateWithHoles(200, 2).front()).holes().size(), 40000U);
}

}  // namespace
