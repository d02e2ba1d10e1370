// SPDX-License-Identifier: MIT
//
// Finds where pieces meet and cuts them there, in rounds.

#include <cntrsets/faces/noding.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include <cntr/contourdefs.h>
#include <cntrsets/faces/piecetree.h>

namespace cntr::sets {
namespace {

/// Rounds that may make more cuts than those before. Outlines that need a grid show it within
/// these: of 3,000 random ones, many with nearly parallel edges on one line, none gained from more
/// rounds.
constexpr int freeRounds = 3;
/// A round that makes more than this many times the cuts of the first one would be followed by
/// worse: edges that lie along each other make billions of cuts within three rounds.
constexpr std::size_t mostGrowth = 8;

struct Cut {
  std::size_t piece;
  Point at;
};

/// Where pieces are to be cut, and whether two cross.
struct Cuts {
  std::vector<Piece> pieces;
  std::vector<Cut> list{};
  bool crossed = false;
  bool touched = false;

  void add(std::size_t piece, const Point& at) {
    if (at != pieces[piece].from && at != pieces[piece].to) list.push_back({piece, at});
  }
};

bool inBoxOf(const Piece& piece, const Point& p) {
  return p.x() >= std::min(piece.from.x(), piece.to.x()) &&
         p.x() <= std::max(piece.from.x(), piece.to.x()) &&
         p.y() >= std::min(piece.from.y(), piece.to.y()) &&
         p.y() <= std::max(piece.from.y(), piece.to.y());
}

/// On which sides of a piece's line the ends of another lie.
struct Sides {
  int from;
  int to;

  Sides(const Piece& line, const Piece& other)
      : from(orientation(line.from, line.to, other.from)),
        to(orientation(line.from, line.to, other.to)) {}

  bool different() const { return from * to < 0; }
  bool equal() const { return from * to > 0; }
};

/// Whether piece j follows piece i in their ring.
bool follows(const std::vector<Piece>& pieces, std::size_t i, std::size_t j) {
  if (pieces[i].ring != pieces[j].ring) return false;
  if (j == i + 1) return true;
  const bool isFirst = j == 0 || pieces[j - 1].ring != pieces[j].ring;
  const bool isLast = i + 1 == pieces.size() || pieces[i + 1].ring != pieces[i].ring;
  return isFirst && isLast;
}

/// Whether two pieces that share a point share no more than the vertex between neighbours.
bool meetAsNeighbours(const std::vector<Piece>& pieces, std::size_t i, std::size_t j) {
  if (follows(pieces, j, i)) std::swap(i, j);
  if (!follows(pieces, i, j)) return false;
  const Piece& p = pieces[i];
  const Piece& q = pieces[j];
  // When neighbours are on one line, one that turns back lies along the other.
  return orientation(p.from, p.to, q.to) != 0 || plane::dotSign(p.from, p.to, q.from, q.to) > 0;
}

/// Cuts two pieces where they cross or one begins on the other; where a piece ends, another begins.
void meet(Cuts& cuts, std::size_t i, std::size_t j) {
  const Piece& p = cuts.pieces[i];
  const Piece& q = cuts.pieces[j];
  const Sides ofP(p, q);
  if (ofP.equal()) return;
  const Sides ofQ(q, p);
  if (ofQ.equal()) return;
  // The line of one meets the other: as their boxes meet, so do the two.
  if (!cuts.touched && !meetAsNeighbours(cuts.pieces, i, j)) cuts.touched = true;
  if (ofP.different() && ofQ.different()) {
    const Point at = crossing(p.from, p.to, q.from, q.to);
    cuts.add(i, at);
    cuts.add(j, at);
    cuts.crossed = true;
    return;
  }
  if (ofP.from == 0 && inBoxOf(p, q.from)) cuts.add(i, q.from);
  if (ofQ.from == 0 && inBoxOf(q, p.from)) cuts.add(j, p.from);
}

Cuts meetings(std::vector<Piece> pieces) {
  Cuts cuts{std::move(pieces)};
  PieceTree(cuts.pieces).forEachPair([&](std::size_t i, std::size_t j) { meet(cuts, i, j); });
  return cuts;
}

/// Whether `a` comes before `b` on the way along the piece.
bool isBefore(const Piece& piece, const Point& a, const Point& b) {
  const double dx = piece.to.x() - piece.from.x();
  const double dy = piece.to.y() - piece.from.y();
  const double alongX = dx < 0.0 ? b.x() - a.x() : a.x() - b.x();
  const double alongY = dy < 0.0 ? b.y() - a.y() : a.y() - b.y();
  const double first = std::abs(dx) >= std::abs(dy) ? alongX : alongY;
  const double second = std::abs(dx) >= std::abs(dy) ? alongY : alongX;
  return first < 0.0 || (first == 0.0 && second < 0.0);
}

void append(std::vector<Piece>& pieces, Point& from, const Point& to, std::size_t ring) {
  if (from == to) return;
  pieces.push_back({from, to, ring});
  from = to;
}

std::vector<Piece> cutPieces(Cuts cuts) {
  if (cuts.list.empty()) return std::move(cuts.pieces);
  std::sort(cuts.list.begin(), cuts.list.end(), [&](const Cut& a, const Cut& b) {
    if (a.piece != b.piece) return a.piece < b.piece;
    return isBefore(cuts.pieces[a.piece], a.at, b.at);
  });
  std::vector<Piece> result;
  result.reserve(cuts.pieces.size() + cuts.list.size());
  auto cut = cuts.list.begin();
  for (std::size_t i = 0; i < cuts.pieces.size(); ++i) {
    const Piece& piece = cuts.pieces[i];
    Point from = piece.from;
    for (; cut != cuts.list.end() && cut->piece == i; ++cut)
      append(result, from, cut->at, piece.ring);
    append(result, from, piece.to, piece.ring);
  }
  return result;
}

double onGrid(double value, double grid) { return std::round(value / grid) * grid; }

Point onGrid(const Point& p, double grid) { return {onGrid(p.x(), grid), onGrid(p.y(), grid)}; }

/// Whether the piece has a point in the grid cell around `middle`, to which the cell's left and
/// lower sides belong. With closed cells, a piece through the corner of four could be led to and
/// fro between two of them without end. As the piece ends on the grid, it runs along no side of a
/// cell.
bool passesThrough(const Piece& piece, const Point& middle, double half) {
  if (std::max(piece.from.x(), piece.to.x()) < middle.x() - half ||
      std::min(piece.from.x(), piece.to.x()) > middle.x() + half ||
      std::max(piece.from.y(), piece.to.y()) < middle.y() - half ||
      std::min(piece.from.y(), piece.to.y()) > middle.y() + half)
    return false;
  const auto side = [&](double dx, double dy) {
    return orientation(piece.from, piece.to, middle + Point(dx, dy));
  };
  const int lowerLeft = side(-half, -half);
  const std::array<int, 3> others{side(half, -half), side(half, half), side(-half, half)};
  if (lowerLeft == 0) return true;
  return std::any_of(others.begin(), others.end(), [&](int other) { return other == -lowerLeft; });
}

/// The pieces with their ends moved to the grid.
std::vector<Piece> movedToGrid(const std::vector<Piece>& pieces, double grid) {
  std::vector<Piece> moved;
  moved.reserve(pieces.size());
  for (const Piece& piece : pieces) {
    Point from = onGrid(piece.from, grid);
    append(moved, from, onGrid(piece.to, grid), piece.ring);
  }
  return moved;
}

/// Cuts the pieces at their crossings, and adds each crossing as a piece of length 0.
void addCrossings(std::vector<Piece>& pieces, std::vector<Cut>& cuts, double grid) {
  std::vector<Piece> crossings;
  PieceTree(pieces).forEachPair([&](std::size_t i, std::size_t j) {
    const Piece& p = pieces[i];
    const Piece& q = pieces[j];
    if (!Sides(p, q).different() || !Sides(q, p).different()) return;
    const Point at = onGrid(crossing(p.from, p.to, q.from, q.to), grid);
    cuts.push_back({i, at});
    cuts.push_back({j, at});
    crossings.push_back({at, at, 0});
  });
  pieces.insert(pieces.end(), crossings.begin(), crossings.end());
}

/// Cuts pieces that pass through the cells in which others begin. As all ends are in the middle of
/// cells, the box of such a piece holds the beginning of the other.
void addPassages(const std::vector<Piece>& pieces, std::vector<Cut>& cuts, double grid) {
  const auto add = [&](std::size_t piece, const Point& end) {
    if (passesThrough(pieces[piece], end, 0.5 * grid)) cuts.push_back({piece, end});
  };
  PieceTree(pieces).forEachPair([&](std::size_t i, std::size_t j) {
    add(i, pieces[j].from);
    add(j, pieces[i].from);
  });
}

}  // namespace

std::vector<Piece> piecesOf(std::span<const std::span<const Point>> rings) {
  std::vector<Piece> pieces;
  for (std::size_t ring = 0; ring < rings.size(); ++ring) {
    if (rings[ring].empty()) continue;
    Point from = rings[ring].back();
    for (const Point& to : rings[ring]) append(pieces, from, to, ring);
  }
  return pieces;
}

Noding nodeUnlessCrossed(std::vector<Piece> pieces) {
  Cuts cuts = meetings(std::move(pieces));
  if (cuts.crossed) return {std::move(cuts.pieces), true};
  const bool touched = cuts.touched;
  Noding noding{cutPieces(std::move(cuts))};
  noding.touched = touched;
  return noding;
}

Noding nodeOnGrid(const std::vector<Piece>& pieces, double grid) {
  Cuts cuts{movedToGrid(pieces, grid)};
  addCrossings(cuts.pieces, cuts.list, grid);
  addPassages(cuts.pieces, cuts.list, grid);
  std::vector<Piece> cut = cutPieces(std::move(cuts));
  const bool settled = meetings(cut).list.empty();
  return {std::move(cut), true, settled ? 1 : 0, grid};
}

Noding node(const std::vector<Piece>& pieces) {
  std::vector<Piece> cut = pieces;
  std::size_t fewest = std::numeric_limits<std::size_t>::max();
  std::size_t most = fewest;
  for (int roundings = 0;; ++roundings) {
    Cuts cuts = meetings(std::move(cut));
    const bool crossed = cuts.crossed;
    const std::size_t count = cuts.list.size();
    if (crossed && (count > most || (roundings > freeRounds && count >= fewest))) break;
    fewest = count;
    if (roundings == 0) most = mostGrowth * (count + pieces.size());
    cut = cutPieces(std::move(cuts));
    if (!crossed) return {std::move(cut), roundings > 0, roundings};
  }
  // The largest coordinate has a unit in the last place of 2^427.
  for (int exponent = 430; exponent <= 460; exponent += 6) {
    Noding noding = nodeOnGrid(pieces, std::ldexp(1.0, exponent));
    if (noding.roundings > 0) return noding;
  }
  throw qcContourDefs::BadParams(L"the outlines cannot be cut at their crossings");
}

}  // namespace cntr::sets
