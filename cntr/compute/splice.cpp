// SPDX-License-Identifier: MIT
//
// Two boundaries that cross, joined into one.

#include <cntr/compute/repair.h>

namespace cntr::compute {

namespace {

/// Where edge k ends, by its segment: that of a degenerate edge is a default one.
qcVector<2> endOfSegment(const plane::Path& path, std::size_t k) {
  const plane::Edge edge = path.edge(k);
  return plane::isDegenerate(edge) ? qcVector<2>() : edge.to;
}

/// The ends of all edges, from edge `first` round to the one before it.
void appendRound(std::vector<qcVector<2>>& vertices, const plane::Path& path, std::size_t first) {
  const std::size_t n = path.edgeCount();
  for (std::size_t k = 0; k < n; ++k) vertices.push_back(endOfSegment(path, (first + k) % n));
}

}  // namespace

std::optional<std::vector<qcVector<2>>> splice(const plane::Path& mine,
                                               const CrossingTarget& other) {
  for (std::size_t i = 0; i < mine.edgeCount(); ++i) {
    const plane::Edge edge = mine.edge(i);
    if (plane::isDegenerate(edge)) continue;
    const std::vector<Crossing> met = crossings(other, edge.from, edge.to, true);
    if (met.empty()) continue;
    std::vector<qcVector<2>> joined{met.front().point};
    appendRound(joined, mine, i);
    joined.push_back(met.front().point);
    appendRound(joined, other.path, met.front().edge);
    return joined;
  }
  return {};
}

}  // namespace cntr::compute
