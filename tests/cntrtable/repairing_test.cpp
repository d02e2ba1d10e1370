// SPDX-License-Identifier: MIT
//
// Repair of many features: the same as of each alone, whatever the number of threads.

#include <cntrtable/repairing.h>
#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include <cntrsets/sets.h>

#include "rings.h"

namespace {

/// A square half covered by an equal one: the rules fill different sets.
std::vector<qcRings> overlapping(double shift) {
  Points other = square;
  for (qcVector<2>& p : other) p = p + qcVector<2>(shift, 5);
  return {{square, {}}, {other, {}}};
}

}  // namespace

TEST(RepairOfMany, GivesWhatEachFillsWithItsLabel) {
  qcOutlinesBuilder builder;
  builder.addAreas({{bowTie, {}}}, 7);
  builder.addAreas(overlapping(0));
  const qcOutlines outlines = builder.finish();
  for (const auto rule : {qcPolygon::eNonZero, qcPolygon::eEvenOdd}) {
    const qcOutlines result = qf_MakeValid(outlines, rule, 1);
    ASSERT_EQ(result.size(), 2U);
    EXPECT_EQ(result.label(0), 7U);
    EXPECT_EQ(result.label(1), std::nullopt);
    for (std::size_t i = 0; i < 2; ++i)
      EXPECT_EQ(result.feature(i), qf_MakeValid(outlines.feature(i), rule)) << i;
  }
  EXPECT_NE(qf_MakeValid(outlines, qcPolygon::eNonZero).feature(1),
            qf_MakeValid(outlines, qcPolygon::eEvenOdd).feature(1));
}

TEST(RepairOfMany, LeavesLinesAndSaysWhyThereIsNothing) {
  qcOutlinesBuilder builder;
  builder.addLines({bowTie}, 3);
  builder.failFeature("null");
  builder.addAreas({{{{0, 0}, {1, 1}, {0, 0}}, {}}}, 5);
  builder.addAreas({{{{0, 0}, {1, 0}, {0, std::numeric_limits<double>::infinity()}}, {}}});
  const qcOutlines result = qf_MakeValid(builder.finish(), qcPolygon::eNonZero);
  ASSERT_EQ(result.size(), 4U);
  EXPECT_EQ(result.kind(0), qcOutlineKind::eLines);
  EXPECT_EQ(result.label(0), 3U);
  EXPECT_EQ(result.feature(0), (std::vector<qcRings>{{bowTie, {}}}));
  EXPECT_EQ(result.problem(1), "null");
  EXPECT_EQ(result.problem(2), "the feature has no area");
  EXPECT_EQ(result.problem(3), "a coordinate is not a finite number");
}

TEST(RepairOfMany, DoesNotDependOnTheNumberOfThreads) {
  qcOutlinesBuilder builder;
  for (int i = 0; i < 300; ++i) builder.addAreas(overlapping(0.01 * i));
  const qcOutlines outlines = builder.finish();
  const std::vector<double> alone =
      qf_MakeValid(outlines, qcPolygon::eNonZero, 1).toRagged().coordinates;
  EXPECT_EQ(qf_MakeValid(outlines, qcPolygon::eNonZero, 2).toRagged().coordinates, alone);
  EXPECT_EQ(qf_MakeValid(outlines, qcPolygon::eNonZero, 5).toRagged().coordinates, alone);
}

TEST(RepairOfMany, OfNoneIsNone) {
  EXPECT_EQ(qf_MakeValid(qcOutlines(), qcPolygon::eNonZero).size(), 0U);
}
