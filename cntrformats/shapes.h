// SPDX-License-Identifier: MIT
//
// Makes the library's shapes from what a file says; only here is that done. Vertices stay in the
// file's order, so that the library's vertex numbers are those of the file. Every shape is new and
// remembers nothing yet.

#pragma once

#include <optional>
#include <vector>

#include <cntr/regionst.h>
#include <cntrformats/feature.h>

namespace formats {

using ContourHandle = qcPtrHandle_const<qcContour>;
using RegionHandle = qcPtrHandle_const<qcRegion>;

qcPtrHandle<qcContour> makeContour(const Points& points, bool closed);

/// An outline, with its holes if asked for. Throws FeatureError, naming the hole, when one crosses
/// or touches the outline: the library refuses such holes.
qcPtrHandle<qcRegion> makeRegion(const qcRings& part, bool withHoles);

/// A set of regions, one for each part, as `make(part)` gives it. Nothing is repaired.
template <class Make>
qcRegionSet makeRegionSet(const std::vector<qcRings>& parts, const Make& make) {
  std::vector<RegionHandle> regions;
  regions.reserve(parts.size());
  for (const qcRings& part : parts) regions.emplace_back(make(part));
  return {regions, qcContourDefs::eNoIntersectionRepair};
}

/// The smallest rectangle around at least two points.
qcRect boxOf(const Points& points);

struct Place {
  /// The number of the part, from 1; empty in a feature of a single part.
  std::optional<std::size_t> part;
  /// The number of the hole, from 1; empty for an outline or a line.
  std::optional<std::size_t> hole;
};

/// One curve of a feature, and its place in the file.
struct Boundary {
  Place place;
  ContourHandle contour;
};

/// Every outline or line, each followed by its holes.
std::vector<qcContour> curvesOf(const std::vector<qcRings>& parts, bool closed);

/// The same with their places; holes only if asked for.
std::vector<Boundary> boundariesOf(const Geometry& geometry, bool withHoles);

}  // namespace formats
