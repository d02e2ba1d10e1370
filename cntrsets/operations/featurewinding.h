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

/// The edges of a feature, scaled. A query looks at all of them, until they are sorted into slabs
/// by height.
class FeatureWinding {
 public:
  /// REQUIRES: no ring is empty, coordinates are finite.
  FeatureWinding(const std::vector<qcRings>& feature, const Scaling& scaling);

  /// Makes queries fast: O(n) for well-behaved outlines, with less than 5 n entries in memory.
  /// Changes nothing when memory runs out.
  void sortIntoSlabs();

  /// Whether a query looks at the edges of one slab alone.
  bool isInSlabs() const noexcept { return slabs_ > 1; }

  /// The first part whose outline winds around the point while none of its holes does. A point on
  /// an edge gets the answer for the points just beyond the edge. REQUIRES: a finite point.
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
  /// These suppose that there are so many slabs.
  std::size_t slabOf(double y, std::size_t slabs) const;
  std::size_t lowestSlab(const Edge& edge, std::size_t slabs) const;
  std::size_t highestSlab(const Edge& edge, std::size_t slabs) const;
  std::size_t entries(std::size_t slabs) const;
  void place(std::size_t slabs);
  int timesAround(std::size_t& entry, std::size_t end, const Point& p) const;

  Scaling scaling_;
  /// Ring by ring, each with its first vertex repeated at the end.
  std::vector<Point> vertices_;
  std::vector<Role> roles_;
  double low_ = 0.0;
  double height_ = 0.0;
  std::size_t slabs_ = 1;
  /// Where each slab's edges begin in edges_, and where those of the last one end.
  std::vector<std::size_t> begins_;
  /// Slab by slab, in each in the order of the rings.
  std::vector<Edge> edges_;
};

}  // namespace cntr::sets
