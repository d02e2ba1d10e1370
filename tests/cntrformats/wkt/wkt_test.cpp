// SPDX-License-Identifier: MIT
//
// WKT: what is read, and what is written. Each refusal of a bad line is in
// tests/tools/formats_test.cpp.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "../texts.h"

using namespace formats;
using testing::ElementsAre;

TEST(WktReader, ReadsOutlinesAndLines) {
  const auto found = texts::read("wkt",
                                 "\nPOLYGON ((0 0, 4 0, 4 4, 0 0), (1 1, 2 1, 2 2))\n"
                                 "multilinestring z((0 0 1, 1 1 1), (2 2 1, 3 3 1))\r\n"
                                 "POINT (1 2)");
  ASSERT_EQ(found.features.size(), 2);
  const Geometry& plate = found.features[0].geometry;
  EXPECT_TRUE(plate.closed);
  EXPECT_FALSE(plate.multiple);
  EXPECT_EQ(plate.parts[0].outline, (Points{{0, 0}, {4, 0}, {4, 4}}));
  EXPECT_EQ(plate.parts[0].holes, (std::vector<Points>{{{1, 1}, {2, 1}, {2, 2}}}));
  const Geometry& lines = found.features[1].geometry;
  EXPECT_FALSE(lines.closed);
  EXPECT_TRUE(lines.multiple);
  EXPECT_EQ(lines.parts[1].outline, (Points{{2, 2}, {3, 3}}));
  EXPECT_EQ(found.places[1].line, 3);
  EXPECT_THAT(found.complaints, ElementsAre("3: a POINT has no outline"));
  EXPECT_EQ(texts::flawOf("wkt", "\n"), "nothing in it");
}

TEST(WktReader, GoesOnAsLongAsParenthesesAreOpen) {
  const auto found = texts::read("wkt",
                                 "POLYGON ((0 0,\n  4 0,\n\n  4 4\n))\nPOLYGON ((0 0, 1 0\n"
                                 "POLYGON ((0 0,\n1 0, 1 1))\n");
  ASSERT_EQ(found.features.size(), 2);
  EXPECT_EQ(found.features[0].geometry.parts[0].outline, (Points{{0, 0}, {4, 0}, {4, 4}}));
  EXPECT_EQ(found.places[2].line, 7);
  EXPECT_THAT(found.complaints, ElementsAre("2: ')' expected, not the end"));
}

TEST(WktReader, PassesOverReferenceSystemsAndEmptyMembers) {
  const auto found = texts::read(
      "wkt",
      "SRID=4326;POLYGON ((0 0, 4 0, 4 4))\nMULTIPOLYGON (EMPTY, ((0 0, 1 0, 1 1)), EMPTY)\n");
  ASSERT_EQ(found.features.size(), 2);
  EXPECT_EQ(found.features[1].geometry.parts.size(), 1);
  EXPECT_EQ(texts::guess("srid=0;polygon((0 0, 4 0, 4 4))\n"), "wkt");
}

TEST(WktReader, CollectionsPassOverEmptyMembers) {
  const auto found = texts::read("wkt",
                                 "GEOMETRYCOLLECTION (POLYGON EMPTY, POLYGON ((0 0, 4 0, 4 4)),\n"
                                 "LINESTRING EMPTY, MULTIPOLYGON (EMPTY))\n"
                                 "GEOMETRYCOLLECTION (POLYGON EMPTY)\n");
  ASSERT_EQ(found.features.size(), 1);
  EXPECT_EQ(found.features[0].geometry.parts.size(), 1);
  EXPECT_THAT(found.complaints, ElementsAre("2: no coordinates"));
}

TEST(WktReader, CollectionsAreOneFeature) {
  const auto found =
      texts::read("wkt",
                  "GEOMETRYCOLLECTION (POLYGON ((0 0, 4 0, 4 4)),\n"
                  "MULTIPOLYGON (((5 5, 6 5, 6 6)), ((7 7, 8 7, 8 8))))\n"
                  "GEOMETRYCOLLECTION (POLYGON ((0 0, 4 0, 4 4)), LINESTRING (0 0, 1 1))\n"
                  "GEOMETRYCOLLECTION EMPTY\n");
  ASSERT_EQ(found.features.size(), 1);
  EXPECT_EQ(found.features[0].geometry.parts.size(), 3);
  EXPECT_TRUE(found.features[0].geometry.multiple);
  EXPECT_THAT(found.complaints,
              ElementsAre("2: geometry 2: outlines and lines together are no single shape",
                          "3: a GEOMETRYCOLLECTION has no outline"));
}

TEST(WktWriter, ClosesRingsAndLeavesTheirDirection) {
  Feature feature = texts::outline({{0, 0}, {0, 2.5}, {2, 0}});
  feature.geometry.parts[0].holes.push_back({{0.5, 0.5}, {1, 0.5}, {0.5, 1}});
  EXPECT_EQ(texts::written("wkt", {feature}),
            "POLYGON ((0 0, 0 2.5, 2 0, 0 0), (0.5 0.5, 1 0.5, 0.5 1, 0.5 0.5))\n");
  feature.geometry.multiple = true;
  feature.geometry.parts = {{texts::square(1), {}}};
  EXPECT_EQ(texts::written("wkt", {feature}), "MULTIPOLYGON (((0 0, 1 0, 1 1, 0 1, 0 0)))\n");
  feature.geometry.closed = false;
  feature.geometry.parts[0].outline = {{0, 0}, {1, 1e22}};
  EXPECT_EQ(texts::written("wkt", {feature}), "MULTILINESTRING ((0 0, 1 1e+22))\n");
  feature.geometry.multiple = false;
  EXPECT_EQ(texts::written("wkt", {feature}), "LINESTRING (0 0, 1 1e+22)\n");
}
