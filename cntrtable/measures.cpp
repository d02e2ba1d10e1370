// SPDX-License-Identifier: MIT

#include <cntrtable/measures.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include <cntr/contourdefs.h>
#include <cntr/ellipse.h>

namespace table {

namespace {

using Geom = qcEllipse::qcEllipseGeom;

Value number(double value) { return std::isfinite(value) ? Value(value) : Value(); }

/// A local value, converted to the plane's unit.
Value restored(const Facts& facts, double value, int power) {
  return number(facts.frame.restored(value, power));
}

// Each template answers by the function that it is given, or with nothing if the question has no
// meaning.

template <double (*Ask)(const qcContour&)>
Value ofCurve(const Facts& facts) {
  return facts.curves.size() == 1 ? restored(facts, Ask(facts.curves.front()), 1) : Value();
}

template <qcContourDefs::DiameterMode Mode>
double diameter(const qcContour& curve) {
  return curve.diameter(Mode);
}

template <double (*Coordinate)(const qcVector<2>&)>
Value ofMeanPosition(const Facts& facts) {
  if (facts.curves.size() != 1) return {};
  return number(Coordinate(facts.frame.restored(facts.curves.front().meanPosition())));
}

double x(const qcVector<2>& p) { return p.x(); }
double y(const qcVector<2>& p) { return p.y(); }

template <double (*Coordinate)(const qcVector<2>&)>
Value ofCentre(const Facts& facts) {
  if (!facts.centre) return {};
  return number(Coordinate(facts.frame.restored(*facts.centre)));
}

template <int Row, int Column>
Value moment(const Facts& facts) {
  if (!facts.moments) return {};
  return restored(facts, facts.moments->inertiaMatrix().element(Row, Column), 4);
}

Value equivalentDiameter(const Facts& facts) {
  if (!facts.area) return {};
  return restored(facts, std::sqrt(4.0 * *facts.area / std::numbers::pi), 1);
}

template <double (*Ask)(const Geom&)>
Value ofMoments(const Facts& facts) {
  if (!facts.moments) return {};
  // The library takes small moments for those of a line: enlarged, those of any shape that is not a
  // line are large enough.
  constexpr double enlarged = 0x1p80;
  try {
    const qcMatrix<2>& m = facts.moments->inertiaMatrix();
    const qc_InertiaData large(*facts.area, facts.moments->centerOfMass(),
                               qcMatrix<2>(enlarged * m.element(0, 0), enlarged * m.element(0, 1),
                                           enlarged * m.element(1, 0), enlarged * m.element(1, 1)));
    return number(Ask(qf_EllipseFromInertiaData(large).geom()));
  } catch (const qcMathError::Singular&) {
    return {};
  }
}

double axisRatio(const Geom& ellipse) { return ellipse.radius2 / ellipse.radius1; }
double eccentricity(const Geom& ellipse) {
  const double ratio = axisRatio(ellipse);
  return std::sqrt((1.0 - ratio) * (1.0 + ratio));
}
double rotation(const Geom& ellipse) { return qcDegree(ellipse.rotation).toDouble(); }

/// The ellipse fitted to the vertices of a single outline or line; nothing if none fits.
std::optional<std::pair<Geom, double>> fitted(const Facts& facts) {
  if (facts.curves.size() != 1) return std::nullopt;
  qcEllipse ellipse;
  double residual = 0.0;
  facts.curves.front().fitEllipse(ellipse, residual);
  if (residual < 0.0) return std::nullopt;
  return std::pair(ellipse.geom(), residual);
}

template <double (*Coordinate)(const qcVector<2>&)>
Value fittedCentre(const Facts& facts) {
  const auto fit = fitted(facts);
  return fit ? number(Coordinate(facts.frame.restored(fit->first.center))) : Value();
}

template <double Geom::*Radius>
Value fittedRadius(const Facts& facts) {
  const auto fit = fitted(facts);
  return fit ? restored(facts, fit->first.*Radius, 1) : Value();
}

Value fittedRotation(const Facts& facts) {
  const auto fit = fitted(facts);
  return fit ? number(rotation(fit->first)) : Value();
}

Value fitResidual(const Facts& facts) {
  const auto fit = fitted(facts);
  return fit ? restored(facts, fit->second, 1) : Value();
}

template <double (*Coordinate)(const qcVector<2>&)>
Value boxCentre(const Facts& facts) {
  return number(Coordinate(facts.frame.restored(facts.box->center)));
}

Value boxLength(const Facts& facts) { return restored(facts, facts.box->length, 1); }
Value boxWidth(const Facts& facts) { return restored(facts, facts.box->width, 1); }
Value boxAngle(const Facts& facts) { return number(facts.box->angle.toDouble()); }

Value rectangularity(const Facts& facts) {
  if (!facts.area) return {};
  return number(*facts.area / (facts.box->length * facts.box->width));
}

Value feretMin(const Facts& facts) { return restored(facts, facts.strip->width, 1); }
Value feretMinAngle(const Facts& facts) { return number(facts.strip->angle.toDouble()); }

template <double (*Coordinate)(const qcVector<2>&)>
Value circleCentre(const Facts& facts) {
  return number(Coordinate(facts.frame.restored(facts.circle->center())));
}

Value circleRadius(const Facts& facts) { return restored(facts, facts.circle->radius(), 1); }

template <double (*Coordinate)(const qcVector<2>&)>
Value inscribedCentre(const Facts& facts) {
  if (!facts.inscribed) return {};
  return number(Coordinate(facts.frame.restored(facts.inscribed->center())));
}

Value inscribedRadius(const Facts& facts) {
  return facts.inscribed ? restored(facts, facts.inscribed->radius(), 1) : Value();
}

Value hullArea(const Facts& facts) { return restored(facts, facts.hull->area, 2); }
Value hullLength(const Facts& facts) { return restored(facts, facts.hull->length, 1); }

Value solidity(const Facts& facts) {
  return facts.area ? number(*facts.area / facts.hull->area) : Value();
}

Value convexity(const Facts& facts) {
  return facts.closed ? number(facts.hull->length / facts.length) : Value();
}

template <std::size_t Number>
Value hu(const Facts& facts) {
  return facts.hu ? number((*facts.hu)[Number - 1]) : Value();
}

Value vertices(const Facts& facts) { return facts.vertices; }
Value holes(const Facts& facts) { return facts.holes; }
Value closed(const Facts& facts) { return facts.closed; }
Value length(const Facts& facts) { return restored(facts, facts.length, 1); }

Value perimeter(const Facts& facts) {
  if (!facts.closed) return {};
  return restored(facts, facts.length + facts.holeLength, 1);
}

Value area(const Facts& facts) {
  if (!facts.closed || facts.isLeftOut) return {};
  return restored(facts, facts.area ? *facts.area : 0.0, 2);
}

Value roundness(const Facts& facts) {
  if (!facts.solidArea) return {};
  return number(4.0 * std::numbers::pi * *facts.solidArea / (facts.length * facts.length));
}

Value left(const Facts& facts) { return facts.extent->low.x(); }
Value top(const Facts& facts) { return facts.extent->low.y(); }
Value width(const Facts& facts) { return number(facts.extent->high.x() - facts.extent->low.x()); }
Value height(const Facts& facts) { return number(facts.extent->high.y() - facts.extent->low.y()); }

Value crossesItself(const Facts& facts) { return facts.crosses ? Value(*facts.crosses) : Value(); }

/// How the rings of an area fail to bound it simply, and the consequence.
std::string contactNote(const Facts& facts) {
  const std::string what = *facts.contact == qcRingContact::eCrosses ? "crosses" : "overlaps";
  return what + (facts.isLeftOut ? ": not measured" : ": measured as filled");
}

Value note(const Facts& facts) {
  std::string text;
  const auto add = [&text](const std::string& more) {
    if (!text.empty()) text += ", ";
    text += more;
  };
  if (facts.closed) {
    if (!isBoundedSimply(*facts.contact)) add(contactNote(facts));
    if (!facts.area && !facts.isLeftOut) add("no area");
  } else {
    add("open");
    if (facts.crosses.value_or(false)) add("crosses itself");
  }
  if (facts.length == 0.0) add("no length");
  return text.empty() ? Value() : Value(text);
}

constexpr auto farthestPair = qcContourDefs::eFarthestVertexPair;
constexpr auto fromFirst = qcContourDefs::eFromFirstVertex;

constexpr Measure measures[] = {
    {"vertices",
     "number of vertices of the outline, not counting a repeated last one or those of holes", 0,
     true, eCounts, vertices, ValueType::eCount},
    {"holes", "number of holes that were taken into account", 0, false, eCounts, holes,
     ValueType::eCount},
    {"closed", "yes for an outline, no for an open line", 0, false, eCounts, closed,
     ValueType::eYesOrNo},
    {"area", "area that is filled, without the holes", 2, true, eFilled, area},
    {"centre_x", "x of the centre of mass", 1, true, eCentre, ofCentre<x>},
    {"centre_y", "y of the centre of mass", 1, true, eCentre, ofCentre<y>},
    {"moment_xx", "second moment, the integral of (x - centre_x)^2 over the area", 4, true,
     eMoments, moment<0, 0>},
    {"moment_xy", "second moment, the integral of (x - centre_x)(y - centre_y) over the area", 4,
     true, eMoments, moment<0, 1>},
    {"moment_yy", "second moment, the integral of (y - centre_y)^2 over the area", 4, true,
     eMoments, moment<1, 1>},
    {"length", "length of the outline or line, without holes", 1, false, eLength, length},
    {"perimeter", "length of all rings, the outline's and those of holes", 1, false, eLength,
     perimeter},
    {"mean_x", "x of the mean position of the outline or line, taken as a wire", 1, false, eCurves,
     ofMeanPosition<x>},
    {"mean_y", "y of the mean position of the outline or line, taken as a wire", 1, false, eCurves,
     ofMeanPosition<y>},
    {"roundness", "4 pi area / length^2 of the outline without its holes; 1 for a disc", 0, true,
     eLength | eSolid, roundness},
    {"equivalent_diameter", "diameter of the disc of the same area", 1, false, eFilled,
     equivalentDiameter},
    {"axis_ratio",
     "ratio of the smaller to the larger axis of the ellipse that has the same second moments", 0,
     false, eMoments, ofMoments<axisRatio>},
    {"eccentricity", "sqrt(1 - axis_ratio^2); 0 for a disc", 0, false, eMoments,
     ofMoments<eccentricity>},
    {"orientation",
     "direction of the larger axis of the ellipse of the same second moments, degrees from the x "
     "axis towards the y axis",
     0, false, eMoments, ofMoments<rotation>},
    {"diameter", "largest distance between two vertices", 1, false, eCurves,
     ofCurve<diameter<farthestPair>>},
    {"first_vertex_diameter", "twice the largest distance of a vertex from the first one", 1, false,
     eCurves, ofCurve<diameter<fromFirst>>},
    {"left", "smallest x", 1, false, eExtent, left},
    {"top", "smallest y", 1, false, eExtent, top},
    {"width", "largest x less the smallest", 1, false, eExtent, width},
    {"height", "largest y less the smallest", 1, false, eExtent, height},
    {"box_x",
     "x of the centre of the smallest rectangle in any direction around the outlines or lines", 1,
     false, eBox, boxCentre<x>},
    {"box_y", "y of the centre of the smallest rectangle", 1, false, eBox, boxCentre<y>},
    {"box_length", "longer side of the smallest rectangle", 1, false, eBox, boxLength},
    {"box_width", "shorter side of the smallest rectangle", 1, false, eBox, boxWidth},
    {"box_angle", "direction of the longer side of the smallest rectangle, degrees in (-90, 90]", 0,
     false, eBox, boxAngle},
    {"rectangularity", "area / (box_length * box_width); 1 for a rectangle", 0, false,
     eFilled | eBox, rectangularity},
    {"feret_min", "smallest distance between two parallel lines that enclose the outlines or lines",
     1, false, eStrip, feretMin},
    {"feret_min_angle", "direction across the two lines of feret_min, degrees in (-90, 90]", 0,
     false, eStrip, feretMinAngle},
    {"circle_x", "x of the centre of the smallest circle around the outlines or lines", 1, false,
     eCircle, circleCentre<x>},
    {"circle_y", "y of the centre of the smallest circle", 1, false, eCircle, circleCentre<y>},
    {"circle_radius", "radius of the smallest circle around the outlines or lines", 1, false,
     eCircle, circleRadius},
    {"inscribed_x", "x of the centre of a largest circle in the area that is filled", 1, false,
     eInscribed, inscribedCentre<x>},
    {"inscribed_y", "y of the centre of a largest circle in the area", 1, false, eInscribed,
     inscribedCentre<y>},
    {"inscribed_radius",
     "radius of a largest circle in the area, at most 1e-6 of the extent too small", 1, false,
     eInscribed, inscribedRadius},
    {"hull_area", "area of the convex hull of the outlines or lines", 2, false, eHull, hullArea},
    {"hull_length", "length of the boundary of the convex hull", 1, false, eHull, hullLength},
    {"solidity", "area / hull_area; 1 for a convex outline", 0, false, eFilled | eHull, solidity},
    {"convexity", "hull_length / length; 1 for a convex outline", 0, false, eLength | eHull,
     convexity},
    {"hu_1", "first of Hu's moment invariants of the area that is filled", 0, false, eHu, hu<1>},
    {"hu_2", "second of Hu's invariants", 0, false, eHu, hu<2>},
    {"hu_3", "third of Hu's invariants", 0, false, eHu, hu<3>},
    {"hu_4", "fourth of Hu's invariants", 0, false, eHu, hu<4>},
    {"hu_5", "fifth of Hu's invariants", 0, false, eHu, hu<5>},
    {"hu_6", "sixth of Hu's invariants", 0, false, eHu, hu<6>},
    {"hu_7", "seventh of Hu's invariants; a mirror image has the opposite sign", 0, false, eHu,
     hu<7>},
    {"ellipse_x", "x of the centre of the ellipse fitted to the vertices (a direct algebraic fit)",
     1, false, eCurves, fittedCentre<x>},
    {"ellipse_y", "y of the centre of the fitted ellipse", 1, false, eCurves, fittedCentre<y>},
    {"ellipse_radius1", "larger radius of the fitted ellipse", 1, false, eCurves,
     fittedRadius<&Geom::radius1>},
    {"ellipse_radius2", "smaller radius of the fitted ellipse", 1, false, eCurves,
     fittedRadius<&Geom::radius2>},
    {"ellipse_rotation",
     "direction of the larger radius of the fitted ellipse, degrees from the x axis towards the y "
     "axis",
     0, false, eCurves, fittedRotation},
    {"ellipse_residual", "root mean square distance of the vertices from the fitted ellipse", 1,
     false, eCurves, fitResidual},
    {"crosses_itself", "yes when an edge of an outline crosses another one, within 1e-6", 0, false,
     eCrossings, crossesItself, ValueType::eYesOrNo},
    {"note", "a remark: open, crosses, overlaps, no area ...", 0, true,
     eFilled | eLength | eLineCrossings, note, ValueType::eText},
};

}  // namespace

std::span<const Measure> allMeasures() { return measures; }

const Measure* measureNamed(std::string_view name) {
  const auto* const found =
      std::find_if(std::begin(measures), std::end(measures),
                   [name](const Measure& measure) { return measure.name == name; });
  return found == std::end(measures) ? nullptr : found;
}

}  // namespace table
