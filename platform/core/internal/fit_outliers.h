// SPDX-License-Identifier: MIT
//
// Leaving points out of a fit (internal to the fits), as the parameters `count` and `threshold`
// say.

#pragma once

#include <algorithm>
#include <utility>

#include <platform/core/internal/fit_frame.h>

namespace qnFit {

/// Fits all points, then leaves out the one farthest from the curve and fits again, as long as that
/// one is farther than `threshold`, fewer than `count` are left out and more than `atLeast` remain.
/// `fitOnce(points)` gives a fit with distance(point).
template <class FitOnce>
auto fitWithoutOutliers(Points points, unsigned long count, double threshold, std::size_t atLeast,
                        FitOnce fitOnce) {
  auto fit = fitOnce(points);
  for (; count > 0 && points.size() > atLeast; --count) {
    std::vector<double> distances(points.size());
    std::transform(points.begin(), points.end(), distances.begin(),
                   [&fit](const Point& p) { return fit.distance(p); });
    const auto farthest = std::max_element(distances.begin(), distances.end());
    if (!(*farthest > threshold)) break;
    points.erase(points.begin() + (farthest - distances.begin()));
    fit = fitOnce(std::as_const(points));
  }
  return fit;
}

/// Root mean square distance of the points to the curve of `fit`.
template <class Fit>
double rootMeanSquareDistance(const Fit& fit, const Points& points) {
  double sum = 0.0;
  for (const Point& p : points) {
    const double distance = fit.distance(p);
    sum += distance * distance;
  }
  return std::sqrt(sum / static_cast<double>(points.size()));
}

}  // namespace qnFit
