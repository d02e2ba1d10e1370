// SPDX-License-Identifier: MIT
//
// What the program reads, and the messages about what it cannot read.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "program.h"

using program::collection;
using program::feature;
using program::Json;
using program::multiPolygon;
using program::polygon;
using program::run;
using program::runJson;
using program::square;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

const std::string goodFeature = polygon({square(0, 0, 2)}, R"("label":7)");

struct BadFeature {
  const char* name;
  std::string json;
  const char* message;
};

class ABadFeature : public testing::TestWithParam<BadFeature> {};

TEST_P(ABadFeature, IsNamedOnStandardErrorAndTheOthersAreAnswered) {
  const std::string file = collection({goodFeature, GetParam().json, goodFeature});
  const auto result = run({"measure", "--json", "-"}, file);
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.messages,
            std::string("cntr: standard input: feature 2: ") + GetParam().message + "\n");
  const Json rows = Json::parse(result.out);
  ASSERT_EQ(rows.size(), 3);
  EXPECT_EQ(rows[0]["feature"], 1);
  EXPECT_EQ(rows[1]["feature"], 2);
  EXPECT_EQ(rows[1]["note"], GetParam().message);
  EXPECT_EQ(rows[1]["area"], nullptr);
  EXPECT_EQ(rows[2]["feature"], 3);
  EXPECT_EQ(rows[2]["area"], 4.0);
}

INSTANTIATE_TEST_SUITE_P(
    Each, ABadFeature,
    testing::Values(
        BadFeature{"OnePoint", feature("Polygon", "[[[1,1],[1,1]]]"),
                   "outline has 1 point, but needs 3"},
        BadFeature{"TwoPoints", feature("Polygon", "[[[1,1],[2,1],[1,1]]]"),
                   "outline has 2 points, but needs 3"},
        BadFeature{"NoPoints", feature("Polygon", "[[]]"), "outline has 0 points, but needs 3"},
        BadFeature{"NoOutline", feature("Polygon", "[]"), "no outline"},
        BadFeature{"HoleOfOnePoint", polygon({square(0, 0, 9), "[[1,1]]"}),
                   "hole 1 has 1 point, but needs 3"},
        BadFeature{"LineOfOnePoint", feature("LineString", "[[1,1]]"),
                   "line has 1 point, but needs 2"},
        BadFeature{"TextForX", feature("Polygon", R"([[[0,0],["one",0],[1,1]]])"),
                   R"(outline, vertex 1: x is "one", not a number)"},
        BadFeature{"NothingForY", feature("LineString", "[[0,0],[1,null]]"),
                   "line, vertex 1: y is null, not a number"},
        BadFeature{"ShortPosition", feature("LineString", "[[0,0],[1]]"),
                   "line, vertex 1: [1] is not a position [x, y]"},
        BadFeature{"NumberForPosition", feature("Polygon", "[[0,0,1]]"),
                   "outline, vertex 0: 0 is not a position [x, y]"},
        BadFeature{
            "PlaceInAPart",
            multiPolygon({{square(0, 0, 9)}, {square(20, 0, 9), R"([[21,1],[22,1],[22,"2"]])"}}),
            R"(part 2, hole 1, vertex 2: y is "2", not a number)"},
        BadFeature{"NoParts", feature("MultiPolygon", "[]"), "no coordinates"},
        BadFeature{"NoCoordinates", R"({"type":"Feature","geometry":{"type":"Polygon"}})",
                   "coordinates: null is not a list"},
        BadFeature{"NoGeometry", R"({"type":"Feature","properties":{}})", "no geometry"},
        BadFeature{"NullGeometry", R"({"type":"Feature","geometry":null})", "no geometry"},
        BadFeature{"Point", feature("Point", "[1,2]"), "a Point has no outline"},
        BadFeature{"Collection", R"({"type":"GeometryCollection","geometries":[]})",
                   "a GeometryCollection has no outline"},
        BadFeature{"UnknownGeometry", feature("Circle", "[1,2]"),
                   R"({"type":"Circle","coordinates":[1,2]} is not a geometry)"},
        BadFeature{"Number", "3", "3 is not a Feature"},
        BadFeature{"LongText", R"("xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx")",
                   "\"xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx... is not a Feature"},
        BadFeature{"LabelOfAnotherKind", feature("LineString", "[[0,0],[1,1]]", R"("label":true)"),
                   "label is true, not a whole number from 0 to 4294967295"},
        BadFeature{"NegativeLabel", feature("LineString", "[[0,0],[1,1]]", R"("label":-1)"),
                   "label is -1, not a whole number from 0 to 4294967295"},
        BadFeature{"WideLabel", feature("LineString", "[[0,0],[1,1]]", R"("label":4294967296)"),
                   "label is 4294967296, not a whole number from 0 to 4294967295"},
        BadFeature{"EdgeletsNoList", feature("LineString", "[[0,0],[1,1]]", R"("edgelets":7)"),
                   "edgelets: 7 is not a list"},
        BadFeature{"TooFewEdgelets", polygon({square(0, 0, 2)}, R"("edgelets":[[1,2],[1,2]])"),
                   "2 edgelets for 4 vertices"},
        BadFeature{"WideMagnitude",
                   feature("LineString", "[[0,0],[1,1]]", R"("edgelets":[[65535,0],[65536,0]])"),
                   "edgelet 1: [65536,0] is not [magnitude, angle], from 0 to 65535 and 255"},
        BadFeature{"WideAngle",
                   feature("LineString", "[[0,0],[1,1]]", R"("edgelets":[[0,256],[0,0]])"),
                   "edgelet 0: [0,256] is not [magnitude, angle], from 0 to 65535 and 255"},
        BadFeature{"BrokenEdgelet",
                   feature("LineString", "[[0,0],[1,1]]", R"("edgelets":[[0,1.5],[0,0]])"),
                   "edgelet 0: [0,1.5] is not [magnitude, angle], from 0 to 65535 and 255"},
        BadFeature{"EdgeletsOfSeveralParts",
                   multiPolygon({{square(0, 0, 2)}, {square(5, 0, 2)}}, R"("edgelets":[])"),
                   "edgelets need an outline of a single part"},
        BadFeature{"BrokenLabel", feature("LineString", "[[0,0],[1,1]]", R"("label":1.5)"),
                   "label is 1.5, not a whole number from 0 to 4294967295"}),
    [](const auto& tested) { return std::string(tested.param.name); });

struct BadFile {
  const char* name;
  std::string text;
  const char* message;
};

class AnUnreadableFile : public testing::TestWithParam<BadFile> {};

TEST_P(AnUnreadableFile, EndsWithStatusTwo) {
  const auto result = run({"measure", "--json", "-"}, GetParam().text);
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.messages,
              StartsWith(std::string("cntr: standard input: ") + GetParam().message));
  EXPECT_EQ(Json::parse(result.out), Json::array());
}

INSTANTIATE_TEST_SUITE_P(
    Each, AnUnreadableFile,
    testing::Values(BadFile{"Empty", "", "nothing in it\n"},
                    BadFile{"Blank", " \n\t\n", "nothing in it\n"},
                    BadFile{"NotJson", "<svg/>", "not GeoJSON: neither a FeatureCollection"},
                    BadFile{"CutOff", goodFeature.substr(0, 30),
                            "not JSON: line 1, column 31: ':' expected"},
                    BadFile{"TooLargeNumber",
                            R"({"type":"FeatureCollection",
                               "x":1e999,"features":[]})",
                            "not JSON: line 2, column 36: a number that is malformed or too large"},
                    BadFile{"OtherJson", R"([1,2])", "not GeoJSON: neither a FeatureCollection"},
                    BadFile{"FeaturesNoList", R"({"type":"FeatureCollection","features":3})",
                            "not GeoJSON: neither a FeatureCollection"}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST(Input, AMissingFileEndsWithStatusTwo) {
  const auto result = run({"measure", "no/such/file"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.messages, "cntr: no/such/file: cannot be read: No such file or directory\n");
  EXPECT_THAT(result.out, IsEmpty());
}

TEST(Input, ADirectoryEndsWithStatusTwo) {
  const auto result = run({"measure", "samples"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.messages, "cntr: samples: cannot be read: Is a directory\n");
}

TEST(Input, TheOtherFilesAreAnsweredWhenOneCannotBeRead) {
  const program::Directory directory;
  const std::string good = directory.write("good.json", goodFeature);
  const auto result = run({"measure", "--json", "no/such/file", good});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.messages, HasSubstr("no/such/file"));
  EXPECT_EQ(Json::parse(result.out).size(), 1);
}

TEST(Input, TheWorstOfSeveralFilesDecidesTheStatus) {
  const program::Directory directory;
  const std::string flawed = directory.write("flawed.json", polygon({"[[1,1]]"}));
  EXPECT_EQ(run({"measure", flawed, "no/such/file"}).status, 2);
  EXPECT_EQ(run({"measure", "no/such/file", flawed}).status, 2);
  EXPECT_EQ(run({"measure", flawed, "samples/cell.geojson"}).status, 1);
}

TEST(Input, AFeatureOrAGeometryCanStandAlone) {
  const Json ofFeature = runJson({"measure"}, goodFeature);
  ASSERT_EQ(ofFeature.size(), 1);
  EXPECT_EQ(ofFeature[0]["label"], 7);
  const Json ofGeometry =
      runJson({"measure"}, R"({"type":"Polygon","coordinates":[[[0,0],[2,0],[2,2],[0,2]]]})");
  ASSERT_EQ(ofGeometry.size(), 1);
  EXPECT_EQ(ofGeometry[0]["label"], nullptr);
  EXPECT_EQ(ofGeometry[0]["area"], 4.0);
}

TEST(Input, FilesAndFeaturesAreAnsweredInTheirOrder) {
  const program::Directory directory;
  const auto labelled = [](int label) {
    return feature("LineString", "[[0,0],[1,1]]", "\"label\":" + std::to_string(label));
  };
  const std::string first = directory.write("b.json", collection({labelled(5), labelled(3)}));
  const std::string last = directory.write("a.json", collection({labelled(4)}));
  const Json rows = runJson({"measure", first, "-", last}, labelled(9));
  ASSERT_EQ(rows.size(), 4);
  const std::vector<int> labels{rows[0]["label"], rows[1]["label"], rows[2]["label"],
                                rows[3]["label"]};
  EXPECT_EQ(labels, (std::vector<int>{5, 3, 9, 4}));
  EXPECT_EQ(rows[1]["feature"], 2);
  EXPECT_EQ(rows[1]["file"], first);
  EXPECT_EQ(rows[2]["file"], "standard input");
  EXPECT_EQ(rows[3]["file"], last);
}

TEST(Input, WithoutAFileStandardInputIsRead) {
  EXPECT_EQ(runJson({"measure"}, goodFeature).size(), 1);
}

TEST(Input, ARingsRepeatedPointIsNoVertex) {
  EXPECT_EQ(runJson({"measure"}, goodFeature)[0]["vertices"], 4);
  const Json open = runJson({"measure"}, feature("Polygon", "[[[0,0],[2,0],[2,2],[0,2]]]"));
  EXPECT_EQ(open[0]["vertices"], 4) << "a ring that does not repeat its first point is closed too";
  const Json twice = runJson({"measure"}, feature("Polygon", "[[[0,0],[2,0],[2,2],[0,0],[0,0]]]"));
  EXPECT_EQ(twice[0]["vertices"], 4) << "one point is dropped, not every one that is equal";
}

TEST(Input, ALineKeepsAllItsPoints) {
  const Json rows = runJson({"measure"}, feature("LineString", "[[0,0],[2,0],[2,2],[0,0]]"));
  EXPECT_EQ(rows[0]["vertices"], 4);
  EXPECT_EQ(rows[0]["closed"], false);
}

TEST(Input, HeightsAreIgnored) {
  const Json rows = runJson({"measure"}, feature("Polygon", "[[[0,0,5],[2,0,6],[2,2,7],[0,0,5]]]"));
  EXPECT_EQ(rows[0]["area"], 2.0);
}

TEST(Input, LabelsFillThirtyTwoBits) {
  const auto label = [](const std::string& text) {
    return runJson({"measure"},
                   feature("LineString", "[[0,0],[1,1]]", "\"label\":" + text))[0]["label"];
  };
  EXPECT_EQ(label("4294967295"), 4294967295U);
  EXPECT_EQ(label("0"), 0);
  EXPECT_EQ(label("3.0"), 3);
  EXPECT_EQ(label("null"), nullptr);
}

TEST(Input, AByteOrderMarkIsSkipped) {
  EXPECT_EQ(runJson({"measure"}, "\xEF\xBB\xBF" + goodFeature).size(), 1);
}

}  // namespace
