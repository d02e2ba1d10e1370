// SPDX-License-Identifier: MIT
//
// Offsets: known areas, and the distance of points to the feature.

#include <cntrsets/sets.h>

#include <cmath>
#include <limits>
#include <numbers>

#include <cntr/contourdefs.h>
#include <testing/twin/repetitions.h>
#include <tests/cntrsets/features.h>

namespace {

using features::box;
using features::Feature;
using features::Points;
using features::square;

TEST(Offset, GrowsASquareByItsPerimeterAndAQuarterCircleAtEachCorner) {
  const Feature grown = qf_Offset({{square, {}}}, 2.0, 1e-6);
  ASSERT_EQ(grown.size(), 1U);
  features::expectNormalForm(grown);
  EXPECT_NEAR(features::areaOf(grown), 100.0 + 80.0 + 4.0 * std::numbers::pi, 4e-5);
  EXPECT_LT(features::areaOf(grown), 100.0 + 80.0 + 4.0 * std::numbers::pi);
}

TEST(Offset, ShrinksASquareToASquare) {
  const Feature shrunk = qf_Offset({{square, {}}}, -2.0, 1e-3);
  EXPECT_EQ(shrunk, (Feature{{box(2, 2, 8, 8), {}}}));
  EXPECT_EQ(qf_Offset({{square, {}}}, -5.0, 1e-3), Feature{});
  EXPECT_EQ(qf_Offset({{square, {}}}, -500.0, 1e-3), Feature{});
}

TEST(Offset, GivesTheFilledSetForDistanceZero) {
  EXPECT_EQ(qf_Offset({{features::reversed(square), {}}}, 0.0, 1e-3), (Feature{{square, {}}}));
  EXPECT_EQ(qf_Offset({}, 3.0, 1e-3), Feature{});
}

TEST(Offset, ClosesAHoleThatIsSmallerThanTheDistance) {
  const Feature ring{{square, {box(4, 4, 6, 6)}}};
  const Feature grown = qf_Offset(ring, 1.5, 1e-3);
  ASSERT_EQ(grown.size(), 1U);
  EXPECT_TRUE(grown[0].holes.empty());
  EXPECT_EQ(qf_Offset(ring, 0.5, 1e-3)[0].holes[0],
            (Points{{4.5, 4.5}, {4.5, 5.5}, {5.5, 5.5}, {5.5, 4.5}}));
}

TEST(Offset, CutsANarrowNeck) {
  const Feature dumbbell{{{{0, 0},
                           {10, 0},
                           {10, 4},
                           {20, 4},
                           {20, 0},
                           {30, 0},
                           {30, 10},
                           {20, 10},
                           {20, 6},
                           {10, 6},
                           {10, 10},
                           {0, 10}},
                          {}}};
  EXPECT_EQ(qf_Offset(dumbbell, -1.5, 1e-3).size(), 2U);
  EXPECT_EQ(qf_Offset(dumbbell, -0.5, 1e-3).size(), 1U);
  EXPECT_EQ(qf_Offset(qf_Offset(dumbbell, -1.5, 1e-3), 4.0, 1e-3).size(), 2U);
  EXPECT_EQ(qf_Offset(qf_Offset(dumbbell, -1.5, 1e-3), 7.0, 1e-3).size(), 1U);
}

TEST(Offset, HoldsThePointsWithinTheDistance) {
  for (std::uint64_t seed = 0; seed < repetitions(400); ++seed) {
    const Feature feature = qf_Union(features::anyFeature(seed), {});
    if (feature.empty()) continue;
    shapes::Random random(seed);
    const plain::Parts parts = features::plainOf(feature);
    const double size = std::sqrt(features::areaOf(feature));
    const double distance = random.uniform(-0.2, 0.5) * size;
    const double tolerance = 0.01 * std::abs(distance);
    const Feature result = qf_Offset(feature, distance, tolerance);
    features::expectNormalForm(result);
    Points box = feature[0].outline;
    box.push_back(box[0] + qcVector<2>(-size, -size));
    box.push_back(box[0] + qcVector<2>(size, size));
    for (const qcVector<2>& p : shapes::pointsInBox(box, 60, seed)) {
      const double toEdge = plain::distanceToRings(parts, p);
      if (std::abs(toEdge - std::abs(distance)) <= 1.01 * tolerance || toEdge < 1e-6 * size)
        continue;
      const bool inside = plain::fills(parts, plain::Rule::nonZero, p);
      const bool expected =
          distance > 0.0 ? inside || toEdge < distance : inside && toEdge > -distance;
      EXPECT_EQ(plain::fills(features::plainOf(result), plain::Rule::evenOdd, p), expected)
          << "seed " << seed << " at " << p.x() << ' ' << p.y();
    }
    if (testing::Test::HasFailure()) FAIL() << "seed " << seed;
  }
}

TEST(Offset, KeepsChordsWithinTheToleranceOfTheirArcs) {
  const Feature dot{{shapes::regularPolygon(6, 1e-3, {0, 0}), {}}};
  for (const double tolerance : {1.0, 1e-2, 1e-5}) {
    for (const Points& ring : features::ringsOf(qf_Offset(dot, 1.0, tolerance))) {
      for (std::size_t i = 0; i < ring.size(); ++i) {
        const qcVector<2> middle = (ring[i] + ring[(i + 1) % ring.size()]) * 0.5;
        EXPECT_GE(middle.len(), 1.0 - tolerance - 1e-12);
        EXPECT_LE(middle.len(), 1.001 + 1e-12);
      }
    }
  }
}

TEST(Offset, MakesTheLongestChordsThatTheToleranceAllows) {
  // A quarter circle at each corner of the square. The tolerance is limited to between 1e-8 and
  // 0.25 of the distance.
  const auto chordsAtCorner = [](double tolerance) {
    return qf_Offset({{square, {}}}, 2.0, tolerance)[0].outline.size() / 4 - 1;
  };
  const auto expected = [](double share) {
    return static_cast<std::size_t>(
        std::ceil(0.5 * std::numbers::pi / (2.0 * std::acos(1.0 - share))));
  };
  EXPECT_EQ(chordsAtCorner(0.02), expected(0.01));
  EXPECT_EQ(chordsAtCorner(0.5), expected(0.25));
  EXPECT_EQ(chordsAtCorner(10.0), 2U);
  EXPECT_EQ(chordsAtCorner(1e-7), expected(5e-8));
  EXPECT_EQ(chordsAtCorner(1e-300), expected(1e-8));
}

TEST(Offset, RefusesDistancesAndTolerancesThatMeanNothing) {
  const auto refusal = [](double distance, double tolerance) {
    try {
      qf_Offset({{square, {}}}, distance, tolerance);
    } catch (const qcContourDefs::BadParams& error) {
      return error.message();
    }
    return std::wstring(L"not refused");
  };
  EXPECT_EQ(refusal(std::nan(""), 1e-3), L"the distance is not a finite number");
  EXPECT_EQ(refusal(std::numeric_limits<double>::infinity(), 1e-3),
            L"the distance is not a finite number");
  EXPECT_EQ(refusal(1.0, 0.0), L"the arc tolerance must be above 0");
  EXPECT_EQ(refusal(1.0, -1.0), L"the arc tolerance must be above 0");
  EXPECT_EQ(refusal(1.0, std::nan("")), L"the arc tolerance must be above 0");
}

}  // namespace
