// SPDX-License-Identifier: MIT
//
// The largest circle inside a feature: known circles, the plain definition, and that neither size,
// place nor shape prevents it from being found.

#include <cntrsets/inscribed.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <string>

#include <cntr/contourdefs.h>
#include <testing/plain/inscribed.h>
#include <testing/twin/repetitions.h>
#include <tests/cntrsets/features.h>

namespace {

using features::box;
using features::Feature;
using features::Points;
using features::reversed;
using features::square;

double radiusOf(const Feature& feature, double tolerance = 1e-9) {
  return qf_InscribedCircle(feature, tolerance).radius();
}

/// The circle lies in the area, up to rounding. For features all of whose edges bound it.
void expectInside(const Feature& feature, const qcCircle& circle, const std::string& what) {
  const plain::Parts parts = features::plainOf(feature);
  EXPECT_TRUE(plain::fills(parts, plain::Rule::nonZero, circle.center())) << what;
  EXPECT_GE(plain::distanceToRings(parts, circle.center()), circle.radius() * (1.0 - 1e-12))
      << what;
}

TEST(InscribedCircle, OfASquareTouchesAllItsSides) {
  const qcCircle circle = qf_InscribedCircle({{square, {}}}, 1e-9);
  EXPECT_NEAR(circle.radius(), 5.0, 1e-9);
  EXPECT_NEAR(circle.center().x(), 5.0, 1e-9);
  EXPECT_NEAR(circle.center().y(), 5.0, 1e-9);
}

TEST(InscribedCircle, OfATriangleIsItsIncircle) {
  const qcCircle circle = qf_InscribedCircle({{{{0, 0}, {4, 0}, {0, 3}}, {}}}, 1e-10);
  EXPECT_NEAR(circle.radius(), 1.0, 1e-10);
  EXPECT_NEAR(circle.center().x(), 1.0, 1e-9);
  EXPECT_NEAR(circle.center().y(), 1.0, 1e-9);
}

TEST(InscribedCircle, StaysOutOfHoles) {
  const Feature feature{{box(0, 0, 10, 10), {box(4, 4, 6, 6)}}};
  // In a corner: r sqrt(2) from it, and r from the hole's corner at 4 sqrt(2).
  const double radius = 4.0 * std::numbers::sqrt2 / (std::numbers::sqrt2 + 1.0);
  const qcCircle circle = qf_InscribedCircle(feature, 1e-9);
  EXPECT_NEAR(circle.radius(), radius, 1e-9);
  expectInside(feature, circle, "");
}

TEST(InscribedCircle, IsThatOfTheRoomiestPart) {
  const qcCircle circle = qf_InscribedCircle(
      {{box(0, 0, 2, 50), {}}, {box(10, 0, 16, 6), {}}, {box(20, 0, 25, 5), {}}}, 1e-9);
  EXPECT_NEAR(circle.radius(), 3.0, 1e-9);
  EXPECT_NEAR(circle.center().x(), 13.0, 1e-8);
}

TEST(InscribedCircle, DependsOnNoDirectionOfRings) {
  const Feature feature{{square, {box(1, 1, 3, 4)}}};
  const Feature turned{{reversed(square), {reversed(box(1, 1, 3, 4))}}};
  EXPECT_EQ(radiusOf(feature), radiusOf(turned));
}

TEST(InscribedCircle, IsThatOfTheFilledSetWhateverItsRingsDo) {
  EXPECT_NEAR(radiusOf({{box(0, 0, 5, 10), {}}, {box(5, 0, 10, 10), {}}}), 5.0, 1e-9)
      << "parts with a common edge";
  EXPECT_NEAR(radiusOf({{box(0, 0, 6, 10), {}}, {box(4, 0, 10, 10), {}}}), 5.0, 1e-9)
      << "parts that overlap";
  EXPECT_NEAR(radiusOf({{square, {}}, {box(2, 2, 4, 4), {}}}), 5.0, 1e-9) << "a part in a part";
  EXPECT_NEAR(radiusOf({{{{0, 0}, {8, 8}, {8, 0}, {0, 8}}, {}}}),
              8.0 / (2.0 + 2.0 * std::numbers::sqrt2), 1e-9)
      << "a bow tie";
  EXPECT_NEAR(
      radiusOf({{{{0, 0}, {10, 0}, {5, 0}, {5, 5}, {5, 0}, {10, 0}, {10, 10}, {0, 10}}, {}}}), 5.0,
      1e-9)
      << "a spike within";
  EXPECT_NEAR(radiusOf({{square, {box(5, 0, 20, 10)}}}), 2.5, 1e-9) << "a hole across";
}

TEST(InscribedCircle, OfWhatFillsNothingHasNoSize) {
  for (const Feature& feature :
       {Feature{}, Feature{{{{1, 1}}, {}}}, Feature{{{{1, 1}, {4, 4}}, {}}},
        Feature{{{{5, 5}, {5, 5}, {5, 5}}, {}}}, Feature{{{{0, 0}, {5, 0}, {3, 0}}, {}}},
        Feature{{square, {square}}}})
    EXPECT_EQ(qf_InscribedCircle(feature, 1e-6), qcCircle());
}

TEST(InscribedCircle, RefusesTolerancesAndCoordinatesThatMeanNothing) {
  const auto messageOf = [](const Feature& feature, double tolerance) -> std::wstring {
    try {
      qf_InscribedCircle(feature, tolerance);
    } catch (const qcContourDefs::BadParams& error) {
      return error.message();
    }
    return L"";
  };
  for (const double bad : {0.0, -1.0, std::nan("")})
    EXPECT_EQ(messageOf({{square, {}}}, bad), L"tolerance is not positive");
  for (const double bad : {std::nan(""), std::numeric_limits<double>::infinity()})
    EXPECT_EQ(messageOf({{{{0, 0}, {1, bad}, {1, 1}}, {}}}, 1e-6),
              L"a coordinate is not a finite number");
}

TEST(InscribedCircle, ToleranceBeyondTheShapeIsNoHarm) {
  EXPECT_GE(radiusOf({{square, {}}}, std::numeric_limits<double>::infinity()), 0.0);
  EXPECT_GE(radiusOf({{square, {}}}, 2.0), 3.0);
  EXPECT_NEAR(radiusOf({{square, {}}}, 1e-300), 5.0, 1e-10);
}

/// Features all of whose edges bound them: a star or comb or band, and holes that keep clear.
Feature simpleFeature(std::uint64_t seed) {
  shapes::Random random(seed);
  const std::size_t n = 3 + random.below(30);
  const std::size_t kind = random.below(6);
  const double turns = random.uniform(0.5, 3.0);
  Points ring = kind == 0   ? shapes::smoothStar(n, seed)
                : kind == 1 ? shapes::spikyStar(n, seed)
                : kind == 2 ? shapes::comb(10 + n, seed)
                : kind == 3 ? shapes::skyline(random, n)
                : kind == 4 ? shapes::spiral(2 * n + 8, turns)
                            : shapes::regularPolygon(n, 3.0, {1.0, 2.0});
  const double angle = random.uniform(0.0, 6.0);
  if (random.chance(0.5)) shapes::rotate(ring, angle);
  Feature feature{{ring, {}}};
  const qcCircle circle = qf_InscribedCircle(feature, 1e-6);
  if (circle.radius() == 0.0) return {{square, {}}};
  if (random.chance(0.5)) {
    const double radius = circle.radius() * random.uniform(0.1, 0.9);
    feature.front().holes.push_back(
        shapes::regularPolygon(3 + random.below(6), radius, circle.center()));
  }
  return feature;
}

TEST(InscribedCircle, IsAsLargeAsTheLargestThatTryingPointsFinds) {
  const std::size_t seeds = repetitions(200);
  std::size_t tried = 0;
  for (std::uint64_t seed = 0; seed < seeds; ++seed) {
    const Feature feature = simpleFeature(seed);
    if (qf_RingContact(feature) != qcRingContact::eSimple) continue;
    ++tried;
    const double extent =
        std::sqrt(plain::filledArea(features::plainOf(feature), plain::Rule::nonZero));
    const double coarse = 1e-2 * extent;
    const plain::Circle found = plain::inscribedCircle(features::plainOf(feature), coarse);
    const qcCircle circle = qf_InscribedCircle(feature, 1e-7 * extent);
    const std::string what = "seed " + std::to_string(seed);
    EXPECT_GE(circle.radius(), found.radius - 1e-7 * extent) << what;
    EXPECT_LE(circle.radius(), found.radius + coarse) << what;
    expectInside(feature, circle, what);
  }
  EXPECT_GT(tried, seeds * 3 / 4);
}

TEST(InscribedCircle, IsWithinTheToleranceOfTheLargest) {
  for (std::uint64_t seed = 0; seed < repetitions(100); ++seed) {
    const Feature feature = simpleFeature(seed);
    const double fine = 1e-6 * radiusOf(feature, 1e-3);
    ASSERT_GT(fine, 0.0) << seed;
    const double largest = radiusOf(feature, fine);
    for (const double tolerance : {0.1 * largest, 1e-3 * largest, 10.0 * fine}) {
      const double radius = radiusOf(feature, tolerance);
      EXPECT_LE(radius, largest + fine) << seed;
      EXPECT_GE(radius, largest - tolerance) << seed;
    }
  }
}

TEST(InscribedCircle, IsTheSameAtAnySizeAndAnywhere) {
  const Feature feature{{{{0, 0}, {9, 1}, {13, 8}, {2, 6}, {1, 3}}, {box(5, 3, 6, 4)}}};
  const qcCircle circle = qf_InscribedCircle(feature, 0x1p-20);
  for (const double scale : {0x1p-300, 0x1p-20, 0x1p40, 0x1p300}) {
    Feature scaled = feature;
    for (qcVector<2>& p : scaled.front().outline) p = p * scale;
    for (qcVector<2>& p : scaled.front().holes.front()) p = p * scale;
    EXPECT_EQ(qf_InscribedCircle(scaled, 0x1p-20 * scale),
              qcCircle(circle.center() * scale, circle.radius() * scale));
  }
  const qcVector<2> far(1e9, -1e9);
  Feature moved = feature;
  for (qcVector<2>& p : moved.front().outline) p = p + far;
  for (qcVector<2>& p : moved.front().holes.front()) p = p + far;
  EXPECT_NEAR(qf_InscribedCircle(moved, 1e-9).radius(), radiusOf(feature, 1e-9), 1e-9);
}

TEST(InscribedCircle, OfANeedleIsFound) {
  const double radius = radiusOf({{box(0, 0, 1e6, 1e-3), {}}}, 1e-6);
  EXPECT_NEAR(radius, 5e-4, 1e-6);
  EXPECT_GE(radiusOf({{{{0, 0}, {1e9, 1e-9}, {1e9, 2e-9}}, {}}}, 1e-9), 0.0);
}

TEST(InscribedCircle, IsNotLookedForInWhatIsFarTooThin) {
  // A diagonal so thin that it would have a hundred million pieces.
  const Feature thin{{{{0, 0}, {1e8, 1e8}, {1e8 + 1, 1e8}, {1, 0}}, {}}};
  try {
    qf_InscribedCircle(thin, 1e-1);
    FAIL() << "not refused";
  } catch (const qcContourDefs::BadParams& error) {
    EXPECT_EQ(error.message(), L"the feature is too thin for the tolerance");
  }
}

}  // namespace
