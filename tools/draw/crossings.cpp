// SPDX-License-Identifier: MIT

#include <tools/draw/crossings.h>

#include <algorithm>
#include <utility>

#include <cntrformats/shapes.h>
#include <tools/draw/box.h>
#include <tools/draw/squares.h>

namespace tool {

using namespace formats;

namespace {

/// The crossings found so far, one for each square.
class Found {
 public:
  explicit Found(double size) : squares_(size) {}

  void add(const Points& points) {
    for (const qcVector<2>& p : points) {
      if (squares_.take(p)) points_.push_back(p);
    }
  }

  Points sorted() && {
    std::sort(points_.begin(), points_.end(), [](const qcVector<2>& a, const qcVector<2>& b) {
      return std::pair(a.x(), a.y()) < std::pair(b.x(), b.y());
    });
    return std::move(points_);
  }

 private:
  Squares squares_;
  Points points_;
};

/// The crossings of each edge of `curve` with `other`.
void addCrossings(const qcContour& curve, const qcContour& other, bool withTouches, Found& found) {
  const Points& points = curve.points();
  for (std::size_t i = curve.isClosed() ? 0 : 1; i < points.size(); ++i) {
    const qcLineSeg edge(points[i == 0 ? points.size() - 1 : i - 1], points[i]);
    found.add(other.intersections(edge, withTouches));
  }
}

}  // namespace

Points crossingsOf(const Geometry& geometry, double size) {
  const std::vector<Boundary> curves = boundariesOf(geometry, true);
  std::vector<Box> boxes;
  boxes.reserve(curves.size());
  for (const Boundary& curve : curves) boxes.push_back(boxAround(curve.contour->points()));
  Found found(size);
  for (std::size_t i = 0; i < curves.size(); ++i) {
    const qcContour& curve = *curves[i].contour;
    // Touches at an edge's own ends do not count here.
    if (curve.isSelfIntersecting()) addCrossings(curve, curve, false, found);
    for (std::size_t j = i + 1; j < curves.size(); ++j) {
      if (boxes[i].meets(boxes[j])) addCrossings(*curves[j].contour, curve, true, found);
    }
  }
  return std::move(found).sorted();
}

}  // namespace tool
