// SPDX-License-Identifier: MIT
//
// Crossings of a contour with a segment, with another contour and with itself, and the vertices
// within a tolerance of a point.

#pragma once

#include <vector>

#include <testing/plain/contour.h>

namespace plain {

/// An edge as the crossing tests see it. One whose ends coincide within 1e-15 is not valid and
/// keeps the default segment, line and box.
struct Edge {
  Segment segment;
  Line line;
  Box box;
  bool valid = false;
};

std::vector<Edge> crossableEdges(const Contour& contour);

/// Where a segment meets edge number `edge`.
struct Crossing {
  Point point;
  int edge;
};

/// Where `segment` meets the contour, in order along it. Parallel edges never count; edges that
/// touch an end of `segment` count only with `countEndpointTouches`.
std::vector<Crossing> intersections(const Contour& contour, const Segment& segment,
                                    bool countEndpointTouches);

/// Where the edges of `other` meet the contour, edge after edge.
Points intersections(const Contour& contour, const Contour& other);

/// Whether another edge meets some edge anywhere but at the ends of that edge.
bool isSelfIntersecting(const Contour& contour);

/// Vertices nearer to `p` than `tolerance`, in the order of the nine cells of a grid of that size
/// around `p` (by x, then y), ascending within a cell.
std::vector<int> vertexIndex(const Contour& contour, const Point& p, double tolerance);

}  // namespace plain
