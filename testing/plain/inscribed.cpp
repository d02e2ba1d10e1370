// SPDX-License-Identifier: MIT

#include <testing/plain/inscribed.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace plain {

namespace {

/// The distance from the boundary, negative outside.
double depth(const Parts& parts, const Point& p) {
  const double distance = distanceToRings(parts, p);
  return fills(parts, Rule::nonZero, p) ? distance : -distance;
}

struct Square {
  Point middle;
  double half;
};

}  // namespace

Circle inscribedCircle(const Parts& parts, double tolerance) {
  const Point first = parts.front().outline.front();
  Box box = boxOf(first);
  for (const Part& part : parts)
    for (const Point& p : part.outline) box = enclose(box, boxOf(p));
  Circle best{first, 0.0};
  const double half = 0.5 * std::max(box.maxX - box.minX, box.maxY - box.minY);
  std::vector<Square> squares{{Point(box.minX + half, box.minY + half), half}};
  while (!squares.empty()) {
    const Square square = squares.back();
    squares.pop_back();
    const double here = depth(parts, square.middle);
    if (here > best.radius) best = {square.middle, here};
    if (here + square.half * std::numbers::sqrt2 <= best.radius + tolerance) continue;
    const double quarter = 0.5 * square.half;
    for (const double dx : {-quarter, quarter})
      for (const double dy : {-quarter, quarter})
        squares.push_back({plus(square.middle, Point(dx, dy)), quarter});
  }
  return best;
}

}  // namespace plain
