// SPDX-License-Identifier: MIT
//
// Whether a ring is simple, asked of every pair of edges.

#pragma once

#include <cstddef>

#include <cntr/plane/orientation.h>
#include <testing/shapes/shapes.h>

namespace simplering {

using Point = qcVector<2>;
using shapes::Points;

/// Neighbours never repeat a vertex.
inline Points withoutRepeats(const Points& ring) {
  Points result;
  for (const Point& p : ring)
    if (result.empty() || result.back() != p) result.push_back(p);
  while (result.size() > 1 && result.front() == result.back()) result.pop_back();
  return result;
}

inline bool isOn(const Point& a, const Point& b, const Point& p) {
  return cntr::plane::orientation(a, b, p) == 0 && cntr::plane::dotSign(p, a, p, b) <= 0;
}

inline bool meet(const Point& a, const Point& b, const Point& c, const Point& d) {
  if (isOn(a, b, c) || isOn(a, b, d) || isOn(c, d, a) || isOn(c, d, b)) return true;
  return cntr::plane::orientation(a, b, c) * cntr::plane::orientation(a, b, d) < 0 &&
         cntr::plane::orientation(c, d, a) * cntr::plane::orientation(c, d, b) < 0;
}

/// Asked of every pair of edges.
inline bool isSimple(const Points& given) {
  const Points ring = withoutRepeats(given);
  const std::size_t n = ring.size();
  if (n < 3) return n < 2;
  const auto at = [&](std::size_t i) { return ring[i % n]; };
  for (std::size_t i = 0; i < n; ++i) {
    if (isOn(at(i), at(i + 1), at(i + 2)) || isOn(at(i + 1), at(i + 2), at(i))) return false;
    for (std::size_t j = i + 2; j < n; ++j) {
      const bool areNeighbours = j + 1 == i + n;
      if (!areNeighbours && meet(at(i), at(i + 1), at(j), at(j + 1))) return false;
    }
  }
  return true;
}

}  // namespace simplering
