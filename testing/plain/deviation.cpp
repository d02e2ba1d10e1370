// SPDX-License-Identifier: MIT
#include <testing/plain/deviation.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

#include <testing/plain/filled.h>

namespace plain {

std::vector<WeighedPoint> pointsAlong(const Contour& contour, double spacing) {
  std::vector<WeighedPoint> points;
  std::vector<double> steps;
  for (const Segment& edge : edgesOf(contour)) {
    const double whole = distance(edge.a, edge.b);
    const double count = std::max(std::ceil(whole / spacing), 1.0);
    for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
      const double share = static_cast<double>(i) / count;
      points.push_back({i == 0 ? edge.a : plus(edge.a, times(minus(edge.b, edge.a), share))});
      steps.push_back(whole / count);
    }
  }
  if (!contour.closed) points.push_back({contour.points.back()});
  for (std::size_t i = 0; i < points.size(); ++i) {
    const bool isFirst = i == 0;
    const double before = isFirst ? (contour.closed ? steps.back() : 0.0) : steps[i - 1];
    const double after = i < steps.size() ? steps[i] : 0.0;
    points[i].weight = (before + after) * 0.5;
  }
  return points;
}

double distanceToCurves(const std::vector<Contour>& contours, const Point& p) {
  double nearest = std::numeric_limits<double>::infinity();
  for (const Contour& contour : contours) {
    if (contour.points.size() == 1) nearest = std::min(nearest, distance(p, contour.points[0]));
    for (const Segment& edge : edgesOf(contour)) nearest = std::min(nearest, distToPoint(edge, p));
  }
  return nearest;
}

Deviation deviation(const std::vector<Contour>& measured, const std::vector<Contour>& nominal,
                    double spacing) {
  Deviation result;
  for (const Contour& contour : nominal) result.isSigned = result.isSigned && contour.closed;
  double weights = 0.0;
  double sum = 0.0;
  double squares = 0.0;
  bool isFirst = true;
  double length = 0.0;
  for (const Contour& contour : measured) {
    for (const Segment& edge : edgesOf(contour)) length += distance(edge.a, edge.b);
  }
  for (const Contour& contour : measured) {
    for (const auto& [at, stretch] : pointsAlong(contour, spacing)) {
      const double weight = length > 0.0 ? stretch : 1.0;
      double d = distanceToCurves(nominal, at);
      int winding = 0;
      for (const Contour& ring : nominal) winding += windingNumber(ring.points, at);
      if (result.isSigned && d > 0.0 && winding != 0) d = -d;
      if (isFirst || d < result.least) {
        result.least = d;
        result.leastAt = at;
      }
      if (isFirst || d > result.greatest) {
        result.greatest = d;
        result.greatestAt = at;
      }
      isFirst = false;
      weights += weight;
      sum += weight * d;
      squares += weight * (d * d);
    }
  }
  result.mean = sum / weights;
  result.rms = std::sqrt(squares / weights);
  return result;
}

double sampledHausdorff(const std::vector<Contour>& a, const std::vector<Contour>& b, double step) {
  double greatest = 0.0;
  for (const Contour& contour : a) {
    for (const WeighedPoint& point : pointsAlong(contour, step)) {
      greatest = std::max(greatest, distanceToCurves(b, point.at));
    }
  }
  for (const Contour& contour : b) {
    for (const WeighedPoint& point : pointsAlong(contour, step)) {
      greatest = std::max(greatest, distanceToCurves(a, point.at));
    }
  }
  return greatest;
}

}  // namespace plain
