// SPDX-License-Identifier: MIT
//
// Cells are about as large as the boxes, so that a box lies in few of them, and there are at most
// twice as many as boxes.

#include <cntr/index/boxgrid.h>

#include <cmath>

namespace cntr::index {

namespace {

constexpr double cellsPerBox = 2.0;

/// How many cells of a size fit into an extent: from 1 to `most`; 1 if that is NaN.
double cellsAcross(double extent, double cellSize, double most) {
  const double cells = std::floor(extent / cellSize);
  if (!(cells > 1.0)) return 1.0;
  return cells < most ? cells : most;
}

}  // namespace

BoxGrid::Layout BoxGrid::layoutFor(const std::vector<plane::Box>& boxes) {
  const double n = static_cast<double>(boxes.size());
  plane::Box bounds;
  double width = 0.0;
  double height = 0.0;
  for (const plane::Box& box : boxes) {
    bounds.add(box);
    width += (box.maxX - box.minX) / n;
    height += (box.maxY - box.minY) / n;
  }
  const double acrossX = bounds.maxX - bounds.minX;
  const double acrossY = bounds.maxY - bounds.minY;
  const double most = cellsPerBox * n;
  double columns = cellsAcross(acrossX, width, most);
  double rows = cellsAcross(acrossY, height, most);
  // The boxes leave most of the plane empty: use larger cells of the same proportions.
  const double excess = std::sqrt(columns * rows / most);
  if (excess > 1.0) {
    columns = cellsAcross(columns, excess, most);
    rows = cellsAcross(rows, excess, most / columns);
  }
  return {bounds, static_cast<std::size_t>(columns), static_cast<std::size_t>(rows)};
}

BoxGrid::BoxGrid(const Layout& layout)
    : columns_(layout.bounds.minX, layout.bounds.maxX, layout.columns),
      rows_(layout.bounds.minY, layout.bounds.maxY, layout.rows),
      columnCount_(layout.columns),
      starts_(layout.columns * layout.rows + 1, 0) {}

/// Calls visit(cell) for the cells that a box lies in, until a visit returns false.
template <class Visit>
void BoxGrid::forEachCell(const plane::Box& box, Visit visit) const {
  const std::size_t lastRow = rows_.intervalOf(box.maxY);
  const std::size_t lastColumn = columns_.intervalOf(box.maxX);
  for (std::size_t row = rows_.intervalOf(box.minY); row <= lastRow; ++row) {
    for (std::size_t c = columns_.intervalOf(box.minX); c <= lastColumn; ++c) {
      if (!visit(cellOf(c, row))) return;
    }
  }
}

bool BoxGrid::placeLists(const std::vector<plane::Box>& boxes) {
  const std::size_t most = entriesPerBox * boxes.size();
  std::size_t entries = 0;
  bool isGood = true;
  for (const plane::Box& box : boxes) {
    forEachCell(box, [&](std::size_t cell) {
      isGood = ++starts_[cell + 1] <= longestList && ++entries <= most;
      return isGood;
    });
    if (!isGood) return false;
  }
  for (std::size_t cell = 1; cell < starts_.size(); ++cell) starts_[cell] += starts_[cell - 1];
  entries_.resize(entries);
  return true;
}

void BoxGrid::fillLists(const std::vector<plane::Box>& boxes) {
  std::vector<std::uint32_t> ends(starts_.begin(), starts_.end() - 1);
  for (std::size_t number = 0; number < boxes.size(); ++number) {
    forEachCell(boxes[number], [&](std::size_t cell) {
      entries_[ends[cell]++] = static_cast<std::uint32_t>(number);
      return true;
    });
  }
}

std::optional<BoxGrid> BoxGrid::make(const std::vector<plane::Box>& boxes) {
  if (boxes.empty()) return {};
  BoxGrid grid(layoutFor(boxes));
  if (!grid.placeLists(boxes)) return {};
  grid.fillLists(boxes);
  return grid;
}

}  // namespace cntr::index
