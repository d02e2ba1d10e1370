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

}  // namespace

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

TEST(QueryPoint, AsksEveryFeatureAndNamesThoseThatCannotAnswer) {
  const std::string touching = polygon({square(0, 0, 10), square(0, 0, 2)});
  const auto result = run({"query", "--point", "1,1", "--json"}, collection({touching, holed}));
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.messages,
            "cntr: standard input: feature 1: hole 1 crosses or touches its outline\n");
  EXPECT_EQ(Json::parse(result.out).size(), 1);
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

namespace {

class WrongQuestion : public testing::TestWithParam<std::vector<std::string>> {};

}  // namespace

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
