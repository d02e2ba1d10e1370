// SPDX-License-Identifier: MIT
//
// Few points that make smallest rectangles, strips and circles hard to find: needles, near-squares,
// near-circles and ties, from 1e-9 to 1e9 in size and about as far from the origin.

#pragma once

#include <algorithm>
#include <cmath>

#include <testing/shapes/shapes.h>

namespace hard_points {

using shapes::Point;
using shapes::Points;
using shapes::Random;

/// `p`, now and then with a coordinate moved to the next double.
inline Point nudged(Random& random, const Point& p) {
  const double towards = random.chance(0.5) ? 1e300 : -1e300;
  if (random.chance(0.4)) return p;
  if (random.chance(0.5)) return {std::nextafter(p.x(), towards), p.y()};
  return {p.x(), std::nextafter(p.y(), towards)};
}

inline Points needle(Random& random, std::size_t n) {
  const Point tip(random.uniform(-1.0, 1.0), 1.0);
  Points points;
  for (std::size_t i = 0; i < n; ++i) {
    const double along = random.uniform(-1.0, 1.0);
    points.push_back(nudged(random, tip * along));
  }
  return points;
}

/// A square, turned with or without rounding; some have corners moved to the next double.
inline Points nearSquare(Random& random) {
  const bool isExact = random.chance(0.5);
  const double c = isExact ? 3.0 : random.uniform(-1.0, 1.0);
  const double s = isExact ? 4.0 : random.uniform(-1.0, 1.0);
  Points points = {{c, s}, {-s, c}, {-c, -s}, {s, -c}};
  if (random.chance(0.5)) {
    for (Point& p : points) p = nudged(random, p);
  }
  return points;
}

inline Points nearCircle(Random& random, std::size_t n) {
  Points points = shapes::regularPolygon(n, random.chance(0.5) ? 1.0 : 5.0, Point());
  if (random.chance(0.3)) points.insert(points.end(), {{3, 4}, {-4, 3}, {-3, -4}, {4, -3}});
  for (Point& p : points) p = nudged(random, p);
  return points;
}

/// Up to 9 points, finite.
inline Points make(std::uint64_t seed) {
  Random random(seed);
  const std::size_t n = 1 + random.below(8);
  Points points;
  switch (random.below(6)) {
    case 0:
      points = needle(random, n);
      break;
    case 1:
      points = nearSquare(random);
      break;
    case 2:
      points = nearCircle(random, std::min<std::size_t>(n, 5) + 2);
      break;
    case 3:
      points = shapes::gridPoints(random, n, 4);
      break;
    case 4:
      points = shapes::cloud(random, n);
      break;
    default:
      points = shapes::anyFinite(seed, 8).points;
  }
  if (points.empty()) points.emplace_back(1.0, 2.0);
  static constexpr double sizes[] = {1.0, 0x1p-30, 1e-9, 1e9, 0.1};
  const double size = sizes[random.below(5)];
  const double shift = random.chance(0.3) ? random.uniform(-1e9, 1e9) : 0.0;
  shapes::scaleAndShift(points, size, Point(shift, -0.5 * shift));
  return points;
}

}  // namespace hard_points
