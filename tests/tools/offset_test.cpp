// SPDX-License-Identifier: MIT
//
// cntr offset: outlines that grow and shrink, what is kept, and the messages about those that
// vanish.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numbers>

#include "areas.h"
#include "program.h"

using program::collection;
using program::Directory;
using program::feature;
using program::Json;
using program::multiPolygon;
using program::polygon;
using program::run;
using program::runOnFullDisk;
using program::square;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

Json offset(const std::string& file, std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), "offset");
  const auto result = run(arguments, file);
  EXPECT_EQ(result.status, 0) << result.messages;
  return Json::parse(result.out);
}

}  // namespace

TEST(Offset, GrowsOutlinesAndShrinksHolesWithRoundCorners) {
  const std::string file = polygon({square(0, 0, 10), square(4, 4, 2)});
  const Json grown = offset(file, {"--distance", "0.5"});
  const double quarterDiscs = std::numbers::pi * 0.25;
  EXPECT_NEAR(areaOf(grown), 100.0 + 40 * 0.5 + quarterDiscs - 1.0, 2e-3 * quarterDiscs);
  EXPECT_LT(areaOf(grown), 100.0 + 40 * 0.5 + quarterDiscs - 1.0);
}

TEST(Offset, ShrinksWithANegativeDistance) {
  const Json shrunk = offset(polygon({square(0, 0, 10)}), {"--distance", "-1"});
  EXPECT_EQ(shrunk["geometry"], Json::parse(R"({"type":"Polygon","coordinates":
              [[[1.0,1.0],[9.0,1.0],[9.0,9.0],[1.0,9.0],[1.0,1.0]]]})"));
}

TEST(Offset, TheArcToleranceIsAThousandthOfTheDistanceUnlessGiven) {
  const std::string file = polygon({square(0, 0, 10)});
  const auto usual = offset(file, {"--distance", "2"});
  EXPECT_EQ(offset(file, {"--distance", "2", "--arc-tolerance", "0.002"}), usual);
  EXPECT_LT(offset(file, {"--distance", "2", "--arc-tolerance", "0.2"}).dump().size(),
            usual.dump().size());
}

TEST(Offset, OfNothingFillsWhatTheOutlinesFill) {
  EXPECT_EQ(
      areaOf(offset(multiPolygon({{square(0, 0, 4)}, {square(2, 2, 4)}}), {"--distance", "0"})),
      28.0);
}

TEST(Offset, KeepsLabelsIdsAndPropertiesButNoEdgeElementsAndBoxes) {
  Json file = Json::parse(collection({polygon(
      {square(0, 0, 4)}, R"("label":"nut","n":1.5,"edgelets":[[1,2],[3,4],[5,6],[7,8]])")}));
  file["picture"] = "a.png";
  file["bbox"] = file["features"][0]["bbox"] = Json::array({0, 0, 4, 4});
  file["features"][0]["id"] = 3;
  const Json after = offset(file.dump(), {"--distance", "1"});
  EXPECT_EQ(after["picture"], "a.png");
  EXPECT_FALSE(after.contains("bbox"));
  EXPECT_FALSE(after["features"][0].contains("bbox"));
  EXPECT_EQ(after["features"][0]["id"], 3);
  EXPECT_EQ(after["features"][0]["properties"], Json::parse(R"({"label":"nut","n":1.5})"));
}

TEST(Offset, WhatVanishesIsCountedAndNotWritten) {
  const auto one = run({"offset", "--distance", "-1"},
                       collection({polygon({square(0, 0, 1)}), polygon({square(0, 0, 8)})}));
  EXPECT_EQ(one.status, 0);
  EXPECT_EQ(one.messages,
            "cntr: standard output: nothing is left of 1 feature, which is not written\n");
  EXPECT_EQ(Json::parse(one.out)["features"].size(), 1U);
  const auto both = run({"offset", "--distance=-5"},
                        collection({polygon({square(0, 0, 1)}), polygon({square(0, 0, 8)})}));
  EXPECT_EQ(both.messages,
            "cntr: standard output: nothing is left of 2 features, which are not written\n");
  EXPECT_EQ(Json::parse(both.out)["features"], Json::array());
}

TEST(Offset, OpenLinesAndWhatCannotBeReadAreNamed) {
  const auto result = run({"offset", "--distance", "1"},
                          collection({feature("LineString", "[[0,0],[4,4]]"), polygon({"[[1,1]]"}),
                                      polygon({square(0, 0, 8)})}));
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.messages,
            "cntr: standard input: feature 1: is an open line, which has no area\n"
            "cntr: standard input: feature 2: outline has 1 point, but needs 3\n");
  EXPECT_EQ(Json::parse(result.out)["features"].size(), 1U);
}

TEST(Offset, WritesTheFormatOfItsInput) {
  const auto result =
      run({"offset", "--distance=-1", "--from", "wkt"}, "POLYGON ((0 0, 4 0, 4 4, 0 4, 0 0))\n");
  EXPECT_EQ(result.out, "POLYGON ((1 1, 3 1, 3 3, 1 3, 1 1))\n");
}

TEST(Offset, AFileThatCannotBeReadOrWrittenEndsWithStatusTwo) {
  const Directory directory;
  const std::string out = directory.path("out.json");
  EXPECT_EQ(run({"offset", "--distance", "1", directory.path("none.json"), "-o", out}).status, 2);
  const auto full =
      runOnFullDisk({"offset", "--distance", "1", "samples/coins.geojson", "-o", out});
  EXPECT_EQ(full.status, 2);
  EXPECT_EQ(full.messages, "cntr: " + out + ": cannot be written: File too large\n");
  EXPECT_THAT(directory.names(), ElementsAre());
}

TEST(Offset, WrongUsageEndsWithStatusTwo) {
  const std::string file = polygon({square(0, 0, 4)});
  const auto refusal = [&](std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "offset");
    const auto result = run(arguments, file);
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
    return result.messages;
  };
  EXPECT_THAT(refusal({}), HasSubstr("cntr: --distance is required\n"));
  EXPECT_THAT(refusal({"--distance", "inf"}),
              HasSubstr("cntr: --distance: needs a number, not inf\n"));
  EXPECT_THAT(refusal({"--distance", "far"}),
              HasSubstr("cntr: --distance: needs a number, not far\n"));
  EXPECT_THAT(refusal({"--distance", "1", "--arc-tolerance", "0"}),
              HasSubstr("cntr: --arc-tolerance: needs a positive number, not 0\n"));
  EXPECT_THAT(refusal({"--distance", "1", "--arc-tolerance", "nan"}),
              HasSubstr("cntr: --arc-tolerance: needs a positive number, not nan\n"));
}
