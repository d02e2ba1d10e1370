// SPDX-License-Identifier: MIT
//
// Features to GEOS and back.

#include <cntrsets/geos.h>

#include <cmath>
#include <memory>
#include <string>

#include <cntr/contourdefs.h>
#include <tests/cntrsets/features.h>

namespace {

using features::box;
using features::Feature;
using features::square;

class Geos : public testing::Test {
 protected:
  GEOSContextHandle_t context() const { return context_.get(); }

  qcGeosGeometry read(const char* text) const {
    GEOSWKTReader* const reader = GEOSWKTReader_create_r(context());
    qcGeosGeometry geometry{GEOSWKTReader_read_r(context(), reader, text), {context()}};
    GEOSWKTReader_destroy_r(context(), reader);
    return geometry;
  }

 private:
  std::unique_ptr<GEOSContextHandle_HS, decltype(&GEOS_finish_r)> context_{GEOS_init_r(),
                                                                           &GEOS_finish_r};
};

TEST_F(Geos, GivesBackWhatItWasGiven) {
  const Feature feature{{square, {box(2, 2, 4, 4), box(5, 5, 6, 6)}},
                        {box(0.1, 20, 1e300, 30), {}}};
  const qcGeosGeometry geometry = qf_ToGeos(context(), feature);
  EXPECT_EQ(GEOSGeomTypeId_r(context(), geometry.get()), GEOS_MULTIPOLYGON);
  EXPECT_EQ(GEOSGeom_getCoordinateDimension_r(context(), geometry.get()), 2);
  EXPECT_EQ(qf_FromGeos(context(), geometry.get()), feature);
}

TEST_F(Geos, MakesAnEmptyGeometryOfAnEmptyFeature) {
  const qcGeosGeometry geometry = qf_ToGeos(context(), {});
  EXPECT_EQ(GEOSisEmpty_r(context(), geometry.get()), 1);
  EXPECT_EQ(qf_FromGeos(context(), geometry.get()), Feature{});
}

TEST_F(Geos, RepairsNothing) {
  const Feature bowTie{{features::bowTie, {}}};
  EXPECT_EQ(qf_FromGeos(context(), qf_ToGeos(context(), bowTie).get()), bowTie);
}

TEST_F(Geos, ReadsPolygonsInCollections) {
  const qcGeosGeometry geometry = read(
      "GEOMETRYCOLLECTION(POLYGON((0 0,10 0,10 10,0 10,0 0)),POLYGON EMPTY,"
      "MULTIPOLYGON(((2 2,4 2,4 4,2 4,2 2))))");
  EXPECT_EQ(qf_FromGeos(context(), geometry.get()), (Feature{{square, {}}, {box(2, 2, 4, 4), {}}}));
}

TEST_F(Geos, LeavesThirdCoordinatesOut) {
  const qcGeosGeometry geometry = read("POLYGON Z((0 0 1,10 0 2,10 10 3,0 10 4,0 0 1))");
  EXPECT_EQ(qf_FromGeos(context(), geometry.get()), (Feature{{square, {}}}));
}

TEST_F(Geos, SaysWhenGeosRefusesARing) {
  // A ring whose first vertex is no number does not end where it begins.
  for (const Feature& feature : {Feature{{{{std::nan(""), 0}, {4, 0}, {0, 4}}, {}}},
                                 Feature{{square, {{{std::nan(""), 0}, {4, 0}, {0, 4}}}}}}) {
    try {
      qf_ToGeos(context(), feature);
      FAIL() << "not refused";
    } catch (const qcContourDefs::BadParams& error) {
      EXPECT_EQ(error.message(), L"GEOS refuses the outlines");
    }
  }
}

TEST_F(Geos, RefusesOtherGeometries) {
  const qcGeosGeometry line = read("GEOMETRYCOLLECTION(LINESTRING(0 0,1 1))");
  try {
    qf_FromGeos(context(), line.get());
    FAIL() << "not refused";
  } catch (const qcContourDefs::BadParams& error) {
    EXPECT_EQ(error.message(), L"the geometry is not made of polygons alone");
  }
}

TEST_F(Geos, RefusesRingsOfFewerThanThreeVertices) {
  for (const Feature& feature : {Feature{{{{0, 0}, {1, 1}}, {}}}, Feature{{square, {{}}}}}) {
    try {
      qf_ToGeos(context(), feature);
      FAIL() << "not refused";
    } catch (const qcContourDefs::BadParams& error) {
      EXPECT_EQ(error.message(), L"a ring has fewer than 3 vertices");
    }
  }
}

TEST(FlawOf, TellsWhyAFeatureIsNotValid) {
  EXPECT_EQ(cntr::sets::flawOf({{square, {}}}), "");
  EXPECT_EQ(cntr::sets::flawOf({{{{0, 0}, {4, 4}, {4, 0}, {0, 4}}, {}}}), "Self-intersection[2 2]");
}

}  // namespace
