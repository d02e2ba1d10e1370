// SPDX-License-Identifier: MIT
//
// Boxes turned to lie along their contents. Edges that run side by side at a slant have
// axis-aligned boxes that all overlap; turned boxes around them are as thin as the edges are near
// each other. They cost more to make and to compare, so they are made for one search, once it
// proves to need them.

#pragma once

#include <cstddef>
#include <vector>

#include <cntr/index/edgeindex.h>
#include <cntr/plane/path.h>

namespace cntr::index {

/// A rectangle along the unit vector `along`; its other direction is a quarter turn further.
struct Strip {
  qcVector<2> along;
  qcVector<2> center;
  double halfAlong = 0.0;
  double halfAcross = 0.0;
};

/// A sum of vectors with doubled angles, so that opposite vectors add up.
class MainDirection {
 public:
  void add(const qcVector<2>& v) noexcept {
    cos_ += v.x() * v.x() - v.y() * v.y();
    sin_ += 2.0 * v.x() * v.y();
  }
  void add(const MainDirection& other) noexcept {
    cos_ += other.cos_;
    sin_ += other.sin_;
  }
  /// A unit vector at half the angle of the sum.
  qcVector<2> along() const;

 private:
  double cos_ = 0.0;
  double sin_ = 0.0;
};

/// True when the strips lie more than `margin` apart across a side of either of them.
bool areApart(const Strip& a, const Strip& b, double margin);

/// The same for an edge and a strip, across the sides of the strip.
bool areApart(const plane::Edge& edge, const Strip& strip, double margin);

/// A strip for every box of an edge index, along the main direction of the edges under it.
class Strips {
 public:
  /// With larger or non-finite coordinates, the strips are not valid.
  static constexpr double largestCoordinate = 1e100;

  /// O(n).
  Strips(const plane::Path& path, const EdgeIndex& index);

  const Strip& of(std::size_t level, std::size_t i) const noexcept {
    return levels_[level][i].strip;
  }

 private:
  struct Bundle {
    MainDirection direction;
    Strip strip;
  };

  static Bundle bundleOfEdges(const plane::Path& path, std::size_t first, std::size_t last);
  Bundle bundleOfBundles(std::size_t level, std::size_t first, std::size_t last) const;

  std::vector<std::vector<Bundle>> levels_;
};

}  // namespace cntr::index
