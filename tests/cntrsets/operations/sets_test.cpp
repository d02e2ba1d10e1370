// SPDX-License-Identifier: MIT
//
// Repair and set operations on outlines whose answers are known.

#include <cntrsets/sets.h>

#include <cmath>
#include <limits>
#include <string>

#include <cntr/contourdefs.h>
#include <testing/shapes/shapes.h>
#include <tests/cntrsets/features.h>

namespace {

using features::box;
using features::Feature;
using features::Points;
using features::reversed;
using features::square;

Feature repaired(const Feature& feature) { return qf_MakeValid(feature, qcPolygon::eNonZero); }
Feature repairedEvenOdd(const Feature& feature) {
  return qf_MakeValid(feature, qcPolygon::eEvenOdd);
}

template <class Call>
std::wstring refusalOf(Call call) {
  try {
    call();
  } catch (const qcContourDefs::BadParams& error) {
    return error.message();
  }
  return L"not refused";
}

/// A number of any size up to 2^400, or 0.
double anySize(shapes::Random& random) {
  const int exponent = static_cast<int>(random.below(1200)) - 800;
  const double digits = random.uniform(-1.0, 1.0);
  return random.chance(0.2) ? 0.0 : std::ldexp(digits, exponent);
}

TEST(MakeValid, LeavesAFeatureInNormalFormAsItIs) {
  const Feature feature{{square, {{{2, 2}, {2, 4}, {4, 4}, {4, 2}}}}, {box(20, 0, 30, 5), {}}};
  qcRepairReport report;
  EXPECT_EQ(qf_MakeValid(feature, qcPolygon::eNonZero, &report), feature);
  EXPECT_FALSE(report.changed);
  EXPECT_FALSE(report.repaired);
  EXPECT_FALSE(report.snapped);
  EXPECT_EQ(report.gridSize, 0.0);
  EXPECT_EQ(report.area, 146.0);
  EXPECT_EQ(report.areaError, 0.0);
  EXPECT_EQ(report.verticesBefore, 12U);
  EXPECT_EQ(report.verticesAfter, 12U);
  EXPECT_EQ(report.parts, 2U);
  EXPECT_EQ(report.holes, 1U);
}

TEST(MakeValid, TurnsRingsTheRightWayAndStartsThemAtTheLowestLeftmostVertex) {
  const Feature feature{{{{10, 10}, {10, 0}, {0, 0}, {0, 10}}, {{{4, 4}, {2, 4}, {2, 2}, {4, 2}}}}};
  qcRepairReport report;
  EXPECT_EQ(qf_MakeValid(feature, qcPolygon::eNonZero, &report),
            (Feature{{square, {{{2, 2}, {2, 4}, {4, 4}, {4, 2}}}}}));
  EXPECT_TRUE(report.changed);
  EXPECT_FALSE(report.repaired);
}

TEST(MakeValid, HasRepairedWhatIsNotTheSameRingsInAnotherOrder) {
  const auto isRepaired = [](const Feature& feature) {
    qcRepairReport report;
    qf_MakeValid(feature, qcPolygon::eNonZero, &report);
    EXPECT_EQ(report.changed, true);
    return report.repaired;
  };
  const Points hole = box(2, 2, 4, 4);
  const Points other = box(6, 6, 8, 8);
  EXPECT_FALSE(isRepaired({{box(20, 0, 30, 10), {}}, {square, {other, hole}}}));
  // Two parts that begin at the same vertex.
  EXPECT_FALSE(isRepaired({{{{0, 0}, {4, 3}, {3, 4}}, {}}, {{{0, 0}, {4, 1}, {4, 2}}, {}}}));
  EXPECT_TRUE(isRepaired({{{{0, 0}, {4, 4}, {4, 0}, {0, 4}}, {}}}));
  EXPECT_TRUE(isRepaired({{{{0, 0}, {0, 0}, {10, 0}, {0, 10}}, {}}}));
  EXPECT_TRUE(isRepaired({{square, {hole, hole}}}));
  EXPECT_TRUE(isRepaired({{square, {}}, {hole, {}}}));
}

TEST(MakeValid, SortsPartsAndHoles) {
  const Feature feature{{box(20, 0, 30, 10), {}},
                        {square, {reversed(box(6, 1, 7, 2)), reversed(box(1, 6, 2, 7))}}};
  EXPECT_EQ(repaired(feature),
            (Feature{{square, {{{1, 6}, {1, 7}, {2, 7}, {2, 6}}, {{6, 1}, {6, 2}, {7, 2}, {7, 1}}}},
                     {box(20, 0, 30, 10), {}}}));
}

TEST(MakeValid, CutsABowTieIntoItsTwoLobes) {
  const Feature bowTie{{features::bowTie, {}}};
  const Feature lobes{{{{0, 0}, {2, 2}, {0, 4}}, {}}, {{{2, 2}, {4, 0}, {4, 4}}, {}}};
  EXPECT_EQ(repaired(bowTie), lobes);
  EXPECT_EQ(repairedEvenOdd(bowTie), lobes);
}

TEST(MakeValid, KeepsTheMiddleOfAPentagramByWindingAndLeavesItOutByParity) {
  const Feature star{{shapes::starPolygon(5, 2, 100.0), {}}};
  const Feature whole = repaired(star);
  const Feature points = repairedEvenOdd(star);
  ASSERT_EQ(whole.size(), 1U);
  EXPECT_EQ(whole[0].outline.size(), 10U);
  EXPECT_EQ(points.size(), 5U);
  EXPECT_GT(features::areaOf(whole), features::areaOf(points) + 1000.0);
}

TEST(MakeValid, ReportsByHowMuchRoundedCrossingsCanChangeTheArea) {
  qcRepairReport report;
  qf_MakeValid({{shapes::starPolygon(5, 2, 100.0), {}}}, qcPolygon::eNonZero, &report);
  EXPECT_GT(report.areaError, 0.0);
  EXPECT_LT(report.areaError, 1e-10);
  // The crossing is rounded once, by half a unit in the last place of 20 in each coordinate.
  const Feature bowTie{{features::bowTie, {box(1, 1, 2, 3)}}, {box(10, 0, 20, 5), {}}};
  qf_MakeValid(bowTie, qcPolygon::eNonZero, &report);
  EXPECT_DOUBLE_EQ(report.areaError, features::lengthOf(bowTie) * std::sqrt(0.5) * 0x1p-48);
}

TEST(MakeValid, DropsASpikeWalkedThereAndBack) {
  EXPECT_EQ(repaired({{{{0, 0}, {10, 0}, {20, 0}, {10, 0}, {10, 10}, {0, 10}}, {}}}),
            (Feature{{square, {}}}));
  EXPECT_EQ(repaired({{{{0, 0}, {10, 0}, {10, 5}, {3, 5}, {10, 5}, {10, 10}, {0, 10}}, {}}}),
            (Feature{{{{0, 0}, {10, 0}, {10, 5}, {10, 10}, {0, 10}}, {}}}));
}

TEST(MakeValid, DropsRepeatedVertices) {
  EXPECT_EQ(repaired({{{{0, 0}, {0, 0}, {10, 0}, {10, 10}, {10, 10}, {0, 10}, {0, 0}}, {}}}),
            (Feature{{square, {}}}));
}

TEST(MakeValid, KeepsTheSignOfZeros) {
  const Feature feature{{{{-0.0, 0.0}, {10, -0.0}, {10, 10}}, {}}};
  const Points outline = repaired(feature)[0].outline;
  EXPECT_EQ(outline, feature[0].outline);
  EXPECT_TRUE(std::signbit(outline[0].x()));
  EXPECT_FALSE(std::signbit(outline[0].y()));
  EXPECT_TRUE(std::signbit(outline[1].y()));
}

TEST(MakeValid, KeepsVerticesOnStraightLines) {
  const Feature feature{{{{0, 0}, {3, 0}, {7, 0}, {10, 0}, {10, 10}, {0, 10}}, {}}};
  EXPECT_EQ(repaired(feature), feature);
}

TEST(MakeValid, LetsAHoleTouchItsOutlineAtAPoint) {
  const Feature feature{{square, {{{0, 5}, {3, 6}, {3, 4}}}}};
  EXPECT_EQ(repaired(feature),
            (Feature{{{{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 5}}, {{{0, 5}, {3, 6}, {3, 4}}}}}));
}

TEST(MakeValid, OpensAHoleThatTouchesItsOutlineAlongAnEdge) {
  EXPECT_EQ(repaired({{square, {box(0, 4, 3, 6)}}}),
            (Feature{{{{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 6}, {3, 6}, {3, 4}, {0, 4}}, {}}}));
}

TEST(MakeValid, CutsAPartThatAHoleDividesIntoTwo) {
  EXPECT_EQ(repaired({{square, {{{5, 0}, {6, 5}, {5, 10}, {4, 5}}}}}),
            (Feature{{{{0, 0}, {5, 0}, {4, 5}, {5, 10}, {0, 10}}, {}},
                     {{{5, 0}, {10, 0}, {10, 10}, {5, 10}, {6, 5}}, {}}}));
}

TEST(MakeValid, IgnoresAHoleOutsideItsOutlineButNotByParity) {
  const Feature feature{{square, {box(20, 0, 22, 2)}}};
  EXPECT_EQ(repaired(feature), (Feature{{square, {}}}));
  EXPECT_EQ(repairedEvenOdd(feature), (Feature{{square, {}}, {box(20, 0, 22, 2), {}}}));
}

TEST(MakeValid, IgnoresAHoleInAHoleButNotByParity) {
  const Feature feature{{square, {box(1, 1, 9, 9), box(3, 3, 6, 6)}}};
  EXPECT_EQ(repaired(feature), (Feature{{square, {{{1, 1}, {1, 9}, {9, 9}, {9, 1}}}}}));
  EXPECT_EQ(repairedEvenOdd(feature),
            (Feature{{square, {{{1, 1}, {1, 9}, {9, 9}, {9, 1}}}}, {box(3, 3, 6, 6), {}}}));
}

TEST(MakeValid, JoinsPartsThatLieInEachOtherButNotByParity) {
  const Feature feature{{square, {}}, {reversed(box(2, 2, 4, 4)), {}}};
  EXPECT_EQ(repaired(feature), (Feature{{square, {}}}));
  EXPECT_EQ(repairedEvenOdd(feature), (Feature{{square, {{{2, 2}, {2, 4}, {4, 4}, {4, 2}}}}}));
}

TEST(MakeValid, FillsTheHoleOfOnePartWithAnother) {
  const Feature feature{{square, {box(2, 2, 8, 8)}}, {box(4, 4, 6, 6), {}}};
  EXPECT_EQ(repaired(feature),
            (Feature{{square, {{{2, 2}, {2, 8}, {8, 8}, {8, 2}}}}, {box(4, 4, 6, 6), {}}}));
}

TEST(MakeValid, TakesDuplicateRingsAsOneByWindingAndAsNothingByParity) {
  const Feature twice{{square, {}}, {square, {}}};
  EXPECT_EQ(repaired(twice), (Feature{{square, {}}}));
  EXPECT_EQ(refusalOf([&] { repairedEvenOdd(twice); }), L"the feature has no area");
}

TEST(MakeValid, TakesAFigureEightWalkedTwiceAsItsLobesByWindingAndAsNothingByParity) {
  const Points eight{{0, 0}, {4, 4}, {4, 0}, {0, 4}};
  Points twice = eight;
  twice.insert(twice.end(), eight.begin(), eight.end());
  EXPECT_EQ(repaired({{twice, {}}}),
            (Feature{{{{0, 0}, {2, 2}, {0, 4}}, {}}, {{{2, 2}, {4, 0}, {4, 4}}, {}}}));
  EXPECT_EQ(refusalOf([&] { repairedEvenOdd({{twice, {}}}); }), L"the feature has no area");
}

TEST(MakeValid, MakesAHoleOfWhatARingRunsAroundThroughOneVertex) {
  // An outline that goes around its hole by way of the vertex that both share.
  const Feature feature{{{{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0}, {2, 5}, {5, 5}, {5, 2}}, {}}};
  EXPECT_EQ(repaired(feature), (Feature{{square, {{{0, 0}, {2, 5}, {5, 5}, {5, 2}}}}}));
}

TEST(MakeValid, CutsPixelsThatMeetInACornerApart) {
  const Feature feature{{{{0, 0}, {1, 0}, {1, 1}, {2, 1}, {2, 2}, {1, 2}, {1, 1}, {0, 1}}, {}}};
  EXPECT_EQ(repaired(feature), (Feature{{box(0, 0, 1, 1), {}}, {box(1, 1, 2, 2), {}}}));
}

TEST(MakeValid, JoinsPartsThatShareAnEdge) {
  EXPECT_EQ(repaired({{box(0, 0, 1, 1), {}}, {box(1, 0, 2, 1), {}}}),
            (Feature{{{{0, 0}, {1, 0}, {2, 0}, {2, 1}, {1, 1}, {0, 1}}, {}}}));
}

TEST(MakeValid, RefusesWhatHasNoArea) {
  const std::wstring refusal = L"the feature has no area";
  for (const Feature& feature :
       {Feature{}, Feature{{}}, Feature{{{{1, 1}}, {}}}, Feature{{{{0, 0}, {5, 0}}, {}}},
        Feature{{{{0, 0}, {5, 5}, {9, 9}, {2, 2}}, {}}}, Feature{{square, {square}}},
        Feature{{{}, {square}}}})
    EXPECT_EQ(refusalOf([&] { repaired(feature); }), refusal);
}

TEST(MakeValid, RefusesWhatOnlyRoundedCrossingsGiveAnArea) {
  const Feature spikes{{{{2.7387490237866885e-57, 9.77817446875982e+199},
                         {5.562684646295939e-308, 8.095e-320},
                         {10.0, 10.000030517579034},
                         {0.0, 2.0778582785132e-310},
                         {5.382699284e-315, 5.299808824e-315}},
                        {{{1.0000009536743164, 1.0},
                          {1.0, 2.0},
                          {1.4237381183149584e+189, 5.1758067067423e-310},
                          {1.35807730622e-312, 1.000003814813681}}}}};
  EXPECT_EQ(refusalOf([&] { repaired(spikes); }), L"the feature has no area");
}

TEST(MakeValid, LeavesTheReportAloneWhenItRefuses) {
  qcRepairReport report;
  report.parts = 77;
  EXPECT_EQ(refusalOf([&] { qf_MakeValid({}, qcPolygon::eNonZero, &report); }),
            L"the feature has no area");
  EXPECT_EQ(report.parts, 77U);
}

TEST(MakeValid, RefusesCoordinatesThatAreNotFiniteNumbers) {
  for (const double bad : {std::nan(""), std::numeric_limits<double>::infinity()}) {
    const std::wstring refusal = L"a coordinate is not a finite number";
    EXPECT_EQ(refusalOf([&] { repaired({{{{0, 0}, {1, bad}, {1, 1}}, {}}}); }), refusal);
    EXPECT_EQ(refusalOf([&] { qf_Union({{square, {}}}, {{{{bad, 0}}, {}}}); }), refusal);
  }
}

TEST(MakeValid, WorksAtAnySizeAndAnywhere) {
  for (const double scale : {5e-324, 1e-300, 1e-9, 1e9, 1e300}) {
    const Feature bowTie{{{{0, 0}, {4 * scale, 4 * scale}, {4 * scale, 0}, {0, 4 * scale}}, {}}};
    EXPECT_EQ(repaired(bowTie),
              (Feature{{{{0, 0}, {2 * scale, 2 * scale}, {0, 4 * scale}}, {}},
                       {{{2 * scale, 2 * scale}, {4 * scale, 0}, {4 * scale, 4 * scale}}, {}}}));
  }
  const double far = 1e9;
  EXPECT_EQ(repaired({{{{far, far}, {far + 4, far + 4}, {far + 4, far}, {far, far + 4}}, {}}}),
            (Feature{{{{far, far}, {far + 2, far + 2}, {far, far + 4}}, {}},
                     {{{far + 2, far + 2}, {far + 4, far}, {far + 4, far + 4}}, {}}}));
}

TEST(MakeValid, WorksOnCoordinatesThatDifferByHundredsOfOrdersOfMagnitude) {
  const Feature uncut{
      {{{0, 0}, {10, 0}, {10, 10}, {4.05e-322, 0}, {8.1126e-320, 0}}, {}},
      {{{-4.8128060861321977e+232, 1.0000000000000009}, {1, 2}, {2, 2}, {1.0000009536743164, 0}},
       {}}};
  qcRepairReport report;
  EXPECT_EQ(qf_MakeValid(uncut, qcPolygon::eNonZero, &report).size(), 1U);
  EXPECT_DOUBLE_EQ(report.area, 4.8128060861321977e+232);
  shapes::Random random(5);
  int cut = 0;
  for (int i = 0; i < 3000; ++i) {
    Feature feature{{}};
    for (std::size_t count = 4 + random.below(5); count > 0; --count) {
      const double x = anySize(random);
      const double y = anySize(random);
      feature[0].outline.emplace_back(x, y);
    }
    for (const auto rule : {qcPolygon::eNonZero, qcPolygon::eEvenOdd}) {
      const std::wstring refusal = refusalOf([&] {
        const Feature valid = qf_MakeValid(feature, rule, &report);
        EXPECT_EQ(qf_MakeValid(valid, rule), valid) << i;
        cut += report.repaired ? 1 : 0;
      });
      EXPECT_TRUE(refusal == L"not refused" || refusal == L"the feature has no area")
          << i << ": " << std::string(refusal.begin(), refusal.end());
    }
  }
  EXPECT_GT(cut, 1000);
}

TEST(MakeValid, MovesVerticesToAGridWhereNothingElseSettlesAndSaysSo) {
  qcRepairReport report;
  for (std::uint64_t seed = 0; seed < 100 && !report.snapped; ++seed) {
    shapes::Random random(seed);
    Points ring = shapes::collinear(random, 30);
    shapes::rotate(ring, 0.3);
    ring.push_back({1000.0, 0.0});
    const Feature result = qf_MakeValid({{ring, {}}}, qcPolygon::eNonZero, &report);
    features::expectNormalForm(result);
    EXPECT_EQ(report.gridSize > 0.0, report.snapped);
    EXPECT_LT(report.areaError, 1e-8);
    if (report.snapped) {
      // The finest grid: eight units in the last place of 1000.
      EXPECT_EQ(report.gridSize, 0x1p-40);
      EXPECT_DOUBLE_EQ(report.areaError,
                       features::lengthOf({{ring, {}}}) * std::sqrt(0.5) * report.gridSize);
    }
  }
  EXPECT_TRUE(report.snapped);
}

TEST(SetOperations, CombineTwoSquaresThatOverlap) {
  const Feature a{{square, {}}};
  const Feature b{{box(5, 5, 15, 15), {}}};
  EXPECT_EQ(
      qf_Union(a, b),
      (Feature{{{{0, 0}, {10, 0}, {10, 5}, {15, 5}, {15, 15}, {5, 15}, {5, 10}, {0, 10}}, {}}}));
  EXPECT_EQ(qf_Intersection(a, b), (Feature{{box(5, 5, 10, 10), {}}}));
  EXPECT_EQ(qf_Difference(a, b),
            (Feature{{{{0, 0}, {10, 0}, {10, 5}, {5, 5}, {5, 10}, {0, 10}}, {}}}));
  EXPECT_EQ(qf_SymmetricDifference(a, b),
            (Feature{{{{0, 0}, {10, 0}, {10, 5}, {5, 5}, {5, 10}, {0, 10}}, {}},
                     {{{5, 10}, {10, 10}, {10, 5}, {15, 5}, {15, 15}, {5, 15}}, {}}}));
}

TEST(SetOperations, GiveNothingWhereNothingIsShared) {
  const Feature a{{square, {}}};
  EXPECT_EQ(qf_Intersection(a, {{box(10, 0, 20, 10), {}}}), Feature{});
  EXPECT_EQ(qf_Intersection(a, {}), Feature{});
  EXPECT_EQ(qf_Difference(a, a), Feature{});
  EXPECT_EQ(qf_SymmetricDifference(a, a), Feature{});
  EXPECT_EQ(qf_Union({}, {}), Feature{});
}

TEST(SetOperations, MakeAHoleOfWhatIsTakenOutOfTheMiddle) {
  EXPECT_EQ(qf_Difference({{square, {}}}, {{box(2, 2, 4, 4), {}}}),
            (Feature{{square, {{{2, 2}, {2, 4}, {4, 4}, {4, 2}}}}}));
}

TEST(SetOperations, TakeEachFeatureByItsOwnWindings) {
  // Opposite directions must not cancel, nor holes of one feature reach into the other.
  EXPECT_EQ(qf_Union({{square, {}}}, {{reversed(square), {}}}), (Feature{{square, {}}}));
  EXPECT_EQ(qf_Union({{square, {box(2, 2, 4, 4)}}}, {{box(1, 1, 5, 5), {}}}),
            (Feature{{square, {}}}));
}

}  // namespace
