// SPDX-License-Identifier: MIT
//
// Contours against GEOS, on the sample outlines and on generated ones: areas, centres, lengths,
// hulls, boxes, distances and crossings away from vertices.

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include <cntr/inertia.h>
#include <cntr/region.h>
#include <gtest/gtest.h>

#include "geos_geometry.h"
#include "outlines.h"

namespace {

using namespace peer;

/// How far the two may differ, relative to the answer or to the coordinates.
constexpr double tolerance = 1e-9;

Geometry polygon(const Points& points) {
  return checked(GEOSGeom_createPolygon_r(geos(), ring(points).release(), nullptr, 0));
}

double lengthOf(const Geometry& geometry) {
  double length = 0.0;
  EXPECT_EQ(GEOSLength_r(geos(), geometry.get(), &length), 1);
  return length;
}

void expectRelative(double ours, double theirs) {
  EXPECT_NEAR(ours, theirs, tolerance * std::abs(theirs));
}

void expectNear(const Point& ours, const Point& theirs) {
  EXPECT_LE(ours.distance(theirs), tolerance * theirs.len())
      << ours.x() << ' ' << ours.y() << " and " << theirs.x() << ' ' << theirs.y();
}

template <class Check>
void forEachOutline(Check check) {
  for (const shapes::Shape& outline : outlines()) {
    SCOPED_TRACE(outline.name);
    check(outline.points, qcContour(outline.points, true, 0));
  }
}

TEST(GeosContourTest, AreasAgree) {
  forEachOutline([](const Points& points, const qcContour&) {
    expectRelative(qf_Area(points), areaOf(polygon(points)));
    expectRelative(qf_InertiaDataPolygon(points).area(), areaOf(polygon(points)));
  });
}

TEST(GeosContourTest, CentresAgree) {
  forEachOutline([](const Points& points, const qcContour&) {
    expectNear(qf_CenterOfMass(points), centerOf(polygon(points)));
    expectNear(qf_InertiaDataPolygon(points).centerOfMass(), centerOf(polygon(points)));
  });
}

TEST(GeosContourTest, LengthsAgree) {
  forEachOutline([](const Points& points, const qcContour& contour) {
    expectRelative(contour.length(), lengthOf(ring(points)));
    expectRelative(qcContour(points, false, 0).length(), lengthOf(line(points)));
  });
}

TEST(GeosContourTest, MeanPositionsAreTheCentresOfTheLines) {
  forEachOutline([](const Points& points, const qcContour& contour) {
    expectNear(contour.meanPosition(), centerOf(ring(points)));
    expectNear(qcContour(points, false, 0).meanPosition(), centerOf(line(points)));
  });
}

/// The vertices of a polygon without holes.
Points verticesOf(const Geometry& geometry) {
  const GEOSGeometry* const outer = GEOSGetExteriorRing_r(geos(), geometry.get());
  const GEOSCoordSequence* const coordinates = GEOSGeom_getCoordSeq_r(geos(), outer);
  Points vertices;
  for (int i = 0; i + 1 < GEOSGeomGetNumPoints_r(geos(), outer); ++i) {
    double x = 0.0;
    double y = 0.0;
    EXPECT_EQ(GEOSCoordSeq_getXY_r(geos(), coordinates, static_cast<unsigned>(i), &x, &y), 1);
    vertices.emplace_back(x, y);
  }
  return vertices;
}

TEST(GeosContourTest, HullsAgree) {
  forEachOutline([](const Points& points, const qcContour& contour) {
    qcRegion hull;
    contour.convexHull(hull);
    const Geometry theirs = checked(GEOSConvexHull_r(geos(), polygon(points).get()));
    expectRelative(hull.area(false), areaOf(theirs));
    expectRelative(hull.length(), lengthOf(theirs));
    const qcContour theirHull(verticesOf(theirs), true, 0);
    // Near-collinear vertices may be in only one of the hulls; they lie on the other's boundary.
    for (const Point& p : hull.points()) EXPECT_LE(theirHull.distToPoint(p, false), 1e-9);
    for (const Point& p : theirHull.points()) {
      EXPECT_LE(static_cast<const qcContour&>(hull).distToPoint(p, false), 1e-9);
    }
  });
}

TEST(GeosContourTest, BoxesAgree) {
  forEachOutline([](const Points& points, const qcContour& contour) {
    const Geometry theirs = ring(points);
    double box[4] = {};
    GEOSGeom_getXMin_r(geos(), theirs.get(), &box[0]);
    GEOSGeom_getYMin_r(geos(), theirs.get(), &box[1]);
    GEOSGeom_getXMax_r(geos(), theirs.get(), &box[2]);
    GEOSGeom_getYMax_r(geos(), theirs.get(), &box[3]);
    const qcRect ours = contour.encloseRect(qcXform<2>::I);
    EXPECT_EQ(ours.ul(), Point(box[0], box[1]));
    EXPECT_EQ(ours.lr(), Point(box[2], box[3]));
  });
}

TEST(GeosContourTest, DistancesAgree) {
  forEachOutline([](const Points& points, const qcContour& contour) {
    const Geometry theirs = ring(points);
    const double size = contour.encloseRect(qcXform<2>::I).lr().len();
    for (const Point& p : shapes::pointsInBox(points, 50)) {
      EXPECT_NEAR(contour.distToPoint(p, false), distanceOf(point(p), theirs), tolerance * size);
    }
  });
}

/// Segments of both kinds that meet no vertex and whose ends touch no edge.
std::vector<shapes::Segment> genericSegments(const qcContour& contour) {
  const std::size_t count = contour.points().size() > 2000 ? 10 : 60;
  std::vector<shapes::Segment> segments = shapes::longSegments(contour.points(), count);
  const std::vector<shapes::Segment> shorter = shapes::shortSegments(contour.points(), count);
  segments.insert(segments.end(), shorter.begin(), shorter.end());
  const auto isSpecial = [&](const shapes::Segment& s) { return !isGeneric(contour, s); };
  segments.erase(std::remove_if(segments.begin(), segments.end(), isSpecial), segments.end());
  return segments;
}

TEST(GeosContourTest, CrossingsWithSegmentsAgree) {
  std::size_t crossings = 0;
  forEachOutline([&](const Points& points, const qcContour& contour) {
    const Geometry theirs = ring(points);
    for (const shapes::Segment& s : genericSegments(contour)) {
      const Points ours = contour.intersections(qcLineSeg(s.a, s.b), false);
      const Points expected = sortedAlong(
          s, pointsOf(checked(GEOSIntersection_r(geos(), line({s.a, s.b}).get(), theirs.get()))));
      ASSERT_EQ(ours.size(), expected.size());
      for (std::size_t i = 0; i < ours.size(); ++i) expectNear(ours[i], expected[i]);
      crossings += ours.size();
    }
  });
  EXPECT_GT(crossings, 7000U);
}

/// An arbitrary fixed order of points.
bool before(const Point& a, const Point& b) {
  return std::pair(a.x(), a.y()) < std::pair(b.x(), b.y());
}

TEST(GeosContourTest, CrossingsWithContoursAgree) {
  // Each outline with itself, turned by two degrees and moved a little: no vertex meets an edge.
  std::size_t crossings = 0;
  forEachOutline([&](const Points& points, const qcContour& contour) {
    if (points.size() > 2000) return;
    const qcXform<2> turn(qcMatrix<2>(qcDegree(2), qcDegree(2), 1, 1), {0.3137, -0.2718});
    qcContour turned({}, true, 0);
    contour.map(turn, turned);
    Points ours = contour.intersections(turned);
    Points theirs = pointsOf(
        checked(GEOSIntersection_r(geos(), ring(points).get(), ring(turned.points()).get())));
    std::sort(ours.begin(), ours.end(), before);
    std::sort(theirs.begin(), theirs.end(), before);
    ASSERT_EQ(ours.size(), theirs.size());
    for (std::size_t i = 0; i < ours.size(); ++i) expectNear(ours[i], theirs[i]);
    crossings += ours.size();
  });
  EXPECT_GT(crossings, 300U);
}

TEST(GeosContourTest, NoneOfTheOutlinesCrossesItself) {
  forEachOutline([](const Points& points, const qcContour& contour) {
    EXPECT_FALSE(contour.isSelfIntersecting());
    EXPECT_EQ(GEOSisSimple_r(geos(), ring(points).get()), 1);
  });
}

TEST(GeosContourTest, OutlinesWithVerticesExchangedCrossThemselvesAlike) {
  // Vertices of the samples lie on straight lines, where exchanging them makes edges overlap: for
  // GEOS that is a crossing, here it is not.
  int crossing = 0;
  for (const shapes::Shape& outline : generatedOutlines()) {
    Points points = outline.points;
    for (std::size_t i = 0; i + 1 < std::min<std::size_t>(points.size(), 60); i += 3) {
      std::swap(points[i], points[i + 1]);
      const bool crosses = qcContour(points, true, 0).isSelfIntersecting();
      EXPECT_EQ(crosses, GEOSisSimple_r(geos(), ring(points).get()) == 0) << outline.name << i;
      crossing += crosses ? 1 : 0;
      std::swap(points[i], points[i + 1]);
    }
  }
  EXPECT_GT(crossing, 80);
}

}  // namespace
