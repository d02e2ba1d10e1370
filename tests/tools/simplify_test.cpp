// SPDX-License-Identifier: MIT
//
// cntr simplify: which vertices stay, and what stays with them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "program.h"

using program::collection;
using program::Directory;
using program::feature;
using program::Json;
using program::multiPolygon;
using program::polygon;
using program::ring;
using program::run;
using program::runJson;
using program::runOnFullDisk;
using program::square;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

Json simplified(const std::string& file, const std::string& tolerance) {
  const auto result = run({"simplify", "--tolerance", tolerance}, file);
  EXPECT_EQ(result.status, 0) << result.messages;
  EXPECT_EQ(result.messages, "");
  return Json::parse(result.out);
}

Json coordinates(const Json& feature) { return feature["geometry"]["coordinates"]; }

/// A square of 10 with a tooth 0.5 high on its lower edge.
const std::string toothed = ring({{0, 0}, {4, 0}, {5, 0.5}, {6, 0}, {10, 0}, {10, 10}, {0, 10}});

}  // namespace

TEST(Simplify, LeavesOutWhatIsWithinTheTolerance) {
  EXPECT_EQ(coordinates(simplified(polygon({toothed}), "0.6")),
            Json::parse("[" + square(0, 0, 10) + "]"));
  EXPECT_EQ(coordinates(simplified(polygon({toothed}), "0.4"))[0],
            Json::parse(ring({{0, 0}, {5, 0.5}, {10, 0}, {10, 10}, {0, 10}})));
}

TEST(Simplify, WithoutAToleranceTakesVerticesOffStraightEdges) {
  const std::string straight = ring({{0, 0}, {5, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 5}});
  EXPECT_EQ(coordinates(simplified(polygon({straight}), "0")),
            Json::parse("[" + square(0, 0, 10) + "]"));
}

TEST(Simplify, HolesPartsAndLinesLoseVerticesToo) {
  const std::string hole = ring({{2, 2}, {2, 3}, {2.1, 4}, {2, 5}, {2, 8}, {8, 8}, {8, 2}});
  EXPECT_EQ(coordinates(simplified(polygon({square(0, 0, 10), hole}), "0.2"))[1],
            Json::parse(ring({{2, 2}, {2, 8}, {8, 8}, {8, 2}})));
  EXPECT_EQ(coordinates(simplified(multiPolygon({{toothed}, {square(20, 0, 3)}}), "1")),
            Json::parse("[[" + square(0, 0, 10) + "],[" + square(20, 0, 3) + "]]"));
  EXPECT_EQ(coordinates(simplified(feature("LineString", "[[0,0],[1,0.1],[2,0],[2,5]]"), "0.5")),
            Json::parse("[[0,0],[2,0],[2,5]]"));
}

TEST(Simplify, NothingComesToCross) {
  // The hole reaches into a bay that would otherwise be removed.
  const std::string bay = ring({{0, 0}, {4, 0}, {5, -2}, {6, 0}, {10, 0}, {10, 10}, {0, 10}});
  const std::string hole = ring({{4.9, -1}, {5, 3}, {5.1, -1}});
  const Json after = simplified(polygon({bay, hole}), "3");
  const Json row = runJson({"measure", "--columns", "note,vertices"}, after.dump()).at(0);
  EXPECT_EQ(row["note"], nullptr);
  EXPECT_GT(row["vertices"], 4);
  EXPECT_EQ(coordinates(simplified(polygon({bay}), "3"))[0].size(), 5U);
}

TEST(Simplify, KeptVerticesKeepTheirDigitsAndEdgeElements) {
  const std::string outline = ring({{0.1, 0}, {5, 0.01}, {10, 1e-17}, {10, 10}, {0.3, 10.7}});
  const Json after =
      simplified(polygon({outline}, R"("edgelets":[[1,11],[2,22],[3,33],[4,44],[5,55]])"), "0.5");
  EXPECT_EQ(coordinates(after), Json::parse("[[[0.1,0],[10,1e-17],[10,10],[0.3,10.7],[0.1,0]]]"));
  EXPECT_EQ(after["properties"]["edgelets"], Json::parse("[[1,11],[3,33],[4,44],[5,55]]"));
}

TEST(Simplify, EdgeElementsOfVerticesInOnePlaceAreNotMixedUp) {
  // The outline passes through (5, 0.1) twice; the first time it is left out.
  const std::string outline = ring({{0, 0}, {10, 0}, {5, 0.1}, {10, 5}, {5, 0.1}, {0, 9}, {0, 5}});
  const Json after = simplified(
      polygon({outline}, R"("edgelets":[[1,1],[2,2],[3,3],[4,4],[5,5],[6,6],[7,7]])"), "0.2");
  const Json rings = coordinates(after)[0];
  const Json edgelets = after["properties"]["edgelets"];
  const Json before = Json::parse(outline);
  ASSERT_EQ(edgelets.size() + 1, rings.size());
  for (std::size_t i = 0; i < edgelets.size(); ++i)
    EXPECT_EQ(rings[i], before[edgelets[i][0].get<std::size_t>() - 1]) << i;
}

TEST(Simplify, KeepsPropertiesButNoBoxes) {
  Json file = Json::parse(collection({polygon({toothed}, R"("label":"nut","n":1.5)")}));
  file["picture"] = "a.png";
  file["bbox"] = file["features"][0]["bbox"] = Json::array({0, 0, 10, 10});
  file["features"][0]["id"] = 3;
  const Json after = simplified(file.dump(), "1");
  EXPECT_EQ(after["picture"], "a.png");
  EXPECT_FALSE(after.contains("bbox"));
  EXPECT_FALSE(after["features"][0].contains("bbox"));
  EXPECT_EQ(after["features"][0]["id"], 3);
  EXPECT_EQ(after["features"][0]["properties"], Json::parse(R"({"label":"nut","n":1.5})"));
}

TEST(Simplify, FeaturesThatLoseNothingStayAsTheyAre) {
  const std::string file = polygon({"[[0,0],[4.0,0],[4,4.00],[0,4],[0,0]]"});
  EXPECT_EQ(run({"simplify", "--tolerance", "1"}, file).out, run({"convert", "-o", "-"}, file).out);
}

TEST(Simplify, OutlinesWithoutAnAreaStayAsTheyAreWhenTooFewVerticesWouldBeLeft) {
  const std::string line = "[[0,0],[5,0],[9,0],[5,0],[0,0]]";
  EXPECT_EQ(coordinates(simplified(polygon({line}), "1")), Json::parse("[" + line + "]"));
}

TEST(Simplify, WritesTheFormatOfItsInputOrAnother) {
  const std::string wkt = "POLYGON ((0 0, 2 0, 4 0, 4 4, 0 4, 0 0))\n";
  EXPECT_EQ(run({"simplify", "--tolerance", "0", "--from", "wkt"}, wkt).out,
            "POLYGON ((0 0, 4 0, 4 4, 0 4, 0 0))\n");
  EXPECT_EQ(run({"simplify", "--tolerance", "0", "--to", "csv"}, wkt).out,
            run({"convert", "--to", "csv"}, "POLYGON ((0 0, 4 0, 4 4, 0 4, 0 0))\n").out);
}

TEST(Simplify, WhatCannotBeReadIsNamed) {
  const auto result =
      run({"simplify", "--tolerance", "1"}, collection({polygon({"[[1,1]]"}), polygon({toothed})}));
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.messages, "cntr: standard input: feature 1: outline has 1 point, but needs 3\n");
  EXPECT_EQ(Json::parse(result.out)["features"].size(), 1U);
}

TEST(Simplify, AFileThatCannotBeReadOrWrittenEndsWithStatusTwo) {
  const Directory directory;
  const std::string out = directory.path("out.json");
  EXPECT_EQ(run({"simplify", "--tolerance", "1", directory.path("none.json"), "-o", out}).status,
            2);
  const auto full =
      runOnFullDisk({"simplify", "--tolerance", "0", "samples/coins.geojson", "-o", out});
  EXPECT_EQ(full.status, 2);
  EXPECT_EQ(full.messages, "cntr: " + out + ": cannot be written: File too large\n");
  EXPECT_THAT(directory.names(), ElementsAre());
}

TEST(Simplify, WrongUsageEndsWithStatusTwo) {
  const auto refusal = [&](std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "simplify");
    const auto result = run(arguments, polygon({toothed}));
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
    return result.messages;
  };
  EXPECT_THAT(refusal({}), HasSubstr("cntr: --tolerance is required\n"));
  for (const std::string bad : {"-1", "nan", "inf", "much"})
    EXPECT_THAT(refusal({"--tolerance=" + bad}),
                HasSubstr("needs a number that is not negative, not " + bad));
}
