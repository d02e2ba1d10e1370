// SPDX-License-Identifier: MIT
//
// What each overlay shows for a feature, in the coordinates of the file.

#include <tools/draw/overlays.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <set>
#include <string>

#include "samples.h"

using formats::Geometry;
using formats::Points;
using testing::ElementsAre;
using testing::SizeIs;
using tool::Box;
using tool::Mark;

namespace {

using P = qcVector<2>;

std::vector<Mark> found(const std::string& name, const Geometry& geometry) {
  Box box;
  for (const qcRings& part : geometry.parts) box.enclose(tool::boxAround(part.outline));
  const tool::Frame frame(box);
  formats::Feature feature;
  feature.geometry = geometry;
  return overlay(name).find({feature, geometry, frame.into(geometry), frame, 0.001 * box.extent()});
}

template <typename Kind>
Kind only(const std::string& name, const Geometry& geometry) {
  const std::vector<Mark> marks = found(name, geometry);
  EXPECT_THAT(marks, SizeIs(1));
  return std::get<Kind>(marks.at(0));
}

/// The same outline, scaled and moved.
Geometry placed(const Points& points, double scale, const P& origin) {
  Points moved;
  for (const P& p : points) moved.push_back(p * scale + origin);
  return outlines({{moved, {}}});
}

}  // namespace

TEST(Overlays, AreDrawnInThisOrder) {
  std::vector<std::string> names;
  for (const tool::Overlay& known : tool::allOverlays()) names.emplace_back(known.name);
  EXPECT_THAT(names, ElementsAre("rectangle", "circle", "hull", "ellipse", "edgelets", "centre",
                                 "crossings"));
}

TEST(Overlays, HaveColoursAndSymbolsOfTheirOwn) {
  std::set<std::string> colours;
  for (const tool::Overlay& known : tool::allOverlays()) {
    EXPECT_THAT(known.colour, testing::MatchesRegex("#[0-9a-f]{6}"));
    colours.insert(known.colour);
    const std::string name = known.name;
    EXPECT_EQ(known.symbol == nullptr, name != "centre" && name != "crossings") << name;
  }
  EXPECT_THAT(colours, SizeIs(tool::allOverlays().size()));
  EXPECT_EQ(std::get<tool::Cross>(overlay("centre").symbol({1, 2})).at, P(1, 2));
  EXPECT_EQ(std::get<tool::Spot>(overlay("crossings").symbol({1, 2})).at, P(1, 2));
}

TEST(Overlays, TheRectangleIsAroundEachPart) {
  const std::vector<Mark> marks =
      found("rectangle", outlines({{{{1, 2}, {7, 3}, {4, 9}}, {}}, {squarePoints(20, 30, 5), {}}}));
  ASSERT_THAT(marks, SizeIs(2));
  EXPECT_EQ(std::get<Box>(marks[0]).low, P(1, 2));
  EXPECT_EQ(std::get<Box>(marks[0]).high, P(7, 9));
  EXPECT_EQ(std::get<Box>(marks[1]).low, P(20, 30));
}

TEST(Overlays, TheCircleIsThatOfTheFarthestVertices) {
  const Points points{{0, 0}, {6, 8}, {1, 5}};
  const auto circle = only<tool::Circle>("circle", outlines({{points, {}}}));
  EXPECT_EQ(circle.centre, P(3, 4));
  EXPECT_EQ(circle.radius, 5.0);
  const auto tiny = only<tool::Circle>("circle", placed(points, std::ldexp(1.0, -40), {1.0, 2.0}));
  EXPECT_NEAR(tiny.radius, std::ldexp(5.0, -40), 1e-15);
  EXPECT_NEAR(tiny.centre.x(), 1.0 + std::ldexp(3.0, -40), 1e-15);
  EXPECT_THAT(found("circle", outlines({{{{5, 5}, {5, 5}, {5, 5}}, {}}})), SizeIs(0));
}

TEST(Overlays, TheHullIsThatOfTheOutline) {
  const Points points{{0, 0}, {4, 0}, {1, 1}, {0, 4}};
  EXPECT_THAT(only<tool::Ring>("hull", outlines({{points, {}}})).points,
              ElementsAre(P(0, 0), P(4, 0), P(0, 4)));
  const double far = std::ldexp(1.0, 40);
  EXPECT_THAT(only<tool::Ring>("hull", placed(points, 1.0, {far, -far})).points,
              ElementsAre(P(far, -far), P(far + 4, -far), P(far, -far + 4)));
}

TEST(Overlays, TheEllipseIsTheFittedOne) {
  // Points of the ellipse with the semi-axes 10 and 5 about (20, 30).
  const Points points{{28, 33}, {26, 34}, {14, 34}, {12, 33},
                      {12, 27}, {14, 26}, {26, 26}, {28, 27}};
  const auto ellipse = only<tool::Ellipse>("ellipse", outlines({{points, {}}}));
  EXPECT_NEAR(ellipse.centre.x(), 20.0, 1e-9);
  EXPECT_NEAR(ellipse.centre.y(), 30.0, 1e-9);
  EXPECT_NEAR(ellipse.along, 10.0, 1e-9);
  EXPECT_NEAR(ellipse.across, 5.0, 1e-9);
  EXPECT_NEAR(ellipse.angle, 0.0, 1e-9);
  const auto huge = only<tool::Ellipse>("ellipse", placed(points, 1e12, {0, 0}));
  EXPECT_NEAR(huge.along, 10.0e12, 1e3);
  EXPECT_NEAR(huge.across, 5.0e12, 1e3);
  EXPECT_NEAR(huge.centre.y(), 30.0e12, 1e4);
  EXPECT_THAT(found("ellipse", outlines({{{{5, 5}, {5, 5}, {5, 5}}, {}}})), SizeIs(0));
}

TEST(Overlays, TheCentreIsThatOfTheAreaLessTheHoles) {
  EXPECT_NEAR(only<tool::Cross>("centre", outlines({{squarePoints(0, 0, 10), {}}})).at.y(), 5.0,
              1e-9);
  const double centre = (100.0 * 5.0 - 9.0 * 2.5) / 91.0;
  const auto holed =
      only<tool::Cross>("centre", outlines({{squarePoints(0, 0, 10), {squarePoints(1, 1, 3)}}}));
  EXPECT_NEAR(holed.at.y(), centre, 1e-9);
  const auto tiny = only<tool::Cross>("centre", outlines({{squarePoints(7, 8, 1e-6), {}}}));
  EXPECT_NEAR(tiny.at.x(), 7.0 + 0.5e-6, 1e-12);
  Geometry line = outlines({{{{0, 0}, {4, 0}}, {}}});
  line.closed = false;
  EXPECT_EQ(only<tool::Cross>("centre", line).at, P(2, 0));
}

TEST(Overlays, EdgeletsAreSegmentsAlongTheEdge) {
  Geometry geometry = outlines({{squarePoints(0, 0, 9), {}}, {{{10, 20}, {30, 20}}, {}}});
  EXPECT_THAT(found("edgelets", geometry), SizeIs(0));
  // A gradient along +y has its edge along x, and the other way round.
  geometry.edgelets = {
      {}, {qcEdgelet({10, 20}, 500, qcAngle8(64)), qcEdgelet({30, 20}, 500, qcAngle8(0))}};
  const std::vector<Mark> marks = found("edgelets", geometry);
  ASSERT_THAT(marks, SizeIs(2));
  EXPECT_NEAR(std::get<tool::Segment>(marks[0]).from.x(), 10.5, 1e-12);
  EXPECT_NEAR(std::get<tool::Segment>(marks[0]).to.x(), 9.5, 1e-12);
  EXPECT_NEAR(std::get<tool::Segment>(marks[0]).to.y(), 20.0, 1e-12);
  EXPECT_NEAR(std::get<tool::Segment>(marks[1]).from.y(), 19.5, 1e-12);
  EXPECT_NEAR(std::get<tool::Segment>(marks[1]).to.y(), 20.5, 1e-12);
}

TEST(Overlays, CrossingsAreSpots) {
  const Points bow{{0, 0}, {4, 3}, {4, 0}, {0, 3}};
  EXPECT_EQ(only<tool::Spot>("crossings", outlines({{bow, {}}})).at, P(2, 1.5));
  const auto tiny = only<tool::Spot>("crossings", placed(bow, 1e-9, {0, 0}));
  EXPECT_NEAR(tiny.at.x(), 2e-9, 1e-20);
  EXPECT_NEAR(tiny.at.y(), 1.5e-9, 1e-20);
}

TEST(Overlays, CrossingsWithinThreePixelsShareASpot) {
  // Pixels are 0.01 wide.
  const Points comb{{0, 0}, {10, 0}, {9, 1}, {9.01, -1}, {9, -1}, {8.99, 1}, {3, 1}, {3, -1}};
  EXPECT_THAT(found("crossings", outlines({{comb, {}}})), SizeIs(testing::Lt(6)));
}

TEST(ReachOfAMark, IsItsBoxButNothingOfAHugeEllipse) {
  const Box box{{0, 0}, {10, 5}};
  EXPECT_EQ(tool::reachOf(tool::Circle{{5, 5}, 50}, box).high, P(55, 55));
  EXPECT_EQ(tool::reachOf(tool::Ellipse{{5, 5}, 10, 1, 0}, box).high, P(15, 6));
  EXPECT_EQ(tool::reachOf(tool::Ellipse{{5, 5}, 10.1, 1, 0}, box).high, P(10, 5));
  EXPECT_EQ(tool::reachOf(tool::Ellipse{{5, 5}, 1, 10.1, 0}, box).high, P(10, 5));
}
