// SPDX-License-Identifier: MIT
//
// The points of contours at which distances from other contours are taken.

#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include <cntr/contour.h>
#include <cntr/plane/path.h>

namespace cntr::model {

/// The paths of those contours that have vertices. Throws BadParams when a coordinate is not
/// finite, EmptyContour when no contour has vertices.
inline std::vector<plane::Path> pathsOf(const std::vector<qcContour>& contours) {
  std::vector<plane::Path> paths;
  for (const qcContour& contour : contours) {
    if (contour.points().empty()) continue;
    paths.push_back({contour.points(), contour.isClosed()});
    for (const qcVector<2>& p : contour.points()) {
      if (!std::isfinite(p.x()) || !std::isfinite(p.y())) {
        throw qcContourDefs::BadParams(L"a coordinate is not finite");
      }
    }
  }
  if (paths.empty()) throw qcContourDefs::EmptyContour();
  return paths;
}

/// An edge of a measured contour, divided into equal steps.
struct Steps {
  plane::Edge edge;
  std::size_t count = 1;
  double length = 0.0;

  Steps(const plane::Edge& of, double spacing) : edge(of) {
    const double whole = edge.from.distance(edge.to);
    const double steps = std::max(std::ceil(whole / spacing), 1.0);
    if (!(steps <= 0x1p31)) throw qcContourDefs::BadParams(L"spacing is too small for the contour");
    count = static_cast<std::size_t>(steps);
    length = whole / steps;
  }

  qcVector<2> at(std::size_t step) const noexcept {
    return edge.from +
           (edge.to - edge.from) * (static_cast<double>(step) / static_cast<double>(count));
  }
};

/// Calls visit(point, length that it stands for) for the points of a path. Each edge contributes
/// its start and the points between its ends.
template <class Visit>
void forEachPoint(const plane::Path& path, double spacing, Visit visit) {
  std::vector<Steps> edges;
  plane::forEachEdge(path, [&](const qcVector<2>& from, const qcVector<2>& to) {
    edges.emplace_back(plane::Edge{from, to}, spacing);
  });
  double before = path.closed ? edges.back().length : 0.0;
  for (const Steps& steps : edges) {
    visit(steps.edge.from, (before + steps.length) * 0.5);
    for (std::size_t i = 1; i < steps.count; ++i) visit(steps.at(i), steps.length);
    before = steps.length;
  }
  if (!path.closed) visit(path.points.back(), before * 0.5);
}

/// Whether two vertices of a path differ.
inline bool haveLength(const std::vector<plane::Path>& paths) {
  return std::any_of(paths.begin(), paths.end(), [](const plane::Path& path) {
    return std::any_of(path.points.begin(), path.points.end(),
                       [&](const qcVector<2>& p) { return p != path.points.front(); });
  });
}

}  // namespace cntr::model
