// SPDX-License-Identifier: MIT
//
// cntr compare: which nominal a feature is compared with, answers that are obvious, what is out of
// tolerance, and the messages about it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <sstream>
#include <string>
#include <vector>

#include "program.h"

using program::clockwiseSquare;
using program::collection;
using program::Directory;
using program::feature;
using program::Json;
using program::multiPolygon;
using program::polygon;
using program::ring;
using program::run;
using program::runJson;
using program::Running;
using program::square;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

/// A plate of 40 by 30 with a tab of 20 by 10 and a hole of 10 by 10.
const std::vector<std::vector<double>> plateOutline = {{0, 0},   {40, 0},  {40, 10}, {60, 10},
                                                       {60, 20}, {40, 20}, {40, 30}, {0, 30}};
const std::vector<std::vector<double>> withoutTab = {{0, 0}, {40, 0}, {40, 30}, {0, 30}};
const std::string plate = polygon({ring(plateOutline), square(10, 10, 10)});

/// The points turned about the origin by an angle in degrees, then shifted.
std::vector<std::vector<double>> moved(const std::vector<std::vector<double>>& points,
                                       double degrees, double dx, double dy) {
  const double c = std::cos(degrees * 0.017453292519943295);
  const double s = std::sin(degrees * 0.017453292519943295);
  std::vector<std::vector<double>> result;
  for (const auto& p : points)
    result.push_back({c * p[0] - s * p[1] + dx, s * p[0] + c * p[1] + dy});
  return result;
}

/// Runs compare with a file of nominals.
class Compare : public testing::Test {
 protected:
  program::Result compared(const std::string& measured, const std::string& nominal,
                           std::vector<std::string> options = {}) const {
    options.insert(options.begin(), {"compare", "--nominal", file(nominal)});
    return run(options, measured);
  }

  Json rows(const std::string& measured, const std::string& nominal,
            std::vector<std::string> options = {}, int status = 0) const {
    options.insert(options.begin(), {"compare", "--nominal", file(nominal)});
    return runJson(options, measured, status);
  }

  /// The only row.
  Json row(const std::string& measured, const std::string& nominal,
           const std::vector<std::string>& options = {}, int status = 0) const {
    const Json all = rows(measured, nominal, options, status);
    EXPECT_EQ(all.size(), 1U);
    return all.at(0);
  }

  std::string file(const std::string& nominal) const {
    return directory_.write("nominal.geojson", nominal);
  }

 private:
  Directory directory_;
};

std::vector<std::size_t> nominalsOf(const Json& rows) {
  std::vector<std::size_t> numbers;
  for (const Json& row : rows) numbers.push_back(row["nominal"].get<std::size_t>());
  return numbers;
}

std::string labelledSquare(const std::string& label, double x, const std::string& id = "") {
  const std::string square = polygon({program::square(x, 0, 1)}, "\"label\":" + label);
  if (id.empty()) return square;
  Json feature = Json::parse(square);
  feature["id"] = id;
  return feature.dump();
}

TEST_F(Compare, AFeatureIsNoDistanceFromItself) {
  const Json answer = row(plate, plate, {"--tolerance", "0"});
  for (const char* name : {"deviation_min", "deviation_max", "deviation_mean", "deviation_rms",
                           "hausdorff", "area_difference"})
    EXPECT_NEAR(answer[name], 0.0, 1e-13) << name;
  EXPECT_EQ(answer["hausdorff"], 0.0);
  EXPECT_EQ(answer["iou"], 1.0);
  EXPECT_EQ(answer["in_tolerance"], true);
  EXPECT_EQ(answer["note"], nullptr);
}

TEST_F(Compare, DistancesArePositiveOutsideAndNegativeInside) {
  const std::string nominal = polygon({square(0, 0, 10)});
  const Json larger = row(polygon({square(-1, -1, 12)}), nominal);
  EXPECT_NEAR(larger["deviation_min"], 1.0, 1e-12);
  EXPECT_NEAR(larger["deviation_max"], std::sqrt(2.0), 1e-12);
  EXPECT_NEAR(larger["hausdorff"], std::sqrt(2.0), 1e-8);
  EXPECT_NEAR(larger["area_difference"], 44.0, 1e-12);
  EXPECT_NEAR(larger["iou"], 100.0 / 144.0, 1e-12);
  const Json smaller = row(polygon({square(1, 1, 8)}), nominal);
  EXPECT_NEAR(smaller["deviation_max"], -1.0, 1e-12);
  EXPECT_NEAR(smaller["deviation_min"], -1.0, 1e-12);
  EXPECT_NEAR(smaller["deviation_mean"], -1.0, 1e-12);
  EXPECT_NEAR(smaller["deviation_rms"], 1.0, 1e-12);
  EXPECT_NEAR(smaller["area_difference"], -36.0, 1e-12);
}

TEST_F(Compare, AMissingTabFails) {
  const std::string measured = polygon({ring(withoutTab), square(10, 10, 10)});
  const auto result = compared(measured, plate, {"--tolerance", "5"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.messages,
            "cntr: standard input: feature 1: is out of tolerance: its Hausdorff distance is 20, "
            "more than 5\n");
  const Json answer = row(measured, plate, {"--tolerance", "5"}, 1);
  EXPECT_EQ(answer["in_tolerance"], false);
  EXPECT_NEAR(answer["hausdorff"], 20.0, 1e-6);
  // None of the measured points is far from the nominal boundary.
  EXPECT_LE(answer["deviation_max"], 1e-12);
  EXPECT_GT(answer["deviation_min"], -5.0 - 1e-12);
  EXPECT_NEAR(answer["area_difference"], -200.0, 1e-9);
}

TEST_F(Compare, AMissingHoleFails) {
  const Json answer = row(polygon({ring(plateOutline)}), plate, {"--tolerance", "5"}, 1);
  EXPECT_NEAR(answer["hausdorff"], 15.0, 1e-6);
  EXPECT_NEAR(answer["area_difference"], 100.0, 1e-9);
  EXPECT_NEAR(answer["iou"], 1300.0 / 1400.0, 1e-12);
}

TEST_F(Compare, ItPassesUpToTheToleranceItself) {
  const std::string measured = polygon({square(0, 0, 8)});
  const std::string nominal = polygon({ring({{0, 0}, {8, 0}, {8, 10}, {0, 10}})});
  EXPECT_EQ(row(measured, nominal, {"--tolerance", "2"})["in_tolerance"], true);
  EXPECT_EQ(row(measured, nominal, {"--tolerance", "1.999"}, 1)["in_tolerance"], false);
  EXPECT_EQ(row(measured, nominal)["in_tolerance"], nullptr);
}

TEST_F(Compare, TheDirectionOfRingsDoesNotMatter) {
  const std::string turned = polygon({ring(plateOutline), clockwiseSquare(10, 10, 10)});
  EXPECT_EQ(row(turned, plate), row(plate, plate));
  EXPECT_EQ(row(plate, turned), row(plate, plate));
}

TEST_F(Compare, OutlinesThatCrossAreComparedByWhatTheyFill) {
  // Two squares that overlap, and the one outline around both.
  const std::string two = multiPolygon({{square(0, 0, 4)}, {square(2, 2, 4)}});
  const std::string one =
      polygon({ring({{0, 0}, {4, 0}, {4, 2}, {6, 2}, {6, 6}, {2, 6}, {2, 4}, {0, 4}})});
  Json same = row(one, one);
  EXPECT_EQ(same["note"], nullptr);
  same["note"] = "crosses: compared as filled";
  EXPECT_EQ(row(two, one), same);
  same["note"] = "the nominal crosses: compared as filled";
  EXPECT_EQ(row(one, two), same);
  const std::string covered = multiPolygon({{square(0, 0, 4)}, {square(1, 1, 2)}});
  EXPECT_EQ(row(covered, polygon({square(0, 0, 4)}))["note"], "overlaps: compared as filled");
}

TEST_F(Compare, TheSpacingDecidesWhereDistancesAreAsked) {
  // The nominal has a notch below the middle of a long edge, where the square has no vertex.
  const std::string nominal =
      polygon({ring({{0, 0}, {45, 0}, {50, 10}, {55, 0}, {100, 0}, {100, 100}, {0, 100}})});
  const std::string measured = polygon({square(0, 0, 100)});
  EXPECT_EQ(row(measured, nominal, {"--spacing", "100"})["deviation_max"], 0.0);
  EXPECT_NEAR(row(measured, nominal, {"--spacing", "50"})["deviation_max"], std::sqrt(20.0), 1e-12);
  EXPECT_NEAR(row(measured, nominal)["deviation_max"], std::sqrt(20.0), 1e-3);
}

TEST_F(Compare, LengthsHaveTheUnitOfTheScale) {
  const std::string nominal = polygon({square(0, 0, 10)});
  const std::string measured = polygon({square(1, 1, 8)});
  const Json answer =
      row(measured, nominal, {"--scale", "0.5", "--unit", "mm", "--tolerance", "0.8"});
  EXPECT_EQ(answer["unit"], "mm");
  EXPECT_NEAR(answer["deviation_min"], -0.5, 1e-12);
  EXPECT_NEAR(answer["hausdorff"], std::sqrt(0.5), 1e-8);
  EXPECT_NEAR(answer["area_difference"], -9.0, 1e-12);
  EXPECT_NEAR(answer["iou"], 0.64, 1e-12);
  EXPECT_EQ(answer["in_tolerance"], true);
  // The spacing is scaled, too: steps of 4 pixels meet the middle of the sides.
  const std::string peak = polygon({ring({{0, 0}, {4, 2}, {8, 0}, {8, 8}, {0, 8}})});
  const std::string flat = polygon({square(0, 0, 8)});
  EXPECT_EQ(row(flat, peak, {"--spacing", "8"})["deviation_max"], 0.0);
  EXPECT_GT(row(flat, peak, {"--spacing", "2", "--scale", "0.5"})["deviation_max"], 0.5);
}

TEST_F(Compare, AnAlignedFeatureMayLieAnywhere) {
  const std::string there =
      polygon({ring(moved(plateOutline, 30.0, 5e6, -3e6)),
               ring(moved({{10, 10}, {20, 10}, {20, 20}, {10, 20}}, 30.0, 5e6, -3e6))});
  EXPECT_EQ(row(there, plate, {"--tolerance", "1"}, 1)["iou"], 0.0);
  const Json answer = row(there, plate, {"--align", "--tolerance", "1e-6", "--scale", "2"});
  EXPECT_EQ(answer["in_tolerance"], true);
  EXPECT_NEAR(answer["iou"], 1.0, 1e-9);
  EXPECT_NEAR(answer["align_angle"], -30.0, 1e-7);
  // The shift brings the corner of the plate, in the unit of the answers, back to the origin.
  const double angle = answer["align_angle"].get<double>() * 0.017453292519943295;
  const double x = std::cos(angle) * 1e7 + std::sin(angle) * 6e6;
  const double y = std::sin(angle) * 1e7 - std::cos(angle) * 6e6;
  EXPECT_NEAR(x + answer["align_x"].get<double>(), 0.0, 1e-6);
  EXPECT_NEAR(y + answer["align_y"].get<double>(), 0.0, 1e-6);
}

TEST_F(Compare, AlignmentLosesNoDigitsOfAFeatureFarFromItsNominal) {
  const std::string farNominal = polygon({ring(moved(plateOutline, 0.0, 1e9, 1e9))});
  const std::string measured = polygon({ring(moved(plateOutline, 30.0, 0.0, 0.0))});
  EXPECT_EQ(row(measured, farNominal, {"--align", "--tolerance", "1e-10"})["in_tolerance"], true);
}

TEST_F(Compare, AlignmentKeepsSizes) {
  const Json answer = row(polygon({square(50, 60, 8)}), polygon({square(0, 0, 2)}), {"--align"});
  EXPECT_NEAR(answer["iou"], 1.0 / 16.0, 1e-9);
  EXPECT_NEAR(answer["area_difference"], 60.0, 1e-9);
}

TEST_F(Compare, DistancesHaveTheSameDigitsFarFromTheOrigin) {
  const std::string near = polygon({square(0.25, 0.5, 8)});
  const std::string nominal = polygon({square(0, 0, 10)});
  const std::string farNear = polygon({square(1e9 + 0.25, -1e9 + 0.5, 8)});
  const std::string farNominal = polygon({square(1e9, -1e9, 10)});
  EXPECT_EQ(row(farNear, farNominal), row(near, nominal));
}

TEST_F(Compare, TheOnlyNominalIsForAll) {
  const Json answers = rows(collection({labelledSquare("1", 0), labelledSquare("7", 0)}),
                            labelledSquare("3", 0, "x"));
  EXPECT_THAT(nominalsOf(answers), ElementsAre(1U, 1U));
}

TEST_F(Compare, SeveralNominalsArePairedByLabelAndElseById) {
  const std::string nominals =
      collection({labelledSquare("1", 0, "a"), labelledSquare("2", 10, "b"),
                  labelledSquare("2", 20, "c"), labelledSquare("5", 30)});
  const Json answers = rows(collection({labelledSquare("5", 30, "a"), labelledSquare("\"5\"", 30),
                                        labelledSquare("2", 20, "c"), labelledSquare("9", 10, "b"),
                                        labelledSquare("1", 0)}),
                            nominals);
  EXPECT_THAT(nominalsOf(answers), ElementsAre(4U, 4U, 3U, 2U, 1U));
  for (const Json& answer : answers) EXPECT_EQ(answer["hausdorff"], 0.0);
}

TEST_F(Compare, AFeatureWithoutANominalIsARowWithANoteAndStatusOne) {
  const std::string nominals = collection(
      {labelledSquare("1", 0, "a"), labelledSquare("2", 0, "b"), labelledSquare("2", 0, "b")});
  const std::string measured =
      collection({labelledSquare("3", 0), labelledSquare("3", 0, "z"), labelledSquare("2", 0),
                  labelledSquare("2", 0, "b"), polygon({square(0, 0, 1)}), labelledSquare("1", 0)});
  const auto result = compared(measured, nominals, {"--verbose"});
  EXPECT_EQ(result.status, 1);
  const std::string at = "cntr: standard input: feature ";
  EXPECT_THAT(
      result.messages,
      StartsWith(at + "1 (label 3): no nominal has label 3\n" + at +
                 "2 (label 3, id z): no nominal has label 3, no nominal has id z\n" + at +
                 "3 (label 2): several nominals have label 2\n" + at +
                 "4 (label 2, id b): several nominals have label 2, several nominals have id b\n" +
                 at + "5: has no label and no id to find its nominal by\n"));
  const Json answers = rows(measured, nominals, {"--tolerance", "1"}, 1);
  ASSERT_EQ(answers.size(), 6U);
  EXPECT_EQ(answers[0]["note"], "no nominal has label 3");
  EXPECT_EQ(answers[0]["hausdorff"], nullptr);
  EXPECT_EQ(answers[0]["in_tolerance"], false);
  EXPECT_EQ(answers[5]["in_tolerance"], true);
}

TEST_F(Compare, WhatCannotBeComparedIsARowWithANote) {
  const std::string flat = polygon({"[[0,0],[4,0],[0,0],[4,0],[0,0]]"});
  const Json answers = rows(collection({flat, polygon({"[[1,1]]"}), plate}), plate, {}, 1);
  ASSERT_EQ(answers.size(), 3U);
  EXPECT_EQ(answers[0]["note"], "the feature has no area");
  EXPECT_EQ(answers[1]["note"], "outline has 1 point, but needs 3");
  EXPECT_EQ(answers[2]["hausdorff"], 0.0);
  EXPECT_THAT(compared(collection({flat}), plate).messages,
              HasSubstr("cntr: standard input: feature 1: the feature has no area\n"));
}

TEST_F(Compare, ABadNominalKeepsItsPlaceAndIsNamed) {
  const std::string nominals = collection(
      {labelledSquare("1", 0), polygon({"[[1,1]]"}, "\"label\":2"), labelledSquare("3", 0)});
  const auto result =
      compared(collection({labelledSquare("1", 0), labelledSquare("2", 0)}), nominals);
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.messages,
              HasSubstr("nominal.geojson: feature 2: outline has 1 point, but needs 3\n"));
  EXPECT_THAT(result.messages,
              HasSubstr("cntr: standard input: feature 2 (label 2): its nominal, feature 2, "
                        "cannot be used: outline has 1 point, but needs 3\n"));
  // One of two is bad: the other is not the only one.
  const auto two = compared(polygon({square(0, 0, 1)}),
                            collection({labelledSquare("1", 0), polygon({"[[1,1]]"})}));
  EXPECT_THAT(two.messages, HasSubstr("has no label and no id to find its nominal by\n"));
}

TEST_F(Compare, NominalsThatWereNotMeasuredAreCountedAndFailACompleteComparison) {
  const std::string nominals =
      collection({labelledSquare("1", 0), labelledSquare("2", 0), labelledSquare("3", 0)});
  const auto result = compared(labelledSquare("2", 0), nominals);
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.messages, HasSubstr("nominal.geojson: 2 of 3 features were not measured\n"));
  const auto complete = compared(labelledSquare("2", 0), nominals, {"--complete"});
  EXPECT_EQ(complete.status, 1);
  EXPECT_THAT(complete.messages, HasSubstr("nominal.geojson: feature 1: was not measured\n"));
  EXPECT_THAT(complete.messages, HasSubstr("nominal.geojson: feature 3: was not measured\n"));
  EXPECT_THAT(complete.messages, testing::Not(HasSubstr("feature 2")));
  const auto all = compared(nominals, nominals, {"--complete"});
  EXPECT_EQ(all.status, 0);
  EXPECT_EQ(all.messages, "");
}

TEST_F(Compare, OpenLinesHaveNoAreasAndNoSigns) {
  const std::string line = feature("LineString", "[[0,0],[10,0]]");
  const Json open = row(feature("LineString", "[[0,1],[10,-2]]"), line);
  EXPECT_EQ(open["deviation_min"].get<double>() >= 0.0, true);
  EXPECT_NEAR(open["deviation_max"], 2.0, 1e-12);
  EXPECT_EQ(open["iou"], nullptr);
  EXPECT_EQ(open["area_difference"], nullptr);
  EXPECT_EQ(open["note"], "the nominal is open: distances have no signs");
  const Json inside = row(feature("LineString", "[[4,4],[5,5]]"), polygon({square(0, 0, 10)}));
  EXPECT_NEAR(inside["deviation_min"], -5.0, 1e-12);
  EXPECT_EQ(inside["iou"], nullptr);
  EXPECT_EQ(inside["note"], nullptr);
}

TEST_F(Compare, ATableLeavesOutWhatCannotDiffer) {
  const auto result = compared(polygon({square(1, 1, 8)}), polygon({square(0, 0, 10)}));
  EXPECT_EQ(result.out,
            "feature  deviation_min  deviation_max  deviation_mean  deviation_rms  hausdorff     "
            "  iou  area_difference\n"
            "      1       -1.00000       -1.00000        -1.00000        1.00000    1.41421  "
            "0.640000         -36.0000\n");
}

TEST_F(Compare, CommaSeparatedValuesHaveAllColumns) {
  const auto result =
      compared(polygon({square(0, 0, 2)}), polygon({square(0, 0, 2)}), {"--csv", "--align"});
  EXPECT_THAT(result.out,
              StartsWith("file,feature,label,id,nominal,unit,deviation_min,deviation_max,"
                         "deviation_mean,deviation_rms,hausdorff,iou,area_difference,align_angle,"
                         "align_x,align_y,in_tolerance,note\nstandard input,1,,,1,,"));
}

TEST_F(Compare, AnswersAreTheSameWithAnyNumberOfJobs) {
  const std::vector<std::string> arguments{"compare",   "samples/coins.geojson",
                                           "--nominal", "samples/coins.geojson",
                                           "--align",   "--jsonl"};
  const auto answers = [&](const char* jobs) {
    std::vector<std::string> all = arguments;
    all.insert(all.end(), {"--jobs", jobs});
    return run(all).out;
  };
  const std::string one = answers("1");
  EXPECT_EQ(std::count(one.begin(), one.end(), '\n'), 24);
  EXPECT_EQ(answers("4"), one);
}

TEST_F(Compare, EachAnswerComesBeforeTheNextFeature) {
  Running cntr({"compare", "--jsonl", "--from", "geojsonl", "--nominal", file(plate)});
  for (int i = 0; i < 3; ++i) {
    cntr.feed(plate + "\n");
    EXPECT_THAT(cntr.line(), HasSubstr("\"hausdorff\":0.0"));
  }
  cntr.close();
  EXPECT_EQ(cntr.wait(), 0);
}

TEST_F(Compare, AFileThatCannotBeReadEndsWithStatusTwo) {
  const Directory directory;
  const std::string none = directory.path("none.json");
  const auto missing = run({"compare", "--nominal", none}, plate);
  EXPECT_EQ(missing.status, 2);
  EXPECT_EQ(missing.out, "");
  EXPECT_EQ(missing.messages, "cntr: " + none + ": cannot be read: No such file or directory\n");
  const auto empty = compared(plate, collection({}));
  EXPECT_EQ(empty.status, 2);
  EXPECT_THAT(empty.messages, HasSubstr("nominal.geojson: holds no features to compare with\n"));
  EXPECT_EQ(run({"compare", none, "--nominal", file(plate)}).status, 2);
}

TEST_F(Compare, WrongUsageEndsWithStatusTwo) {
  const auto refusal = [&](std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "compare");
    const auto result = run(arguments, plate);
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
    return result.messages;
  };
  const std::string end = "\nTry 'cntr --help'.\n";
  EXPECT_EQ(refusal({}), "cntr: --nominal is required" + end);
  EXPECT_EQ(refusal({"--nominal", "-"}),
            "cntr: --nominal: only one of the two files can be standard input" + end);
  const std::string nominal = file(plate);
  EXPECT_EQ(refusal({"--nominal", nominal, "--tolerance=-1"}),
            "cntr: --tolerance: needs a number that is not negative, not -1" + end);
  EXPECT_EQ(refusal({"--nominal", nominal, "--spacing", "0"}),
            "cntr: --spacing: needs a positive number, not 0" + end);
  EXPECT_EQ(refusal({"--nominal", nominal, "--spacing", "inf"}),
            "cntr: --spacing: needs a positive number, not inf" + end);
}

}  // namespace
