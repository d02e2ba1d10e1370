// SPDX-License-Identifier: MIT
//
// Converts rings to and from GEOS, and asks GEOS whether a result is valid.

#include <cntrsets/geos.h>

#include <algorithm>
#include <string>
#include <utility>

#include <cntr/contourdefs.h>
#include <cntrsets/validity.h>

namespace {

using Point = qcVector<2>;

qcGeosGeometry owned(GEOSContextHandle_t context, GEOSGeometry* geometry) {
  if (geometry == nullptr) throw qcContourDefs::BadParams(L"GEOS refuses the outlines");
  return {geometry, qcGeosDestroy{context}};
}

/// Takes the geometries from their owners.
std::vector<GEOSGeometry*> released(std::vector<qcGeosGeometry> owners) {
  std::vector<GEOSGeometry*> geometries(owners.size());
  std::transform(owners.begin(), owners.end(), geometries.begin(),
                 [](qcGeosGeometry& owner) { return owner.release(); });
  return geometries;
}

qcGeosGeometry ringOf(GEOSContextHandle_t context, const std::vector<Point>& points) {
  if (points.size() < 3) throw qcContourDefs::BadParams(L"a ring has fewer than 3 vertices");
  const auto count = static_cast<unsigned>(points.size());
  GEOSCoordSequence* const sequence = GEOSCoordSeq_create_r(context, count + 1, 2);
  if (sequence == nullptr) throw qcContourDefs::BadParams(L"GEOS refuses the outlines");
  for (unsigned i = 0; i <= count; ++i) {
    const Point& p = points[i % count];
    GEOSCoordSeq_setXY_r(context, sequence, i, p.x(), p.y());
  }
  return owned(context, GEOSGeom_createLinearRing_r(context, sequence));
}

qcGeosGeometry polygonOf(GEOSContextHandle_t context, const qcRings& part) {
  qcGeosGeometry outline = ringOf(context, part.outline);
  std::vector<qcGeosGeometry> holes;
  for (const std::vector<Point>& hole : part.holes) holes.push_back(ringOf(context, hole));
  std::vector<GEOSGeometry*> released_holes = released(std::move(holes));
  return owned(context, GEOSGeom_createPolygon_r(context, outline.release(), released_holes.data(),
                                                 static_cast<unsigned>(released_holes.size())));
}

std::vector<Point> pointsOf(GEOSContextHandle_t context, const GEOSGeometry* ring) {
  const GEOSCoordSequence* const sequence = GEOSGeom_getCoordSeq_r(context, ring);
  unsigned count = 0;
  GEOSCoordSeq_getSize_r(context, sequence, &count);
  std::vector<Point> points;
  points.reserve(count);
  for (unsigned i = 0; i + 1 < count; ++i) {
    double x = 0.0;
    double y = 0.0;
    GEOSCoordSeq_getXY_r(context, sequence, i, &x, &y);
    points.emplace_back(x, y);
  }
  return points;
}

void appendParts(GEOSContextHandle_t context, const GEOSGeometry* geometry,
                 std::vector<qcRings>& parts) {
  const int type = GEOSGeomTypeId_r(context, geometry);
  if (type == GEOS_MULTIPOLYGON || type == GEOS_GEOMETRYCOLLECTION) {
    const int count = GEOSGetNumGeometries_r(context, geometry);
    for (int i = 0; i < count; ++i)
      appendParts(context, GEOSGetGeometryN_r(context, geometry, i), parts);
    return;
  }
  if (type != GEOS_POLYGON)
    throw qcContourDefs::BadParams(L"the geometry is not made of polygons alone");
  if (GEOSisEmpty_r(context, geometry) != 0) return;
  qcRings& part = parts.emplace_back();
  part.outline = pointsOf(context, GEOSGetExteriorRing_r(context, geometry));
  const int holes = GEOSGetNumInteriorRings_r(context, geometry);
  for (int i = 0; i < holes; ++i)
    part.holes.push_back(pointsOf(context, GEOSGetInteriorRingN_r(context, geometry, i)));
}

}  // namespace

qcGeosGeometry qf_ToGeos(GEOSContextHandle_t context, const std::vector<qcRings>& feature) {
  std::vector<qcGeosGeometry> parts;
  parts.reserve(feature.size());
  for (const qcRings& part : feature) parts.push_back(polygonOf(context, part));
  std::vector<GEOSGeometry*> released_parts = released(std::move(parts));
  return owned(context,
               GEOSGeom_createCollection_r(context, GEOS_MULTIPOLYGON, released_parts.data(),
                                           static_cast<unsigned>(released_parts.size())));
}

std::vector<qcRings> qf_FromGeos(GEOSContextHandle_t context, const GEOSGeometry* geometry) {
  std::vector<qcRings> parts;
  appendParts(context, geometry, parts);
  return parts;
}

namespace cntr::sets {

std::string flawOf(const std::vector<qcRings>& feature) {
  const std::unique_ptr<GEOSContextHandle_HS, decltype(&GEOS_finish_r)> context(GEOS_init_r(),
                                                                                &GEOS_finish_r);
  const qcGeosGeometry geometry = qf_ToGeos(context.get(), feature);
  if (GEOSisValid_r(context.get(), geometry.get()) == 1) return {};
  char* const reason = GEOSisValidReason_r(context.get(), geometry.get());
  std::string flaw = reason == nullptr ? "no reason given" : reason;
  GEOSFree_r(context.get(), reason);
  return flaw;
}

}  // namespace cntr::sets
