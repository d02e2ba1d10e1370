// SPDX-License-Identifier: MIT
//
// A closed boundary to which others are joined one after the other. What splice() does with a list
// of all vertices is done here with a balanced tree: joining a boundary takes time for its own
// edges, not for those that are already there.

#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

#include <cntr/compute/crossings.h>
#include <cntr/compute/probe.h>

namespace cntr::compute {

/// The edges of a boundary in order, in a tree whose nodes know the box of all edges below them.
class GrowingBoundary {
 public:
  /// REQUIRES: a closed path of at least one vertex, with finite coordinates. O(n).
  explicit GrowingBoundary(const plane::Path& path);

  /// The vertices in order. O(n).
  std::vector<qcVector<2>> points() const;

  /// crosses() with this boundary as the target. About O(m log n) for m edges of `other` near this
  /// boundary.
  bool isCrossedBy(const CrossingTarget& other) const;

  /// Makes this boundary splice() of itself and `other`, and returns boxes around the new edges,
  /// except parts of earlier edges: these lie in boxes returned before, or in that of an original
  /// edge. Returns nothing, and changes nothing, when splice() gives nothing. About O((m + k) log
  /// n) for m edges of `other` and k edges here whose boxes touch its bounds, plus once for each
  /// edge that loses its length.
  std::optional<std::vector<plane::Box>> join(const CrossingTarget& other);

 private:
  using Node = std::uint32_t;
  static constexpr Node none = std::numeric_limits<Node>::max();

  /// One edge, and the tree of edges at whose root it is.
  struct Tree {
    plane::Edge edge;
    plane::Box box;
    /// What join() returned for the edge, or for the edge of which it is a part.
    plane::Box searched;
    Node before = none;
    Node after = none;
    Node above = none;
    Node size = 1;
  };

  /// The first edge in order that crosses another boundary, and where.
  struct Joint {
    Node edge;
    Crossing crossing;
  };

  Node add(const qcVector<2>& from, const qcVector<2>& to, const plane::Box& searched);
  /// The balanced tree of the consecutive nodes [first, last).
  Node balanced(Node first, Node last);
  /// Renews what `node` knows about its subtrees, and their links to it.
  void renew(Node node);
  /// Renews everything from `node` up to the root.
  void renewUpFrom(Node node);
  /// A tree of the edges of both, those of `first` in front.
  Node merged(Node first, Node second);
  /// Moves the edges in front of `edge` behind all others.
  void startAt(Node edge);
  Node following(Node edge) const;
  std::optional<Joint> jointWith(const CrossingTarget& other) const;
  /// Sends edges without length to the origin, and returns those that changed.
  std::vector<Node> flattened();
  /// Boxes around the edges that lie outside what has been searched for them; notes edges without
  /// length.
  std::vector<plane::Box> toSearch(const std::vector<Node>& changed);

  /// Calls visit(node) in order for the edges whose box, like those of the trees around them,
  /// passes `mayMatter`, until a visit returns false. Returns false when a visit did.
  template <class MayMatter, class Visit>
  bool forEachEdge(Node tree, const MayMatter& mayMatter, const Visit& visit) const;

  std::vector<Tree> trees_;
  Node root_ = none;
  /// Edges without length that do not end in the origin yet.
  std::vector<Node> withoutLength_;
  std::uint64_t random_ = 1;
};

}  // namespace cntr::compute
