// SPDX-License-Identifier: MIT
//
// The conditions under which containment is plain even-odd parity, for everything that answers by
// it. They are told, with their letters and the proof, in index/containmentgrid.h; their numbers
// stand in plane/tolerances.h.

#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

#include <cntr/plane/box.h>
#include <cntr/plane/tolerances.h>

namespace cntr::plane {

/// How far condition (b) keeps a point from the vertices of a path of so many.
inline double vertexMargin(std::size_t vertices) noexcept {
  return containmentMargin / std::sin(std::numbers::pi / (2.0 * static_cast<double>(vertices)));
}

/// Condition (d) for a point, from the box of the vertices, the first vertex, and the largest
/// distance of a vertex from it.
inline bool rayEndsOutside(const Box& bounds, const qcVector<2>& first, double radius,
                           const qcVector<2>& p) noexcept {
  if (p.distance(first) <= radius - containmentMargin) return true;
  const qcVector<2> farthest(std::max(p.x() - bounds.minX, bounds.maxX - p.x()),
                             std::max(p.y() - bounds.minY, bounds.maxY - p.y()));
  return farthest.len() <= 2.0 * radius - containmentMargin;
}

/// The same for all points of a cell: either alternative holds on a convex set of points, so one
/// that holds at all corners of the cell holds in it.
inline bool rayEndsOutside(const Box& bounds, const qcVector<2>& first, double radius,
                           const Box& cell) noexcept {
  const qcVector<2> toFirst(
      std::max(std::abs(cell.minX - first.x()), std::abs(cell.maxX - first.x())),
      std::max(std::abs(cell.minY - first.y()), std::abs(cell.maxY - first.y())));
  if (toFirst.len() <= radius - containmentMargin) return true;
  const qcVector<2> farthest(std::max(cell.maxX - bounds.minX, bounds.maxX - cell.minX),
                             std::max(cell.maxY - bounds.minY, bounds.maxY - cell.minY));
  return farthest.len() <= 2.0 * radius - containmentMargin;
}

/// The same for all points of the box, and of cells that reach beyond it by the margin.
inline bool rayAlwaysEndsOutside(const Box& bounds, double radius) noexcept {
  const qcVector<2> diagonal(bounds.maxX - bounds.minX, bounds.maxY - bounds.minY);
  return diagonal.len() <= 2.0 * radius - 2.0 * containmentMargin;
}

/// Condition (e) for a vertex.
inline bool isSmallEnough(const qcVector<2>& p) noexcept {
  return std::abs(p.x()) < containmentCoordinates && std::abs(p.y()) < containmentCoordinates;
}

/// Where the line through two points crosses the height y. REQUIRES: the points differ in height.
inline double crossingX(const qcVector<2>& a, const qcVector<2>& b, double y) noexcept {
  return a.x() + (y - a.y()) / (b.y() - a.y()) * (b.x() - a.x());
}

}  // namespace cntr::plane
