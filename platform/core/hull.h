// SPDX-License-Identifier: MIT
//
// Convex hull of a point set.

#pragma once

#include <vector>

#include <platform/core/vector.h>

/// @addtogroup fits
/// @{

/// The convex hull of `points`, written to `hull`: counter-clockwise (with y up) from the
/// lowest-leftmost point (smallest x, then smallest y), without duplicates and without points in
/// the middle of an edge. Points that all lie on one line give the two extremes, fewer than three
/// distinct points give themselves, and no points give an empty hull. `hull` may be `points`
/// itself.
///
/// A turn is decided by (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x) in plain doubles: the
/// hull is as exact as that expression. Points with a NaN coordinate are left out.
///
/// O(n log n); A. M. Andrew, "Another efficient algorithm for convex hulls in two dimensions",
/// Information Processing Letters 9 (1979).
QCPLATFORM_EXPORT void qfConvexHull(const std::vector<qcVector<2>>& points,
                                    std::vector<qcVector<2>>& hull);

/// @}
