// SPDX-License-Identifier: MIT
//
// Geometry from a fuzzer's bytes: vertices, points, segments, transforms, regions and sets, in the
// plain form of testing/plain.

#pragma once

#include <platform/core/xform.h>
#include <testing/plain/set.h>

#include "input.h"

namespace fuzz {

/// Up to `most` vertices, as any bits, on a small grid, off it by about a tolerance, of 16-bit
/// coordinates, at a drawn scale, as a pattern repeated with a shift, or as a shape of
/// testing/shapes/shapes.h.
plain::Points drawVertices(Input& input, std::size_t most);

/// Anywhere, or on, between and just off the vertices `near`.
plain::Point drawPoint(Input& input, const plain::Points& near);

plain::Segment drawSegment(Input& input, const plain::Points& near);

/// In radians: a multiple of a sixteenth of a turn, across two vertices, or any bits.
double drawAngle(Input& input, const plain::Points& near);

/// The identity, a transform of small numbers, or any bits.
qcXform<2> drawXform(Input& input);

double drawTolerance(Input& input);

/// Its holes have holes themselves, with `depth` levels in all.
plain::Region drawRegion(Input& input, std::size_t mostVertices, int depth);

/// Up to `most` regions; some repeat an earlier one at another place.
plain::Regions drawRegions(Input& input, std::size_t most, std::size_t mostVertices);

}  // namespace fuzz
