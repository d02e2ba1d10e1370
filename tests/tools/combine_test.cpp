// SPDX-License-Identifier: MIT
//
// cntr combine: set operations on all outlines of two files, and on each feature of the first.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "program.h"

using program::collection;
using program::Directory;
using program::feature;
using program::Json;
using program::polygon;
using program::run;
using program::runOnFullDisk;
using program::square;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

class Combine : public testing::Test {
 protected:
  /// Two features that overlap, and one far off, with two that each meet some of them.
  const Directory directory_;
  const std::string a_ =
      directory_.write("a.json", collection({polygon({square(0, 0, 4)}, R"("label":1)"),
                                             polygon({square(2, 2, 4)}, R"("label":2,"n":1.5)"),
                                             polygon({square(20, 20, 4)}, R"("label":3)")}));
  const std::string b_ = directory_.write(
      "b.json", collection({polygon({square(3, 3, 2)}), polygon({square(0, 0, 1)})}));

  program::Result combined(const std::string& operation, std::vector<std::string> more = {}) const {
    std::vector<std::string> arguments{"combine", a_, b_, "--operation", operation};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return run(arguments);
  }

  /// The areas of the features that are written.
  std::vector<double> areas(const std::string& operation,
                            std::vector<std::string> more = {}) const {
    const auto result = combined(operation, std::move(more));
    EXPECT_EQ(result.status, 0) << result.messages;
    const Json report = Json::parse(
        run({"repair", "--json", "-o", directory_.path("repaired.json")}, result.out).out);
    std::vector<double> found;
    for (const Json& row : report) {
      EXPECT_EQ(row["result"], "unchanged") << "results are in normal form";
      found.push_back(row["area_after"]);
    }
    return found;
  }
};

TEST_F(Combine, TakesAllOutlinesOfAFileTogether) {
  EXPECT_THAT(areas("union"), ElementsAre(28.0 + 16.0));
  EXPECT_THAT(areas("intersection"), ElementsAre(5.0));
  EXPECT_THAT(areas("difference"), ElementsAre(44.0 - 5.0));
  EXPECT_THAT(areas("symmetric-difference"), ElementsAre(44.0 - 5.0));
}

TEST_F(Combine, GivesOneFeatureInACollection) {
  const Json result = Json::parse(combined("intersection").out);
  EXPECT_EQ(result["type"], "FeatureCollection");
  ASSERT_EQ(result["features"].size(), 1U);
  EXPECT_EQ(result["features"][0]["properties"], Json::object());
  EXPECT_EQ(result["features"][0]["geometry"], Json::parse(R"({"type":"MultiPolygon","coordinates":[
              [[[0.0,0.0],[1.0,0.0],[1.0,1.0],[0.0,1.0],[0.0,0.0]]],
              [[[3.0,3.0],[4.0,3.0],[5.0,3.0],[5.0,5.0],[3.0,5.0],[3.0,4.0],[3.0,3.0]]]]})"));
}

TEST_F(Combine, EachFeatureIsCutByItselfAndKeepsItsProperties) {
  const auto result = combined("intersection", {"--each"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.messages,
            "cntr: standard output: nothing is left of 1 feature, which is not written\n");
  const Json features = Json::parse(result.out)["features"];
  ASSERT_EQ(features.size(), 2U);
  EXPECT_EQ(features[0]["properties"], Json::parse(R"({"label":1})"));
  EXPECT_EQ(features[1]["properties"], Json::parse(R"({"label":2,"n":1.5})"));
  EXPECT_THAT(areas("intersection", {"--each"}), ElementsAre(1.0 + 1.0, 4.0));
  EXPECT_THAT(areas("difference", {"--each"}), ElementsAre(14.0, 12.0, 16.0));
}

TEST_F(Combine, AMaskCutsTheFeaturesThatItMeetsOnAnySide) {
  const std::string mask = directory_.write("mask.json", polygon({square(10, 10, 10)}));
  const std::string around = collection(
      {polygon({square(8, 12, 4)}), polygon({square(18, 12, 4)}), polygon({square(12, 8, 4)}),
       polygon({square(12, 18, 4)}), polygon({square(4, 12, 4)}), polygon({square(22, 12, 4)}),
       polygon({square(12, 4, 4)}), polygon({square(12, 22, 4)})});
  const auto result = run({"combine", "-", mask, "--operation", "difference", "--each"}, around);
  const auto report = run({"repair", "--json", "-o", directory_.path("repaired.json")}, result.out);
  std::vector<double> found;
  for (const Json& row : Json::parse(report.out)) found.push_back(row["area_after"]);
  EXPECT_THAT(found, ElementsAre(8, 8, 8, 8, 16, 16, 16, 16));
}

TEST_F(Combine, TheNumberOfThreadsChangesNoByte) {
  EXPECT_EQ(combined("difference", {"--each", "--jobs", "1"}).out,
            combined("difference", {"--each", "--jobs", "4"}).out);
}

TEST_F(Combine, SaysWhenNothingIsLeft) {
  const std::string far = directory_.write("far.json", polygon({square(100, 100, 1)}));
  const auto result = run({"combine", far, b_, "--operation", "intersection"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.messages, "cntr: standard output: nothing is left, and no feature is written\n");
  EXPECT_EQ(Json::parse(result.out)["features"], Json::array());
}

TEST_F(Combine, OpenLinesAndWhatCannotBeReadAreNamed) {
  const std::string file = collection(
      {feature("LineString", "[[0,0],[4,4]]"), polygon({"[[1,1]]"}), polygon({square(0, 0, 8)})});
  const std::string expected =
      "cntr: standard input: feature 1: is an open line, which has no area\n"
      "cntr: standard input: feature 2: outline has 1 point, but needs 3\n";
  const auto asA = run({"combine", "-", b_, "--operation", "difference"}, file);
  EXPECT_EQ(asA.status, 1);
  EXPECT_EQ(asA.messages, expected);
  EXPECT_EQ(run({"combine", a_, "-", "--operation", "difference"}, file).messages, expected);
  EXPECT_EQ(run({"combine", "-", b_, "--operation", "difference", "--each"}, file).messages,
            expected);
}

TEST_F(Combine, ReadsAndWritesOtherFormats) {
  const std::string wkt = directory_.write("b.wkt", "POLYGON ((3 3, 5 3, 5 5, 3 5, 3 3))\n");
  const std::string out = directory_.path("out.wkt");
  EXPECT_EQ(run({"combine", wkt, wkt, "--operation", "union", "-o", out}).status, 0);
  EXPECT_EQ(directory_.read("out.wkt"), "POLYGON ((3 3, 5 3, 5 5, 3 5, 3 3))\n");
  EXPECT_EQ(run({"combine", wkt, b_, "--operation", "intersection"}).out,
            "POLYGON ((3 3, 5 3, 5 5, 3 5, 3 3))\n")
      << "the format of A";
}

TEST_F(Combine, AFileThatCannotBeReadOrWrittenEndsWithStatusTwo) {
  const std::string out = directory_.path("out.json");
  const std::string none = directory_.path("none.json");
  for (const char* more : {"--jobs=2", "--each"}) {
    for (const auto& [first, second] : {std::pair(none, b_), std::pair(a_, none)}) {
      const auto result =
          run({"combine", first, second, "--operation=intersection", more, "-o", out});
      EXPECT_EQ(result.status, 2);
    }
  }
  const auto full =
      runOnFullDisk({"combine", "samples/coins.geojson", b_, "--operation", "union", "-o", out});
  EXPECT_EQ(full.status, 2);
  EXPECT_EQ(full.messages, "cntr: " + out + ": cannot be written: File too large\n");
  EXPECT_THAT(directory_.names(), testing::Not(testing::Contains("out.json")));
}

TEST_F(Combine, WrongUsageEndsWithStatusTwo) {
  EXPECT_EQ(run({"combine", a_, "--operation", "union"}).status, 2);
  EXPECT_EQ(run({"combine", a_, b_}).status, 2);
  EXPECT_EQ(combined("sum").status, 2);
  EXPECT_EQ(run({"combine", "-", "-", "--operation", "union"}).messages,
            "cntr: B: only one of the two files can be standard input\nTry 'cntr --help'.\n");
  EXPECT_EQ(combined("union", {"--each"}).messages,
            "cntr: --each: goes with intersection and difference alone\nTry 'cntr --help'.\n");
}

}  // namespace
