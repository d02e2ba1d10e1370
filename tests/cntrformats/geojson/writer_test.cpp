// SPDX-License-Identifier: MIT
//
// The frame of GeoJSON documents and lines.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include <cntrformats/geojson/geojson.h>

#include "../texts.h"

using namespace formats;

namespace {

const std::string closedTriangle =
    R"({"type":"Polygon","coordinates":[[[0,0],[4,0],[4,4],[0,0]]]})";
/// The same on several lines.
const std::string spread =
    "{\"type\": \"Polygon\",\r\n\"coordinates\":[[[0,0],[4,0],[4,4],[0,0]]]}";

Feature loneFeature(const std::string& json) {
  return texts::read("geojson", json, Keep::eSourceToo).features.at(0);
}

/// A feature that could not be read.
Feature unreadable(const std::string& text) {
  Feature feature;
  feature.problem = "bent";
  feature.text = text;
  return feature;
}

}  // namespace

TEST(GeoJsonDocumentWriter, PutsMembersWhereTheyCameFrom) {
  std::ostringstream out;
  const auto writer = makeGeoJsonWriter(out, Rings::eAsTheyWere);
  EXPECT_TRUE(writer->takeMembers({{"type", "\"FeatureCollection\""}, {"name", "\"a\""}}));
  EXPECT_EQ(out.str(), "{\n\"type\": \"FeatureCollection\",\n\"name\": \"a\",\n\"features\": [");
  writer->write(writer->prepare(loneFeature(closedTriangle), false));
  EXPECT_TRUE(writer->takeMembers({{"licence", "\"CC0\""}, {"n", "[1]"}}));
  writer->finish();
  EXPECT_EQ(out.str(), "{\n\"type\": \"FeatureCollection\",\n\"name\": \"a\",\n\"features\": [\n" +
                           closedTriangle + "\n],\n\"licence\": \"CC0\",\n\"n\": [1]\n}\n");
}

TEST(GeoJsonDocumentWriter, AGeometryAmongFeaturesBecomesAFeature) {
  const std::string feature =
      R"({"type":"Feature","properties":{},"geometry":)" + closedTriangle + "}";
  EXPECT_EQ(texts::written("geojson", {loneFeature(closedTriangle), loneFeature(feature)}),
            "{\n\"type\": \"FeatureCollection\",\n\"features\": [\n" + feature + ",\n" + feature +
                "\n]\n}\n");
}

TEST(GeoJsonDocumentWriter, ALoneFeatureIsTheWholeFile) {
  for (const Rings rings : {Rings::eAsTheyWere, Rings::eAsGeoJsonWants}) {
    std::ostringstream out;
    const auto writer = makeGeoJsonWriter(out, rings);
    writer->write(writer->prepare(loneFeature(spread), true));
    writer->finish();
    EXPECT_EQ(out.str(), spread + "\n");
  }
}

TEST(GeoJsonDocumentWriter, KeepsTheTextOfWhatCannotBeRead) {
  std::ostringstream out;
  const auto writer = makeGeoJsonWriter(out, Rings::eAsTheyWere);
  EXPECT_FALSE(writer->prepareUnreadable(unreadable(""), false));
  const auto lone = writer->prepareUnreadable(unreadable(spread), true);
  ASSERT_TRUE(lone);
  EXPECT_EQ(lone->text, spread);
  EXPECT_TRUE(lone->isLone);
  EXPECT_FALSE(writer->prepareUnreadable(unreadable(spread), false)->isLone);
}

TEST(GeoJsonLinesWriter, PutsEachFeatureOnOneLine) {
  EXPECT_EQ(texts::written("geojsonl", {loneFeature(spread)}), closedTriangle + "\n");
  const std::string blanks = R"({"type": "Point"})";
  std::ostringstream out;
  const auto writer = makeGeoJsonLinesWriter(out, Rings::eAsTheyWere);
  EXPECT_FALSE(writer->prepareUnreadable(unreadable(""), false));
  writer->write(*writer->prepareUnreadable(unreadable(spread), false));
  writer->write(*writer->prepareUnreadable(unreadable(blanks), false));
  writer->finish();
  EXPECT_EQ(out.str(), closedTriangle + "\n" + blanks + "\n")
      << "what is on one line keeps its blanks";
}

TEST(GeoJsonLinesWriter, HasNoPlaceForMembers) {
  std::ostringstream out;
  EXPECT_FALSE(makeGeoJsonLinesWriter(out, Rings::eAsTheyWere)->takeMembers({{"a", "1"}}));
}
