// SPDX-License-Identifier: MIT
//
// Two boundaries that cross, joined into one.

#include <cntr/compute/repair.h>

namespace cntr::compute {

std::vector<qcVector<2>> endsRound(const plane::Path& path, std::size_t first) {
  const std::size_t n = path.edgeCount();
  std::vector<qcVector<2>> ends;
  ends.reserve(n);
  for (std::size_t k = 0; k < n; ++k) {
    const plane::Edge edge = path.edge((first + k) % n);
    ends.push_back(plane::isDegenerate(edge) ? qcVector<2>() : edge.to);
  }
  return ends;
}

std::optional<std::vector<qcVector<2>>> splice(const plane::Path& mine,
                                               const CrossingTarget& other) {
  for (std::size_t i = 0; i < mine.edgeCount(); ++i) {
    const plane::Edge edge = mine.edge(i);
    if (plane::isDegenerate(edge)) continue;
    const std::optional<Crossing> met = firstCrossing(other, edge.from, edge.to, true);
    if (!met) continue;
    std::vector<qcVector<2>> joined{met->point};
    const auto append = [&](const std::vector<qcVector<2>>& ends) {
      joined.insert(joined.end(), ends.begin(), ends.end());
    };
    append(endsRound(mine, i));
    joined.push_back(met->point);
    append(endsRound(other.path, met->edge));
    return joined;
  }
  return {};
}

}  // namespace cntr::compute
