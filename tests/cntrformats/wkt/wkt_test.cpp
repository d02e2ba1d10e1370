// SPDX-License-Identifier: MIT
//
// WKT: what is read, and what is written.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cntrformats/wkt/wkt.h>

#include "../texts.h"

using namespace formats;
using testing::ElementsAre;

namespace {

struct BadWkt {
  const char* name;
  const char* text;
  const char* message;
};

class ABadWkt : public testing::TestWithParam<BadWkt> {};

/// The geometry of the first feature.
Geometry firstGeometry(const std::string& text) {
  return texts::read("wkt", text).features.at(0).geometry;
}

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

TEST_P(ABadWkt, IsNamedAndTheOthersAreRead) {
  const std::string good = "POLYGON ((0 0, 4 0, 4 4))\n";
  const auto found = texts::read("wkt", good + "\n" + GetParam().text + "\n" + good);
  EXPECT_THAT(found.complaints, ElementsAre(std::string("2: ") + GetParam().message));
  EXPECT_EQ(found.features.size(), 2);
  ASSERT_EQ(found.places.size(), 3);
  EXPECT_EQ(found.places[1].line, 3);
}

INSTANTIATE_TEST_SUITE_P(
    Each, ABadWkt,
    testing::Values(
        BadWkt{"EmptyPolygon", "POLYGON EMPTY", "no outline"},
        BadWkt{"EmptyPolygonZ", "POLYGON Z EMPTY", "no outline"},
        BadWkt{"EmptyParts", "MULTIPOLYGON EMPTY", "no coordinates"},
        BadWkt{"OnlyEmptyParts", "MULTIPOLYGON (EMPTY, EMPTY)", "no coordinates"},
        BadWkt{"EmptyLine", "LINESTRING EMPTY", "line has 0 points, but needs 2"},
        BadWkt{"EmptyLines", "MULTILINESTRING (EMPTY)", "no coordinates"},
        BadWkt{"EmptyRing", "LINEARRING EMPTY", "outline has 0 points, but needs 3"},
        BadWkt{"Point", "POINT (1 2)", "a POINT has no outline"},
        BadWkt{"Points", "MULTIPOINT ((1 2))", "a MULTIPOINT has no outline"},
        BadWkt{"OtherGeometry", "CIRCULARSTRING (0 0, 1 1, 2 0)",
               "CIRCULARSTRING is not a geometry that can be read"},
        BadWkt{"NoGeometry", "((0 0, 1 0, 1 1))", "'((0 0, 1 0, 1 1))' is no geometry"},
        BadWkt{"TwentyCharacters", "12345678901234567890", "'12345678901234567890' is no geometry"},
        BadWkt{"MoreCharacters", "123456789012345678901",
               "'12345678901234567890...' is no geometry"},
        BadWkt{"TwoPoints", "POLYGON ((0 0, 1 0))", "outline has 2 points, but needs 3"},
        BadWkt{"HoleOfTwoPoints", "POLYGON ((0 0, 1 0, 1 1), (5 5, 6 6))",
               "hole 1 has 2 points, but needs 3"},
        BadWkt{"TextForY", "POLYGON ((0 0, 1 x, 1 1))",
               "outline, vertex 1: 'x' is not a finite number"},
        BadWkt{"TextAfterX", "POLYGON ((0 0, 1x 0, 1 1))",
               "outline, vertex 1: '1x' is not a finite number"},
        BadWkt{"NotANumber", "POLYGON ((0 0, 1 nan, 1 1))",
               "outline, vertex 1: 'nan' is not a finite number"},
        BadWkt{"TooLargeNumber", "LINESTRING (0 0, 1e999 0)",
               "line, vertex 1: '1e999' is too large or too small a number"},
        BadWkt{"OneCoordinate", "LINESTRING (0 0, 1)", "line, vertex 1: not a position x y"},
        BadWkt{"FiveCoordinates", "LINESTRING (0 0, 1 2 3 4 5)",
               "line, vertex 1: more than 4 coordinates"},
        BadWkt{"PlaceInAPart", "MULTIPOLYGON (((0 0, 4 0, 4 4)), ((0 0, 4 0, 4 4), (1 1, 2 y)))",
               "part 2, hole 1, vertex 1: 'y' is not a finite number"},
        BadWkt{"LineInAPart", "MULTILINESTRING ((0 0, 1 1), (2 2))",
               "part 2, line has 1 point, but needs 2"},
        BadWkt{"OpenParenthesis", "POLYGON ((0 0, 1 0, 1 1)", "')' expected, not the end"},
        BadWkt{"NoParenthesis", "POLYGON (0 0, 1 0, 1 1)", "'(' expected, not '0 0, 1 0, 1 1)'"},
        BadWkt{"WordForAList", "POLYGON Full (1)", "'(' expected, not 'Full (1)'"},
        BadWkt{"MoreAfterTheEnd", "POLYGON ((0 0, 1 0, 1 1)) x", "'x' follows the geometry"},
        BadWkt{"ClosedTwice", "POLYGON ((0 0, 1 0, 1 1)))", "')' follows the geometry"},
        BadWkt{"ManyLines", "POLYGON (0 0,\r\n\n1 0, 1 1)\r",
               "'(' expected, not '0 0,\n1 0, 1 1)'"},
        BadWkt{"CollectionInACollection", "GEOMETRYCOLLECTION (GEOMETRYCOLLECTION EMPTY)",
               "geometry 1: a GEOMETRYCOLLECTION has no outline"},
        BadWkt{"NoReferenceSystem", "SRID=7 POLYGON ((0 0, 1 0, 1 1))",
               "SRID is not a geometry that can be read"}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST(WktReader, PassesOverHeightsAndMeasures) {
  for (const char* text : {"POLYGON Z ((0 0 7, 4 0 7, 4 4 7))", "polygonm((0 0 7,4 0 7,4 4 7))",
                           "POLYGON ZM ((0 0 1 2, 4 0 3 4, 4 4 5 6))",
                           "POLYGONZM ((0 0 1 2, 4 0 3 4, 4 4 5 6))", "Polygon m ((0 0, 4 0, 4 4))",
                           "POLYGON ((0 0 1, 4 0, 4 4 1 2))", "LINEARRING (0 0, 4 0, 4 4, 0 0)"}) {
    const Geometry geometry = firstGeometry(text);
    EXPECT_TRUE(geometry.closed);
    EXPECT_FALSE(geometry.multiple);
    ASSERT_EQ(geometry.parts.size(), 1) << text;
    EXPECT_EQ(geometry.parts[0].outline, (Points{{0, 0}, {4, 0}, {4, 4}})) << text;
  }
}

TEST(WktReader, NumbersMayBeWrittenInAnyWayAndBetweenAnyBlanks) {
  const Points expected{{-10, 0}, {25, 0.5}, {1, 2}};
  for (const char* text :
       {"LINESTRING (-1e1 +0, 2.5E1 .5, 1 2)", "LINESTRING\t(\t-10\t0\t,25\t0.5\t,\t1\t2)",
        "LINESTRING (-10 0 ,25 0.5 , 1 2 )", "LINESTRING (-10\n0,25\n0.5,\r\n1\r\n2\r\n)",
        "LINESTRING (-10\r0, 25\r.5, 1 2\r)"}) {
    EXPECT_EQ(firstGeometry(text).parts[0].outline, expected) << text;
  }
}

TEST(WktReader, AGeometryBeginsWithNoParenthesisOpen) {
  EXPECT_THAT(texts::read("wkt", "POLYGON ((0 0, 1 0\nPOLYGON ((0 0, 1 0, 1 1))\n5\n").complaints,
              ElementsAre("1: ')' expected, not the end", "3: '5' is no geometry"));
  EXPECT_THAT(texts::read("wkt", "POLYGON ((0 0, 1 0, 1 1)))\n5\n").complaints,
              ElementsAre("1: ')' follows the geometry", "2: '5' is no geometry"));
}

TEST(WktReader, ACollectionMayHaveAReferenceSystem) {
  const auto found = texts::read(
      "wkt", "SRID=7; geometrycollection (\nPOLYGON ((0 0, 1 0, 1 1)),\nLINESTRING EMPTY)\n");
  EXPECT_THAT(found.complaints, ElementsAre());
  EXPECT_EQ(found.features.size(), 1);
}

TEST(WktReader, IsKnownByAWordBeforeAParenthesisOrABlank) {
  for (const char* line : {"POLYGON ((0 0, 1 0, 1 1))", "polygon((", "  POLYGON EMPTY\r\n",
                           "SRID=4326; POLYGON ((0 0, 1 0, 1 1))", "POLYGON Z(", "POLYGON("}) {
    EXPECT_TRUE(looksLikeWkt(line)) << line;
  }
  for (const char* line : {"", "POLYGON", "POLYGON \n", "(0 0)", "POLYGON2 (0 0)", "2D (0 0)",
                           "POLY-GON (0 0)", "SRID=4326;(0 0)"}) {
    EXPECT_FALSE(looksLikeWkt(line)) << line;
  }
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
  feature.geometry = {true, false, {{texts::square(1), {}}, {texts::square(2), {}}}};
  EXPECT_EQ(texts::written("wkt", {feature}),
            "MULTIPOLYGON (((0 0, 1 0, 1 1, 0 1, 0 0)), ((0 0, 2 0, 2 2, 0 2, 0 0)))\n");
}

}  // namespace
