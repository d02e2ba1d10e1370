// SPDX-License-Identifier: MIT
//
// Single rings: their quick sums are as accurate as they claim, and what is made of them has the
// same bits as by the slower ways.

#include <cntrsets/lonering.h>

#include <cmath>
#include <limits>
#include <vector>

#include <cntrsets/integrals.h>
#include <cntrsets/operations/filledrings.h>
#include <gtest/gtest.h>
#include <testing/shapes/shapes.h>
#include <tests/cntrsets/features.h>

namespace {

using cntr::plane::Twofold;
using cntr::sets::Frame;
using cntr::sets::Integrals;
using cntr::sets::LoneMass;
using cntr::sets::LoneRing;
using cntr::sets::LoneSums;
using cntr::sets::RingList;
using features::reversed;
using Point = qcVector<2>;
using shapes::Points;

/// Expects that the ring can be read.
LoneRing read(const Points& ring) {
  LoneRing lone;
  EXPECT_TRUE(lone.read(std::span<const Point>(ring)));
  return lone;
}

double distanceOf(const Twofold& a, const Twofold& b) { return std::abs((a - b).high); }

void expectWithinErrors(const LoneSums& sums, const Integrals& exact) {
  EXPECT_LE(distanceOf(sums.area2, exact.area2), sums.errorOfArea);
  EXPECT_LE(distanceOf(sums.x6, exact.x6), sums.errorOfFirst);
  EXPECT_LE(distanceOf(sums.y6, exact.y6), sums.errorOfFirst);
  EXPECT_LE(distanceOf(sums.xx12, exact.xx12), sums.errorOfSecond);
  EXPECT_LE(distanceOf(sums.xy24, exact.xy24), sums.errorOfSecond);
  EXPECT_LE(distanceOf(sums.yy12, exact.yy12), sums.errorOfSecond);
}

/// With all digits, for a ring whose vertices are not rounded on the way.
Integrals integralsAbout(const Point& origin, const Points& ring, const Frame& frame) {
  const Frame asItIs{cntr::plane::Box()};
  Points counted;
  for (const Point& p : ring) counted.push_back(frame.local(p) - origin);
  return cntr::sets::integralsOf(counted, asItIs);
}

/// With 46 bits a coordinate up to 2 can be measured from another origin without rounding.
double shortened(double x) { return std::floor(x * 0x1p45) * 0x1p-45; }

TEST(LoneRing, SumsUpWithinItsErrorsWhateverTheRingDoes) {
  for (std::size_t n = LoneRing::fewest; n <= LoneRing::most; n += n < 140 ? 1 : 221) {
    shapes::Random random(n);
    Points ring = shapes::smoothStar(n, n);
    for (Point& p : ring) {
      const double x = n % 2 == 0 ? random.uniform(0.0, 1.999) : p.x() * 1e-3;
      const double y = n % 2 == 0 ? random.uniform(0.0, 1.999) : p.y() * 1e-3;
      p = {shortened(x), shortened(y)};
    }
    LoneRing lone = read(ring);
    const Frame frame(lone.box());
    const LoneSums sums = lone.sums(frame, true);
    expectWithinErrors(sums, integralsAbout(sums.origin, ring, frame));
    ASSERT_FALSE(HasFailure()) << n;
    EXPECT_LE(sums.errorOfSecond, 0x1p-56) << "of little use";

    const LoneSums first = lone.sums(frame, false);
    EXPECT_EQ(distanceOf(first.area2, sums.area2), 0.0);
    EXPECT_EQ(distanceOf(first.x6, sums.x6) + distanceOf(first.y6, sums.y6), 0.0);
    EXPECT_EQ(first.xx12.high, 0.0);
  }
}

TEST(LoneRing, SumsUpWithinItsErrorsWhereNoTermTakesAwayFromOthers) {
  // A side of the box again and again, each time back through the middle: the sums of a lane have
  // more digits than a double holds unless they are put away in time.
  for (const bool isUpright : {true, false}) {
    shapes::Random random(1);
    Points ring;
    for (std::size_t i = 0; i + 3 <= LoneRing::most; i += 3) {
      for (const Point& corner : {Point(1.99, 0.0), Point(1.99, 1.99), Point(1.0, 1.0)}) {
        const double x = shortened(corner.x() + random.uniform(0.0, 0.009));
        const double y = shortened(corner.y() + random.uniform(0.0, 0.009));
        ring.push_back(isUpright ? Point(x, y) : Point(y, x));
      }
    }
    ring.back() = {0.0, 0.0};
    LoneRing lone = read(ring);
    const Frame frame(lone.box());
    const LoneSums sums = lone.sums(frame, true);
    expectWithinErrors(sums, integralsAbout(sums.origin, ring, frame));
  }
}

TEST(LoneRing, SumsUpTheDistancesInTheOrderOfItsEdges) {
  for (std::size_t n = 3; n < 200; ++n) {
    const Points ring = shapes::smoothStar(n, n);
    LoneRing lone = read(ring);
    const Frame frame(lone.box());
    double length = 0.0;
    Point from = frame.local(ring.back());
    for (const Point& p : ring) {
      length += from.distance(frame.local(p));
      from = frame.local(p);
    }
    const LoneSums sums = lone.sums(frame, false);
    const Point centre = frame.restored(sums.roughCentre());
    ASSERT_EQ(lone.lengthAround(centre, sums.isCounterclockwise()), length) << n;
  }
}

/// A simple ring, anywhere and of any size; half of them are slanted, others nearly symmetric.
Points someRing(shapes::Random& random, std::uint64_t seed) {
  const std::size_t n = 3 + random.below(seed % 50 == 0 ? 1000 : 80);
  Points ring = seed % 4 == 0   ? shapes::skyline(random, n + 5)
                : seed % 4 == 1 ? shapes::spikyStar(n, seed)
                                : shapes::smoothStar(n, seed);
  const double scale = random.uniform(1e-3, 10.0);
  const double shift = random.chance(0.5) ? 0.0 : random.uniform(-1e6, 1e6);
  const double thin = random.chance(0.1) ? 1e-20 : random.uniform(0.1, 1.0);
  for (Point& p : ring) p = {(p.x() + 0.5 * p.y()) * scale + shift, p.y() * scale * thin - shift};
  return random.chance(0.5) ? reversed(ring) : ring;
}

TEST(LoneRing, HasTheMassThatAllDigitsGive) {
  int answered = 0;
  int answeredWithMoments = 0;
  constexpr std::uint64_t count = 4000;
  for (std::uint64_t seed = 0; seed < count; ++seed) {
    shapes::Random random(seed);
    const Points ring = someRing(random, seed);
    LoneRing lone;
    if (!lone.read(std::span<const Point>(ring))) continue;
    const Frame frame(lone.box());
    const auto expected = cntr::sets::momentsIn(frame, RingList(ring));
    if (const auto mass = massOf(lone.sums(frame, false), frame, false)) {
      ++answered;
      ASSERT_TRUE(expected) << seed;
      ASSERT_EQ(mass->area, expected->area()) << seed;
      ASSERT_EQ(frame.restored(mass->centre), frame.restored(expected->centerOfMass())) << seed;
      ASSERT_FALSE(mass->moments);
    }
    if (const auto mass = massOf(lone.sums(frame, true), frame, true)) {
      ++answeredWithMoments;
      ASSERT_EQ(mass->area, expected->area()) << seed;
      const qcMatrix<2>& moments = mass->moments->inertiaMatrix();
      const qcMatrix<2>& exact = expected->inertiaMatrix();
      ASSERT_EQ(moments.element(0, 0), exact.element(0, 0)) << seed;
      ASSERT_EQ(moments.element(1, 1), exact.element(1, 1)) << seed;
      ASSERT_EQ(moments.element(0, 1), moments.element(1, 0)) << seed;
      ASSERT_NEAR(moments.element(0, 1), exact.element(0, 1), 0x1p-58) << seed;
    }
  }
  EXPECT_GT(answered, 0.85 * count);
  EXPECT_GT(answeredWithMoments, 0.45 * count);
}

TEST(LoneRing, OfAnotherDirectionHasTheSameMass) {
  const Points ring = shapes::smoothStar(50, 3);
  LoneRing there = read(ring);
  LoneRing back = read(reversed(ring));
  const Frame frame(there.box());
  const LoneSums sums = there.sums(frame, false);
  EXPECT_TRUE(sums.isCounterclockwise());
  EXPECT_FALSE(back.sums(frame, false).isCounterclockwise());
  const auto mass = massOf(sums, frame, false);
  const auto other = massOf(back.sums(frame, false), frame, false);
  ASSERT_TRUE(mass && other);
  EXPECT_EQ(mass->area, other->area);
  EXPECT_EQ(frame.restored(mass->centre), frame.restored(other->centre));
}

TEST(LoneRing, RunsAroundAPointThatSeesAllOfItAndIsSimpleThen) {
  int found = 0;
  for (std::uint64_t seed = 0; seed < 4000; ++seed) {
    shapes::Random random(seed);
    const std::size_t n = 3 + random.below(40);
    Points ring;
    switch (seed % 4) {
      case 0:
        ring = shapes::gridPoints(random, n, 5);
        break;
      case 1:
        ring = shapes::smoothStar(n, seed);
        break;
      case 2:
        ring = shapes::regularPolygon(n, 10.0, {3.0, 4.0});
        break;
      default:
        ring = shapes::starPolygon(2 * n + 1, 2, 10.0);
    }
    const bool isWhole = !random.chance(0.3);
    if (!isWhole) shapes::repeatVertices(random, ring, ring.size() + 5);
    if (random.chance(0.5)) ring = reversed(ring);
    LoneRing lone = read(ring);
    const cntr::plane::Box& box = lone.box();
    lone.sums(Frame(box), false);
    const auto runsAround = [&lone](const Point& point, bool isCounterclockwise) {
      return lone.lengthAround(point, isCounterclockwise).has_value();
    };
    const bool isConvex = seed % 4 == 2;
    const Point middle((box.minX + box.maxX) * 0.5, (box.minY + box.maxY) * 0.5);
    const Point centre = isConvex ? Point(3.0, 4.0) : middle;
    const bool there = runsAround(centre, true);
    const bool back = runsAround(centre, false);
    ASSERT_FALSE(there && back) << seed;
    if (!there && !back) {
      EXPECT_FALSE(isConvex && isWhole) << seed;
      continue;
    }
    ++found;
    ASSERT_EQ(qf_RingContact({{ring, {}}}), qcRingContact::eSimple) << seed;
    ASSERT_FALSE(runsAround({box.maxX + 1.0, box.maxY}, there)) << seed;
  }
  EXPECT_GT(found, 1500);
}

TEST(LoneRing, HasTheBoxOfItsVerticesAndGivesThemBack) {
  for (std::size_t n = 3; n < 100; ++n) {
    const Points ring = shapes::smoothStar(n, n);
    std::vector<double> numbers;
    for (const Point& p : ring) {
      numbers.push_back(p.x());
      numbers.push_back(p.y());
    }
    LoneRing lone;
    ASSERT_TRUE(lone.read(std::span<const double>(numbers)));
    EXPECT_EQ(lone.size(), n);
    EXPECT_EQ(lone.vertices(), ring);
    const cntr::plane::Box box = cntr::sets::boxOf({std::span<const Point>(ring)});
    EXPECT_EQ(lone.box().minX, box.minX);
    EXPECT_EQ(lone.box().minY, box.minY);
    EXPECT_EQ(lone.box().maxX, box.maxX);
    EXPECT_EQ(lone.box().maxY, box.maxY);
  }
}

TEST(LoneRing, TakesNoRingThatIsTooShortTooLongOrNotFinite) {
  LoneRing lone;
  EXPECT_FALSE(lone.read(std::span<const Point>(Points(2))));
  EXPECT_TRUE(lone.read(std::span<const Point>(Points(LoneRing::most))));
  EXPECT_FALSE(lone.read(std::span<const Point>(Points(LoneRing::most + 1))));
  for (std::size_t n = 3; n < 20; ++n) {
    for (std::size_t place = 0; place < n; ++place) {
      for (const double bad :
           {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
            -std::numeric_limits<double>::infinity()}) {
        Points ring = shapes::smoothStar(n, n);
        ring[place] = {bad, 1.0};
        EXPECT_FALSE(lone.read(std::span<const Point>(ring)));
        ring[place] = {1.0, bad};
        EXPECT_FALSE(lone.read(std::span<const Point>(ring)));
      }
    }
  }
}

TEST(LoneRing, OfNoAreaHasNoMass) {
  LoneRing lone = read({{0.0, 0.0}, {1.0, 1.0}, {2.0, 2.0}});
  const Frame frame(lone.box());
  EXPECT_FALSE(massOf(lone.sums(frame, false), frame, false));
}

}  // namespace
