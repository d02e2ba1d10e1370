// SPDX-License-Identifier: MIT
#include <testing/plain/contour.h>

#include <testing/plain/error.h>

namespace plain {

void checkEmptyContour(const Contour& contour) {
  if (contour.points.size() < 2) throw Error{Error::emptyContour, ""};
}

std::vector<Segment> edgesOf(const Contour& contour) {
  const Points& p = contour.points;
  std::vector<Segment> edges;
  edges.reserve(p.size());
  if (contour.closed && !p.empty()) edges.push_back({p.back(), p.front()});
  for (std::size_t i = 1; i < p.size(); ++i) edges.push_back({p[i - 1], p[i]});
  return edges;
}

}  // namespace plain
