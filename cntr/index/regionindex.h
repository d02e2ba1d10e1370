// SPDX-License-Identifier: MIT
//
// The regions of a set by place.

#pragma once

#include <vector>

#include <cntr/index/boxtree.h>

namespace cntr::index {

/// Where the regions of one set lie. Made only for sets whose regions can all be asked without an
/// exception: no null handle, two vertices or more on every boundary, finite coordinates.
struct RegionIndex {
  explicit RegionIndex(const std::vector<plane::Box>& regionBoxes)
      : boxes(regionBoxes), tree(boxes) {}

  /// The box of each region: its outer boundary and its holes', which may lie outside that.
  std::vector<plane::Box> boxes;
  BoxTree tree;
};

}  // namespace cntr::index
