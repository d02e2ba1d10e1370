// SPDX-License-Identifier: MIT
//
// cntr draw --show deviation: the colours of boundaries, their legend, which agrees with what cntr
// compare answers, and features without a nominal.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <set>
#include <string>

#include <tools/draw/palette.h>
#include <tools/draw/png.h>

#include "../program.h"

using program::collection;
using program::Directory;
using program::feature;
using program::polygon;
using program::run;
using program::runJson;
using program::square;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using tool::colourOfDeviation;

namespace {

class DrawnDeviation : public testing::Test {
 protected:
  program::Result result(const std::string& measured, const std::string& nominal,
                         std::vector<std::string> options = {}) const {
    options.insert(options.begin(), {"draw", "--show", "deviation", "--nominal", file(nominal)});
    return run(options, measured);
  }

  std::string picture(const std::string& measured, const std::string& nominal,
                      const std::vector<std::string>& options = {}) const {
    const auto drawn = result(measured, nominal, options);
    EXPECT_EQ(drawn.status, 0) << drawn.messages;
    return drawn.out;
  }

  std::string file(const std::string& nominal) const {
    return directory_.write("nominal.geojson", nominal);
  }

  Directory directory_;
};

/// The colours of tinted lines.
std::set<std::string> coloursIn(const std::string& picture) {
  const std::string mark = "class=\"tint\" stroke=\"";
  std::set<std::string> colours;
  for (std::size_t at = picture.find(mark); at != std::string::npos; at = picture.find(mark, at))
    colours.insert(picture.substr(at += mark.size(), 7));
  return colours;
}

TEST(DeviationColours, GoFromBlueInsideOverGreyToRedOutside) {
  EXPECT_EQ(colourOfDeviation(-1.0), "#1a5cdf");
  EXPECT_EQ(colourOfDeviation(0.0), "#c4c4c4");
  EXPECT_EQ(colourOfDeviation(1.0), "#c50516");
  EXPECT_EQ(colourOfDeviation(7.0), colourOfDeviation(1.0));
}

TEST_F(DrawnDeviation, WhatIsOutsideIsRedAndWhatIsInsideBlue) {
  const std::string nominal = polygon({square(0, 0, 10)});
  const std::string smaller = picture(polygon({square(1, 1, 8)}), nominal);
  EXPECT_EQ(coloursIn(smaller), std::set<std::string>{colourOfDeviation(-1.0)});
  const std::string larger = picture(polygon({square(-1, -1, 12)}), nominal);
  EXPECT_TRUE(coloursIn(larger).contains(colourOfDeviation(1.0)));
  EXPECT_FALSE(coloursIn(larger).contains(colourOfDeviation(-1.0)));
  // One is in the tenth band around 0, the other outside.
  EXPECT_EQ(coloursIn(picture(polygon({square(0, 0, 10)}), nominal)),
            std::set<std::string>{colourOfDeviation(0.0)});
}

TEST_F(DrawnDeviation, TheLegendTellsTheLargestDeviation) {
  const std::string nominal = polygon({square(0, 0, 10)});
  const std::string drawn = picture(polygon({square(2, 0, 10)}), nominal);
  EXPECT_THAT(drawn, HasSubstr(">deviation: 2 px inside</text>"));
  EXPECT_THAT(drawn, HasSubstr(">2 px outside</text>"));
  EXPECT_THAT(drawn, HasSubstr("fill=\"" + colourOfDeviation(-0.3) + "\""));
  EXPECT_THAT(picture(polygon({square(2, 0, 10)}), nominal, {"--scale", "0.25", "--unit", "mm"}),
              HasSubstr(">0.5 mm outside</text>"));
}

TEST_F(DrawnDeviation, ItIsThatOfCompare) {
  const Directory directory;
  const std::string nominal = directory.path("nominal.geojson");
  ASSERT_EQ(run({"offset", "samples/coins.geojson", "--distance", "0.75", "-o", nominal}).status,
            0);
  double largest = 0.0;
  for (const auto& row : runJson({"compare", "samples/coins.geojson", "--nominal", nominal})) {
    largest = std::max(largest, -row["deviation_min"].get<double>());
    EXPECT_LT(row["deviation_max"], 0.0);
  }
  // Within the three digits of the legend.
  const auto drawn = run({"draw", "samples/coins.geojson", "--show", "deviation", "--nominal",
                          nominal, "--scale", "1000"});
  const std::string mark = ">deviation: ";
  const double shown = std::strtod(drawn.out.c_str() + drawn.out.find(mark) + mark.size(), nullptr);
  EXPECT_NEAR(shown, 1000.0 * largest, 0.005 * shown);
}

TEST_F(DrawnDeviation, TheNominalIsDrawnOnceAndHasItsPlace) {
  const std::string nominal = polygon({square(0, 0, 100)});
  const std::string one = picture(polygon({square(0, 0, 10)}), nominal, {"--size", "108"});
  const std::string thin = "<path class=\"thin\" d=\"";
  ASSERT_THAT(one, HasSubstr(thin));
  const std::string path = one.substr(one.find(thin) + thin.size(), 80);
  EXPECT_THAT(path, StartsWith("M4,4 104,4M104,4 104,104"));
  const std::string two =
      picture(collection({polygon({square(0, 0, 10)}), polygon({square(50, 0, 10)})}), nominal,
              {"--size", "108"});
  EXPECT_EQ(two.substr(two.find(thin) + thin.size(), 80), path);
}

TEST_F(DrawnDeviation, AFeatureWithoutANominalIsDrawnAndNamed) {
  const std::string nominals = collection(
      {polygon({square(0, 0, 8)}, R"("label":1)"), polygon({square(9, 0, 8)}, R"("label":2)")});
  const auto drawn = result(collection({polygon({square(0, 0, 8)}, R"("label":3)"),
                                        polygon({square(9, 0, 8)}, R"("label":2)")}),
                            nominals);
  EXPECT_EQ(drawn.status, 1);
  EXPECT_EQ(drawn.messages, "cntr: standard input: feature 1: no nominal has label 3\n");
  EXPECT_THAT(drawn.out, HasSubstr("feature 1</title>"));
  EXPECT_THAT(drawn.out, HasSubstr("feature 2</title>"));
  EXPECT_EQ(coloursIn(drawn.out), std::set<std::string>{colourOfDeviation(0.0)});
}

TEST_F(DrawnDeviation, OpenLinesHaveColours) {
  const std::string line = feature("LineString", "[[0,0],[10,0]]");
  EXPECT_TRUE(coloursIn(picture(feature("LineString", "[[0,0],[10,5]]"), line))
                  .contains(colourOfDeviation(1.0)));
}

TEST_F(DrawnDeviation, ComesAsPng) {
#if !defined(CNTR_PNG)
  GTEST_SKIP() << "the program was built without librsvg";
#endif
  const Directory directory;
  const std::string out = directory.path("deviation.png");
  EXPECT_EQ(result(polygon({square(1, 1, 8)}), polygon({square(0, 0, 10)}), {"-o", out}).status, 0);
  EXPECT_THAT(directory.read("deviation.png"), StartsWith("\x89PNG"));
}

TEST_F(DrawnDeviation, WrongUsageEndsWithStatusTwo) {
  const std::string end = "\nTry 'cntr --help'.\n";
  const auto lacking = run({"draw", "--show", "deviation"}, polygon({square(0, 0, 1)}));
  EXPECT_EQ(lacking.status, 2);
  EXPECT_EQ(lacking.messages, "cntr: --show: deviation needs a file of --nominal" + end);
  const std::string nominal = file(polygon({square(0, 0, 1)}));
  const auto idle = run({"draw", "--nominal", nominal}, polygon({square(0, 0, 1)}));
  EXPECT_EQ(idle.status, 2);
  EXPECT_EQ(idle.messages, "cntr: --nominal: goes with --show deviation alone" + end);
  EXPECT_EQ(run({"draw", "--show", "deviation", "--nominal", "-"}).messages,
            "cntr: --nominal: only one of the two files can be standard input" + end);
  const auto none = run({"draw", "--show", "deviation", "--nominal", nominal + "x"}, "");
  EXPECT_EQ(none.status, 2);
  EXPECT_EQ(none.out, "");
  EXPECT_EQ(none.messages, "cntr: " + nominal + "x: cannot be read: No such file or directory\n");
}

}  // namespace
