// SPDX-License-Identifier: MIT
//
// Features as GeoJSON: new ones, those that were read, and those with new outlines.

#include <gtest/gtest.h>

#include <cntrformats/geojson/feature.h>

#include "../texts.h"

using namespace formats;

namespace {

/// A triangle that runs in the direction in which GeoJSON wants outlines, and the same reversed.
const std::string left = "[[0,0],[9,0],[0,9],[0,0]]";
const std::string right = "[[0,0],[0,9],[9,0],[0,0]]";

std::string polygon(const std::string& rings) {
  return R"({"type":"Polygon","coordinates":[)" + rings + "]}";
}

std::string feature(const std::string& properties, const std::string& geometry) {
  return R"({"type":"Feature","properties":)" + properties + R"(,"geometry":)" + geometry + "}";
}

Feature readAs(const std::string& json) {
  return texts::read("geojsonl", json, Keep::eSourceToo).features.at(0);
}

/// The JSON after it has been read, and written as GeoJSON wants it.
std::string tidied(const std::string& json) { return toJson(readAs(json), Rings::eAsGeoJsonWants); }

/// The JSON after its geometry has been replaced.
std::string replaced(const std::string& json, const Geometry& geometry) {
  Feature changed = readAs(json);
  replaceGeometry(changed, geometry);
  return changed.text;
}

std::string written(const Geometry& geometry) {
  Feature made;
  made.geometry = geometry;
  return toJson(made, Rings::eAsGeoJsonWants);
}

const Points leftTriangle{{0, 0}, {9, 0}, {0, 9}};
const Points rightTriangle{{0, 0}, {0, 9}, {9, 0}};
const Geometry simple{true, false, {{leftTriangle, {}}}};

/// A triangle with edge elements.
Geometry withEdgelets(const Points& points, bool closed = true) {
  Geometry geometry{closed, false, {{points, {}}}, {{}}};
  for (const auto& point : points) {
    const auto number = static_cast<unsigned short>(geometry.edgelets[0].size() + 1);
    geometry.edgelets[0].emplace_back(point, number, qcAngle8(7));
  }
  return geometry;
}

}  // namespace

TEST(NewGeoJson, HolesRunAgainstTheirOutline) {
  const Points hole{{1, 1}, {2, 1}, {1, 2}};
  const Points turnedHole{{1, 1}, {1, 2}, {2, 1}};
  const std::string expected =
      feature("{}", polygon(left + ",[[1,1],[1,2],[2,1],[1,1]],[[1,1],[1,2],[2,1],[1,1]]"));
  EXPECT_EQ(written({true, false, {{leftTriangle, {hole, turnedHole}}}}), expected);
  EXPECT_EQ(written({true, false, {{rightTriangle, {hole, turnedHole}}}}), expected);
}

TEST(NewGeoJson, RingsWithoutAreaStayAsTheyAre) {
  const Points flat{{0, 0}, {1, 0}, {2, 0}};
  const std::string ring = "[[0,0],[1,0],[2,0],[0,0]]";
  EXPECT_EQ(written({true, false, {{flat, {flat}}}}), feature("{}", polygon(ring + "," + ring)));
}

TEST(NewGeoJson, TheTypeSaysWhetherThereAreSeveralParts) {
  EXPECT_EQ(written({true, true, {{leftTriangle, {}}}}),
            feature("{}", R"({"type":"MultiPolygon","coordinates":[[)" + left + "]]}"));
  EXPECT_EQ(
      written({true, false, {{leftTriangle, {}}, {leftTriangle, {}}}}),
      feature("{}", R"({"type":"MultiPolygon","coordinates":[[)" + left + "],[" + left + "]]}"));
  const Points line{{0, 0}, {0, 9}, {9, 0}};
  EXPECT_EQ(written({false, false, {{line, {}}}}),
            feature("{}", R"({"type":"LineString","coordinates":[[0,0],[0,9],[9,0]]})"))
      << "lines are not turned";
  EXPECT_EQ(written({false, true, {{line, {}}}}),
            feature("{}", R"({"type":"MultiLineString","coordinates":[[[0,0],[0,9],[9,0]]]})"));
}

TEST(NewGeoJson, EdgeElementsStayWithTheirVertices) {
  EXPECT_EQ(written(withEdgelets(leftTriangle)),
            feature(R"({"edgelets":[[1,7],[2,7],[3,7]]})", polygon(left)));
  EXPECT_EQ(written(withEdgelets(rightTriangle)),
            feature(R"({"edgelets":[[1,7],[3,7],[2,7]]})", polygon(left)));
  EXPECT_EQ(written(withEdgelets(rightTriangle, false)),
            feature(R"({"edgelets":[[1,7],[2,7],[3,7]]})",
                    R"({"type":"LineString","coordinates":[[0,0],[0,9],[9,0]]})"));
}

TEST(NewGeoJson, EdgeElementsOfSeveralPartsAreNotWritten) {
  Geometry geometry = withEdgelets(leftTriangle);
  geometry.parts.push_back(geometry.parts[0]);
  geometry.edgelets.push_back(geometry.edgelets[0]);
  EXPECT_EQ(written(geometry).find("edgelets"), std::string::npos);
}

TEST(NewGeoJson, AnEmptyListOfEdgeElementsIsNotWritten) {
  const Geometry geometry{true, false, {{leftTriangle, {}}}, {{}}};
  EXPECT_EQ(written(geometry), feature("{}", polygon(left)));
  EXPECT_EQ(replaced(feature(R"({"edgelets":[[1,2],[3,4],[5,6]]})", polygon(right)), geometry),
            feature("{}", polygon(left)));
}

TEST(NewGeoJson, ALabelComesBeforeTheEdgeElements) {
  Feature made;
  made.label = 5UL;
  made.geometry = withEdgelets(leftTriangle);
  EXPECT_EQ(toJson(made, Rings::eAsTheyWere),
            feature(R"({"label":5,"edgelets":[[1,7],[2,7],[3,7]]})", polygon(left)));
}

TEST(TidiedGeoJson, IsClosedAndTurnedWhereverTheRingsAre) {
  const std::string open = "[[0,0],[0,9],[9,0]]";
  EXPECT_EQ(tidied(polygon(open)), polygon(left)) << "a bare geometry";
  EXPECT_EQ(tidied(feature("null", polygon(right))), feature("null", polygon(left)));
  EXPECT_EQ(tidied(polygon(right + ",[[1,1],[2,1],[1,2],[1,1]],[[2,2],[2,3],[3,2]]")),
            polygon(left + ",[[1,1],[1,2],[2,1],[1,1]],[[2,2],[2,3],[3,2],[2,2]]"));
  EXPECT_EQ(tidied(R"({"type":"MultiPolygon","coordinates":[[],[)" + left + "],[" + right +
                   ",[[1,1],[2,1],[1,2]]]]}"),
            R"({"type":"MultiPolygon","coordinates":[[],[)" + left + "],[" + left +
                ",[[1,1],[1,2],[2,1],[1,1]]]]}");
  EXPECT_EQ(
      tidied(R"({"type":"GeometryCollection","geometries":[)" + polygon(left) + "," + polygon("") +
             R"(,{"type":"MultiPolygon","coordinates":[[)" + right + "]]}," + polygon(open) + "]}"),
      R"({"type":"GeometryCollection","geometries":[)" + polygon(left) + "," + polygon("") +
          R"(,{"type":"MultiPolygon","coordinates":[[)" + left + "]]}," + polygon(left) + "]}");
}

TEST(TidiedGeoJson, KeepsTheBlanksOfWhatIsRight) {
  const std::string line = R"({"type":"LineString", "coordinates":[ [0,0],[0,9],[9,0]]})";
  for (const std::string& json :
       {polygon("[[0, 0], [9,0],\t[0,9], [0,0] ]"), polygon("[ [0,0],[1,0],[2,0], [0,0]]"), line,
        feature(R"({"edgelets": [ [1,2],[3,4],[5,6] ] })", polygon(left))}) {
    EXPECT_EQ(tidied(json), json);
  }
}

TEST(TidiedGeoJson, IsLeftAloneWhenRingsAreToStayAsTheyWere) {
  const std::string json = feature(R"({"edgelets":[[1,2],[3,4],[5,6]]})", polygon(right));
  EXPECT_EQ(toJson(readAs(json), Rings::eAsTheyWere), json);
}

TEST(TidiedGeoJson, TurnsEdgeElementsWithTheirRing) {
  EXPECT_EQ(tidied(feature(R"({"a":1,"edgelets":[[1, 2],[3,4],[5,6]],"b":2})", polygon(right))),
            feature(R"({"a":1,"edgelets":[[1, 2],[5,6],[3,4]],"b":2})", polygon(left)));
  EXPECT_EQ(tidied(R"({"type":"Feature","geometry":)" + polygon(right) +
                   R"(,"properties":{"edgelets":[[1,2],[3,4],[5,6]]}})"),
            R"({"type":"Feature","geometry":)" + polygon(left) +
                R"(,"properties":{"edgelets":[[1,2],[5,6],[3,4]]}})");
}

TEST(TidiedGeoJson, OfMembersWithTheSameNameTheLastIsTheOneThatWasRead) {
  const std::string others = R"("geometry":)" + polygon(right + "," + left) + R"(,"geometry":)";
  EXPECT_EQ(tidied(R"({"type":"Feature",)" + others + polygon(right) + "}"),
            R"({"type":"Feature",)" + others + polygon(left) + "}");
  const std::string coordinates =
      R"({"type":"Polygon","coordinates":[)" + right + "," + left + R"(],"coordinates":[)";
  EXPECT_EQ(tidied(coordinates + right + "]}"), coordinates + left + "]}");
  const std::string edgelets = R"({"edgelets":5,"edgelets":)";
  EXPECT_EQ(tidied(feature(edgelets + "[[1,2],[3,4],[5,6]]}", polygon(right))),
            feature(edgelets + "[[1,2],[5,6],[3,4]]}", polygon(left)));
  EXPECT_EQ(tidied(R"({"type":"Feature","properties":{"edgelets":[[1,2],[3,4],[5,6]]},)"
                   R"("properties":{},"geometry":)" +
                   polygon(right) + "}"),
            R"({"type":"Feature","properties":{"edgelets":[[1,2],[5,6],[3,4]]},)"
            R"("properties":{},"geometry":)" +
                polygon(left) + "}");
}

TEST(TidiedGeoJson, EdgeElementsThatWereNotReadStayAsTheyAre) {
  const std::string others = R"({"type":"Feature","properties":{"edgelets":null},"properties":)";
  EXPECT_EQ(
      tidied(others + R"({"edgelets":[[1,2],[3,4],[5,6]]},"geometry":)" + polygon(right) + "}"),
      others + R"({"edgelets":[[1,2],[5,6],[3,4]]},"geometry":)" + polygon(left) + "}");
}

TEST(TidiedGeoJson, NamesMayBeEscaped) {
  EXPECT_EQ(tidied(R"({"type":"Feature","propert\u0069es":{"edgelet\u0073":[[1,2],[3,4],[5,6]]},)"
                   R"("ge\u006fmetry":{"type":"Polygon","c\u006fordinates":[)" +
                   right + "]}}"),
            R"({"type":"Feature","propert\u0069es":{"edgelet\u0073":[[1,2],[5,6],[3,4]]},)"
            R"("ge\u006fmetry":{"type":"Polygon","c\u006fordinates":[)" +
                left + "]}}");
}

TEST(ReplacedGeoJson, NamesMayBeEscaped) {
  EXPECT_EQ(replaced(R"({"type":"Feature","b\u0062ox":[0,0,9,9],"a\"b":1,"propert\u0069es":)"
                     R"({"edgelet\u0073":[[1,2],[3,4],[5,6]],"c\\":2},"ge\u006fmetry":)"
                     R"({"type":"Polygon","c\u006fordinates":[)" +
                         right + "]}}",
                     simple),
            R"({"type":"Feature","a\"b":1,"propert\u0069es":{"c\\":2},"ge\u006fmetry":)" +
                polygon(left) + "}");
}

TEST(ReplacedGeoJson, KeepsOtherMembersOfTheGeometry) {
  EXPECT_EQ(replaced(R"({"bbox":[0,0,1,1],"type":"MultiPolygon","crs":{"a": 1},"coordinates":[[)" +
                         right + R"(]],"note":"b"})",
                     simple),
            R"({"type":"Polygon","crs":{"a": 1},"note":"b","coordinates":[)" + left + "]}");
  EXPECT_EQ(
      replaced(R"({"type":"GeometryCollection","geometries":[)" + polygon(right) + "]}", simple),
      polygon(left));
}

TEST(ReplacedGeoJson, KeepsTheTextOfPropertiesWithoutEdgeElements) {
  const std::string properties = R"({ "label": 1, "a" : [ 2 ] })";
  EXPECT_EQ(replaced(feature(properties, polygon(right)), simple),
            feature(properties, polygon(left)));
  EXPECT_EQ(replaced(feature("null", polygon(right)), simple), feature("null", polygon(left)));
}

TEST(ReplacedGeoJson, HasTheEdgeElementsOfTheNewOutlineAlone) {
  const std::string old = R"("edgelets":[[1,2],[3,4],[5,6]])";
  EXPECT_EQ(replaced(feature("{" + old + "}", polygon(right)), simple),
            feature("{}", polygon(left)));
  EXPECT_EQ(replaced(feature(R"({"a":1,)" + old + R"(,"b":2})", polygon(right)), simple),
            feature(R"({"a":1,"b":2})", polygon(left)));
  const Geometry geometry = withEdgelets(rightTriangle);
  const std::string now = R"("edgelets":[[1,7],[3,7],[2,7]])";
  for (const std::string& properties : {std::string("null"), std::string("{}"), "{" + old + "}"}) {
    EXPECT_EQ(replaced(feature(properties, polygon(right)), geometry),
              feature("{" + now + "}", polygon(left)));
  }
  EXPECT_EQ(replaced(feature(R"({"a":1,)" + old + R"(,"b":2})", polygon(right)), geometry),
            feature(R"({"a":1,"b":2,)" + now + "}", polygon(left)));
}

TEST(ReplacedGeoJson, HasNoBoxOfTheOldOutline) {
  EXPECT_EQ(
      replaced(R"({"bbox":[0,0,9,9],"type":"Feature", "id":1,"properties":{"bbox":2},)"
               R"("geometry":)" +
                   polygon(right) + "}",
               simple),
      R"({"type":"Feature","id":1,"properties":{"bbox":2},"geometry":)" + polygon(left) + "}");
}
