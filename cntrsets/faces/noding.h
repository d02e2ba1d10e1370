// SPDX-License-Identifier: MIT
//
// Cuts rings at every point that they share, so that the pieces meet only at their ends. The faces
// between the pieces are found in faces.h.

#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include <cntrsets/exact/predicates.h>

namespace cntr::sets {

/// A straight piece of a ring, with its direction of travel. The pieces of a ring follow each other
/// in one list, each beginning where the one before ends; they stay closed whatever is done to
/// them.
struct Piece {
  Point from;
  Point to;
  std::size_t ring;
};

/// The edges of the rings, which are numbered as given, without edges of length 0.
std::vector<Piece> piecesOf(std::span<const std::span<const Point>> rings);

/// Pieces that meet only at their ends.
struct Noding {
  std::vector<Piece> pieces;
  /// Two edges crossed within both of them. Otherwise every end is a vertex of the input and
  /// nothing has been rounded.
  bool crossed = false;
  /// How often crossings were rounded: no piece lies farther from its edge than this many units in
  /// the last place of the largest coordinate, or this many times the grid.
  int roundings = 0;
  /// The spacing of the grid on which all ends lie; 0 for none.
  double grid = 0.0;
  /// Edges share more than the vertices between neighbours. Set only by nodeUnlessCrossed().
  bool touched = false;
};

/// Cuts the pieces where one meets another: at vertices that lie on others exactly, and at
/// crossings, rounded to the nearest doubles. A rounded crossing moves its pieces, which can make
/// them meet others, so this is repeated until nothing is left to cut. If that does not settle
/// within a few rounds, the pieces are cut on a grid, the finest of a few that settles.
///
/// REQUIRES: coordinates are finite, the largest from 2^479 to 2^480 in absolute value.
/// Throws qcContourDefs::BadParams "the outlines cannot be cut at their crossings" when none does.
/// O((n + k) log n) for k meetings and rings whose neighbouring edges lie close to each other.
Noding node(const std::vector<Piece>& pieces);

/// The same on a grid of a spacing that is a power of two, at least 4 units in the last place of
/// the largest coordinate: all ends are moved to the grid and every piece is led through the middle
/// of the grid cells that it passes and that hold an end (snap rounding: J. D. Hobby, Practical
/// segment intersection with finite precision output, 1999). `roundings` is 0 when it does not
/// settle.
Noding nodeOnGrid(const std::vector<Piece>& pieces, double grid);

/// Cuts the pieces at vertices that lie on them. If edges cross, it only says so (`crossed`), and
/// the pieces are useless.
Noding nodeUnlessCrossed(std::vector<Piece> pieces);

}  // namespace cntr::sets
