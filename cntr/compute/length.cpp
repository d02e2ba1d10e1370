// SPDX-License-Identifier: MIT

#include <cntr/compute/length.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace cntr::compute {

double length(const Path& path) {
  double sum = 0.0;
  forEachEdge(path, [&](const qcVector<2>& a, const qcVector<2>& b) { sum += a.distance(b); });
  return sum;
}

qcVector<2> meanPosition(const Path& path) {
  double total = 0.0;
  qcVector<2> weighted;
  forEachEdge(path, [&](const qcVector<2>& a, const qcVector<2>& b) {
    const double edge = a.distance(b);
    total += edge;
    weighted = weighted + ((a + b) * 0.5) * edge;
  });
  return weighted * (1.0 / total);
}

double medianEdgeLength(const Path& path) {
  std::vector<double> lengths;
  lengths.reserve(path.edgeCount());
  forEachEdge(
      path, [&](const qcVector<2>& a, const qcVector<2>& b) { lengths.push_back(a.distance(b)); });
  if (lengths.empty()) return 0.0;
  const auto middle = lengths.begin() + static_cast<std::ptrdiff_t>(lengths.size() / 2);
  std::nth_element(lengths.begin(), middle, lengths.end(),
                   [](double a, double b) { return a < b || (std::isnan(b) && !std::isnan(a)); });
  return *middle;
}

}  // namespace cntr::compute
