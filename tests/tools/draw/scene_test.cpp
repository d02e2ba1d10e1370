// SPDX-License-Identifier: MIT
//
// What a scene keeps of the features that are added to it, and what it shows.

#include <tools/draw/scene.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <testing/shapes/numbers.h>

#include <cmath>
#include <string>

#include <cntrformats/errors.h>

#include "samples.h"

using formats::Feature;
using formats::Points;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using tool::Box;
using tool::Scene;

namespace {

using P = qcVector<2>;

Feature featureOf(std::vector<qcRings> parts) {
  Feature made;
  made.geometry = outlines(std::move(parts));
  return made;
}

Feature labelled(Points outline, formats::Label label) {
  Feature made = featureOf({{std::move(outline), {}}});
  made.label = std::move(label);
  return made;
}

Points circlePoints(double x, double y, double radius, int count) {
  Points points;
  for (int i = 0; i < count; ++i) {
    const double angle = 2.0 * pi * i / count;
    points.push_back({x + radius * std::cos(angle), y + radius * std::sin(angle)});
  }
  return points;
}

void expectBox(const Box& box, const Box& expected) {
  EXPECT_NEAR(box.low.x(), expected.low.x(), 1e-9);
  EXPECT_NEAR(box.low.y(), expected.low.y(), 1e-9);
  EXPECT_NEAR(box.high.x(), expected.high.x(), 1e-9);
  EXPECT_NEAR(box.high.y(), expected.high.y(), 1e-9);
}

}  // namespace

TEST(Scene, ShowsAllOutlinesWithAMargin) {
  Scene scene({}, true, 1000);
  scene.add(featureOf({{squarePoints(0, 0, 10), {}}}), 0);
  scene.add(featureOf({{squarePoints(90, 40, 10), {}}}), 0);
  scene.complete();
  expectBox(scene.view(), {{-4, -4}, {104, 54}});
  expectBox(scene.outlines(), {{0, 0}, {100, 50}});
}

TEST(Scene, ShowsImagesRatherThanOutlinesAndAnAreaRatherThanImages) {
  Scene scene({}, true, 1000);
  scene.showImage({{0, 0}, {30, 20}});
  scene.add(featureOf({{squarePoints(0, 0, 10), {}}}), 0);
  scene.showImage({{0, 0}, {20, 40}});
  expectBox(scene.view(), {{0, 0}, {30, 40}});
  scene.show({{1, 1}, {2, 2}});
  expectBox(scene.view(), {{1, 1}, {2, 2}});
}

TEST(Scene, ShowsAPixelWhereThereIsNothing) {
  Scene scene({}, true, 1000);
  scene.complete();
  expectBox(scene.view(), {{-0.5, -0.5}, {0.5, 0.5}});
}

TEST(Scene, ShowsSomethingAroundASinglePoint) {
  const auto view = [](double x) {
    Scene scene({}, true, 1000);
    scene.add(featureOf({{{{x, 5}, {x, 5}, {x, 5}}, {}}}), 0);
    scene.complete();
    EXPECT_THAT(scene.shapes(), SizeIs(1));
    return scene.view();
  };
  expectBox(view(5), {{4.5, 4.5}, {5.5, 5.5}});
  EXPECT_EQ(view(1e17).width(), 2e8);
}

TEST(Scene, TheViewHoldsWhatOverlaysTheOutlines) {
  Scene scene({&overlay("circle")}, true, 1000);
  scene.add(featureOf({{{{0, 0}, {6, 8}, {1, 5}}, {}}}), 0);
  scene.complete();
  expectBox(scene.view(), {{-2.4, -1.4}, {8.4, 9.4}});
  expectBox(scene.outlines(), {{0, 0}, {6, 8}});
  ASSERT_THAT(scene.layers(), SizeIs(1));
  EXPECT_THAT(scene.layers()[0].marks.marks(), SizeIs(1));
}

TEST(Scene, KeepsWhereShapesComeFrom) {
  Scene scene({}, true, 1000);
  Feature second = labelled(squarePoints(20, 0, 10), 7UL);
  second.number = 5;
  Feature line = featureOf({{{{0, 0}, {30, 30}}, {}}});
  line.geometry.closed = false;
  line.number = 6;
  scene.add(second, 3);
  scene.add(line, 4);
  scene.complete();
  ASSERT_THAT(scene.shapes(), SizeIs(2));
  const tool::Shape& area = scene.shapes()[0];
  EXPECT_EQ(area.file, 3);
  EXPECT_EQ(area.number, 5);
  EXPECT_EQ(area.label, "7");
  EXPECT_EQ(area.colour, 7);
  EXPECT_TRUE(area.closed);
  EXPECT_NEAR(area.middle.x(), 25.0, 1e-9);
  EXPECT_NEAR(area.middle.y(), 5.0, 1e-9);
  expectBox(area.box, {{20, 0}, {30, 10}});
  EXPECT_THAT(area.rings, ElementsAre(ElementsAre(P(20, 0), P(30, 0), P(30, 10), P(20, 10))));
  EXPECT_EQ(scene.shapes()[1].label, "");
  EXPECT_EQ(scene.shapes()[1].colour, 6);
  EXPECT_FALSE(scene.shapes()[1].closed);
  EXPECT_THAT(scene.shapes()[1].rings, ElementsAre(ElementsAre(P(0, 0), P(30, 30))));
}

TEST(Scene, NamesHaveColoursOfTheirOwn) {
  const auto colour = [](const std::string& name) {
    Scene scene({}, false, 1000);
    scene.add(labelled(squarePoints(0, 0, 1), name), 0);
    EXPECT_EQ(scene.shapes().at(0).label, name);
    EXPECT_EQ(scene.shapes().at(0).middle, P());
    return scene.shapes().at(0).colour;
  };
  // FNV-1a, modulo 1000.
  EXPECT_EQ(colour(""), 2166136261U % 1000U);
  EXPECT_EQ(colour("a"), 0xE40C292CU % 1000U);
  EXPECT_EQ(colour("foobar"), 0xBF9CF968U % 1000U);
}

TEST(Scene, PartsAreShapesAndHolesAreRings) {
  Scene scene({}, true, 1000);
  scene.add(featureOf({{squarePoints(0, 0, 10), {squarePoints(2, 2, 3), squarePoints(6, 6, 1e-5)}},
                       {squarePoints(20, 0, 10), {}}}),
            0);
  scene.complete();
  ASSERT_THAT(scene.shapes(), SizeIs(2));
  EXPECT_THAT(scene.shapes()[0].rings, SizeIs(2));
  EXPECT_THAT(scene.shapes()[1].rings, SizeIs(1));
}

TEST(Scene, SmallShapesAreDotsOfWhichASquareHoldsOne) {
  // A pixel is 1, so that a square is 1.5 wide, here from 299.43 to 300.93.
  Scene scene({}, true, 1000);
  scene.show({{0, 0}, {1000, 1000}});
  scene.add(featureOf({{squarePoints(100, 100, 2.0), {}}}), 0);
  scene.add(featureOf({{squarePoints(200, 100, 2.1), {}}}), 0);
  scene.add(featureOf({{squarePoints(299.4, 300, 0.1), {}}}), 0);
  scene.add(featureOf({{squarePoints(300.8, 300, 0.1), {}}}), 0);
  scene.add(featureOf({{squarePoints(301.0, 300, 0.1), {}}}), 0);
  scene.complete();
  ASSERT_THAT(scene.shapes(), SizeIs(4));
  EXPECT_THAT(scene.shapes()[0].rings, IsEmpty());
  EXPECT_THAT(scene.shapes()[1].rings, SizeIs(1));
  EXPECT_EQ(scene.shapes()[2].box.low, P(299.4, 300));
  EXPECT_EQ(scene.shapes()[3].box.low, P(301.0, 300));
}

TEST(Scene, LeavesOutWhatIsMoreThanTwentyPixelsOutside) {
  Scene scene({}, true, 1000);
  scene.show({{0, 0}, {1000, 1000}});
  scene.add(featureOf({{squarePoints(1019, 500, 5), {}}}), 0);
  scene.add(featureOf({{squarePoints(1021, 500, 5), {}}}), 0);
  scene.add(featureOf({{squarePoints(900, 900, 1e9), {}}}), 0);
  EXPECT_THAT(scene.shapes(), SizeIs(2));
  EXPECT_THAT(scene.shapes()[1].rings,
              ElementsAre(testing::UnorderedElementsAre(P(900, 900), P(1020, 900), P(1020, 1020),
                                                        P(900, 1020))));
  scene.complete();
  EXPECT_THAT(scene.shapes(), SizeIs(2));
}

TEST(Scene, ThinsWhileItGrows) {
  Scene scene({}, true, 1000);
  for (int i = 0; i < 20; ++i) {
    scene.add(featureOf({{circlePoints(1000.0 * i, 0, 400, 20000), {}}}), 0);
  }
  std::size_t vertices = 0;
  for (const tool::Shape& shape : scene.shapes()) vertices += shape.rings.at(0).size();
  // Of 400,000.
  EXPECT_LT(vertices, 20 * 400);
  scene.complete();
  for (const tool::Shape& shape : scene.shapes()) EXPECT_LT(shape.rings.at(0).size(), 100);
}

TEST(Scene, StaysWithinATenthOfAPixelHoweverOftenItThins) {
  // It thins whenever its size has doubled, in some of these cases just before it is complete.
  for (double last = 4000; last < 16000; last *= 1.07) {
    Scene scene({}, true, 1000);
    const Points points = circlePoints(0, 0, 400, 20000);
    scene.add(featureOf({{points, {}}}), 0);
    for (double x = 500; x < last; x *= 1.3)
      scene.add(featureOf({{squarePoints(x, 0, 100), {}}}), 0);
    scene.add(featureOf({{squarePoints(last, 0, 100), {}}}), 0);
    scene.complete();
    const double pixel = scene.view().extent() / 1000.0;
    const Points& ring = scene.shapes().at(0).rings.at(0);
    EXPECT_LT(ring.size(), 200);
    for (std::size_t i = 0; i < ring.size(); ++i) {
      const P middle = 0.5 * (ring[i] + ring[(i + 1) % ring.size()]);
      EXPECT_NEAR(middle.len(), 400.0, 0.1 * pixel) << "last " << last;
    }
  }
}

TEST(Scene, CoordinatesThatAreTooLargeAreRefused) {
  const auto refusal = [](std::vector<qcRings> parts) -> std::string {
    Scene scene({}, true, 1000);
    try {
      scene.add(featureOf(std::move(parts)), 0);
    } catch (const formats::FeatureError& error) {
      EXPECT_TRUE(scene.outlines().isEmpty());
      return error.what();
    }
    return "";
  };
  const std::string refused = "cannot be drawn: the coordinates are too large";
  EXPECT_EQ(refusal({{squarePoints(0, 0, 1e100), {}}}), "");
  EXPECT_EQ(refusal({{squarePoints(0, 0, 1.1e100), {}}}), refused);
  EXPECT_EQ(refusal({{{{0, 0}, {1, 0}, {0, 1.1e100}}, {}}}), refused);
  EXPECT_EQ(refusal({{{{0, 0}, {1, 0}, {0, -1.1e100}}, {}}}), refused);
  EXPECT_EQ(refusal({{{{0, 0}, {-1.1e100, 0}, {0, 1}}, {}}}), refused);
  EXPECT_EQ(refusal({{squarePoints(0, 0, 1), {{{0, 0}, {notANumber, 0}, {0, 1}}}}}), refused);
  EXPECT_EQ(refusal({{squarePoints(0, 0, 1), {}}, {squarePoints(0, 0, infinity), {}}}), refused);
}
