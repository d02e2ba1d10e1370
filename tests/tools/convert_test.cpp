// SPDX-License-Identifier: MIT
//
// cntr convert: what is written in each format, what is kept and what is reported as lost.

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
using program::runOnFullDisk;
using program::square;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

/// Standard output of a conversion of a text; there must be no message.
std::string converted(const std::string& to, const std::string& text) {
  const auto result = run({"convert", "-o", "-", "--to", to}, text);
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.messages, "");
  return result.out;
}

/// The messages about what is lost.
std::string lost(const std::string& to, const std::string& text) {
  const auto result = run({"convert", "-o", "-", "--to", to}, text);
  EXPECT_EQ(result.status, 0);
  return result.messages;
}

const std::string squareWithHole =
    polygon({square(0, 0, 9), clockwiseSquare(1, 1, 2)}, R"("label":7)");

}  // namespace

TEST(Convert, WritesWkt) {
  EXPECT_EQ(converted("wkt", collection({polygon({square(0, 0, 0.1), clockwiseSquare(1, 1, 2)}),
                                         feature("LineString", "[[0,0],[1e-7,-3]]"),
                                         multiPolygon({{square(0, 0, 1)}, {square(5, 0, 1)}}),
                                         feature("MultiLineString", "[[[0,0],[1,1]]]")})),
            "POLYGON ((0 0, 0.1 0, 0.1 0.1, 0 0.1, 0 0), (1 1, 1 3, 3 3, 3 1, 1 1))\n"
            "LINESTRING (0 0, 1e-07 -3)\n"
            "MULTIPOLYGON (((0 0, 1 0, 1 1, 0 1, 0 0)), ((5 0, 6 0, 6 1, 5 1, 5 0)))\n"
            "MULTILINESTRING ((0 0, 1 1))\n");
}

TEST(Convert, WritesCsv) {
  EXPECT_EQ(
      converted("csv", collection({polygon({square(0, 0, 1)}, R"("label":7)"),
                                   polygon({square(5, 5, 1)}, R"("label":7)"),
                                   feature("LineString", "[[0,0],[1,0.30000000000000004]]")})),
      "id,x,y\n"
      "7,0,0\n7,1,0\n7,1,1\n7,0,1\n"
      "\n"
      "7,5,5\n7,6,5\n7,6,6\n7,5,6\n"
      "#3/line,0,0\n#3/line,1,0.30000000000000004\n");
  EXPECT_EQ(converted("csv", squareWithHole),
            "id,x,y\n7,0,0\n7,9,0\n7,9,9\n7,0,9\n"
            "7/hole 1,1,1\n7/hole 1,1,3\n7/hole 1,3,3\n7/hole 1,3,1\n");
}

TEST(Convert, WritesGeoJsonWithRingsAsTheFormatWantsThem) {
  const Json file = Json::parse(converted(
      "geojson", "POLYGON ((0 0, 0 4, 4 4, 4 0), (1 1, 2 1, 2 2))\nLINESTRING (0 0, 0 4, 4 4)\n"));
  EXPECT_EQ(file["type"], "FeatureCollection");
  EXPECT_EQ(file["features"][0]["geometry"], Json::parse(R"({"type":"Polygon","coordinates":[
                [[0.0,0.0],[4.0,0.0],[4.0,4.0],[0.0,4.0],[0.0,0.0]],
                [[1.0,1.0],[2.0,2.0],[2.0,1.0],[1.0,1.0]]]})"))
      << "the first vertex stays the first";
  EXPECT_EQ(file["features"][1]["geometry"]["coordinates"].size(), 3) << "lines stay as they are";
}

TEST(Convert, TurnsRingsOfGeoJsonWithAllThatIsInThem) {
  const std::string clockwise =
      R"({"type":"Feature","id":5,"bbox":[0,0,2,2],"properties":)"
      R"({"label":1,"name":"Müller","edgelets":[[1,0],[2,0],[3,0],[4,0]]},)"
      R"("geometry":{"type":"Polygon","coordinates":)"
      R"([[[0,0,10],[0,2,20],[2,2,30],[2,0,40]]]},"note":[1.5,null]})";
  const Json after = Json::parse(converted("geojsonl", clockwise));
  Json expected = Json::parse(clockwise);
  expected["geometry"]["coordinates"] =
      Json::parse("[[[0,0,10],[2,0,40],[2,2,30],[0,2,20],[0,0,10]]]");
  expected["properties"]["edgelets"] = Json::parse("[[1,0],[4,0],[3,0],[2,0]]");
  EXPECT_EQ(after, expected) << "edge elements stay with their vertices";
}

TEST(Convert, KeepsTheMembersOfOneCollection) {
  const std::string text = R"({"type":"FeatureCollection","picture":"a.png","features":[)" +
                           squareWithHole + R"(],"width":10,"crs":{"a":[1]}})";
  const std::string file = converted("geojson", text);
  EXPECT_EQ(Json::parse(file), Json::parse(text));
  EXPECT_EQ(file,
            "{\n\"type\": \"FeatureCollection\",\n\"picture\": \"a.png\",\n\"features\": [\n" +
                Json::parse(squareWithHole).dump() +
                "\n],\n\"width\": 10,\n\"crs\": {\"a\":[1]}\n}\n");
}

TEST(Convert, TheSamplesComeBackByteForByte) {
  for (const std::string name : {"coins.geojson", "cell.geojson", "cell-edgelets.geojson"}) {
    std::ifstream sample(repositoryDirectory() + "/samples/" + name, std::ios::binary);
    std::ostringstream text;
    text << sample.rdbuf();
    const auto result = run({"convert", "samples/" + name, "-o", "-"});
    EXPECT_TRUE(result.out == text.str()) << name;
  }
}

TEST(Convert, ALoneFeatureStaysAlone) {
  const std::string pretty = Json::parse(squareWithHole).dump(1);
  EXPECT_EQ(Json::parse(converted("geojson", pretty)), Json::parse(squareWithHole));
  const std::string geometry = R"({"type":"Polygon",)"
                               "\n"
                               R"("coordinates":[[[0,0],[1,0],[1,1],[0,0]]]})";
  EXPECT_EQ(Json::parse(converted("geojson", geometry)), Json::parse(geometry));
}

TEST(Convert, JoinsFilesOfAnyFormat) {
  const Directory directory;
  const std::string wkt = directory.write("a.wkt", "POLYGON ((0 0, 2 0, 2 2))");
  const std::string lone =
      directory.write("b.json", R"({"type":"Polygon","coordinates":[[[0,0],[1,0],[1,1],[0,0]]]})");
  const std::string out = directory.path("out.geojson");
  const auto result = run({"convert", wkt, lone, "samples/coins.geojson", "-o", out});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.messages,
            "cntr: " + out + ": GeoJSON cannot hold members of the collections (1)\n");
  const Json file = Json::parse(directory.read("out.geojson"));
  EXPECT_EQ(file["features"].size(), 26);
  for (const Json& one : file["features"]) EXPECT_EQ(one["type"], "Feature");
  EXPECT_EQ(file.size(), 2) << "type and features";
}

TEST(Convert, TellsWhatIsLost) {
  const std::string rich =
      collection({R"({"type":"Feature","id":"a","properties":{"label":7,"name":"b"},"geometry":)"
                  R"({"type":"LineString","coordinates":[[0,0],[1,1]]}})",
                  polygon({square(0, 0, 9), square(1, 1, 2)},
                          R"("label":0,"edgelets":[[1,1],[2,2],[3,3],[4,4]])")});
  EXPECT_EQ(lost("geojsonl", rich), "");
  EXPECT_EQ(lost("wkt", rich),
            "cntr: standard output: WKT cannot hold edge elements (1), ids (1), labels (2), other "
            "properties (1)\n");
  EXPECT_EQ(lost("csv", rich),
            "cntr: standard output: CSV cannot hold edge elements (1), ids (1), other properties "
            "(1)\n");
  const Directory directory;
  const std::string file = directory.path("a.qcar");
  const auto result = run({"convert", "-o", file}, rich);
  EXPECT_EQ(result.messages, "cntr: " + file +
                                 ": an archive cannot hold edge elements (1), ids (1), labels (1), "
                                 "other properties (1)\n");
}

TEST(Convert, KeepsIdsThatCsvCanHold) {
  const auto csvOf = [](const std::string& id) {
    const auto result =
        run({"convert", "-o", "-", "--to", "csv"},
            R"({"type":"Feature","id":)" + id +
                R"(,"geometry":{"type":"LineString","coordinates":[[0,0],[1,1]]}})");
    return result.out.substr(7, result.out.find("/line") - 7);
  };
  EXPECT_EQ(csvOf("\"bolt\""), "bolt");
  EXPECT_EQ(csvOf("\"7\""), "#1") << "it would be read as a label";
  EXPECT_EQ(csvOf("7"), "#1");
  EXPECT_EQ(csvOf("\"a/hole 1\""), "#1");
  EXPECT_EQ(csvOf("\"a\\nb\""), "#1");
}

TEST(Convert, BadFeaturesAreLeftOut) {
  const Directory directory;
  const auto result = run({"convert", "-o", directory.path("out.wkt")},
                          "id,x,y\n1,0,0\n1,1,0\n1,1,1\n2,0,0\n3,0,0\n3,2,0\n3,2,2\n");
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.messages,
              HasSubstr("line 5, feature 2 (label 2): outline has 1 point, but needs 3\n"));
  EXPECT_EQ(directory.read("out.wkt"),
            "POLYGON ((0 0, 1 0, 1 1, 0 0))\nPOLYGON ((0 0, 2 0, 2 2, 0 0))\n");
}

TEST(Convert, AnArchiveTakesNoHolesThatCrossTheirOutline) {
  const Directory directory;
  const auto result =
      run({"convert", "-o", directory.path("out.qcar")},
          collection({polygon({square(0, 0, 4), square(2, 2, 4)}), squareWithHole}));
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.messages, HasSubstr("feature 1: hole 1 crosses or touches its outline\n"));
  EXPECT_EQ(run({"measure", directory.path("out.qcar")}).status, 0);
}

TEST(Convert, AnUnreadableInputLeavesNothing) {
  const Directory directory;
  const std::string good = directory.write("good.wkt", "POLYGON ((0 0, 2 0, 2 2))");
  const auto result = run({"convert", good, "no/such/file", "-o", directory.path("out.csv")});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(directory.names(), ElementsAre("good.wkt"));
}

TEST(Convert, AFullDiskEndsWithStatusTwoAndLeavesTheOldFile) {
  for (const char* name : {"out.wkt", "out.csv", "out.geojson", "out.qcar"}) {
    const Directory directory;
    const std::string out = directory.write(name, "old");
    const auto result = runOnFullDisk({"convert", "samples/coins.geojson", "-o", out});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.messages, "cntr: " + out + ": cannot be written: File too large\n");
    EXPECT_THAT(directory.names(), ElementsAre(name));
    EXPECT_EQ(directory.read(name), "old");
  }
}

TEST(Convert, AFormatThatCannotBeKnownIsWrongUsage) {
  const auto result = run({"convert", "samples/cell.geojson", "-o", "out.dat"});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.messages, HasSubstr("the ending of 'out.dat' names no format; --to does"));
}

TEST(Convert, WritesToStandardOutputUnlessAFileIsNamed) {
  const auto named = run({"convert", "samples/cell.geojson", "--to", "wkt", "-o", "-"});
  const auto unnamed = run({"convert", "samples/cell.geojson", "--to", "wkt"});
  EXPECT_THAT(named.out, HasSubstr("POLYGON"));
  EXPECT_EQ(unnamed.out, named.out);
  EXPECT_EQ(unnamed.status, 0);
}

TEST(Output, GoesThroughLinksAndKeepsPermissions) {
  namespace fs = std::filesystem;
  const Directory directory;
  const std::string real = directory.write("real.wkt", "old");
  fs::permissions(real, fs::perms::owner_read | fs::perms::owner_write);
  fs::create_symlink("real.wkt", directory.path("link.wkt"));
  EXPECT_EQ(run({"convert", "-o", directory.path("link.wkt")}, squareWithHole).status, 0);
  EXPECT_TRUE(fs::is_symlink(directory.path("link.wkt")));
  EXPECT_THAT(directory.read("real.wkt"), HasSubstr("POLYGON"));
  EXPECT_EQ(fs::status(real).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST(Output, DevicesAreWrittenToAndNotReplaced) {
  const auto result =
      run({"convert", "-o", "/dev/stdout", "--to", "wkt"}, polygon({square(0, 0, 1)}));
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "POLYGON ((0 0, 1 0, 1 1, 0 1, 0 0))\n");
  const auto piped = program::runShell(
      "mkfifo pipe.wkt; cat pipe.wkt & cntr convert samples/cell.geojson -o pipe.wkt 2>/dev/null;"
      " wait; test -p pipe.wkt");
  EXPECT_EQ(piped.status, 0);
  EXPECT_THAT(piped.out, HasSubstr("POLYGON (("));
}

TEST(Output, NeedsADirectory) {
  const auto result = run({"convert", "-o", "no/such/directory/out.wkt"}, squareWithHole);
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.messages,
            "cntr: no/such/directory/out.wkt: cannot be written: No such file or directory\n");
}
