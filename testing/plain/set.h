// SPDX-License-Identifier: MIT
//
// A set of regions in plain form: its measures, its answers about points and its repair. Every
// region stands for a separate object that has not been queried before (see the centre of mass with
// holes in region.h).

#pragma once

#include <vector>

#include <testing/plain/repair.h>

namespace plain {

using Regions = std::vector<Region>;

/// Sum of the areas; 0 for an empty set.
double area(const Regions& regions, bool considerHoles);

/// Centre weighted by area; (0, 0) where the total is at most 1e-15. Throws `emptyRegionSet`.
Point centerOfMass(const Regions& regions, bool considerHoles);

/// Second moments of all regions as one body. Throws `emptyRegionSet`.
Matrix inertiaMatrix(const Regions& regions, bool considerHoles);

bool inside(const Regions& regions, const Point& p, bool considerHoles);

/// Smallest of the distances; infinity if none is finite. Throws `emptyRegionSet`.
double distToPoint(const Regions& regions, const Point& p, bool vertexOnly, bool considerHoles,
                   bool zeroIfInside);

/// Whether an outer boundary crosses itself or meets another.
bool isSelfIntersecting(const Regions& regions);

/// The smallest box around all mapped outer boundaries. Throws `emptyRegionSet`.
Box encloseRect(const Regions& regions, const Transform& transform);

/// The set itself when nothing crosses, else crossing regions joined in one pass over the pairs and
/// each result repaired.
Regions regularize(const Regions& regions);
Regions outerHull(const Regions& regions);

}  // namespace plain
