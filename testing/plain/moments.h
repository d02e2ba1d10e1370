// SPDX-License-Identifier: MIT
//
// Area, centre of mass and second moments of polygons. A polygon is its vertices, taken as closed;
// counter-clockwise (y up) has positive signed area.

#pragma once

#include <testing/plain/extents.h>

namespace plain {

/// Signed area, centroid and second moments about the centroid: (0,0) of x, (1,1) of y, (0,1) and
/// (1,0) of the product. The determinant travels with the matrix.
struct Inertia {
  double area = 0.0;
  Point center{0.0, 0.0};
  Matrix matrix;
};

/// Both bodies as one; one of negative area is a hole.
Inertia combine(const Inertia& body, const Inertia& other);

/// Unsigned area.
double area(const Points& points);

/// Where the medians from `a` and from `b` cross.
Point triangleCentroid(const Point& a, const Point& b, const Point& c);

/// Centroid of the area; (0, 0) for up to two vertices or if twice the area is at most 1e-6.
Point centerOfMass(const Points& points);

/// The triangle (-u, 0), (v, 0), (0, h) in that frame.
Inertia baseApexInertia(double u, double v, double h);

/// A triangle with its signed area.
Inertia triangleInertia(const Point& a, const Point& b, const Point& apex);

/// The polygon as a fan of triangles around its centroid; zero below three vertices.
Inertia polygonInertia(const Points& points);

}  // namespace plain
