// SPDX-License-Identifier: MIT
//
// cntr query: points, segments and directions against shapes whose answers are known.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "program.h"

using program::clockwiseSquare;
using program::collection;
using program::feature;
using program::Json;
using program::multiPolygon;
using program::polygon;
using program::run;
using program::runJson;
using program::square;
using testing::HasSubstr;

namespace {

Json asked(const std::string& option, const std::string& value, const std::string& file,
           std::vector<std::string> more = {}) {
  std::vector<std::string> arguments{"query", option, value};
  arguments.insert(arguments.end(), more.begin(), more.end());
  return runJson(arguments, file);
}

Json askedPoint(const std::string& point, const std::string& file,
                std::vector<std::string> more = {}) {
  return asked("--point", point, file, std::move(more)).at(0);
}

std::vector<double> column(const Json& rows, const char* name) {
  std::vector<double> values;
  for (const Json& row : rows) values.push_back(row[name]);
  return values;
}

const std::string holed = polygon({square(0, 0, 10), clockwiseSquare(2, 2, 4)}, R"("label":5)");

TEST(QueryPoint, AnswersForAPointOutside) {
  const Json answer = askedPoint("13,4", polygon({square(0, 0, 10)}, R"("label":5)"));
  EXPECT_EQ(answer["feature"], 1);
  EXPECT_EQ(answer["label"], 5);
  EXPECT_EQ(answer["inside"], false);
  EXPECT_EQ(answer["distance"], 3.0);
  EXPECT_EQ(answer["nearest_x"], 10.0);
  EXPECT_EQ(answer["nearest_y"], 4.0);
  EXPECT_EQ(answer["vertex"], 1);
  EXPECT_EQ(answer["vertex_x"], 10.0);
  EXPECT_EQ(answer["vertex_y"], 0.0);
  EXPECT_EQ(answer["part"], nullptr);
  EXPECT_EQ(answer["hole"], nullptr);
}

TEST(QueryPoint, ThePointInsideIsAsFarFromTheBoundaryUnlessItCountsAsZero) {
  const std::string file = polygon({square(0, 0, 10)});
  EXPECT_EQ(askedPoint("9,5", file)["inside"], true);
  EXPECT_EQ(askedPoint("9,5", file)["distance"], 1.0);
  const Json zero = askedPoint("9,5", file, {"--zero-inside"});
  EXPECT_EQ(zero["distance"], 0.0);
  EXPECT_EQ(zero["nearest_x"], 10.0);
  EXPECT_EQ(askedPoint("12,5", file, {"--zero-inside"})["distance"], 2.0);
}

TEST(QueryPoint, APointInAHoleIsOutside) {
  const Json answer = askedPoint("4,3", holed, {"--zero-inside"});
  EXPECT_EQ(answer["inside"], false);
  EXPECT_EQ(answer["distance"], 1.0);
  EXPECT_EQ(answer["hole"], 1);
  EXPECT_EQ(answer["nearest_y"], 2.0);
  EXPECT_EQ(answer["vertex"], 0);
  EXPECT_EQ(answer["vertex_hole"], 1);
  const Json solid = askedPoint("4,3", holed, {"--no-holes"});
  EXPECT_EQ(solid["inside"], true);
  EXPECT_EQ(solid["distance"], 3.0);
  EXPECT_EQ(solid["hole"], nullptr);
}

TEST(QueryPoint, TheNearestPointAndTheNearestVertexMayBeOnDifferentBoundaries) {
  const Json answer = askedPoint("6.9,9.9", polygon({square(0, 0, 10), square(6, 6, 3)}));
  EXPECT_EQ(answer["hole"], nullptr);
  EXPECT_EQ(answer["vertex_hole"], 1);
  EXPECT_EQ(answer["vertex"], 3);
}

TEST(QueryPoint, VertexNumbersAreTheFiles) {
  const std::string file = polygon({clockwiseSquare(0, 0, 10)});
  EXPECT_EQ(askedPoint("-1,11", file)["vertex"], 1);
  EXPECT_EQ(askedPoint("11,-1", file)["vertex"], 3);
  EXPECT_EQ(askedPoint("5,5", file)["vertex"], 0) << "of equally near ones the first in the file";
  EXPECT_EQ(askedPoint("5,9", file)["vertex"], 1) << "of equally near ones the first in the file";
}

TEST(QueryPoint, OfEquallyNearBoundariesTheFirstIsNamed) {
  const Json answer = askedPoint("2,5", polygon({square(0, 0, 10), square(4, 4, 2)}));
  EXPECT_EQ(answer["distance"], 2.0);
  EXPECT_EQ(answer["hole"], nullptr);
  EXPECT_EQ(answer["nearest_x"], 0.0);
}

TEST(QueryPoint, NamesTheNearestPartOfSeveral) {
  const std::string file = multiPolygon({{square(0, 0, 4)}, {square(10, 0, 10), square(12, 2, 2)}});
  EXPECT_EQ(askedPoint("3,1", file)["inside"], true);
  EXPECT_EQ(askedPoint("3,1", file)["part"], 1);
  const Json answer = askedPoint("13,2.5", file);
  EXPECT_EQ(answer["inside"], false);
  EXPECT_EQ(answer["part"], 2);
  EXPECT_EQ(answer["hole"], 1);
  EXPECT_EQ(answer["distance"], 0.5);
  EXPECT_EQ(answer["vertex_part"], 2);
}

TEST(QueryPoint, ALineHasNoInside) {
  const Json answer = askedPoint("1,2", feature("LineString", "[[0,0],[4,0]]"));
  EXPECT_EQ(answer["inside"], nullptr);
  EXPECT_EQ(answer["distance"], 2.0);
  EXPECT_EQ(answer["vertex"], 0);
}

TEST(QueryPoint, AFeatureThatCannotBeAskedIsARowWithANote) {
  const std::string missing = R"({"type":"Feature","id":9,"properties":null,"geometry":null})";
  const auto result = run({"query", "--point", "1,1", "--json"}, collection({missing, holed}));
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.messages, "cntr: standard input: feature 1 (id 9): no geometry\n");
  const Json rows = Json::parse(result.out);
  ASSERT_EQ(rows.size(), 2);
  EXPECT_EQ(rows[0]["id"], "9");
  EXPECT_EQ(rows[0]["inside"], nullptr);
  EXPECT_EQ(rows[0]["note"], "no geometry");
  EXPECT_EQ(rows[1]["inside"], true);
  EXPECT_EQ(rows[1]["note"], nullptr);
}

TEST(QueryPoint, HolesMayTouchAndOutlinesMayCross) {
  const std::string touching = polygon({square(0, 0, 10), square(0, 0, 2)});
  EXPECT_EQ(askedPoint("1,1", touching)["inside"], false);
  EXPECT_EQ(askedPoint("5,5", touching)["inside"], true);
  EXPECT_EQ(askedPoint("1,1", touching, {"--no-holes"})["inside"], true);
  const std::string bowTie = polygon({"[[0,0],[4,4],[4,0],[0,4]]"});
  EXPECT_EQ(askedPoint("1,2", bowTie)["inside"], true);
  EXPECT_EQ(askedPoint("2,1", bowTie)["inside"], false);
  const std::string overlapping = multiPolygon({{square(0, 0, 4)}, {square(2, 2, 4)}});
  EXPECT_EQ(askedPoint("3,3", overlapping)["inside"], true);
}

TEST(QueryPoints, AnswersForEachPointOfAFile) {
  const program::Directory directory;
  const auto ask = [&directory](const std::string& points, const std::string& file) {
    return runJson({"query", "--points", directory.write("points.csv", points)}, file);
  };
  const Json rows = ask("4,3\n9,5\n", collection({holed, polygon({square(20, 0, 1)})}));
  ASSERT_EQ(rows.size(), 4) << "every point with every feature";
  EXPECT_EQ(column(rows, "feature"), (std::vector<double>{1, 1, 2, 2}));
  EXPECT_EQ(rows[0]["point"], "1");
  EXPECT_EQ(rows[1]["point"], "2");
  EXPECT_EQ(column(rows, "x"), (std::vector<double>{4, 9, 4, 9}));
  EXPECT_EQ(column(rows, "y"), (std::vector<double>{3, 5, 3, 5}));
  EXPECT_EQ(rows[0]["inside"], false);
  EXPECT_EQ(rows[1]["inside"], true);
  EXPECT_EQ(rows[1]["distance"], 1.0);
  EXPECT_EQ(rows[3]["inside"], false);
  EXPECT_EQ(rows[0]["hole"], 1);
  const Json alone = askedPoint("9,5", holed);
  for (const auto& [name, value] : alone.items()) EXPECT_EQ(rows[1][name], value) << name;

  const std::string file = polygon({square(0, 0, 10)});
  const Json named = ask("Y;ID;X\r\n3;left;1\r\n3;right;11\r\n", file);
  ASSERT_EQ(named.size(), 2);
  EXPECT_EQ(named[0]["point"], "left");
  EXPECT_EQ(named[0]["inside"], true);
  EXPECT_EQ(named[1]["inside"], false);
  const Json numpy = ask("# two points\n1.0e+00 3.0e+00\n\n -2.0 3.0\n", file);
  EXPECT_EQ(column(numpy, "x"), (std::vector<double>{1, -2}));
  EXPECT_EQ(ask("a,1,2\n", file)[0]["point"], "a");
}

TEST(QueryPoints, AFileOfPointsThatCannotBeReadIsNamed) {
  const program::Directory directory;
  const auto complaint = [&directory](const std::string& points) {
    const std::string path = directory.write("points.csv", points);
    const auto result = run({"query", "--points", path}, holed);
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
    return result.messages.substr(std::string("cntr: ").size() + path.size());
  };
  EXPECT_EQ(complaint(""), ": holds no points\n");
  EXPECT_EQ(complaint("x,y\n"), ": holds no points\n");
  EXPECT_EQ(complaint("1,2\n3\n"), ": line 2: has 1 field, not 2\n");
  EXPECT_EQ(complaint("1,2\n\n3,4,5\n"), ": line 3: has 3 fields, not 2\n");
  EXPECT_EQ(complaint("1,two\n"), ": line 1: 'two' is not a finite number\n");
  EXPECT_EQ(complaint("1,2,3,4\n"), ": line 1: has 4 fields, not 2\n");
  const auto missing = run({"query", "--points", directory.path("none.csv")}, holed);
  EXPECT_EQ(missing.status, 2);
  EXPECT_THAT(missing.messages, HasSubstr("none.csv: "));
}

TEST(QueryPoint, FindsTheCoinInThePicture) {
  const Json rows = runJson({"query", "--point", "347.2,186.2", "samples/coins.geojson"});
  ASSERT_EQ(rows.size(), 24);
  for (const Json& row : rows) EXPECT_EQ(row["inside"], row["label"] == 18) << row;
}

TEST(QuerySegment, ListsCrossingsInOrder) {
  const Json rows = asked("--segment", "20,5,-5,5", holed);
  EXPECT_EQ(column(rows, "x"), (std::vector<double>{10, 6, 2, 0}));
  EXPECT_EQ(column(rows, "along"), (std::vector<double>{10, 14, 18, 20}));
  EXPECT_EQ(rows[0]["hole"], nullptr);
  EXPECT_EQ(rows[1]["hole"], 1);
  const Json outline = asked("--segment", "20,5,-5,5", holed, {"--no-holes"});
  EXPECT_EQ(column(outline, "x"), (std::vector<double>{10, 0}));
}

TEST(QuerySegment, EndTouchesCountOnRequest) {
  const std::string file = polygon({square(0, 0, 10)});
  EXPECT_EQ(asked("--segment", "0,5,20,5", file).size(), 1);
  EXPECT_EQ(asked("--segment", "0,5,20,5", file, {"--end-touches"}).size(), 2);
}

TEST(QuerySegment, AVertexIsCrossedOnceForEachOfItsEdges) {
  const Json rows = asked("--segment", "-5,0,15,20", polygon({"[[0,5],[10,0],[10,20]]"}));
  EXPECT_EQ(rows.size(), 3);
  EXPECT_EQ(rows[0]["x"], 0.0);
  EXPECT_EQ(rows[1]["x"], 0.0);
}

TEST(QuerySegment, CrossesLinesAndParts) {
  const std::string file = multiPolygon({{square(10, 0, 4)}, {square(0, 0, 4)}});
  const Json rows = asked("--segment", "-5,1,25,1", file);
  EXPECT_EQ(column(rows, "x"), (std::vector<double>{0, 4, 10, 14}));
  EXPECT_EQ(column(rows, "part"), (std::vector<double>{2, 2, 1, 1}));
  const Json line = asked("--segment", "1,-1,1,1", feature("LineString", "[[0,0],[4,0]]"));
  EXPECT_EQ(column(line, "along"), (std::vector<double>{1}));
}

TEST(QuerySegment, FeaturesThatAreNotCrossedHaveNoRows) {
  const auto result = run({"query", "--segment", "50,50,60,60"}, holed);
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(asked("--segment", "50,50,60,60", holed), Json::array());
}

TEST(QueryDirection, AnswersTheExtremalVertex) {
  const std::string file = polygon({"[[0,0],[9,1],[3,7],[-2,4]]"});
  EXPECT_EQ(asked("--direction", "0", file)[0]["vertex"], 1);
  EXPECT_EQ(asked("--direction", "90", file)[0]["vertex"], 2) << "90 degrees is downwards";
  EXPECT_EQ(asked("--direction", "180", file)[0]["vertex"], 3);
  EXPECT_EQ(asked("--direction", "-90", file)[0]["vertex"], 0);
  EXPECT_EQ(asked("--direction", "45", file)[0]["vertex_x"], 9.0);
}

TEST(QueryDirection, NumbersAndTiesAreTheFiles) {
  const Json rows = asked("--direction", "90", polygon({clockwiseSquare(0, 0, 10)}));
  EXPECT_EQ(rows[0]["vertex"], 1);
  EXPECT_EQ(rows[0]["vertex_y"], 10.0);
  EXPECT_EQ(asked("--direction", "0", polygon({clockwiseSquare(0, 0, 10)}))[0]["vertex"], 2);
}

TEST(QueryDirection, LooksAtAllParts) {
  const std::string file = multiPolygon({{square(0, 0, 4)}, {square(10, 0, 4)}, {square(5, 9, 1)}});
  const Json right = asked("--direction", "0", file)[0];
  EXPECT_EQ(right["part"], 2);
  EXPECT_EQ(right["vertex"], 1);
  EXPECT_EQ(asked("--direction", "90", file)[0]["part"], 3);
  EXPECT_EQ(asked("--direction", "180", file)[0]["part"], 1);
}

TEST(QueryTable, ShowsWhatIsThere) {
  const auto result = run({"query", "--point", "4,3"}, holed);
  EXPECT_EQ(result.out,
            "feature  label  inside  distance  nearest_x  nearest_y  hole  vertex  vertex_x  "
            "vertex_y  vertex_hole\n"
            "      1      5      no   1.00000    4.00000    2.00000     1       0   2.00000   "
            "2.00000            1\n");
}

class WrongQuestion : public testing::TestWithParam<std::vector<std::string>> {};

TEST_P(WrongQuestion, IsWrongUsage) {
  std::vector<std::string> arguments{"query", "samples/cell.geojson"};
  arguments.insert(arguments.end(), GetParam().begin(), GetParam().end());
  const auto result = run(arguments);
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.messages, HasSubstr(GetParam().empty() ? "Exactly 1" : "--"));
  EXPECT_EQ(result.out, "");
}

INSTANTIATE_TEST_SUITE_P(
    Each, WrongQuestion,
    testing::Values(
        std::vector<std::string>{}, std::vector<std::string>{"--point", "1"},
        std::vector<std::string>{"--point", "1,2,3"}, std::vector<std::string>{"--point", "1,x"},
        std::vector<std::string>{"--point", "1,nan"}, std::vector<std::string>{"--point", "1,2,"},
        std::vector<std::string>{"--point", ""}, std::vector<std::string>{"--segment", "1,2,3"},
        std::vector<std::string>{"--direction", "east"},
        std::vector<std::string>{"--point", "1,2", "--direction", "5"}));

TEST(Query, NegativeNumbersAreNoOptions) {
  EXPECT_EQ(askedPoint("-3,-4", polygon({square(0, 0, 10)}))["distance"], 5.0);
}

}  // namespace
