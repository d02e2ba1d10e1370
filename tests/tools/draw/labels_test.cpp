// SPDX-License-Identifier: MIT
//
// Where labels stand, how large they are, and which of them are left out.

#include <tools/draw/labels.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "samples.h"

using testing::ElementsAre;
using testing::SizeIs;
using tool::Label;
using tool::Scene;

namespace {

/// Squares in a view of 1000 pixels, each with its label.
class Squared {
 public:
  Squared() : scene_({}, true, 1000) { scene_.show({{0, 0}, {1000, 1000}}); }

  void add(double x, double y, double size, const std::string& label) {
    formats::Feature feature;
    feature.geometry = outlines({{squarePoints(x, y, size), {}}});
    if (!label.empty()) feature.label = label;
    scene_.add(feature, 0);
  }

  std::vector<Label> labels(bool centresAreMarked = false) {
    scene_.complete();
    return tool::labelsOf(scene_, tool::Canvas(scene_.view(), 1000, false), centresAreMarked);
  }

 private:
  Scene scene_;
};

std::vector<std::string> textsOf(const std::vector<Label>& labels) {
  std::vector<std::string> texts;
  for (const Label& label : labels) texts.push_back(label.text);
  return texts;
}

}  // namespace

TEST(WidthOfAText, CountsLettersRatherThanBytes) {
  EXPECT_NEAR(tool::widthOf("abc", 10), 19.8, 1e-9);
  EXPECT_NEAR(tool::widthOf("\xC3\xA4\xE2\x82\xAC", 10), 13.2, 1e-9);
  EXPECT_EQ(tool::widthOf("", 10), 0.0);
}

TEST(Labels, StandInTheMiddleOfTheirShapes) {
  Squared squares;
  squares.add(400, 400, 100, "7");
  const std::vector<Label> labels = squares.labels();
  ASSERT_THAT(labels, SizeIs(1));
  EXPECT_EQ(labels[0].text, "7");
  EXPECT_EQ(labels[0].size, 24.0);
  EXPECT_NEAR(labels[0].at.x(), 450.0, 1e-9);
  EXPECT_NEAR(labels[0].at.y(), 458.4, 1e-9);
}

TEST(Labels, StandAboveMarkedCentres) {
  Squared squares;
  squares.add(400, 400, 100, "7");
  EXPECT_NEAR(squares.labels(true).at(0).at.y(), 441.0, 1e-9);
}

TEST(Labels, FitIntoTheirShapesIfTheyCanBeReadThen) {
  Squared squares;
  squares.add(100, 100, 30, "7");
  squares.add(200, 100, 30, "1234");
  squares.add(300, 100, 18, "8");
  const std::vector<Label> labels = squares.labels();
  ASSERT_THAT(labels, SizeIs(3));
  EXPECT_NEAR(labels[0].size, 15.0, 1e-9);
  EXPECT_NEAR(labels[1].size, 0.8 * 30.0 / (4.0 * 0.66), 1e-9);
  EXPECT_NEAR(labels[2].size, 9.0, 1e-9);
}

TEST(Labels, StandAboveShapesThatTheyDoNotFitInto) {
  Squared squares;
  squares.add(400, 400, 10, "12345");
  squares.add(500, 400, 8, "1");
  const std::vector<Label> labels = squares.labels();
  ASSERT_THAT(labels, SizeIs(2));
  EXPECT_EQ(labels[0].size, 9.0);
  EXPECT_NEAR(labels[0].at.x(), 405.0, 1e-9);
  EXPECT_NEAR(labels[0].at.y(), 396.0, 1e-9);
  EXPECT_NEAR(labels[1].at.x(), 504.0, 1e-9);
  EXPECT_NEAR(labels[1].at.y(), 396.0, 1e-9);
}

TEST(Labels, StandBelowShapesAtTheUpperEdge) {
  Squared squares;
  squares.add(400, 12.9, 8.1, "1");
  squares.add(500, 13.1, 8, "2");
  const std::vector<Label> labels = squares.labels();
  ASSERT_THAT(labels, SizeIs(2));
  EXPECT_NEAR(labels[0].at.y(), 21.0 + 4.0 + 7.2, 1e-9);
  EXPECT_NEAR(labels[1].at.y(), 9.1, 1e-9);
}

TEST(Labels, StayInsideTheView) {
  Squared squares;
  squares.add(0, 400, 8, "1234");
  squares.add(992, 400, 8, "1234");
  const std::vector<Label> labels = squares.labels();
  ASSERT_THAT(labels, SizeIs(2));
  EXPECT_NEAR(labels[0].at.x(), 2.0 * 0.66 * 9.0, 1e-9);
  EXPECT_NEAR(labels[1].at.x(), 1000.0 - 2.0 * 0.66 * 9.0, 1e-9);
}

TEST(Labels, OfLargerShapesComeFirstAndNoTwoMeet) {
  Squared squares;
  squares.add(400, 400, 100, "small");
  squares.add(390, 390, 120, "large");
  squares.add(700, 400, 100, "apart");
  EXPECT_THAT(textsOf(squares.labels()), ElementsAre("large", "apart"));
}

TEST(Labels, ThatAreLongMeetToo) {
  Squared squares;
  const std::string text(60, 'x');
  squares.add(400, 400, 9, text);
  squares.add(560, 405, 8, "1");
  squares.add(560, 430, 8, "2");
  EXPECT_THAT(textsOf(squares.labels()), ElementsAre(text, "2"));
}

TEST(Labels, LargerThanTheirShapesCoverAFiftiethOfTheViewAtMost) {
  Squared squares;
  squares.add(0, 900, 100, "large");
  for (int i = 0; i < 400; ++i) squares.add(20 + 45 * (i % 20), 20 + 40 * (i / 20), 5, "1234");
  const std::vector<Label> labels = squares.labels();
  const double each = 4.0 * 0.66 * 9.0 * 9.0;
  EXPECT_EQ(labels.size(), 1 + static_cast<std::size_t>(20000.0 / each));
  EXPECT_EQ(labels[0].text, "large");
}

TEST(Labels, AreThoseOfShapesInTheViewThatHaveOne) {
  Squared squares;
  squares.add(1005, 400, 8, "outside");
  squares.add(400, 400, 100, "");
  EXPECT_THAT(squares.labels(), SizeIs(0));
}
