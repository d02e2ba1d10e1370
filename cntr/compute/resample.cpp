// SPDX-License-Identifier: MIT

#include <cntr/compute/resample.h>

namespace cntr::compute {

namespace {

using Point = qcVector<2>;

/// The end of the edge that begins at vertex i; the last vertex is followed by the first.
const Point& after(const plane::Path& path, std::size_t i) noexcept {
  return path.points[i + 1 == path.points.size() ? 0 : i + 1];
}

}  // namespace

double lengthFromStart(const plane::Path& path) noexcept {
  double length = 0.0;
  for (std::size_t i = 0; i < path.edgeCount(); ++i) {
    length += path.points[i].distance(after(path, i));
  }
  return length;
}

std::vector<qcVector<2>> pointsAtSteps(const plane::Path& path, double length, std::size_t steps) {
  std::vector<Point> points{path.points.front()};
  points.reserve(steps + 1);
  std::size_t edge = 0;
  double passed = 0.0;
  double here = path.points[0].distance(after(path, 0));
  for (std::size_t i = 1; i < steps; ++i) {
    const double target = length * (static_cast<double>(i) / static_cast<double>(steps));
    // Ends at the last edge or before: the length was added up in the same way, and no target is
    // greater.
    while (passed + here < target) {
      passed += here;
      ++edge;
      here = path.points[edge].distance(after(path, edge));
    }
    const Point& from = path.points[edge];
    points.push_back(from + (after(path, edge) - from) * ((target - passed) / here));
  }
  if (!path.closed) points.push_back(path.points.back());
  return points;
}

}  // namespace cntr::compute
