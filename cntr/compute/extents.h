// SPDX-License-Identifier: MIT
//
// How far vertices reach: in a direction, in a box, from each other. Closedness plays no part.

#pragma once

#include <cstddef>
#include <optional>
#include <span>

#include <cntr/index/box.h>
#include <platform/core/xform.h>

namespace cntr::compute {

using Points = std::span<const qcVector<2>>;

/// The lowest index among the vertices farthest in the direction of `angle`; -1 when no vertex
/// compares greater than the most negative double.
///
/// A direction within 1e-15 of an axis is decided on the bare coordinate, without the rounding of
/// cosine and sine; any other on sin * y + cos * x.
long extremalVertex(Points points, const qcRadian& angle);

/// The box of the vertices: starts as the first one and grows with the others, so that a first
/// coordinate that is not a number stays and a later one is passed over.
/// REQUIRES: at least one vertex.
index::Box boundingBox(Points points);

/// The same of the vertices mapped by `xform`.
index::Box boundingBox(Points points, const qcXform<2>& xform);

/// True when the translation is within 1e-15 of zero and the matrix within 1e-15 of the identity.
bool isIdentity(const qcXform<2>& xform);

/// Two vertices and their distance.
struct VertexPair {
  std::size_t first;
  std::size_t second;
  double distance;
};

/// The pair of vertices with the largest computed distance, the first one in the order (i, j) on
/// ties; nothing when no distance is above 0.
std::optional<VertexPair> farthestPair(Points points);

/// The largest distance from the first vertex to another one; 0 for a single vertex.
/// REQUIRES: at least one vertex.
double radiusFromFirst(Points points);

}  // namespace cntr::compute
