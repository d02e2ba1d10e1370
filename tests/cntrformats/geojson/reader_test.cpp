// SPDX-License-Identifier: MIT
//
// How a document of GeoJSON or of an annotation tool is taken apart.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cntrformats/geojson/document.h>

#include "../texts.h"

using namespace formats;
using testing::ElementsAre;
using testing::IsEmpty;
using texts::triangle;

namespace {

const std::string noGeoJson =
    "not GeoJSON: neither a FeatureCollection, nor a Feature, nor a geometry";

/// Writes down what it is given: the numbers of features, and members.
class Events : public Sink {
 public:
  void take(Record record) override {
    events.push_back("feature " + std::to_string(record.location.number));
  }
  void takeMembers(Members&& members) override {
    std::string event = "members";
    for (const Member& member : members) event += " " + member.name;
    events.push_back(event);
  }

  std::vector<std::string> events;
};

/// What is handed over of a document, and what is wrong with it.
std::vector<std::string> eventsOf(const std::string& text) {
  Source source{Text{text}};
  Events sink;
  try {
    readDocument(source, Keep::eFeature, sink, Source::mostAtOnce);
  } catch (const FileError& error) {
    sink.events.emplace_back(error.what());
  }
  return sink.events;
}

}  // namespace

TEST(GeoJsonDocument, MembersAreHandedOverBeforeAndAfterTheFeatures) {
  EXPECT_THAT(eventsOf(R"({"type":"FeatureCollection","name":"a","features":[)" + triangle + "," +
                       triangle + R"(],"licence":"CC0"})"),
              ElementsAre("members type name", "feature 1", "feature 2", "members licence"));
}

TEST(GeoJsonDocument, WhatComesBeforeAnErrorIsHandedOver) {
  EXPECT_THAT(eventsOf(R"({"type":"FeatureCollection","features":[)" + triangle + "\n x]}"),
              ElementsAre("members type", "feature 1", "not JSON: line 2, column 2: ']' expected"));
}

TEST(GeoJsonDocument, ANullCharacterIsItsEnd) {
  const std::string text = R"({"type":"FeatureCollection","features":[)" + triangle + "]}";
  EXPECT_THAT(eventsOf(text + std::string(1, '\0')),
              ElementsAre("members type", "feature 1", "members"));
}

TEST(GeoJsonDocument, ACollectionMayTellItsTypeLast) {
  EXPECT_THAT(eventsOf(R"({"features":[)" + triangle + R"(],"type":"FeatureCollection"})"),
              ElementsAre("members", "feature 1", "members type"));
  EXPECT_THAT(eventsOf(R"({"features":[)" + triangle + R"(],"type":"Topology"})"),
              ElementsAre("members", "feature 1", noGeoJson));
}

TEST(GeoJsonDocument, OnlyItsFirstListHoldsFeatures) {
  EXPECT_THAT(eventsOf(R"({"annotations":[{"id":1}],"shapes":[{},{}]})"), ElementsAre("feature 1"));
}

TEST(GeoJsonDocument, MembersAndTextOfAnnotationToolsAreNotKept) {
  const auto found = texts::read(
      "geojson", R"({"shapes":[{"points":[[0,0],[4,0],[4,4]]}],"version":"5"})", Keep::eSourceToo);
  EXPECT_THAT(found.members, IsEmpty());
  ASSERT_EQ(found.features.size(), 1);
  EXPECT_EQ(found.features[0].text, "");
  EXPECT_FALSE(found.places[0].isLone);
}

TEST(GeoJsonDocument, ALoneFeatureIsKeptWithoutTheBlanksAroundIt) {
  const auto found = texts::read("geojson", " \r\n\t" + triangle + " \n", Keep::eSourceToo);
  ASSERT_EQ(found.features.size(), 1);
  EXPECT_EQ(found.features[0].text, triangle);
  EXPECT_TRUE(found.places[0].isLone);
  EXPECT_EQ(found.places[0].line, 0) << "documents are not read by lines";
}

TEST(GeoJsonDocument, AFlawOfALoneFeatureIsTheFeatures) {
  EXPECT_THAT(texts::read("geojson", R"({"type":"Feature","a":nix,"geometry":)" + triangle + "}")
                  .complaints,
              ElementsAre("1: not JSON: line 1, column 23: a comma, a bracket or a value is "
                          "missing, wrong or too much"));
}

TEST(GeoJsonDocument, AFlawBeforeTheFeaturesIsNamedWithItsPlace) {
  EXPECT_THAT(eventsOf("\n\n {\"type\":\"FeatureCollection\",\n\"a\":nix,\"features\":[]}"),
              ElementsAre("not JSON: line 4, column 5: a comma, a bracket or a value is missing, "
                          "wrong or too much"));
  EXPECT_THAT(eventsOf("\n\n {\"type\":\"FeatureCollection\", \"a\":nix,\"features\":[]}"),
              ElementsAre("not JSON: line 3, column 35: a comma, a bracket or a value is missing, "
                          "wrong or too much"));
}

TEST(GeoJsonDocument, TypesThatAreNoTextAreNone) {
  for (const char* type : {"5", "null", "\"\"", "[]", "\"Polygon \""}) {
    EXPECT_THAT(eventsOf(std::string(R"({"type":)") + type + "}"), ElementsAre(noGeoJson)) << type;
  }
}
