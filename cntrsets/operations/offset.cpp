// SPDX-License-Identifier: MIT
//
// Moves edges sideways and joins them.

#include <cntrsets/operations/offset.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace cntr::sets {
namespace {

/// The unit vector to the right of the direction from a to b.
Point rightOf(const Point& a, const Point& b) {
  const Point along = b - a;
  const double length = std::hypot(along.x(), along.y());
  return {along.y() / length, -along.x() / length};
}

/// The angle from `a` to `b`, both of length 1, in [-pi, pi].
double turn(const Point& a, const Point& b) {
  return std::atan2(a.x() * b.y() - a.y() * b.x(), a.x() * b.x() + a.y() * b.y());
}

/// The largest angle whose chord stays within the tolerance of its arc.
double chordAngle(double distance, double arcTolerance) {
  const double share = std::clamp(arcTolerance / std::abs(distance), 1e-8, 0.25);
  return 2.0 * std::acos(1.0 - share);
}

/// The vertices of the arc around `middle` between the ends of two radii.
void appendArc(std::vector<Point>& curve, const Point& middle, const Point& from, const Point& to,
               double distance, double largestStep) {
  const double angle = turn(from, to);
  const int steps = static_cast<int>(std::ceil(std::abs(angle) / largestStep));
  for (int i = 1; i < steps; ++i) {
    const double part = angle * i / steps;
    const Point radius(from.x() * std::cos(part) - from.y() * std::sin(part),
                       from.x() * std::sin(part) + from.y() * std::cos(part));
    curve.push_back(middle + radius * distance);
  }
}

}  // namespace

std::vector<Point> offsetCurve(std::span<const Point> ring, double distance, double arcTolerance) {
  const double largestStep = chordAngle(distance, arcTolerance);
  const int gapTurn = distance > 0.0 ? 1 : -1;
  std::vector<Point> curve;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const Point& before = ring[i == 0 ? ring.size() - 1 : i - 1];
    const Point& vertex = ring[i];
    const Point& after = ring[i + 1 == ring.size() ? 0 : i + 1];
    const Point from = rightOf(before, vertex);
    const Point to = rightOf(vertex, after);
    const int side = orientation(before, vertex, after);
    curve.push_back(vertex + from * distance);
    if (side == gapTurn)
      appendArc(curve, vertex, from, to, distance, largestStep);
    else if (side == -gapTurn)
      curve.push_back(vertex);
    curve.push_back(vertex + to * distance);
  }
  return curve;
}

}  // namespace cntr::sets
