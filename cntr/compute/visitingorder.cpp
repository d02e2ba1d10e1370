// SPDX-License-Identifier: MIT
//
// A counting sort by cell.

#include <cntr/compute/visitingorder.h>

#include <algorithm>
#include <cmath>

#include <cntr/index/axis.h>
#include <cntr/plane/box.h>

namespace cntr::compute {

namespace {

/// Cells per side of the grid: two points per cell, and few enough for 32-bit numbers of cells.
std::size_t sideFor(std::size_t points) {
  constexpr double most = 4096.0;
  const double side = std::sqrt(static_cast<double>(points) / 2.0);
  return static_cast<std::size_t>(std::clamp(side, 1.0, most));
}

}  // namespace

std::vector<std::size_t> visitingOrder(std::span<const qcVector<2>> points) {
  plane::Box box;
  for (const qcVector<2>& p : points) {
    if (std::isfinite(p.x()) && std::isfinite(p.y())) box.add(p);
  }
  const std::size_t side = sideFor(points.size());
  const index::Axis columns(box.minX, box.maxX, side);
  const index::Axis rows(box.minY, box.maxY, side);
  std::vector<std::size_t> cells;
  cells.reserve(points.size());
  std::vector<std::size_t> ends(side * side + 1, 0);
  for (const qcVector<2>& p : points) {
    const std::size_t row = rows.intervalOf(p.y());
    const std::size_t column = columns.intervalOf(p.x());
    cells.push_back(row * side + (row % 2 == 0 ? column : side - 1 - column));
    ++ends[cells.back() + 1];
  }
  for (std::size_t cell = 1; cell < ends.size(); ++cell) ends[cell] += ends[cell - 1];
  std::vector<std::size_t> order(points.size());
  for (std::size_t i = 0; i < points.size(); ++i) order[ends[cells[i]]++] = i;
  return order;
}

}  // namespace cntr::compute
