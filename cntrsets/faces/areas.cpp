// SPDX-License-Identifier: MIT

#include <cntrsets/faces/areas.h>

#include <algorithm>
#include <cmath>

namespace cntr::sets {

using plane::sumOf;

namespace {

/// Twice the signed area between an edge and the x axis, positive below an edge that runs right.
Twofold doubledAreaUnder(const Point& a, const Point& b) {
  return sumOf(b.x(), -a.x()) * sumOf(a.y(), b.y());
}

/// A ring's area, and how much of it the faces have yet to account for.
struct Account {
  Twofold missing{};
  double length = 0.0;
};

}  // namespace

std::vector<Twofold> areasOf(const Faces& faces) {
  std::vector<Twofold> areas(faces.windings.size());
  for (const Edge& edge : faces.edges) {
    const Twofold under =
        doubledAreaUnder(faces.vertices[edge.left], faces.vertices[edge.right]) * Twofold(0.5);
    areas[edge.below] = areas[edge.below] + under;
    areas[edge.above] = areas[edge.above] - under;
  }
  if (!areas.empty()) areas[0] = Twofold();
  return areas;
}

Twofold areaOf(const std::vector<qcRings>& parts) {
  Twofold doubled;
  const auto add = [&](const std::vector<Point>& ring) {
    for (std::size_t i = 0; i < ring.size(); ++i)
      doubled = doubled - doubledAreaUnder(ring[i], ring[i + 1 < ring.size() ? i + 1 : 0]);
  };
  for (const qcRings& part : parts) {
    add(part.outline);
    for (const std::vector<Point>& hole : part.holes) add(hole);
  }
  return doubled * Twofold(0.5);
}

bool areasAgree(std::span<const Piece> edges, const Faces& faces, std::span<const Twofold> areas,
                double moved) {
  std::vector<Account> rings;
  for (const Piece& edge : edges) {
    if (rings.size() <= edge.ring) rings.resize(edge.ring + 1);
    Account& ring = rings[edge.ring];
    ring.missing = ring.missing - doubledAreaUnder(edge.from, edge.to) * Twofold(0.5);
    ring.length += edge.from.distance(edge.to);
  }
  for (std::size_t i = 0; i < areas.size(); ++i) {
    for (const Winding& winding : faces.windings[i])
      rings[winding.ring].missing = rings[winding.ring].missing - areas[i] * Twofold(winding.times);
  }
  const double rounding = roundingOfAreas(edges.size());
  // A ring whose edges move that far sweeps over no larger area than this.
  return std::all_of(rings.begin(), rings.end(), [&](const Account& ring) {
    return std::abs(ring.missing.high) <= rounding + 2.0 * (ring.length + 4.0 * moved) * moved;
  });
}

double roundingOfAreas(std::size_t vertices) {
  constexpr int largestProduct = 962;
  constexpr int digits = 98;
  return std::ldexp(static_cast<double>(vertices), largestProduct - digits);
}

}  // namespace cntr::sets
