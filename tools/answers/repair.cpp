// SPDX-License-Identifier: MIT

#include <tools/answers/repair.h>

#include <cntr/inertia.h>
#include <cntrformats/errors.h>
#include <cntrformats/shapes.h>
#include <tools/report/numbers.h>

namespace tool {

using namespace formats;

namespace {

using Regions = std::vector<RegionHandle>;

constexpr std::size_t extraPasses = 2;
constexpr std::size_t fewestVertices = 3;

/// An outline that crosses itself loses its holes anyway: only those of others are asked for.
RegionHandle regionOf(const qcRings& part) {
  const RegionHandle outline = makeRegion(part, false);
  return outline->isSelfIntersecting() ? outline : makeRegion(part, true);
}

qcRegionSet setOf(const Geometry& geometry) {
  Regions regions;
  for (const qcRings& part : geometry.parts) regions.push_back(regionOf(part));
  return {regions, qcContourDefs::eNoIntersectionRepair};
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

/// Each pass merges outlines in pairs, so more passes than outlines merge nothing more; a few more
/// help where vertices lie on other edges. A pass that fails leaves what the one before it made.
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

struct Size {
  std::size_t parts = 0;
  std::size_t vertices = 0;
  std::size_t holes = 0;
  std::size_t edgelets = 0;
  double area = 0.0;
};

Size sizeOf(const Geometry& geometry) {
  Size size{geometry.parts.size()};
  for (const qcRings& part : geometry.parts) {
    size.vertices += part.outline.size();
    size.holes += part.holes.size();
    size.area += qf_Area(part.outline);
  }
  for (const auto& edgelets : geometry.edgelets) size.edgelets += edgelets.size();
  return size;
}

std::string change(const char* what, const std::string& before, const std::string& after) {
  return std::string(what) + " " + before + " -> " + after;
}

std::string accountOf(const Size& before, const Size& after, bool stillCrosses) {
  std::string text = "repaired: ";
  if (before.parts > 1) {
    text += change("parts", std::to_string(before.parts), std::to_string(after.parts)) + ", ";
  }
  text += change("vertices", std::to_string(before.vertices), std::to_string(after.vertices));
  text += ", " + change("area", shortNumber(before.area, 6), shortNumber(after.area, 6));
  const std::size_t lost = before.holes - after.holes;
  if (lost > 0)
    text += ", " + std::to_string(lost) + (lost == 1 ? " hole" : " holes") + " left out";
  if (before.edgelets > 0) text += ", edgelets left out";
  return text + (stillCrosses ? ", still crosses itself" : "");
}

}  // namespace

Repair repaired(const Geometry& geometry, qcContourDefs::IntersectionMode mode) {
  if (!geometry.closed) return {std::nullopt, "unchanged: open"};
  const qcRegionSet set = setOf(geometry);
  if (!set.isSelfIntersecting()) return {std::nullopt, "unchanged: does not cross itself"};
  try {
    const qcRegionSet result = repairedSet(set, mode);
    const Geometry outlines = geometryOf(result);
    return {outlines, accountOf(sizeOf(geometry), sizeOf(outlines), result.isSelfIntersecting())};
  } catch (const qcContourDefs::BadParams&) {
    throw FeatureError(
        "cannot be repaired: every edge is crossed, or no walk along them comes back to its start");
  }
}

}  // namespace tool
