// SPDX-License-Identifier: MIT
//
// Brings shapes to local coordinates and finds the facts there.

#include <cntrtable/facts.h>

#include <algorithm>
#include <cmath>
#include <span>

#include <cntr/contourdefs.h>
#include <cntr/plane/box.h>
#include <cntr/regionst.h>
#include <cntrsets/inscribed.h>
#include <cntrsets/operations/filledrings.h>
#include <cntrsets/sets.h>
#include <platform/core/hull.h>

namespace table {

namespace {

using Point = qcVector<2>;
using Ring = std::vector<Point>;
using cntr::plane::Box;
using cntr::sets::AreaAndCentre;
using cntr::sets::Frame;
using cntr::sets::LoneMass;
using cntr::sets::LoneRing;
using cntr::sets::LoneSums;
using cntr::sets::RingList;

/// An area of at most this fraction of the largest product of an x and a y is the rounding of sums
/// of such products with twice a double's digits: that of a line walked there and back.
constexpr double roundingOfSums = 1e-24;

/// How far the radius of the inscribed circle may be below the largest, for extents from 1 to 2.
constexpr double inscribedTolerance = 1e-6;

/// The box of all vertices, whose coordinates are required to be finite.
Box finiteBoxOf(const RingList& list) {
  const Box box = cntr::sets::boxOf(list.rings());
  std::size_t nans = 0;
  for (const std::span<const Point>& ring : list.rings())
    for (const Point& p : ring) nans += std::isnan(p.x()) || std::isnan(p.y()) ? 1U : 0U;
  const bool isEmpty = !(box.minX <= box.maxX);
  const bool isFinite = std::isfinite(box.minX) && std::isfinite(box.maxX) &&
                        std::isfinite(box.minY) && std::isfinite(box.maxY);
  if (nans > 0 || !(isEmpty || isFinite))
    throw qcContourDefs::BadParams(L"a coordinate is not a finite number");
  return box;
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
Ring outlineVertices(const std::vector<qcRings>& parts, const Frame& frame) {
  Ring vertices;
  for (const qcRings& part : parts)
    for (const Point& p : part.outline) vertices.push_back(frame.local(p));
  return vertices;
}

/// In local coordinates.
double lengthOf(const Ring& ring, bool closed, const Frame& frame) {
  double sum = 0.0;
  if (ring.empty()) return sum;
  Point from = frame.local(closed ? ring.back() : ring.front());
  for (std::size_t i = closed ? 0 : 1; i < ring.size(); ++i) {
    const Point to = frame.local(ring[i]);
    sum += from.distance(to);
    from = to;
  }
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

void addLengths(Facts& facts, const std::vector<qcRings>& parts) {
  for (const qcRings& part : parts) {
    facts.length += lengthOf(part.outline, facts.closed, facts.frame);
    for (const Ring& hole : part.holes) facts.holeLength += lengthOf(hole, true, facts.frame);
  }
}

void addCurves(Facts& facts, const std::vector<qcRings>& parts) {
  for (const qcRings& part : parts)
    facts.curves.emplace_back(localOf(part.outline, facts.frame), facts.closed, 0);
}

void addSurroundings(Facts& facts, const std::vector<qcRings>& parts, Needs needs) {
  if ((needs & (eBox | eStrip | eCircle | eHull)) == 0U) return;
  const Ring points = outlineVertices(parts, facts.frame);
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

/// Nothing if the shape is too thin.
std::optional<qcCircle> inscribedIn(const std::vector<qcRings>& parts, qcRingContact contact) {
  try {
    const qcCircle circle = qf_InscribedCircle(parts, contact, inscribedTolerance);
    return circle.radius() > 0.0 ? std::optional(circle) : std::nullopt;
  } catch (const qcContourDefs::BadParams&) {
    return std::nullopt;
  }
}

/// The library's own answer, with its absolute tolerances.
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

/// Sums over the boundary of what is filled.
struct Sums {
  double area = 0.0;
  std::optional<Point> centre;
  std::optional<qc_InertiaData> moments;

  explicit Sums(const std::optional<qc_InertiaData>& record) : moments(record) {
    if (!record) return;
    area = record->area();
    centre = record->centerOfMass();
  }
  explicit Sums(const std::optional<AreaAndCentre>& centroid) {
    if (!centroid) return;
    area = centroid->area;
    centre = centroid->centre;
  }
  explicit Sums(double area_) : area(area_) {}
};

/// For rings that bound their area simply.
Sums sumsOf(const Frame& frame, const RingList& rings, Needs needs) {
  if ((needs & eMoments) != 0U) return Sums(cntr::sets::momentsIn(frame, rings));
  if ((needs & eCentre) != 0U) return Sums(cntr::sets::areaAndCentreIn(frame, rings));
  return Sums(cntr::sets::areaIn(frame, rings));
}

void addSums(Facts& facts, const Sums& sums) {
  if (!(sums.area > roundingOfSums * facts.frame.largestProduct())) return;
  facts.area = sums.area;
  facts.centre = sums.centre;
  facts.moments = sums.moments;
}

/// Adds the facts that are rarely asked for. `boundary` is that of what is filled.
void addRareFacts(Facts& facts, const std::vector<qcRings>& local,
                  const std::vector<qcRings>& boundary, Needs needs) {
  const bool simple = isBoundedSimply(*facts.contact);
  if ((needs & eHu) != 0U) facts.hu = qf_HuMoments(turnedRings(boundary));
  if ((needs & eInscribed) != 0U) {
    facts.inscribed = inscribedIn(boundary, simple ? *facts.contact : qcRingContact::eSimple);
  }
  if ((needs & eSolid) == 0U || local.size() > 1) return;
  facts.solidArea =
      local.front().holes.empty() ? *facts.area : areaWithoutHoles(local.front(), simple);
}

void addFilled(Facts& facts, const std::vector<qcRings>& parts, const RingList& rings,
               const Box& box, Needs needs, Filling filling) {
  // From the coordinates as given: local ones have lost the smallest.
  facts.contact = cntr::sets::contactOf(rings, box);
  const bool simple = isBoundedSimply(*facts.contact);
  facts.isLeftOut = !simple && filling == Filling::eLeftOut;
  if (facts.isLeftOut) return;
  if (simple) {
    addSums(facts, sumsOf(facts.frame, rings, needs));
    if (facts.area && (needs & (eSolid | eHu | eInscribed)) != 0U) {
      const std::vector<qcRings> local = localOf(parts, facts.frame);
      addRareFacts(facts, local, local, needs);
    }
    return;
  }
  const std::vector<qcRings> local = localOf(parts, facts.frame);
  const std::vector<qcRings> united = qf_Union(local, {});
  addSums(facts, Sums(std::optional(qf_FilledMoments(united, qcRingContact::eTouches))));
  if (facts.area) addRareFacts(facts, local, united, needs);
}

/// The facts about how areas are filled.
constexpr Needs ofFilled = eFilled | eCentre | eMoments | eSolid | eHu | eInscribed;

Facts thoroughFactsOf(const Shape& shape, Needs needs, Filling filling) {
  const RingList rings(shape.parts);
  const Box box = finiteBoxOf(rings);
  Facts facts(Frame(box), shape.closed);
  for (const qcRings& part : shape.parts) {
    facts.vertices += part.outline.size();
    facts.holes += part.holes.size();
  }
  if ((needs & eLength) != 0U) addLengths(facts, shape.parts);
  if ((needs & eExtent) != 0U) facts.extent = extentOf(shape.parts);
  if ((needs & ofFilled) != 0U && shape.closed)
    addFilled(facts, shape.parts, rings, box, needs, filling);
  return facts;
}

/// Nothing if one of the smallest or largest coordinates is 0, which may be -0.
std::optional<Extent> extentOf(const Box& box) {
  if (box.minX == 0.0 || box.minY == 0.0 || box.maxX == 0.0 || box.maxY == 0.0) return std::nullopt;
  return Extent{{box.minX, box.minY}, {box.maxX, box.maxY}};
}

/// Adds the facts of a ring that has been read, except for its extent. False, without adding any,
/// if it needs a closer look.
bool addQuickFacts(Facts& facts, LoneRing& ring, Needs needs) {
  const bool withMoments = (needs & eMoments) != 0U;
  const LoneSums sums = ring.sums(facts.frame, withMoments);
  const std::optional<double> length =
      ring.lengthAround(facts.frame.restored(sums.roughCentre()), sums.isCounterclockwise());
  if (!length) return false;
  facts.vertices = ring.size();
  facts.length = *length;
  facts.contact = qcRingContact::eSimple;
  if (const std::optional<LoneMass> mass = massOf(sums, facts.frame, withMoments)) {
    facts.area = mass->area;
    facts.centre = mass->centre;
    facts.moments = mass->moments;
  } else {
    const std::vector<Point> vertices = ring.vertices();
    addSums(facts, sumsOf(facts.frame, RingList(vertices), needs));
  }
  if ((needs & eSolid) != 0U) facts.solidArea = facts.area;
  return true;
}

std::optional<Facts> quickFactsOf(LoneRing& ring, Needs needs) {
  std::optional<Facts> facts(std::in_place, Frame(ring.box()), true);
  if (!addQuickFacts(*facts, ring, needs)) facts.reset();
  return facts;
}

std::optional<Facts> quickFactsOf(const Shape& shape, Needs needs) {
  const bool isLone = shape.parts.size() == 1 && shape.parts.front().holes.empty();
  LoneRing ring;
  if (!isLone || !shape.closed || (needs & ofFilled) == 0U ||
      !ring.read(shape.parts.front().outline))
    return std::nullopt;
  std::optional<Facts> facts = quickFactsOf(ring, needs);
  if (!facts) return std::nullopt;
  if ((needs & eExtent) != 0U) facts->extent = extentOf(shape.parts);
  if (facts->area && (needs & (eHu | eInscribed)) != 0U) {
    const std::vector<qcRings> local = localOf(shape.parts, facts->frame);
    addRareFacts(*facts, local, local, needs);
  }
  return facts;
}

}  // namespace

bool isBoundedSimply(qcRingContact contact) {
  return contact == qcRingContact::eSimple || contact == qcRingContact::eTouches;
}

Facts factsOf(const Shape& shape, Needs needs, Filling filling) {
  std::optional<Facts> quick = quickFactsOf(shape, needs);
  Facts facts = quick ? *std::move(quick) : thoroughFactsOf(shape, needs, filling);
  if ((needs & eCurves) != 0U) addCurves(facts, shape.parts);
  addSurroundings(facts, shape.parts, needs);
  if ((needs & (shape.closed ? eCrossings : eCrossings | eLineCrossings)) != 0U)
    facts.crosses = crossesItself(shape);
  return facts;
}

std::optional<Facts> quickFactsOf(std::span<const double> coordinates, Needs needs,
                                  LoneRing& ring) {
  if (!ring.read(coordinates)) return std::nullopt;
  const std::optional<Extent> extent = extentOf(ring.box());
  if ((needs & eExtent) != 0U && !extent) return std::nullopt;
  std::optional<Facts> facts = quickFactsOf(ring, needs);
  if (facts) facts->extent = extent;
  return facts;
}

}  // namespace table
