// SPDX-License-Identifier: MIT
//
// The edge index: a hierarchy of boxes over the edges of a path.
//
// A contour is walked in order, so neighbours in the list are neighbours in the plane: no sorting
// is needed, the boxes are filled in one pass, and whatever a query visits comes out in edge order.
// The index holds nothing but boxes: it does not refer to the vertices and can be discarded at any
// time. Every search visits a superset of the edges that matter: the caller decides each one by the
// same arithmetic that a plain scan would use, so the answers are those of the scan, bit for bit.

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
