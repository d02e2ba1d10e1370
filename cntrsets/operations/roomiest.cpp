// SPDX-License-Identifier: MIT

#include <cntrsets/operations/roomiest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include <cntr/contourdefs.h>
#include <cntrsets/operations/tangents.h>

namespace cntr::sets {

namespace {

/// More than the rounding errors of distances.
constexpr double slack = 1e-14;
/// Tangents of a cell: the more there are, the better the mean of their distances bounds it, but
/// the cell can be halved instead.
constexpr int mostTangents = 8;
/// A cell is halved when the tangents leave open less than this fraction of what its bound leaves
/// open.
constexpr double smallShare = 0.25;

/// The number of pieces after which the search is given up: about a second, and more for many
/// sides. Shapes a hundred thousand times as long as wide can need more.
constexpr std::size_t mostPieces = std::size_t{1} << 20U;
constexpr std::size_t mostPiecesOfSide = 256;
/// So many pieces are searched in depth without finding a better point; then the search turns to
/// the piece that promises most. Otherwise it would follow an edge from outside down to the
/// smallest pieces, because next to it everything is promising as long as nothing has been found.
constexpr std::size_t patience = 1024;

/// An upright rectangle that is still to be searched.
struct Cell {
  Point centre;
  /// Half of its sides.
  Point half;
  /// Whether the centre is in the area.
  bool isInside;
  /// None of its points in the area is farther than this from the boundary.
  double bound;
  /// A side near it.
  std::size_t guess;
};

class Search {
 public:
  Search(std::span<const Side> sides, double tolerance)
      : tree_(sides),
        tolerance_(tolerance),
        mostPieces_(mostPieces + mostPiecesOfSide * sides.size()),
        best_{sides.front().a, 0.0} {}

  Room run() {
    std::vector<Cell> cells{everything()};
    while (!cells.empty()) {
      if (best_.pieces - lastProgress_ == patience) turnToMostPromising(cells);
      Cell cell = cells.back();
      cells.pop_back();
      if (best_.pieces++ == mostPieces_)
        throw qcContourDefs::BadParams(L"the feature is too thin for the tolerance");
      const Point target = visit(cell);
      if (isPromising(cell)) split(cell, target, cells);
    }
    return best_;
  }

 private:
  bool isPromising(const Cell& cell) const { return cell.bound > best_.radius + tolerance_; }

  Cell everything() const {
    const plane::Box& box = tree_.bounds();
    const Point centre(0.5 * (box.minX + box.maxX), 0.5 * (box.minY + box.maxY));
    const Point half(0.5 * (box.maxX - box.minX) + slack, 0.5 * (box.maxY - box.minY) + slack);
    return {centre, half, tree_.isInside(centre), std::min(half.x(), half.y()), 0};
  }

  /// Lowers the bound of the cell as long as it stays promising, and looks for better points in it.
  /// Returns the best one that the tangents indicate.
  Point visit(Cell& cell) {
    Point target = cell.centre;
    if (!isPromising(cell)) return target;
    SideTree::Nearest near = tree_.nearest(target, cell.guess);
    cell.guess = near.side;
    const double reach = std::sqrt(cell.half.x() * cell.half.x() + cell.half.y() * cell.half.y());
    cell.bound = std::min(cell.bound, (cell.isInside ? near.distance : -near.distance) + reach);
    if (cell.isInside) improve(target, near.distance);
    program_.clear();
    for (int tangents = 0; tangents < mostTangents && isPromising(cell); ++tangents) {
      program_.add({near.side, target - cell.centre, near.offset, near.distance});
      const TangentProgram::Solution solution = program_.solve(cell.half);
      cell.bound = std::min(cell.bound, boundOf(cell, solution));
      target = cell.centre + solution.at;
      near = tree_.nearest(target, near.side);
      if (near.distance > best_.radius && tree_.isInside(target, cell.centre, cell.isInside))
        improve(target, near.distance);
      if (solution.value - near.distance < smallShare * (cell.bound - near.distance)) break;
    }
    return target;
  }

  /// The largest weighted mean of distances in the cell, which the smallest distance cannot exceed.
  double boundOf(const Cell& cell, const TangentProgram::Solution& solution) const {
    double bound = 0.0;
    for (const double x : {-cell.half.x(), cell.half.x()}) {
      for (const double y : {-cell.half.y(), cell.half.y()}) {
        const Point corner = cell.centre + Point(x, y);
        double mean = 0.0;
        for (const TangentProgram::Share& share : solution.shares) {
          if (share.weight > 0.0)
            mean += share.weight * tree_.side(share.side).offsetTo(corner).len();
        }
        bound = std::max(bound, mean);
      }
    }
    return bound;
  }

  void improve(const Point& p, double distance) {
    if (!(distance > best_.radius)) return;
    best_ = {p, distance, best_.pieces};
    lastProgress_ = best_.pieces;
  }

  void turnToMostPromising(std::vector<Cell>& cells) {
    std::stable_sort(cells.begin(), cells.end(),
                     [](const Cell& a, const Cell& b) { return a.bound < b.bound; });
    lastProgress_ = best_.pieces;
  }

  /// Halves the longer side. The half with the target comes first.
  void split(const Cell& cell, const Point& target, std::vector<Cell>& cells) const {
    const bool isWide = cell.half.x() > cell.half.y();
    const Point half = isWide ? Point(0.5 * cell.half.x(), cell.half.y())
                              : Point(cell.half.x(), 0.5 * cell.half.y());
    Point away = isWide ? Point(half.x(), 0.0) : Point(0.0, half.y());
    const Point wanted = target - cell.centre;
    if (wanted.x() * away.x() + wanted.y() * away.y() > 0.0) away = away * -1.0;
    for (const Point& centre : {cell.centre + away, cell.centre - away}) {
      const bool isInside = tree_.isInside(centre, cell.centre, cell.isInside);
      cells.push_back({centre, half, isInside, cell.bound, cell.guess});
    }
  }

  SideTree tree_;
  double tolerance_;
  std::size_t mostPieces_;
  Room best_;
  /// The number of pieces when a better point was found, or the search turned.
  std::size_t lastProgress_ = 0;
  TangentProgram program_;
};

}  // namespace

Room roomiest(std::span<const Side> sides, double tolerance) {
  return Search(sides, tolerance).run();
}

}  // namespace cntr::sets
