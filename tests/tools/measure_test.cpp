// SPDX-License-Identifier: MIT
//
// cntr measure, against shapes whose measures are known.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <sstream>

#include <cntr/region.h>
#include <cntrtable/measures.h>

#include <testing/repository/repository.h>
#include <testing/shapes/numbers.h>

#include "program.h"

using program::clockwiseSquare;
using program::collection;
using program::feature;
using program::Json;
using program::multiPolygon;
using program::polygon;
using program::ring;
using program::run;
using program::runJson;
using program::square;
using testing::HasSubstr;
using testing::Not;

namespace {

constexpr double tight = 1e-12;

using Rings = std::vector<std::string>;

/// The measures of one polygon.
Json measured(const Rings& rings, std::vector<std::string> options = {}) {
  options.insert(options.begin(), "measure");
  return runJson(options, polygon(rings)).at(0);
}

std::vector<std::vector<double>> circle(int n, double x, double y, double radius) {
  std::vector<std::vector<double>> points;
  for (int i = 0; i < n; ++i) {
    const double angle = 2.0 * pi * i / n;
    points.push_back({x + radius * std::cos(angle), y + radius * std::sin(angle)});
  }
  return points;
}

const std::vector<std::vector<double>> lShape{{0, 0}, {6, 0}, {6, 2}, {2, 2}, {2, 8}, {0, 8}};

}  // namespace

TEST(Measure, KnowsARectangle) {
  const Json m = measured({ring({{10, 20}, {16, 20}, {16, 22}, {10, 22}})});
  EXPECT_EQ(m["vertices"], 4);
  EXPECT_EQ(m["closed"], true);
  EXPECT_NEAR(m["area"], 12.0, tight);
  EXPECT_NEAR(m["centre_x"], 13.0, tight);
  EXPECT_NEAR(m["centre_y"], 21.0, tight);
  EXPECT_NEAR(m["moment_xx"], 6.0 * 6.0 * 6.0 * 2.0 / 12.0, 1e-11);
  EXPECT_NEAR(m["moment_yy"], 6.0 * 2.0 * 2.0 * 2.0 / 12.0, 1e-11);
  EXPECT_NEAR(m["moment_xy"], 0.0, 1e-11);
  EXPECT_NEAR(m["length"], 16.0, tight);
  EXPECT_NEAR(m["mean_x"], 13.0, tight);
  EXPECT_NEAR(m["mean_y"], 21.0, tight);
  EXPECT_NEAR(m["roundness"], 4.0 * pi * 12.0 / 256.0, tight);
  EXPECT_NEAR(m["equivalent_diameter"], std::sqrt(48.0 / pi), tight);
  EXPECT_NEAR(m["axis_ratio"], 1.0 / 3.0, tight);
  EXPECT_NEAR(m["orientation"], 0.0, 1e-9);
  EXPECT_NEAR(m["diameter"], std::sqrt(40.0), tight);
  EXPECT_NEAR(m["first_vertex_diameter"], 2.0 * std::sqrt(40.0), tight);
  EXPECT_EQ(m["left"], 10.0);
  EXPECT_EQ(m["top"], 20.0);
  EXPECT_EQ(m["width"], 6.0);
  EXPECT_EQ(m["height"], 2.0);
  EXPECT_EQ(m["box_x"], 13.0);
  EXPECT_EQ(m["box_y"], 21.0);
  EXPECT_EQ(m["box_length"], 6.0);
  EXPECT_EQ(m["box_width"], 2.0);
  EXPECT_EQ(m["box_angle"], 0.0);
  EXPECT_EQ(m["rectangularity"], 1.0);
  EXPECT_EQ(m["feret_min"], 2.0);
  EXPECT_EQ(m["feret_min_angle"], 90.0);
  EXPECT_NEAR(m["circle_radius"], std::sqrt(10.0), tight);
  EXPECT_EQ(m["hull_area"], 12.0);
  EXPECT_EQ(m["hull_length"], 16.0);
  EXPECT_EQ(m["solidity"], 1.0);
  EXPECT_EQ(m["convexity"], 1.0);
  // Second moments over the squared area: (6^3 2 / 12 + 6 2^3 / 12) / 12^2 and the difference.
  EXPECT_NEAR(m["hu_1"], 40.0 / 144.0, tight);
  EXPECT_NEAR(m["hu_2"], 32.0 / 144.0 * (32.0 / 144.0), tight);
  EXPECT_EQ(m["crosses_itself"], false);
  EXPECT_EQ(m["note"], nullptr);
}

TEST(Measure, KnowsACircle) {
  constexpr int n = 360;
  constexpr double radius = 50.0;
  const Json m = measured({ring(circle(n, 300, 200, radius))});
  const double step = 2.0 * pi / n;
  const double moment = n * std::pow(radius, 4) / 24.0 * std::sin(step) * (2.0 + std::cos(step));
  EXPECT_NEAR(m["area"], 0.5 * n * radius * radius * std::sin(step), 1e-8);
  EXPECT_NEAR(m["centre_x"], 300.0, 1e-9);
  EXPECT_NEAR(m["centre_y"], 200.0, 1e-9);
  EXPECT_NEAR(m["moment_xx"], moment, moment * tight);
  EXPECT_NEAR(m["moment_yy"], moment, moment * tight);
  EXPECT_NEAR(m["length"], 2.0 * n * radius * std::sin(0.5 * step), 1e-9);
  EXPECT_NEAR(m["roundness"], 1.0, 1e-4);
  EXPECT_NEAR(m["axis_ratio"], 1.0, 1e-9);
  EXPECT_NEAR(m["diameter"], 100.0, 1e-9);
  EXPECT_NEAR(m["ellipse_x"], 300.0, 1e-9);
  EXPECT_NEAR(m["ellipse_y"], 200.0, 1e-9);
  EXPECT_NEAR(m["ellipse_radius1"], radius, 1e-9);
  EXPECT_NEAR(m["ellipse_radius2"], radius, 1e-9);
  EXPECT_NEAR(m["ellipse_residual"], 0.0, 1e-9);
}

TEST(Measure, OrientationTurnsFromXTowardsY) {
  const Json m = measured({ring({{0, 0}, {10, 10}, {9, 11}, {-1, 1}})});
  EXPECT_NEAR(m["orientation"], 45.0, 1e-9);
  EXPECT_NEAR(m["axis_ratio"], 0.1, tight);
}

TEST(Measure, KnowsAnEllipsesAxes) {
  auto points = circle(90, 0, 0, 1.0);
  for (auto& p : points) p = {40.0 + 20.0 * p[0], 30.0 + 8.0 * p[1]};
  const Json m = measured({ring(points)});
  EXPECT_NEAR(m["ellipse_radius1"], 20.0, 1e-9);
  EXPECT_NEAR(m["ellipse_radius2"], 8.0, 1e-9);
  EXPECT_NEAR(m["ellipse_rotation"], 0.0, 1e-7);
  EXPECT_NEAR(m["axis_ratio"], 0.4, 1e-9);
}

TEST(Measure, AClockwiseOutlineHasTheSameMomentsAsItsReverse) {
  const Json forward = measured({ring(lShape)});
  const Json backward = measured({ring({lShape.rbegin(), lShape.rend()})});
  for (const char* name : {"area", "centre_x", "centre_y", "moment_xx", "moment_xy", "moment_yy"}) {
    EXPECT_NEAR(backward[name], forward[name], 1e-10) << name;
  }
  // Two rectangles, 2 x 8 and 4 x 2, about their common centre (1.9... , 3): by Steiner's theorem.
  const double cx = (16.0 * 1.0 + 8.0 * 4.0) / 24.0;
  const double cy = (16.0 * 4.0 + 8.0 * 1.0) / 24.0;
  const double xx = 8.0 * 8.0 / 12.0 + 16.0 * (cx - 1.0) * (cx - 1.0) + 2.0 * 64.0 / 12.0 +
                    8.0 * (cx - 4.0) * (cx - 4.0);
  EXPECT_NEAR(forward["centre_x"], cx, tight);
  EXPECT_NEAR(forward["centre_y"], cy, tight);
  EXPECT_NEAR(forward["moment_xx"], xx, 1e-10);
}

TEST(Measure, TakesHolesAwayUnlessTold) {
  const Rings rings{square(0, 0, 10), clockwiseSquare(1, 1, 2)};
  const Json with = measured(rings);
  EXPECT_EQ(with["holes"], 1);
  EXPECT_NEAR(with["area"], 96.0, tight);
  const double centre = (100.0 * 5.0 - 4.0 * 2.0) / 96.0;
  EXPECT_NEAR(with["centre_x"], centre, tight);
  EXPECT_NEAR(with["centre_y"], centre, tight);
  const double outline = 1e4 / 12.0 + 100.0 * (5.0 - centre) * (5.0 - centre);
  const double hole = 16.0 / 12.0 + 4.0 * (2.0 - centre) * (2.0 - centre);
  EXPECT_NEAR(with["moment_xx"], outline - hole, 1e-9);
  const double mixed =
      100.0 * (5.0 - centre) * (5.0 - centre) - 4.0 * (2.0 - centre) * (2.0 - centre);
  EXPECT_NEAR(with["moment_xy"], mixed, 1e-9);
  EXPECT_EQ(with["vertices"], 4);
  EXPECT_NEAR(with["roundness"], 4.0 * pi * 100.0 / 1600.0, tight) << "that of the outline";
  EXPECT_NEAR(with["equivalent_diameter"], std::sqrt(4.0 * 96.0 / pi), tight);

  const Json without = measured(rings, {"--no-holes"});
  EXPECT_EQ(without["holes"], 0);
  EXPECT_NEAR(without["area"], 100.0, tight);
  EXPECT_NEAR(without["centre_x"], 5.0, tight);
  EXPECT_NEAR(without["moment_xx"], 1e4 / 12.0, 1e-9);
}

TEST(Measure, AHoleMayRunEitherWay) {
  const Json one = measured({square(0, 0, 10), clockwiseSquare(1, 1, 2)});
  const Json other = measured({square(0, 0, 10), square(1, 1, 2)});
  for (const char* name : {"area", "centre_x", "moment_xx", "moment_xy", "moment_yy"}) {
    EXPECT_NEAR(one[name], other[name], 1e-9) << name;
  }
}

TEST(Measure, HolesMayTouchOrCrossTheirOutline) {
  const Json touching = measured({square(0, 0, 10), square(0, 1, 2), square(2, 3, 4)});
  EXPECT_EQ(touching["area"], 80.0);
  EXPECT_EQ(touching["holes"], 2);
  EXPECT_EQ(touching["note"], nullptr);
  const Rings crossing{square(0, 0, 10), square(1, 1, 2), square(8, 8, 4)};
  EXPECT_EQ(measured(crossing)["area"], 92.0);
  EXPECT_EQ(measured(crossing)["note"], "crosses: measured as filled");
  EXPECT_EQ(measured(crossing, {"--no-holes"})["area"], 100.0);
}

TEST(Measure, AFeatureThatCannotBeMeasuredIsARowWithANote) {
  const std::string two = collection({R"({"type":"Feature","id":"empty","properties":{"label":4},)"
                                      R"("geometry":null})",
                                      polygon({square(0, 0, 2)})});
  const auto json = run({"measure", "--json"}, two);
  EXPECT_EQ(json.status, 1);
  EXPECT_THAT(json.messages, HasSubstr("feature 1 (label 4, id empty): "));
  const Json rows = Json::parse(json.out);
  ASSERT_EQ(rows.size(), 2);
  EXPECT_EQ(rows[0]["feature"], 1);
  EXPECT_EQ(rows[0]["label"], 4);
  EXPECT_EQ(rows[0]["id"], "empty");
  EXPECT_EQ(rows[0]["area"], nullptr);
  EXPECT_EQ(rows[0]["vertices"], nullptr);
  const std::string note = rows[0]["note"];
  EXPECT_EQ(json.messages, "cntr: standard input: feature 1 (label 4, id empty): " + note + "\n");
  EXPECT_EQ(rows[1]["area"], 4.0);

  const auto lines = run({"measure", "--jsonl", "--columns", "feature,note"}, two);
  EXPECT_EQ(lines.out,
            R"({"feature":1,"note":")" + note + "\"}\n" + R"({"feature":2,"note":null})" + "\n");
  const auto csv = run({"measure", "--csv", "--columns", "feature,area,note"}, two);
  EXPECT_EQ(csv.out, "feature,area,note\n1,," + note + "\n2,4,\n");
  const auto table = run({"measure", "--columns", "feature,area,note"}, two);
  EXPECT_THAT(table.out, HasSubstr(note));
  const auto sorted = run({"measure", "--csv", "--columns", "feature", "--sort", "area"}, two);
  EXPECT_EQ(sorted.out, "feature\n2\n1\n");
}

TEST(Measure, AMultiPolygonIsMeasuredAsAWholeAndByItsParts) {
  const std::string parts =
      "[[" + square(0, 0, 2) + "],[" + clockwiseSquare(10, 0, 4) + "," + square(11, 1, 1) + "]]";
  const std::string file = multiPolygon(
      {{square(0, 0, 2)}, {clockwiseSquare(10, 0, 4), square(11, 1, 1)}}, R"("label":3)");
  const Json rows = runJson({"measure", "--parts"}, file);
  ASSERT_EQ(rows.size(), 3);
  const Json whole = runJson({"measure"}, file);
  ASSERT_EQ(whole.size(), 1) << "parts have rows where they are asked for";
  EXPECT_EQ(whole[0], rows[0]);
  EXPECT_EQ(rows[0]["part"], nullptr);
  EXPECT_EQ(rows[1]["part"], 1);
  EXPECT_EQ(rows[2]["part"], 2);
  EXPECT_EQ(rows[2]["label"], 3);
  EXPECT_NEAR(rows[0]["area"], 19.0, tight);
  EXPECT_NEAR(rows[2]["area"], 15.0, tight);
  EXPECT_NEAR(rows[0]["centre_x"], (4.0 * 1.0 + 16.0 * 12.0 - 11.5) / 19.0, 1e-11);
  EXPECT_NEAR(rows[2]["centre_x"], (16.0 * 12.0 - 11.5) / 15.0, 1e-11);
  EXPECT_EQ(rows[0]["vertices"], 8);
  EXPECT_EQ(rows[0]["holes"], 1);
  EXPECT_NEAR(rows[0]["length"], 24.0, tight);
  EXPECT_EQ(rows[0]["width"], 14.0);
  EXPECT_EQ(rows[0]["crosses_itself"], false);
  EXPECT_EQ(rows[0]["roundness"], nullptr) << "several outlines have no roundness";
  EXPECT_NE(rows[1]["roundness"], nullptr);
  const double c = rows[0]["centre_x"];
  const double xx = 16.0 / 12.0 + 4.0 * (1.0 - c) * (1.0 - c) + 256.0 / 12.0 +
                    16.0 * (12.0 - c) * (12.0 - c) - 1.0 / 12.0 - (11.5 - c) * (11.5 - c);
  EXPECT_NEAR(rows[0]["moment_xx"], xx, 1e-9);
}

TEST(Measure, AMultiPolygonOfOnePartIsOneRow) {
  const Json rows = runJson({"measure"}, multiPolygon({{square(0, 0, 2)}}));
  ASSERT_EQ(rows.size(), 1);
  EXPECT_NEAR(rows[0]["roundness"], pi / 4.0, tight);
}

TEST(Measure, OverlappingPartsCrossEachOther) {
  const Json rows =
      runJson({"measure", "--parts"}, multiPolygon({{square(0, 0, 4)}, {square(2, 2, 4)}}));
  ASSERT_EQ(rows.size(), 3);
  EXPECT_EQ(rows[0]["crosses_itself"], true);
  EXPECT_EQ(rows[0]["area"], 28.0);
  EXPECT_EQ(rows[0]["note"], "crosses: measured as filled");
  EXPECT_EQ(rows[1]["crosses_itself"], false);
}

TEST(Measure, AnOpenLineHasALengthButNoArea) {
  const Json m = runJson({"measure"}, feature("LineString", "[[0,0],[3,0],[3,4]]")).at(0);
  EXPECT_EQ(m["closed"], false);
  EXPECT_NEAR(m["length"], 7.0, tight);
  EXPECT_NEAR(m["mean_x"], (3.0 * 1.5 + 4.0 * 3.0) / 7.0, tight);
  EXPECT_NEAR(m["diameter"], 5.0, tight);
  for (const char* name : {"area", "centre_x", "moment_xx", "roundness", "equivalent_diameter",
                           "axis_ratio", "orientation"}) {
    EXPECT_EQ(m[name], nullptr) << name;
  }
  EXPECT_EQ(m["note"], "open");
}

TEST(Measure, LinesTogetherHaveALengthAndABox) {
  const Json rows = runJson({"measure", "--parts"},
                            feature("MultiLineString", "[[[0,0],[3,0]],[[1,1],[1,5],[2,5]]]"));
  ASSERT_EQ(rows.size(), 3);
  EXPECT_EQ(rows[0]["length"], 8.0);
  EXPECT_EQ(rows[0]["vertices"], 5);
  EXPECT_EQ(rows[0]["height"], 5.0);
  EXPECT_EQ(rows[0]["crosses_itself"], nullptr);
  EXPECT_EQ(rows[2]["length"], 5.0);
  EXPECT_EQ(rows[2]["crosses_itself"], false);
}

TEST(Measure, AnOutlineThatCrossesItselfIsMeasuredAsFilledUnlessThatIsLeftOut) {
  const Rings rings{"[[0,0],[4,4],[4,0],[0,2]]"};
  const Json filled = measured(rings);
  // The edges cross in (4/3, 4/3): a triangle of 4/3 and one of 16/3.
  EXPECT_NEAR(filled["area"], 20.0 / 3.0, tight);
  EXPECT_EQ(filled["note"], "crosses: measured as filled");
  const Json m = measured(rings, {"--strict"});
  EXPECT_EQ(m["crosses_itself"], true);
  EXPECT_EQ(m["note"], "crosses: not measured");
  for (const char* name : {"area", "centre_x", "moment_xx", "roundness", "equivalent_diameter",
                           "axis_ratio", "orientation"}) {
    EXPECT_EQ(m[name], nullptr) << name;
  }
  EXPECT_EQ(m["height"], 4.0) << "extents do not depend on crossings";
}

TEST(Measure, SaysWhenAHoleLiesOutsideOrHolesCross) {
  const Json outside = measured({square(0, 0, 4), square(10, 0, 1)});
  EXPECT_EQ(outside["note"], "overlaps: measured as filled");
  EXPECT_EQ(outside["area"], 16.0);
  const Json crossing = measured({square(0, 0, 9), square(1, 1, 3), square(2, 2, 3)});
  EXPECT_EQ(crossing["note"], "crosses: measured as filled");
  EXPECT_EQ(crossing["area"], 81.0 - 14.0);
  const Json apart = measured({square(0, 0, 9), square(1, 1, 1), square(4, 4, 1)});
  EXPECT_EQ(apart["note"], nullptr);
  EXPECT_EQ(apart["area"], 79.0);
}

TEST(Measure, ALineOfOnePointHasNoLength) {
  const Json m = runJson({"measure"}, feature("LineString", "[[5,5],[5,5]]")).at(0);
  EXPECT_EQ(m["note"], "open, no length");
}

TEST(Measure, AnOutlineWithoutAreaHasNoCentre) {
  const Json m = measured({"[[5,5],[9,5],[7,5]]"});
  EXPECT_EQ(m["area"], 0.0);
  EXPECT_EQ(m["centre_x"], nullptr);
  EXPECT_EQ(m["moment_xx"], nullptr);
  EXPECT_EQ(m["equivalent_diameter"], nullptr);
  EXPECT_EQ(m["note"], "no area");
}

TEST(Measure, AnOutlineOfOnePointHasNoMeasuresThatMeanNothing) {
  const Json m = measured({"[[5,5],[5,5],[5,5],[5,5]]"});
  EXPECT_EQ(m["length"], 0.0);
  for (const char* name : {"mean_x", "roundness", "centre_x", "ellipse_x", "ellipse_residual"}) {
    EXPECT_EQ(m[name], nullptr) << name;
  }
}

TEST(Measure, NumbersThatOverflowAreNoAnswers) {
  const Json m = measured({"[[-1e308,0],[1e308,0],[0,1e308]]"});
  EXPECT_EQ(m["area"], nullptr);
  EXPECT_EQ(m["width"], nullptr);
  EXPECT_EQ(m["height"], 1e308);
}

TEST(Measure, GivesAllDigitsAsJson) {
  const Json m = measured({"[[0,0],[0.1,0],[0.1,0.30000000000000004]]"});
  EXPECT_EQ(m["height"], 0.30000000000000004);
  EXPECT_EQ(m["width"], 0.1);
}

TEST(Measure, MeasuresTheCoins) {
  const Json rows = runJson({"measure", "samples/coins.geojson"});
  ASSERT_EQ(rows.size(), 24);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    EXPECT_EQ(rows[i]["label"], i + 1);
    EXPECT_GT(rows[i]["roundness"], 0.85) << i;
    EXPECT_GT(rows[i]["axis_ratio"], 0.8) << i;
    EXPECT_EQ(rows[i]["crosses_itself"], false) << i;
    EXPECT_LT(rows[i]["ellipse_residual"], 1.5) << i;
  }
}

TEST(Measure, GivesTheLibrarysAnswersAndLengthsToTheLastBit) {
  const Json coins = Json::parse(std::ifstream(repositoryDirectory() + "/samples/coins.geojson"));
  const Json rows = runJson({"measure", "samples/coins.geojson"});
  for (std::size_t i = 0; i < rows.size(); ++i) {
    std::vector<qcVector<2>> points;
    for (const Json& p : coins["features"][i]["geometry"]["coordinates"][0]) {
      points.emplace_back(p[0], p[1]);
    }
    points.pop_back();
    const qcRegion coin(points, qcContourDefs::eNoIntersectionRepair);
    const double moment = coin.inertiaMatrix(true).element(0, 0);
    EXPECT_NEAR(rows[i]["area"], coin.area(true), tight * coin.area(true));
    EXPECT_NEAR(rows[i]["centre_x"], coin.centerOfMass(true).x(), 1e-10);
    EXPECT_NEAR(rows[i]["centre_y"], coin.centerOfMass(true).y(), 1e-10);
    EXPECT_NEAR(rows[i]["moment_xx"], moment, 1e-10 * moment);
    EXPECT_NEAR(rows[i]["moment_xy"], coin.inertiaMatrix(true).element(0, 1), 1e-10 * moment);
    EXPECT_NEAR(rows[i]["moment_yy"], coin.inertiaMatrix(true).element(1, 1), 1e-10 * moment);
    EXPECT_EQ(rows[i]["length"], coin.length());
    EXPECT_EQ(rows[i]["diameter"], coin.diameter(qcContourDefs::eFarthestVertexPair));
  }
}

TEST(MeasureTable, ShowsTheUsualColumnsThatHaveAnswers) {
  const auto result = run({"measure"}, polygon({square(0, 0, 2)}));
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out,
            "feature  vertices     area  centre_x  centre_y  moment_xx  moment_xy  moment_yy  "
            "roundness\n"
            "      1         4  4.00000   1.00000   1.00000    1.33333          0    1.33333   "
            "0.785398\n");
}

TEST(MeasureTable, NamesTheFileWhenThereAreSeveral) {
  const auto one = run({"measure", "samples/cell.geojson"});
  EXPECT_THAT(one.out, Not(HasSubstr("samples/cell.geojson")));
  const auto two = run({"measure", "samples/cell.geojson", "samples/coins.geojson"});
  EXPECT_THAT(two.out, HasSubstr("\nsamples/cell.geojson "));
  EXPECT_THAT(two.out, HasSubstr("\nsamples/coins.geojson "));
}

TEST(MeasureTable, ShowsTheChosenColumnsInTheChosenOrder) {
  const std::string squares = collection(
      {polygon({square(0, 0, 2)}, R"("label":12)"), feature("LineString", "[[0,0],[30,0]]")});
  const auto result = run({"measure", "--columns", "length,label,note", "-"}, squares);
  EXPECT_EQ(result.out,
            " length  label  note\n"
            " 8.0000     12  -\n"
            "30.0000      -  open\n");
}

TEST(MeasureTable, CanShowEverything) {
  const auto result = run({"measure", "--all", "samples/cell.geojson"});
  for (const char* name : {"file ", " closed ", " ellipse_residual ", " crosses_itself"}) {
    EXPECT_THAT(result.out, HasSubstr(name));
  }
}

TEST(MeasureTable, OfNoFeaturesIsNothing) {
  EXPECT_EQ(run({"measure"}, collection({})).out, "");
  EXPECT_EQ(run({"measure", "--columns", "area,length"}, collection({})).out, "");
}

TEST(MeasureTable, BlanksAroundNamesOfColumnsDoNotMatter) {
  EXPECT_EQ(run({"measure", "--csv", "--columns", "area, width"}, polygon({square(0, 0, 2)})).out,
            "area,width\n4,2\n");
}

TEST(MeasureTable, JsonShowsChosenColumnsToo) {
  const Json rows = runJson({"measure", "--columns", "area,label", "samples/cell.geojson"});
  EXPECT_EQ(rows[0].size(), 2);
  EXPECT_EQ(rows[0]["label"], 1);
}

TEST(MeasureTable, AnUnknownColumnIsWrongUsage) {
  const auto result = run({"measure", "--columns", "area,colour", "samples/cell.geojson"});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.messages, HasSubstr("there is no column 'colour'"));
  EXPECT_EQ(result.out, "");
}

TEST(MeasureUnits, ScaleLengthsAreasAndMoments) {
  const std::vector<std::string> scaled{"--scale", "0.5", "--unit", "mm"};
  const Json plain = measured({ring(lShape)});
  const Json m = measured({ring(lShape)}, scaled);
  for (const char* name :
       {"length", "centre_x", "mean_y", "equivalent_diameter", "diameter", "first_vertex_diameter",
        "left", "height", "box_x", "box_width", "feret_min", "circle_radius", "hull_length",
        "ellipse_x", "ellipse_radius1", "ellipse_residual"}) {
    EXPECT_EQ(m[name], plain[name].get<double>() * 0.5) << name;
  }
  for (const char* name : {"area", "hull_area"})
    EXPECT_EQ(m[name], plain[name].get<double>() * 0.25) << name;
  for (const char* name : {"moment_xx", "moment_xy", "moment_yy"}) {
    EXPECT_EQ(m[name], plain[name].get<double>() * 0.0625) << name;
  }
  for (const char* name :
       {"roundness", "axis_ratio", "orientation", "ellipse_rotation", "vertices"}) {
    EXPECT_EQ(m[name], plain[name]) << name;
  }
}

TEST(MeasureUnits, AreNamedInAColumn) {
  const auto table = run(
      {"measure", "--columns", "length,area,moment_xx,roundness", "--scale", "2", "--unit", "µm"},
      polygon({square(0, 0, 1)}));
  EXPECT_EQ(table.out,
            " length     area  moment_xx  roundness  unit\n"
            "8.00000  4.00000    1.33333   0.785398  µm\n");
  const auto csv = run({"measure", "--csv", "--columns", "area,length", "--unit", "mm"},
                       polygon({square(0, 0, 1)}));
  EXPECT_EQ(csv.out, "area,length,unit\n1,4,mm\n");
  const auto chosen = run({"measure", "--csv", "--columns", "unit,area", "--unit", "mm"},
                          polygon({square(0, 0, 1)}));
  EXPECT_EQ(chosen.out, "unit,area\nmm,1\n");
  const Json m = measured({square(0, 0, 1)});
  EXPECT_EQ(m["unit"], nullptr) << "the columns are the same without --unit";
  const auto all = run({"measure", "--unit", "mm"}, polygon({square(0, 0, 1)}));
  EXPECT_THAT(all.out, HasSubstr("  unit  "));
}

TEST(MeasureUnits, AScaleIsAPositiveNumber) {
  EXPECT_EQ(run({"measure", "--scale", "0"}, polygon({square(0, 0, 1)})).status, 2);
  EXPECT_EQ(run({"measure", "--scale", "mm"}, polygon({square(0, 0, 1)})).status, 2);
}

TEST(MeasureSorted, ByAColumnThatNeedNotBeShown) {
  const std::string squares = collection(
      {polygon({square(0, 0, 2)}, R"("label":1)"), feature("LineString", "[[0,0],[3,0]]"),
       polygon({square(0, 0, 3)}, R"("label":2)"), polygon({square(9, 0, 2)}, R"("label":3)")});
  const auto order = [&](const std::string& sort) {
    std::vector<int> numbers;
    for (const Json& row : runJson({"measure", "--columns", "feature", "--sort", sort}, squares)) {
      EXPECT_EQ(row.size(), 1);
      numbers.push_back(row["feature"]);
    }
    return numbers;
  };
  EXPECT_EQ(order("area"), (std::vector<int>{1, 4, 3, 2})) << "equal ones stay in order";
  EXPECT_EQ(order("area:desc"), (std::vector<int>{3, 1, 4, 2})) << "no answer comes last";
  EXPECT_EQ(order("label:asc"), (std::vector<int>{1, 3, 4, 2}));
}

TEST(MeasureSorted, AnUnknownColumnOrOrderIsWrongUsage) {
  EXPECT_EQ(run({"measure", "--sort", "colour"}, polygon({square(0, 0, 1)})).status, 2);
  const auto result = run({"measure", "--sort", "area:up"}, polygon({square(0, 0, 1)}));
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.messages, HasSubstr("'up' is neither asc nor desc"));
}

TEST(MeasureHelp, KnowsEveryMeasure) {
  const std::string help = run({"measure", "--help"}).out;
  for (const table::Measure& measure : table::allMeasures()) {
    EXPECT_THAT(help, HasSubstr(std::string(" ") + measure.name + " ")) << measure.name;
    EXPECT_THAT(help, HasSubstr(measure.meaning));
  }
}

TEST(MeasureFormats, HaveTheSameRows) {
  const Json array = runJson({"measure", "samples/coins.geojson"});
  std::istringstream lines(run({"measure", "--jsonl", "samples/coins.geojson"}).out);
  std::string line;
  std::size_t count = 0;
  while (std::getline(lines, line)) EXPECT_EQ(Json::parse(line), array.at(count++));
  EXPECT_EQ(count, array.size());
}

TEST(MeasureFormats, CsvHasAllDigitsAndQuotesWhatNeedsIt) {
  const auto result =
      run({"measure", "--csv", "--columns", "id,label,width,closed,area"},
          collection({polygon({square(0, 0, 0.1)}),
                      R"({"type":"Feature","id":"a \"b\", c","properties":{"label":3},"geometry":)"
                      R"({"type":"LineString","coordinates":[[0,0],[0.30000000000000004,1]]}})"}));
  EXPECT_EQ(result.out,
            "id,label,width,closed,area\n"
            ",,0.1,true,0.010000000000000002\n"
            "\"a \"\"b\"\", c\",3,0.30000000000000004,false,\n");
}

TEST(MeasureFormats, OnlyOneCanBeAskedFor) {
  EXPECT_EQ(run({"measure", "--csv", "--json"}, polygon({square(0, 0, 1)})).status, 2);
}
