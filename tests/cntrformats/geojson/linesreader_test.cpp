// SPDX-License-Identifier: MIT
//
// Where the lines and records of GeoJSON lines begin and end.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "../texts.h"

using namespace formats;
using texts::triangle;

TEST(GeoJsonLines, RecordsKnowTheLinesOnWhichTheyBegin) {
  const std::string record =
      "\x1e{\"type\":\"Polygon\",\n\"coordinates\":[[[0,0],[4,0],[4,4]]]\n}\n";
  const auto found = texts::read("geojsonl", record + record + "\x1e" + triangle + "\n");
  ASSERT_EQ(found.places.size(), 3);
  EXPECT_EQ(found.places[0].line, 1);
  EXPECT_EQ(found.places[1].line, 4);
  EXPECT_EQ(found.places[2].line, 7);
  EXPECT_EQ(found.features.size(), 3);
}

TEST(GeoJsonLines, TheEndOfALineIsNoPartOfItsFeature) {
  const auto found =
      texts::read("geojsonl", triangle + "\r\n" + triangle + "\r\n", Keep::eSourceToo);
  ASSERT_EQ(found.features.size(), 2);
  for (const Feature& feature : found.features) EXPECT_EQ(feature.text, triangle);
}

TEST(GeoJsonLines, AreKnownByAFirstLineThatIsAWholeFeature) {
  EXPECT_EQ(texts::guess(triangle + "\n"), "geojsonl");
  EXPECT_EQ(texts::guess("{\"type\":\"anything\"}\n"), "geojsonl");
  EXPECT_EQ(texts::guess("{\"a\":1}\n"), "geojson") << "it has no type";
  EXPECT_EQ(texts::guess("{\"type\":5}\n"), "geojson");
  EXPECT_EQ(texts::guess("{\"type\":\"Feature\",}\n"), "geojson") << "it is not JSON";
}
