// SPDX-License-Identifier: MIT
//
// Parts around points against winding numbers ring by ring.

#include <cntrsets/operations/featurewinding.h>

#include <tests/cntrsets/features.h>

namespace {

using cntr::sets::FeatureWinding;
using cntr::sets::Scaling;
using features::box;
using features::Feature;
using features::Points;
using features::square;

FeatureWinding windingOf(const Feature& feature) {
  const Points& first = feature.empty() ? square : feature[0].outline;
  return {feature, Scaling(std::max(std::abs(first[0].x()), 1.0))};
}

std::optional<std::size_t> plainPartAround(const Feature& feature, const qcVector<2>& p) {
  for (std::size_t part = 0; part < feature.size(); ++part) {
    const auto& holes = feature[part].holes;
    if (plain::windingNumber(feature[part].outline, p) != 0 &&
        std::all_of(holes.begin(), holes.end(),
                    [&p](const Points& hole) { return plain::windingNumber(hole, p) == 0; }))
      return part;
  }
  return std::nullopt;
}

/// Rings with small integer coordinates that cross and overlap.
Feature anyRings(shapes::Random& random) {
  Feature feature(1 + random.below(3));
  for (qcRings& part : feature) {
    part.outline = shapes::gridWalk(random, 4 + random.below(24));
    for (std::size_t holes = random.below(3); holes > 0; --holes)
      part.holes.push_back(shapes::gridPoints(random, 3, 9));
  }
  return feature;
}

Points pointsBesideVertices(shapes::Random& random, const Feature& feature) {
  Points points;
  for (const Points& ring : features::ringsOf(feature)) {
    for (int i = 0; i < 8; ++i) {
      const qcVector<2> vertex = ring[random.below(ring.size())];
      const double dx = random.uniform(-3.0, 3.0);
      const double dy = random.uniform(-3.0, 3.0);
      points.push_back(vertex + qcVector<2>(dx, dy));
    }
  }
  return points;
}

}  // namespace

TEST(FeatureWinding, FindsTheFirstPartWhoseRingsFillThePoint) {
  std::size_t inLaterParts = 0;
  std::size_t inNone = 0;
  for (std::uint64_t seed = 0; seed < 2000; ++seed) {
    shapes::Random random(seed);
    const Feature feature = anyRings(random);
    FeatureWinding winding = windingOf(feature);
    const Points points = pointsBesideVertices(random, feature);
    std::vector<std::optional<std::size_t>> parts;
    for (const qcVector<2>& p : points) {
      parts.push_back(winding.partAround(p));
      ASSERT_EQ(parts.back(), plainPartAround(feature, p)) << "seed " << seed;
      inLaterParts += parts.back().value_or(0) > 0 ? 1U : 0U;
      inNone += parts.back() ? 0U : 1U;
    }
    winding.sortIntoSlabs();
    for (std::size_t i = 0; i < points.size(); ++i)
      ASSERT_EQ(winding.partAround(points[i]), parts[i]) << "in slabs; seed " << seed;
  }
  EXPECT_GT(inLaterParts, 1000);
  EXPECT_GT(inNone, 10000);
}

TEST(FeatureWinding, GoesOnToTheNextPartFromAPointInAHole) {
  FeatureWinding winding =
      windingOf({{square, {box(1, 1, 9, 9)}}, {box(2, 2, 8, 8), {box(4, 4, 6, 6)}}});
  EXPECT_EQ(winding.partAround({0.5, 0.5}), 0U);
  EXPECT_EQ(winding.partAround({1.5, 5.0}), std::nullopt);
  EXPECT_EQ(winding.partAround({3.0, 5.0}), 1U);
  EXPECT_EQ(winding.partAround({5.0, 5.0}), std::nullopt);
}

TEST(FeatureWinding, KnowsRingsWithoutHeightAndFeaturesWithoutRings) {
  FeatureWinding flat = windingOf({{{{0, 0}, {1, 0}, {2, 0}}, {}}});
  FeatureWinding nothing = windingOf({});
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(flat.partAround({1, 0}), std::nullopt);
    EXPECT_EQ(nothing.partAround({1, 0}), std::nullopt);
    flat.sortIntoSlabs();
    nothing.sortIntoSlabs();
  }
}

TEST(FeatureWinding, HasTheSameAnswersAfterItWasSortedTwice) {
  FeatureWinding winding = windingOf({{square, {}}});
  winding.sortIntoSlabs();
  winding.sortIntoSlabs();
  EXPECT_EQ(winding.partAround({5, 5}), 0U);
  EXPECT_EQ(winding.partAround({5, 11}), std::nullopt);
}
