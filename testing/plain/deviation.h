// SPDX-License-Identifier: MIT
//
// How far curves lie from others, by scanning all edges for every point.

#pragma once

#include <testing/plain/contour.h>

namespace plain {

struct WeighedPoint {
  Point at;
  double weight = 0.0;
};

/// The points of a contour in the order of its edges, at equal steps of at most `spacing` in each,
/// with the length that each stands for.
std::vector<WeighedPoint> pointsAlong(const Contour& contour, double spacing);

struct Deviation {
  double least = 0.0;
  Point leastAt{0.0, 0.0};
  double greatest = 0.0;
  Point greatestAt{0.0, 0.0};
  double mean = 0.0;
  double rms = 0.0;
  bool isSigned = true;
};

/// The smallest distance of p from an edge of the contours; a contour of one vertex is that point.
double distanceToCurves(const std::vector<Contour>& contours, const Point& p);

/// REQUIRES: finite coordinates, vertices in both, a positive spacing.
Deviation deviation(const std::vector<Contour>& measured, const std::vector<Contour>& nominal,
                    double spacing);

/// The largest distance from the other of points at steps of at most `step` along either of the
/// two: at most half a step below the Hausdorff distance.
double sampledHausdorff(const std::vector<Contour>& a, const std::vector<Contour>& b, double step);

}  // namespace plain
