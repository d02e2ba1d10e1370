// SPDX-License-Identifier: MIT

#include <cntr/compute/curves.h>

#include <limits>

#include <cntr/plane/orientation.h>
#include <platform/core/kernels.h>

namespace cntr::compute {

namespace {

std::vector<plane::Edge> edgesOf(std::span<const plane::Path> paths) {
  std::vector<plane::Edge> edges;
  for (const plane::Path& path : paths) {
    if (path.points.size() == 1) edges.push_back({path.points.front(), path.points.front()});
    if (path.points.size() < 2) continue;
    plane::forEachEdge(path, [&](const qcVector<2>& from, const qcVector<2>& to) {
      edges.push_back({from, to});
    });
  }
  return edges;
}

std::vector<plane::Box> boxesOf(const std::vector<plane::Edge>& edges) {
  std::vector<plane::Box> boxes;
  boxes.reserve(edges.size());
  for (const plane::Edge& edge : edges) boxes.push_back(plane::edgeBox(edge.from, edge.to));
  return boxes;
}

}  // namespace

Curves::Curves(std::span<const plane::Path> paths)
    : edges_(edgesOf(paths)), tree_(boxesOf(edges_)) {}

Curves::Nearest Curves::nearest(const qcVector<2>& p) const {
  Nearest nearest{0, std::numeric_limits<double>::infinity()};
  double limit = nearest.distance;
  tree_.forEachByDistance(
      p, [&] { return limit; },
      [&](std::size_t i) {
        const double distance = qnKernel::distanceToSegment(p, edges_[i].from, edges_[i].to);
        if (!(distance < nearest.distance)) return;
        nearest = {i, distance};
        // The box of a nearer edge is not farther than this, in spite of rounding: it holds the
        // computed nearest point of the edge.
        limit = distance * distance;
      });
  return nearest;
}

int Curves::windingNumber(const qcVector<2>& p) const {
  int number = 0;
  const plane::Box ray{p.x(), p.y(), std::numeric_limits<double>::infinity(), p.y()};
  tree_.forEachTouching(ray, [&](std::size_t i) {
    const auto& [from, to] = edges_[i];
    const bool rises = from.y() <= p.y() && p.y() < to.y();
    const bool falls = to.y() <= p.y() && p.y() < from.y();
    if (rises && plane::orientation(from, to, p) > 0) ++number;
    if (falls && plane::orientation(from, to, p) < 0) --number;
    return true;
  });
  return number;
}

}  // namespace cntr::compute
