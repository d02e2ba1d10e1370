// SPDX-License-Identifier: MIT
//
// The direction of a run is that of one of its edges. Those of the runs that it is made of are
// close to it, and so on down: with ten levels, which is a thousand million edges, two edges under
// two close boxes are at most 21 times as far apart as two close directions, which is less than the
// 1e-12 that parallel edges may be apart.

#include <cntr/index/parallels.h>

#include <cmath>
#include <limits>

namespace cntr::index {

bool Parallels::areClose(const Direction& a, const Direction& b) noexcept {
  constexpr double closeness = 4e-14;
  return std::abs(qnKernel::cross(a, b)) <= closeness;
}

Parallels::Direction Parallels::directionOf(const plane::Edge& edge) noexcept {
  constexpr double none = std::numeric_limits<double>::quiet_NaN();
  constexpr double longest = 1e100;  // of those whose squares are numbers above 0
  if (plane::isDegenerate(edge)) return {};
  const qcVector<2> along = edge.to - edge.from;
  // The point where such an edge would cross is not a number.
  if (!std::isfinite(along.x()) || !std::isfinite(along.y())) return {};
  const double length = along.len();
  if (!(length > 1.0 / longest && length < longest)) return {none, none};
  return along * (1.0 / length);
}

Parallels::Direction Parallels::common(const Direction& a, const Direction& b) noexcept {
  constexpr double none = std::numeric_limits<double>::quiet_NaN();
  if (!areClose(a, b)) return {none, none};
  return a == Direction() ? b : a;
}

Parallels::Parallels(const plane::Path& path, const EdgeIndex& index) {
  for (std::size_t level = 0; level < index.levelCount(); ++level) {
    std::vector<Direction> directions(index.boxes(level).size());
    for (std::size_t i = 0; i < directions.size(); ++i) {
      const auto [first, last] = index.childrenOf(level, i);
      for (std::size_t k = first; k < last; ++k) {
        directions[i] = common(directions[i],
                               level == 0 ? directionOf(path.edge(k)) : directions_[level - 1][k]);
      }
    }
    directions_.push_back(std::move(directions));
  }
}

}  // namespace cntr::index
