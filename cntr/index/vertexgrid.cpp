// SPDX-License-Identifier: MIT

#include <cntr/index/vertexgrid.h>

#include <limits>

namespace cntr::index {

namespace {

using Limits = std::numeric_limits<std::int64_t>;

/// Rounds half away from zero, saturating; what is not a number goes to cell 0.
std::int64_t roundToCell(double value) noexcept {
  constexpr double beyond = 9223372036854775808.0;
  const double shifted = value < 0.0 ? value - 0.5 : value + 0.5;
  if (shifted >= beyond) return Limits::max();
  if (shifted <= -beyond) return Limits::min();
  return shifted == shifted ? static_cast<std::int64_t>(shifted) : 0;
}

/// The cell numbers centre - 1 .. centre + 1 that exist.
struct Neighbours {
  explicit Neighbours(std::int64_t centre) noexcept
      : first(centre == Limits::min() ? centre : centre - 1),
        count(centre == Limits::min() || centre == Limits::max() ? 2 : 3) {}
  std::int64_t first;
  int count;
};

}  // namespace

std::size_t VertexGrid::CellHash::operator()(const Cell& cell) const noexcept {
  std::uint64_t hash = static_cast<std::uint64_t>(cell.x) * 0x9E3779B97F4A7C15U;
  hash ^= static_cast<std::uint64_t>(cell.y) + (hash >> 29U);
  hash *= 0xBF58476D1CE4E5B9U;
  return static_cast<std::size_t>(hash ^ (hash >> 32U));
}

VertexGrid::Cell VertexGrid::cellOf(const qcVector<2>& p, double tolerance) noexcept {
  const double scale = 1.0 / tolerance;
  return {roundToCell(p.x() * scale), roundToCell(p.y() * scale)};
}

VertexGrid::VertexGrid(std::span<const qcVector<2>> points, double tolerance)
    : tolerance_(tolerance) {
  cells_.reserve(points.size());
  for (std::size_t i = 0; i < points.size(); ++i) {
    cells_[cellOf(points[i], tolerance)].push_back(static_cast<int>(i));
  }
}

std::vector<int> VertexGrid::near(std::span<const qcVector<2>> points, const qcVector<2>& p) const {
  std::vector<int> result;
  const Cell centre = cellOf(p, tolerance_);
  const Neighbours columns(centre.x);
  const Neighbours rows(centre.y);
  for (int column = 0; column < columns.count; ++column) {
    for (int row = 0; row < rows.count; ++row) {
      const auto cell = cells_.find({columns.first + column, rows.first + row});
      if (cell == cells_.end()) continue;
      for (const int i : cell->second) {
        if (points[static_cast<std::size_t>(i)].distance(p) < tolerance_) result.push_back(i);
      }
    }
  }
  return result;
}

}  // namespace cntr::index
