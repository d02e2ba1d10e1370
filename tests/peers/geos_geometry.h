// SPDX-License-Identifier: MIT
//
// Outlines as geometries of GEOS, and what it says about them.

#pragma once

#include <geos_c.h>

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <vector>

#include <cntr/contour.h>
#include <gtest/gtest.h>
#include <testing/shapes/shapes.h>

namespace peer {

using shapes::Point;
using shapes::Points;

/// The context that all calls of GEOS need.
inline GEOSContextHandle_t geos() {
  static const std::unique_ptr<GEOSContextHandle_HS, decltype(&GEOS_finish_r)> context(
      GEOS_init_r(), &GEOS_finish_r);
  return context.get();
}

struct Destroy {
  void operator()(GEOSGeometry* geometry) const { GEOSGeom_destroy_r(geos(), geometry); }
  void operator()(const GEOSPreparedGeometry* prepared) const {
    GEOSPreparedGeom_destroy_r(geos(), prepared);
  }
};
using Geometry = std::unique_ptr<GEOSGeometry, Destroy>;
using Prepared = std::unique_ptr<const GEOSPreparedGeometry, Destroy>;

inline Geometry checked(GEOSGeometry* geometry) {
  if (geometry == nullptr) throw std::runtime_error("GEOS refused");
  return Geometry(geometry);
}

inline GEOSCoordSequence* sequence(const Points& points, bool closed) {
  const auto n = static_cast<unsigned>(points.size());
  GEOSCoordSequence* const coordinates = GEOSCoordSeq_create_r(geos(), n + (closed ? 1 : 0), 2);
  for (unsigned i = 0; i < n + (closed ? 1 : 0); ++i) {
    const Point& p = points[i % n];
    GEOSCoordSeq_setXY_r(geos(), coordinates, i, p.x(), p.y());
  }
  return coordinates;
}

inline Geometry point(const Point& p) {
  return checked(GEOSGeom_createPointFromXY_r(geos(), p.x(), p.y()));
}

inline Geometry line(const Points& points) {
  return checked(GEOSGeom_createLineString_r(geos(), sequence(points, false)));
}

inline Geometry ring(const Points& points) {
  return checked(GEOSGeom_createLinearRing_r(geos(), sequence(points, true)));
}

inline double areaOf(const Geometry& geometry) {
  double area = 0.0;
  EXPECT_EQ(GEOSArea_r(geos(), geometry.get(), &area), 1);
  return area;
}

inline Point centerOf(const Geometry& geometry) {
  const Geometry center = checked(GEOSGetCentroid_r(geos(), geometry.get()));
  double x = 0.0;
  double y = 0.0;
  EXPECT_EQ(GEOSGeomGetX_r(geos(), center.get(), &x), 1);
  EXPECT_EQ(GEOSGeomGetY_r(geos(), center.get(), &y), 1);
  return {x, y};
}

inline double distanceOf(const Geometry& a, const Geometry& b) {
  double distance = 0.0;
  EXPECT_EQ(GEOSDistance_r(geos(), a.get(), b.get(), &distance), 1);
  return distance;
}

inline Points pointsOf(const Geometry& geometry) {
  Points points;
  const int count = GEOSGetNumGeometries_r(geos(), geometry.get());
  for (int i = 0; i < count; ++i) {
    const GEOSGeometry* const part = GEOSGetGeometryN_r(geos(), geometry.get(), i);
    if (GEOSisEmpty_r(geos(), part) != 0) continue;
    EXPECT_EQ(GEOSGeomTypeId_r(geos(), part), GEOS_POINT);
    double x = 0.0;
    double y = 0.0;
    EXPECT_EQ(GEOSGeomGetX_r(geos(), part, &x), 1);
    EXPECT_EQ(GEOSGeomGetY_r(geos(), part, &y), 1);
    points.push_back({x, y});
  }
  return points;
}

/// Whether the segment keeps clear of the vertices, and its ends of the edges.
inline bool isGeneric(const qcContour& boundary, const shapes::Segment& segment) {
  constexpr double margin = 1e-4;
  const qcLineSeg carrier(segment.a, segment.b);
  return boundary.distToPoint(segment.a, false) > margin &&
         boundary.distToPoint(segment.b, false) > margin &&
         std::all_of(boundary.points().begin(), boundary.points().end(),
                     [&](const Point& vertex) { return carrier.distToPoint(vertex) > margin; });
}

/// The points of GEOS in order along the segment.
inline Points sortedAlong(const shapes::Segment& segment, Points points) {
  std::sort(points.begin(), points.end(), [&](const Point& a, const Point& b) {
    return (a - segment.a) * (segment.b - segment.a) < (b - segment.a) * (segment.b - segment.a);
  });
  return points;
}

}  // namespace peer
