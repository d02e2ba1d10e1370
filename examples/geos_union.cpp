// SPDX-License-Identifier: MIT
//
// The union of a region set, computed by GEOS: regions with holes become its polygons, and its
// result becomes regions with holes again. docs/union.md tells when this is needed.

#include <cstdlib>
#include <exception>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <vector>

#include <cntr/regionst.h>
#include <geos_c.h>

namespace {

using Points = std::vector<qcVector<2>>;
using Region = qcPtrHandle_const<qcRegion>;

constexpr auto asGiven = qcContourDefs::eNoIntersectionRepair;

/// A GEOS context: one for each thread.
class Geos {
 public:
  Geos() : context_(GEOS_init_r()) {}
  Geos(const Geos&) = delete;
  Geos& operator=(const Geos&) = delete;
  ~Geos() { GEOS_finish_r(context_); }

  qcRegionSet unionOf(const qcRegionSet& set) const {
    std::vector<GEOSGeometry*> polygons;
    for (const Region& region : set.regions()) polygons.push_back(polygonOf(*region));
    const Geometry all = owned(GEOSGeom_createCollection_r(
        context_, GEOS_MULTIPOLYGON, polygons.data(), static_cast<unsigned>(polygons.size())));
    const Geometry merged = owned(GEOSUnaryUnion_r(context_, all.get()));
    std::vector<Region> regions;
    const int count = GEOSGetNumGeometries_r(context_, merged.get());
    for (int i = 0; i < count; ++i) {
      regions.push_back(regionOf(GEOSGetGeometryN_r(context_, merged.get(), i)));
    }
    return {regions, asGiven};
  }

 private:
  struct Destroy {
    GEOSContextHandle_t context;
    void operator()(GEOSGeometry* geometry) const { GEOSGeom_destroy_r(context, geometry); }
  };
  using Geometry = std::unique_ptr<GEOSGeometry, Destroy>;

  Geometry owned(GEOSGeometry* geometry) const {
    if (geometry == nullptr) throw std::runtime_error("GEOS refuses the operation");
    return Geometry(geometry, Destroy{context_});
  }

  /// GEOS repeats the first vertex at the end, the library does not.
  GEOSGeometry* ringOf(Points points) const {
    points.push_back(points.front());
    std::vector<double> xy;
    for (const qcVector<2>& point : points) xy.insert(xy.end(), {point.x(), point.y()});
    const auto size = static_cast<unsigned>(points.size());
    return owned(GEOSGeom_createLinearRing_r(
                     context_, GEOSCoordSeq_copyFromBuffer_r(context_, xy.data(), size, 0, 0)))
        .release();
  }

  GEOSGeometry* polygonOf(const qcRegion& region) const {
    std::vector<GEOSGeometry*> holes;
    for (const Region& hole : region.holes()) holes.push_back(ringOf(hole->points()));
    return GEOSGeom_createPolygon_r(context_, ringOf(region.points()), holes.data(),
                                    static_cast<unsigned>(holes.size()));
  }

  Points pointsOf(const GEOSGeometry* ring) const {
    const GEOSCoordSequence* const sequence = GEOSGeom_getCoordSeq_r(context_, ring);
    unsigned size = 0;
    GEOSCoordSeq_getSize_r(context_, sequence, &size);
    Points points;
    for (unsigned i = 0; i + 1 < size; ++i) {
      double x = 0.0;
      double y = 0.0;
      GEOSCoordSeq_getXY_r(context_, sequence, i, &x, &y);
      points.emplace_back(x, y);
    }
    return points;
  }

  Region regionOf(const GEOSGeometry* polygon) const {
    const GEOSGeometry* const outline = GEOSGetExteriorRing_r(context_, polygon);
    const qcPtrHandle<qcRegion> region(new qcRegion(pointsOf(outline), asGiven));
    std::vector<Region> holes;
    for (int i = 0; i < GEOSGetNumInteriorRings_r(context_, polygon); ++i) {
      const GEOSGeometry* const hole = GEOSGetInteriorRingN_r(context_, polygon, i);
      holes.emplace_back(new qcRegion(pointsOf(hole), asGiven));
    }
    region->holes(holes);
    return region;
  }

  GEOSContextHandle_t context_;
};

Region rectangle(double x, double y, double width, double height) {
  const Points corners{{x, y}, {x + width, y}, {x + width, y + height}, {x, y + height}};
  return Region(new qcRegion(corners, asGiven));
}

}  // namespace

int main() try {
  // Four bars that overlap at the corners and leave an opening in the middle.
  const std::vector<Region> bars{rectangle(0, 0, 10, 2), rectangle(0, 8, 10, 2),
                                 rectangle(0, 0, 2, 10), rectangle(8, 0, 2, 10)};
  const qcRegionSet frame = Geos().unionOf(qcRegionSet(bars, asGiven));
  for (const Region& region : frame.regions()) {
    std::cout << "area " << region->area(true) << ", holes: " << region->holes().size() << '\n';
  }
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return EXIT_FAILURE;
}
