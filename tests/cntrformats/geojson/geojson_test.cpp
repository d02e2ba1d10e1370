// SPDX-License-Identifier: MIT
//
// GeoJSON documents and lines: what is read, and what is written.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cntrformats/geojson/feature.h>

#include "../texts.h"

using namespace formats;
using testing::ElementsAre;

namespace {

const std::string triangle =
    R"({"type":"Polygon","coordinates":[[[0,0],[0,2],[2,0],[0,0]]],"bbox":[0,0,2,2]})";

std::string feature(const std::string& members) {
  return R"({"type":"Feature",)" + members + R"("properties":{"label":3,"k":[1]},"geometry":)" +
         triangle + "}";
}

std::string collection(const std::string& features, const std::string& after = "") {
  return R"({"type":"FeatureCollection","name":"a","features":[)" + features + "]" + after + "}";
}

}  // namespace

TEST(GeoJsonReader, HandsOverFeaturesAndMembers) {
  const auto found = texts::read(
      "geojson", collection(feature(R"("id":5,)") + "," + triangle, R"(,"licence":"CC0")"));
  ASSERT_EQ(found.features.size(), 2);
  EXPECT_EQ(found.features[0].label, 3U);
  EXPECT_EQ(found.features[0].id, "5");
  EXPECT_EQ(found.features[1].number, 2);
  EXPECT_EQ(found.features[1].geometry.parts[0].outline.size(), 3);
  EXPECT_EQ(found.members,
            (Json{{"type", "FeatureCollection"}, {"name", "a"}, {"licence", "CC0"}}));
  EXPECT_FALSE(found.places[0].isLone);
  EXPECT_TRUE(texts::read("geojson", triangle).places[0].isLone);
}

TEST(GeoJsonReader, KeepsTheSourceOnRequestOnly) {
  const std::string bad = R"({"type":"Point","coordinates":[1,2]})";
  for (const char* format : {"geojson", "geojsonl"}) {
    const std::string text = format == std::string("geojson") ? collection(feature("") + "," + bad)
                                                              : feature("") + "\n" + bad + "\n";
    const auto plain = texts::read(format, text);
    EXPECT_TRUE(plain.features.at(0).source.is_null());
    EXPECT_TRUE(plain.unreadable.at(0).is_null());
    const auto kept = texts::read(format, text, Keep::eSourceToo);
    EXPECT_EQ(kept.features.at(0).source, Json::parse(feature("")));
    EXPECT_EQ(kept.unreadable.at(0), Json::parse(bad));
    EXPECT_THAT(kept.complaints, ElementsAre("2: a Point has no outline"));
  }
}

TEST(GeoJsonReader, RefusesWhatIsNoGeoJson) {
  EXPECT_EQ(texts::flawOf("geojson", " \n"), "nothing in it");
  EXPECT_EQ(texts::flawOf("geojson", "{}"),
            "not GeoJSON: neither a FeatureCollection, nor a Feature, nor a geometry");
  EXPECT_EQ(texts::flawOf("geojson", collection("")),
            "nothing in it: the collection has no features");
  EXPECT_EQ(texts::flawOf("geojson", std::string(300, '[')), "nested too deeply");
  EXPECT_EQ(texts::flawOf("geojsonl", "\n\n"), "nothing in it");
}

TEST(GeoJsonLinesReader, CountsLinesAndRecords) {
  const auto lines = texts::read("geojsonl", "\n" + triangle + "\r\n\n" + triangle);
  ASSERT_EQ(lines.places.size(), 2);
  EXPECT_EQ(lines.places[1].line, 4);
  EXPECT_EQ(lines.places[1].number, 2);
  const auto records = texts::read("geojsonl", "\x1e" + triangle + "\n\x1e\n" + triangle + "\n");
  ASSERT_EQ(records.features.size(), 2);
  EXPECT_THAT(texts::read("geojsonl", "{\n").complaints.at(0),
              testing::StartsWith("1: not JSON: parse error"));
  EXPECT_THAT(texts::read("geojsonl", collection(triangle)).complaints,
              ElementsAre("1: a whole FeatureCollection, which is no line of GeoJSON lines"));
}

TEST(GeoJsonWriter, ClosesAndTurnsRings) {
  Feature feature = texts::outline({{0, 0}, {0, 2}, {2, 0}});
  feature.label = 4;
  feature.id = "b";
  EXPECT_EQ(texts::written("geojsonl", {feature}),
            R"({"type":"Feature","id":"b","properties":{"label":4},"geometry":{"type":"Polygon",)"
            R"("coordinates":[[[0.0,0.0],[2.0,0.0],[0.0,2.0],[0.0,0.0]]]}})"
            "\n");
}

TEST(GeoJsonWriter, ADocumentHasAFeatureToALine) {
  const Feature lone = texts::read("geojson", triangle, Keep::eSourceToo).features[0];
  EXPECT_EQ(texts::written("geojson", {lone, lone}, Rings::eAsTheyWere),
            "{\n\"type\": \"FeatureCollection\",\n\"features\": [\n" + triangle + ",\n" + triangle +
                "\n]\n}\n");
  EXPECT_EQ(texts::written("geojson", {}),
            "{\n\"type\": \"FeatureCollection\",\n\"features\": [\n]\n}\n");
}

TEST(GeoJsonWriter, WhatWasReadIsWrittenWithAllThatIsInIt) {
  const std::string text = feature(R"("id":5,"bbox":[0,0,2,2],)");
  const auto found = texts::read("geojsonl", text, Keep::eSourceToo);
  EXPECT_EQ(texts::written("geojsonl", found.features, Rings::eAsTheyWere), text + "\n");
  EXPECT_EQ(toJson(found.features[0], Rings::eAsGeoJsonWants)["geometry"]["coordinates"],
            Json::parse("[[[0,0],[2,0],[0,2],[0,0]]]"));
}

TEST(GeoJsonFeature, NewOutlinesReplaceWhatDescribedTheOldOnes) {
  const Geometry square{true, {{texts::square(1), {}, {}}}};
  const Json coordinates = Json::parse("[[[0.0,0.0],[1.0,0.0],[1.0,1.0],[0.0,1.0],[0.0,0.0]]]");
  Json json = Json::parse(feature(R"("bbox":[0,0,2,2],)"));
  json["properties"]["edgelets"] = Json::parse("[[1,2],[3,4],[5,6]]");
  Feature whole = readFeature(json, 1, Keep::eSourceToo);
  replaceGeometry(whole, square);
  EXPECT_EQ(whole.geometry.parts[0].outline, texts::square(1));
  EXPECT_EQ(whole.source,
            (Json{{"type", "Feature"},
                  {"properties", {{"label", 3}, {"k", {1}}}},
                  {"geometry", {{"type", "Polygon"}, {"coordinates", coordinates}}}}));

  Feature bare = readFeature(Json::parse(triangle), 1, Keep::eSourceToo);
  replaceGeometry(bare, square);
  EXPECT_EQ(bare.source, (Json{{"type", "Polygon"}, {"coordinates", coordinates}}));

  Feature sourceless = readFeature(Json::parse(triangle), 1, Keep::eFeature);
  replaceGeometry(sourceless, square);
  EXPECT_TRUE(sourceless.source.is_null());
}
