// SPDX-License-Identifier: MIT

#include <cntr/compute/manycrossings.h>

#include <algorithm>

#include <cntr/compute/probe.h>

namespace cntr::compute {

namespace {

std::vector<OwnedEdges::Owned> edgesOf(const std::vector<plane::Path>& paths) {
  std::vector<OwnedEdges::Owned> edges;
  for (std::size_t i = 0; i < paths.size(); ++i) {
    plane::forEachEdge(paths[i], [&](const qcVector<2>& from, const qcVector<2>& to) {
      edges.push_back({{from, to}, i});
    });
  }
  return edges;
}

std::vector<plane::Box> boxesOf(const std::vector<OwnedEdges::Owned>& edges) {
  std::vector<plane::Box> boxes;
  boxes.reserve(edges.size());
  for (const auto& owned : edges) boxes.push_back(plane::edgeBox(owned.edge.from, owned.edge.to));
  return boxes;
}

}  // namespace

OwnedEdges::OwnedEdges(const std::vector<plane::Path>& paths)
    : edges_(edgesOf(paths)), tree_(boxesOf(edges_)) {}

bool anyCrossesAnother(const std::vector<plane::Path>& paths) {
  const OwnedEdges edges(paths);
  return std::any_of(edges.all().begin(), edges.all().end(), [&](const OwnedEdges::Owned& asked) {
    const Probe probe(asked.edge.from, asked.edge.to, true, edges.bounds());
    return !edges.forEachTouching(
        plane::edgeBox(asked.edge.from, asked.edge.to), [&](const OwnedEdges::Owned& other) {
          return other.path >= asked.path || !probe.crossingWith(other.edge);
        });
  });
}

}  // namespace cntr::compute
