// SPDX-License-Identifier: MIT
//
// cntr repair: what becomes of outlines that cross, what is said about it, and what is written.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include <testing/repository/repository.h>

#include "program.h"

using program::clockwiseSquare;
using program::collection;
using program::Directory;
using program::feature;
using program::Json;
using program::multiPolygon;
using program::polygon;
using program::run;
using program::runJson;
using program::runOnFullDisk;
using program::square;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

/// Two lobes of area 2 and 4 that meet in (2, 2).
const char* const bowTie = "[[0,0],[4,4],[4,0],[0,4],[0,0]]";

struct Outcome {
  int status;
  std::string report;
  std::string messages;
  Json file;
};

Outcome repaired(const std::string& file, const std::string& mode = "regularize") {
  const Directory directory;
  const auto result = run({"repair", "--mode", mode, "-", "-o", directory.path("out.json")}, file);
  return {result.status, result.out, result.messages, Json::parse(directory.read("out.json"))};
}

class EachMode : public testing::TestWithParam<const char*> {};

}  // namespace

TEST_P(EachMode, ABowTieBecomesAnOutlineThatDoesNotCrossItself) {
  const Outcome outcome = repaired(collection({polygon({bowTie}, R"("label":7)")}), GetParam());
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.messages, "");
  EXPECT_EQ(outcome.report,
            "feature  label  result\n"
            "      1      7  repaired: vertices 4 -> 6, area 0 -> 8\n");
  const Json measures = runJson({"measure"}, outcome.file.dump()).at(0);
  EXPECT_EQ(measures["crosses_itself"], false);
  EXPECT_NEAR(measures["area"], 8.0, 1e-9);
  EXPECT_EQ(measures["label"], 7);
}

TEST_P(EachMode, FeaturesWithoutCrossingsStayAsTheyWere) {
  const std::string simple = polygon({clockwiseSquare(0, 0, 10), square(2, 2, 4)});
  const std::string disjoint = multiPolygon({{square(0, 0, 4)}, {square(10, 0, 4)}});
  const std::string open = feature("LineString", "[[0,0],[4,4],[4,0],[0,4]]");
  const std::string file = collection({simple, disjoint, open});
  const Outcome outcome = repaired(file, GetParam());
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.report,
            "feature  result\n"
            "      1  unchanged: does not cross itself\n"
            "      2  unchanged: does not cross itself\n"
            "      3  unchanged: open\n");
  EXPECT_EQ(outcome.file, Json::parse(file));
}

TEST_P(EachMode, PartsThatCrossAreMerged) {
  const Outcome outcome = repaired(
      multiPolygon({{square(0, 0, 4)}, {square(2, 2, 4)}, {square(20, 0, 6), square(22, 2, 1)}}),
      GetParam());
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.report,
              HasSubstr("repaired: parts 3 -> 2, vertices 12 -> 16, area 68 -> 60"));
  EXPECT_EQ(outcome.file["geometry"]["type"], "MultiPolygon");
  const Json rows = runJson({"measure"}, outcome.file.dump());
  EXPECT_EQ(rows[0]["crosses_itself"], false);
  EXPECT_EQ(rows[0]["holes"], 1) << "the part that crosses nothing keeps its hole";
}

TEST_P(EachMode, AllPartsOfAChainAreMerged) {
  // The first pass merges 1 with 3 and leaves 2, which crosses only what that gives.
  const Outcome outcome =
      repaired(multiPolygon({{square(0, 0, 4)}, {square(6, 0, 4)}, {square(3, 1, 4)}}), GetParam());
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.report, HasSubstr("parts 3 -> 1"));
  EXPECT_EQ(outcome.file["geometry"]["type"], "Polygon");
  EXPECT_EQ(runJson({"measure"}, outcome.file.dump()).at(0)["crosses_itself"], false);
}

TEST_P(EachMode, AnOutlineWithoutAWayRoundIsNamedAndWrittenAsItWas) {
  // A pentagram of which every edge is crossed: there is none to start from.
  const std::string pentagram =
      polygon({"[[10,0],[-8.09,5.88],[3.09,-9.51],[3.09,9.51],[-8.09,-5.88]]"});
  const std::string file = collection({pentagram, polygon({square(0, 0, 4)})});
  const Outcome outcome = repaired(file, GetParam());
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.messages,
            "cntr: standard input: feature 1: cannot be repaired: every edge is crossed, or no "
            "walk along "
            "them comes back to its start\n");
  EXPECT_EQ(outcome.report,
            "feature  result\n"
            "      2  unchanged: does not cross itself\n");
  EXPECT_EQ(outcome.file, Json::parse(file));
}

INSTANTIATE_TEST_SUITE_P(Repair, EachMode, testing::Values("regularize", "outer-hull"),
                         [](const auto& mode) {
                           return std::string(mode.index == 0 ? "Regularize" : "OuterHull");
                         });

TEST(Repair, TheModesDiffer) {
  // A loop that the outline makes inside itself.
  const std::string file =
      polygon({"[[0,0],[10,0],[10,10],[4,10],[4,4],[7,4],[7,7],[2,7],[2,10],[0,10]]"});
  const Outcome regularized = repaired(file, "regularize");
  const Outcome hull = repaired(file, "outer-hull");
  EXPECT_EQ(regularized.status, 0);
  EXPECT_EQ(hull.status, 0);
  EXPECT_NE(regularized.file, hull.file);
}

TEST(Repair, AnOutlineOfWhichNothingIsLeftIsNamed) {
  // A walk on a grid that goes to and fro on the same edges.
  const std::string file = polygon(
      {"[[0,0],[0,-1],[1,-1],[1,-2],[1,-1],[0,-1],[0,-2],[-1,-2],[0,-2],[0,-3],[1,-3],[1,-2],"
       "[1,-3],[1,-4]]"});
  const Outcome outcome = repaired(file, "outer-hull");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.messages,
              HasSubstr("cannot be repaired: its edges overlap and bound nothing\n"));
  EXPECT_EQ(outcome.file, Json::parse(file));
}

TEST(Repair, SaysWhenAnOutlineStillCrossesItself) {
  // The last vertex lies on the second edge within 1e-6.
  const Outcome outcome = repaired(polygon(
      {"[[0,0],[-2.1613679683140927,1.6126009124068794],[-3.7828315694647183,1.4011949795651022],"
       "[-2.1068384448486723,6.0924936819063955],[-2.5931833362287597,1.5563019640878486]]"}));
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.report, HasSubstr(", still crosses itself\n"));
  EXPECT_EQ(runJson({"measure"}, outcome.file.dump()).at(0)["crosses_itself"], true);
}

TEST(Repair, RegularizeIsTheDefault) {
  const auto named = run({"repair", "--mode", "regularize", "-o", "-"}, polygon({bowTie}));
  const auto unnamed = run({"repair", "-o", "-"}, polygon({bowTie}));
  EXPECT_EQ(unnamed.out, named.out);
  EXPECT_EQ(unnamed.status, 0);
}

TEST(Repair, HolesOfARepairedOutlineAreLeftOutAndCounted) {
  const Outcome outcome = repaired(polygon({bowTie, square(0.5, 1.5, 0.25)}));
  EXPECT_THAT(outcome.report, HasSubstr(", 1 hole left out\n"));
  EXPECT_EQ(outcome.file["geometry"]["coordinates"].size(), 1);
}

TEST(Repair, AHoleThatTouchesItsOutlineIsNamedAndWrittenAsItWas) {
  const std::string file = polygon({square(0, 0, 10), square(0, 0, 2)});
  const Outcome outcome = repaired(file);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.messages, HasSubstr("feature 1: hole 1 crosses or touches its outline\n"));
  EXPECT_EQ(outcome.file, Json::parse(file));
}

TEST(Repair, FeaturesThatCannotBeReadAreWrittenAsTheyWere) {
  const std::string file = collection({polygon({"[[1,1]]"}), polygon({bowTie})});
  const Outcome outcome = repaired(file);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.file["features"][0], Json::parse(file)["features"][0]);
  EXPECT_NE(outcome.file["features"][1], Json::parse(file)["features"][1]);
  EXPECT_THAT(outcome.report, HasSubstr("      2  repaired: "));
}

TEST(Repair, KeepsAllThatIsNotTheOutline) {
  const std::string good = polygon({square(0, 0, 4)}, R"("name":"Müller","n":[1.50,null,true])");
  const std::string text = R"({"type":"FeatureCollection","picture":"a.png","features":[)" + good +
                           "," + polygon({bowTie}, R"("id":3,"name":"b")") + R"(],"width":10})";
  const Json before = Json::parse(text);
  const Json after = repaired(text).file;
  EXPECT_EQ(after["picture"], "a.png");
  EXPECT_EQ(after["width"], 10);
  EXPECT_EQ(after["features"][0], before["features"][0]);
  EXPECT_EQ(after["features"][1]["properties"], before["features"][1]["properties"]);
  std::vector<std::string> members;
  for (const auto& [name, value] : after.items()) members.push_back(name);
  EXPECT_THAT(members, ElementsAre("type", "picture", "features", "width"));
}

TEST(Repair, DropsWhatDescribedTheOldOutline) {
  Json file = Json::parse(
      collection({polygon({bowTie}, R"("label":1,"edgelets":[[1,2],[3,4],[5,6],[7,8]])"),
                  polygon({square(0, 0, 4)}, R"("edgelets":[[1,2],[3,4],[5,6],[7,8]])")}));
  const Json box = Json::array({0, 0, 4, 4});
  file["bbox"] = box;
  for (Json& one : file["features"]) one["bbox"] = one["geometry"]["bbox"] = box;
  const Outcome outcome = repaired(file.dump());
  const Json& after = outcome.file;
  EXPECT_THAT(outcome.report, HasSubstr(", edgelets left out\n"));
  EXPECT_FALSE(after.contains("bbox"));
  EXPECT_FALSE(after["features"][0].contains("bbox"));
  EXPECT_FALSE(after["features"][0]["geometry"].contains("bbox"));
  EXPECT_FALSE(after["features"][0]["properties"].contains("edgelets"));
  EXPECT_EQ(after["features"][1], file["features"][1]);
}

TEST(Repair, RingsAreClosedAndTurnedAsTheFormatWants) {
  const Json file =
      repaired(multiPolygon({{bowTie}, {clockwiseSquare(20, 0, 6), square(22, 2, 1)}})).file;
  const auto signedArea = [](const Json& ring) {
    double sum = 0.0;
    for (std::size_t i = 1; i < ring.size(); ++i) {
      sum += ring[i - 1][0].get<double>() * ring[i][1].get<double>() -
             ring[i][0].get<double>() * ring[i - 1][1].get<double>();
    }
    return sum / 2.0;
  };
  const Json& parts = file["geometry"]["coordinates"];
  ASSERT_EQ(parts.size(), 2);
  ASSERT_EQ(parts[1].size(), 2);
  for (const Json& part : parts) {
    for (const Json& ring : part) EXPECT_EQ(ring.front(), ring.back());
  }
  EXPECT_GT(signedArea(parts[0][0]), 0.0);
  EXPECT_EQ(signedArea(parts[1][0]), 36.0);
  EXPECT_EQ(signedArea(parts[1][1]), -1.0);
}

TEST(Repair, ABareGeometryOrFeatureStaysOne) {
  const Json geometry =
      repaired(std::string(R"({"type":"Polygon","coordinates":[)") + bowTie + "]}").file;
  EXPECT_EQ(geometry["type"], "Polygon");
  EXPECT_EQ(geometry["coordinates"][0].size(), 7);
  EXPECT_EQ(repaired(polygon({bowTie})).file["type"], "Feature");
}

TEST(Repair, TheSamplesNeedNoneAndComeBackByteForByte) {
  const Directory directory;
  for (const std::string name : {"coins.geojson", "cell.geojson", "cell-edgelets.geojson"}) {
    const std::string out = directory.path(name);
    EXPECT_EQ(run({"repair", "samples/" + name, "-o", out}).status, 0);
    EXPECT_EQ(run({"repair", out, "-o", out}).status, 0) << "a file may be written over itself";
  }
  std::ifstream sample(repositoryDirectory() + "/samples/coins.geojson");
  std::ostringstream text;
  text << sample.rdbuf();
  EXPECT_EQ(directory.read("coins.geojson"), text.str());
}

TEST(Repair, TheReportGoesToStandardErrorWhenTheOutlinesGoToStandardOutput) {
  const auto result = run({"repair"}, polygon({bowTie}));
  EXPECT_EQ(Json::parse(result.out)["type"], "Feature");
  EXPECT_THAT(result.messages, HasSubstr("repaired: vertices 4 -> 6"));
}

TEST(Repair, AnUnreadableFileLeavesNothing) {
  const Directory directory;
  const auto result = run({"repair", "-o", directory.path("out.json")}, "nothing");
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(directory.names(), ElementsAre());
}

TEST(Repair, AFileThatCannotBeWrittenEndsWithStatusTwo) {
  const Directory directory;
  const std::string file = directory.path("out.json");
  const auto result = runOnFullDisk({"repair", "samples/coins.geojson", "-o", file});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.messages, "cntr: " + file + ": cannot be written: File too large\n");
  EXPECT_EQ(result.out, "");
  EXPECT_THAT(directory.names(), ElementsAre());
}

TEST(Repair, WrongUsageEndsWithStatusTwo) {
  EXPECT_EQ(run({"repair", "--mode", "magic", "-o", "-"}, polygon({bowTie})).status, 2);
}
