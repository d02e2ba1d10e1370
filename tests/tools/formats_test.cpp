// SPDX-License-Identifier: MIT
//
// The formats other than GeoJSON documents: what is read, and the messages about what is not.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "program.h"

using program::collection;
using program::Directory;
using program::feature;
using program::Json;
using program::polygon;
using program::run;
using program::runJson;
using program::square;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

/// The rows of all measures of a text in that format, including those of parts.
Json measuredAs(const std::string& format, const std::string& text, int status = 0) {
  return runJson({"measure", "--parts", "--from", format}, text, status);
}

/// The message about a text that cannot be read completely.
std::string complaint(const std::string& format, const std::string& text) {
  const auto result = run({"measure", "--from", format, "--json"}, text);
  EXPECT_EQ(result.status, 1);
  return result.messages;
}

TEST(Wkt, HasAGeometryToALine) {
  const Json rows = measuredAs("wkt",
                               "POLYGON ((0 0, 4 0, 4 4, 0 4, 0 0), (1 1, 1 2, 2 2, 2 1, 1 1))\n"
                               "\n"
                               "linestring(0 0,3 4)\r\n"
                               "MULTIPOLYGON (((0 0, 1 0, 1 1)), ((5 0, 7 0, 7 2, 5 2)))\n"
                               "MultiLineString ((0 0, 1 0), (2 0, 2 3))\n"
                               "LINEARRING (0 0, 2 0, 2 2, 0 2, 0 0)");
  ASSERT_EQ(rows.size(), 9);
  EXPECT_EQ(rows[0]["area"], 15.0);
  EXPECT_EQ(rows[0]["holes"], 1);
  EXPECT_EQ(rows[1]["length"], 5.0);
  EXPECT_EQ(rows[1]["closed"], false);
  EXPECT_EQ(rows[1]["feature"], 2) << "blank lines are no features";
  EXPECT_EQ(rows[2]["area"], 4.5);
  EXPECT_EQ(rows[4]["part"], 2);
  EXPECT_EQ(rows[5]["length"], 4.0);
  EXPECT_EQ(rows[8]["area"], 4.0);
  EXPECT_EQ(rows[8]["vertices"], 4);
}

TEST(Wkt, HeightsAndMeasuresArePassedOver) {
  const Json rows = measuredAs("wkt",
                               "POLYGON Z ((0 0 7, 4 0 7, 4 4 7, 0 4 7, 0 0 7))\n"
                               "POLYGONM((0 0 7,4 0 7,4 4 7,0 4 7,0 0 7))\n"
                               "LINESTRING ZM (0 0 1 2, 3 4 5 6)\n"
                               "LINESTRING (0 0 1, 3 4 1)\n");
  ASSERT_EQ(rows.size(), 4);
  EXPECT_EQ(rows[0]["area"], 16.0);
  EXPECT_EQ(rows[1]["area"], 16.0);
  EXPECT_EQ(rows[2]["length"], 5.0);
  EXPECT_EQ(rows[3]["length"], 5.0);
}

TEST(Wkt, NumbersMayHaveSignsAndExponents) {
  const Json row = measuredAs("wkt", "LINESTRING (-1e1 +0, 2.5E1 .5)").at(0);
  EXPECT_EQ(row["left"], -10.0);
  EXPECT_EQ(row["width"], 35.0);
  EXPECT_EQ(row["height"], 0.5);
}

struct BadLine {
  const char* text;
  const char* message;
};

class BadWkt : public testing::TestWithParam<BadLine> {};
class BadCsv : public testing::TestWithParam<BadLine> {};

TEST_P(BadWkt, IsNamedAndTheOthersAreAnswered) {
  const std::string good = "POLYGON ((0 0, 4 0, 4 4))\n";
  const std::string text = good + "\n" + GetParam().text + "\n" + good;
  EXPECT_EQ(complaint("wkt", text),
            std::string("cntr: standard input: line 3, feature 2: ") + GetParam().message + "\n");
  const Json rows = measuredAs("wkt", text, 1);
  ASSERT_EQ(rows.size(), 3);
  EXPECT_EQ(rows[1]["note"], GetParam().message);
  EXPECT_EQ(rows[2]["area"], 8.0);
}

INSTANTIATE_TEST_SUITE_P(
    Each, BadWkt,
    testing::Values(
        BadLine{"POLYGON EMPTY", "no outline"}, BadLine{"POLYGON Z EMPTY", "no outline"},
        BadLine{"MULTIPOLYGON EMPTY", "no coordinates"},
        BadLine{"MULTIPOLYGON (EMPTY, EMPTY)", "no coordinates"},
        BadLine{"LINESTRING EMPTY", "line has 0 points, but needs 2"},
        BadLine{"POINT (1 2)", "a POINT has no outline"},
        BadLine{"CIRCULARSTRING (0 0, 1 1, 2 0)",
                "CIRCULARSTRING is not a geometry that can be read"},
        BadLine{"((0 0, 1 0, 1 1))", "'((0 0, 1 0, 1 1))' is no geometry"},
        BadLine{"POLYGON ((0 0, 1 0))", "outline has 2 points, but needs 3"},
        BadLine{"POLYGON ((0 0, 1 0, 1 1), (5 5, 6 6))", "hole 1 has 2 points, but needs 3"},
        BadLine{"POLYGON ((0 0, 1 x, 1 1))", "outline, vertex 1: 'x' is not a finite number"},
        BadLine{"POLYGON ((0 0, 1 nan, 1 1))", "outline, vertex 1: 'nan' is not a finite number"},
        BadLine{"LINESTRING (0 0, 1e999 0)",
                "line, vertex 1: '1e999' is too large or too small a number"},
        BadLine{"LINESTRING (0 0, 1)", "line, vertex 1: not a position x y"},
        BadLine{"LINESTRING (0 0, 1 2 3 4 5)", "line, vertex 1: more than 4 coordinates"},
        BadLine{"POLYGON ((0 0, 1 0, 1 1)", "')' expected, not the end"},
        BadLine{"POLYGON (0 0, 1 0, 1 1)", "'(' expected, not '0 0, 1 0, 1 1)'"},
        BadLine{"POLYGON ((0 0, 1 0, 1 1)) x", "'x' follows the geometry"}));

TEST(Csv, HasAVertexToALine) {
  const Json rows = measuredAs("csv",
                               "id,x,y\n"
                               "7,0,0\n7,4,0\n7,4,4\n7,0,4\n"
                               "8,0,0\r\n8,1,0\r\n8,1,1\r\n8,0,0\r\n"
                               "bolt,0,0\nbolt,2,0\nbolt,2,2\n"
                               "7,0,0\n7,1,0\n7,1,1\n7,0,1");
  ASSERT_EQ(rows.size(), 4) << "equal ids that do not follow each other are two features";
  EXPECT_EQ(rows[0]["label"], 7);
  EXPECT_EQ(rows[0]["area"], 16.0);
  EXPECT_EQ(rows[0]["closed"], true);
  EXPECT_EQ(rows[1]["vertices"], 3) << "a repeated first point is no vertex";
  EXPECT_EQ(rows[2]["label"], nullptr);
  EXPECT_EQ(rows[2]["id"], "bolt");
  EXPECT_EQ(rows[3]["label"], 7);
  EXPECT_EQ(rows[3]["area"], 1.0);
}

TEST(Csv, TheHeaderMayBeMissingOrHaveMoreColumns) {
  EXPECT_EQ(measuredAs("csv", "1,0,0\n1,2,0\n1,2,2\n")[0]["area"], 2.0);
  const Json row = measuredAs("csv", "y,time,x,id\n0,9,0,5\n0,9,2,5\n4,9,2,5\n").at(0);
  EXPECT_EQ(row["label"], 5);
  EXPECT_EQ(row["width"], 2.0);
  EXPECT_EQ(row["height"], 4.0);
}

TEST(Csv, FieldsMayBeQuoted) {
  const Json row =
      measuredAs(
          "csv",
          "id,x,y\n\"a \"\"b\"\", c\",\"0\", 0 \n\"a \"\"b\"\", c\",1,0\n\"a \"\"b\"\", c\",1,1\n")
          .at(0);
  EXPECT_EQ(row["id"], "a \"b\", c");
  EXPECT_EQ(row["area"], 0.5);
}

TEST(Csv, AnEmptyLineKeepsEqualIdsApart) {
  const Json rows = measuredAs("csv", "1,0,0\n1,2,0\n1,2,2\n\n1,0,0\n1,4,0\n1,4,4\n");
  ASSERT_EQ(rows.size(), 2);
  EXPECT_EQ(rows[1]["area"], 8.0);
}

TEST(Csv, IdsTellHolesPartsAndLines) {
  const Json rows = measuredAs("csv",
                               "1,0,0\n1,9,0\n1,9,9\n1,0,9\n"
                               "1/hole 1,1,1\n1/hole 1,2,1\n1/hole 1,2,2\n1/hole 1,1,2\n"
                               "2/part 1,0,0\n2/part 1,1,0\n2/part 1,1,1\n"
                               "2/part 2,5,0\n2/part 2,9,0\n2/part 2,9,4\n"
                               "2/part 2/hole 1,7,1\n2/part 2/hole 1,8,1\n2/part 2/hole 1,8,2\n"
                               "3/line,0,0\n3/line,3,4\n");
  ASSERT_EQ(rows.size(), 5);
  EXPECT_EQ(rows[0]["area"], 80.0);
  EXPECT_EQ(rows[0]["label"], 1);
  EXPECT_EQ(rows[1]["area"], 8.0);
  EXPECT_EQ(rows[3]["holes"], 1);
  EXPECT_EQ(rows[4]["closed"], false);
  EXPECT_EQ(rows[4]["length"], 5.0);
  EXPECT_EQ(rows[4]["label"], 3);
}

TEST_P(BadCsv, IsNamedAndTheOthersAreAnswered) {
  const std::string good = "1,0,0\n1,4,0\n1,4,4\n";
  const std::string text = good + "\n" + GetParam().text + "\n\n" + good;
  const std::string said = complaint("csv", text);
  EXPECT_THAT(said, StartsWith("cntr: standard input: line 5, feature 2"));
  EXPECT_THAT(said, EndsWith(std::string(": ") + GetParam().message + "\n"));
  const Json rows = measuredAs("csv", text, 1);
  ASSERT_EQ(rows.size(), 3);
  EXPECT_EQ(rows[1]["note"], GetParam().message);
  EXPECT_EQ(rows[2]["area"], 8.0);
}

INSTANTIATE_TEST_SUITE_P(
    Each, BadCsv,
    testing::Values(
        BadLine{"2,0,0\n2,1,0", "outline has 2 points, but needs 3"},
        BadLine{"2,0,0\n2,one,0\n2,1,1", "outline, vertex 1: 'one' is not a finite number"},
        BadLine{"2,0,0\n2,1,\n2,1,1", "outline, vertex 1: '' is not a finite number"},
        BadLine{"2,0,0\n2,1,0\n2;1;1", "outline, vertex 2: '2;1;1' is not a line of id,x,y"},
        BadLine{"2,0,0\n\"2,1,0", "outline, vertex 1: a quote is not closed"},
        BadLine{"2/hole 1,0,0\n2/hole 1,1,0", "begins with hole 1"},
        BadLine{"2/part 3,0,0", "begins with part 3, outline"},
        BadLine{"2/line,0,0", "line has 1 point, but needs 2"},
        BadLine{"2,0,0\n2,9,0\n2,9,9\n2/hole 1,1,1", "hole 1 has 1 point, but needs 3"}));

TEST(Csv, AnotherFirstLineIsNoCsv) {
  const auto result = run({"measure", "--from", "csv"}, "a,b,c\n1,2,3\n");
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.messages,
            "cntr: standard input: the first line is neither id,x,y or x,y nor such values\n");
}

TEST(GeoJsonLines, HaveAFeatureToALine) {
  const std::string lines = polygon({square(0, 0, 2)}, R"("label":7)") + "\n\r\n" +
                            R"({"type":"LineString","coordinates":[[0,0],[3,4]]})" + "\r\n";
  const Json rows = measuredAs("geojsonl", lines);
  ASSERT_EQ(rows.size(), 2);
  EXPECT_EQ(rows[0]["label"], 7);
  EXPECT_EQ(rows[1]["length"], 5.0);
}

TEST(GeoJsonLines, MayBeRecordsThatBeginWithASeparator) {
  const std::string records = std::string("\x1e") +
                              Json::parse(polygon({square(0, 0, 2)})).dump(2) + "\n\x1e{\n]" +
                              "\n\x1e" + polygon({square(0, 0, 3)}) + "\n";
  const auto result = run({"measure", "--json"}, records);
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.messages, StartsWith("cntr: standard input: line "));
  EXPECT_THAT(result.messages, HasSubstr(", feature 2: not JSON: line "));
  const Json rows = Json::parse(result.out);
  ASSERT_EQ(rows.size(), 3);
  EXPECT_THAT(rows[1]["note"].get<std::string>(), StartsWith("not JSON: line "));
  EXPECT_EQ(rows[2]["area"], 9.0);
  EXPECT_EQ(rows[2]["feature"], 3);
}

TEST(GeoJsonLines, ABadLineIsNamedAndTheOthersAreAnswered) {
  const std::string good = polygon({square(0, 0, 2)}) + "\n";
  EXPECT_EQ(complaint("geojsonl", good + "{\"type\":\n" + good),
            "cntr: standard input: line 2, feature 2: not JSON: line 2, column 1: a bracket is "
            "not closed\n");
  EXPECT_EQ(complaint("geojsonl", good + polygon({"[[1,1]]"}) + "\n"),
            "cntr: standard input: line 2, feature 2: outline has 1 point, but needs 3\n");
  EXPECT_EQ(complaint("geojsonl", good + collection({polygon({square(0, 0, 1)})}) + "\n"),
            "cntr: standard input: line 2, feature 2: a whole FeatureCollection, which is no line "
            "of GeoJSON lines\n");
  EXPECT_EQ(
      complaint("geojsonl", good + std::string(100000, '[') + "\n"),
      "cntr: standard input: line 2, feature 2: [[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[... is "
      "not a Feature\n");
}

TEST(GeoJson, DeepNestingIsRefused) {
  const auto result = run({"measure"}, R"({"type":"Feature","x":)" + std::string(100000, '[') +
                                           std::string(100000, ']') + "}");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.messages, "cntr: standard input: feature 1: nested too deeply\n");
}

TEST(GeoJson, WhatComesInFrontOfAnErrorIsAnswered) {
  const std::string whole = collection({polygon({square(0, 0, 2)}), polygon({square(0, 0, 3)})});
  const auto result = run({"measure", "--json"}, whole.substr(0, whole.size() - 5));
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.messages, HasSubstr("not JSON: line "));
  EXPECT_EQ(Json::parse(result.out).size(), 1);
}

TEST(GeoJson, ACollectionMayTellItsTypeLast) {
  const std::string features = R"("features":[)" + polygon({square(0, 0, 2)}) + "]";
  EXPECT_EQ(
      runJson({"measure"}, std::string("{") + features + R"(,"type":"FeatureCollection"})").size(),
      1);
  EXPECT_EQ(run({"measure"}, std::string("{") + features + R"(,"type":"Topology"})").status, 2);
}

TEST(Archive, WhatIsNoneIsRefused) {
  const Directory directory;
  const auto message = [&](const std::string& bytes) {
    const auto result = run({"measure", directory.write("a.qcar", bytes)});
    EXPECT_EQ(result.status, 2);
    return result.messages;
  };
  using namespace std::string_literals;
  EXPECT_THAT(message("PNG"), HasSubstr("a.qcar: not an archive of shapes: "));
  EXPECT_THAT(message("QCAR\1\0\0\0"s), HasSubstr("not an archive of shapes: "));
  EXPECT_THAT(message("QCAR\1\0\0\0\0\xff\xff\xff\xff"s), HasSubstr("ends too early"));
}

TEST(Archive, OtherObjectsAreBadFeatures) {
  using namespace std::string_literals;
  const Directory directory;
  // A list that holds a null handle and a point.
  const std::string file =
      directory.write("a.qcar", "QCAR\1\0\0\0\0\2\0\0\0\0\0\0\0\1\0\0\0\7\0\0\0qcPoint\0\0"s +
                                    std::string(16, '\0'));
  const auto result = run({"measure", file});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.messages, "cntr: " + file + ": feature 1: no object\ncntr: " + file +
                                 ": feature 2: an object without an outline\n");
}

/// The area of the only feature of a text on standard input, whose format is not named.
std::string measuredArea(const std::string& text) {
  const Json rows = runJson({"measure"}, text);
  return rows.size() == 1 ? rows[0]["area"].dump() : "";
}

TEST(Format, OfStandardInputIsKnownByItsBeginning) {
  EXPECT_EQ(measuredArea("POLYGON ((0 0, 2 0, 2 2))"), "2.0");
  EXPECT_EQ(measuredArea("\n \nMULTIPOLYGON(((0 0, 2 0, 2 2)))"), "2.0");
  EXPECT_EQ(measuredArea("id,x,y\n1,0,0\n1,2,0\n1,2,2\n"), "2.0");
  EXPECT_EQ(measuredArea("1,0,0\n1,2,0\n1,2,2\n"), "2.0");
  const std::string triangle = feature("Polygon", "[[[0,0],[2,0],[2,2]]]");
  EXPECT_EQ(measuredArea(triangle), "2.0");
  EXPECT_EQ(measuredArea(std::string("\x1e") + triangle), "2.0");
  EXPECT_EQ(measuredArea(collection({triangle})), "2.0");
  EXPECT_EQ(measuredArea(Json::parse(triangle).dump(1)), "2.0");
  EXPECT_EQ(measuredArea("\xEF\xBB\xBF"
                         "1,0,0\n1,2,0\n1,2,2\n"),
            "2.0");
  EXPECT_EQ(runJson({"measure"}, triangle + "\n" + triangle).size(), 2);
}

TEST(Format, OfAFileIsThatOfItsEnding) {
  const Directory directory;
  const std::string wkt = "POLYGON ((0 0, 2 0, 2 2))";
  EXPECT_EQ(run({"measure", directory.write("a.WKT", wkt)}).status, 0);
  EXPECT_EQ(run({"measure", directory.write("a.csv", wkt)}).status, 2);
  EXPECT_EQ(run({"measure", directory.write("a.txt", wkt)}).status, 0) << "known by its beginning";
  const std::string line = polygon({square(0, 0, 2)}) + "\n";
  for (const char* name : {"a.geojsonl", "a.geojsons", "a.ndjson", "a.jsonl"}) {
    EXPECT_EQ(run({"measure", directory.write(name, line + line)}).status, 0) << name;
  }
  EXPECT_EQ(run({"measure", directory.write("a.json", line + line)}).status, 2);
}

TEST(Format, IsThatOfFromWhateverTheEnding) {
  const Directory directory;
  const std::string file = directory.write("a.csv", "POLYGON ((0 0, 2 0, 2 2))");
  EXPECT_EQ(run({"measure", "--from", "wkt", file}).status, 0);
  EXPECT_EQ(run({"measure", "--from", "shp", file}).status, 2);
}

TEST(Format, AByteOrderMarkIsSkippedInAll) {
  const Directory directory;
  const std::string mark = "\xEF\xBB\xBF";
  const std::string wkt = directory.write("a.wkt", mark + "POLYGON ((0 0, 2 0, 2 2))");
  const std::string csv = directory.write("a.csv", mark + "id,x,y\n1,0,0\n1,2,0\n1,2,2\n");
  const std::string lines = directory.write("a.geojsonl", mark + polygon({square(0, 0, 2)}));
  EXPECT_EQ(run({"measure", wkt, csv, lines}).status, 0);
}

TEST(Format, FilesOfSeveralAreReadTogether) {
  const Directory directory;
  const std::string wkt = directory.write("a.wkt", "POLYGON ((0 0, 2 0, 2 2))");
  const std::string csv = directory.write("b.csv", "5,0,0\n5,2,0\n5,2,2\n");
  const Json rows = runJson({"measure", wkt, "samples/cell.geojson", csv});
  ASSERT_EQ(rows.size(), 3);
  EXPECT_EQ(rows[0]["file"], wkt);
  EXPECT_EQ(rows[2]["label"], 5);
}

TEST(Format, EmptyInputsAreReported) {
  for (const char* format : {"geojson", "geojsonl", "wkt", "csv"}) {
    const auto result = run({"measure", "--from", format}, "\n\n");
    EXPECT_EQ(result.status, 2) << format;
    EXPECT_EQ(result.messages, "cntr: standard input: nothing in it\n") << format;
  }
}

}  // namespace
