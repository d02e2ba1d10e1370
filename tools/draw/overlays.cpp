// SPDX-License-Identifier: MIT

#include <tools/draw/overlays.h>

#include <cntrtmpl/regiont.h>
#include <platform/display/recordingtablet.h>
#include <tools/draw/svg.h>
#include <tools/output/numbers.h>
#include <tools/shapes.h>

namespace tool {

namespace {

/// Half the length of the strokes of a centre mark, in thousandths of the picture.
constexpr double markSize = 6.0;
/// Thin, so that single ones can be told apart; in thousandths of the picture.
constexpr double edgeletWidth = 0.6;

qcContour contourOf(const Part& part, bool closed) { return {part.outline, closed, 0}; }

std::string rectangle(const Part& part, bool, double) {
  return svg::rectangle(boxOf(part.outline));
}

std::string circle(const Part& part, bool closed, double) {
  return svg::circle(contourOf(part, closed).encloseCircle(qcContourDefs::eFarthestVertexPair));
}

std::string hull(const Part& part, bool closed, double) {
  qcRegion hull;
  contourOf(part, closed).convexHull(hull);
  return svg::path({hull.points()}, true, "", "");
}

/// Nothing when neither an ellipse nor a circle fits.
std::string ellipse(const Part& part, bool closed, double) {
  qcEllipse ellipse;
  double residual = 0.0;
  contourOf(part, closed).fitEllipse(ellipse, residual);
  return residual < 0.0 ? "" : svg::ellipse(ellipse);
}

std::string centre(const Part& part, bool closed, double unit) {
  const qcVector<2> at = centreOf(part, closed);
  const qcVector<2> right(markSize * unit, 0.0);
  const qcVector<2> down(0.0, markSize * unit);
  return svg::line(at - right, at + right) + svg::line(at - down, at + down);
}

/// One path of single segments, as the library draws them.
std::string edgelets(const Part& part, bool, double unit) {
  if (part.edgelets.empty()) return "";
  qcRecordingTablet tablet;
  qcRegionT<qcEdgelet>(part.edgelets, 0).draw(tablet, qcColor::black, qcUITablet::eOverlayLayer);
  std::vector<Points> segments;
  for (const auto& drawn : tablet.segments()) {
    segments.push_back({{drawn.from.x(), drawn.from.y()}, {drawn.to.x(), drawn.to.y()}});
  }
  const std::string width = allDigits(edgeletWidth * unit);
  return svg::path(segments, false, " style=\"stroke-width:" + width + "\"", "");
}

constexpr Overlay overlays[] = {
    {"rectangle", "#8c6d1f", rectangle}, {"circle", "#1b8a5a", circle},
    {"hull", "#1f5fbf", hull},           {"ellipse", "#c2255c", ellipse},
    {"edgelets", "#d9480f", edgelets},   {"centre", "#212529", centre},
};

}  // namespace

std::span<const Overlay> allOverlays() { return overlays; }

qcVector<2> centreOf(const Part& part, bool closed) {
  const qc_InertiaData body = closed ? inertiaOf({part}, true) : qc_InertiaData();
  if (isArea(body.area())) return body.centerOfMass();
  const qcContour contour = contourOf(part, closed);
  return contour.length() > 0.0 ? contour.meanPosition() : part.outline.front();
}

}  // namespace tool
