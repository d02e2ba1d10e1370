// SPDX-License-Identifier: MIT
//
// Which runs of edges are all parallel: however much they overlap, they never cross. Made for one
// search, once it proves to need them.

#pragma once

#include <cstddef>
#include <vector>

#include <cntr/index/edgeindex.h>
#include <cntr/plane/path.h>

namespace cntr::index {

/// For every box of an edge index, the direction of the edges under it, if they share one.
class Parallels {
 public:
  /// O(n).
  Parallels(const plane::Path& path, const EdgeIndex& index);

  /// True when no edge under box i of a level can cross one under box j, because all edges that can
  /// cross anything are certainly parallel in the sense of qcLine::isParallel().
  bool areParallel(std::size_t level, std::size_t i, std::size_t j) const noexcept {
    return areClose(directions_[level][i], directions_[level][j]);
  }

 private:
  /// A unit vector; zero if no edge can cross anything, NaN if the edges have different directions.
  using Direction = qcVector<2>;

  static bool areClose(const Direction& a, const Direction& b) noexcept;
  static Direction directionOf(const plane::Edge& edge) noexcept;
  static Direction common(const Direction& a, const Direction& b) noexcept;

  std::vector<std::vector<Direction>> directions_;
};

}  // namespace cntr::index
