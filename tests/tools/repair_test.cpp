// SPDX-License-Identifier: MIT
//
// cntr repair: what becomes of outlines that cross, the messages about it, and what is written.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include <testing/plain/filled.h>
#include <testing/shapes/shapes.h>

#include "areas.h"
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

Outcome repaired(const std::string& file, const std::string& rule = "nonzero") {
  const Directory directory;
  const auto result = run({"repair", "--rule", rule, "-", "-o", directory.path("out.json")}, file);
  return {result.status, result.out, result.messages, Json::parse(directory.read("out.json"))};
}

/// The rows of the report.
Json reportOf(const std::string& file, std::vector<std::string> arguments, int status = 0) {
  const Directory directory;
  arguments.insert(arguments.begin(), "repair");
  arguments.insert(arguments.end(), {"--json", "-o", directory.path("out.json")});
  const auto result = run(arguments, file);
  EXPECT_EQ(result.status, status) << result.messages;
  return Json::parse(result.out);
}

class EachWalk : public testing::TestWithParam<const char*> {};

TEST(Repair, ABowTieBecomesItsTwoLobes) {
  const Outcome outcome = repaired(collection({polygon({bowTie}, R"("label":7)")}));
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.messages, "");
  EXPECT_EQ(
      outcome.report,
      "feature  label  result    area_before  area_after  vertices_before  vertices_after  "
      "parts  holes\n"
      "      1      7  repaired      8.00000     8.00000                4               6      "
      "2      0\n");
  EXPECT_EQ(outcome.file["features"][0]["geometry"],
            Json::parse(R"({"type":"MultiPolygon","coordinates":[
              [[[0.0,0.0],[2.0,2.0],[0.0,4.0],[0.0,0.0]]],
              [[[2.0,2.0],[4.0,0.0],[4.0,4.0],[2.0,2.0]]]]})"));
  EXPECT_EQ(outcome.file["features"][0]["properties"], Json::parse(R"({"label":7})"));
}

TEST(Repair, RulesDifferWhereOutlinesOverlap) {
  const std::string file = multiPolygon({{square(0, 0, 4)}, {square(2, 2, 4)}});
  const Outcome nonzero = repaired(file, "nonzero");
  EXPECT_EQ(areaOf(nonzero.file), 28.0);
  EXPECT_EQ(nonzero.file["geometry"]["type"], "Polygon");
  const Outcome evenodd = repaired(file, "evenodd");
  EXPECT_EQ(areaOf(evenodd.file), 24.0);
  EXPECT_EQ(evenodd.file["geometry"]["type"], "MultiPolygon");
}

TEST(Repair, ReportsFieldsRatherThanProse) {
  EXPECT_EQ(reportOf(polygon({bowTie, square(0.25, 1.75, 0.5)}, R"("label":"seal")"), {}),
            Json::parse(R"([{"feature":1,"label":"seal","result":"repaired","area_before":7.75,
              "area_after":7.75,"vertices_before":8,"vertices_after":10,"parts":2,"holes":1,
              "snapped":null,"note":null}])"));
}

TEST(Repair, AValidFeatureIsUnchangedAndInNormalForm) {
  const std::string file = collection({polygon({clockwiseSquare(0, 0, 10), square(2, 2, 4)}),
                                       multiPolygon({{square(10, 0, 4)}, {square(0, 0, 4)}}),
                                       polygon({square(0, 0, 4)})});
  const Outcome outcome = repaired(file);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.file["features"][0]["geometry"]["coordinates"],
            Json::parse("[[[0,0],[10,0],[10,10],[0,10],[0,0]],[[2,2],[2,6],[6,6],[6,2],[2,2]]]"));
  EXPECT_EQ(outcome.file["features"][1]["geometry"],
            Json::parse(multiPolygon({{square(0, 0, 4)}, {square(10, 0, 4)}}))["geometry"]);
  EXPECT_EQ(outcome.file["features"][2], Json::parse(file)["features"][2]);
  for (const Json& row : reportOf(file, {})) EXPECT_EQ(row["result"], "unchanged");
}

TEST(Repair, AFeatureInNormalFormKeepsItsBytes) {
  const std::string text =
      R"({"type":"Feature","properties":{"n":[1.5,null]},"geometry":{"type":"Polygon",)"
      R"("coordinates":[[[0,0,7.5],[4.0,0,7.5],[4,4.0,7.5],[0,0,7.5]]]}})";
  const auto result = run({"repair", "--quiet"}, text);
  EXPECT_EQ(result.out, text + "\n");
}

TEST(Repair, EdgeElementsStayWithTheirVerticesWhereTheRingIsTheSame) {
  const std::string elements = R"("edgelets":[[1,2],[3,4],[5,6],[7,8]])";
  const Outcome outcome = repaired(collection(
      {polygon({"[[4,4],[4,0],[0,0],[0,4],[4,4]]"}, elements),
       polygon({"[[4,4],[0,4],[0,0],[4,0],[4,4]]"}, elements), polygon({bowTie}, elements)}));
  const Json& features = outcome.file["features"];
  EXPECT_EQ(features[0]["properties"]["edgelets"], Json::parse("[[5,6],[3,4],[1,2],[7,8]]"));
  EXPECT_EQ(features[1]["properties"]["edgelets"], Json::parse("[[5,6],[7,8],[1,2],[3,4]]"));
  EXPECT_FALSE(features[2]["properties"].contains("edgelets"));
  EXPECT_THAT(outcome.report, HasSubstr("  edge elements left out\n"));
}

TEST(Repair, HolesThatTouchLoseNothing) {
  // One along an edge, one in a corner, and two that touch each other.
  const std::string file = polygon(
      {square(0, 0, 20), square(0, 2, 3), square(10, 10, 2), square(12, 12, 2), square(8, 10, 2)});
  const Outcome outcome = repaired(file);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(areaOf(outcome.file), 400.0 - 9.0 - 12.0);
  const Json again = reportOf(outcome.file.dump(), {})[0];
  EXPECT_EQ(again["result"], "unchanged");
  EXPECT_EQ(again["area_after"], 379.0);
}

TEST(Repair, ALineWalkedThereAndBackFails) {
  const std::string file =
      collection({polygon({"[[0,0],[4,4],[8,8],[4,4],[0,0]]"}), polygon({square(0, 0, 4)})});
  for (const char* rule : {"nonzero", "evenodd", "walk", "outer-hull"}) {
    const Outcome outcome = repaired(file, rule);
    EXPECT_EQ(outcome.status, 1) << rule;
    EXPECT_EQ(outcome.messages, "cntr: standard input: feature 1: the feature has no area\n")
        << rule;
    EXPECT_EQ(outcome.file["features"][0], Json::parse(file)["features"][0]) << rule;
    EXPECT_EQ(reportOf(file, {"--rule", rule}, 1)[0]["result"], "failed") << rule;
  }
}

TEST(Repair, OutlinesTooSmallForTheirAreaToBeANumberAreRepaired) {
  const Outcome outcome =
      repaired(collection({polygon({"[[0,0],[4e-200,4e-200],[4e-200,0],[0,4e-200],[0,0]]"})}));
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.file["features"][0]["geometry"]["coordinates"].size(), 2U);
}

TEST(Repair, OpenLinesAreUnchanged) {
  const std::string file = collection({feature("LineString", "[[0,0],[4,4],[4,0],[0,4]]")});
  EXPECT_EQ(repaired(file).file, Json::parse(file));
  EXPECT_EQ(reportOf(file, {})[0],
            Json::parse(R"({"feature":1,"label":null,"result":"unchanged","area_before":null,
              "area_after":null,"vertices_before":4,"vertices_after":4,"parts":1,"holes":0,
              "snapped":null,"note":"open line"})"));
}

TEST(Repair, SaysWhichGridVerticesWereMovedTo) {
  std::vector<std::string> features;
  for (std::uint64_t seed = 0; seed < 100; ++seed) {
    // Nearly on a line: they cross more often than doubles can tell.
    shapes::Random random(seed);
    auto ring = shapes::collinear(random, 30);
    shapes::rotate(ring, 0.3);
    ring.emplace_back(1000.0, 0.0);
    Json json = Json::array();
    for (const auto& p : ring) json.push_back({p.x(), p.y()});
    features.push_back(polygon({json.dump()}));
  }
  std::size_t snapped = 0;
  for (const Json& row : reportOf(collection(features), {}, 1)) {
    if (row["snapped"] == nullptr) continue;
    ++snapped;
    EXPECT_GT(row["snapped"], 0.0);
    EXPECT_LT(row["snapped"], 1e-8);
  }
  EXPECT_GT(snapped, 0U);
  EXPECT_LT(snapped, 100U);
}

TEST(Repair, ARepairThatLosesTooMuchFailsAndTheFeatureIsWrittenAsItWas) {
  // Two of three lobes lie on the other side of the crossing.
  const std::string file = multiPolygon({{square(0, 4, 12)}, {square(4, 0, 12)}});
  const Json lenient = reportOf(file, {"--rule", "walk", "--max-loss", "0.7"})[0];
  EXPECT_EQ(lenient["result"], "repaired");
  EXPECT_EQ(lenient["area_before"], 288.0 - 64.0);
  EXPECT_EQ(lenient["area_after"], 160.0);
  const Outcome outcome = repaired(file, "walk");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.messages, "cntr: standard input: feature 1: would lose 28.6 % of its area\n");
  EXPECT_EQ(outcome.file, Json::parse(file));
  const Json strict = reportOf(file, {"--rule", "walk"}, 1)[0];
  EXPECT_EQ(strict["result"], "failed");
  EXPECT_EQ(strict["area_before"], 224.0);
  EXPECT_EQ(strict["area_after"], nullptr);
  EXPECT_EQ(strict["note"], "would lose 28.6 % of its area");
  EXPECT_EQ(reportOf(file, {"--max-loss", "0"})[0]["area_after"], 224.0);
}

TEST(Repair, RepairingAgainChangesNoByte) {
  const Directory directory;
  const std::string once = directory.path("once.json");
  const std::string twice = directory.path("twice.json");
  shapes::Random random(5);
  std::vector<std::string> features;
  for (int k = 0; k < 300; ++k) {
    std::vector<std::string> rings;
    for (std::size_t r = 0; r <= random.below(3); ++r) {
      Json ring = Json::array();
      const std::size_t n = 3 + random.below(12);
      for (const auto& p : k % 2 == 0 ? shapes::gridPoints(random, n, 3 + random.below(9))
                                      : shapes::closedWalk(random, n))
        ring.push_back({p.x(), p.y()});
      rings.push_back(ring.dump());
    }
    features.push_back(polygon(rings));
  }
  for (const std::string rule : {"nonzero", "evenodd"}) {
    EXPECT_LE(run({"repair", "--rule", rule, "-o", once}, collection(features)).status, 1);
    const auto report = run({"repair", "--jsonl", "--rule", rule, once, "-o", twice});
    EXPECT_EQ(directory.read("once.json"), directory.read("twice.json")) << rule;
    EXPECT_THAT(report.out, testing::Not(HasSubstr("repaired"))) << rule;
    const Json written = Json::parse(directory.read("once.json"));
    std::istringstream rows(report.out);
    for (const Json& one : written.at("features")) {
      std::string row;
      std::getline(rows, row);
      if (Json::parse(row).at("result") == "failed") continue;  // It is written as it was.
      Json first;
      for (const Json& part : polygonsOf(one)) {
        EXPECT_EQ(*std::min_element(part[0].begin(), part[0].end()), part[0][0]);
        EXPECT_LE(first, part[0][0]);
        first = part[0][0];
      }
    }
  }
}

TEST(Repair, TheAreaIsThatOfTheRule) {
  std::uint64_t compared = 0;
  std::vector<std::string> features;
  std::vector<plain::Parts> inputs;
  shapes::Random random(8);
  for (int k = 0; k < 150; ++k) {
    const auto outline = shapes::cloud(random, 3 + random.below(12));
    const auto hole = shapes::cloud(random, 3 + random.below(5));
    Json rings = Json::array({Json::array(), Json::array()});
    for (const auto& p : outline) rings[0].push_back({p.x(), p.y()});
    for (const auto& p : hole) rings[1].push_back({p.x(), p.y()});
    features.push_back(polygon({rings[0].dump(), rings[1].dump()}));
    inputs.push_back({{outline, {hole}}});
  }
  for (const auto& [rule, plainRule] :
       {std::pair("nonzero", plain::Rule::nonZero), std::pair("evenodd", plain::Rule::evenOdd)}) {
    const Directory directory;
    const auto result = run({"repair", "--json", "--rule", rule, "-o", directory.path("out.json")},
                            collection(features));
    const Json rows = Json::parse(result.out);
    const Json after = Json::parse(directory.read("out.json"))["features"];
    for (std::size_t k = 0; k < inputs.size(); ++k) {
      if (rows[k]["result"] == "failed" || rows[k]["snapped"] != nullptr) continue;
      ++compared;
      const double area = plain::filledArea(inputs[k], plainRule);
      EXPECT_NEAR(rows[k]["area_before"], area, 1e-9 * area + 1e-9) << k;
      EXPECT_NEAR(areaOf(after[k]), area, 1e-9 * area + 1e-9) << k;
    }
  }
  EXPECT_GT(compared, 250U);
}

TEST_P(EachWalk, PartsThatCrossAreMerged) {
  const Outcome outcome = repaired(
      multiPolygon({{square(0, 0, 4)}, {square(3, 3, 4)}, {square(20, 0, 6), square(22, 2, 1)}}),
      GetParam());
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.file["geometry"]["type"], "MultiPolygon");
  const Json polygons = polygonsOf(outcome.file);
  ASSERT_EQ(polygons.size(), 2);
  EXPECT_EQ(polygons[1].size(), 2) << "the part that crosses nothing keeps its hole";
}

TEST_P(EachWalk, FeaturesWithoutCrossingsKeepTheirBytes) {
  const std::string file = collection({polygon({clockwiseSquare(0, 0, 10), square(2, 2, 4)}),
                                       multiPolygon({{square(10, 0, 4)}, {square(0, 0, 4)}})});
  const Outcome outcome = repaired(file, GetParam());
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.file, Json::parse(file));
  EXPECT_EQ(reportOf(file, {"--rule", GetParam()})[0]["area_after"], 84.0);
}

TEST_P(EachWalk, AllPartsOfAChainAreMerged) {
  // The first pass merges 1 with 3 and leaves 2, which crosses only what that gives.
  const std::string file = multiPolygon({{square(0, 0, 4)}, {square(6, 0, 4)}, {square(3, 1, 4)}});
  const Json row = reportOf(file, {"--rule", GetParam(), "--max-loss", "1"})[0];
  EXPECT_EQ(row["parts"], 1);
}

TEST_P(EachWalk, AnOutlineWithoutAWayRoundIsNamedAndWrittenAsItWas) {
  // A pentagram: every edge is crossed, so there is none to start from.
  const std::string pentagram =
      polygon({"[[10,0],[-8.09,5.88],[3.09,-9.51],[3.09,9.51],[-8.09,-5.88]]"});
  const std::string file = collection({pentagram, polygon({square(0, 0, 4)})});
  const Outcome outcome = repaired(file, GetParam());
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.messages,
            "cntr: standard input: feature 1: cannot be repaired: every edge is crossed, or no "
            "walk along them comes back to its start\n");
  EXPECT_EQ(outcome.file, Json::parse(file));
}

INSTANTIATE_TEST_SUITE_P(Repair, EachWalk, testing::Values("walk", "outer-hull"),
                         [](const auto& rule) {
                           return std::string(rule.index == 0 ? "Walk" : "OuterHull");
                         });

TEST(Repair, TheWalksDiffer) {
  // A loop that the outline makes inside itself.
  const std::string file =
      polygon({"[[0,0],[10,0],[10,10],[4,10],[4,4],[7,4],[7,7],[2,7],[2,10],[0,10]]"});
  const Outcome walked = repaired(file, "walk");
  const Outcome hull = repaired(file, "outer-hull");
  EXPECT_EQ(walked.status, 0);
  EXPECT_EQ(hull.status, 0);
  EXPECT_NE(walked.file, hull.file);
}

TEST(Repair, ModeIsAnotherWordForRule) {
  const std::string file =
      polygon({"[[0,0],[10,0],[10,10],[4,10],[4,4],[7,4],[7,7],[2,7],[2,10],[0,10]]"});
  EXPECT_EQ(run({"repair", "--mode", "regularize"}, file).out,
            run({"repair", "--rule", "walk"}, file).out);
  EXPECT_EQ(run({"repair", "--mode", "outer-hull"}, file).out,
            run({"repair", "--rule", "outer-hull"}, file).out);
  EXPECT_EQ(run({"repair", "--mode", "outer-hull", "--rule", "walk"}, file).status, 2);
}

TEST(Repair, NonzeroIsTheDefault) {
  const auto named = run({"repair", "--rule", "nonzero", "-o", "-"}, polygon({bowTie}));
  const auto unnamed = run({"repair", "-o", "-"}, polygon({bowTie}));
  EXPECT_EQ(unnamed.out, named.out);
  EXPECT_EQ(unnamed.status, 0);
}

TEST(Repair, AWalkOfWhichNothingIsLeftFails) {
  // A walk on a grid that goes back and forth on the same edges, beside a square.
  const std::string toAndFro =
      "[[0,0],[0,-1],[1,-1],[1,-2],[1,-1],[0,-1],[0,-2],[-1,-2],[0,-2],[0,-3],[1,-3],[1,-2],"
      "[1,-3],[1,-4]]";
  const Json row = reportOf(polygon({toAndFro}), {"--rule", "outer-hull"}, 1)[0];
  EXPECT_EQ(row["result"], "failed");
}

TEST(Repair, SaysWhenAWalkedOutlineStillCrossesItself) {
  // The last vertex lies on the second edge within 1e-6.
  const Json row = reportOf(
      polygon({"[[0,0],[-2.1613679683140927,1.6126009124068794],[-3.7828315694647183,"
               "1.4011949795651022],[-2.1068384448486723,6.0924936819063955],[-2.5931833362287597,"
               "1.5563019640878486]]"}),
      {"--rule", "walk", "--max-loss", "1"})[0];
  EXPECT_EQ(row["result"], "repaired");
  EXPECT_EQ(row["note"], "still crosses itself");
}

TEST(Repair, AWalkLeavesHolesOutAndCountsThem) {
  const std::string file =
      polygon({bowTie, square(0.5, 1.5, 0.25)}, R"("edgelets":[[1,2],[3,4],[5,6],[7,8]])");
  const Json row = reportOf(file, {"--rule", "walk"})[0];
  EXPECT_EQ(row["note"], "1 hole left out, edge elements left out");
  EXPECT_EQ(row["holes"], 0);
  EXPECT_EQ(row["area_before"], 8.0 - 0.0625);
  EXPECT_EQ(row["area_after"], 8.0);
}

TEST(Repair, AHoleThatTouchesItsOutlineFailsToBeWalked) {
  const std::string file = polygon({square(0, 0, 10), square(0, 0, 2)});
  const Outcome outcome = repaired(file, "walk");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.messages, HasSubstr("feature 1: hole 1 crosses or touches its outline\n"));
  EXPECT_EQ(outcome.file, Json::parse(file));
}

TEST(Repair, FeaturesThatCannotBeReadAreWrittenAsTheyWereAndHaveFailed) {
  const std::string file = collection({polygon({"[[1,1]]"}), polygon({bowTie})});
  const Outcome outcome = repaired(file);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.file["features"][0], Json::parse(file)["features"][0]);
  EXPECT_NE(outcome.file["features"][1], Json::parse(file)["features"][1]);
  const Json rows = reportOf(file, {}, 1);
  ASSERT_EQ(rows.size(), 2);
  EXPECT_EQ(rows[0]["result"], "failed");
  EXPECT_EQ(rows[0]["note"], "outline has 1 point, but needs 3");
  EXPECT_EQ(rows[1]["result"], "repaired");
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
  Json file = Json::parse(collection({polygon({bowTie}), polygon({square(0, 0, 4)})}));
  const Json box = Json::array({0, 0, 4, 4});
  file["bbox"] = box;
  for (Json& one : file["features"]) one["bbox"] = one["geometry"]["bbox"] = box;
  const Json after = repaired(file.dump()).file;
  EXPECT_FALSE(after.contains("bbox"));
  EXPECT_FALSE(after["features"][0].contains("bbox"));
  EXPECT_FALSE(after["features"][0]["geometry"].contains("bbox"));
  EXPECT_EQ(after["features"][1], file["features"][1]);
}

TEST(Repair, ABareGeometryOrFeatureStaysOne) {
  const Json geometry =
      repaired(std::string(R"({"type":"Polygon","coordinates":[)") + bowTie + "]}").file;
  EXPECT_EQ(geometry["type"], "MultiPolygon");
  EXPECT_EQ(geometry["coordinates"].size(), 2);
  EXPECT_EQ(repaired(polygon({bowTie})).file["type"], "Feature");
}

TEST(Repair, TheSamplesNeedNone) {
  const Directory directory;
  for (const std::string name : {"coins.geojson", "cell.geojson", "cell-edgelets.geojson"}) {
    const std::string out = directory.path(name);
    const auto once = run({"repair", "--jsonl", "samples/" + name, "-o", out});
    EXPECT_EQ(once.status, 0);
    EXPECT_THAT(once.out, testing::Not(HasSubstr("repaired")));
    EXPECT_THAT(once.out, HasSubstr("unchanged"));
    const std::string text = directory.read(name);
    EXPECT_EQ(run({"repair", out, "-o", out}).status, 0) << "a file may be written over itself";
    EXPECT_EQ(directory.read(name), text);
  }
}

TEST(Repair, TheReportGoesToStandardErrorWhenTheOutlinesGoToStandardOutput) {
  const auto result = run({"repair"}, polygon({bowTie}));
  EXPECT_EQ(Json::parse(result.out)["type"], "Feature");
  EXPECT_THAT(result.messages, HasSubstr("      1  repaired  "));
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
  EXPECT_EQ(run({"repair", "--rule", "magic", "-o", "-"}, polygon({bowTie})).status, 2);
  EXPECT_EQ(run({"repair", "--max-loss", "2", "-o", "-"}, polygon({bowTie})).status, 2);
  EXPECT_EQ(run({"repair", "--mode", "magic", "-o", "-"}, polygon({bowTie})).status, 2);
}

}  // namespace
