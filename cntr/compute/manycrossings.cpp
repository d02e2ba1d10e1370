// SPDX-License-Identifier: MIT
//
// Crossings between many paths: the edges of all in one tree. What lies within something else has
// a box that overlaps that one's, but the edges keep apart.

#include <cntr/compute/manycrossings.h>

#include <cntr/compute/probe.h>
#include <cntr/index/boxtree.h>

namespace cntr::compute {

bool anyCrossesAnother(const std::vector<plane::Path>& paths) {
  struct Owned {
    plane::Edge edge;
    std::size_t path;
  };
  std::vector<Owned> edges;
  std::vector<plane::Box> boxes;
  plane::Box bounds;
  for (std::size_t i = 0; i < paths.size(); ++i) {
    plane::forEachEdge(paths[i], [&](const qcVector<2>& from, const qcVector<2>& to) {
      edges.push_back({{from, to}, i});
      boxes.push_back(plane::edgeBox(from, to));
      bounds.add(boxes.back());
    });
  }
  const index::BoxTree tree(boxes);
  for (std::size_t k = 0; k < edges.size(); ++k) {
    const Owned& asked = edges[k];
    const Probe probe(asked.edge.from, asked.edge.to, true, bounds);
    const bool isCrossed = !tree.forEachTouching(boxes[k], [&](std::size_t other) {
      return edges[other].path >= asked.path || !probe.crossingWith(edges[other].edge);
    });
    if (isCrossed) return true;
  }
  return false;
}

}  // namespace cntr::compute
