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

const Point p0(0, 0);
const Point p1(4, 0);
const Point p2(0, 3);

using Ends = std::pair<Point, Point>;

/// The ends of everything on the tablet, in drawing order.
std::vector<Ends> edgesOn(const qcRecordingTablet& tablet) {
  const auto point = [](const qcPair<double>& p) { return Point(p.x(), p.y()); };
  std::vector<Ends> edges;
  for (const auto& segment : tablet.segments()) {
    edges.emplace_back(point(segment.from), point(segment.to));
  }
  return edges;
}

std::vector<Ends> drawnBy(const qcContour& contour,
                          qcContourDefs::DrawMode mode = qcContourDefs::eDrawContour) {
  qcRecordingTablet tablet;
  contour.draw(tablet, mode, qcColor::red, qcUITablet::eImageLayer);
  return edgesOn(tablet);
}

TEST(ContourDrawTest, AClosedTriangleBeginsWithTheEdgeBackToItsFirstVertex) {
  EXPECT_THAT(drawnBy(closedContour({p0, p1, p2})),
              ElementsAre(Ends(p2, p0), Ends(p0, p1), Ends(p1, p2)));
}

TEST(ContourDrawTest, AnOpenTriangleHasTwoEdges) {
  EXPECT_THAT(drawnBy(openContour({p0, p1, p2})), ElementsAre(Ends(p0, p1), Ends(p1, p2)));
}

TEST(ContourDrawTest, WithoutVerticesDrawsNothing) {
  EXPECT_THAT(drawnBy(closedContour({})), IsEmpty());
  EXPECT_THAT(drawnBy(openContour({})), IsEmpty());
}

TEST(ContourDrawTest, AnOpenContourOfOneVertexDrawsNothing) {
  EXPECT_THAT(drawnBy(openContour({p1})), IsEmpty());
}

TEST(ContourDrawTest, AClosedContourOfOneVertexDrawsASegmentOfNoLength) {
  EXPECT_THAT(drawnBy(closedContour({p1})), ElementsAre(Ends(p1, p1)));
}

TEST(ContourDrawTest, AClosedContourOfTwoVerticesDrawsItsEdgeThereAndBack) {
  EXPECT_THAT(drawnBy(closedContour({p0, p1})), ElementsAre(Ends(p1, p0), Ends(p0, p1)));
}

TEST(ContourDrawTest, CoincidingVerticesAreDrawnAsSegmentsOfNoLength) {
  EXPECT_THAT(drawnBy(openContour({p0, p0, p1, p1})),
              ElementsAre(Ends(p0, p0), Ends(p0, p1), Ends(p1, p1)));
}

TEST(ContourDrawTest, EveryModeDrawsTheSame) {
  const ContourProbe contour = closedContour({p0, p1, p2});
  EXPECT_EQ(drawnBy(contour, static_cast<qcContourDefs::DrawMode>(17)),
            drawnBy(contour, qcContourDefs::eDrawContour));
}

TEST(ContourDrawTest, GoesToTheGivenLayersInTheGivenColour) {
  qcRecordingTablet tablet;
  openContour({p0, p1}).draw(tablet, qcContourDefs::eDrawContour, qcColor(1, 2, 3),
                             qcUITablet::eOverlayLayer);
  openContour({p1, p2}).draw(tablet, qcContourDefs::eDrawContour, qcColor::green,
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
  EXPECT_THAT(drawnBy(AlwaysOpen({p0, p1, p2}, true, 0)), ElementsAre(Ends(p0, p1), Ends(p1, p2)));
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
  closedContour({p0, p1, p2}).draw(tablet, qcContourDefs::eDrawContour, qcColor::red, layers);
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
  const ContourProbe contour = closedContour({p0, p1, p2});
  EXPECT_THROW(
      contour.draw(tablet, qcContourDefs::eDrawContour, qcColor::red, qcUITablet::eImageLayer),
      std::length_error);
  EXPECT_THAT(edgesOn(tablet), ElementsAre(Ends(p2, p0), Ends(p0, p1)));
}

TEST(ContourDrawTest, ChangesNothingInTheContour) {
  ContourProbe contour = closedContour({p0, p1, p2});
  contour.isTracking(true);
  drawnBy(contour);
  EXPECT_EQ(contour.changes(), 0U);
}

}  // namespace
