// SPDX-License-Identifier: MIT
//
// Closed walks on the integer grid in steps of one unit: pieces that meet only at their ends, and
// whose faces consist of whole cells of the grid, so that windings can be counted cell by cell.

#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include <cntrsets/faces/faces.h>
#include <testing/plain/filled.h>
#include <testing/shapes/shapes.h>

namespace unitwalks {

using cntr::sets::Piece;
using cntr::sets::Point;
using cntr::sets::Windings;
using shapes::Points;

/// Where the walks stay.
constexpr int size = 9;

/// Some steps in any direction, then straight home.
inline Points walk(shapes::Random& random) {
  const Point home(static_cast<double>(random.below(size + 1)),
                   static_cast<double>(random.below(size + 1)));
  Points points{home};
  const auto step = [&points](double dx, double dy) {
    const Point next = points.back() + Point(dx, dy);
    if (next.x() >= 0 && next.x() <= size && next.y() >= 0 && next.y() <= size)
      points.push_back(next);
  };
  const std::size_t steps = 4 + random.below(60);
  for (std::size_t i = 0; i < steps; ++i) {
    const double sign = random.chance(0.5) ? 1.0 : -1.0;
    const bool isAcross = random.chance(0.5);
    step(isAcross ? sign : 0.0, isAcross ? 0.0 : sign);
  }
  while (points.back().x() != home.x()) step(points.back().x() < home.x() ? 1.0 : -1.0, 0.0);
  while (points.back().y() != home.y()) step(0.0, points.back().y() < home.y() ? 1.0 : -1.0);
  points.pop_back();
  return points;
}

inline std::vector<Points> walks(std::uint64_t seed) {
  shapes::Random random(seed);
  std::vector<Points> rings(1 + random.below(4));
  for (Points& ring : rings) ring = walk(random);
  return rings;
}

inline std::vector<Piece> piecesOf(const std::vector<Points>& rings) {
  const std::vector<std::span<const Point>> spans(rings.begin(), rings.end());
  return cntr::sets::piecesOf(spans);
}

/// What winds around the cell with this centre.
inline Windings windingsAround(const std::vector<Points>& rings, const Point& centre) {
  Windings windings;
  for (std::size_t i = 0; i < rings.size(); ++i) {
    const int times = plain::windingNumber(rings[i], centre);
    if (times != 0) windings.push_back({i, times});
  }
  return windings;
}

/// The centres of all cells, and of some around them.
inline Points cells() {
  Points centres;
  for (int x = -1; x <= size; ++x)
    for (int y = -1; y <= size; ++y) centres.emplace_back(x + 0.5, y + 0.5);
  return centres;
}

}  // namespace unitwalks
