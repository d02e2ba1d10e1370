// SPDX-License-Identifier: MIT
//
// Joins against a loop over all pairs, whatever the number of threads.

#include <cntrtable/joining.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include <cntrsets/inside.h>
#include <testing/shapes/shapes.h>

#include "refused.h"
#include "rings.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Points movedTo(Points ring, double x, double y) {
  for (qcVector<2>& p : ring) p = p + qcVector<2>(x, y);
  return ring;
}

bool isFinite(const std::vector<qcRings>& feature) {
  const auto isFiniteRing = [](const Points& ring) {
    return std::all_of(ring.begin(), ring.end(), [](const qcVector<2>& p) {
      return std::isfinite(p.x()) && std::isfinite(p.y());
    });
  };
  return std::all_of(feature.begin(), feature.end(), [&](const qcRings& part) {
    return isFiniteRing(part.outline) &&
           std::all_of(part.holes.begin(), part.holes.end(), isFiniteRing);
  });
}

qcInsidePairs plainJoin(const qcOutlines& outlines, const std::vector<double>& points) {
  qcInsidePairs pairs;
  for (std::size_t i = 0; i < outlines.size(); ++i) {
    if (outlines.kind(i) != qcOutlineKind::eAreas || !isFinite(outlines.feature(i))) continue;
    for (std::size_t k = 0; k < points.size(); k += 2) {
      const Points alone{{points[k], points[k + 1]}};
      if (!qf_Inside(outlines.feature(i), alone).front()) continue;
      pairs.outlines.push_back(static_cast<std::int64_t>(i));
      pairs.points.push_back(static_cast<std::int64_t>(k / 2));
    }
  }
  return pairs;
}

/// Overlapping areas of all kinds, lines, and features that are neither.
qcOutlines anyOutlines(shapes::Random& random, std::size_t count) {
  qcOutlinesBuilder builder;
  for (std::size_t i = 0; i < count; ++i) {
    const double x = random.uniform(-20.0, 20.0);
    const double y = random.uniform(-20.0, 20.0);
    switch (random.below(6)) {
      case 0:
        builder.addAreas({{movedTo(shapes::gridWalk(random, 12), x, y), {}}});
        break;
      case 1:
        builder.addAreas({{movedTo(square, x, y), {movedTo({{1, 1}, {4, 1}, {1, 4}}, x, y)}},
                          {movedTo(square, -y, x), {}}});
        break;
      case 2:
        builder.addLines({movedTo(square, x, y)});
        break;
      case 3:
        builder.failFeature("null");
        break;
      case 4: {
        const double spoiled = random.chance(0.3) ? std::nan("") : 1.0;
        builder.addAreas({{movedTo(square, x, y), {{{1, 1}, {2, spoiled}, {2, 2}}}}});
        break;
      }
      default:
        builder.addAreas({{movedTo(shapes::gridPoints(random, 8, 12), x, y), {}}});
    }
  }
  return builder.finish();
}

std::vector<double> anyPoints(shapes::Random& random, std::size_t count) {
  std::vector<double> coordinates;
  for (std::size_t i = 0; i < 2 * count; ++i)
    coordinates.push_back(random.chance(0.01) ? std::numeric_limits<double>::infinity()
                                              : random.uniform(-25.0, 35.0));
  return coordinates;
}

}  // namespace

TEST(Joining, GivesThePairsOfALoopOverAllOutlinesAndPoints) {
  std::size_t pairs = 0;
  for (std::uint64_t seed = 0; seed < 200; ++seed) {
    shapes::Random random(seed);
    const qcOutlines outlines = anyOutlines(random, 1 + random.below(12));
    const std::vector<double> points = anyPoints(random, random.below(200));
    const qcInsidePairs expected = plainJoin(outlines, points);
    const qcInsidePairs joined = qf_InsideJoin(outlines, points, 1);
    ASSERT_EQ(joined.outlines, expected.outlines) << "seed " << seed;
    ASSERT_EQ(joined.points, expected.points) << "seed " << seed;
    pairs += expected.points.size();
  }
  EXPECT_GT(pairs, 1000U);
}

TEST(Joining, IsTheSameWhateverTheNumberOfThreads) {
  shapes::Random random(7);
  const qcOutlines outlines = anyOutlines(random, 1000);
  const std::vector<double> points = anyPoints(random, 500);
  const qcInsidePairs one = qf_InsideJoin(outlines, points, 1);
  EXPECT_GT(one.points.size(), 1000U);
  for (const unsigned threads : {0U, 2U, 5U}) {
    const qcInsidePairs several = qf_InsideJoin(outlines, points, threads);
    EXPECT_EQ(several.outlines, one.outlines) << threads;
    EXPECT_EQ(several.points, one.points) << threads;
  }
}

TEST(Joining, SortsByOutlineThenByPoint) {
  qcOutlinesBuilder builder;
  builder.addAreas({{square, {}}});
  builder.addAreas({{movedTo(square, 5, 0), {}}});
  const std::vector<double> points{14, 5, 7, 5, 100, 5, 2, 5, 8, 5};
  const qcInsidePairs pairs = qf_InsideJoin(builder.finish(), points);
  EXPECT_THAT(pairs.outlines, ElementsAre(0, 0, 0, 1, 1, 1));
  EXPECT_THAT(pairs.points, ElementsAre(1, 3, 4, 0, 1, 4));
}

TEST(Joining, NumbersTheOutlinesOfASliceFromZero) {
  qcOutlinesBuilder builder;
  builder.addAreas({{movedTo(square, 50, 50), {}}});
  builder.addAreas({{square, {}}});
  const std::vector<double> points{5, 5};
  EXPECT_THAT(qf_InsideJoin(builder.finish().slice(1, 1), points).outlines, ElementsAre(0));
}

TEST(Joining, HasNoPairsWithoutOutlinesOrPoints) {
  qcOutlinesBuilder builder;
  builder.addAreas({{square, {}}});
  const std::vector<double> points{5, 5};
  EXPECT_THAT(qf_InsideJoin(qcOutlines(), points).points, IsEmpty());
  EXPECT_THAT(qf_InsideJoin(builder.finish(), {}).points, IsEmpty());
}

TEST(Joining, RefusesCoordinatesThatAreNoPairs) {
  const std::vector<double> coordinates{1, 2, 3};
  EXPECT_EQ(refusalOf([&] { qf_InsideJoin(qcOutlines(), coordinates); }),
            "3 coordinates are no pairs of x and y");
}
