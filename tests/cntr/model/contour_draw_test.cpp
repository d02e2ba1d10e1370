// SPDX-License-Identifier: MIT
//
// What a contour draws: which segments, in which order, with which colour and on which layers.

#include <cmath>
#include <stdexcept>
#include <utility>
#include <vector>

#include <cntr/contour.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/display/recordingtablet.h>
#include <testing/shapes/numbers.h>

#include "contour_probe.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const Point a(0, 0);
const Point b(4, 0);
const Point c(0, 3);

using Edge = std::pair<Point, Point>;

/// The ends of everything on the tablet, in drawing order.
std::vector<Edge> edgesOn(const qcRecordingTablet& tablet) {
  const auto point = [](const qcPair<double>& p) { return Point(p.x(), p.y()); };
  std::vector<Edge> edges;
  for (const auto& segment : tablet.segments()) {
    edges.emplace_back(point(segment.from), point(segment.to));
  }
  return edges;
}

std::vector<Edge> drawnBy(const qcContour& contour,
                          qcContourDefs::DrawMode mode = qcContourDefs::eDrawContour) {
  qcRecordingTablet tablet;
  contour.draw(tablet, mode, qcColor::red, qcUITablet::eImageLayer);
  return edgesOn(tablet);
}

TEST(ContourDrawTest, AClosedTriangleBeginsWithTheEdgeBackToItsFirstVertex) {
  EXPECT_THAT(drawnBy(closedContour({a, b, c})), ElementsAre(Edge(c, a), Edge(a, b), Edge(b, c)));
}

TEST(ContourDrawTest, AnOpenTriangleHasTwoEdges) {
  EXPECT_THAT(drawnBy(openContour({a, b, c})), ElementsAre(Edge(a, b), Edge(b, c)));
}

TEST(ContourDrawTest, WithoutVerticesDrawsNothing) {
  EXPECT_THAT(drawnBy(closedContour({})), IsEmpty());
  EXPECT_THAT(drawnBy(openContour({})), IsEmpty());
}

TEST(ContourDrawTest, AnOpenContourOfOneVertexDrawsNothing) {
  EXPECT_THAT(drawnBy(openContour({b})), IsEmpty());
}

TEST(ContourDrawTest, AClosedContourOfOneVertexDrawsASegmentOfNoLength) {
  EXPECT_THAT(drawnBy(closedContour({b})), ElementsAre(Edge(b, b)));
}

TEST(ContourDrawTest, AClosedContourOfTwoVerticesDrawsItsEdgeThereAndBack) {
  EXPECT_THAT(drawnBy(closedContour({a, b})), ElementsAre(Edge(b, a), Edge(a, b)));
}

TEST(ContourDrawTest, CoincidingVerticesAreDrawnAsSegmentsOfNoLength) {
  EXPECT_THAT(drawnBy(openContour({a, a, b, b})), ElementsAre(Edge(a, a), Edge(a, b), Edge(b, b)));
}

TEST(ContourDrawTest, EveryModeDrawsTheSame) {
  const ContourProbe contour = closedContour({a, b, c});
  EXPECT_EQ(drawnBy(contour, static_cast<qcContourDefs::DrawMode>(17)),
            drawnBy(contour, qcContourDefs::eDrawContour));
}

TEST(ContourDrawTest, GoesToTheGivenLayersInTheGivenColour) {
  qcRecordingTablet tablet;
  openContour({a, b}).draw(tablet, qcContourDefs::eDrawContour, qcColor(1, 2, 3),
                           qcUITablet::eOverlayLayer);
  openContour({b, c}).draw(tablet, qcContourDefs::eDrawContour, qcColor::green,
                           qcUITablet::eImageLayer);
  EXPECT_THAT(
      tablet.segments(),
      ElementsAre(
          qcRecordingTablet::Segment{{0, 0}, {4, 0}, qcColor(1, 2, 3), qcUITablet::eOverlayLayer},
          qcRecordingTablet::Segment{{4, 0}, {0, 3}, qcColor::green, qcUITablet::eImageLayer}));
}

TEST(ContourDrawTest, HandsCoordinatesThatAreNotFiniteThrough) {
  const auto edges = drawnBy(openContour({{std::nan(""), 1}, {infinity, -infinity}}));
  ASSERT_EQ(edges.size(), 1U);
  EXPECT_TRUE(std::isnan(edges[0].first.x()));
  EXPECT_EQ(edges[0].second, Point(infinity, -infinity));
}

/// A contour that reports that it is open, whatever its flag.
class AlwaysOpen : public qcContour {
 public:
  using qcContour::qcContour;
  bool isClosed() const override { return false; }
  using qcContour::isClosed;
};

TEST(ContourDrawTest, AsksTheContourWhetherItIsClosed) {
  EXPECT_THAT(drawnBy(AlwaysOpen({a, b, c}, true, 0)), ElementsAre(Edge(a, b), Edge(b, c)));
}

/// A tablet that turns the page after every segment.
class PageTurner : public qcRecordingTablet {
 public:
  explicit PageTurner(Layers& layers) : layers_(layers) {}

  void drawLineSeg(const qcPair<double>& from, const qcPair<double>& to, const qcColor& color,
                   Layers layers) override {
    qcRecordingTablet::drawLineSeg(from, to, color, layers);
    layers_ = layers == eImageLayer ? eOverlayLayer : eImageLayer;
  }

 private:
  Layers& layers_;
};

TEST(ContourDrawTest, ReadsTheLayersAtEverySegment) {
  qcUITablet::Layers layers = qcUITablet::eImageLayer;
  PageTurner tablet(layers);
  closedContour({a, b, c}).draw(tablet, qcContourDefs::eDrawContour, qcColor::red, layers);
  ASSERT_EQ(tablet.segments().size(), 3U);
  EXPECT_EQ(tablet.segments()[0].layers, qcUITablet::eImageLayer);
  EXPECT_EQ(tablet.segments()[1].layers, qcUITablet::eOverlayLayer);
  EXPECT_EQ(tablet.segments()[2].layers, qcUITablet::eImageLayer);
}

/// A tablet that has room for two segments.
class SmallTablet : public qcRecordingTablet {
 public:
  void drawLineSeg(const qcPair<double>& from, const qcPair<double>& to, const qcColor& color,
                   Layers layers) override {
    if (segments().size() == 2) throw std::length_error("full");
    qcRecordingTablet::drawLineSeg(from, to, color, layers);
  }
};

TEST(ContourDrawTest, LetsWhatTheTabletThrowsThroughAndLeavesWhatIsDrawn) {
  SmallTablet tablet;
  const ContourProbe contour = closedContour({a, b, c});
  EXPECT_THROW(
      contour.draw(tablet, qcContourDefs::eDrawContour, qcColor::red, qcUITablet::eImageLayer),
      std::length_error);
  EXPECT_THAT(edgesOn(tablet), ElementsAre(Edge(c, a), Edge(a, b)));
}

TEST(ContourDrawTest, ChangesNothingInTheContour) {
  ContourProbe contour = closedContour({a, b, c});
  contour.isTracking(true);
  drawnBy(contour);
  EXPECT_EQ(contour.changes(), 0U);
}

}  // namespace
