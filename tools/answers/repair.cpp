// SPDX-License-Identifier: MIT

#include <tools/answers/repair.h>

#include <algorithm>
#include <utility>
#include <vector>

#include <cntr/contourdefs.h>
#include <cntrformats/errors.h>
#include <cntrsets/filled.h>
#include <cntrsets/sets.h>
#include <tools/answers/walk.h>
#include <tools/report/message.h>
#include <tools/report/numbers.h>

namespace tool {

using namespace formats;

namespace {

using Edgelets = std::vector<qcEdgelet>;

Repair failure(const std::string& why, std::optional<double> areaBefore = {}) {
  return {.result = Repair::Result::eFailed, .areaBefore = areaBefore, .note = why};
}

bool hasEdgelets(const Geometry& geometry) {
  return std::any_of(geometry.edgelets.begin(), geometry.edgelets.end(),
                     [](const Edgelets& edgelets) { return !edgelets.empty(); });
}

/// The edge elements of `ring` in the order of `same`, if that is the same ring with another start
/// or direction.
std::optional<Edgelets> reordered(const Edgelets& edgelets, const Points& ring,
                                  const Points& same) {
  const std::size_t n = ring.size();
  if (same.size() != n) return std::nullopt;
  const auto begin =
      static_cast<std::size_t>(std::find(ring.begin(), ring.end(), same.front()) - ring.begin());
  for (const std::size_t step : {std::size_t{1}, n - 1}) {
    std::vector<std::size_t> order(n);
    for (std::size_t k = 0; k < n; ++k) order[k] = (begin + k * step) % n;
    if (!std::equal(order.begin(), order.end(), same.begin(),
                    [&](std::size_t k, const qcVector<2>& p) { return ring[k] == p; }))
      continue;
    Edgelets result;
    for (std::size_t k = 0; k < edgelets.size(); ++k) result.push_back(edgelets[order[k]]);
    return result;
  }
  return std::nullopt;
}

/// The edge elements of the outlines of `before`, moved to the outlines of `after` that are the
/// same rings.
std::vector<Edgelets> reordered(const Geometry& before, const std::vector<qcRings>& after) {
  std::vector<Edgelets> result;
  for (const qcRings& part : after) {
    std::optional<Edgelets> found;
    for (std::size_t i = 0; i < before.parts.size() && !found; ++i)
      found = reordered(before.edgelets[i], before.parts[i].outline, part.outline);
    result.push_back(std::move(found).value_or(Edgelets()));
  }
  return result;
}

Repair filled(const Geometry& geometry, qcPolygon::PolyFillMode rule) {
  qcRepairReport report;
  Geometry result{.multiple = geometry.multiple,
                  .parts = qf_MakeValid(geometry.parts, rule, &report)};
  Repair repair{.areaBefore = report.area, .areaAfter = report.area, .after = extentOf(result)};
  if (report.snapped) repair.snapped = report.gridSize;
  if (report.repaired) {
    repair.result = Repair::Result::eRepaired;
    result.multiple = result.parts.size() > 1;
    if (hasEdgelets(geometry)) repair.note = "edge elements left out";
  } else if (hasEdgelets(geometry)) {
    result.edgelets = reordered(geometry, result.parts);
  }
  if (report.changed) repair.geometry = std::move(result);
  return repair;
}

void note(std::string& text, const std::string& what) { text += (text.empty() ? "" : ", ") + what; }

Repair walked(const Geometry& geometry, WalkRepair::Mode mode) {
  const double areaBefore = qf_FilledMoments(geometry.parts).area();
  if (!(areaBefore > 0.0)) return failure("the feature has no area", areaBefore);
  std::optional<WalkRepair> walk;
  try {
    walk = walkRepaired(geometry, mode);
  } catch (const FeatureError& error) {
    return failure(error.what(), areaBefore);
  }
  if (!walk)
    return {.areaBefore = areaBefore, .areaAfter = areaBefore, .after = extentOf(geometry)};
  Repair repair{.result = Repair::Result::eRepaired,
                .geometry = std::move(walk->geometry),
                .areaBefore = areaBefore};
  repair.after = extentOf(*repair.geometry);
  repair.areaAfter = qf_FilledMoments(repair.geometry->parts).area();
  const std::size_t lost = extentOf(geometry).holes - repair.after->holes;
  if (lost > 0)
    note(repair.note, std::to_string(lost) + (lost == 1 ? " hole" : " holes") + " left out");
  if (hasEdgelets(geometry)) note(repair.note, "edge elements left out");
  if (walk->stillCrosses) note(repair.note, "still crosses itself");
  return repair;
}

Repair repairedBy(RepairRule rule, const Geometry& geometry) {
  switch (rule) {
    case RepairRule::eEvenOdd:
      return filled(geometry, qcPolygon::eEvenOdd);
    case RepairRule::eWalk:
      return walked(geometry, qcContourDefs::eRegularize);
    case RepairRule::eOuterHull:
      return walked(geometry, qcContourDefs::eOuterHull);
    default:
      return filled(geometry, qcPolygon::eNonZero);
  }
}

}  // namespace

Extent extentOf(const Geometry& geometry) {
  Extent extent{.parts = geometry.parts.size()};
  for (const qcRings& part : geometry.parts) {
    extent.vertices += part.outline.size();
    extent.holes += part.holes.size();
    for (const Points& hole : part.holes) extent.vertices += hole.size();
  }
  return extent;
}

Repair repaired(const Geometry& geometry, RepairRule rule, double maxLoss) {
  if (!geometry.closed) return {.after = extentOf(geometry), .note = "open line"};
  try {
    Repair repair = repairedBy(rule, geometry);
    if (repair.result != Repair::Result::eRepaired) return repair;
    // The area of features smaller than about 1e-162 is 0.
    const double loss =
        *repair.areaBefore > 0.0 ? 1.0 - *repair.areaAfter / *repair.areaBefore : 0.0;
    if (loss <= maxLoss) return repair;
    return failure("would lose " + shortNumber(100.0 * loss, 3) + " % of its area",
                   repair.areaBefore);
  } catch (const qcContourDefs::Errors& error) {
    return failure(messageOf(error));
  }
}

}  // namespace tool
