// SPDX-License-Identifier: MIT
//
// A uniform grid over a closed path that answers most containment questions by one look-up.
//
// Containment is defined by the crossings of a ray that keeps clear of all vertices by an angle of
// more than pi / (2n) (compute/containment.h). Where a point meets the conditions below, every
// crossing of that ray is a proper one, well away from the tolerances of the crossing test, and the
// answer is plain even-odd parity, which needs no ray in that direction. With the margin m, which
// is the touch distance of the crossing test and room for rounding (both in plane/tolerances.h):
//
//   (a) the point is inside the bounding box,
//   (b) the distance r to the nearest vertex has r * sin(pi / (2n)) >= m: vertices keep at least m
//       away from the ray,
//   (c) every edge is farther than m from the point,
//   (d) the ray's end lies outside by m: the point is at most R - m from the first vertex, R being
//       the largest distance of a vertex from it, or the farthest corner of the bounding box is at
//       most 2R - m away (the ray is 2R long),
//   (e) coordinates stay below 1e6, so that distances are rounded by less than 1e-8, the
//       containmentRounding of plane/tolerances.h.
//
// The reason: an edge that the ray crosses then has its ends at least m away from the ray's line,
// one on each side: the lines are not taken for parallel, and the computed crossing, which rounding
// moves away from either line by at most 1e-8, lies within the tolerance of both; where it slides
// along two nearly parallel lines, the edge is so long that it stays between its ends, and p, being
// m away from it, stays behind. An edge that the ray does not cross keeps m away from it, and so
// does every crossing point with it. The ends of the ray touch nothing.
//
// A cell that no edge comes near, by the larger margin m / sin(pi / (2n)) of (b), holds its answer.
// A mixed cell lists the edges that come near: they decide (b) and (c), and parity is counted from
// the point to the middle of the cell's right side, whose parity is known, or, where rounding might
// spoil that, along the row to the next cell that holds an answer. Where a condition fails, the
// grid has no answer and the ray must be cast. Before there is a grid, compute/evenodd.h answers
// under the same conditions. Those that several answers need are functions of
// plane/containmentconditions.h.

#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include <cntr/plane/box.h>

namespace cntr::index {

/// Answers containment questions about one closed path, which it does not keep.
class ContainmentGrid {
 public:
  enum class Answer : std::uint8_t { eOutside, eInside, eUnknown };

  /// False where too many points would fail the conditions: for very thin outlines and for large
  /// coordinates. `bounds` is the bounding box of the vertices.
  static bool isPossible(std::span<const qcVector<2>> points, const plane::Box& bounds);

  /// REQUIRES: isPossible(points, bounds). `radius` is the largest distance of a vertex from the
  /// first one.
  ContainmentGrid(std::span<const qcVector<2>> points, const plane::Box& bounds, double radius);

  /// REQUIRES: `points` are those the grid was made from.
  Answer locate(std::span<const qcVector<2>> points, const qcVector<2>& p) const noexcept;

 private:
  /// What a cell says: bit 0 is the parity of all its points; eNeedsRay means that condition (d)
  /// fails in it; values from eMixed on are eMixed + the place of its list of edges.
  using Cell = std::uint32_t;
  static constexpr Cell eParity = 1;
  static constexpr Cell eNeedsRay = 2;
  static constexpr Cell eMixed = 4;
  /// The bits below the length in the head of a mixed cell's list: the parity of the middle of the
  /// cell's right side, and that no edge comes so near to it that rounding matters.
  static constexpr std::uint32_t eSideParity = 1;
  static constexpr std::uint32_t eLeadsToSide = 2;
  static constexpr int headBits = 2;

  struct Layout {
    std::size_t columns;
    std::size_t rows;
    double cellWidth;
    double cellHeight;
  };
  class Builder;

  static Layout layoutFor(std::span<const qcVector<2>> points, const plane::Box& bounds);

  std::size_t columnOf(double x) const noexcept;
  std::size_t rowOf(double y) const noexcept;
  bool rayEndsOutsideFromCell(std::size_t column, std::size_t row) const noexcept;
  double rightSideOf(std::size_t column) const noexcept;
  double middleOf(std::size_t row) const noexcept;
  std::span<const std::uint32_t> edgesOf(Cell cell) const noexcept;
  static std::span<const std::uint32_t> entriesOf(const std::uint32_t* list) noexcept;
  /// Conditions (b), for b alone, and (c) for an edge.
  bool keepsClear(const qcVector<2>& a, const qcVector<2>& b, const qcVector<2>& p) const noexcept;
  /// REQUIRES: condition (d) holds.
  Answer locateInMixed(std::span<const qcVector<2>> points, std::size_t column, std::size_t row,
                       const qcVector<2>& p) const noexcept;
  /// The parity of a point in a mixed cell, counted along its row.
  bool isInside(std::span<const qcVector<2>> points, std::size_t column, std::size_t row,
                const qcVector<2>& p) const noexcept;

  plane::Box bounds_;
  Layout layout_;
  double columnsPerUnit_;
  double rowsPerUnit_;
  /// The margin of condition (b).
  double vertexMargin_;
  qcVector<2> first_;
  double radius_;
  bool rayAlwaysEndsOutside_;
  std::vector<Cell> cells_;
  /// Lists of mixed cells, one after the other: the head, which is the length with the bits above,
  /// then the vertices at which the edges end.
  std::vector<std::uint32_t> lists_;
};

}  // namespace cntr::index
