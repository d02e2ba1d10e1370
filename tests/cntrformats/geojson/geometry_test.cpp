// SPDX-License-Identifier: MIT
//
// The geometries of GeoJSON, and what is wrong with those that cannot be read.

#include <cntrformats/geojson/geometry.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "../texts.h"

using namespace formats;

namespace {

std::string geometry(const std::string& type, const std::string& coordinates) {
  return R"({"type":")" + type + R"(","coordinates":)" + coordinates + "}";
}

const std::string triangleVertices = "[[0,0],[4,0],[4,4]]";

/// The geometry of a line of GeoJSON lines that can be read.
Geometry geometryIn(const std::string& json) {
  return texts::read("geojsonl", json).features.at(0).geometry;
}

struct BadGeometry {
  const char* name;
  std::string json;
  const char* message;
};

class ABadGeometry : public testing::TestWithParam<BadGeometry> {};

TEST_P(ABadGeometry, IsNamedWithThePlace) {
  EXPECT_EQ(texts::problemOf("geojsonl", GetParam().json), GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    Each, ABadGeometry,
    testing::Values(
        BadGeometry{"OnePoint", geometry("Polygon", "[[[1,1],[1,1]]]"),
                    "outline has 1 point, but needs 3"},
        BadGeometry{"NoPoints", geometry("Polygon", "[[]]"), "outline has 0 points, but needs 3"},
        BadGeometry{"NoOutline", geometry("Polygon", "[]"), "no outline"},
        BadGeometry{"SecondHoleOfOnePoint",
                    geometry("Polygon", "[" + triangleVertices + ",[[1,1],[2,1],[2,2]],[[1,1]]]"),
                    "hole 2 has 1 point, but needs 3"},
        BadGeometry{"LineOfOnePoint", geometry("LineString", "[[1,1]]"),
                    "line has 1 point, but needs 2"},
        BadGeometry{"EmptyLine", geometry("LineString", "[]"), "line has 0 points, but needs 2"},
        BadGeometry{"TextForX", geometry("Polygon", R"([[[0,0],["one",0],[1,1]]])"),
                    R"(outline, vertex 1: x is "one", not a number)"},
        BadGeometry{"NothingForY", geometry("LineString", "[[0,0],[1,null]]"),
                    "line, vertex 1: y is null, not a number"},
        BadGeometry{"ShortPosition", geometry("LineString", "[[0,0],[1]]"),
                    "line, vertex 1: [1] is not a position [x, y]"},
        BadGeometry{"NumberForPosition", geometry("Polygon", "[[0,0,1]]"),
                    "outline, vertex 0: 0 is not a position [x, y]"},
        BadGeometry{"NumberForRing", geometry("Polygon", "[" + triangleVertices + ",5]"),
                    "hole 1: 5 is not a list"},
        BadGeometry{"NumberForCoordinates", geometry("Polygon", "5"),
                    "coordinates: 5 is not a list"},
        BadGeometry{"NumberForLine", geometry("LineString", "5"), "line: 5 is not a list"},
        BadGeometry{"NumberForPart", geometry("MultiPolygon", "[[" + triangleVertices + "],5]"),
                    "part 2, coordinates: 5 is not a list"},
        BadGeometry{"NumberForParts", geometry("MultiPolygon", "5"),
                    "coordinates: 5 is not a list"},
        BadGeometry{"PlaceInAPart",
                    geometry("MultiPolygon", "[[" + triangleVertices + "],[" + triangleVertices +
                                                 R"(,[[21,1],[22,1],[22,"2"]]]])"),
                    R"(part 2, hole 1, vertex 2: y is "2", not a number)"},
        BadGeometry{"OutlineOfAPart",
                    geometry("MultiPolygon", "[[" + triangleVertices + "],[[[1,1]]]]"),
                    "part 2, outline has 1 point, but needs 3"},
        BadGeometry{"LineInAPart", geometry("MultiLineString", "[[[0,0],[1,1]],[[2,2]]]"),
                    "part 2, line has 1 point, but needs 2"},
        BadGeometry{"NoParts", geometry("MultiPolygon", "[]"), "no coordinates"},
        BadGeometry{"EmptyParts", geometry("MultiLineString", "[[],[]]"), "no coordinates"},
        BadGeometry{"NoCoordinates", R"({"type":"Polygon"})", "coordinates: null is not a list"},
        BadGeometry{"NullForCoordinates", geometry("Polygon", "null"),
                    "coordinates: null is not a list"},
        BadGeometry{"Point", geometry("Point", "[1,2]"), "a Point has no outline"},
        BadGeometry{"Points", geometry("MultiPoint", "[[1,2]]"), "a MultiPoint has no outline"},
        BadGeometry{"NoGeometries", R"({"type":"GeometryCollection"})",
                    "a GeometryCollection has no outline"},
        BadGeometry{"EmptyCollection", R"({"type":"GeometryCollection","geometries":[]})",
                    "a GeometryCollection has no outline"},
        BadGeometry{"NumberForGeometries", R"({"type":"GeometryCollection","geometries":5})",
                    "geometries: 5 is not a list"},
        BadGeometry{"NumberForGeometry", R"({"type":"GeometryCollection","geometries":[5]})",
                    "geometry 1: 5 is not a geometry"},
        BadGeometry{"FeatureForGeometry",
                    R"({"type":"GeometryCollection","geometries":[{"type":"Feature"}]})",
                    R"(geometry 1: {"type":"Feature"} is not a geometry)"},
        BadGeometry{"TooLargeNumber", geometry("LineString", "[[0,0],[1,1e999]]"),
                    "not JSON: line 1, column 46: a number that is malformed or too large"},
        BadGeometry{"BrokenHeight", geometry("LineString", "[[0,0,nul],[1,1]]"),
                    "not JSON: line 1, column 42: a comma, a bracket or a value is missing, "
                    "wrong or too much"},
        BadGeometry{
            "DeepForeignMember",
            R"({"type":"Polygon","a":)" + std::string(300, '[') + std::string(300, ']') + "}",
            "nested too deeply"}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST(GeoJsonGeometry, ItsTypeSaysWhetherItIsClosedAndHasSeveralParts) {
  const Geometry polygon = geometryIn(geometry("Polygon", "[" + triangleVertices + "]"));
  EXPECT_TRUE(polygon.closed);
  EXPECT_FALSE(polygon.multiple);
  const Geometry polygons = geometryIn(geometry("MultiPolygon", "[[" + triangleVertices + "]]"));
  EXPECT_TRUE(polygons.closed);
  EXPECT_TRUE(polygons.multiple);
  const Geometry line = geometryIn(geometry("LineString", triangleVertices));
  EXPECT_FALSE(line.closed);
  EXPECT_FALSE(line.multiple);
  const Geometry lines = geometryIn(geometry("MultiLineString", "[" + triangleVertices + "]"));
  EXPECT_FALSE(lines.closed);
  EXPECT_TRUE(lines.multiple);
  const Geometry collection = geometryIn(R"({"type":"GeometryCollection","geometries":[)" +
                                         geometry("LineString", triangleVertices) + "]}");
  EXPECT_FALSE(collection.closed);
  EXPECT_TRUE(collection.multiple);
}

TEST(GeoJsonGeometry, EmptyLinesAmongOthersArePassedOver) {
  const Geometry lines = geometryIn(geometry("MultiLineString", "[[],[[0,0],[1,1]],[]]"));
  ASSERT_EQ(lines.parts.size(), 1);
  EXPECT_EQ(lines.parts[0].outline, (Points{{0, 0}, {1, 1}}));
}

TEST(GeoJsonGeometry, MembersOfOtherTypesMeanNothing) {
  EXPECT_EQ(
      geometryIn(R"({"type":"Polygon","geometries":5,"coordinates":[)" + triangleVertices + "]}")
          .parts.size(),
      1);
  EXPECT_EQ(geometryIn(R"({"type":"GeometryCollection","coordinates":5,"geometries":[)" +
                       geometry("Polygon", "[" + triangleVertices + "]") + "]}")
                .parts.size(),
            1);
}

TEST(GeoJsonGeometry, HeightsOfAnyKindArePassedOver) {
  EXPECT_EQ(
      geometryIn(geometry("LineString", R"([[0,0,"a"],[1,2,{"b":[3]},null]])")).parts[0].outline,
      (Points{{0, 0}, {1, 2}}));
}

}  // namespace
