// SPDX-License-Identifier: MIT
//
// The smallest rectangle, strip and circle around points, by their definitions: every edge of the
// hull, every pair and every triple is tried, in exact numbers, and the answers are the doubles
// nearest to the true ones. Hu's invariants come from exact moments.

#pragma once

#include <array>

#include <testing/plain/circle.h>

namespace plain {

/// The vertices of the convex hull, counter-clockwise from the lowest-leftmost one. O(n^3).
Points exactHull(const Points& points);

struct OrientedRect {
  Point center{0.0, 0.0};
  double length = 0.0;
  double width = 0.0;
  /// In degrees.
  double angle = 0.0;
  std::array<Point, 4> corners{};
};
OrientedRect minimumAreaRect(const Points& points);

struct Width {
  double width = 0.0;
  double angle = 0.0;
};
Width minimumWidth(const Points& points);

/// O(n^4).
Circle minimumCircle(const Points& points);

/// REQUIRES: finite vertices, an area.
std::array<double, 7> huMoments(const std::vector<Points>& rings);

}  // namespace plain
