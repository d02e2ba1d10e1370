// SPDX-License-Identifier: MIT
//
// The regions of a set by place.

#pragma once

#include <vector>

#include <cntr/index/boxgrid.h>
#include <cntr/index/boxtree.h>

namespace cntr::index {

/// Where the regions of one set lie. Made only for sets whose regions can all be queried without an
/// exception: no null handle, at least two vertices on every boundary, finite coordinates.
struct RegionIndex {
  explicit RegionIndex(const std::vector<plane::Box>& regionBoxes)
      : boxes(regionBoxes), tree(boxes), grid(BoxGrid::make(boxes)) {}

  /// Calls visit(number) for the regions whose box holds p, in no particular order, until a visit
  /// returns false. Returns false when a visit did.
  template <class Visit>
  bool forEachHolding(const qcVector<2>& p, Visit visit) const {
    if (!grid) return tree.forEachTouching(plane::edgeBox(p, p), visit);
    return grid->forEachNear(
        p, [&](std::size_t number) { return !plane::contains(boxes[number], p) || visit(number); });
  }

  /// The box of each region: of its outline and of its holes, which may lie outside the outline.
  std::vector<plane::Box> boxes;
  BoxTree tree;
  /// For points, if the boxes suit it.
  std::optional<BoxGrid> grid;
};

}  // namespace cntr::index
