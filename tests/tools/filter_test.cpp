// SPDX-License-Identifier: MIT
//
// Filters of features, and the messages about many bad ones.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "program.h"

using program::collection;
using program::Json;
using program::polygon;
using program::run;
using program::runJson;
using program::square;
using testing::HasSubstr;
using testing::Not;

namespace {

const std::string mixedFeatures = collection(
    {polygon({square(0, 0, 1)}, R"("label":"speck")"), polygon({square(5, 0, 3)}, R"("label":7)"),
     polygon({"[[0,0],[10,0],[0,1]]"}, R"("label":"thorn")"),
     R"({"type":"Feature","properties":{},"geometry":null})"});

/// The numbers of the features that are measured with these options.
std::vector<int> featuresMeasured(std::vector<std::string> options) {
  options.insert(options.begin(), {"measure", "--json"});
  const auto result = run(options, mixedFeatures);
  EXPECT_EQ(result.status, 0) << result.messages;
  std::vector<int> numbers;
  for (const Json& row : Json::parse(result.out)) numbers.push_back(row["feature"]);
  return numbers;
}

using Numbers = std::vector<int>;

}  // namespace

TEST(Filter, TakesFeaturesWhoseMeasuresFulfilACondition) {
  EXPECT_EQ(featuresMeasured({"--where", "area > 1"}), (Numbers{2, 3}));
  EXPECT_EQ(featuresMeasured({"--where", "area >= 1"}), (Numbers{1, 2, 3}));
  EXPECT_EQ(featuresMeasured({"--where", "area<5"}), Numbers{1});
  EXPECT_EQ(featuresMeasured({"--where", "area <= 5"}), (Numbers{1, 3}));
  EXPECT_EQ(featuresMeasured({"--where", "vertices = 3"}), Numbers{3});
  EXPECT_EQ(featuresMeasured({"--where", "vertices == 3"}), Numbers{3});
  EXPECT_EQ(featuresMeasured({"--where", "vertices != 3"}), (Numbers{1, 2}));
  EXPECT_EQ(featuresMeasured({"--where", "roundness > 0.7"}), (Numbers{1, 2}));
  EXPECT_EQ(featuresMeasured({"--where", "closed = yes", "--where", "feature > 1"}),
            (Numbers{2, 3}));
  EXPECT_EQ(featuresMeasured({"--where", "closed = no"}), Numbers{});
}

TEST(Filter, ComparesLabelsAsNumbersOrTexts) {
  EXPECT_EQ(featuresMeasured({"--where", "label = thorn"}), Numbers{3});
  EXPECT_EQ(featuresMeasured({"--where", "label != \"thorn\""}), (Numbers{1, 2}));
  EXPECT_EQ(featuresMeasured({"--where", "label = 7"}), Numbers{2});
}

TEST(Filter, HasShortFormsForAreaAndVertices) {
  EXPECT_EQ(featuresMeasured({"--min-area", "4"}), (Numbers{2, 3}));
  EXPECT_EQ(featuresMeasured({"--min-vertices", "4"}), (Numbers{1, 2}));
  EXPECT_EQ(featuresMeasured({"--min-vertices", "4", "--min-area", "4"}), Numbers{2});
}

TEST(Filter, WorksOnEveryCommandThatReadsFeatures) {
  const std::vector<std::string> filter{"--min-area", "4"};
  const auto filtered = [&filter](std::vector<std::string> arguments) {
    arguments.insert(arguments.end(), filter.begin(), filter.end());
    const auto result = run(arguments, mixedFeatures);
    EXPECT_EQ(result.status, 0) << result.messages;
    return result.out;
  };
  EXPECT_EQ(Json::parse(filtered({"convert"}))["features"].size(), 2);
  EXPECT_EQ(Json::parse(filtered({"repair", "--quiet"}))["features"].size(), 2);
  EXPECT_EQ(Json::parse(filtered({"query", "--point", "6,1", "--json"})).size(), 2);
  EXPECT_THAT(filtered({"draw"}), HasSubstr("thorn"));
  EXPECT_THAT(filtered({"draw"}), Not(HasSubstr("speck")));
}

TEST(Filter, WrongConditionsAreWrongUsage) {
  const auto complaint = [](const std::string& option, const std::string& value) {
    const auto result = run({"measure", "--csv", option, value}, mixedFeatures);
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
    return result.messages;
  };
  const std::string end = "\nTry 'cntr --help'.\n";
  EXPECT_EQ(complaint("--where", "colour > 3"),
            "cntr: --where: there is no measure 'colour'; cntr measure --help lists them" + end);
  EXPECT_EQ(complaint("--where", "area"),
            "cntr: --where: 'area' is not of the form 'roundness > 0.8'" + end);
  EXPECT_EQ(complaint("--where", "area >"),
            "cntr: --where: 'area >' is not of the form 'roundness > 0.8'" + end);
  EXPECT_EQ(complaint("--where", "area => 3"),
            "cntr: --where: 'area => 3' is not of the form 'roundness > 0.8'" + end);
  EXPECT_EQ(complaint("--where", "area > large"), "cntr: --where: 'large' is not a number" + end);
  EXPECT_EQ(complaint("--min-area", "large"), "cntr: --min-area: needs a number, not large" + end);
  EXPECT_EQ(complaint("--scale", "-1"), "cntr: --scale: needs a positive number, not -1" + end);
}

TEST(Messages, ManyBadFeaturesOfAFileAreSummedUp) {
  std::vector<std::string> features;
  for (int i = 1; i <= 8; ++i) {
    features.push_back(R"({"type":"Feature","id":"f)" + std::to_string(i) +
                       R"(","properties":{"label":)" + std::to_string(10 * i) +
                       R"(},"geometry":null})");
  }
  const std::string file = collection(features);
  const auto few = run({"measure", "--csv"}, file);
  EXPECT_EQ(few.status, 1);
  EXPECT_THAT(few.messages, HasSubstr("feature 5 (label 50, id f5): no geometry\n"));
  EXPECT_THAT(few.messages, Not(HasSubstr("feature 6")));
  EXPECT_THAT(few.messages,
              HasSubstr("cntr: standard input: 3 more features have problems; --verbose lists "
                        "all\n"));
  for (const auto& arguments : {std::vector<std::string>{"measure", "--verbose", "--csv"},
                                std::vector<std::string>{"--verbose", "measure", "--csv"}}) {
    const auto all = run(arguments, file);
    EXPECT_EQ(all.status, 1);
    EXPECT_THAT(all.messages, HasSubstr("feature 8 (label 80, id f8): no geometry\n"));
    EXPECT_THAT(all.messages, Not(HasSubstr("more feature")));
  }
}

TEST(Messages, ControlCharactersOfFilesAreShownAsTheirCodes) {
  const std::string file =
      collection({R"({"type":"Feature","id":"a\u001b[31m\u007f\u009bb\u00e9","properties":{},)"
                  R"("geometry":null})"});
  const std::string shown = "a\\x1b[31m\\x7f\\u009bb\u00e9";
  const auto result = run({"measure", "--columns", "id,note"}, file);
  EXPECT_THAT(result.out, HasSubstr("\n" + shown + "  no geometry\n"));
  EXPECT_THAT(result.messages, HasSubstr("(id " + shown + ")"));
}

TEST(Messages, AMistypedCommandIsNamed) {
  const auto result = run({"measur", "f"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.messages,
            "cntr: there is no command 'measur'; did you mean 'measure'?\nTry 'cntr --help'.\n");
  EXPECT_EQ(run({"photograph"}).messages,
            "cntr: there is no command 'photograph'\nTry 'cntr --help'.\n");
}
