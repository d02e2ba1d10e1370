// SPDX-License-Identifier: MIT
//
// The rules of the set operations. Faces and their boundaries are found in faces/.

#include <cntrsets/sets.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include <cntr/contourdefs.h>
#include <cntrsets/faces/filledset.h>
#include <cntrsets/operations/offset.h>
#include <cntrsets/operations/ringlist.h>

namespace {

using cntr::sets::FilledSet;
using cntr::sets::Point;
using cntr::sets::RingList;
using cntr::sets::Rule;
using cntr::sets::Winding;
using cntr::sets::Windings;
using Feature = std::vector<qcRings>;

int sumOf(const Windings& windings) {
  return std::accumulate(windings.begin(), windings.end(), 0,
                         [](int sum, const Winding& winding) { return sum + winding.times; });
}

Rule ruleOf(const RingList& list, qcPolygon::PolyFillMode rule) {
  if (rule == qcPolygon::eEvenOdd)
    return [](const Windings& windings) { return sumOf(windings) % 2 != 0; };
  return [&list](const Windings& windings) { return list.fills(0, windings); };
}

/// The faces that `keeps(in a, in b)` accepts.
template <class Keeps>
Feature combined(const Feature& a, const Feature& b, Keeps keeps) {
  const RingList list(a, b);
  return cntr::sets::filledSet(list.rings(),
                               [&](const Windings& windings) {
                                 return keeps(list.fills(0, windings), list.fills(1, windings));
                               })
      .parts;
}

bool isBefore(const Point& a, const Point& b) {
  return a.x() != b.x() ? a.x() < b.x() : a.y() < b.y();
}

bool ringIsBefore(const std::vector<Point>& a, const std::vector<Point>& b) {
  return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(), isBefore);
}

/// Starts the ring at its lowest-leftmost vertex, in the direction with the lower second vertex.
void straighten(std::vector<Point>& ring) {
  if (ring.empty()) return;
  std::rotate(ring.begin(), std::min_element(ring.begin(), ring.end(), isBefore), ring.end());
  if (isBefore(ring.back(), ring[1 % ring.size()])) std::reverse(ring.begin() + 1, ring.end());
}

/// Gives the same for features that differ only in the start and winding of rings and in the
/// order of parts and holes.
Feature straightened(Feature feature) {
  for (qcRings& part : feature) {
    straighten(part.outline);
    for (std::vector<Point>& hole : part.holes) straighten(hole);
    std::sort(part.holes.begin(), part.holes.end(), ringIsBefore);
  }
  std::sort(feature.begin(), feature.end(),
            [](const qcRings& a, const qcRings& b) { return ringIsBefore(a.outline, b.outline); });
  return feature;
}

double lengthOf(std::span<const Point> ring) {
  double length = 0.0;
  for (std::size_t i = 0; i < ring.size(); ++i)
    length += ring[i].distance(ring[i == 0 ? ring.size() - 1 : i - 1]);
  return length;
}

qcRepairReport reportOf(const Feature& feature, const RingList& list, const FilledSet& filled) {
  qcRepairReport report;
  report.changed = feature != filled.parts;
  report.repaired = report.changed && straightened(feature) != straightened(filled.parts);
  report.snapped = filled.grid > 0.0;
  report.gridSize = filled.grid;
  for (const std::span<const Point>& ring : list.rings()) {
    report.verticesBefore += ring.size();
    report.areaError += lengthOf(ring) * filled.moved;
  }
  report.area = filled.area;
  report.parts = filled.parts.size();
  for (const qcRings& part : filled.parts) {
    report.verticesAfter += part.outline.size();
    report.holes += part.holes.size();
    for (const std::vector<Point>& hole : part.holes) report.verticesAfter += hole.size();
  }
  return report;
}

}  // namespace

std::vector<qcRings> qf_MakeValid(const std::vector<qcRings>& feature, qcPolygon::PolyFillMode rule,
                                  qcRepairReport* report) {
  const RingList list(feature);
  FilledSet filled = cntr::sets::filledSet(list.rings(), ruleOf(list, rule));
  if (filled.parts.empty()) throw qcContourDefs::BadParams(L"the feature has no area");
  if (report != nullptr) *report = reportOf(feature, list, filled);
  return std::move(filled.parts);
}

std::vector<qcRings> qf_Union(const std::vector<qcRings>& a, const std::vector<qcRings>& b) {
  return combined(a, b, [](bool inA, bool inB) { return inA || inB; });
}

std::vector<qcRings> qf_Intersection(const std::vector<qcRings>& a, const std::vector<qcRings>& b) {
  return combined(a, b, [](bool inA, bool inB) { return inA && inB; });
}

std::vector<qcRings> qf_Difference(const std::vector<qcRings>& a, const std::vector<qcRings>& b) {
  return combined(a, b, [](bool inA, bool inB) { return inA && !inB; });
}

std::vector<qcRings> qf_SymmetricDifference(const std::vector<qcRings>& a,
                                            const std::vector<qcRings>& b) {
  return combined(a, b, [](bool inA, bool inB) { return inA != inB; });
}

std::vector<qcRings> qf_Offset(const std::vector<qcRings>& feature, double distance,
                               double arcTolerance) {
  if (!std::isfinite(distance))
    throw qcContourDefs::BadParams(L"the distance is not a finite number");
  if (!(arcTolerance > 0.0)) throw qcContourDefs::BadParams(L"the arc tolerance must be above 0");
  const Feature none;
  Feature filled = qf_Union(feature, none);
  if (distance == 0.0) return filled;

  std::vector<std::vector<Point>> curves;
  for (const qcRings& part : filled) {
    curves.push_back(cntr::sets::offsetCurve(part.outline, distance, arcTolerance));
    for (const std::vector<Point>& hole : part.holes)
      curves.push_back(cntr::sets::offsetCurve(hole, distance, arcTolerance));
  }
  const std::vector<std::span<const Point>> rings(curves.begin(), curves.end());
  return cntr::sets::filledSet(rings, [](const Windings& windings) { return sumOf(windings) > 0; })
      .parts;
}
