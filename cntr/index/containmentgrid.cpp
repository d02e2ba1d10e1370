// SPDX-License-Identifier: MIT
//
// Crossings of the horizontal line through a point are counted by the cell that they fall into,
// found from the crossing's own coordinate: however it is rounded, each crossing belongs to exactly
// one cell of the row, and the edge is listed there, because lists reach beyond their cell by the
// margin.
//
// From a point in a mixed cell a path leads to the middle of the cell's right side: horizontally to
// that side, then along it. Only edges listed in the cell cross this path, and the parity at its
// end is known. The comparisons of coordinates are exact, and a computed crossing is rounded by
// less than containmentRounding. So the count is right unless an edge comes near the corner of the
// path, where one part might count the edge and the other might not. Then the crossings are counted
// along the row.

#include <cntr/index/containmentgrid.h>

#include <algorithm>
#include <array>
#include <cmath>

#include <cntr/plane/containmentconditions.h>
#include <cntr/plane/tolerances.h>

namespace cntr::index {

namespace {

constexpr double edgeMargin = plane::containmentMargin;

/// Cells per vertex: more cells hold more answers and take more memory (4 bytes each).
constexpr double cellsPerVertex = 4.0;
constexpr double fewestCells = 512.0;
/// List entries per vertex, roughly: 4 bytes each.
constexpr double entriesPerVertex = 4.0;
/// A cell is at least this many vertex margins wide, since otherwise the margin would fill it.
constexpr double marginsPerCell = 4.0;

const qcVector<2>& before(std::span<const qcVector<2>> points, std::size_t k) {
  return points[k == 0 ? points.size() - 1 : k - 1];
}

/// Half-open, so that a vertex on the line counts for one of its two edges where the path passes
/// through the line, and for both or neither where it only touches the line.
bool straddles(const qcVector<2>& a, const qcVector<2>& b, double y) {
  return (a.y() <= y) != (b.y() <= y);
}

/// The same for the vertical line at x, and where an edge that straddles it crosses it.
bool straddlesX(const qcVector<2>& a, const qcVector<2>& b, double x) {
  return (a.x() <= x) != (b.x() <= x);
}

double crossingY(const qcVector<2>& a, const qcVector<2>& b, double x) {
  return a.y() + (x - a.x()) / (b.x() - a.x()) * (b.y() - a.y());
}

/// True when two numbers are so close that rounding may exchange them.
bool mayCoincide(double a, double b) { return std::abs(a - b) < 10.0 * plane::containmentRounding; }

/// The sum of the extents of all edges: roughly how many cells of width 1 they pass through.
double extentOfEdges(std::span<const qcVector<2>> points) {
  double sum = 0.0;
  for (std::size_t k = 0; k < points.size(); ++k) {
    const qcVector<2> d = points[k] - before(points, k);
    sum += std::abs(d.x()) + std::abs(d.y());
  }
  return sum;
}

/// `value` rounded down, at most count - 1. Converting to a signed integer takes one instruction,
/// to an unsigned one several. REQUIRES: 0 <= value < 2^31, 0 < count <= 2^31.
std::size_t floorBelow(double value, std::size_t count) {
  const auto most = static_cast<std::int32_t>(count - 1);
  return static_cast<std::size_t>(std::min(static_cast<std::int32_t>(value), most));
}

/// The same for any value.
std::size_t clampedFloor(double value, std::size_t count) {
  if (!(value > 0.0)) return 0;
  const auto most = static_cast<std::int32_t>(count - 1);
  if (value >= static_cast<double>(most)) return count - 1;
  return floorBelow(value, count);
}

}  // namespace

bool ContainmentGrid::isPossible(std::span<const qcVector<2>> points, const plane::Box& bounds) {
  constexpr double marginsAcross = 16.0;
  if (points.size() < 3) return false;
  const double narrowest = std::min(bounds.maxX - bounds.minX, bounds.maxY - bounds.minY);
  return narrowest > marginsAcross * plane::vertexMargin(points.size()) &&
         std::all_of(points.begin(), points.end(), plane::isSmallEnough);
}

ContainmentGrid::Layout ContainmentGrid::layoutFor(std::span<const qcVector<2>> points,
                                                   const plane::Box& bounds) {
  const double n = static_cast<double>(points.size());
  const double width = bounds.maxX - bounds.minX;
  const double height = bounds.maxY - bounds.minY;
  const double cellSize =
      std::max({std::sqrt(width * height / std::max(cellsPerVertex * n, fewestCells)),
                extentOfEdges(points) / std::max(entriesPerVertex * n, fewestCells),
                marginsPerCell * plane::vertexMargin(points.size())});
  const double columns = std::max(1.0, std::floor(width / cellSize));
  const double rows = std::max(1.0, std::floor(height / cellSize));
  return {static_cast<std::size_t>(columns), static_cast<std::size_t>(rows), width / columns,
          height / rows};
}

/// Fills a grid: first counts the entries of each cell's list, then places and writes them.
class ContainmentGrid::Builder {
 public:
  Builder(ContainmentGrid& grid, std::span<const qcVector<2>> points)
      : grid_(grid),
        points_(points),
        reach_(grid.vertexMargin_ + edgeMargin),
        entries_(grid.layout_.columns * grid.layout_.rows, 0),
        toggles_(entries_.size(), false) {}

  void build() {
    forEachEntry([&](std::size_t cell, std::size_t) { ++entries_[cell]; });
    placeLists();
    forEachEntry([&](std::size_t cell, std::size_t edge) {
      std::uint32_t* const list = &grid_.lists_[grid_.cells_[cell] - eMixed];
      list[++list[0]] = static_cast<std::uint32_t>(edge);
    });
    toggleRowCentres();
    for (std::size_t row = 0; row < grid_.layout_.rows; ++row) fillAnswers(row);
  }

 private:
  /// Calls visit(cell, edge) for every cell that an edge comes near.
  template <class Visit>
  void forEachEntry(Visit visit) const {
    for (std::size_t k = 0; k < points_.size(); ++k) {
      const qcVector<2>& a = before(points_, k);
      const qcVector<2>& b = points_[k];
      const std::size_t lastRow = grid_.rowOf(std::max(a.y(), b.y()) + reach_);
      for (std::size_t row = grid_.rowOf(std::min(a.y(), b.y()) - reach_); row <= lastRow; ++row) {
        const auto [low, high] = extentInRow(a, b, row);
        const std::size_t lastColumn = grid_.columnOf(high + reach_);
        for (std::size_t c = grid_.columnOf(low - reach_); c <= lastColumn; ++c) {
          visit(row * grid_.layout_.columns + c, k);
        }
      }
    }
  }

  /// The x range of the part of an edge that lies within reach of a row.
  std::array<double, 2> extentInRow(const qcVector<2>& a, const qcVector<2>& b,
                                    std::size_t row) const {
    if (a.y() == b.y()) return {std::min(a.x(), b.x()), std::max(a.x(), b.x())};
    const double bottom = grid_.bounds_.minY + static_cast<double>(row) * grid_.layout_.cellHeight;
    const double low = bottom - reach_;
    const double high = bottom + grid_.layout_.cellHeight + reach_;
    const double xa = plane::crossingX(a, b, std::clamp(a.y(), low, high));
    const double xb = plane::crossingX(a, b, std::clamp(b.y(), low, high));
    return {std::min(xa, xb), std::max(xa, xb)};
  }

  void placeLists() {
    std::uint32_t place = 0;
    for (std::size_t cell = 0; cell < entries_.size(); ++cell) {
      if (entries_[cell] == 0) continue;
      grid_.cells_[cell] = eMixed + place;
      place += entries_[cell] + 1;
    }
    grid_.lists_.assign(place, 0);
  }

  /// Marks the cells in which an odd number of edges cross the middle of their row.
  void toggleRowCentres() {
    for (std::size_t k = 0; k < points_.size(); ++k) {
      const qcVector<2>& a = before(points_, k);
      const qcVector<2>& b = points_[k];
      const std::size_t lastRow = grid_.rowOf(std::max(a.y(), b.y()));
      for (std::size_t row = grid_.rowOf(std::min(a.y(), b.y())); row <= lastRow; ++row) {
        const double y = grid_.middleOf(row);
        if (!straddles(a, b, y)) continue;
        const std::size_t cell =
            row * grid_.layout_.columns + grid_.columnOf(plane::crossingX(a, b, y));
        toggles_[cell] = !toggles_[cell];
      }
    }
  }

  /// Completes the head of a mixed cell's list: the parity of the middle of its right side, and
  /// whether crossings on the path there can be counted.
  void describeMixed(std::size_t column, std::size_t row, bool isInside) {
    std::uint32_t& head = grid_.lists_[grid_.cells_[row * grid_.layout_.columns + column] - eMixed];
    head = head << headBits | (isInside ? eSideParity : 0);
    const double x = grid_.rightSideOf(column);
    const double y = grid_.middleOf(row);
    const auto list = entriesOf(&head);
    const bool isNear = std::any_of(list.begin(), list.end(), [&](std::uint32_t k) {
      const qcVector<2>& a = before(points_, k);
      const qcVector<2>& b = points_[k];
      return (straddles(a, b, y) && mayCoincide(plane::crossingX(a, b, y), x)) ||
             (straddlesX(a, b, x) && mayCoincide(crossingY(a, b, x), y));
    });
    if (!isNear) head |= eLeadsToSide;
  }

  /// Gives cells that no edge comes near the parity of the crossings to their right.
  void fillAnswers(std::size_t row) {
    bool isInside = false;
    for (std::size_t column = grid_.layout_.columns; column-- > 0;) {
      const std::size_t cell = row * grid_.layout_.columns + column;
      if (grid_.cells_[cell] >= eMixed) describeMixed(column, row, isInside);
      if (toggles_[cell]) isInside = !isInside;
      if (grid_.cells_[cell] >= eMixed) continue;
      const Cell ray = grid_.rayEndsOutsideFromCell(column, row) ? 0 : eNeedsRay;
      grid_.cells_[cell] = ray | (isInside ? eParity : 0);
    }
  }

  ContainmentGrid& grid_;
  std::span<const qcVector<2>> points_;
  /// How far from a cell an edge is still listed: farther than the margin of condition (b) by more
  /// than any rounding.
  double reach_;
  std::vector<std::uint32_t> entries_;
  std::vector<bool> toggles_;
};

ContainmentGrid::ContainmentGrid(std::span<const qcVector<2>> points, const plane::Box& bounds,
                                 double radius)
    : bounds_(bounds),
      layout_(layoutFor(points, bounds)),
      columnsPerUnit_(1.0 / layout_.cellWidth),
      rowsPerUnit_(1.0 / layout_.cellHeight),
      vertexMargin_(plane::vertexMargin(points.size())),
      first_(points.front()),
      radius_(radius),
      rayAlwaysEndsOutside_(plane::rayAlwaysEndsOutside(bounds, radius)),
      cells_(layout_.columns * layout_.rows, 0) {
  Builder(*this, points).build();
}

std::size_t ContainmentGrid::columnOf(double x) const noexcept {
  return clampedFloor((x - bounds_.minX) * columnsPerUnit_, layout_.columns);
}

std::size_t ContainmentGrid::rowOf(double y) const noexcept {
  return clampedFloor((y - bounds_.minY) * rowsPerUnit_, layout_.rows);
}

// The cell is slightly widened.
bool ContainmentGrid::rayEndsOutsideFromCell(std::size_t column, std::size_t row) const noexcept {
  if (rayAlwaysEndsOutside_) return true;
  const qcVector<2> low(bounds_.minX + static_cast<double>(column) * layout_.cellWidth - edgeMargin,
                        bounds_.minY + static_cast<double>(row) * layout_.cellHeight - edgeMargin);
  const qcVector<2> high(low.x() + layout_.cellWidth + 2.0 * edgeMargin,
                         low.y() + layout_.cellHeight + 2.0 * edgeMargin);
  return plane::rayEndsOutside(bounds_, first_, radius_,
                               plane::Box{low.x(), low.y(), high.x(), high.y()});
}

double ContainmentGrid::rightSideOf(std::size_t column) const noexcept {
  return bounds_.minX + static_cast<double>(column + 1) * layout_.cellWidth;
}

double ContainmentGrid::middleOf(std::size_t row) const noexcept {
  return bounds_.minY + (static_cast<double>(row) + 0.5) * layout_.cellHeight;
}

std::span<const std::uint32_t> ContainmentGrid::edgesOf(Cell cell) const noexcept {
  return entriesOf(&lists_[cell - eMixed]);
}

std::span<const std::uint32_t> ContainmentGrid::entriesOf(const std::uint32_t* list) noexcept {
  return {list + 1, *list >> headBits};
}

bool ContainmentGrid::keepsClear(const qcVector<2>& a, const qcVector<2>& b,
                                 const qcVector<2>& p) const noexcept {
  const qcVector<2> toEnd = b - p;
  if (toEnd * toEnd < vertexMargin_ * vertexMargin_) return false;
  const qcVector<2> d = b - a;
  const qcVector<2> w = p - a;
  const double c = qnKernel::cross(d, w);
  const double dd = d * d;
  if (c * c > edgeMargin * edgeMargin * dd) return true;
  const double along = w * d;
  return !(along > 0.0 && along < dd);
}

bool ContainmentGrid::isInside(std::span<const qcVector<2>> points, std::size_t column,
                               std::size_t row, const qcVector<2>& p) const noexcept {
  bool inside = false;
  for (std::size_t c = column; c < layout_.columns; ++c) {
    const Cell cell = cells_[row * layout_.columns + c];
    if (cell < eMixed) return inside != ((cell & eParity) != 0);
    for (const std::uint32_t k : edgesOf(cell)) {
      const qcVector<2>& a = before(points, k);
      const qcVector<2>& b = points[k];
      if (!straddles(a, b, p.y())) continue;
      const double x = plane::crossingX(a, b, p.y());
      if (x > p.x() && columnOf(x) == c) inside = !inside;
    }
  }
  return inside;
}

ContainmentGrid::Answer ContainmentGrid::locateInMixed(std::span<const qcVector<2>> points,
                                                       std::size_t column, std::size_t row,
                                                       const qcVector<2>& p) const noexcept {
  const std::uint32_t* const list = &lists_[cells_[row * layout_.columns + column] - eMixed];
  const double side = rightSideOf(column);
  const double middle = middleOf(row);
  bool inside = (*list & eSideParity) != 0;
  bool isSure = (*list & eLeadsToSide) != 0;
  for (const std::uint32_t k : entriesOf(list)) {
    const qcVector<2>& a = before(points, k);
    const qcVector<2>& b = points[k];
    if (!keepsClear(a, b, p)) return Answer::eUnknown;
    if (straddles(a, b, p.y())) {
      const double x = plane::crossingX(a, b, p.y());
      if (mayCoincide(x, side)) isSure = false;
      if (x > p.x() && x < side) inside = !inside;
    }
    if (straddlesX(a, b, side)) {
      const double y = crossingY(a, b, side);
      if (mayCoincide(y, p.y())) isSure = false;
      if ((y > p.y()) != (y > middle)) inside = !inside;
    }
  }
  if (!isSure) inside = isInside(points, column, row, p);
  return inside ? Answer::eInside : Answer::eOutside;
}

ContainmentGrid::Answer ContainmentGrid::locate(std::span<const qcVector<2>> points,
                                                const qcVector<2>& p) const noexcept {
  if (!plane::contains(bounds_, p)) return Answer::eOutside;
  const std::size_t column = floorBelow((p.x() - bounds_.minX) * columnsPerUnit_, layout_.columns);
  const std::size_t row = floorBelow((p.y() - bounds_.minY) * rowsPerUnit_, layout_.rows);
  const Cell cell = cells_[row * layout_.columns + column];
  if (cell < eMixed) {
    if ((cell & eNeedsRay) != 0) return Answer::eUnknown;
    return (cell & eParity) != 0 ? Answer::eInside : Answer::eOutside;
  }
  if (!rayAlwaysEndsOutside_ && !plane::rayEndsOutside(bounds_, first_, radius_, p)) {
    return Answer::eUnknown;
  }
  return locateInMixed(points, column, row, p);
}

}  // namespace cntr::index
