// SPDX-License-Identifier: MIT
//
// Crossings between many paths, with all edges in one tree. The boxes of nested paths overlap,
// while those of their edges do not.

#pragma once

#include <vector>

#include <cntr/index/boxtree.h>
#include <cntr/plane/path.h>

namespace cntr::compute {

/// The edges of many paths by place. REQUIRES: coordinates are finite.
class OwnedEdges {
 public:
  explicit OwnedEdges(const std::vector<plane::Path>& paths);

  struct Owned {
    plane::Edge edge;
    /// The number of the edge's path.
    std::size_t path;
  };

  /// In the order of the paths.
  const std::vector<Owned>& all() const noexcept { return edges_; }
  /// The box of all edges.
  const plane::Box& bounds() const noexcept { return tree_.bounds(); }

  const index::BoxTree& tree() const noexcept { return tree_; }

  /// Calls visit(owned) for the edges whose boxes share a point with `box`, in no particular order,
  /// until a visit returns false. Returns false when a visit did.
  template <class Visit>
  bool forEachTouching(const plane::Box& box, Visit visit) const {
    return tree_.forEachTouching(box, [&](std::size_t number) { return visit(edges_[number]); });
  }

 private:
  std::vector<Owned> edges_;
  index::BoxTree tree_;
};

/// True when an edge of some path crosses an earlier path, end touches counted, as crosses() tells
/// for a pair. O(m log m) for m edges if few of their boxes overlap. REQUIRES: coordinates are
/// finite.
bool anyCrossesAnother(const std::vector<plane::Path>& paths);

}  // namespace cntr::compute
