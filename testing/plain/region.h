// SPDX-License-Identifier: MIT
//
// A region in plain form: an outer boundary, always closed, and holes that are regions. Its moments
// and its answers about points and lines. Repair is in repair.h, sets of regions in set.h.

#pragma once

#include <vector>

#include <testing/plain/edges.h>
#include <testing/plain/moments.h>

namespace plain {

struct Region {
  Points points;
  std::vector<Region> holes;
};

/// Only the outer boundary.
Contour boundary(const Region& region);

/// Throws `emptyContour` below three outer vertices.
void checkEmptyContour(const Region& region);

/// Outer area less that of each hole; holes of holes do not count.
double area(const Region& region, bool considerHoles);

/// The answer to the first question after a change. With holes considered, a region that has holes
/// answers every later question with the value it held before, (0, 0) in a new one.
Point centerOfMass(const Region& region, bool considerHoles);

/// Throws `badParams` when holes are considered and there are some.
Matrix inertiaMatrix(const Region& region, bool considerHoles);

/// Crossings of the outer boundary with a ray from `p` into the first wide gap between the
/// directions to its vertices; with `bothDirections` the smaller of it and the opposite ray's.
/// 0 outside the box, 1 within 1e-6 of a vertex.
long insideCount(const Region& region, const Point& p, bool bothDirections);

/// True for an odd count of the outer boundary and, if holes are considered, inside no hole (with
/// its own holes considered).
bool inside(const Region& region, const Point& p, bool considerHoles);

double distToPoint(const Region& region, const Point& p, bool vertexOnly, bool considerHoles,
                   bool zeroIfInside);

/// Holes always take part in the nearest point, but in the nearest vertex only if considered.
Point closestPoint(const Region& region, const Point& p, bool vertexOnly, bool considerHoles);

/// `hole` is the boundary to which the index belongs, -1 for the outer one.
struct BoundaryVertex {
  long hole;
  long index;
};

BoundaryVertex closestVertexIndex(const Region& region, const Point& p, bool considerHoles);

/// Crossings boundary by boundary, the outer one first.
Points intersections(const Region& region, const Segment& segment, bool countEndpointTouches,
                     bool considerHoles);
Points intersections(const Region& region, const Contour& other, bool considerHoles);

}  // namespace plain
