// SPDX-License-Identifier: MIT
#include <testing/plain/set.h>

#include <cmath>
#include <limits>

#include <testing/plain/error.h>

namespace plain {

namespace {

void checkEmptyRegionSet(const Regions& regions) {
  if (regions.empty()) throw Error{Error::emptyRegionSet, ""};
}

// One pass: the last region takes the place of one that was joined to an earlier one, and is not
// tested against that earlier one again.
Regions merged(Regions regions) {
  for (std::size_t i = 0; i + 1 < regions.size(); ++i) {
    for (std::size_t j = i + 1; j < regions.size(); ++j) {
      if (intersections(regions[i], boundary(regions[j]), false).empty()) continue;
      regions[i] = splice(regions[i], regions[j]);
      regions[j] = Region(regions.back());
      regions.pop_back();
    }
  }
  return regions;
}

}  // namespace

double area(const Regions& regions, bool considerHoles) {
  double sum = 0.0;
  for (const Region& region : regions) sum += area(region, considerHoles);
  return sum;
}

Point centerOfMass(const Regions& regions, bool considerHoles) {
  checkEmptyRegionSet(regions);
  Point weighted(0.0, 0.0);
  double total = 0.0;
  for (const Region& region : regions) {
    const double a = area(region, considerHoles);
    weighted = plus(weighted, times(centerOfMass(region, considerHoles), a));
    total += a;
  }
  return std::fabs(total) > 1e-15 ? times(weighted, 1.0 / total) : Point(0.0, 0.0);
}

Matrix inertiaMatrix(const Regions& regions, bool considerHoles) {
  checkEmptyRegionSet(regions);
  Inertia sum;
  for (const Region& region : regions) {
    const Matrix matrix = inertiaMatrix(region, considerHoles);
    const Point center = centerOfMass(region, considerHoles);
    sum = combine(sum, {area(region, considerHoles), center, matrix});
  }
  return sum.matrix;
}

bool inside(const Regions& regions, const Point& p, bool considerHoles) {
  for (const Region& region : regions) {
    if (inside(region, p, considerHoles)) return true;
  }
  return false;
}

double distToPoint(const Regions& regions, const Point& p, bool vertexOnly, bool considerHoles,
                   bool zeroIfInside) {
  checkEmptyRegionSet(regions);
  double best = std::numeric_limits<double>::infinity();
  for (const Region& region : regions) {
    const double d = distToPoint(region, p, vertexOnly, considerHoles, zeroIfInside);
    if (d < best) best = d;
  }
  return best;
}

bool isSelfIntersecting(const Regions& regions) {
  bool result = false;
  for (const Region& region : regions) result = isSelfIntersecting(boundary(region)) || result;
  for (std::size_t i = 0; i + 1 < regions.size(); ++i) {
    for (std::size_t j = i + 1; j < regions.size(); ++j) {
      if (!intersections(boundary(regions[i]), boundary(regions[j])).empty()) return true;
    }
  }
  return result;
}

Box encloseRect(const Regions& regions, const Transform& transform) {
  checkEmptyRegionSet(regions);
  Box box = encloseRect(boundary(regions.front()), transform);
  for (const Region& region : regions) {
    box = enclose(box, encloseRect(boundary(region), transform));
  }
  return box;
}

Regions regularize(const Regions& regions) {
  if (!isSelfIntersecting(regions)) return regions;
  Regions result;
  for (const Region& region : merged(regions)) result.push_back(regularize(region));
  return result;
}

Regions outerHull(const Regions& regions) {
  if (!isSelfIntersecting(regions)) return regions;
  Regions result;
  for (const Region& region : merged(regions)) result.push_back(outerHull(region));
  return result;
}

}  // namespace plain
