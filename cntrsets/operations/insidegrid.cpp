// SPDX-License-Identifier: MIT

#include <cntrsets/operations/insidegrid.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

#include <cntr/plane/containmentconditions.h>
#include <cntr/plane/tolerances.h>
#include <cntrsets/operations/ringlist.h>

namespace cntr::sets {

namespace {

/// Cells per vertex, of a byte each, and those of the smallest features.
constexpr double cellsPerVertex = 32.0;
constexpr double fewestCells = 1024.0;
/// Cells that edges pass through, per vertex.
constexpr double passedPerVertex = 16.0;
/// A cell is at least this many reaches wide, since otherwise few cells would be far from all
/// edges.
constexpr double reachesPerCell = 4.0;
constexpr double reachesAcross = 16.0;

/// How far all edges are from a cell that holds an answer: farther than the margin of condition (b)
/// by more than any rounding.
double reachFor(const RingList& rings) {
  std::size_t most = 3;
  for (const std::span<const Point>& ring : rings.rings()) most = std::max(most, ring.size());
  return plane::vertexMargin(most) + plane::containmentMargin;
}

const Point& before(std::span<const Point> ring, std::size_t k) {
  return ring[k == 0 ? ring.size() - 1 : k - 1];
}

/// Roughly how many cells of width 1 all edges pass through.
double extentOfEdges(const RingList& rings) {
  double sum = 0.0;
  for (const std::span<const Point>& ring : rings.rings()) {
    for (std::size_t k = 0; k < ring.size(); ++k) {
      const Point along = ring[k] - before(ring, k);
      sum += std::abs(along.x()) + std::abs(along.y());
    }
  }
  return sum;
}

std::size_t countVertices(const RingList& rings) {
  std::size_t count = 0;
  for (const std::span<const Point>& ring : rings.rings()) count += ring.size();
  return count;
}

/// What condition (d) requires of a ring.
struct RayOfRing {
  explicit RayOfRing(std::span<const Point> ring) : first(ring.front()) {
    for (const Point& p : ring) {
      bounds.add(p);
      radius = std::max(radius, first.distance(p));
    }
  }

  bool alwaysEndsOutside() const { return plane::rayAlwaysEndsOutside(bounds, radius); }

  /// Whether it ends outside from all points of a cell.
  bool endsOutside(const plane::Box& cell) const {
    return plane::rayEndsOutside(bounds, first, radius, cell);
  }

  Point first;
  plane::Box bounds;
  double radius = 0.0;
};

}  // namespace

/// Finds the cells that edges come near, then asks about one cell in each run of the others.
class InsideGrid::Builder {
 public:
  Builder(InsideGrid& grid, const RingList& rings, double reach)
      : grid_(grid),
        rings_(rings),
        reach_(reach),
        width_((grid.box_.maxX - grid.box_.minX) / static_cast<double>(grid.columns_)),
        height_((grid.box_.maxY - grid.box_.minY) / static_cast<double>(grid.rows_)),
        isNear_(grid.cells_.size(), 0) {}

  void build(const IsFilled& isFilled) {
    for (const std::span<const Point>& ring : rings_.rings())
      for (std::size_t k = 0; k < ring.size(); ++k) markNear(before(ring, k), ring[k]);
    for (std::size_t row = 0; row < grid_.rows_; ++row) answerRow(row, isFilled);
    for (std::size_t i = 0; i < rings_.rings().size(); ++i)
      if (rings_.isHole(i)) takeBackInside(RayOfRing(rings_.rings()[i]));
  }

 private:
  using Cells = std::array<std::size_t, 2>;

  void markNear(const Point& a, const Point& b) {
    const auto [lowest, highest] = rowsNear(std::min(a.y(), b.y()), std::max(a.y(), b.y()));
    for (std::size_t row = lowest; row <= highest; ++row) {
      const auto [low, high] = extentInRow(a, b, row);
      const auto [first, last] = columnsNear(low, high);
      const auto begin = isNear_.begin() + static_cast<std::ptrdiff_t>(row * grid_.columns_);
      std::fill(begin + static_cast<std::ptrdiff_t>(first),
                begin + static_cast<std::ptrdiff_t>(last + 1), std::uint8_t{1});
    }
  }

  Cells rowsNear(double low, double high) const {
    return {grid_.rowOf(low - reach_), grid_.rowOf(high + reach_)};
  }
  Cells columnsNear(double low, double high) const {
    return {grid_.columnOf(low - reach_), grid_.columnOf(high + reach_)};
  }

  /// The x range of the part of an edge that lies within reach of a row.
  std::array<double, 2> extentInRow(const Point& a, const Point& b, std::size_t row) const {
    if (a.y() == b.y()) return {std::min(a.x(), b.x()), std::max(a.x(), b.x())};
    const double low = bottomOf(row) - reach_;
    const double high = bottomOf(row) + height_ + reach_;
    const double xa = plane::crossingX(a, b, std::clamp(a.y(), low, high));
    const double xb = plane::crossingX(a, b, std::clamp(b.y(), low, high));
    return {std::min(xa, xb), std::max(xa, xb)};
  }

  double bottomOf(std::size_t row) const {
    return grid_.box_.minY + static_cast<double>(row) * height_;
  }
  double leftOf(std::size_t column) const {
    return grid_.box_.minX + static_cast<double>(column) * width_;
  }

  void answerRow(std::size_t row, const IsFilled& isFilled) {
    const std::size_t rowEnd = (row + 1) * grid_.columns_;
    for (std::size_t begin = row * grid_.columns_; begin < rowEnd;) {
      if (isNear_[begin] != 0) {
        ++begin;
        continue;
      }
      std::size_t end = begin;
      while (end < rowEnd && isNear_[end] == 0) ++end;
      const Answer answer = answerOf(begin, end, isFilled);
      for (; begin < end; ++begin) grid_.cells_[begin] = answer;
    }
  }

  /// The answer of a run of cells that no edge comes near: that of a cell below, if one is known.
  Answer answerOf(std::size_t begin, std::size_t end, const IsFilled& isFilled) const {
    for (std::size_t cell = begin; cell < end && cell >= grid_.columns_; ++cell) {
      const Answer below = grid_.cells_[cell - grid_.columns_];
      if (below != Answer::eUnknown) return below;
    }
    const Point middle(leftOf(begin % grid_.columns_) + 0.5 * width_,
                       bottomOf(begin / grid_.columns_) + 0.5 * height_);
    return isFilled(middle) ? Answer::eInside : Answer::eOutside;
  }

  /// Where the ray by which a hole decides may end within the hole.
  void takeBackInside(const RayOfRing& ray) {
    if (ray.alwaysEndsOutside()) return;
    const auto [bottom, top] = rowsNear(ray.bounds.minY, ray.bounds.maxY);
    const auto [left, right] = columnsNear(ray.bounds.minX, ray.bounds.maxX);
    for (std::size_t row = bottom; row <= top; ++row) {
      for (std::size_t column = left; column <= right; ++column) {
        Answer& answer = grid_.cells_[row * grid_.columns_ + column];
        if (answer == Answer::eInside && !ray.endsOutside(widened(row, column)))
          answer = Answer::eUnknown;
      }
    }
  }

  plane::Box widened(std::size_t row, std::size_t column) const {
    const double margin = plane::containmentMargin;
    return {leftOf(column) - margin, bottomOf(row) - margin, leftOf(column) + width_ + margin,
            bottomOf(row) + height_ + margin};
  }

  InsideGrid& grid_;
  const RingList& rings_;
  double reach_;
  double width_;
  double height_;
  std::vector<std::uint8_t> isNear_;
};

bool InsideGrid::isPossible(const std::vector<qcRings>& feature, const plane::Box& box) {
  const RingList rings(feature);
  const double narrowest = std::min(box.maxX - box.minX, box.maxY - box.minY);
  if (!(narrowest > reachesAcross * reachFor(rings))) return false;
  return std::all_of(rings.rings().begin(), rings.rings().end(), [](std::span<const Point> ring) {
    return std::all_of(ring.begin(), ring.end(), plane::isSmallEnough);
  });
}

InsideGrid::InsideGrid(const std::vector<qcRings>& feature, const plane::Box& box,
                       const IsFilled& isFilled)
    : box_(box) {
  const RingList rings(feature);
  const double reach = reachFor(rings);
  const double vertices = static_cast<double>(countVertices(rings));
  const double width = box.maxX - box.minX;
  const double height = box.maxY - box.minY;
  const double cellSize =
      std::max({std::sqrt(width * height / std::max(cellsPerVertex * vertices, fewestCells)),
                extentOfEdges(rings) / std::max(passedPerVertex * vertices, fewestCells),
                reachesPerCell * reach});
  const double columns = std::max(1.0, std::floor(width / cellSize));
  const double rows = std::max(1.0, std::floor(height / cellSize));
  columns_ = static_cast<std::size_t>(columns);
  rows_ = static_cast<std::size_t>(rows);
  columnsPerUnit_ = columns / width;
  rowsPerUnit_ = rows / height;
  lastColumn_ = columns - 1.0;
  lastRow_ = rows - 1.0;
  cells_.assign(columns_ * rows_, Answer::eUnknown);
  Builder(*this, rings, reach).build(isFilled);
}

}  // namespace cntr::sets
