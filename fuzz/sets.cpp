// SPDX-License-Identifier: MIT
//
// Fuzz target: features of crossing, touching and overlapping rings through repair, set operations
// and offsets, compared point by point with the winding numbers of the definition, and the largest
// circles in them.

#include <cmath>
#include <functional>
#include <vector>

#include <cntr/contourdefs.h>
#include <cntrsets/filled.h>
#include <cntrsets/inscribed.h>
#include <cntrsets/sets.h>
#include <testing/plain/filled.h>

#include "check.h"
#include "input.h"

namespace {

using namespace fuzz;

using Feature = std::vector<qcRings>;
using Points = std::vector<qcVector<2>>;

constexpr std::size_t mostVertices = 24;
/// How far from an edge a point must lie for its answer to be certain, in parts of the largest
/// coordinate.
constexpr double margin = 1e-9;
constexpr double largest = 128.0;

/// On a small grid, so that vertices meet vertices and edges, or anywhere.
Points drawRing(Input& input) {
  const bool onGrid = input.flag();
  Points ring(input.below(mostVertices));
  for (qcVector<2>& p : ring) {
    p = onGrid
            ? qcVector<2>(static_cast<double>(input.below(9)), static_cast<double>(input.below(9)))
            : qcVector<2>(input.small() / 256.0, input.small() / 256.0);
  }
  return ring;
}

Feature drawFeature(Input& input) {
  Feature feature(1 + input.below(3));
  for (qcRings& part : feature) {
    part.outline = drawRing(input);
    for (std::size_t holes = input.below(3); holes > 0; --holes)
      part.holes.push_back(drawRing(input));
  }
  return feature;
}

plain::Parts plainOf(const Feature& feature) {
  plain::Parts parts;
  for (const qcRings& part : feature) parts.push_back({part.outline, part.holes});
  return parts;
}

/// Points beside all vertices: these reach faces wherever there are any.
Points questions(const Feature& feature) {
  Points points;
  const auto add = [&](const Points& ring) {
    for (const qcVector<2>& p : ring) {
      for (const double x : {-0.25, 0.125})
        for (const double y : {-0.375, 0.25}) points.push_back(p + qcVector<2>(x, y));
    }
  };
  for (const qcRings& part : feature) {
    add(part.outline);
    for (const Points& hole : part.holes) add(hole);
  }
  return points;
}

using Holds = std::function<bool(const qcVector<2>&)>;

void requireToHold(const Feature& result, const Feature& input, const Holds& holds,
                   const char* what) {
  const plain::Parts edges = plainOf(input);
  const plain::Parts parts = plainOf(result);
  for (const qcVector<2>& p : questions(input)) {
    if (plain::distanceToRings(edges, p) <= margin * largest) continue;
    require(plain::fills(parts, plain::Rule::evenOdd, p) == holds(p), what);
  }
}

/// Empty if there is no area.
Feature repaired(const Feature& feature, qcPolygon::PolyFillMode rule, qcRepairReport& report) {
  try {
    return qf_MakeValid(feature, rule, &report);
  } catch (const qcContourDefs::BadParams& error) {
    require(error.message() == L"the feature has no area", "a repair is refused");
    return {};
  }
}

void repair(const Feature& feature, qcPolygon::PolyFillMode rule, plain::Rule definition) {
  qcRepairReport report;
  const Feature result = repaired(feature, rule, report);
  const plain::Parts parts = plainOf(feature);
  requireToHold(
      result, feature, [&](const qcVector<2>& p) { return plain::fills(parts, definition, p); },
      "what a repair fills");
  if (result.empty()) return;
  qcRepairReport again;
  require(qf_MakeValid(result, rule, &again) == result, "a second repair changes the first");
  require(!again.changed && !again.repaired, "the report of a second repair");
  require(std::abs(again.area - report.area) <= 1e-12 * report.area, "the areas of both repairs");
  require(qf_RingContact(result) <= qcRingContact::eTouches, "a result that crosses or overlaps");
}

void combine(const Feature& a, const Feature& b) {
  Feature both = a;
  both.insert(both.end(), b.begin(), b.end());
  const plain::Parts partsA = plainOf(a);
  const plain::Parts partsB = plainOf(b);
  const auto inA = [&](const qcVector<2>& p) {
    return plain::fills(partsA, plain::Rule::nonZero, p);
  };
  const auto inB = [&](const qcVector<2>& p) {
    return plain::fills(partsB, plain::Rule::nonZero, p);
  };
  requireToHold(
      qf_Union(a, b), both, [&](const auto& p) { return inA(p) || inB(p); }, "a union");
  requireToHold(
      qf_Intersection(a, b), both, [&](const auto& p) { return inA(p) && inB(p); },
      "an intersection");
  requireToHold(
      qf_Difference(a, b), both, [&](const auto& p) { return inA(p) && !inB(p); }, "a difference");
  requireToHold(
      qf_SymmetricDifference(a, b), both, [&](const auto& p) { return inA(p) != inB(p); },
      "a symmetric difference");
}

/// Grown: everything within the distance is filled, and nothing beyond it. Shrunk: nothing within
/// the distance of the boundary is. Arcs fall short of their circles.
void offset(const Feature& feature, double distance) {
  constexpr double tolerance = 0.05;
  const Feature filled = qf_Union(feature, {});
  const plain::Parts before = plainOf(filled);
  const plain::Parts after = plainOf(qf_Offset(feature, distance, tolerance));
  const double reach = std::abs(distance);
  for (const qcVector<2>& p : questions(feature)) {
    const double away = plain::distanceToRings(before, p);
    if (away > reach - tolerance - 1e-9 && away < reach + tolerance + 1e-9) continue;
    const bool inside = plain::fills(before, plain::Rule::evenOdd, p);
    const bool expected = distance > 0.0 ? inside || away < reach : inside && away > reach;
    require(plain::fills(after, plain::Rule::evenOdd, p) == expected, "an offset");
  }
}

/// The circle reaches the boundary of what is filled, and no point that is tried has room around it
/// for a circle that is larger by more than the tolerance. None of these features is too thin for
/// it.
void inscribe(const Feature& feature) {
  constexpr double tolerance = 0.05;
  const qcCircle circle = qf_InscribedCircle(feature, tolerance);
  const plain::Parts filled = plainOf(qf_Union(feature, {}));
  const auto isInside = [&](const qcVector<2>& p) {
    return plain::fills(filled, plain::Rule::evenOdd, p);
  };
  if (circle.radius() > margin * largest) {
    const double room = plain::distanceToRings(filled, circle.center());
    require(std::abs(room - circle.radius()) <= margin * largest, "the radius of a circle");
    require(isInside(circle.center()), "the centre of a circle");
  }
  const double most = circle.radius() + tolerance + margin * largest;
  for (const qcVector<2>& p : questions(feature))
    require(plain::distanceToRings(filled, p) <= most || !isInside(p), "the largest circle");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input({data, size});
  const Feature a = drawFeature(input);
  repair(a, qcPolygon::eNonZero, plain::Rule::nonZero);
  repair(a, qcPolygon::eEvenOdd, plain::Rule::evenOdd);
  inscribe(a);
  if (input.isEmpty()) return 0;
  offset(a, input.small() / 8192.0);
  combine(a, drawFeature(input));
  return 0;
}
