// SPDX-License-Identifier: MIT
//
// Repair and set operations on thousands of random features, against winding numbers counted point
// by point and areas summed up in strips.

#include <cntrsets/sets.h>

#include <set>
#include <string>
#include <utility>

#include <cntr/contourdefs.h>
#include <testing/twin/repetitions.h>
#include <tests/cntrsets/features.h>

namespace {

using features::Feature;
using features::Points;

const std::uint64_t seeds = repetitions(2500);

/// The result, or nothing when there is no area.
Feature repaired(const Feature& feature, qcPolygon::PolyFillMode rule, qcRepairReport* report) {
  try {
    return qf_MakeValid(feature, rule, report);
  } catch (const qcContourDefs::BadParams& error) {
    EXPECT_EQ(error.message(), L"the feature has no area");
    return {};
  }
}

/// Points to ask about: in the box of each ring, and near each vertex.
Points questions(const Feature& feature, shapes::Random& random) {
  Points points;
  for (const Points& ring : features::ringsOf(feature)) {
    if (ring.empty()) continue;
    const Points inBox = shapes::pointsInBox(ring, 8, random.next());
    points.insert(points.end(), inBox.begin(), inBox.end());
    for (int i = 0; i < 8; ++i) points.push_back(shapes::queryPoint(random, ring));
  }
  return points;
}

double extentOf(const Feature& feature) {
  double extent = 0.0;
  for (const Points& ring : features::ringsOf(feature))
    for (const qcVector<2>& p : ring) extent = std::max({extent, std::abs(p.x()), std::abs(p.y())});
  return extent;
}

/// The points that the result must hold, apart from those too near to an edge to be sure of.
template <class Holds>
void expectToHold(const Feature& result, const Feature& input, Holds holds, std::uint64_t seed) {
  shapes::Random random(seed);
  const plain::Parts parts = features::plainOf(result);
  const plain::Parts edges = features::plainOf(input);
  const double margin = 1e-9 * extentOf(input);
  int asked = 0;
  for (const qcVector<2>& p : questions(input, random)) {
    if (plain::distanceToRings(edges, p) <= margin) continue;
    ++asked;
    EXPECT_EQ(plain::fills(parts, plain::Rule::evenOdd, p), holds(p))
        << "seed " << seed << " at " << p.x() << ' ' << p.y();
  }
  if (features::areaOf(result) > 1e-3 * extentOf(input) * extentOf(input)) {
    EXPECT_GT(asked, 0) << "seed " << seed;
  }
}

std::pair<qcPolygon::PolyFillMode, plain::Rule> ruleOf(std::uint64_t seed) {
  return seed % 2 == 0 ? std::pair(qcPolygon::eNonZero, plain::Rule::nonZero)
                       : std::pair(qcPolygon::eEvenOdd, plain::Rule::evenOdd);
}

TEST(MakeValidProperties, TheResultIsInNormalFormAndHoldsThePointsOfTheRule) {
  for (std::uint64_t seed = 0; seed < seeds; ++seed) {
    const Feature feature = features::anyFeature(seed);
    const auto [mode, rule] = ruleOf(seed);
    const Feature result = repaired(feature, mode, nullptr);
    features::expectNormalForm(result);
    const plain::Parts parts = features::plainOf(feature);
    expectToHold(
        result, feature,
        [&, rule = rule](const qcVector<2>& p) { return plain::fills(parts, rule, p); }, seed);
    if (testing::Test::HasFailure()) FAIL() << "seed " << seed;
  }
}

TEST(MakeValidProperties, TheAreaIsThatOfTheRule) {
  std::uint64_t compared = 0;
  for (std::uint64_t seed = 0; seed < seeds / 6; ++seed) {
    const Feature feature = features::anyFeature(seed);
    const auto [mode, rule] = ruleOf(seed);
    qcRepairReport report;
    const Feature result = repaired(feature, mode, &report);
    const double area = plain::filledArea(features::plainOf(feature), rule);
    const double allowed = 1e-9 * area + features::lengthOf(feature) * features::unitOf(feature);
    if (report.snapped) continue;
    ++compared;
    EXPECT_NEAR(features::areaOf(result), area, allowed) << "seed " << seed;
    EXPECT_NEAR(report.area, area, allowed) << "seed " << seed;
    EXPECT_LE(report.areaError, features::lengthOf(feature) * features::unitOf(feature) * 4.0);
  }
  EXPECT_GT(compared, seeds / 6 * 9 / 10);
}

TEST(MakeValidProperties, RepairingAgainChangesNothing) {
  for (std::uint64_t seed = 0; seed < seeds; ++seed) {
    const Feature result = repaired(features::anyFeature(seed), ruleOf(seed).first, nullptr);
    if (result.empty()) continue;
    qcRepairReport report;
    EXPECT_EQ(qf_MakeValid(result, qcPolygon::eNonZero, &report), result) << "seed " << seed;
    EXPECT_FALSE(report.changed) << "seed " << seed;
    EXPECT_EQ(qf_MakeValid(result, qcPolygon::eEvenOdd, &report), result) << "seed " << seed;
  }
}

TEST(MakeValidProperties, TheDirectionAndTheStartOfRingsDoNotMatter) {
  for (std::uint64_t seed = 0; seed < seeds / 4; ++seed) {
    Feature feature = features::anyFeature(seed);
    const auto mode = ruleOf(seed).first;
    const Feature result = repaired(feature, mode, nullptr);
    shapes::Random random(seed);
    for (qcRings& part : feature) {
      if (random.chance(0.5)) part.outline = features::reversed(part.outline);
      if (!part.outline.empty())
        std::rotate(
            part.outline.begin(),
            part.outline.begin() + static_cast<std::ptrdiff_t>(random.below(part.outline.size())),
            part.outline.end());
      for (Points& hole : part.holes)
        if (random.chance(0.5)) hole = features::reversed(hole);
    }
    const Feature turned = repaired(feature, mode, nullptr);
    EXPECT_NEAR(features::areaOf(turned), features::areaOf(result),
                features::lengthOf(feature) * features::unitOf(feature))
        << "seed " << seed;
    features::expectNormalForm(turned);
  }
}

bool liesOn(const Points& ring, const qcVector<2>& p) {
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const qcVector<2>& a = ring[i];
    const qcVector<2>& b = ring[(i + 1) % ring.size()];
    if (cntr::sets::orientation(a, b, p) == 0 && std::min(a.x(), b.x()) <= p.x() &&
        p.x() <= std::max(a.x(), b.x()) && std::min(a.y(), b.y()) <= p.y() &&
        p.y() <= std::max(a.y(), b.y()))
      return true;
  }
  return false;
}

TEST(MakeValidProperties, VerticesOnTheBoundaryKeepTheirBits) {
  std::size_t onBoundary = 0;
  for (std::uint64_t seed = 0; seed < seeds; ++seed) {
    const Feature feature = features::anyFeature(seed);
    qcRepairReport report;
    const Feature result = repaired(feature, ruleOf(seed).first, &report);
    if (report.snapped) continue;
    std::set<std::pair<double, double>> kept;
    for (const Points& ring : features::ringsOf(result))
      for (const qcVector<2>& p : ring) kept.emplace(p.x(), p.y());
    for (const Points& ring : features::ringsOf(feature)) {
      // A ring of a single point has no edges, and bounds nothing.
      if (ring.empty() || std::count(ring.begin(), ring.end(), ring.front()) == std::ssize(ring))
        continue;
      for (const qcVector<2>& p : ring) {
        const std::vector<Points> rings = features::ringsOf(result);
        if (std::none_of(rings.begin(), rings.end(),
                         [&](const Points& boundary) { return liesOn(boundary, p); }))
          continue;
        ++onBoundary;
        EXPECT_EQ(kept.count({p.x(), p.y()}), 1U)
            << "seed " << seed << " at " << p.x() << ' ' << p.y();
      }
    }
  }
  EXPECT_GT(onBoundary, seeds);
}

TEST(SetOperationProperties, HoldThePointsThatTheirNamesSay) {
  for (std::uint64_t seed = 0; seed < seeds / 8; ++seed) {
    const Feature a = features::anyFeature(2 * seed);
    const Feature b = features::anyFeature(2 * seed + 1);
    Feature both = a;
    both.insert(both.end(), b.begin(), b.end());
    const plain::Parts partsA = features::plainOf(a);
    const plain::Parts partsB = features::plainOf(b);
    const auto check = [&](const Feature& result, auto keeps) {
      features::expectNormalForm(result);
      expectToHold(
          result, both,
          [&](const qcVector<2>& p) {
            return keeps(plain::fills(partsA, plain::Rule::nonZero, p),
                         plain::fills(partsB, plain::Rule::nonZero, p));
          },
          seed);
    };
    check(qf_Union(a, b), [](bool inA, bool inB) { return inA || inB; });
    check(qf_Intersection(a, b), [](bool inA, bool inB) { return inA && inB; });
    check(qf_Difference(a, b), [](bool inA, bool inB) { return inA && !inB; });
    check(qf_SymmetricDifference(a, b), [](bool inA, bool inB) { return inA != inB; });
    if (testing::Test::HasFailure()) FAIL() << "seed " << seed;
  }
}

}  // namespace
