// SPDX-License-Identifier: MIT
//
// From rings and a rule to the boundary of what the rule keeps: noding.h, faces.h and boundary.h
// one after the other, in coordinates scaled by a power of two.

#pragma once

#include <functional>
#include <span>
#include <vector>

#include <cntrsets/faces/faces.h>
#include <cntrsets/rings.h>

namespace cntr::sets {

/// Whether a face with these windings is kept. The outside, around which nothing winds, must not be
/// kept.
using Rule = std::function<bool(const Windings&)>;

/// The largest absolute value of a coordinate, 0 without coordinates. Throws
/// qcContourDefs::BadParams "a coordinate is not a finite number".
double largestCoordinate(std::span<const std::span<const Point>> rings);

/// A power of two, given by its exponent, by which coordinates are multiplied. The largest comes to
/// lie between 2^479 and 2^480, and those below 2^-465 become 0, so that products of two
/// coordinates neither overflow nor lose digits below the smallest double.
class Scaling {
 public:
  explicit Scaling(double largest);

  Point scaled(const Point& p) const;
  Point restored(const Point& p) const;
  double restored(double length) const;

 private:
  double scaled(double coordinate) const;

  int exponent_ = 0;
};

/// The edges of the rings, scaled, without those whose length is then 0.
std::vector<Piece> scaledPieces(std::span<const std::span<const Point>> rings,
                                const Scaling& scaling);

struct FilledSet {
  std::vector<qcRings> parts;
  /// Their area.
  double area = 0.0;
  /// The rings met in more than vertices: the result has edges that are not in the input.
  bool cut = false;
  /// See Noding.
  double grid = 0.0;
  /// The largest distance by which an edge was moved.
  double moved = 0.0;
};

/// The boundary of the faces that the rule keeps; see sets.h for its form and the exceptions.
FilledSet filledSet(std::span<const std::span<const Point>> rings, const Rule& rule);

}  // namespace cntr::sets
