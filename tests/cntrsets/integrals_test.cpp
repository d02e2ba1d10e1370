// SPDX-License-Identifier: MIT
//
// Integrals over rings against exact ones in whole numbers.

#include <cntrsets/integrals.h>

#include <cmath>
#include <span>
#include <vector>

#include <gtest/gtest.h>
#include <testing/plain/integermoments.h>
#include <testing/shapes/shapes.h>

namespace {

using cntr::plane::Twofold;
using cntr::sets::doubledAreaOf;
using cntr::sets::firstIntegralsOf;
using cntr::sets::Frame;
using cntr::sets::Integrals;
using cntr::sets::integralsOf;
using cntr::sets::integralsOnAnyProcessor;
using plain::IntegerMoments;
using shapes::Points;

Frame frameOf(const Points& ring) { return Frame({std::span<const qcVector<2>>(ring)}); }

/// A ring of whole numbers below 2^20 around the origin.
Points wholeRing(shapes::Random& random, std::size_t n) {
  Points ring = shapes::gridPoints(random, n, std::size_t{1} << 20);
  for (qcVector<2>& p : ring) p = p - qcVector<2>(500000.0, 400000.0);
  return ring;
}

/// The sum of both parts as a whole number.
plain::Wide wholeOf(const Frame& frame, const Twofold& value, int power) {
  return static_cast<plain::Wide>(frame.restored(value.high, power)) +
         static_cast<plain::Wide>(frame.restored(value.low, power));
}

bool areSame(const Twofold& a, const Twofold& b) { return a.high == b.high && a.low == b.low; }

bool areSame(const Integrals& a, const Integrals& b) {
  return areSame(a.area2, b.area2) && areSame(a.x6, b.x6) && areSame(a.y6, b.y6) &&
         areSame(a.xx12, b.xx12) && areSame(a.xy24, b.xy24) && areSame(a.yy12, b.yy12);
}

TEST(IntegralsTest, OfWholeNumbersAreExactForEveryNumberOfVertices) {
  for (std::size_t n = 1; n < 200; ++n) {
    shapes::Random random(n);
    const Points ring = wholeRing(random, n);
    const Frame frame = frameOf(ring);
    const Integrals integrals = integralsOf(ring, frame);
    const IntegerMoments exact(ring);
    ASSERT_TRUE(wholeOf(frame, integrals.area2, 2) == exact.area2) << n;
    ASSERT_TRUE(wholeOf(frame, integrals.x6, 3) == exact.x6) << n;
    ASSERT_TRUE(wholeOf(frame, integrals.y6, 3) == exact.y6) << n;
    ASSERT_TRUE(wholeOf(frame, integrals.xx12, 4) == exact.xx12) << n;
    ASSERT_TRUE(wholeOf(frame, integrals.xy24, 4) == exact.xy24) << n;
    ASSERT_TRUE(wholeOf(frame, integrals.yy12, 4) == exact.yy12) << n;
    ASSERT_TRUE(wholeOf(frame, doubledAreaOf(ring, frame), 2) == exact.area2) << n;
  }
}

TEST(IntegralsTest, AreTheSameBitsOnEveryProcessor) {
  for (std::size_t n = 1; n < 400; ++n) {
    for (const Points& ring : {shapes::spikyStar(n, n), shapes::smoothStar(n, n)}) {
      const Frame frame = frameOf(ring);
      const Integrals integrals = integralsOf(ring, frame);
      ASSERT_TRUE(areSame(integrals, integralsOnAnyProcessor(ring, frame))) << n;
      ASSERT_TRUE(areSame(integrals.area2, doubledAreaOf(ring, frame))) << n;
      const Integrals first = firstIntegralsOf(ring, frame);
      ASSERT_TRUE(areSame(first.area2, integrals.area2)) << n;
      ASSERT_TRUE(areSame(first.x6, integrals.x6) && areSame(first.y6, integrals.y6)) << n;
    }
  }
}

TEST(IntegralsTest, OfNothingAreZero) {
  const Points none;
  EXPECT_TRUE(areSame(integralsOf(none, frameOf(none)), Integrals()));
  EXPECT_TRUE(areSame(doubledAreaOf(none, frameOf(none)), Twofold()));
}

TEST(IntegralsTest, AddUpTimesAFactor) {
  const Points ring{{0, 0}, {4, 0}, {4, 4}, {0, 4}};
  const Frame frame = frameOf(ring);
  Integrals sum = integralsOf(ring, frame);
  sum.add(integralsOf(ring, frame), Twofold(-1.0));
  EXPECT_TRUE(areSame(sum, Integrals()));
}

}  // namespace
