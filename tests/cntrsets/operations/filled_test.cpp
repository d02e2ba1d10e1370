// SPDX-License-Identifier: MIT
//
// How rings lie relative to each other, and moments of filled sets against exact rational
// arithmetic.

#include <cntrsets/filled.h>

#include <cmath>
#include <limits>
#include <string>

#include <cntr/contourdefs.h>
#include <cntrsets/operations/filledrings.h>
#include <testing/plain/integermoments.h>
#include <testing/twin/repetitions.h>
#include <tests/cntr/plane/simple_ring.h>
#include <tests/cntrsets/features.h>

namespace {

using features::box;
using features::Feature;
using features::Points;
using features::reversed;
using features::square;

constexpr auto simple = qcRingContact::eSimple;
constexpr auto touches = qcRingContact::eTouches;
constexpr auto crosses = qcRingContact::eCrosses;
constexpr auto overlaps = qcRingContact::eOverlaps;

struct Case {
  const char* name;
  qcRingContact contact;
  Feature feature;
};

const std::vector<Case>& cases() {
  static const std::vector<Case> all{
      {"nothing", simple, {}},
      {"a point", simple, {{{{1, 1}}, {}}}},
      {"a square", simple, {{square, {}}}},
      {"a clockwise square", simple, {{reversed(square), {}}}},
      {"a repeated vertex", simple, {{{{0, 0}, {10, 0}, {10, 0}, {10, 10}, {0, 0}}, {}}}},
      {"a hole", simple, {{square, {box(2, 2, 4, 4)}}}},
      {"a part in a hole", simple, {{square, {box(2, 2, 8, 8)}}, {box(4, 4, 6, 6), {}}}},
      {"a hole that meets its outline in a vertex",
       touches,
       {{square, {{{0, 0}, {2, 1}, {1, 2}}}}}},
      {"a hole whose vertex lies on an edge", touches, {{square, {{{0, 5}, {3, 6}, {3, 4}}}}}},
      {"a hole along an edge", touches, {{square, {box(0, 4, 3, 6)}}}},
      {"a hole that fills its outline", touches, {{square, {square}}}},
      {"holes with a common corner", touches, {{square, {box(2, 2, 4, 4), box(4, 4, 6, 6)}}}},
      {"holes with a common edge", touches, {{square, {box(2, 2, 4, 4), box(4, 2, 6, 4)}}}},
      {"parts with a common edge", touches, {{square, {}}, {box(10, 0, 20, 10), {}}}},
      {"a part that fills a hole", touches, {{square, {box(2, 2, 8, 8)}}, {box(2, 2, 8, 8), {}}}},
      {"a spike", touches, {{{{0, 0}, {10, 0}, {20, 0}, {10, 0}, {10, 10}, {0, 10}}, {}}}},
      {"a line there and back", touches, {{{{0, 0}, {5, 0}}, {}}}},
      {"pixels that meet in a corner",
       touches,
       {{{{0, 0}, {1, 0}, {1, 1}, {2, 1}, {2, 2}, {1, 2}, {1, 1}, {0, 1}}, {}}}},
      {"a ring around its hole through one vertex",
       touches,
       {{{{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0}, {2, 5}, {5, 5}, {5, 2}}, {}}}},
      {"a bow tie", crosses, {{{{0, 0}, {4, 4}, {4, 0}, {0, 4}}, {}}}},
      {"a bow tie with a vertex in its middle",
       crosses,
       {{{{0, 0}, {2, 2}, {4, 4}, {4, 0}, {2, 2}, {0, 4}}, {}}}},
      {"parts that cross", crosses, {{square, {}}, {box(5, 5, 15, 15), {}}}},
      {"a hole across its outline", crosses, {{square, {box(5, 5, 15, 8)}}}},
      {"a ring walked twice", overlaps, {{{{0, 0}, {4, 0}, {4, 4}, {0, 0}, {4, 0}, {4, 4}}, {}}}},
      {"a part within a part", overlaps, {{square, {}}, {reversed(box(2, 2, 4, 4)), {}}}},
      {"the same part twice", overlaps, {{square, {}}, {reversed(square), {}}}},
      {"a hole outside", overlaps, {{square, {box(20, 0, 22, 2)}}}},
      {"a hole in a hole", overlaps, {{square, {box(1, 1, 9, 9), box(3, 3, 6, 6)}}}},
      {"the same hole twice", overlaps, {{square, {box(1, 1, 9, 9), box(1, 1, 9, 9)}}}}};
  return all;
}

TEST(RingContact, IsToldOfEachKind) {
  for (const Case& known : cases())
    EXPECT_EQ(qf_RingContact(known.feature), known.contact) << known.name;
}

TEST(RingContact, DependsOnNoDirection) {
  for (Case known : cases()) {
    for (qcRings& part : known.feature) part.outline = reversed(part.outline);
    EXPECT_EQ(qf_RingContact(known.feature), known.contact) << known.name;
    for (qcRings& part : known.feature)
      for (Points& hole : part.holes) hole = reversed(hole);
    EXPECT_EQ(qf_RingContact(known.feature), known.contact) << known.name;
  }
}

TEST(RingContact, SeesTheLastBit) {
  const double y = 1.0 / 3.0;
  const auto withTip = [&](double tip) {
    return Feature{{{{0, y}, {9, y}, {9, 3}, {4, tip}, {0, 3}}, {}}};
  };
  EXPECT_EQ(qf_RingContact(withTip(std::nextafter(y, 1.0))), simple);
  EXPECT_EQ(qf_RingContact(withTip(y)), touches);
  EXPECT_EQ(qf_RingContact(withTip(std::nextafter(y, 0.0))), crosses);
}

TEST(RingContact, RefusesCoordinatesThatAreNotFiniteNumbers) {
  try {
    qf_RingContact({{{{0, 0}, {1, std::nan("")}, {1, 1}}, {}}});
    FAIL() << "not refused";
  } catch (const qcContourDefs::BadParams& error) {
    EXPECT_EQ(error.message(), L"a coordinate is not a finite number");
  }
}

TEST(RingContact, CountsCoordinatesFarSmallerThanTheLargestAsZero) {
  for (std::uint64_t seed = 0; seed < repetitions(3000); ++seed) {
    shapes::Random random(seed);
    Feature mixed(1);
    mixed[0].outline = shapes::cloud(random, 3 + random.below(20));
    mixed[0].holes.push_back(shapes::cloud(random, 3 + random.below(6)));
    Feature flat = mixed;
    const double small = random.chance(0.5) ? 1.0 : 0x1p-1050;
    const double share = random.uniform(0.1, 0.9);
    for (std::size_t i = 0; i < mixed[0].outline.size(); ++i) {
      qcVector<2>& p = mixed[0].outline[i];
      const bool isHigh = random.chance(share);
      flat[0].outline[i] = {0.0, isHigh ? p.y() * 0x1p1000 : 0.0};
      p = {p.x() * small, p.y() * (isHigh ? 0x1p1000 : small)};
    }
    for (std::size_t i = 0; i < mixed[0].holes[0].size(); ++i) {
      qcVector<2>& p = mixed[0].holes[0][i];
      flat[0].holes[0][i] = {0.0, p.y() * 0x1p1000};
      p = {p.x() * small, p.y() * 0x1p1000};
    }
    EXPECT_EQ(qf_RingContact(mixed), qf_RingContact(flat)) << "seed " << seed;
  }
}

TEST(RingContact, TouchingRingsHaveTheAreaOfTheirFilledSet) {
  const std::size_t seeds = repetitions(4000);
  std::size_t simplyBounded = 0;
  for (std::uint64_t seed = 0; seed < seeds; ++seed) {
    shapes::Random random(seed);
    Feature feature(1 + random.below(2));
    for (qcRings& part : feature) {
      part.outline = shapes::gridPoints(random, 3 + random.below(4), 6);
      if (random.chance(0.4)) part.holes.push_back(shapes::gridPoints(random, 3, 6));
    }
    const qcRingContact contact = qf_RingContact(feature);
    if (contact != simple && contact != touches) continue;
    ++simplyBounded;
    EXPECT_NEAR(qf_FilledMoments(feature).area(),
                plain::filledArea(features::plainOf(feature), plain::Rule::nonZero), 1e-12)
        << "seed " << seed;
  }
  EXPECT_GT(simplyBounded, seeds / 10);
}

TEST(FilledMoments, AreTheSameForEveryContactAndThoseOfTheFilledSet) {
  for (const Case& known : cases()) {
    const double area = plain::filledArea(features::plainOf(known.feature), plain::Rule::nonZero);
    EXPECT_NEAR(qf_FilledMoments(known.feature).area(), area, 1e-12) << known.name;
  }
}

TEST(FilledArea, IsThatOfTheMomentsToTheLastBit) {
  for (const Case& known : cases()) {
    EXPECT_EQ(qf_FilledArea(known.feature, known.contact), qf_FilledMoments(known.feature).area())
        << known.name;
  }
  for (std::uint64_t seed = 0; seed < repetitions(500); ++seed) {
    shapes::Random random(seed);
    const Feature feature{{shapes::cloud(random, 5 + random.below(5)), {}}};
    EXPECT_EQ(qf_FilledArea(feature, qf_RingContact(feature)), qf_FilledMoments(feature).area())
        << seed;
  }
}

TEST(FilledArea, KeepsWhatProductsOfCoordinatesHaveBeyondADouble) {
  const double large = 0x1p30;
  const Feature sliver{{{{0, 0}, {large + 1.0, large + 3.0}, {large + 3.0, large + 5.0}}, {}}};
  EXPECT_EQ(qf_FilledArea(sliver, qcRingContact::eSimple), 2.0);
}

TEST(FilledMoments, OfTheSmallestFeaturesHaveACentre) {
  Points tiny = square;
  for (qcVector<2>& p : tiny) p = p * 0x1p-1070;
  EXPECT_EQ(qf_FilledMoments({{tiny, {}}}).centerOfMass(), qcVector<2>(5, 5) * 0x1p-1070);
}

TEST(FilledMoments, OfASquareAreKnown) {
  const qc_InertiaData moments = qf_FilledMoments({{square, {}}});
  EXPECT_EQ(moments.area(), 100.0);
  EXPECT_EQ(moments.centerOfMass(), qcVector<2>(5, 5));
  EXPECT_EQ(moments.inertiaMatrix(), qcMatrix<2>(2500.0 / 3.0, 0.0, 0.0, 2500.0 / 3.0));
}

TEST(FilledMoments, OfNothingAreTheRecordOfNothing) {
  for (const Feature& feature : {Feature{}, Feature{{{{1, 1}}, {}}},
                                 Feature{{{{0, 0}, {5, 0}}, {}}}, Feature{{square, {square}}}}) {
    EXPECT_EQ(qf_FilledMoments(feature).area(), 0.0);
    EXPECT_EQ(qf_FilledMoments(feature).centerOfMass(), qcVector<2>());
  }
}

/// A simple outline with integer coordinates and very many vertices, as from a camera, shifted by
/// integers.
Points skyline(std::uint64_t seed, std::size_t n, const qcVector<2>& shift) {
  shapes::Random random(seed);
  Points ring = shapes::skyline(random, n);
  for (qcVector<2>& p : ring) p = p + shift;
  return ring;
}

TEST(FilledMoments, AreThoseOfExactArithmeticFarFromTheOriginAndForManyVertices) {
  for (const double far : {0.0, 1e6, 1e9}) {
    for (const std::size_t n : {8U, 100U, 10000U}) {
      const Points near = skyline(n, n, {0, 0});
      const plain::IntegerMoments exact(near);
      const auto area = static_cast<long double>(exact.area2) / 2.0L;
      const auto x = static_cast<long double>(exact.x6) / static_cast<long double>(3 * exact.area2);
      const auto y = static_cast<long double>(exact.y6) / static_cast<long double>(3 * exact.area2);
      const auto xx = static_cast<long double>(exact.xx12) / 12.0L - area * x * x;
      const auto xy = static_cast<long double>(exact.xy24) / 24.0L - area * x * y;
      double width = 0.0;
      double height = 0.0;
      for (const qcVector<2>& p : near) {
        width = std::max(width, std::abs(p.x() - near[0].x()));
        height = std::max(height, std::abs(p.y() - near[0].y()));
      }
      const double boxArea = width * height;
      const double extent = std::max(width, height);
      const double sign = area < 0.0L ? -1.0 : 1.0;

      const qc_InertiaData moments = qf_FilledMoments({{skyline(n, n, {far, -far}), {}}});
      EXPECT_NEAR(moments.area(), sign * static_cast<double>(area), 1e-12 * boxArea);
      const double centerError =
          1e-12 * extent * boxArea / moments.area() + std::nextafter(far, INFINITY) - far;
      EXPECT_NEAR(moments.centerOfMass().x(),
                  static_cast<double>(static_cast<long double>(far) + x), centerError);
      EXPECT_NEAR(moments.centerOfMass().y(),
                  static_cast<double>(y - static_cast<long double>(far)), centerError);
      EXPECT_NEAR(moments.inertiaMatrix().element(0, 0), sign * static_cast<double>(xx),
                  1e-12 * boxArea * extent * extent);
      EXPECT_NEAR(moments.inertiaMatrix().element(0, 1), sign * static_cast<double>(xy),
                  1e-12 * boxArea * extent * extent);
    }
  }
}

TEST(FilledMoments, ScaleWithTheFeature) {
  const Points tee{{0, 0}, {3, 0}, {3, 5}, {6, 5}, {6, 7}, {-3, 7}, {-3, 5}, {0, 5}};
  const qc_InertiaData whole = qf_FilledMoments({{tee, {}}});
  for (const double scale : {0x1p-200, 0x1p-30, 0x1p30, 0x1p200}) {
    Points scaled = tee;
    for (qcVector<2>& p : scaled) p = p * scale;
    const qc_InertiaData moments = qf_FilledMoments({{scaled, {}}});
    EXPECT_EQ(moments.area(), whole.area() * scale * scale);
    EXPECT_EQ(moments.centerOfMass(), whole.centerOfMass() * scale);
    EXPECT_EQ(moments.inertiaMatrix().element(1, 1),
              whole.inertiaMatrix().element(1, 1) * scale * scale * scale * scale);
  }
}

/// Vertices in order of direction around the origin, 10 to 40 away.
Points star(shapes::Random& random, std::size_t n) {
  Points ring = shapes::regularPolygon(n, 1.0, {0, 0});
  for (qcVector<2>& p : ring) p = p * random.uniform(10.0, 40.0);
  return ring;
}

/// The same with a triangle beside it, so that the proof for single rings does not apply.
qcRingContact contactBySweep(const Points& ring) {
  return qf_RingContact(
      {{ring, {}}, {{{-1e10, -1e10}, {-1e10, -1e10 + 1.0}, {-1e10 + 1.0, -1e10}}, {}}});
}

TEST(RingContact, OfSingleRingsIsThatOfTheSweep) {
  const std::size_t seeds = repetitions(6000);
  std::size_t found = 0;
  for (std::uint64_t seed = 0; seed < seeds; ++seed) {
    shapes::Random random(seed);
    const std::size_t kind = random.below(7);
    const std::size_t n = 4 + random.below(kind < 2 ? 5 : 40);
    Points ring;
    switch (kind) {
      case 0:
        ring = shapes::gridPoints(random, n, 4);
        break;
      case 1:
        ring = shapes::cloud(random, n);
        break;
      case 2:
        ring = shapes::gridWalk(random, n);
        break;
      case 3:
        ring = shapes::skyline(random, n);
        break;
      case 4:
        ring = shapes::closedWalk(random, n);
        break;
      case 5:
        ring = shapes::comb(10 + n, seed + 1);
        break;
      default:
        ring = star(random, n);
        break;
    }
    if (random.chance(0.2)) shapes::repeatVertices(random, ring, ring.size() + 5);
    if (random.chance(0.2)) shapes::addVerticesOnEdges(random, ring, ring.size() + 3);
    const qcRingContact contact = qf_RingContact({{ring, {}}});
    ASSERT_EQ(contact, contactBySweep(ring)) << seed;
    ASSERT_EQ(contact == qcRingContact::eSimple, simplering::isSimple(ring)) << seed;
    found += contact == qcRingContact::eSimple ? 1U : 0U;
  }
  EXPECT_GT(found, seeds / 3);
}

TEST(FilledMoments, HaveTheSameAreaAndCentreWithoutSecondMoments) {
  for (std::size_t n = 3; n < 60; ++n) {
    const Points star = shapes::smoothStar(n, n);
    const Feature feature{{star, {features::box(630, 470, 650, 490)}}};
    const cntr::sets::RingList rings(feature);
    const cntr::sets::Frame frame(rings.rings());
    const auto moments = cntr::sets::momentsIn(frame, rings);
    const auto centroid = cntr::sets::areaAndCentreIn(frame, rings);
    ASSERT_TRUE(moments && centroid);
    EXPECT_EQ(centroid->area, moments->area());
    EXPECT_EQ(centroid->centre, moments->centerOfMass());
    EXPECT_EQ(cntr::sets::areaIn(frame, rings), moments->area());
  }
  const Feature flat{{{{0, 0}, {1, 1}, {2, 2}}, {}}};
  const cntr::sets::RingList rings(flat);
  const cntr::sets::Frame frame(rings.rings());
  EXPECT_FALSE(cntr::sets::momentsIn(frame, rings));
  EXPECT_FALSE(cntr::sets::areaAndCentreIn(frame, rings));
  EXPECT_EQ(cntr::sets::areaIn(frame, rings), 0.0);
}

}  // namespace
