// SPDX-License-Identifier: MIT
//
// Points in features against the literal definition, point by point.

#include <cntrsets/inside.h>

#include <cmath>
#include <memory>

#include <cntr/contourdefs.h>
#include <cntrsets/filled.h>
#include <cntrsets/operations/insideways.h>
#include <testing/heap/fail_each.h>
#include <testing/plain/measures.h>
#include <testing/shapes/numbers.h>
#include <testing/twin/repetitions.h>
#include <tests/cntrsets/operations/libraryholds.h>

namespace {

using features::box;
using features::Feature;
using features::libraryHolds;
using features::Points;
using features::square;

bool isInside(const Feature& feature, const qcVector<2>& p) {
  return qf_Inside(feature, std::vector{p}).front();
}

bool isFarFromEveryEdge(const Feature& feature, const qcVector<2>& p) {
  const std::vector<Points> rings = features::ringsOf(feature);
  return std::all_of(rings.begin(), rings.end(), [&p](const Points& ring) {
    return plain::distToPoint(plain::Contour{ring, true}, p, false) > 1e-6;
  });
}

/// Whether the winding numbers of all rings add up to an odd number.
bool hasOddParity(const Feature& feature, const qcVector<2>& p) {
  int sum = 0;
  for (const Points& ring : features::ringsOf(feature)) sum += plain::windingNumber(ring, p);
  return sum % 2 != 0;
}

bool isBoundedSimply(const Feature& feature) {
  const qcRingContact contact = qf_RingContact(feature);
  return contact == qcRingContact::eSimple || contact == qcRingContact::eTouches;
}

bool plainlyInside(const Feature& feature, const qcVector<2>& p) {
  if (!isBoundedSimply(feature))
    return plain::fills(features::plainOf(feature), plain::Rule::nonZero, p);
  if (!libraryHolds(feature, p)) return false;
  return hasOddParity(feature, p) || !isFarFromEveryEdge(feature, p);
}

/// A diamond with a vertex in the middle of each side, cut open to its centre, where its list
/// begins: from a corner of its box the library's ray ends within it.
Points cutDiamond(double size) {
  const double end = size - 1.0;
  return {{0, 0},
          {end, 1},
          {0.5 * end, 0.5 * (size + 1.0)},
          {0, size},
          {-0.5 * size, 0.5 * size},
          {-size, 0},
          {-0.5 * size, -0.5 * size},
          {0, -size},
          {0.5 * end, -0.5 * (size + 1.0)},
          {end, -1}};
}

/// A feature with small integer coordinates.
Feature anyFeature(shapes::Random& random) {
  const auto ring = [&random]() -> Points {
    switch (random.below(5)) {
      case 0:
        return cutDiamond(static_cast<double>(8 + random.below(32)));
      case 1:
      case 2:
        return shapes::gridPoints(random, 3 + random.below(6), 9);
      default:
        return shapes::gridWalk(random, 4 + random.below(40));
    }
  };
  Feature feature(1 + random.below(2));
  for (qcRings& part : feature) {
    part.outline = ring();
    if (random.chance(0.3)) part.holes.push_back(shapes::gridPoints(random, 3, 9));
  }
  return feature;
}

/// Points at eighths, so that few lie on edges and the arithmetic of the definition is exact.
Points anyPoints(shapes::Random& random, const Feature& feature) {
  qcVector<2> low = feature[0].outline[0];
  qcVector<2> high = low;
  for (const Points& ring : features::ringsOf(feature)) {
    for (const qcVector<2>& p : ring) {
      low = {std::min(low.x(), p.x()), std::min(low.y(), p.y())};
      high = {std::max(high.x(), p.x()), std::max(high.y(), p.y())};
    }
  }
  const auto between = [&random](double from, double to) {
    const auto steps = static_cast<std::size_t>(8.0 * (to - from)) + 17;
    return from - 1.0 + static_cast<double>(random.below(steps)) / 8.0;
  };
  Points points;
  for (int i = 0; i < 24; ++i)
    points.emplace_back(between(low.x(), high.x()), between(low.y(), high.y()));
  // The corners of the box, where the library's ray is too short, and what lies next to vertices.
  points.emplace_back(low.x() + 0.125, low.y() + 0.125);
  points.emplace_back(high.x() - 0.125, low.y() + 0.125);
  points.emplace_back(low.x() + 0.125, high.y() - 0.125);
  points.emplace_back(high.x() - 0.125, high.y() - 0.125);
  const qcVector<2> vertex = feature[0].outline[0];
  points.push_back(vertex + qcVector<2>(0x1p-22, 0x1p-23));
  points.push_back(vertex - qcVector<2>(0x1p-18, 0.0));
  return points;
}

bool liesOnAnEdge(const Feature& feature, const qcVector<2>& p) {
  return plain::distanceToRings(features::plainOf(feature), p) < 1e-9;
}

}  // namespace

TEST(Inside, IsTheAnswerOfTheDefinitionForEveryKindOfFeature) {
  const std::size_t seeds = repetitions(3000);
  std::size_t corrected = 0;
  std::size_t bySets = 0;
  std::size_t inside = 0;
  for (std::uint64_t seed = 0; seed < seeds; ++seed) {
    shapes::Random random(seed);
    const Feature feature = anyFeature(random);
    const bool isSimple = isBoundedSimply(feature);
    const Points points = anyPoints(random, feature);
    const std::vector<bool> answers = qf_Inside(feature, points);
    ASSERT_EQ(answers.size(), points.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
      // On an edge of rings that cross, the winding number means nothing.
      if (!isSimple && liesOnAnEdge(feature, points[i])) continue;
      ASSERT_EQ(answers[i], plainlyInside(feature, points[i]))
          << "seed " << seed << " at " << points[i].x() << ", " << points[i].y();
      ASSERT_EQ(answers[i], isInside(feature, points[i])) << "asked alone; seed " << seed;
      corrected += isSimple && libraryHolds(feature, points[i]) && !answers[i] ? 1U : 0U;
      bySets += isSimple ? 0U : 1U;
      inside += answers[i] ? 1U : 0U;
    }
  }
  EXPECT_GT(corrected, seeds / 150);
  EXPECT_GT(bySets, 10 * seeds / 3);
  EXPECT_GT(inside, 10 * seeds / 3);
}

TEST(Inside, SaysNoNearACornerOfTheBoxWhereTheLibrarysRayIsTooShort) {
  const Points diamond = cutDiamond(50);
  const qcRegion region(diamond, qcContourDefs::eNoIntersectionRepair);
  EXPECT_TRUE(region.inside({49, -50}, true));
  EXPECT_FALSE(isInside({{diamond, {}}}, {49, -50}));
  EXPECT_FALSE(isInside({{square, {}}, {diamond, {}}}, {49, -50})) << "crossed by another part";
  EXPECT_TRUE(isInside({{diamond, {}}}, {24, -24}));
}

TEST(Inside, KeepsTheLibrarysYesNextToVertices) {
  const Feature feature{{{{0, 5}, {5, 0}, {10, 5}, {5, 10}}, {}}};
  EXPECT_TRUE(isInside(feature, {5.0 + 3e-7, 3e-7}));
  EXPECT_TRUE(isInside(feature, {4.9999999, 9.9999999}));
  EXPECT_FALSE(isInside(feature, {5.00001, 0.0})) << "farther than 1e-6";
}

TEST(Inside, HolesMayTouch) {
  const Feature feature{{square, {box(0, 2, 4, 4), box(4, 4, 6, 6)}}};
  EXPECT_FALSE(isInside(feature, {2, 3}));
  EXPECT_FALSE(isInside(feature, {5, 5}));
  EXPECT_TRUE(isInside(feature, {2, 5}));
  EXPECT_FALSE(isInside(feature, {11, 5}));
}

TEST(Inside, OfRingsThatCrossOrOverlapIsTheFilledSet) {
  const Feature bowTie{{features::bowTie, {}}};
  EXPECT_TRUE(isInside(bowTie, {1, 2}));
  EXPECT_TRUE(isInside(bowTie, {3, 2}));
  EXPECT_FALSE(isInside(bowTie, {2, 1}));
  const Feature overlapping{{square, {}}, {box(5, 5, 15, 15), {}}};
  EXPECT_TRUE(isInside(overlapping, {7, 7})) << "in both parts";
  EXPECT_TRUE(isInside(overlapping, {10, 7})) << "on an edge between filled faces";
  EXPECT_TRUE(isInside(overlapping, {7, 5})) << "on an edge between filled faces";
  const Feature partInAHole{{square, {box(1, 1, 9, 9)}}, {box(0, 0, 5, 5), {}}};
  EXPECT_TRUE(isInside(partInAHole, {3, 3}));
  EXPECT_FALSE(isInside(partInAHole, {7, 7}));
}

TEST(Inside, OfScrapsIsNothing) {
  EXPECT_TRUE(qf_Inside({}, {}).empty());
  EXPECT_FALSE(isInside({}, {0, 0}));
  EXPECT_FALSE(isInside({{{{0, 0}, {5, 5}}, {}}}, {2, 2}));
  EXPECT_FALSE(isInside({{{{2, 2}}, {}}}, {2, 2})) << "not even itself";
  EXPECT_TRUE(isInside({{square, {{{1, 1}, {2, 2}}}}}, {1.5, 1.5}));
}

TEST(Inside, APointMayHaveAnyCoordinates) {
  for (const qcVector<2>& p : Points{{std::nan(""), 5}, {5, infinity}, {-infinity, 5}, {1e308, 5}})
    EXPECT_FALSE(isInside({{square, {}}}, p));
}

TEST(Inside, RefusesVerticesThatAreNotFiniteNumbers) {
  try {
    isInside({{square, {{{1, 1}, {2, std::nan("")}, {2, 2}}}}}, {-5, -5});
    FAIL() << "not refused";
  } catch (const qcContourDefs::BadParams& error) {
    EXPECT_EQ(error.message(), L"a coordinate is not a finite number");
  }
}

TEST(Inside, IsTheAnswerOfTheDefinitionHoweverOftenItIsAsked) {
  const std::size_t seeds = repetitions(60);
  std::size_t inside = 0;
  for (std::uint64_t seed = 0; seed < seeds; ++seed) {
    shapes::Random random(seed);
    Feature feature = anyFeature(random);
    feature[0].holes.push_back(cutDiamond(12));
    const bool isSimple = isBoundedSimply(feature);
    const qcInside asked(feature);
    // The first points are asked of the rings, the last ones of the grid.
    for (int round = 0; round < 40; ++round) {
      for (const qcVector<2>& p : anyPoints(random, feature)) {
        if (!isSimple && liesOnAnEdge(feature, p)) continue;
        const bool answer = asked.contains(p);
        ASSERT_EQ(answer, plainlyInside(feature, p))
            << "seed " << seed << ", round " << round << " at " << p.x() << ", " << p.y();
        inside += answer ? 1U : 0U;
      }
    }
  }
  EXPECT_GT(inside, 17 * seeds);
}

TEST(Inside, KeepsTheLibrarysNoBesideAHoleWhoseRayIsTooShort) {
  const Feature feature{{box(-60, -60, 60, 60), {cutDiamond(50)}}};
  const qcInside asked(feature);
  for (int i = 0; i < 500; ++i) {
    ASSERT_FALSE(asked.contains({-49.75, -49.5})) << i;
    ASSERT_TRUE(asked.contains({55, 55})) << i;
    ASSERT_FALSE(asked.contains({0, 30})) << i;
  }
}

TEST(Inside, ManyPointsHaveTheAnswersOfEachAlone) {
  shapes::Random random(3);
  const Feature feature{{shapes::smoothStar(50), {}}, {square, {}}};
  Points points = shapes::pointsInBox(feature[0].outline, 1000);
  points.emplace_back(5, 5);
  const auto answers = std::make_unique<bool[]>(points.size());
  const qcInside asked(feature);
  asked.contains(points, {answers.get(), points.size()});
  for (std::size_t i = 0; i < points.size(); ++i)
    ASSERT_EQ(answers[i], isInside(feature, points[i])) << i;
}

TEST(Inside, NeedsAsManyAnswersAsPoints) {
  const qcInside asked({{square, {}}});
  const Points points{{5, 5}, {6, 6}};
  bool answer = false;
  try {
    asked.contains(points, {&answer, 1});
    FAIL() << "not refused";
  } catch (const qcContourDefs::BadParams& error) {
    EXPECT_EQ(error.message(), L"as many answers as points are needed");
  }
  EXPECT_FALSE(answer);
}

TEST(Inside, IsTakenAlongByMoving) {
  qcInside first({{square, {}}});
  EXPECT_TRUE(first.contains({5, 5}));
  qcInside second = std::move(first);
  EXPECT_TRUE(second.contains({5, 5}));
  second = qcInside({{box(20, 20, 30, 30), {}}});
  EXPECT_FALSE(second.contains({5, 5}));
  EXPECT_TRUE(second.contains({25, 25}));
}

TEST(Inside, ManyPointsOfALongOutlineHaveTheAnswersOfEachAlone) {
  shapes::Random random(5);
  const Feature feature{{shapes::skyline(random, 400), {}}};
  const Points points = [&] {
    Points all;
    for (int i = 0; i < 40; ++i) {
      const Points some = anyPoints(random, feature);
      all.insert(all.end(), some.begin(), some.end());
    }
    return all;
  }();
  const std::vector<bool> answers = qf_Inside(feature, points);
  for (std::size_t i = 0; i < points.size(); ++i)
    EXPECT_EQ(answers[i], isInside(feature, points[i])) << i;
}

// The ways that answers are found.

namespace {

const qcVector<2> centreOfStars(640, 480);

Feature star(std::size_t vertices) { return {{shapes::smoothStar(vertices), {}}}; }

const qc_InsideWays& waysOf(const qcInside& inside) { return qc_InsideWays::of(inside); }

void ask(const qcInside& inside, std::size_t times) {
  for (std::size_t i = 0; i < times; ++i) EXPECT_TRUE(inside.contains(centreOfStars));
}

/// Some points inside and some outside.
void expectRightAnswers(const qcInside& inside, const Feature& feature) {
  for (const qcVector<2>& p : shapes::pointsInBox(feature[0].outline, 6))
    EXPECT_EQ(inside.contains(p), isInside(feature, p));
}

/// For star(100): the numbers of points with which slabs and the grid are made.
constexpr std::size_t forSlabs = 8;
constexpr std::size_t forGrid = 2 * (100 + 32);

}  // namespace

TEST(InsideWays, LeadThroughAllEdgesThenSlabsThenTheGrid) {
  const qcInside inside(star(100));
  ask(inside, forSlabs - 1);
  EXPECT_EQ(waysOf(inside).edges, forSlabs - 1);
  EXPECT_EQ(waysOf(inside).slabs, 0U);
  ask(inside, forGrid - forSlabs + 1);
  EXPECT_EQ(waysOf(inside).edges, forSlabs - 1);
  EXPECT_EQ(waysOf(inside).slabs, forGrid - forSlabs + 1);
  EXPECT_EQ(waysOf(inside).grid, 0U);
  ask(inside, 10);
  EXPECT_EQ(waysOf(inside).slabs, forGrid - forSlabs + 1);
  EXPECT_EQ(waysOf(inside).grid, 10U);
}

TEST(InsideWays, LeadThroughTheGridForMostPointsOfTheBox) {
  const Feature feature = star(100);
  const qcInside inside(feature);
  ask(inside, forGrid);
  for (const qcVector<2>& p : shapes::pointsInBox(feature[0].outline, 1000)) inside.contains(p);
  EXPECT_GT(waysOf(inside).grid, 700U);
  EXPECT_GT(waysOf(inside).slabs, forGrid) << "near edges";
}

TEST(InsideWays, CountNoPointOutsideTheBox) {
  const qcInside inside(star(100));
  for (int i = 0; i < 10; ++i) EXPECT_FALSE(inside.contains({-1e4, 0}));
  EXPECT_EQ(waysOf(inside).edges, 0U);
}

TEST(InsideWays, LeadThroughSlabsWhereThereCanBeNoGrid) {
  Feature feature = star(100);
  for (qcVector<2>& p : feature[0].outline) p = p + qcVector<2>(2e6, 0);
  const qcInside inside(feature);
  for (std::size_t i = 0; i < 2 * forGrid; ++i)
    ASSERT_TRUE(inside.contains(centreOfStars + qcVector<2>(2e6, 0)));
  EXPECT_EQ(waysOf(inside).grid, 0U);
  EXPECT_EQ(waysOf(inside).slabs, 2 * forGrid - forSlabs + 1);
}

TEST(InsideWays, AreLookedForOnce) {
  if (!heap::counts) GTEST_SKIP() << "the heap is not counted here";
  for (const double away : {0.0, 2e6}) {
    Feature feature = star(100);
    for (qcVector<2>& p : feature[0].outline) p = p + qcVector<2>(away, 0);
    const qcInside inside(feature);
    const qcVector<2> vertex = feature[0].outline.front();
    for (std::size_t i = 0; i < forGrid; ++i) inside.contains(vertex);
    const std::size_t before = waysOf(inside).slabs;
    const long blocks = heap::blocksMade();
    inside.contains(vertex);
    EXPECT_EQ(heap::blocksMade(), blocks) << "whether or not there is a grid; " << away;
    EXPECT_EQ(waysOf(inside).slabs, before + 1);
  }
}

TEST(InsideWays, LeadThroughSlabsThoughMemoryRanOutForThem) {
  if (!heap::counts) GTEST_SKIP() << "the heap of the libraries cannot be replaced here";
  std::size_t failures = 0;
  for (bool failed = true; failed; ++failures) {
    const qcInside inside(star(100));
    ask(inside, forSlabs - 1);
    failed = heap::runsOutOfMemory(failures + 1, heap::Failing::eOne,
                                   [&] { inside.contains(centreOfStars); });
    const std::size_t before = waysOf(inside).slabs;
    ask(inside, 1);
    EXPECT_EQ(waysOf(inside).slabs, before + 1) << "after the failure of allocation " << failures;
    expectRightAnswers(inside, star(100));
  }
  EXPECT_GT(failures, 3U);
}

TEST(InsideWays, LeadThroughTheGridThoughMemoryRanOutForIt) {
  if (!heap::counts) GTEST_SKIP() << "the heap of the libraries cannot be replaced here";
  std::size_t failures = 0;
  for (bool failed = true; failed; ++failures) {
    const qcInside inside(star(100));
    ask(inside, forGrid - 1);
    failed = heap::runsOutOfMemory(failures + 1, heap::Failing::eOne,
                                   [&] { inside.contains(centreOfStars); });
    ask(inside, 1);
    const std::size_t before = waysOf(inside).grid;
    ask(inside, 1);
    EXPECT_EQ(waysOf(inside).grid, before + 1) << "after the failure of allocation " << failures;
    expectRightAnswers(inside, star(100));
  }
  EXPECT_GT(failures, 3U);
}
