// SPDX-License-Identifier: MIT

#include <cntrtable/pointgrid.h>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace table {

namespace {

constexpr double pointsPerCell = 4.0;

std::vector<NumberedPoint> finitePoints(std::span<const double> coordinates) {
  std::vector<NumberedPoint> points;
  points.reserve(coordinates.size() / 2);
  for (std::size_t i = 0; i + 1 < coordinates.size(); i += 2) {
    if (!std::isfinite(coordinates[i]) || !std::isfinite(coordinates[i + 1])) continue;
    points.push_back({{coordinates[i], coordinates[i + 1]}, static_cast<std::int64_t>(i / 2)});
  }
  return points;
}

/// Nothing for points on a line, and for those so far apart that their distance overflows.
double cellsPerUnit(double cells, double length) {
  return length > 0.0 && std::isfinite(length) ? cells / length : 0.0;
}

}  // namespace

PointGrid::PointGrid(std::span<const double> coordinates) {
  const std::vector<NumberedPoint> points = finitePoints(coordinates);
  for (const NumberedPoint& point : points) bounds_.add(point.position);
  const double width = bounds_.maxX - bounds_.minX;
  const double height = bounds_.maxY - bounds_.minY;
  const double cells = std::max(1.0, static_cast<double>(points.size()) / pointsPerCell);
  // As many columns as rows for a square, all cells in one row for points on a line.
  const double share = std::isfinite(width / height) ? width / height : cells;
  const double columns = std::clamp(std::floor(std::sqrt(cells * share)), 1.0, std::floor(cells));
  columns_ = static_cast<std::size_t>(columns);
  rows_ = static_cast<std::size_t>(std::max(1.0, std::floor(cells / columns)));
  columnsPerUnit_ = cellsPerUnit(columns, width);
  rowsPerUnit_ = cellsPerUnit(static_cast<double>(rows_), height);

  std::vector<std::size_t> cellsOfPoints;
  cellsOfPoints.reserve(points.size());
  begins_.assign(columns_ * rows_ + 1, 0);
  for (const NumberedPoint& point : points) {
    const qcVector<2>& p = point.position;
    cellsOfPoints.push_back(rowOf(p.y()) * columns_ + columnOf(p.x()));
    ++begins_[cellsOfPoints.back() + 1];
  }
  std::partial_sum(begins_.begin(), begins_.end(), begins_.begin());
  std::vector<std::size_t> next(begins_.begin(), begins_.end() - 1);
  points_.resize(points.size());
  for (std::size_t i = 0; i < points.size(); ++i) points_[next[cellsOfPoints[i]]++] = points[i];
}

std::size_t PointGrid::cellOf(double place, std::size_t count) noexcept {
  if (!(place > 0.0)) return 0;
  return place < static_cast<double>(count) ? static_cast<std::size_t>(place) : count - 1;
}

}  // namespace table
