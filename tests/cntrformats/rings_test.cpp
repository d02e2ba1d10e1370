// SPDX-License-Identifier: MIT

#include <cntrformats/rings.h>

#include <gtest/gtest.h>

#include <cntrformats/errors.h>

#include "texts.h"

using namespace formats;

TEST(Rings, TheSignedAreaTellsTheDirection) {
  EXPECT_EQ(signedArea(texts::square(3)), 9);
  EXPECT_EQ(signedArea({{0, 0}, {0, 3}, {3, 0}}), -4.5);
  EXPECT_EQ(signedArea({}), 0);
  EXPECT_EQ(signedArea({{1e9, 1e9}, {1e9 + 0.5, 1e9}, {1e9, 1e9 + 0.5}}), 0.125)
      << "far from the origin as near it";
}

TEST(Rings, ARepeatedFirstPointIsNoVertexOfARing) {
  EXPECT_EQ(asRing({{0, 0}, {1, 0}, {1, 1}, {0, 0}}, "").size(), 3);
  EXPECT_EQ(asRing({{0, 0}, {1, 0}, {1, 1}}, "").size(), 3);
  EXPECT_EQ(asLine({{0, 0}, {1, 0}, {0, 0}}, "").size(), 3);
}

TEST(Rings, TooFewVerticesAreNamedWithTheirPlace) {
  const auto refusal = [](auto make, Points points) -> std::string {
    try {
      make(std::move(points), "hole 2");
      return "";
    } catch (const FeatureError& error) {
      return error.what();
    }
  };
  EXPECT_EQ(refusal(asRing, {{0, 0}, {1, 0}, {0, 0}}), "hole 2 has 2 points, but needs 3");
  EXPECT_EQ(refusal(asRing, {{0, 0}}), "hole 2 has 1 point, but needs 3");
  EXPECT_EQ(refusal(asRing, {{0, 0}, {0, 0}}), "hole 2 has 1 point, but needs 3");
  EXPECT_EQ(refusal(asRing, {}), "hole 2 has 0 points, but needs 3");
  EXPECT_EQ(refusal(asLine, {{0, 0}}), "hole 2 has 1 point, but needs 2");
}

TEST(Rings, ACollectionIsOfTheKindOfItsMembers) {
  const auto outlines = [] { return texts::outline(texts::square(1)).geometry; };
  const auto line = [] { return Geometry{false, false, {{{{0, 0}, {1, 1}}, {}}}}; };
  Geometry lines;
  addParts(lines, line());
  addParts(lines, line());
  EXPECT_FALSE(lines.closed);
  EXPECT_EQ(lines.parts.size(), 2);
  try {
    addParts(lines, outlines());
    FAIL() << "an outline among lines";
  } catch (const FeatureError& error) {
    EXPECT_STREQ(error.what(), "outlines and lines together are no single shape");
  }
  Geometry areas;
  addParts(areas, outlines());
  EXPECT_TRUE(areas.closed);
  EXPECT_THROW(addParts(areas, line()), FeatureError);
}
