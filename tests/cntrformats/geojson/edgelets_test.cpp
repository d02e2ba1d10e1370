// SPDX-License-Identifier: MIT

#include <cntrformats/geojson/edgelets.h>

#include <gtest/gtest.h>

#include <cntrformats/errors.h>

#include "../texts.h"

using namespace formats;

namespace {

Geometry geometryOfTriangle() { return {true, false, {{{{0, 0}, {4, 0}, {4, 4}}, {}}}}; }

std::string problemOfEdgelets(const std::string& json, Geometry geometry = geometryOfTriangle()) {
  try {
    readEdgelets(json, geometry);
    return "";
  } catch (const FeatureError& error) {
    return error.what();
  }
}

}  // namespace

TEST(GeoJsonEdgelets, BelongToTheVerticesInTheirOrder) {
  Geometry geometry = geometryOfTriangle();
  readEdgelets("[[1,2], [0,0] ,[65535,255]]", geometry);
  const std::vector<qcEdgelet> expected{
      {{0, 0}, 1, qcAngle8(2)}, {{4, 0}, 0, qcAngle8(0)}, {{4, 4}, 65535, qcAngle8(255)}};
  ASSERT_EQ(geometry.edgelets.size(), 1);
  EXPECT_EQ(geometry.edgelets[0], expected);
}

TEST(GeoJsonEdgelets, MayBeMissing) {
  for (const char* json : {"", "null"}) {
    Geometry geometry = geometryOfTriangle();
    readEdgelets(json, geometry);
    EXPECT_TRUE(geometry.edgelets.empty()) << json;
  }
}

TEST(GeoJsonEdgelets, AreAListAsLongAsTheOutline) {
  EXPECT_EQ(problemOfEdgelets("7"), "edgelets: 7 is not a list");
  EXPECT_EQ(problemOfEdgelets(R"({"a":[1,2]})"), R"(edgelets: {"a":[1,2]} is not a list)");
  EXPECT_EQ(problemOfEdgelets("[]"), "0 edgelets for 3 vertices");
  EXPECT_EQ(problemOfEdgelets("[[1,2],[1,2]]"), "2 edgelets for 3 vertices");
  EXPECT_EQ(problemOfEdgelets("[[1,2],[1,2],[1,2],[1,2]]"), "4 edgelets for 3 vertices");
}

TEST(GeoJsonEdgelets, NeedASinglePart) {
  Geometry geometry = geometryOfTriangle();
  geometry.multiple = true;
  EXPECT_EQ(problemOfEdgelets("[[1,2],[1,2],[1,2]]", geometry), "") << "a list of one part will do";
  geometry.parts.push_back(geometry.parts[0]);
  EXPECT_EQ(problemOfEdgelets("[[1,2],[1,2],[1,2]]", geometry),
            "edgelets need an outline of a single part");
}

TEST(GeoJsonEdgelets, AreTwoWholeNumbersWithinTheirRanges) {
  for (const char* bad : {"[1]", "[1,2,3]", "[65536,0]", "[0,256]", "[-1,0]", "[0,-1]", "[1.5,0]",
                          "[0,1.5]", "[1,\"2\"]", "5", "null", "\"1,2 \""}) {
    EXPECT_EQ(
        problemOfEdgelets(std::string("[[1,2],") + bad + ",[1,2]]"),
        std::string("edgelet 1: ") + bad + " is not [magnitude, angle], from 0 to 65535 and 255");
  }
}
