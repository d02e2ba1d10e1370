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
