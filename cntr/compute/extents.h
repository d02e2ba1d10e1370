// SPDX-License-Identifier: MIT
//
// How far vertices reach: their box, and the distance from the first one. Closedness does not
// matter. How far they reach in a direction is answered in extremal.h.

#pragma once

#include <span>

#include <cntr/plane/box.h>
#include <platform/core/xform.h>

namespace cntr::compute {

using Points = std::span<const qcVector<2>>;

/// The box of the vertices: starts as the first one and grows with the others, so that a NaN in the
/// first vertex stays and a later one is ignored. REQUIRES: at least one vertex.
plane::Box boundingBox(Points points);

/// The same for the vertices mapped by `xform`.
plane::Box boundingBox(Points points, const qcXform<2>& xform);

/// True when the translation is within 1e-15 of zero and the matrix within 1e-15 of the identity.
bool isIdentity(const qcXform<2>& xform);

/// The largest distance from the first vertex to another one; 0 for a single vertex.
/// REQUIRES: at least one vertex.
double radiusFromFirst(Points points);

}  // namespace cntr::compute
