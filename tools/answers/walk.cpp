// SPDX-License-Identifier: MIT

#include <tools/answers/walk.h>

#include <utility>

#include <cntrformats/errors.h>
#include <cntrformats/shapes.h>

namespace tool {

using namespace formats;

namespace {

using Regions = std::vector<RegionHandle>;

constexpr std::size_t extraPasses = 2;
constexpr std::size_t fewestVertices = 3;

/// An outline that crosses itself loses its holes anyway, so only the holes of the others are
/// taken.
RegionHandle regionOf(const qcRings& part) {
  const RegionHandle outline = makeRegion(part, false);
  return outline->isSelfIntersecting() ? outline : makeRegion(part, true);
}

qcRegionSet repairedOnce(const qcRegionSet& set, qcContourDefs::IntersectionMode mode) {
  qcRegionSet result(Regions(), qcContourDefs::eNoIntersectionRepair);
  if (mode == qcContourDefs::eOuterHull) {
    set.outerHull(result);
  } else {
    set.regularize(result);
  }
  return result;
}

/// Each pass merges outlines in pairs, so after as many passes as there are outlines nothing is
/// left to merge; a few more help if vertices lie on other edges. When a pass fails, the result of
/// the one before it stays.
qcRegionSet repairedSet(const qcRegionSet& set, qcContourDefs::IntersectionMode mode) {
  qcRegionSet result = repairedOnce(set, mode);
  const std::size_t passes = set.regions().size() + extraPasses;
  try {
    for (std::size_t k = 1; k < passes && result.isSelfIntersecting(); ++k) {
      result = repairedOnce(result, mode);
    }
  } catch (const qcContourDefs::Errors&) {
    return result;
  }
  return result;
}

qcRings partOf(const qcRegion& region) {
  qcRings part{region.points(), {}};
  for (const auto& hole : region.holes()) part.holes.push_back(hole->points());
  return part;
}

/// Throws FeatureError when nothing is left of an outline.
Geometry geometryOf(const qcRegionSet& set) {
  Geometry geometry;
  for (const RegionHandle& region : set.regions()) {
    if (region->points().size() < fewestVertices) {
      throw FeatureError("cannot be repaired: its edges overlap and bound nothing");
    }
    geometry.parts.push_back(partOf(*region));
  }
  return geometry;
}

}  // namespace

std::optional<WalkRepair> walkRepaired(const Geometry& geometry, WalkRepair::Mode mode) {
  const qcRegionSet set = makeRegionSet(geometry.parts, regionOf);
  if (!set.isSelfIntersecting()) return std::nullopt;
  try {
    const qcRegionSet result = repairedSet(set, mode);
    return WalkRepair{geometryOf(result), result.isSelfIntersecting()};
  } catch (const qcContourDefs::BadParams&) {
    throw FeatureError(
        "cannot be repaired: every edge is crossed, or no walk along them comes back to its start");
  }
}

}  // namespace tool
