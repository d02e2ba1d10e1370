// SPDX-License-Identifier: MIT
//
// Contours with fewer vertices, and with vertices at equal steps: hand-written cases, what is
// refused, and the literal definition of resampling.

#include <cntr/simplify.h>

#include <algorithm>
#include <cmath>
#include <string>

#include <gtest/gtest.h>
#include <testing/plain/error.h>
#include <testing/plain/simplify.h>
#include <testing/shapes/numbers.h>
#include <testing/shapes/shapes.h>

#include "labelled_contours.h"
#include "refusals.h"

namespace {

using fixtures::badParamsOf;
using labelled::closed;
using labelled::Contours;
using labelled::open;
using shapes::Point;
using shapes::Points;

TEST(SimplifyContour, DropsWhatLiesOnEdges) {
  const Points square = {{0, 0}, {2, 0}, {4, 0}, {4, 4}, {2, 4}, {0, 4}, {0, 2}};
  const qcContour result = qf_Simplify(closed(square), 0.0);
  EXPECT_EQ(result.points(), (Points{{0, 0}, {4, 0}, {4, 4}, {0, 4}}));
  EXPECT_TRUE(result.isClosed());
  EXPECT_EQ(result.label(), 7U);
}

TEST(SimplifyContour, KeepsTheEndsOfOpenContours) {
  const Points walk = {{0, 0}, {1, 0.4}, {2, -0.5}, {3, 3}, {4, 0}};
  EXPECT_EQ(qf_Simplify(open(walk), 0.7).points(), (Points{{0, 0}, {2, -0.5}, {3, 3}, {4, 0}}));
  EXPECT_EQ(qf_Simplify(open(walk), 10.0).points(), (Points{{0, 0}, {4, 0}}));
  EXPECT_FALSE(qf_Simplify(open(walk), 10.0).isClosed());
  EXPECT_EQ(qf_Simplify(open(walk), 0.0).points(), walk);
}

TEST(SimplifyContour, KeepsAnAreaOfClosedContours) {
  const Points flat = {{0, 0}, {10, 0}, {10, 1}, {0, 1}};
  EXPECT_EQ(qf_Simplify(closed(flat), 50.0).points(), flat);
}

TEST(KeptVertices, AreThoseOfTheSimplifiedRings) {
  for (std::uint64_t seed = 0; seed < 200; ++seed) {
    shapes::Random random(seed);
    const Points outline = shapes::smoothStar(3 + random.below(60), seed);
    const Points hole = shapes::gridWalk(random, 4 + random.below(40));
    const double tolerance = random.uniform(0.0, 30.0);
    const auto kept = qf_KeptVertices({closed(outline), closed(hole)}, tolerance);
    const auto rings = qf_Simplify({outline, hole}, tolerance);
    ASSERT_EQ(kept.size(), 2U);
    for (std::size_t r = 0; r < 2; ++r) {
      Points points;
      for (const std::size_t i : kept[r]) points.push_back((r == 0 ? outline : hole)[i]);
      EXPECT_EQ(points, rings[r]) << seed;
      EXPECT_TRUE(std::is_sorted(kept[r].begin(), kept[r].end())) << seed;
    }
  }
}

TEST(KeptVertices, OfOpenAndClosedContoursKeepThemFromCrossing) {
  // Without the line the tooth would go, with it the tooth keeps clear of it.
  const Points outline = {{0, 0}, {4, 0}, {5, 2}, {6, 0}, {10, 0}, {10, 9}, {0, 9}};
  const Points line = {{5, -3}, {5, 1}};
  EXPECT_EQ(qf_KeptVertices({closed(outline)}, 3.0).front().size(), 4U);
  const auto kept = qf_KeptVertices({closed(outline), open(line)}, 3.0);
  EXPECT_GT(kept[0].size(), 4U);
  EXPECT_EQ(kept[1], (std::vector<std::size_t>{0, 1}));
}

TEST(KeptVertices, OfOpenContoursMayBeTheirEnds) {
  const Points bent = {{0, 0}, {1, 0.1}, {2, 0}};
  EXPECT_EQ(qf_KeptVertices({open(bent)}, 1.0).front(), (std::vector<std::size_t>{0, 2}));
  EXPECT_EQ(qf_KeptVertices({closed(bent)}, 1.0).front(), (std::vector<std::size_t>{0, 1, 2}));
}

TEST(KeptVertices, RefusesTolerancesThatMeanNothing) {
  for (const double bad : {-1.0, notANumber, infinity}) {
    EXPECT_EQ(badParamsOf([bad] { qf_KeptVertices({}, bad); }),
              L"tolerance is negative or not finite");
  }
}

TEST(SimplifyContour, LeavesTheFirstOfVerticesInOnePlace) {
  EXPECT_EQ(qf_Simplify(closed({{3, 4}, {3, 4}, {3, 4}}), 1.0).points(), (Points{{3, 4}}));
  EXPECT_EQ(qf_Simplify(closed({{3, 4}}), 1.0).points(), (Points{{3, 4}}));
  EXPECT_EQ(qf_Simplify(open({{3, 4}}), 1.0).points(), (Points{{3, 4}}));
  EXPECT_TRUE(qf_Simplify(closed({}), 1.0).points().empty());
}

TEST(SimplifyContour, KeepsVerticesThatAreNotFinite) {
  const Points walk = {{0, 0}, {1, 0}, {2, infinity}, {3, 0}, {4, 0}};
  EXPECT_EQ(qf_Simplify(open(walk), 1e9).points()[1], Point(2, infinity));
  const Points none = {{0, 0}, {1, 0}, {notANumber, 0}, {3, 0}, {4, 0}};
  EXPECT_TRUE(std::isnan(qf_Simplify(open(none), 1e9).points()[1].x()));
}

TEST(SimplifyContour, KeepsABumpThatHoldsAnotherRing) {
  const Points outline = {{0, 0}, {100, 0}, {100, 50}, {60, 50}, {50, 52}, {40, 50}, {0, 50}};
  const Points hole = {{49, 50.5}, {50, 50.5}, {50, 51}};
  const std::vector<Points> alone = qf_Simplify(std::vector<Points>{outline}, 5.0);
  EXPECT_EQ(alone, (std::vector<Points>{{{0, 0}, {100, 0}, {100, 50}, {0, 50}}}));
  const std::vector<Points> both = qf_Simplify(std::vector<Points>{outline, hole}, 5.0);
  ASSERT_EQ(both.size(), 2U);
  EXPECT_NE(std::find(both[0].begin(), both[0].end(), Point(50, 52)), both[0].end());
  EXPECT_EQ(both[1].size(), 3U);
}

TEST(SimplifyContour, RefusesTolerancesThatAreNone) {
  for (const double tolerance : {-1.0, notANumber, infinity}) {
    EXPECT_EQ(badParamsOf([&] { qf_Simplify(closed({}), tolerance); }),
              L"tolerance is negative or not finite");
    EXPECT_EQ(badParamsOf([&] { qf_Simplify(std::vector<Points>{}, tolerance); }),
              L"tolerance is negative or not finite");
  }
}

TEST(ResampleContour, IsThatOfTheDefinition) {
  int refused = 0;
  for (std::uint64_t seed = 0; seed < 1500; ++seed) {
    shapes::Random random(seed);
    const shapes::Shape shape = shapes::any(seed, 40);
    const qcContour contour(shape.points, shape.closed, 3);
    const double length = contour.points().size() < 2 ? 1.0 : contour.length();
    const double spacing = std::isfinite(length) ? length / random.uniform(0.3, 60.0) : 1.0;
    try {
      const plain::Contour expected = plain::resample({shape.points, shape.closed}, spacing);
      const qcContour result = qf_Resample(contour, spacing);
      ASSERT_EQ(result.points(), expected.points) << seed << ' ' << shape.name;
      EXPECT_EQ(result.isClosed(), shape.closed);
      EXPECT_EQ(result.label(), 3U);
    } catch (const plain::Error& error) {
      ++refused;
      EXPECT_EQ(badParamsOf([&] { qf_Resample(contour, spacing); }),
                std::wstring(error.message.begin(), error.message.end()));
    }
  }
  EXPECT_GT(refused, 10);
}

TEST(ResampleContour, TakesAsFewStepsAsTheSpacingAllows) {
  const qcContour square = closed({{0, 0}, {4, 0}, {4, 4}, {0, 4}});
  EXPECT_EQ(qf_Resample(square, 2.0).points().size(), 8U);
  EXPECT_EQ(qf_Resample(square, 1.9).points().size(), 9U);
  EXPECT_EQ(qf_Resample(square, 1e9).points().size(), 3U);
  EXPECT_EQ(qf_Resample(open({{0, 0}, {4, 0}}), 1e9).points(), (Points{{0, 0}, {4, 0}}));
}

TEST(ResampleContour, LeavesContoursWithoutLength) {
  EXPECT_TRUE(qf_Resample(closed({}), 1.0).points().empty());
  EXPECT_EQ(qf_Resample(closed({{3, 4}, {3, 4}}), 1.0).points(), (Points{{3, 4}}));
}

TEST(ResampleContour, RefusesSpacingsThatAreNone) {
  const qcContour line = open({{0, 0}, {4, 0}});
  for (const double spacing : {0.0, -1.0, notANumber}) {
    EXPECT_EQ(badParamsOf([&] { qf_Resample(line, spacing); }), L"spacing is not positive");
  }
  EXPECT_EQ(badParamsOf([&] { qf_Resample(line, 1e-300); }),
            L"spacing is too small for the contour");
  EXPECT_EQ(badParamsOf([&] {
              qf_Resample(open({{0, 0}, {infinity, 0}}), 1.0);
            }),
            L"contour has no finite length");
}

}  // namespace
