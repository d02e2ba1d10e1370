// SPDX-License-Identifier: MIT
//
// Lines and rings with no more vertices than can be seen.

#pragma once

#include <cntrformats/feature.h>
#include <tools/draw/box.h>

namespace tool {

/// A line through some of the vertices, including the first and the last, such that no vertex left
/// out is farther than `tolerance` from it. O(n).
formats::Points thinnedLine(const formats::Points& points, double tolerance);
/// The same for a ring, which is closed by the edge from its last vertex to its first. A ring
/// smaller than the tolerance becomes a single vertex.
formats::Points thinnedRing(const formats::Points& points, double tolerance);

/// The part of a line or ring inside the box. What is outside follows the border instead, so that a
/// ring winds around every point inside the box as before.
formats::Points clippedLine(const formats::Points& points, const Box& box);
formats::Points clippedRing(const formats::Points& points, const Box& box);

}  // namespace tool
