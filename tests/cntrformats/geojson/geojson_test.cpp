// SPDX-License-Identifier: MIT
//
// GeoJSON documents and lines: what is read, and what is written.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <cntrformats/geojson/feature.h>

#include "../texts.h"

using namespace formats;
using testing::ElementsAre;

namespace {

using Json = nlohmann::ordered_json;

const std::string boundedTriangle =
    R"({"type":"Polygon","coordinates":[[[0,0],[0,2],[2,0],[0,0]]],"bbox":[0,0,2,2]})";

std::string feature(const std::string& members) {
  return R"({"type":"Feature",)" + members + R"("properties":{"label":3,"k":[1]},"geometry":)" +
         boundedTriangle + "}";
}

std::string collection(const std::string& features, const std::string& after = "") {
  return R"({"type":"FeatureCollection","name":"a","features":[)" + features + "]" + after + "}";
}

}  // namespace

TEST(GeoJsonReader, HandsOverFeaturesAndMembers) {
  const auto found = texts::read(
      "geojson", collection(feature(R"("id":5,)") + "," + boundedTriangle, R"(,"licence":"CC0")"));
  ASSERT_EQ(found.features.size(), 2);
  EXPECT_EQ(found.features[0].label, Label(3UL));
  EXPECT_EQ(found.features[0].id, "5");
  EXPECT_EQ(found.features[1].number, 2);
  EXPECT_EQ(found.features[1].geometry.parts[0].outline.size(), 3);
  ASSERT_EQ(found.members.size(), 3);
  EXPECT_EQ(*valueOf(found.members, "type"), R"("FeatureCollection")");
  EXPECT_EQ(*valueOf(found.members, "name"), R"("a")");
  EXPECT_EQ(*valueOf(found.members, "licence"), R"("CC0")");
  EXPECT_FALSE(found.places[0].isLone);
  EXPECT_TRUE(texts::read("geojson", boundedTriangle).places[0].isLone);
}

TEST(GeoJsonReader, KeepsTheSourceOnRequestOnly) {
  const std::string bad = R"({"type":"Point","coordinates":[1,2]})";
  for (const char* format : {"geojson", "geojsonl"}) {
    const std::string text = format == std::string("geojson") ? collection(feature("") + "," + bad)
                                                              : feature("") + "\n" + bad + "\n";
    const auto plain = texts::read(format, text);
    EXPECT_EQ(plain.features.at(0).text, "");
    EXPECT_EQ(plain.unreadable.at(0).text, "");
    const auto kept = texts::read(format, text, Keep::eSourceToo);
    EXPECT_EQ(kept.features.at(0).text, feature(""));
    EXPECT_EQ(kept.unreadable.at(0).text, bad);
    EXPECT_THAT(kept.complaints, ElementsAre("2: a Point has no outline"));
  }
}

TEST(GeoJsonReader, KeepsALabelThatIsText) {
  const std::string text = R"({"type":"Feature","properties":{"label":"nut \u00e9"},"geometry":)" +
                           boundedTriangle + "}";
  const auto found = texts::read("geojsonl", text);
  EXPECT_EQ(found.features.at(0).label, Label("nut \u00e9"));
  EXPECT_EQ(texts::written("geojsonl", found.features),
            R"({"type":"Feature","properties":{"label":"nut é"},"geometry":{"type":"Polygon",)"
            R"("coordinates":[[[0,0],[2,0],[0,2],[0,0]]]}})"
            "\n");
}

TEST(GeoJsonReader, AFeatureWithAProblemHasWhatWasReadBeforeIt) {
  const auto found = texts::read(
      "geojsonl", R"({"type":"Feature","id":"a","properties":{"label":3},"geometry":null})");
  ASSERT_EQ(found.unreadable.size(), 1);
  EXPECT_EQ(found.unreadable[0].problem, "no geometry");
  EXPECT_EQ(found.unreadable[0].label, Label(3UL));
  EXPECT_EQ(found.unreadable[0].id, "a");
  EXPECT_TRUE(found.unreadable[0].geometry.parts.empty());
}

TEST(GeoJsonReader, RefusesWhatIsNoGeoJson) {
  EXPECT_EQ(texts::flawOf("geojson", " \n"), "nothing in it");
  EXPECT_EQ(texts::flawOf("geojson", "{}"),
            "not GeoJSON: neither a FeatureCollection, nor a Feature, nor a geometry");
  EXPECT_EQ(texts::flawOf("geojson", "[1]"),
            "not GeoJSON: neither a FeatureCollection, nor a Feature, nor a geometry");
  EXPECT_EQ(texts::flawOf("geojson", R"({"features":[]})"),
            "not GeoJSON: neither a FeatureCollection, nor a Feature, nor a geometry");
  EXPECT_EQ(texts::flawOf("geojson", collection("", ",\"a\":" + std::string(300, '[') +
                                                        std::string(300, ']'))),
            "nested too deeply");
  EXPECT_EQ(texts::flawOf("geojsonl", "\n\n"), "nothing in it");
}

TEST(GeoJsonLinesReader, CountsLinesAndRecords) {
  const auto lines = texts::read("geojsonl", "\n" + boundedTriangle + "\r\n\n" + boundedTriangle);
  ASSERT_EQ(lines.places.size(), 2);
  EXPECT_EQ(lines.places[1].line, 4);
  EXPECT_EQ(lines.places[1].number, 2);
  const auto records =
      texts::read("geojsonl", "\x1e" + boundedTriangle + "\n\x1e\n" + boundedTriangle + "\n");
  ASSERT_EQ(records.features.size(), 2);
  EXPECT_THAT(texts::read("geojsonl", "{\n").complaints,
              ElementsAre("1: not JSON: line 1, column 1: a bracket is not closed"));
  EXPECT_THAT(texts::read("geojsonl", collection(boundedTriangle)).complaints,
              ElementsAre("1: a whole FeatureCollection, which is no line of GeoJSON lines"));
}

TEST(GeoJsonWriter, ClosesAndTurnsRings) {
  Feature feature = texts::outline({{0, 0}, {0, 2}, {2, 0}});
  feature.label = 4UL;
  feature.id = "b";
  EXPECT_EQ(texts::written("geojsonl", {feature}),
            R"({"type":"Feature","id":"b","properties":{"label":4},"geometry":{"type":"Polygon",)"
            R"("coordinates":[[[0,0],[2,0],[0,2],[0,0]]]}})"
            "\n");
}

TEST(GeoJsonWriter, ADocumentHasAFeatureToALine) {
  const Feature lone = texts::read("geojson", boundedTriangle, Keep::eSourceToo).features[0];
  EXPECT_EQ(texts::written("geojson", {lone, lone}, Rings::eAsTheyWere),
            "{\n\"type\": \"FeatureCollection\",\n\"features\": [\n" + boundedTriangle + ",\n" +
                boundedTriangle + "\n]\n}\n");
  EXPECT_EQ(texts::written("geojson", {}),
            "{\n\"type\": \"FeatureCollection\",\n\"features\": [\n]\n}\n");
}

TEST(GeoJsonWriter, WhatWasReadIsWrittenWithAllThatIsInIt) {
  const std::string text = feature(R"("id":5,"bbox":[0,0,2,2],)");
  const auto found = texts::read("geojsonl", text, Keep::eSourceToo);
  EXPECT_EQ(texts::written("geojsonl", found.features, Rings::eAsTheyWere), text + "\n");
  EXPECT_EQ(toJson(found.features[0], Rings::eAsGeoJsonWants),
            text.substr(0, text.find("[[[")) + "[[[0,0],[2,0],[0,2],[0,0]]]" +
                text.substr(text.find("]]]") + 3));
}

TEST(GeoJsonReader, CollectionsPassOverEmptyGeometries) {
  const std::string empty = R"({"type":"Polygon","coordinates":[]})";
  const auto found = texts::read("geojsonl", R"({"type":"GeometryCollection","geometries":[)" +
                                                 empty + "," + boundedTriangle +
                                                 R"(,{"type":"MultiPolygon","coordinates":[[]]}]})"
                                                 "\n"
                                                 R"({"type":"GeometryCollection","geometries":[)" +
                                                 empty + "]}");
  ASSERT_EQ(found.features.size(), 1);
  EXPECT_EQ(found.features[0].geometry.parts.size(), 1);
  EXPECT_THAT(found.complaints, ElementsAre("2: no coordinates"));
}

TEST(GeoJsonReader, CollectionsOfGeometriesAreOneFeature) {
  const auto found = texts::read(
      "geojsonl",
      R"({"type":"GeometryCollection","geometries":[)" + boundedTriangle +
          R"(,{"type":"MultiPolygon","coordinates":[[],[[[5,5],[6,5],[6,6]]]]}]})"
          "\n"
          R"({"type":"GeometryCollection","geometries":[)" +
          boundedTriangle +
          R"(,{"type":"LineString","coordinates":[[0,0],[1,1]]}]})"
          "\n"
          R"({"type":"GeometryCollection","geometries":[{"type":"Point","coordinates":[0,0]}]})");
  ASSERT_EQ(found.features.size(), 1);
  EXPECT_TRUE(found.features[0].geometry.multiple);
  ASSERT_EQ(found.features[0].geometry.parts.size(), 2) << "empty members are passed over";
  EXPECT_EQ(found.features[0].geometry.parts[1].outline, (Points{{5, 5}, {6, 5}, {6, 6}}));
  EXPECT_THAT(found.complaints,
              ElementsAre("2: geometry 2: outlines and lines together are no single shape",
                          "3: geometry 1: a Point has no outline"));
}

TEST(GeoJsonReader, MembersMayComeInAnyOrder) {
  const auto found = texts::read(
      "geojson",
      R"({"geometry":{"coordinates":[[0,0],[1,1]],"type":"LineString"},"properties":{"edgelets":)"
      R"([[1,2],[3,4]],"label":5},"id":"a","type":"Feature"})");
  ASSERT_EQ(found.features.size(), 1);
  EXPECT_EQ(found.features[0].label, Label(5UL));
  EXPECT_EQ(found.features[0].id, "a");
  ASSERT_EQ(found.features[0].geometry.edgelets.size(), 1);
  EXPECT_EQ(found.features[0].geometry.edgelets[0][1].magnitude(), 3);
}

TEST(GeoJsonWriter, NumbersOfPropertiesAreWrittenAsTheyWere) {
  const std::string text =
      R"({"type":"Feature","id":12345678901234567890123,"properties":{"n":-0.10e+1,"m":1.0},)"
      R"("geometry":{"type":"Polygon","coordinates":[[[0.0,0,7],[2.50,0],[0,2e0]]]}})";
  const auto found = texts::read("geojsonl", text, Keep::eSourceToo);
  ASSERT_EQ(found.features.size(), 1);
  EXPECT_EQ(found.features[0].id, "12345678901234567890123");
  EXPECT_EQ(texts::written("geojsonl", found.features),
            text.substr(0, text.find("]]]")) + "],[0.0,0,7]]]}}\n");
}

TEST(GeoJsonFeature, NewOutlinesReplaceWhatDescribedTheOldOnes) {
  const Geometry square{true, false, {{texts::square(1), {}}}};
  const Json coordinates = Json::parse("[[[0.0,0.0],[1.0,0.0],[1.0,1.0],[0.0,1.0],[0.0,0.0]]]");
  std::string text = feature(R"("bbox":[0,0,2,2],)");
  text.replace(text.find("\"k\":[1]"), 7, "\"k\":[1],\"edgelets\":[[1,2],[3,4],[5,6]]");
  Feature whole = texts::read("geojson", text, Keep::eSourceToo).features.at(0);
  EXPECT_EQ(whole.geometry.edgelets.size(), 1);
  replaceGeometry(whole, square);
  EXPECT_EQ(whole.geometry.parts[0].outline, texts::square(1));
  EXPECT_TRUE(whole.geometry.edgelets.empty());
  EXPECT_EQ(Json::parse(whole.text),
            (Json{{"type", "Feature"},
                  {"properties", {{"label", 3}, {"k", {1}}}},
                  {"geometry", {{"type", "Polygon"}, {"coordinates", coordinates}}}}));

  Feature bare = texts::read("geojson", boundedTriangle, Keep::eSourceToo).features.at(0);
  replaceGeometry(bare, square);
  EXPECT_EQ(Json::parse(bare.text), (Json{{"type", "Polygon"}, {"coordinates", coordinates}}));

  Feature sourceless = texts::read("geojson", boundedTriangle).features.at(0);
  replaceGeometry(sourceless, square);
  EXPECT_EQ(sourceless.text, "");
}
