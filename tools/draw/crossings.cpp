// SPDX-License-Identifier: MIT

#include <tools/draw/crossings.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

#include <cntr/contour.h>
#include <tools/shapes.h>

namespace tool {

namespace {

std::vector<qcContour> curvesOf(const Geometry& geometry) {
  std::vector<qcContour> curves;
  for (const Part& part : geometry.parts) {
    curves.emplace_back(part.outline, geometry.closed, 0);
    for (const Points& hole : part.holes) curves.emplace_back(hole, true, 0);
  }
  return curves;
}

/// Edge by edge, each away from its own ends.
Points crossingsWithin(const qcContour& curve) {
  if (!curve.isSelfIntersecting()) return {};
  const Points& points = curve.points();
  Points found;
  for (std::size_t i = curve.isClosed() ? 0 : 1; i < points.size(); ++i) {
    const qcLineSeg edge(points[i == 0 ? points.size() - 1 : i - 1], points[i]);
    const Points crossings = curve.intersections(edge, false);
    found.insert(found.end(), crossings.begin(), crossings.end());
  }
  return found;
}

bool mayMeet(const qcContour& a, const qcContour& b) {
  const qcRect boxA = boxOf(a.points());
  const qcRect boxB = boxOf(b.points());
  return boxA.ul().x() <= boxB.lr().x() && boxB.ul().x() <= boxA.lr().x() &&
         boxA.ul().y() <= boxB.lr().y() && boxB.ul().y() <= boxA.lr().y();
}

/// One point for each square of the grid.
class Thinned {
 public:
  explicit Thinned(double size) : size_(size) {}

  void add(const Points& points) {
    for (const qcVector<2>& p : points) {
      cells_.emplace(std::pair(std::round(p.x() / size_), std::round(p.y() / size_)), p);
    }
  }

  Points points() const {
    Points points;
    for (const auto& [cell, point] : cells_) points.push_back(point);
    return points;
  }

 private:
  double size_;
  std::map<std::pair<double, double>, qcVector<2>> cells_;
};

}  // namespace

Points crossingsOf(const Geometry& geometry, double size) {
  const std::vector<qcContour> curves = curvesOf(geometry);
  Thinned found(size);
  for (std::size_t i = 0; i < curves.size(); ++i) {
    found.add(crossingsWithin(curves[i]));
    for (std::size_t j = i + 1; j < curves.size(); ++j) {
      if (mayMeet(curves[i], curves[j])) found.add(curves[i].intersections(curves[j]));
    }
  }
  return found.points();
}

}  // namespace tool
