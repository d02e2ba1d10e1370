// SPDX-License-Identifier: MIT
//
// Regions against GEOS, where both mean the same: containment of points that keep clear of the
// boundary, areas and centres with holes, distances, and crossings away from vertices.

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include <cntr/regionst.h>
#include <gtest/gtest.h>
#include <testing/shapes/shapes.h>

#include "geos_geometry.h"

namespace {

using namespace peer;
using Handle = qcPtrHandle_const<qcRegion>;
using Handles = std::vector<Handle>;

constexpr auto keep = qcContourDefs::eNoIntersectionRepair;

Geometry polygon(const qcRegion& region) {
  std::vector<GEOSGeometry*> holes;
  for (const Handle& hole : region.holes()) holes.push_back(ring(hole->points()).release());
  const auto count = static_cast<unsigned>(holes.size());
  return checked(
      GEOSGeom_createPolygon_r(geos(), ring(region.points()).release(), holes.data(), count));
}

Geometry multiPolygon(const qcRegionSet& set) {
  std::vector<GEOSGeometry*> parts;
  for (const Handle& region : set.regions()) parts.push_back(polygon(*region).release());
  return checked(GEOSGeom_createCollection_r(geos(), GEOS_MULTIPOLYGON, parts.data(),
                                             static_cast<unsigned>(parts.size())));
}

Geometry boundaryOf(const Geometry& geometry) {
  return checked(GEOSBoundary_r(geos(), geometry.get()));
}

/// Asks GEOS for many points.
class Containment {
 public:
  explicit Containment(Geometry geometry)
      : geometry_(std::move(geometry)), prepared_(GEOSPrepare_r(geos(), geometry_.get())) {}

  bool holds(const Point& p) const {
    return GEOSPreparedContains_r(geos(), prepared_.get(), point(p).get()) == 1;
  }

 private:
  Geometry geometry_;
  Prepared prepared_;
};

/// Whether the ray that decides containment in one boundary crosses it only properly, and reaches
/// beyond it: then the decision is that of even-odd parity.
bool keepsClear(const qcContour& boundary, const Point& p) {
  constexpr double margin = 3e-6;
  const qcRect box = boundary.encloseRect(qcXform<2>::I);
  if (!box.within(p)) return true;
  const auto n = static_cast<double>(boundary.points().size());
  const double reach = boundary.encloseCircle(qcContourDefs::eFromFirstVertex).radius();
  const double farX = std::max(p.x() - box.ul().x(), box.lr().x() - p.x());
  const double farY = std::max(p.y() - box.ul().y(), box.lr().y() - p.y());
  return boundary.distToPoint(p, true) * std::sin(std::numbers::pi / (2.0 * n)) >= margin &&
         boundary.distToPoint(p, false) > margin &&
         (p.distance(boundary.points()[0]) <= reach - margin ||
          std::hypot(farX, farY) <= 2.0 * reach - margin);
}

bool keepsClear(const qcRegion& region, const Point& p) {
  return keepsClear(static_cast<const qcContour&>(region), p) &&
         std::all_of(region.holes().begin(), region.holes().end(),
                     [&](const Handle& hole) { return keepsClear(*hole, p); });
}

/// Outlines that do not cross themselves.
Points simpleOutline(shapes::Random& random, std::size_t n) {
  switch (random.below(5)) {
    case 0:
      return shapes::smoothStar(n, random.next());
    case 1:
      return shapes::spikyStar(n, random.next());
    case 2:
      return shapes::comb(std::max<std::size_t>(n, 10), random.next());
    case 3:
      return shapes::regularPolygon(n, 100.0, {50.0, 20.0});
    default:
      return shapes::skyline(random, n);
  }
}

Points crossingOutline(shapes::Random& random, std::size_t n) {
  switch (random.below(4)) {
    case 0:
      return shapes::crossingStar(n, random.next());
    case 1:
      return shapes::closedWalk(random, n);
    case 2:
      return shapes::cloud(random, n);
    default:
      return shapes::lissajous(n, 3, 2, random.uniform(0.1, 0.6));
  }
}

std::size_t vertexCount(shapes::Random& random) { return 5 + random.below(196); }

/// A smooth star with three star-shaped holes that keep clear of it and of each other.
qcRegion regionWithHoles(shapes::Random& random) {
  qcRegion region(shapes::smoothStar(vertexCount(random), random.next()), keep);
  Handles holes;
  for (const Point& center : {Point(480, 400), Point(800, 400), Point(640, 640)}) {
    Points points = shapes::spikyStar(vertexCount(random), random.next());
    const double scale = random.uniform(0.05, 0.25);
    shapes::scaleAndShift(points, scale, center - Point(640, 480) * scale);
    holes.push_back(Handle(new qcRegion(points, keep)));
  }
  region.holes(holes);
  return region;
}

/// Asks both about points in the box; returns for how many of them parity defines the answer.
std::size_t compareContainment(const qcRegion& region, const Containment& peer, bool holes,
                               std::size_t count, std::uint64_t seed) {
  std::size_t compared = 0;
  for (const Point& p : shapes::pointsInBox(region.points(), count, seed)) {
    if (!keepsClear(region, p)) continue;
    ++compared;
    EXPECT_EQ(region.inside(p, holes), peer.holds(p)) << p.x() << ' ' << p.y();
    if (testing::Test::HasFailure()) break;
  }
  return compared;
}

TEST(GeosRegionTest, SimpleOutlinesHoldTheSamePoints) {
  shapes::Random random(301);
  std::size_t compared = 0;
  for (int round = 0; round < 40; ++round) {
    const qcRegion region(simpleOutline(random, vertexCount(random)), keep);
    compared +=
        compareContainment(region, Containment(polygon(region)), false, 4000, random.next());
  }
  EXPECT_GT(compared, 100000U);
}

TEST(GeosRegionTest, CrossingOutlinesHoldTheSamePoints) {
  shapes::Random random(302);
  std::size_t compared = 0;
  for (int round = 0; round < 40; ++round) {
    const qcRegion region(crossingOutline(random, vertexCount(random)), keep);
    compared +=
        compareContainment(region, Containment(polygon(region)), false, 3000, random.next());
  }
  EXPECT_GT(compared, 80000U);
}

TEST(GeosRegionTest, RegionsWithHolesHoldTheSamePoints) {
  shapes::Random random(303);
  std::size_t compared = 0;
  for (int round = 0; round < 20; ++round) {
    const qcRegion region = regionWithHoles(random);
    compared += compareContainment(region, Containment(polygon(region)), true, 3000, random.next());
  }
  EXPECT_GT(compared, 50000U);
}

/// Regions with holes side by side.
qcRegionSet rowOfRegions(shapes::Random& random, std::size_t count) {
  Handles regions;
  for (std::size_t i = 0; i < count; ++i) {
    const qcRegion region = regionWithHoles(random);
    const qcXform<2> aside(qcMatrix<2>(), Point(1500.0 * static_cast<double>(i), 0.0));
    const qcPtrHandle<qcRegion> moved(new qcRegion);
    region.map(aside, *moved);
    std::vector<qcPtrHandle<qcRegion>> holes;
    for (const Handle& hole : region.holes()) {
      holes.emplace_back(new qcRegion);
      hole->map(aside, *holes.back());
    }
    moved->holes(holes);
    regions.push_back(moved);
  }
  return qcRegionSet(regions, keep);
}

TEST(GeosRegionTest, SetsHoldTheSamePoints) {
  shapes::Random random(304);
  std::size_t compared = 0;
  for (int round = 0; round < 5; ++round) {
    const qcRegionSet set = rowOfRegions(random, 4);
    const Containment peer(multiPolygon(set));
    const qcRect box = set.encloseRect(qcXform<2>::I);
    for (const Point& p : shapes::pointsInBox({box.ul(), box.lr()}, 5000, random.next())) {
      const Handles regions = set.regions();
      if (!std::all_of(regions.begin(), regions.end(),
                       [&](const Handle& region) { return keepsClear(*region, p); })) {
        continue;
      }
      ++compared;
      ASSERT_EQ(set.inside(p, true), peer.holds(p)) << p.x() << ' ' << p.y();
    }
  }
  EXPECT_GT(compared, 20000U);
}

TEST(GeosRegionTest, AreasAndCentersWithHolesAgree) {
  shapes::Random random(305);
  for (int round = 0; round < 500; ++round) {
    const qcRegion region = regionWithHoles(random);
    const Geometry peer = polygon(region);
    EXPECT_NEAR(region.area(true), areaOf(peer), 1e-12 * region.area(false));
    const Point center = region.centerOfMass(true);
    EXPECT_LT(center.distance(centerOf(peer)), 1e-9);
  }
}

TEST(GeosRegionTest, AreasAndCentersOfSimpleOutlinesAgree) {
  shapes::Random random(306);
  for (int round = 0; round < 500; ++round) {
    const qcRegion region(simpleOutline(random, vertexCount(random)), keep);
    const Geometry peer = polygon(region);
    EXPECT_NEAR(region.area(false), areaOf(peer), 1e-12 * 1e6);
    EXPECT_LT(region.centerOfMass(false).distance(centerOf(peer)), 1e-8);
  }
}

TEST(GeosRegionTest, AreasAndCentersOfSetsAgree) {
  shapes::Random random(307);
  for (int round = 0; round < 50; ++round) {
    const qcRegionSet set = rowOfRegions(random, 3);
    const Geometry peer = multiPolygon(set);
    EXPECT_NEAR(set.area(true), areaOf(peer), 1e-12 * set.area(false));
    EXPECT_LT(set.centerOfMass(true).distance(centerOf(peer)), 1e-8);
  }
}

TEST(GeosRegionTest, DistancesAgree) {
  shapes::Random random(308);
  for (int round = 0; round < 20; ++round) {
    const qcRegion region = regionWithHoles(random);
    const Geometry area = polygon(region);
    const Geometry boundary = boundaryOf(area);
    const Geometry outer = ring(region.points());
    for (int k = 0; k < 300; ++k) {
      const Point p(random.uniform(-200, 1500), random.uniform(-200, 1200));
      const Geometry there = point(p);
      EXPECT_NEAR(region.distToPoint(p, false, true, false), distanceOf(there, boundary), 1e-11);
      EXPECT_NEAR(static_cast<const qcContour&>(region).distToPoint(p, false),
                  distanceOf(there, outer), 1e-11);
      if (!keepsClear(region, p)) continue;
      EXPECT_NEAR(region.distToPoint(p, false, true, true), distanceOf(there, area), 1e-11);
    }
  }
}

TEST(GeosRegionTest, DistancesFromSetsAgree) {
  shapes::Random random(309);
  const qcRegionSet set = rowOfRegions(random, 4);
  const Geometry boundary = boundaryOf(multiPolygon(set));
  for (int k = 0; k < 1000; ++k) {
    const Point p(random.uniform(-500, 6500), random.uniform(-500, 1500));
    EXPECT_NEAR(set.distToPoint(p, false, true, false), distanceOf(point(p), boundary), 1e-11);
  }
}

TEST(GeosRegionTest, SegmentsCrossInTheSamePoints) {
  shapes::Random random(310);
  std::size_t crossings = 0;
  for (int round = 0; round < 60; ++round) {
    const std::size_t n = vertexCount(random);
    const Points outline =
        random.chance(0.5) ? simpleOutline(random, n) : crossingOutline(random, n);
    const qcRegion region(outline, keep);
    const Geometry peer = ring(outline);
    for (const shapes::Segment& s : shapes::longSegments(outline, 20, random.next())) {
      if (!isGeneric(region, s)) continue;
      const auto points = region.intersections(qcLineSeg(s.a, s.b), false, true);
      const Points expected = sortedAlong(
          s, pointsOf(checked(GEOSIntersection_r(geos(), line({s.a, s.b}).get(), peer.get()))));
      ASSERT_EQ(points.size(), expected.size());
      for (std::size_t i = 0; i < points.size(); ++i) {
        ASSERT_LT(points[i].distance(expected[i]), 1e-8);
      }
      crossings += points.size();
    }
  }
  EXPECT_GT(crossings, 8000U);
}

TEST(GeosRegionTest, OutlinesCrossThemselvesAlike) {
  shapes::Random random(311);
  int crossing = 0;
  for (int round = 0; round < 300; ++round) {
    const std::size_t n = vertexCount(random);
    const Points outline = random.chance(0.5) ? simpleOutline(random, n)
                                              : shapes::closedWalk(random, 4 + random.below(6));
    const bool crosses = qcRegion(outline, keep).isSelfIntersecting();
    EXPECT_EQ(crosses, GEOSisSimple_r(geos(), ring(outline).get()) == 0);
    if (crosses) ++crossing;
  }
  EXPECT_GT(crossing, 50);
  EXPECT_LT(crossing, 250);
}

TEST(GeosRegionTest, SetsCrossAlike) {
  shapes::Random random(312);
  int crossing = 0;
  for (int round = 0; round < 300; ++round) {
    Handles regions;
    for (int i = 0; i < 2; ++i) {
      Points points = simpleOutline(random, vertexCount(random));
      const double scale = random.uniform(0.05, 0.5);
      const double x = random.uniform(0, 500);
      shapes::scaleAndShift(points, scale, {x, random.uniform(0, 500)});
      regions.push_back(Handle(new qcRegion(points, keep)));
    }
    const bool crosses = qcRegionSet(regions, keep).isSelfIntersecting();
    EXPECT_EQ(crosses, GEOSIntersects_r(geos(), ring(regions[0]->points()).get(),
                                        ring(regions[1]->points()).get()) == 1);
    if (crosses) ++crossing;
  }
  EXPECT_GT(crossing, 30);
  EXPECT_LT(crossing, 270);
}

}  // namespace
