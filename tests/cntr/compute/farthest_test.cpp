// SPDX-License-Identifier: MIT
//
// The two vertices farthest apart, by scan and by index.

#include <cntr/compute/farthest.h>

#include <cmath>
#include <tuple>

#include <testing/twin/repetitions.h>

#include "subject.h"

namespace {

using cntr::compute::farthestPair;
using cntr::compute::VertexPair;
using subject::forEachShape;
using subject::Points;
using subject::Subject;

using Pair = std::tuple<std::size_t, std::size_t, double>;
/// No pair: different from any pair at distance 0.
constexpr Pair noPair{0, 0, -1.0};

Pair answerOf(const std::optional<VertexPair>& pair) {
  return pair ? Pair(pair->first, pair->second, pair->distance) : noPair;
}

/// The answer of the scan, which must be that of the index as well.
Pair farthest(const Subject& s) {
  const Pair scanned = answerOf(farthestPair(s.path(), nullptr));
  EXPECT_EQ(answerOf(farthestPair(s.path(), &s.index())), scanned) << "by index";
  return scanned;
}

Pair farthest(const Points& points) { return farthest(Subject(points, true)); }

/// The definition: every pair in turn, the first one with the largest distance.
Pair farthestByDefinition(const Points& points) {
  Pair best{0, 0, 0.0};
  for (std::size_t i = 0; i < points.size(); ++i) {
    for (std::size_t j = i + 1; j < points.size(); ++j) {
      const double distance = plain::distance(points[i], points[j]);
      if (distance > std::get<2>(best)) best = {i, j, distance};
    }
  }
  return std::get<2>(best) > 0.0 ? best : noPair;
}

TEST(FarthestPairTest, IsThePairWithTheLargestDistance) {
  EXPECT_EQ(farthest(Points{{0, 0}, {1, 0}, {4, 3}}), Pair(0, 2, 5.0));
  EXPECT_EQ(farthest(Points{{1, 1}, {0, 0}, {2, 2}, {-1, -1}, {6, 8}}),
            Pair(3, 4, std::sqrt(130.0)));
}

TEST(FarthestPairTest, IsTheFirstOneOnTies) {
  EXPECT_EQ(farthest(Points{{0, 0}, {4, 0}, {4, 3}, {0, 3}}), Pair(0, 2, 5.0));
  EXPECT_EQ(farthest(Points{{2, 0}, {0, 1}, {4, 1}, {2, 0}, {4, 1}, {0, 1}}), Pair(1, 2, 4.0));
}

TEST(FarthestPairTest, IsTheFirstOneOfThoseWhoseDistancesAreRoundedToOneNumber) {
  // 2^40 and 2^40 + 2^-12, whose roots are both 2^20 in double precision.
  const double m = 0x1p20;
  const double slight = 0x1p-6;
  EXPECT_EQ(farthest(Points{{0, 0}, {m, 0}, {m / 2, -m / 2}, {m / 2 + slight, m / 2}}),
            Pair(0, 1, m))
      << "pairs of different vertices";
  EXPECT_EQ(farthest(Points{{0, 0}, {m, 0}, {m, slight}}), Pair(0, 1, m)) << "pairs of one vertex";
}

TEST(FarthestPairTest, IsNothingWhereNoDistanceIsAboveZero) {
  EXPECT_FALSE(farthestPair({}, nullptr).has_value());
  EXPECT_EQ(farthest(Points{{5, 5}}), noPair);
  EXPECT_EQ(farthest(Points(70, {5, 5})), noPair);
  EXPECT_EQ(farthest(Points{{notANumber, 0}, {0, notANumber}, {1, notANumber}}), noPair);
}

TEST(FarthestPairTest, PassesOverNanAndTakesInfiniteDistances) {
  EXPECT_EQ(farthest(Points{{notANumber, 0}, {0, 0}, {notANumber, 9}, {3, 4}}), Pair(1, 3, 5.0));
  EXPECT_EQ(farthest(Points{{0, 0}, {infinity, 0}, {1, 1}}), Pair(0, 1, infinity));
  // Infinity minus infinity is NaN, so there is no distance between these two.
  EXPECT_EQ(farthest(Points{{infinity, 0}, {infinity, 1}}), noPair);
}

TEST(FarthestPairTest, OfManyVerticesWithANanIsThatOfTheOthers) {
  Points points = shapes::regularPolygon(100, 10, {0, 0});
  points[3] = {notANumber, 1};
  EXPECT_EQ(farthest(points), farthestByDefinition(points));
}

TEST(FarthestPairTest, IsThatOfTheDefinition) {
  forEachShape(repetitions(400), shapes::any, 2, 150, [](const Subject& s, shapes::Random&) {
    EXPECT_EQ(farthest(s), farthestByDefinition(s.points()));
  });
}

TEST(FarthestPairTest, OfManyTiesIsTheFirst) {
  for (std::uint64_t seed = 1; seed <= repetitions(100); ++seed) {
    shapes::Random random(seed);
    const Points points = shapes::gridPoints(random, 64 + random.below(100), 4);
    EXPECT_EQ(farthest(points), farthestByDefinition(points)) << seed;
  }
}

}  // namespace
