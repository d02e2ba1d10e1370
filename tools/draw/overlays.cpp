// SPDX-License-Identifier: MIT

#include <tools/draw/overlays.h>

#include <algorithm>
#include <cmath>
#include <optional>

#include <cntrformats/number.h>
#include <cntrformats/shapes.h>
#include <cntrtmpl/regiont.h>
#include <platform/display/recordingtablet.h>
#include <tools/answers/body.h>
#include <tools/draw/crossings.h>
#include <tools/draw/svg.h>

namespace tool {

using namespace formats;

namespace {

/// Half the length of the strokes of a centre mark and the radius of the ring round a crossing, in
/// thousandths of the picture.
constexpr double markSize = 6.0;
/// Thin, so that single ones can be told apart; in thousandths of the picture.
constexpr double edgeletWidth = 1.0;

/// Draws a feature part by part.
template <auto drawPart>
std::string eachPart(const Geometry& geometry, double unit) {
  std::string text;
  for (const qcRings& part : geometry.parts) text += drawPart(part, geometry.closed, unit);
  return text;
}

std::string rectangle(const qcRings& part, bool, double) {
  return svg::rectangle(boxOf(part.outline));
}

/// Of radius 0 where all vertices coincide. The closed flag plays no part in it.
qcCircle circleAround(const qcRings& part) {
  return makeContour(part.outline, true)->encloseCircle(qcContourDefs::eFarthestVertexPair);
}

std::string circle(const qcRings& part, bool, double) {
  const qcCircle circle = circleAround(part);
  return circle.radius() > 0.0 ? svg::circle(circle) : "";
}

qcRect circleExtent(const qcRings& part) {
  const qcCircle circle = circleAround(part);
  if (!(circle.radius() > 0.0)) return boxOf(part.outline);
  const qcVector<2> reach(circle.radius(), circle.radius());
  return {qcPoint(circle.center() - reach), qcPoint(circle.center() + reach)};
}

std::string hull(const qcRings& part, bool closed, double) {
  qcRegion hull;
  makeContour(part.outline, closed)->convexHull(hull);
  return svg::path({hull.points()}, true, "", "");
}

/// Nothing when neither an ellipse nor a circle fits. The closed flag plays no part in it.
std::optional<qcEllipse> ellipseOf(const qcRings& part) {
  qcEllipse ellipse;
  double residual = 0.0;
  makeContour(part.outline, true)->fitEllipse(ellipse, residual);
  return residual < 0.0 ? std::nullopt : std::optional(ellipse);
}

std::string ellipse(const qcRings& part, bool, double) {
  const auto ellipse = ellipseOf(part);
  return ellipse ? svg::ellipse(*ellipse) : "";
}

bool isHuge(const qcEllipse& ellipse, const qcRect& box) {
  const auto& geom = ellipse.geom();
  return std::max(geom.radius1, geom.radius2) > std::max(box.width(), box.height());
}

/// The outline's own where the ellipse is much larger, as that of a nearly straight line is.
qcRect ellipseExtent(const qcRings& part) {
  qcRect box = boxOf(part.outline);
  const auto ellipse = ellipseOf(part);
  if (!ellipse || isHuge(*ellipse, box)) return box;
  const auto& geom = ellipse->geom();
  const qcVector<2> first(geom.radius1, geom.rotation);
  const qcVector<2> second(geom.radius2, geom.rotation);
  const qcVector<2> reach(std::hypot(first.x(), second.y()), std::hypot(first.y(), second.x()));
  return {qcPoint(geom.center - reach), qcPoint(geom.center + reach)};
}

std::string cross(const qcVector<2>& at, double unit) {
  const qcVector<2> right(markSize * unit, 0.0);
  const qcVector<2> down(0.0, markSize * unit);
  return svg::line(at - right, at + right) + svg::line(at - down, at + down);
}

std::string centre(const qcRings& part, bool closed, double unit) {
  return cross(middleOf(part, closed), unit);
}

/// One path of single segments, as the library draws them.
std::string segments(const std::vector<qcEdgelet>& edgelets, double unit) {
  if (edgelets.empty()) return "";
  qcRecordingTablet tablet;
  qcRegionT<qcEdgelet>(edgelets, 0).draw(tablet, qcColor::black, qcUITablet::eOverlayLayer);
  std::vector<Points> drawnSegments;
  for (const auto& drawn : tablet.segments()) {
    drawnSegments.push_back({{drawn.from.x(), drawn.from.y()}, {drawn.to.x(), drawn.to.y()}});
  }
  const std::string width = allDigits(edgeletWidth * unit);
  return svg::path(drawnSegments, false, " style=\"stroke-width:" + width + "\"", "");
}

std::string edgelets(const Geometry& geometry, double unit) {
  std::string text;
  for (const auto& part : geometry.edgelets) text += segments(part, unit);
  return text;
}

std::string ring(const qcVector<2>& centre, double unit) {
  return svg::circle(qcCircle(centre, markSize * unit));
}

std::string crossings(const Geometry& geometry, double unit) {
  std::string text;
  for (const qcVector<2>& crossing : crossingsOf(geometry, unit)) text += ring(crossing, unit);
  return text;
}

std::string stroke(const qcVector<2>& centre, double unit) {
  const qcVector<2> half(13.0 * unit, 0.0);
  return svg::line(centre - half, centre + half);
}

constexpr Overlay overlays[] = {
    {"rectangle", "#8c6d1f", eachPart<rectangle>, stroke, nullptr},
    {"circle", "#1b8a5a", eachPart<circle>, stroke, circleExtent},
    {"hull", "#1f5fbf", eachPart<hull>, stroke, nullptr},
    {"ellipse", "#c2255c", eachPart<ellipse>, stroke, ellipseExtent},
    {"edgelets", "#5f3dc4", edgelets, stroke, nullptr},
    {"centre", "#212529", eachPart<centre>, cross, nullptr},
    {"crossings", "#e03131", crossings, ring, nullptr},
};

}  // namespace

std::span<const Overlay> allOverlays() { return overlays; }

}  // namespace tool
