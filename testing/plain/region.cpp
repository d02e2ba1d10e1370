// SPDX-License-Identifier: MIT
#include <testing/plain/region.h>

#include <algorithm>
#include <cmath>

#include <testing/plain/circle.h>
#include <testing/plain/error.h>
#include <testing/plain/measures.h>

namespace plain {

namespace {

constexpr double pi = 3.141592653589793;

// The middle of the first gap wider than pi / n between neighbouring directions, from the smallest
// angle on; along the x axis if there is none.
Point rayDirection(std::vector<double> angles) {
  std::sort(angles.begin(), angles.end(), nanLast);
  const double step = pi / static_cast<double>(angles.size());
  for (std::size_t i = 0; i < angles.size(); ++i) {
    const std::size_t next = i + 1 < angles.size() ? i + 1 : 0;
    const double gap = norm(angles[next] - angles[i]);
    if (gap > step) {
      const double middle = angles[i] + 0.5 * gap;
      return Point(std::cos(middle), std::sin(middle));
    }
  }
  return Point(1.0, 0.0);
}

long crossingCount(const Contour& contour, const Point& from, const Point& to) {
  return static_cast<long>(intersections(contour, {from, to}, false).size());
}

void append(Points& points, const std::vector<Crossing>& crossings) {
  for (const Crossing& crossing : crossings) points.push_back(crossing.point);
}

void append(Points& points, const Points& more) {
  points.insert(points.end(), more.begin(), more.end());
}

}  // namespace

Contour boundary(const Region& region) { return {region.points, true}; }

void checkEmptyContour(const Region& region) {
  if (region.points.size() < 3) throw Error{Error::emptyContour, ""};
}

double area(const Region& region, bool considerHoles) {
  checkEmptyContour(region);
  double result = area(region.points);
  if (!considerHoles) return result;
  for (const Region& hole : region.holes) result -= area(hole, false);
  return result;
}

Point centerOfMass(const Region& region, bool considerHoles) {
  checkEmptyContour(region);
  const Point outer = centerOfMass(region.points);
  if (!considerHoles || region.holes.empty()) return outer;
  double total = area(region, false);
  Point weighted = times(outer, total);
  for (const Region& hole : region.holes) {
    const double a = area(hole, false);
    weighted = minus(weighted, times(centerOfMass(hole, false), a));
    total -= a;
  }
  return times(weighted, 1.0 / total);
}

Matrix inertiaMatrix(const Region& region, bool considerHoles) {
  checkEmptyContour(region);
  if (considerHoles && !region.holes.empty()) {
    throw Error{Error::badParams, "inertiaMatrix(considerHoles) is not implemented"};
  }
  return polygonInertia(region.points).matrix;
}

long insideCount(const Region& region, const Point& p, bool bothDirections) {
  const Contour contour = boundary(region);
  if (!within(encloseRect(contour, identity()), p)) return 0;
  std::vector<double> angles;
  for (const Point& v : region.points) {
    const Point d = minus(v, p);
    if (!(len(d) > 1e-6)) return 1;
    angles.push_back(norm(std::atan2(d.y(), d.x())));
  }
  const Point reach = times(rayDirection(angles), 2.0 * firstVertexCircle(region.points).radius);
  const long count = crossingCount(contour, p, plus(p, reach));
  return bothDirections ? std::min(count, crossingCount(contour, p, minus(p, reach))) : count;
}

bool inside(const Region& region, const Point& p, bool considerHoles) {
  if (insideCount(region, p, false) % 2 == 0) return false;
  if (!considerHoles) return true;
  for (const Region& hole : region.holes) {
    if (inside(hole, p, true)) return false;
  }
  return true;
}

double distToPoint(const Region& region, const Point& p, bool vertexOnly, bool considerHoles,
                   bool zeroIfInside) {
  if (zeroIfInside && inside(region, p, considerHoles)) return 0.0;
  return distance(p, closestPoint(region, p, vertexOnly, considerHoles));
}

Point closestPoint(const Region& region, const Point& p, bool vertexOnly, bool considerHoles) {
  if (vertexOnly) {
    const BoundaryVertex v = closestVertexIndex(region, p, considerHoles);
    const Region& owner = v.hole < 0 ? region : region.holes[static_cast<std::size_t>(v.hole)];
    return owner.points[static_cast<std::size_t>(v.index)];
  }
  Point best = closestPoint(boundary(region), p, false);
  double bestDistance = distance(best, p);
  for (const Region& hole : region.holes) {
    const Point candidate = closestPoint(boundary(hole), p, false);
    const double d = distance(candidate, p);
    if (d < bestDistance) {
      best = candidate;
      bestDistance = d;
    }
  }
  return best;
}

BoundaryVertex closestVertexIndex(const Region& region, const Point& p, bool considerHoles) {
  BoundaryVertex result{-1, closestVertexIndex(boundary(region), p)};
  if (!considerHoles) return result;
  double best = distance(region.points[static_cast<std::size_t>(result.index)], p);
  for (std::size_t k = 0; k < region.holes.size(); ++k) {
    const long index = closestVertexIndex(boundary(region.holes[k]), p);
    const double d = distance(region.holes[k].points[static_cast<std::size_t>(index)], p);
    if (d < best) {
      best = d;
      result = {static_cast<long>(k), index};
    }
  }
  return result;
}

Points intersections(const Region& region, const Segment& segment, bool countEndpointTouches,
                     bool considerHoles) {
  Points points;
  append(points, intersections(boundary(region), segment, countEndpointTouches));
  if (!considerHoles) return points;
  for (const Region& hole : region.holes) {
    append(points, intersections(boundary(hole), segment, countEndpointTouches));
  }
  return points;
}

Points intersections(const Region& region, const Contour& other, bool considerHoles) {
  Points points = intersections(boundary(region), other);
  if (!considerHoles) return points;
  for (const Region& hole : region.holes) append(points, intersections(boundary(hole), other));
  return points;
}

}  // namespace plain
