// SPDX-License-Identifier: MIT
//
// The loops that a traced boundary falls into, as rings of linked vertices: cutting a loop in two
// and joining two loops change two links each. Vertices stay where they are, so which of them are
// in the same place is found once, for all loops.

#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include <cntr/index/vertexgrid.h>

namespace cntr::compute {

/// A vertex by its number in the traced boundary.
using Vertex = std::uint32_t;
/// A ring by its number; numbers are not reused.
using Label = std::uint32_t;
/// No vertex, no ring.
constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();

/// For each vertex, the vertices in the same place: within 1e-6 of it.
class Places {
 public:
  explicit Places(const std::vector<qcVector<2>>& points);

  /// Calls visit(other) for the vertices in the same place as v; v itself is one of them, unless
  /// its coordinates are not finite. The relation is symmetric.
  template <class Visit>
  void forEachAt(Vertex v, Visit visit) const {
    if (v + 1 < starts_.size()) {
      for (std::size_t i = starts_[v]; i < starts_[v + 1]; ++i) visit(shared_[i]);
    } else {
      for (const int other : grid_.near(points_, points_[v])) visit(static_cast<Vertex>(other));
    }
  }

  /// The cell of a vertex, by which vertices in the same place are listed.
  index::VertexGrid::Cell cellOf(Vertex v) const;

 private:
  const std::vector<qcVector<2>>& points_;
  index::VertexGrid grid_;
  /// The lists of the first vertices, one after the other: where each starts, and where the last
  /// one ends.
  std::vector<std::size_t> starts_;
  std::vector<Vertex> shared_;
};

/// A loop: the vertices from `start` on, around to it again.
struct Ring {
  Vertex start;
  std::size_t size;
};

/// The vertices of a boundary, linked to rings; at first all of them in one, with label 0.
class Rings {
 public:
  /// REQUIRES: `points` are not empty, and outlive the rings.
  explicit Rings(const std::vector<qcVector<2>>& points);

  const Places& places() const noexcept { return places_; }
  std::size_t vertexCount() const noexcept { return points_.size(); }
  std::size_t labelCount() const noexcept { return rings_.size(); }
  const Ring& operator[](Label ring) const { return rings_[ring]; }
  Vertex after(Vertex v) const { return next_[v]; }
  Vertex before(Vertex v) const { return previous_[v]; }
  /// The ring of v, or none when it was dropped.
  Label labelOf(Vertex v) const { return labelOf_[v]; }
  std::vector<qcVector<2>> pointsOf(Label ring) const;

  template <class Visit>
  void forEachVertex(Label ring, Visit visit) const {
    Vertex v = rings_[ring].start;
    for (std::size_t left = rings_[ring].size; left > 0; --left) {
      const Vertex next = next_[v];
      visit(v);
      v = next;
    }
  }

  /// The pieces of a ring that was cut: the one that starts at the first vertex given, and the
  /// other.
  struct Pieces {
    Label first;
    Label second;
  };
  /// Cuts the ring that a and b belong to, in front of both. The larger piece keeps the label.
  /// Takes time in proportion to the smaller one.
  Pieces cut(Vertex a, Vertex b);

  /// Joins the ring of b to that of a, which then runs from a through its own vertices, then
  /// through those of the other from b on. Takes time in proportion to the ring of b.
  void join(Vertex a, Vertex b);

  /// Removes the vertices of a ring.
  void drop(Label ring);

 private:
  void link(Vertex from, Vertex to);
  void relabel(Vertex start, std::size_t count, Label label);

  const std::vector<qcVector<2>>& points_;
  Places places_;
  std::vector<Vertex> next_;
  std::vector<Vertex> previous_;
  std::vector<Label> labelOf_;
  std::vector<Ring> rings_;
};

}  // namespace cntr::compute
