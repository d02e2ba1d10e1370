// SPDX-License-Identifier: MIT
#include <testing/plain/circle.h>

#include <testing/plain/error.h>

namespace plain {

Circle farthestPairCircle(const Points& points) {
  Circle circle;
  double best = 0.0;
  for (const Point& a : points) {
    for (const Point& b : points) {
      const double d = distance(a, b);
      if (d > best) {
        best = d;
        circle = {times(plus(a, b), 0.5), d * 0.5};
      }
    }
  }
  return circle;
}

Circle firstVertexCircle(const Points& points) {
  if (points.empty()) throw Error{Error::emptyContour, ""};
  double radius = 0.0;
  for (const Point& p : points) {
    const double d = distance(points.front(), p);
    if (d > radius) radius = d;
  }
  return {points.front(), radius};
}

Circle encloseCircle(const Points& points, int mode) {
  if (mode == 0) return farthestPairCircle(points);
  if (mode == 1) return firstVertexCircle(points);
  throw Error{Error::badParams, "diameterMode is not one of the valid enums"};
}

double diameter(const Points& points, int mode) { return 2.0 * encloseCircle(points, mode).radius; }

}  // namespace plain
