// SPDX-License-Identifier: MIT
#include <testing/plain/measures.h>

#include <algorithm>
#include <limits>

namespace plain {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

bool byXThenY(const Point& a, const Point& b) {
  if (nanLast(a.x(), b.x())) return true;
  if (nanLast(b.x(), a.x())) return false;
  return nanLast(a.y(), b.y());
}

// Adds `p` to the chain after dropping every point past `fixed` that no longer turns left.
void extendChain(Points& chain, std::size_t fixed, const Point& p) {
  while (chain.size() > fixed + 1) {
    const Point& a = chain[chain.size() - 2];
    if (!(cross(minus(chain.back(), a), minus(p, a)) <= 0.0)) break;
    chain.pop_back();
  }
  chain.push_back(p);
}

}  // namespace

double length(const Contour& contour) {
  if (contour.points.size() < 2) return 0.0;
  double sum = 0.0;
  for (const Segment& edge : edgesOf(contour)) sum += distance(edge.a, edge.b);
  return sum;
}

Point meanPosition(const Contour& contour) {
  checkEmptyContour(contour);
  double total = 0.0;
  Point weighted(0.0, 0.0);
  for (const Segment& edge : edgesOf(contour)) {
    const double edgeLength = distance(edge.a, edge.b);
    total += edgeLength;
    weighted = plus(weighted, times(times(plus(edge.a, edge.b), 0.5), edgeLength));
  }
  return times(weighted, 1.0 / total);
}

double medianFeatureSize(const Contour& contour) {
  checkEmptyContour(contour);
  std::vector<double> lengths;
  for (const Segment& edge : edgesOf(contour)) lengths.push_back(distance(edge.a, edge.b));
  std::sort(lengths.begin(), lengths.end(), nanLast);
  return lengths[lengths.size() / 2];
}

Point closestPoint(const Contour& contour, const Point& p, bool vertexOnly) {
  checkEmptyContour(contour);
  if (vertexOnly) {
    return contour.points[static_cast<std::size_t>(closestVertexIndex(contour, p))];
  }
  double best = infinity;
  Point result(0.0, 0.0);
  for (const Segment& edge : edgesOf(contour)) {
    const double d = distToPoint(edge, p);
    if (d < best) {
      best = d;
      result = nearestPoint(edge, p);
    }
  }
  return result;
}

long closestVertexIndex(const Contour& contour, const Point& p) {
  checkEmptyContour(contour);
  double best = infinity;
  std::size_t index = 0;
  for (std::size_t i = 0; i < contour.points.size(); ++i) {
    const double d = distance(p, contour.points[i]);
    if (d < best) {
      best = d;
      index = i;
    }
  }
  return static_cast<long>(index);
}

double distToPoint(const Contour& contour, const Point& p, bool vertexOnly) {
  return distance(p, closestPoint(contour, p, vertexOnly));
}

Points polygon(const Contour& contour) {
  Points result = contour.points;
  if (contour.closed && !result.empty()) result.push_back(contour.points.front());
  return result;
}

Points convexHull(const Points& points) {
  Points sorted = points;
  std::sort(sorted.begin(), sorted.end(), byXThenY);
  sorted.erase(std::unique(sorted.begin(), sorted.end(), same), sorted.end());
  if (sorted.size() < 2) return sorted;
  Points hull;
  for (const Point& p : sorted) extendChain(hull, 0, p);
  const std::size_t lowerEnd = hull.size() - 1;
  for (std::size_t i = sorted.size() - 1; i-- > 0;) extendChain(hull, lowerEnd, sorted[i]);
  hull.pop_back();
  return hull;
}

Points convexHull(const Contour& contour) {
  checkEmptyContour(contour);
  return convexHull(contour.points);
}

}  // namespace plain
