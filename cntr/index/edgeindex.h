// SPDX-License-Identifier: MIT
//
// The edge index: a hierarchy of boxes over the edges of a path.
//
// Consecutive edges of a contour are neighbours in the plane: no sorting is needed, the boxes are
// filled in one pass, and a query visits edges in their order. The index holds only boxes: it does
// not refer to the vertices and can be discarded at any time. Every search visits a superset of the
// edges that matter: the caller decides each one by the same arithmetic as a plain scan, so the
// answers are those of the scan, bit for bit.

#pragma once

#include <cntr/index/boxhierarchy.h>
#include <cntr/plane/path.h>

namespace cntr::index {

/// Boxes over the edges of one path; the slots are the edges.
class EdgeIndex : public BoxHierarchy {
 public:
  explicit EdgeIndex(const plane::Path& path);

  /// True when all coordinates are finite. The boxes ignore NaN.
  bool isFinite() const noexcept { return isFinite_; }

 private:
  bool isFinite_;
};

}  // namespace cntr::index
