// SPDX-License-Identifier: MIT
//
// Questions about a contour that probe the limits of its fast paths: ties, segments that graze
// vertices and boxes, directions square to an edge, transforms near the identity. They include
// those of testing/shapes/shapes.h and go beyond them.

#pragma once

#include <platform/core/xform.h>
#include <testing/shapes/shapes.h>

namespace hard {

/// The shape of this seed, up to 300 vertices; now and then spoiled, or too large or too small for
/// the squares of its coordinates.
shapes::Shape shape(std::uint64_t seed, std::size_t maxVertices);

/// A point that is often equally far from several vertices or edges, or touches their boxes.
shapes::Point point(shapes::Random& random, const shapes::Points& points);

/// A segment that often grazes vertices or boxes, is nearly parallel to an edge, or very long.
shapes::Segment segment(shapes::Random& random, const shapes::Points& points);

/// A direction, in radians: along an axis, nearly so, square to an edge, or any.
double angle(shapes::Random& random, const shapes::Points& points);

/// The identity, nearly so, a turn, or any numbers.
qcXform<2> xform(shapes::Random& random);

/// Tolerances for vertexIndex().
double tolerance(shapes::Random& random);

}  // namespace hard
