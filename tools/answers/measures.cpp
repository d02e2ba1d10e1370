// SPDX-License-Identifier: MIT

#include <tools/answers/measures.h>

#include <cmath>
#include <numbers>

#include <cntr/ellipse.h>

namespace tool {

namespace {

using Geom = qcEllipse::qcEllipseGeom;

// Each template answers by the function that it is given, or with nothing where the question has no
// meaning.

template <double (*Ask)(const qcContour&)>
Cell ofContour(const Measured& m) {
  const qcContour* contour = m.subject.only();
  return contour == nullptr ? Cell() : numberCell(Ask(*contour));
}

double meanX(const qcContour& contour) { return contour.meanPosition().x(); }
double meanY(const qcContour& contour) { return contour.meanPosition().y(); }
template <qcContourDefs::DiameterMode Mode>
double diameter(const qcContour& contour) {
  return contour.diameter(Mode);
}

template <double (*Ask)(const qc_InertiaData&)>
Cell ofBody(const Measured& m) {
  const auto& body = m.subject.body();
  return body ? numberCell(Ask(*body)) : Cell();
}

double centreX(const qc_InertiaData& body) { return body.centerOfMass().x(); }
double centreY(const qc_InertiaData& body) { return body.centerOfMass().y(); }
template <int Row, int Column>
double moment(const qc_InertiaData& body) {
  return body.inertiaMatrix().element(Row, Column);
}
double equivalentDiameter(const qc_InertiaData& body) {
  return std::sqrt(4.0 * body.area() / std::numbers::pi);
}

template <double (*Ask)(const Geom&)>
Cell ofMoments(const Measured& m) {
  const auto& body = m.subject.body();
  if (!body) return Cell();
  try {
    return numberCell(Ask(qf_EllipseFromInertiaData(*body).geom()));
  } catch (const qcMathError::Singular&) {
    return Cell();
  }
}

double axisRatio(const Geom& ellipse) { return ellipse.radius2 / ellipse.radius1; }
double rotation(const Geom& ellipse) { return qcDegree(ellipse.rotation).toDouble(); }

template <double (*Ask)(const Geom&, double residual)>
Cell ofFit(const Measured& m) {
  const qcContour* contour = m.subject.only();
  if (contour == nullptr) return Cell();
  qcEllipse ellipse;
  double residual = 0.0;
  contour->fitEllipse(ellipse, residual);
  return residual < 0.0 ? Cell() : numberCell(Ask(ellipse.geom(), residual));
}

double fittedX(const Geom& ellipse, double) { return ellipse.center.x(); }
double fittedY(const Geom& ellipse, double) { return ellipse.center.y(); }
double fittedRadius1(const Geom& ellipse, double) { return ellipse.radius1; }
double fittedRadius2(const Geom& ellipse, double) { return ellipse.radius2; }
double fittedRotation(const Geom& ellipse, double) { return rotation(ellipse); }
double fitResidual(const Geom&, double residual) { return residual; }

template <double (*Ask)(const qcRect&)>
Cell ofRectangle(const Measured& m) {
  return numberCell(Ask(m.subject.rectangle()));
}

double left(const qcRect& rectangle) { return rectangle.ul().x(); }
double top(const qcRect& rectangle) { return rectangle.ul().y(); }
double width(const qcRect& rectangle) { return rectangle.width(); }
double height(const qcRect& rectangle) { return rectangle.height(); }

Cell file(const Measured& m) { return m.file; }
Cell feature(const Measured& m) { return m.feature.number; }
Cell part(const Measured& m) { return m.part ? Cell(*m.part) : Cell(); }
Cell label(const Measured& m) { return labelCell(m.feature.label); }
Cell id(const Measured& m) { return m.feature.id ? Cell(*m.feature.id) : Cell(); }
Cell vertices(const Measured& m) { return m.subject.vertexCount(); }
Cell holes(const Measured& m) { return m.subject.holeCount(); }
Cell closed(const Measured& m) { return m.subject.isClosed(); }
Cell length(const Measured& m) { return numberCell(m.subject.length()); }

Cell area(const Measured& m) {
  const auto area = m.subject.area();
  return area ? numberCell(*area) : Cell();
}

double outlineRoundness(const qcContour& outline) {
  const double length = outline.length();
  return 4.0 * std::numbers::pi * qf_Area(outline.points()) / (length * length);
}
Cell roundness(const Measured& m) {
  return m.subject.body() ? ofContour<outlineRoundness>(m) : Cell();
}

Cell crossesItself(const Measured& m) {
  const auto crosses = m.subject.crossesItself();
  return crosses ? Cell(*crosses) : Cell();
}

Cell note(const Measured& m) {
  std::string text;
  const auto add = [&text](const char* more) {
    if (!text.empty()) text += ", ";
    text += more;
  };
  if (!m.subject.isClosed()) add("open");
  if (!m.subject.isClosed() && m.subject.crossesItself().value_or(false)) add("crosses itself");
  for (const char* flaw : m.subject.flaws()) add(flaw);
  if (m.subject.isClosed() && m.subject.flaws().empty() && !m.subject.body()) add("no area");
  if (m.subject.length() == 0.0) add("no length");
  return text.empty() ? Cell() : Cell(text);
}

constexpr auto farthestPair = qcContourDefs::eFarthestVertexPair;
constexpr auto fromFirst = qcContourDefs::eFromFirstVertex;

constexpr Measure measures[] = {
    {"file", "name of the file", 0, false, file},
    {"feature", "number of the feature in its file, from 1", 0, true, feature},
    {"part", "number of the part, from 1; none for the feature as a whole", 0, true, part},
    {"label", "the property `label`", 0, true, label},
    {"id", "the id of the feature", 0, true, id},
    {"vertices", "vertices of the outline, without the repeated last one and those of holes", 0,
     true, vertices},
    {"holes", "number of holes that were taken into account", 0, false, holes},
    {"closed", "yes for an outline, no for an open line", 0, false, closed},
    {"area", "area, less the holes", 2, true, area},
    {"centre_x", "centre of mass", 1, true, ofBody<centreX>},
    {"centre_y", "", 1, true, ofBody<centreY>},
    {"moment_xx", "second moment, the integral of (x - centre_x)^2 over the area", 4, true,
     ofBody<moment<0, 0>>},
    {"moment_xy", "the integral of (x - centre_x)(y - centre_y)", 4, true, ofBody<moment<0, 1>>},
    {"moment_yy", "the integral of (y - centre_y)^2", 4, true, ofBody<moment<1, 1>>},
    {"length", "length of the outline or line", 1, false, length},
    {"mean_x", "mean position of the outline or line, taken as a wire", 1, false, ofContour<meanX>},
    {"mean_y", "", 1, false, ofContour<meanY>},
    {"roundness", "4 pi area / length^2 of the outline without its holes; 1 for a disc", 0, true,
     roundness},
    {"equivalent_diameter", "diameter of the disc of the same area", 1, false,
     ofBody<equivalentDiameter>},
    {"axis_ratio", "smaller axis by larger axis of the ellipse that has the same second moments", 0,
     false, ofMoments<axisRatio>},
    {"orientation", "direction of its larger axis, degrees from the x axis towards the y axis", 0,
     false, ofMoments<rotation>},
    {"diameter", "largest distance between two vertices", 1, false,
     ofContour<diameter<farthestPair>>},
    {"first_vertex_diameter", "twice the largest distance of a vertex from the first one", 1, false,
     ofContour<diameter<fromFirst>>},
    {"left", "smallest x of the enclosing rectangle", 1, false, ofRectangle<left>},
    {"top", "its smallest y", 1, false, ofRectangle<top>},
    {"width", "its width", 1, false, ofRectangle<width>},
    {"height", "its height", 1, false, ofRectangle<height>},
    {"ellipse_x", "centre of the ellipse that fits the vertices best", 1, false, ofFit<fittedX>},
    {"ellipse_y", "", 1, false, ofFit<fittedY>},
    {"ellipse_radius1", "its larger radius", 1, false, ofFit<fittedRadius1>},
    {"ellipse_radius2", "its smaller radius", 1, false, ofFit<fittedRadius2>},
    {"ellipse_rotation", "direction of its larger radius, degrees as above", 0, false,
     ofFit<fittedRotation>},
    {"ellipse_residual", "root mean square distance of the vertices from it", 1, false,
     ofFit<fitResidual>},
    {"crosses_itself", "yes when an edge crosses another one", 0, false, crossesItself},
    {"note", "why measures are missing: open, crosses itself, no area ...", 0, true, note},
};

}  // namespace

std::span<const Measure> allMeasures() { return measures; }

}  // namespace tool
