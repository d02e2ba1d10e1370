// SPDX-License-Identifier: MIT
//
// Shapes brought to coordinates of their own, and asked there.

#include <cntrtable/facts.h>

#include <algorithm>
#include <cmath>
#include <span>

#include <cntr/contourdefs.h>
#include <cntr/plane/path.h>
#include <cntr/regionst.h>
#include <cntrsets/inscribed.h>
#include <cntrsets/sets.h>
#include <platform/core/hull.h>

namespace table {

namespace {

using Point = qcVector<2>;
using Ring = std::vector<Point>;
using cntr::sets::Frame;

/// An area up to this, in local coordinates, is the rounding of sums whose terms are about 1 and
/// have twice a double's digits: that of a line walked there and back.
constexpr double roundingOfSums = 1e-24;

/// How far the radius of the inscribed circle may stay below the largest, where extents are 1 to 2.
constexpr double inscribedTolerance = 1e-6;

std::vector<std::span<const Point>> ringsOf(const std::vector<qcRings>& parts) {
  std::vector<std::span<const Point>> rings;
  for (const qcRings& part : parts) {
    rings.emplace_back(part.outline);
    rings.insert(rings.end(), part.holes.begin(), part.holes.end());
  }
  return rings;
}

void requireFinite(const std::vector<std::span<const Point>>& rings) {
  for (const std::span<const Point>& ring : rings) {
    bool isFinite = true;
    for (const Point& p : ring) isFinite &= std::isfinite(p.x()) && std::isfinite(p.y());
    if (!isFinite) throw qcContourDefs::BadParams(L"a coordinate is not a finite number");
  }
}

Ring localOf(const Ring& ring, const Frame& frame) {
  Ring local;
  local.reserve(ring.size());
  for (const Point& p : ring) local.push_back(frame.local(p));
  return local;
}

std::vector<qcRings> localOf(const std::vector<qcRings>& parts, const Frame& frame) {
  std::vector<qcRings> locals;
  locals.reserve(parts.size());
  for (const qcRings& part : parts) {
    locals.push_back({localOf(part.outline, frame), {}});
    for (const Ring& hole : part.holes) locals.back().holes.push_back(localOf(hole, frame));
  }
  return locals;
}

Extent extentOf(const std::vector<qcRings>& parts) {
  Extent extent{parts.front().outline.front(), parts.front().outline.front()};
  for (const qcRings& part : parts) {
    for (const Point& p : part.outline) {
      extent.low = {std::min(extent.low.x(), p.x()), std::min(extent.low.y(), p.y())};
      extent.high = {std::max(extent.high.x(), p.x()), std::max(extent.high.y(), p.y())};
    }
  }
  return extent;
}

/// The vertices of all outlines.
Ring outlineVertices(const std::vector<qcRings>& parts) {
  Ring vertices;
  for (const qcRings& part : parts)
    vertices.insert(vertices.end(), part.outline.begin(), part.outline.end());
  return vertices;
}

double lengthOf(const Ring& ring, bool closed) {
  double sum = 0.0;
  cntr::plane::forEachEdge({ring, closed},
                           [&sum](const Point& a, const Point& b) { sum += a.distance(b); });
  return sum;
}

/// Twice the area, positive when it runs counter-clockwise.
double doubledArea(const Ring& ring) {
  double sum = 0.0;
  for (std::size_t i = 2; i < ring.size(); ++i) {
    const Point a = ring[i - 1] - ring[0];
    const Point b = ring[i] - ring[0];
    sum += a.x() * b.y() - a.y() * b.x();
  }
  return sum;
}

Hull hullOf(const Ring& points) {
  Ring corners;
  qfConvexHull(points, corners);
  Hull hull{qf_FilledArea({{corners, {}}}, qcRingContact::eTouches), 0.0};
  for (std::size_t i = 0; i < corners.size(); ++i)
    hull.length += corners[i].distance(corners[(i + 1) % corners.size()]);
  return hull;
}

void addCurves(Facts& facts, const std::vector<qcRings>& local, Needs needs) {
  for (const qcRings& part : local) {
    if ((needs & eCurves) != 0U) facts.curves.emplace_back(part.outline, facts.closed, 0);
    if ((needs & eLength) == 0U) continue;
    facts.length += lengthOf(part.outline, facts.closed);
    for (const Ring& hole : part.holes) facts.holeLength += lengthOf(hole, true);
  }
}

void addSurroundings(Facts& facts, const std::vector<qcRings>& local, Needs needs) {
  if ((needs & (eBox | eStrip | eCircle | eHull)) == 0U) return;
  const Ring points = outlineVertices(local);
  if ((needs & eBox) != 0U) facts.box = qf_MinimumAreaRect(points);
  if ((needs & eStrip) != 0U) facts.strip = qf_MinimumWidth(points);
  if ((needs & eCircle) != 0U) facts.circle = qf_MinimumCircle(points);
  if ((needs & eHull) != 0U) facts.hull = hullOf(points);
}

/// Outlines counter-clockwise, holes clockwise.
std::vector<Ring> turnedRings(const std::vector<qcRings>& parts) {
  std::vector<Ring> rings;
  const auto add = [&rings](const Ring& ring, bool isHole) {
    rings.push_back(ring);
    if ((doubledArea(ring) < 0.0) != isHole) std::reverse(rings.back().begin(), rings.back().end());
  };
  for (const qcRings& part : parts) {
    add(part.outline, false);
    for (const Ring& hole : part.holes) add(hole, true);
  }
  return rings;
}

/// Nothing where the shape is too thin.
std::optional<qcCircle> inscribedIn(const std::vector<qcRings>& parts, qcRingContact contact) {
  try {
    const qcCircle circle = qf_InscribedCircle(parts, contact, inscribedTolerance);
    return circle.radius() > 0.0 ? std::optional(circle) : std::nullopt;
  } catch (const qcContourDefs::BadParams&) {
    return std::nullopt;
  }
}

/// The library's own answer, in which its tolerances are absolute.
std::optional<bool> crossesItself(const Shape& shape) {
  if (!shape.closed) {
    if (shape.parts.size() > 1) return std::nullopt;
    return qcContour(shape.parts.front().outline, false, 0).isSelfIntersecting();
  }
  constexpr auto asGiven = qcContourDefs::eNoIntersectionRepair;
  std::vector<qcPtrHandle_const<qcRegion>> outlines;
  for (const qcRings& part : shape.parts)
    outlines.emplace_back(new qcRegion(part.outline, asGiven));
  return qcRegionSet(outlines, asGiven).isSelfIntersecting();
}

double areaWithoutHoles(const qcRings& part, bool isSimple) {
  const std::vector<qcRings> solid{{part.outline, {}}};
  return qf_FilledArea(solid, isSimple ? qcRingContact::eSimple : qf_RingContact(solid));
}

/// Of rings that bound their area simply.
void addAreaAndMoments(Facts& facts, const std::vector<qcRings>& boundary, Needs needs) {
  std::optional<qc_InertiaData> moments;
  if ((needs & eMoments) != 0U) moments = qf_FilledMoments(boundary, qcRingContact::eTouches);
  const double area = moments ? moments->area() : qf_FilledArea(boundary, qcRingContact::eTouches);
  if (!(area > roundingOfSums)) return;
  facts.area = area;
  facts.moments = moments;
}

void addFilled(Facts& facts, const std::vector<qcRings>& parts, const std::vector<qcRings>& local,
               Needs needs, Filling filling) {
  // Of the coordinates as given: local ones have lost what is smallest.
  facts.contact = qf_RingContact(parts);
  const bool simple = isBoundedSimply(*facts.contact);
  facts.isLeftOut = !simple && filling == Filling::eLeftOut;
  if (facts.isLeftOut) return;
  // What bounds the filled set: sums over its rings are those over the set.
  const std::vector<qcRings> united = simple ? std::vector<qcRings>() : qf_Union(local, {});
  const std::vector<qcRings>& boundary = simple ? local : united;
  addAreaAndMoments(facts, boundary, needs);
  if (!facts.area) return;
  if ((needs & eHu) != 0U) facts.hu = qf_HuMoments(turnedRings(boundary));
  if ((needs & eInscribed) != 0U) {
    facts.inscribed = inscribedIn(boundary, simple ? *facts.contact : qcRingContact::eSimple);
  }
  if ((needs & eSolid) == 0U || parts.size() > 1) return;
  facts.solidArea =
      local.front().holes.empty() ? *facts.area : areaWithoutHoles(local.front(), simple);
}

}  // namespace

bool isBoundedSimply(qcRingContact contact) {
  return contact == qcRingContact::eSimple || contact == qcRingContact::eTouches;
}

Facts factsOf(const Shape& shape, Needs needs, Filling filling) {
  const std::vector<std::span<const Point>> rings = ringsOf(shape.parts);
  requireFinite(rings);
  Facts facts(Frame(rings), shape.closed);
  for (const qcRings& part : shape.parts) {
    facts.vertices += part.outline.size();
    facts.holes += part.holes.size();
  }
  const std::vector<qcRings> local = localOf(shape.parts, facts.frame);
  addCurves(facts, local, needs);
  if ((needs & eExtent) != 0U) facts.extent = extentOf(shape.parts);
  addSurroundings(facts, local, needs);
  if ((needs & (eFilled | eMoments | eSolid | eHu | eInscribed)) != 0U && shape.closed)
    addFilled(facts, shape.parts, local, needs, filling);
  if ((needs & (shape.closed ? eCrossings : eCrossings | eLineCrossings)) != 0U)
    facts.crosses = crossesItself(shape);
  return facts;
}

}  // namespace table
