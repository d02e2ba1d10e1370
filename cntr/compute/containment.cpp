// SPDX-License-Identifier: MIT

#include <cntr/compute/containment.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

namespace cntr::compute {

namespace {

bool isWithin(const index::Box& box, const qcVector<2>& p) {
  return p.x() >= box.minX && p.x() <= box.maxX && p.y() >= box.minY && p.y() <= box.maxY;
}

/// The directions from p to the vertices, ascending in [0, 2 pi), what is not a number last;
/// nothing when p is on a vertex.
std::optional<std::vector<double>> anglesToVertices(std::span<const qcVector<2>> points,
                                                    const qcVector<2>& p) {
  constexpr double onVertex = 1e-6;
  std::vector<double> angles;
  angles.reserve(points.size());
  for (const qcVector<2>& vertex : points) {
    const qcVector<2> toVertex = vertex - p;
    if (!(toVertex.len() > onVertex)) return {};
    angles.push_back(toVertex.angle().norm().toDouble());
  }
  std::sort(angles.begin(), angles.end(),
            [](double a, double b) { return a < b || (std::isnan(b) && !std::isnan(a)); });
  return angles;
}

/// The bisector of the first gap above pi / n; the x axis when there is none.
qcVector<2> clearDirection(const std::vector<double>& angles) {
  const double step = std::numbers::pi / static_cast<double>(angles.size());
  for (std::size_t i = 0; i < angles.size(); ++i) {
    const double next = angles[i + 1 < angles.size() ? i + 1 : 0];
    const double gap = qcRadian(next - angles[i]).norm().toDouble();
    if (gap > step) return {1.0, qcRadian(angles[i] + 0.5 * gap)};
  }
  return {1.0, 0.0};
}

}  // namespace

std::size_t rayCrossings(const CrossingTarget& target, double reach, const qcVector<2>& p,
                         bool bothDirections) {
  if (!isWithin(target.bounds, p)) return 0;
  const auto angles = anglesToVertices(target.path.points, p);
  if (!angles) return 1;
  const qcVector<2> ray = clearDirection(*angles) * reach;
  const std::size_t count = crossings(target, p, p + ray, false).size();
  if (!bothDirections) return count;
  return std::min(count, crossings(target, p, p - ray, false).size());
}

}  // namespace cntr::compute
