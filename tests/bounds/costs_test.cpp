// SPDX-License-Identifier: MIT
//
// The running times that the comments promise, on the worst inputs to which the promises apply. The
// inputs are so large that every answer takes a fraction of a second as promised, but would take
// from half a minute to hours in time quadratic in the input.

#include <cstddef>
#include <vector>

#include <cntr/descriptors.h>
#include <cntr/deviation.h>
#include <cntr/regionst.h>
#include <cntr/simplify.h>
#include <gtest/gtest.h>
#include <testing/heap/heap.h>
#include <testing/shapes/numbers.h>
#include <testing/shapes/shapes.h>

#include "worst_shapes.h"

namespace {

using Points = std::vector<qcVector<2>>;
using Regions = std::vector<qcPtrHandle_const<qcRegion>>;

Points circle(std::size_t n) { return shapes::regularPolygon(n, 500, {640, 480}); }

// Questions about one contour.

TEST(CostTest, OfTheNearestOfAMillionEquallyNear) {
  const qcContour contour(circle(1000000), true, 0);
  for (int i = 0; i < 3; ++i) {
    const double shift = 1e-4 * i;
    EXPECT_NEAR(contour.closestPoint({640, 480 + shift}, false).distance({640, 480}), 500, 1e-6);
    EXPECT_GE(contour.closestVertexIndex({640, 480 + shift}), 0);
  }
}

TEST(CostTest, OfSelfCrossingsWhereAllEdgesLieSideBySideOrOnOneLine) {
  EXPECT_FALSE(qcContour(slantedHatch(200000, 0.001), false, 0).isSelfIntersecting());
  EXPECT_FALSE(qcContour(scatteredOnLine(200000), true, 0).isSelfIntersecting());
  EXPECT_FALSE(qcContour(shapes::spikyStar(200000), true, 0).isSelfIntersecting());
}

TEST(CostTest, OfTheFarthestPairOfWellBehavedOutlines) {
  const double diameter =
      qcContour(circle(100000), true, 0).diameter(qcContourDefs::eFarthestVertexPair);
  EXPECT_NEAR(diameter, 1000, 1e-6);
  EXPECT_GT(qcContour(shapes::comb(200000), true, 0).diameter(qcContourDefs::eFarthestVertexPair),
            1000);
}

TEST(CostTest, OfExtremalVerticesInManyDirections) {
  const qcContour contour(circle(200000), true, 0);
  for (int i = 0; i < 20000; ++i) {
    EXPECT_GE(contour.extremalVertexIndex(qcRadian(0.0003 * i)), 0);
  }
}

TEST(CostTest, OfPointsThatEveryWayToDecideContainmentIsAskedAbout) {
  const Points points = circle(200000);
  const qcRegion region(points, keep);
  // Near a vertex only the ray has the answer.
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_TRUE(region.inside({640, 480}, false));
    region.inside(points[1000 * i], false);
    region.inside(points[1000 * i] + qcVector<2>(1e-7, 0), false);
  }
  // Elsewhere a grid answers after a while.
  for (int i = 0; i < 500000; ++i) region.inside({641 + 1e-4 * i, 480}, false);
  EXPECT_FALSE(region.inside({1139, 600}, false));
}

TEST(CostTest, OfManyPointsAtOnceIsMemoryForThemAlone) {
  const qcRegion region(circle(1000), keep);
  const Points asked = shapes::pointsInBox(region.points(), 200000);
  Points answers(asked.size());
  static_cast<void>(region.closestPoint(asked.front(), false, false));
  const heap::Watch watch;
  region.closestPoint(asked, false, false, answers);
  EXPECT_LE(watch.peakBytes(), 3 * asked.size() * sizeof(qcVector<2>));
}

// Repair.

TEST(CostTest, OfRepairingAnOutlineThatCrossesItselfInManyPlaces) {
  const qcRegion region(shapes::crossingStar(100000), keep);
  qcRegion result;
  region.regularize(result);
  EXPECT_GT(result.points().size(), 100000U);
  region.outerHull(result);
  EXPECT_GT(result.points().size(), 100000U);
}

TEST(CostTest, OfTheNextCrossingOnALongEdge) {
  // A zigzag and one edge back through all of it: the walk turns onto that edge, meets the zigzag
  // again at once, and so on. Collecting all crossings ahead at each step would be quadratic.
  Points points = {{-1, 5}, {-1, -5}};
  for (int i = 0; i < 40000; ++i) points.emplace_back(i, i % 2 == 0 ? 1 : -1);
  points.insert(points.end(), {{40001, -5}, {40001, 0}, {-0.5, 0.001}, {-0.5, 5}});
  const qcRegion region(points, keep);
  qcRegion result;
  region.regularize(result);
  EXPECT_GT(result.points().size(), 3U);
}

qcPtrHandle_const<qcRegion> rectangle(double x, double y, double width, double height) {
  return qcPtrHandle_const<qcRegion>(
      new qcRegion({{x, y}, {x + width, y}, {x + width, y + height}, {x, y + height}}, keep));
}

/// The number of regions that remain when a set is regularized.
std::size_t repaired(const Regions& regions) {
  qcRegionSet result({}, keep);
  qcRegionSet(regions, keep).regularize(result);
  return result.regions().size();
}

TEST(CostTest, OfMergingAChainOfRegionsThatCross) {
  Regions chain;
  for (int i = 0; i < 20000; ++i) chain.push_back(rectangle(i, 0.3 * i, 1.2, 1.1));
  EXPECT_EQ(repaired(chain), 14U) << "half of what is left, time and again";
}

TEST(CostTest, OfMergingManyRegionsWithALongOne) {
  Regions regions{rectangle(0, 0, 40000, 1)};
  for (int i = 0; i < 20000; ++i) regions.push_back(rectangle(2 * i + 0.5, -0.5, 1, 2));
  EXPECT_EQ(repaired(regions), 10001U) << "every other one is passed by";
}

TEST(CostTest, OfMergingRegionsInRegions) {
  Regions regions;
  for (int i = 0; i < 10000; ++i) {
    regions.push_back(rectangle(i, i, 40000 - 2 * i, 40000 - 2 * i));
  }
  regions.push_back(rectangle(-0.5, -0.5, 1, 1));
  EXPECT_EQ(repaired(regions), 10000U);
}

/// Squares of side 10 in a row, each `step` from the previous one, every other one `stagger`
/// higher.
Regions tilesInARow(const qcVector<2>& step, double stagger) {
  Regions tiles;
  for (int i = 0; i < 10000; ++i) {
    tiles.push_back(rectangle(i * step.x(), i * step.y() + (i % 2) * stagger, 10, 10));
  }
  return tiles;
}

TEST(CostTest, OfRefusingTilesThatTouch) {
  // The outline of half of them crosses itself at millions of places.
  EXPECT_THROW(repaired(tilesInARow({10, 0}, 0)), qcContourDefs::BadParams);
  EXPECT_THROW(repaired(tilesInARow({10, 0}, 3)), qcContourDefs::BadParams);
  EXPECT_THROW(repaired(tilesInARow({10, 3}, 0)), qcContourDefs::BadParams);
  EXPECT_THROW(repaired(tilesInARow({10, 10}, 0)), qcContourDefs::BadParams);
  EXPECT_THROW(repaired(tilesInARow({9.999999, 0}, 0)), qcContourDefs::BadParams);
}

// Functions of points and contours.

TEST(CostTest, OfDescriptorsOfPointsThatAreAllOnTheirHull) {
  const Points points = circle(200000);
  EXPECT_NEAR(qf_MinimumAreaRect(points).width, 1000, 1e-3);
  EXPECT_NEAR(qf_MinimumWidth(points).width, 1000, 1e-3);
  EXPECT_NEAR(qf_MinimumCircle(points).radius(), 500, 1e-6);
  EXPECT_GT(qf_MinimumAreaRect(scatteredOnLine(200000)).length, 100);
}

TEST(CostTest, OfDeviationsAndOfTheHausdorffDistance) {
  Points moved = shapes::smoothStar(50000);
  const std::vector<qcContour> nominal{{moved, true, 0}};
  shapes::scaleAndShift(moved, 1.002, {0.5, 0.25});
  const std::vector<qcContour> measured{{moved, true, 0}};
  EXPECT_GT(qf_Deviation(measured, nominal, infinity).greatest, 0.5);
  EXPECT_GT(qf_Hausdorff(measured, nominal, 0.1), 0.5);
}

TEST(CostTest, OfSimplifyingAndResampling) {
  const qcContour contour(shapes::smoothStar(200000), true, 0);
  EXPECT_LT(qf_Simplify(contour, 2.0).points().size(), 10000U);
  EXPECT_GT(qf_Resample(contour, 0.01).points().size(), 200000U);
}

}  // namespace
