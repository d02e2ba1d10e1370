// SPDX-License-Identifier: MIT

#include <tools/draw/overlays.h>

#include <algorithm>

#include <cntrformats/shapes.h>
#include <cntrtmpl/regiont.h>
#include <platform/display/recordingtablet.h>
#include <tools/answers/body.h>
#include <tools/draw/crossings.h>

namespace tool {

using namespace formats;

namespace {

using Marks = std::vector<Mark>;

/// Finds the overlay of a feature part by part.
template <auto findPart>
Marks eachPart(const Overlaid& feature) {
  Marks marks;
  for (const qcRings& part : feature.framed.parts) findPart(feature, part, marks);
  return marks;
}

Points back(const Frame& frame, const Points& points) {
  Points result;
  result.reserve(points.size());
  for (const qcVector<2>& p : points) result.push_back(frame.back(p));
  return result;
}

Marks rectangles(const Overlaid& feature) {
  Marks marks;
  for (const qcRings& part : feature.geometry.parts) marks.emplace_back(boxAround(part.outline));
  return marks;
}

/// Nothing if all vertices coincide. The closed flag does not matter.
void addCircle(const Overlaid& feature, const qcRings& part, Marks& marks) {
  const qcCircle circle =
      makeContour(part.outline, true)->encloseCircle(qcContourDefs::eFarthestVertexPair);
  if (!(circle.radius() > 0.0)) return;
  marks.emplace_back(
      Circle{feature.frame.back(circle.center()), feature.frame.back(circle.radius())});
}

void addHull(const Overlaid& feature, const qcRings& part, Marks& marks) {
  qcRegion hull;
  makeContour(part.outline, feature.geometry.closed)->convexHull(hull);
  marks.emplace_back(Ring{back(feature.frame, hull.points())});
}

/// Nothing if neither an ellipse nor a circle fits. The closed flag does not matter.
void addEllipse(const Overlaid& feature, const qcRings& part, Marks& marks) {
  qcEllipse ellipse;
  double residual = 0.0;
  makeContour(part.outline, true)->fitEllipse(ellipse, residual);
  if (residual < 0.0) return;
  const auto& geom = ellipse.geom();
  marks.emplace_back(Ellipse{feature.frame.back(geom.center), feature.frame.back(geom.radius1),
                             feature.frame.back(geom.radius2), geom.rotation.toDouble()});
}

void addCentre(const Overlaid& feature, const qcRings& part, Marks& marks) {
  marks.emplace_back(Cross{feature.frame.back(middleOf(part, feature.geometry.closed))});
}

/// Edge elements as the segments that the library draws.
Marks edgeletMarks(const Overlaid& feature) {
  Marks marks;
  for (const std::vector<qcEdgelet>& part : feature.geometry.edgelets) {
    if (part.empty()) continue;
    qcRecordingTablet tablet;
    qcRegionT<qcEdgelet>(part, 0).draw(tablet, qcColor::black, qcUITablet::eOverlayLayer);
    for (const auto& drawn : tablet.segments()) {
      marks.emplace_back(Segment{{drawn.from.x(), drawn.from.y()}, {drawn.to.x(), drawn.to.y()}});
    }
  }
  return marks;
}

Marks crossingMarks(const Overlaid& feature) {
  Marks marks;
  const double size = feature.frame.into(spotSpacing * feature.pixel);
  for (const qcVector<2>& crossing : crossingsOf(feature.framed, size)) {
    marks.emplace_back(Spot{feature.frame.back(crossing)});
  }
  return marks;
}

Mark crossMark(const qcVector<2>& centre) { return Cross{centre}; }
Mark spotMark(const qcVector<2>& centre) { return Spot{centre}; }

const Overlay everyOverlay[] = {
    {"rectangle", "#8c6d1f", rectangles, nullptr},
    {"circle", "#1b8a5a", eachPart<addCircle>, nullptr},
    {"hull", "#1f5fbf", eachPart<addHull>, nullptr},
    {"ellipse", "#c2255c", eachPart<addEllipse>, nullptr},
    {"edgelets", "#5f3dc4", edgeletMarks, nullptr},
    {"centre", "#212529", eachPart<addCentre>, crossMark},
    {"crossings", "#e03131", crossingMarks, spotMark},
};

}  // namespace

std::span<const Overlay> allOverlays() { return everyOverlay; }

Box reachOf(const Mark& mark, const Box& box) {
  const auto* ellipse = std::get_if<Ellipse>(&mark);
  const bool isHuge = ellipse && std::max(ellipse->along, ellipse->across) > box.extent();
  return isHuge ? box : boxOf(mark);
}

}  // namespace tool
