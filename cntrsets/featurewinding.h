// SPDX-License-Identifier: MIT
//
// Which part of a feature fills a point, by exact winding numbers.

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include <cntrsets/faces/filledset.h>
#include <cntrsets/rings.h>

namespace cntr::sets {

/// The edges of a feature, scaled. All are looked at for each point, until they are sorted into
/// slabs by their heights.
class FeatureWinding {
 public:
  /// REQUIRES: no ring is empty, coordinates are finite.
  FeatureWinding(const std::vector<qcRings>& feature, const Scaling& scaling);

  /// Makes questions fast: O(n) for well-behaved outlines, less than 5 n in memory.
  void sortIntoSlabs();

  /// The first part whose outline winds around the point while none of its holes does; the answer
  /// for a point on an edge is that for the points just beyond it. REQUIRES: a finite point.
  std::optional<std::size_t> partAround(const Point& p) const;

 private:
  /// An edge from a vertex to the next one in the list.
  struct Edge {
    std::uint32_t from;
    std::uint32_t ring;
  };
  struct Role {
    std::size_t part;
    bool isHole;
  };

  void add(const std::vector<Point>& ring, Role role);
  std::size_t slabOf(double y) const;
  std::size_t lowestSlab(const Edge& edge) const;
  std::size_t highestSlab(const Edge& edge) const;
  std::size_t entries(const std::vector<Edge>& edges) const;
  void place(const std::vector<Edge>& edges);
  int timesAround(std::size_t& entry, std::size_t end, const Point& p) const;

  Scaling scaling_;
  /// Ring by ring, each with its first vertex again at its end.
  std::vector<Point> vertices_;
  std::vector<Role> roles_;
  double low_ = 0.0;
  double height_ = 0.0;
  std::size_t slabs_ = 1;
  /// Where each slab's edges begin in edges_, and after the last where they end.
  std::vector<std::size_t> begins_;
  /// In each slab in the order of rings.
  std::vector<Edge> edges_;
};

}  // namespace cntr::sets
