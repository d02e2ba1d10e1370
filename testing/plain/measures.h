// SPDX-License-Identifier: MIT
//
// Measures of a contour: length, wire centroid, median edge, nearest point and vertex, outline and
// convex hull.

#pragma once

#include <testing/plain/contour.h>

namespace plain {

/// Sum of the edge lengths; 0 below two vertices.
double length(const Contour& contour);

/// Centroid of the contour as a uniform wire; NaN when every edge has length 0.
Point meanPosition(const Contour& contour);

/// Element n / 2 of the n sorted edge lengths.
double medianFeatureSize(const Contour& contour);

/// The point of the contour (or its vertex) nearest to `p`, the first on ties; (0, 0) if no edge
/// has a finite distance.
Point closestPoint(const Contour& contour, const Point& p, bool vertexOnly);

/// Index of the vertex nearest to `p`, the lowest on ties; 0 if none has a finite distance.
long closestVertexIndex(const Contour& contour, const Point& p);

double distToPoint(const Contour& contour, const Point& p, bool vertexOnly);

/// The vertices, followed by the first one again if the contour is closed.
Points polygon(const Contour& contour);

/// Hull counter-clockwise from the smallest x, then the smallest y, without collinear points;
/// points on one line give the two extremes.
Points convexHull(const Points& points);

/// The hull of a contour's vertices.
Points convexHull(const Contour& contour);

}  // namespace plain
