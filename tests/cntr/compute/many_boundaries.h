// SPDX-License-Identifier: MIT
//
// Boundaries in many arrangements, each with what questions about crossings need.

#pragma once

#include <cmath>
#include <deque>
#include <vector>

#include <cntr/compute/crossings.h>
#include <testing/shapes/shapes.h>
#include <tests/cntr/figures.h>

#include "subject.h"

namespace boundaries {

using figures::rectangle;
using subject::Point;
using subject::Points;

/// 2 to 12 vertices with finite coordinates, of size 1 or so; edges may have no length.
inline Points smallShape(shapes::Random& random) {
  while (true) {
    Points points = shapes::anyFinite(random.next(), 12).points;
    if (points.size() < 2) continue;
    if (random.chance(0.3)) shapes::repeatVertices(random, points, 12);
    const auto box = cntr::compute::boundingBox(points);
    const double size = std::max(box.maxX - box.minX, box.maxY - box.minY);
    if (size > 0.0) shapes::scaleAndShift(points, 1.0 / size, Point(0, 0));
    return points;
  }
}

/// Boundary `k` of `count`: tiles in a row, in a grid, in a chain, nested, or any shapes anywhere;
/// now and then a long bar across.
inline Points oneOf(shapes::Random& random, std::size_t arrangement, std::size_t k,
                    std::size_t count) {
  const double place = static_cast<double>(k);
  const double side = std::ceil(std::sqrt(static_cast<double>(count)));
  const double row = std::floor(place / side);
  const double width = random.uniform(0.5, side);
  const double x = random.uniform(0.0, side);
  const double y = random.uniform(0.0, side);
  if (random.chance(0.03)) return rectangle(-1, y, side + 2, 0.3);
  switch (arrangement) {
    case 0:
      return rectangle(3 + place, 5, 1, 1);
    case 1:
      return rectangle(3 + place - row * side, 5 + row, 1, 1);
    case 2:
      return rectangle(3 + place, 5 + 0.3 * place, 1.2, 1.1);
    case 3:
      return rectangle(place, place, 4.0 * side * side - 2 * place, 4.0 * side * side - 2 * place);
    case 4:
      return rectangle(std::floor(x), std::floor(y), std::ceil(width), 1);
    default: {
      Points points = smallShape(random);
      shapes::scaleAndShift(points, random.chance(0.2) ? width : 1.0, Point(x, y));
      return points;
    }
  }
}

constexpr std::size_t arrangements = 7;

/// Boundaries in a random order.
inline std::vector<Points> any(shapes::Random& random, std::size_t most) {
  const std::size_t count = 2 + random.below(most - 1);
  const std::size_t arrangement = random.below(arrangements);
  const bool isShuffled = random.chance(0.5);
  std::vector<Points> all;
  for (std::size_t k = 0; k < count; ++k) all.push_back(oneOf(random, arrangement, k, count));
  for (std::size_t k = count - 1; isShuffled && k > 0; --k) {
    const std::size_t other = random.below(k + 1);
    std::swap(all[k], all[other]);
  }
  return all;
}

}  // namespace boundaries
