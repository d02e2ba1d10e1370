// SPDX-License-Identifier: MIT
//
// The edges of several paths together: which one is nearest to a point, and how often they run
// around it.

#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include <cntr/index/boxtree.h>
#include <cntr/plane/path.h>

namespace cntr::compute {

/// The edges of paths with finite coordinates. A path of one vertex has one edge of length 0.
class Curves {
 public:
  /// REQUIRES: there is a vertex.
  explicit Curves(std::span<const plane::Path> paths);

  const std::vector<plane::Edge>& edges() const noexcept { return edges_; }

  struct Nearest {
    std::size_t edge = 0;
    double distance = 0.0;
  };
  /// The smallest distance of p from an edge, and an edge at that distance.
  Nearest nearest(const qcVector<2>& p) const;

  /// How often the paths, taken as closed, run counter-clockwise around p, less how often
  /// clockwise. Meaningless for points on an edge. Decided by exact predicates.
  int windingNumber(const qcVector<2>& p) const;

 private:
  std::vector<plane::Edge> edges_;
  index::BoxTree tree_;
};

}  // namespace cntr::compute
