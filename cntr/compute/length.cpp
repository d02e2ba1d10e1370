// SPDX-License-Identifier: MIT

#include <cntr/compute/length.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace cntr::compute {

double length(const plane::Path& path) {
  double sum = 0.0;
  plane::forEachEdge(path,
                     [&](const qcVector<2>& a, const qcVector<2>& b) { sum += a.distance(b); });
  return sum;
}

qcVector<2> meanPosition(const plane::Path& path) {
  double total = 0.0;
  qcVector<2> weighted;
  plane::forEachEdge(path, [&](const qcVector<2>& a, const qcVector<2>& b) {
    const double edge = a.distance(b);
    total += edge;
    weighted = weighted + ((a + b) * 0.5) * edge;
  });
  return weighted * (1.0 / total);
}

double medianEdgeLength(const plane::Path& path) {
  const std::size_t count = path.edgeCount();
  std::vector<double> numbers;
  numbers.reserve(count);
  plane::forEachEdge(path, [&](const qcVector<2>& a, const qcVector<2>& b) {
    const double length = a.distance(b);
    if (!std::isnan(length)) numbers.push_back(length);
  });
  if (count == 0) return 0.0;
  // NaN counts as longer than anything.
  if (count / 2 >= numbers.size()) return std::numeric_limits<double>::quiet_NaN();
  const auto middle = numbers.begin() + static_cast<std::ptrdiff_t>(count / 2);
  std::nth_element(numbers.begin(), middle, numbers.end());
  return *middle;
}

}  // namespace cntr::compute
