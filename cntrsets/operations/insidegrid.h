// SPDX-License-Identifier: MIT
//
// A grid over a feature that answers most questions of qcInside by one look-up. If no edge comes
// near a cell, all its points are filled or none is, and the cell holds the answer
//
//   outside  if they are not filled: every point is farther from all edges than touchDistance;
//   inside   if they are filled, and the regions of the library are certain to say so, too.
//
// The latter is so under the conditions of cntr/index/containmentgrid.h, under which a region's own
// grid answers, too. "Near" means within the larger margin of condition (b) there, which exceeds
// touchDistance (plane/tolerances.h), and cells in which condition (d) may fail hold no answer.

#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include <cntr/plane/box.h>
#include <cntrsets/rings.h>

namespace cntr::sets {

/// Cells of a feature's box, each with what is known about all its points.
class InsideGrid {
 public:
  enum class Answer : std::uint8_t { eUnknown, eOutside, eInside };
  using IsFilled = std::function<bool(const qcVector<2>&)>;

  /// False if too few cells would hold an answer: for very thin features and for large coordinates.
  /// `box` is that of all outlines.
  static bool isPossible(const std::vector<qcRings>& feature, const plane::Box& box);

  /// REQUIRES: isPossible(feature, box); each ring has at least 3 vertices. `isFilled` tells which
  /// points are in the filled set.
  InsideGrid(const std::vector<qcRings>& feature, const plane::Box& box, const IsFilled& isFilled);

  /// REQUIRES: a point in the box.
  Answer at(const qcVector<2>& p) const noexcept {
    return cells_[rowOf(p.y()) * columns_ + columnOf(p.x())];
  }

 private:
  class Builder;

  std::size_t columnOf(double x) const noexcept {
    return cellOf((x - box_.minX) * columnsPerUnit_, lastColumn_);
  }
  std::size_t rowOf(double y) const noexcept {
    return cellOf((y - box_.minY) * rowsPerUnit_, lastRow_);
  }
  /// Rounds down. Converting to a signed integer takes one instruction, to an unsigned one several.
  static std::size_t cellOf(double place, double last) noexcept {
    return static_cast<std::size_t>(
        static_cast<std::int32_t>(std::min(std::max(place, 0.0), last)));
  }

  plane::Box box_;
  std::size_t columns_ = 1;
  std::size_t rows_ = 1;
  double columnsPerUnit_ = 0.0;
  double rowsPerUnit_ = 0.0;
  double lastColumn_ = 0.0;
  double lastRow_ = 0.0;
  /// Row by row.
  std::vector<Answer> cells_;
};

}  // namespace cntr::sets
