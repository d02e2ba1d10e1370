// SPDX-License-Identifier: MIT
//
// The library's shapes, made from what a file says. Vertices stay in the file's order, so that the
// library's vertex numbers are the file's.

#pragma once

#include <vector>

#include <cntr/inertia.h>
#include <cntr/regionst.h>
#include <tools/feature.h>

namespace tool {

using RegionHandle = qcPtrHandle_const<qcRegion>;

RegionHandle makeRegion(const Points& outline);
/// The outline with its holes. Throws FeatureError, naming the hole, when one crosses or touches
/// the outline: the library takes no such holes.
qcPtrHandle<qcRegion> makeRegionWithHoles(const Part& part);

/// A new set of new regions, one for each part: none of them has been asked anything yet.
qcRegionSet makeRegionSet(const std::vector<Part>& parts, bool withHoles);

/// The area of a ring, positive when it runs from the x axis towards the y axis.
double signedArea(const Points& ring);
/// The same outline with positive area in the file's coordinates.
Points counterClockwise(const Points& outline);

/// The smallest rectangle around at least two points.
qcRect boxOf(const Points& points);

/// True for an area that has a centre: the library takes what is smaller for a line and puts its
/// centre at (0, 0).
bool isArea(double area);

/// Area, centre and second moments of several outlines together, less their holes if asked for.
/// Outlines may run either way. REQUIRES: parts of outlines, not of lines.
qc_InertiaData inertiaOf(const std::vector<Part>& parts, bool withHoles);

}  // namespace tool
