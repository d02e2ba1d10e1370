// SPDX-License-Identifier: MIT

#include <tools/draw/crossings.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

#include <cntrformats/shapes.h>

namespace tool {

using namespace formats;

namespace {

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
  const qcRect boxA = a.encloseRect(qcXform<2>::I);
  const qcRect boxB = b.encloseRect(qcXform<2>::I);
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
  const std::vector<Boundary> curves = boundariesOf(geometry, true);
  Thinned found(size);
  for (std::size_t i = 0; i < curves.size(); ++i) {
    const qcContour& curve = *curves[i].contour;
    found.add(crossingsWithin(curve));
    for (std::size_t j = i + 1; j < curves.size(); ++j) {
      const qcContour& other = *curves[j].contour;
      if (mayMeet(curve, other)) found.add(curve.intersections(other));
    }
  }
  return found.points();
}

}  // namespace tool
