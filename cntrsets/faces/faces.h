// SPDX-License-Identifier: MIT
//
// The faces into which pieces cut the plane, and how often each ring winds around them. The pieces
// come from noding.h; boundary.h leads rings around the faces that a rule keeps.

#pragma once

#include <cstddef>
#include <limits>
#include <vector>

#include <cntrsets/faces/noding.h>

namespace cntr::sets {

/// How often a ring winds around a face, counter-clockwise positive; never 0.
struct Winding {
  std::size_t ring;
  int times;

  // NOLINTNEXTLINE(modernize-use-nullptr): clang-tidy takes the default for a null.
  auto operator<=>(const Winding&) const = default;
};

/// All windings around a face, ascending by ring; rings that do not wind around it are left out.
using Windings = std::vector<Winding>;

inline constexpr std::size_t noEdge = std::numeric_limits<std::size_t>::max();

/// An edge between faces; several pieces of rings may lie on it.
struct Edge {
  /// The ends as vertex numbers, left < right. Vertices are numbered in ascending order of x, then
  /// y, so a vertical edge begins at its lower end.
  std::size_t left;
  std::size_t right;
  /// The nearest edge below the left end (of those that begin there, the next less steep one), or
  /// noEdge.
  std::size_t under = noEdge;
  /// Numbers of the windings on both sides. "Above" is to the left when going from `left` to
  /// `right`.
  std::size_t below = 0;
  std::size_t above = 0;
};

struct Faces {
  std::vector<Point> vertices;
  /// Ascending by left end, then counter-clockwise. Edges that every ring passes equally often in
  /// both directions are left out: both of their sides are the same.
  std::vector<Edge> edges;
  /// The windings that occur; the first, empty, is that of the outside. Different faces may share
  /// one.
  std::vector<Windings> windings;
};

/// A sweep from left to right over pieces that meet only at their ends. It uses only signs of
/// orientations, which are exact, so nothing depends on rounding. O(n log n).
Faces facesOf(const std::vector<Piece>& pieces);

}  // namespace cntr::sets
