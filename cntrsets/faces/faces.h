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

/// A piece of the plane's division; several pieces of rings may lie on it.
struct Edge {
  /// The ends, vertex numbers, left < right. Vertices are numbered ascending by x, then y, so an
  /// upright edge begins at its lower end.
  std::size_t left;
  std::size_t right;
  /// The nearest edge below the left end (of those that begin there, the next less steep one), or
  /// noEdge.
  std::size_t under = noEdge;
  /// Numbers of the windings on both sides. Above is on the left of the way from left to right.
  std::size_t below = 0;
  std::size_t above = 0;
};

struct Faces {
  std::vector<Point> vertices;
  /// Ascending by left end, then turning counter-clockwise. Edges that every ring passes as often
  /// one way as the other are left out: both of their sides are the same.
  std::vector<Edge> edges;
  /// The windings that occur; the first is that of the outside, empty. Different faces may share
  /// one.
  std::vector<Windings> windings;
};

/// A sweep from left to right over pieces that meet at their ends alone. Only signs of orientations
/// are used, which are exact, so nothing depends on rounding. O(n log n).
Faces facesOf(const std::vector<Piece>& pieces);

}  // namespace cntr::sets
