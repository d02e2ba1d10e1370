// SPDX-License-Identifier: MIT
//
// The worst known inputs: every question about them is answered in the end, and takes no more
// memory than a small multiple of their own.

#include <cstddef>
#include <string>
#include <vector>

#include <cntr/regionst.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <testing/heap/heap.h>
#include <testing/shapes/numbers.h>
#include <testing/shapes/shapes.h>

#include "worst_shapes.h"

namespace {

using Points = std::vector<qcVector<2>>;
using Region = qcPtrHandle<qcRegion>;

Points onLine(std::size_t n) {
  Points points;
  for (std::size_t i = 0; i < n; ++i) {
    points.emplace_back(static_cast<double>(i), 0.5 * static_cast<double>(i));
  }
  return points;
}

Points coincidentEdges(std::size_t n) {
  Points points;
  for (std::size_t i = 0; i < n; ++i) points.emplace_back(i % 2 == 0 ? 0 : 10, i % 2 == 0 ? 0 : 7);
  return points;
}

Points circleAroundOrigin(std::size_t n) { return shapes::regularPolygon(n, 500, {0, 0}); }

Points circleWith(std::size_t n, const qcVector<2>& p) {
  Points points = circleAroundOrigin(n);
  points[n / 2] = p;
  return points;
}

Points infinitelyFarOut(std::size_t n) {
  Points points;
  for (std::size_t i = 0; i < n; ++i)
    points.emplace_back(infinity, static_cast<double>(i * i % 97));
  return points;
}

struct Input {
  const char* name;
  Points points;
};

void PrintTo(const Input& input, std::ostream* out) { *out << input.name; }

std::vector<Input> inputs() {
  constexpr std::size_t n = 20000;
  return {{"all vertices equal", Points(n, {3, 4})},
          {"on a line, in order", onLine(n)},
          {"on a line, anyhow", scatteredOnLine(n)},
          {"on a circle", circleAroundOrigin(n)},
          {"on a circle, one not a number", circleWith(n, {notANumber, 1})},
          {"on a circle, one infinite", circleWith(n, {infinity, 1})},
          {"coincident edges", coincidentEdges(n)},
          {"slanted hatch", slantedHatch(n, 0.01)},
          {"infinitely far out", infinitelyFarOut(n)}};
}

/// All questions except repair.
void askEverything(const qcRegion& region) {
  const qcVector<2> p(5.1, 3.3);
  static_cast<void>(region.length());
  static_cast<void>(region.meanPosition());
  static_cast<void>(region.area(true));
  static_cast<void>(region.centerOfMass(true));
  static_cast<void>(region.inertiaMatrix(false));
  static_cast<void>(region.polygon());
  static_cast<void>(region.isSelfIntersecting());
  static_cast<void>(region.diameter(qcContourDefs::eFarthestVertexPair));
  static_cast<void>(region.diameter(qcContourDefs::eFromFirstVertex));
  static_cast<void>(region.encloseRect(qcXform<2>::I));
  for (int i = 0; i < 10; ++i) {
    const qcVector<2> q = p + qcVector<2>(0.7 * i, 0);
    static_cast<void>(region.inside(q, true));
    static_cast<void>(region.distToPoint(q, i % 2 == 0, true, false));
    static_cast<void>(region.extremalVertexIndex(qcRadian(0.6 * i)));
  }
  static_cast<void>(region.intersections(qcLineSeg({-1, 5}, {1100, 4}), true, true));
  static_cast<void>(region.vertexIndex(p, 1.0));
  qcRegion hull;
  region.convexHull(hull);
  qcEllipse ellipse;
  double residual = 0.0;
  region.fitEllipse(ellipse, residual);
}

class WorstInputsTest : public testing::TestWithParam<Input> {};

TEST_P(WorstInputsTest, QuestionsEndAndTakeMemoryInProportion) {
  const Points& points = GetParam().points;
  const std::size_t inputBytes = points.size() * sizeof(qcVector<2>);
  const heap::Watch watch;
  askEverything(qcRegion(points, keep));
  EXPECT_LE(watch.peakBytes(), 30 * inputBytes);
}

INSTANTIATE_TEST_SUITE_P(All, WorstInputsTest, testing::ValuesIn(inputs()));

TEST(CoincidentEdgesTest, ASegmentAcrossAMillionOfThemCrossesEachOne) {
  constexpr std::size_t n = 1000000;
  const qcContour contour(coincidentEdges(n), true, 0);
  const heap::Watch watch;
  EXPECT_EQ(contour.intersections(qcLineSeg({0, 5}, {10, 2}), true).size(), n);
  EXPECT_LE(watch.peakBytes(), 12 * n * sizeof(qcVector<2>));
}

TEST(CoincidentEdgesTest, AMillionOfThemDoNotCross) {
  const qcContour contour(coincidentEdges(1000000), true, 0);
  EXPECT_FALSE(contour.isSelfIntersecting());
  EXPECT_EQ(contour.diameter(qcContourDefs::eFarthestVertexPair), qcVector<2>(10, 7).len());
}

TEST(VertexIndexTest, AMillionCellsWhoseNumbersEndInZeroBitsAreKeptApart) {
  // One column of pixels, and a tolerance that makes every cell number a multiple of 2^44.
  Points points;
  for (int y = 0; y < 500000; ++y) points.emplace_back(3, y);
  for (int x = 0; x < 500000; ++x) points.emplace_back(x, 3);
  const qcContour contour(points, true, 0);
  const heap::Watch watch;
  EXPECT_THAT(contour.vertexIndex({3, 77777}, 0x1p-44), testing::ElementsAre(77777));
  EXPECT_THAT(contour.vertexIndex({77777, 3}, 0x1p-44), testing::ElementsAre(577777));
  EXPECT_THAT(contour.vertexIndex({3, 3}, 0x1p-44), testing::ElementsAre(3, 500003));
  EXPECT_THAT(contour.vertexIndex({3, 77777.5}, 0x1p-44), testing::IsEmpty());
  EXPECT_LE(watch.peakBytes(), 80 * points.size());
}

/// All the vertices of `crowd`, and a bow tie that makes the contour cross itself.
Points withBowTie(const Points& crowd) {
  Points points = {{1000, 0}, {2000, 1000}, {2000, 0}, {1000, 1000}};
  points.insert(points.end(), crowd.begin(), crowd.end());
  return points;
}

TEST(RepairTest, VerticesInOnePlaceDoNotTakeMemoryForEachOther) {
  // A list of all others for each of them would take 800 times the input.
  const Points points = withBowTie(coincidentEdges(3000));
  const qcRegion region(points, keep);
  const heap::Watch watch;
  qcRegion result;
  region.outerHull(result);
  EXPECT_GE(result.points().size(), 3U);
  EXPECT_LE(watch.peakBytes(), 60 * points.size() * sizeof(qcVector<2>));
}

TEST(NestedRegionsTest, ThousandsOfThemAreNotComparedWithEachOther) {
  // Comparing all pairs would take half a minute.
  std::vector<Region> regions;
  for (int i = 0; i < 30000; ++i) {
    const double low = i;
    const double high = 60001.0 - low;
    regions.push_back(
        Region(new qcRegion({{low, low}, {high, low}, {high, high}, {low, high}}, keep)));
  }
  EXPECT_FALSE(qcRegionSet(regions, keep).isSelfIntersecting());
}

Points triangleAt(double x, double y) { return {{x, y}, {x + 1, y}, {x, y + 1}}; }

/// 100,000 triangles on a grid of spacing 2.
std::vector<Region> triangles() {
  constexpr int columns = 400;
  constexpr int rows = 250;
  std::vector<Region> regions;
  for (int i = 0; i < columns * rows; ++i) {
    regions.push_back(Region(
        new qcRegion(triangleAt(1.0 + 2.0 * (i % columns), 1.0 + 2.0 * (i / columns)), keep)));
  }
  return regions;
}

TEST(ManyHolesTest, ARegionWithAHundredThousandHolesIsAsked) {
  const std::vector<Region> holes = triangles();
  const heap::Watch watch;
  qcRegion region({{0, 0}, {802, 0}, {802, 502}, {0, 502}}, keep);
  region.holes(holes);
  EXPECT_DOUBLE_EQ(region.area(true), 802.0 * 502.0 - 50000.0);
  EXPECT_FALSE(region.inside({1.2, 1.2}, true));
  EXPECT_TRUE(region.inside({0.5, 0.5}, true));
  EXPECT_EQ(region.closestPoint({3.5, 0.9}, false, true), qcVector<2>(3.5, 1));
  EXPECT_EQ(region.intersections(qcLineSeg({-1, 1.25}, {803, 1.25}), true, true).size(), 802U);
  EXPECT_LE(watch.peakBytes(), 3000 * holes.size()) << "with what the holes remember";
}

TEST(ManyHolesTest, ASetOfAHundredThousandRegionsIsAsked) {
  const std::vector<Region> regions = triangles();
  const heap::Watch watch;
  const qcRegionSet set(regions, keep);
  EXPECT_DOUBLE_EQ(set.area(true), 50000.0);
  EXPECT_TRUE(set.inside({1.2, 1.2}, true));
  EXPECT_FALSE(set.isSelfIntersecting());
  EXPECT_DOUBLE_EQ(set.distToPoint({0, 1}, false, true, true), 1.0);
  EXPECT_LE(watch.peakBytes(), 1000 * regions.size()) << "with what the regions remember";
}

}  // namespace
