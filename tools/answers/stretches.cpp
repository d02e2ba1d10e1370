// SPDX-License-Identifier: MIT

#include <tools/answers/stretches.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

#include <cntrformats/shapes.h>
#include <cntrsets/inside.h>
#include <cntrsets/spacing.h>

namespace tool {

using namespace formats;

namespace {

using Point = qcVector<2>;

/// Calls visit(from, to) for every edge of the contours.
template <class Visit>
void forEachEdge(const std::vector<qcContour>& curves, Visit visit) {
  for (const qcContour& curve : curves) {
    const auto& points = curve.points();
    for (std::size_t i = 1; i < points.size(); ++i) visit(points[i - 1], points[i]);
    if (curve.isClosed()) visit(points.back(), points.front());
  }
}

double distanceFrom(const Nominal& nominal, const Point& p) {
  double nearest = std::numeric_limits<double>::infinity();
  for (const qcContour& curve : nominal.curves)
    nearest = std::min(nearest, curve.distToPoint(p, false));
  return nearest;
}

/// The signed distances of points in the coordinates of the nominal.
std::vector<double> deviationsOf(const std::vector<Point>& points, const Nominal& nominal) {
  std::vector<bool> inside(points.size(), false);
  if (nominal.closed) inside = qf_Inside(nominal.parts, points);
  std::vector<double> result;
  result.reserve(points.size());
  for (std::size_t i = 0; i < points.size(); ++i) {
    const double distance = nominal.frame.restored(distanceFrom(nominal, points[i]), 1);
    result.push_back(inside[i] ? -distance : distance);
  }
  return result;
}

/// The ends of the pieces of all edges, two for each piece.
std::vector<Point> endsOfPieces(const std::vector<qcContour>& curves) {
  const double spacing = cntr::sets::usualSpacing(curves);
  std::vector<Point> ends;
  forEachEdge(curves, [&](const Point& from, const Point& to) {
    const double pieces = std::ceil(from.distance(to) / spacing);
    const std::size_t count = pieces >= 1.0 ? static_cast<std::size_t>(pieces) : 1;
    Point last = from;
    for (std::size_t i = 1; i <= count; ++i) {
      const Point next = i == count ? to : from + (to - from) * (static_cast<double>(i) / pieces);
      ends.push_back(last);
      ends.push_back(next);
      last = next;
    }
  });
  return ends;
}

}  // namespace

std::vector<Stretch> stretchesOf(const Geometry& measured, const Nominal& nominal) {
  const auto local = [&](const Point& p) { return nominal.frame.local(p); };
  const std::vector<Point> ends =
      endsOfPieces(curvesOf(mapped(filledParts(measured), local), measured.closed));
  const std::vector<double> deviations = deviationsOf(ends, nominal);
  std::vector<Stretch> stretches;
  for (std::size_t i = 0; i < ends.size(); i += 2) {
    const bool isFirst = std::abs(deviations[i]) > std::abs(deviations[i + 1]);
    stretches.push_back({nominal.frame.restored(ends[i]), nominal.frame.restored(ends[i + 1]),
                         deviations[isFirst ? i : i + 1]});
  }
  return stretches;
}

std::vector<Stretch> edgesOf(const Nominal& nominal) {
  std::vector<Stretch> edges;
  forEachEdge(nominal.curves, [&](const Point& from, const Point& to) {
    edges.push_back({nominal.frame.restored(from), nominal.frame.restored(to)});
  });
  return edges;
}

}  // namespace tool
