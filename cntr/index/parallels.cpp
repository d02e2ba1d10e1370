// SPDX-License-Identifier: MIT
//
// The direction of a run is that of one of its edges. The directions of its parts are close to it,
// and so on down: with L levels, the directions of two edges under two close boxes differ by at
// most (2 L + 1) times as much as two close directions, which must be less than those of parallel
// edges may differ.

#include <cntr/index/parallels.h>

#include <cmath>
#include <limits>

namespace cntr::index {

namespace {

/// The sine of the largest angle between two directions that count as close.
constexpr double closeness = 4e-14;
/// Enough for more than ten thousand million edges.
constexpr int mostLevels = 10;
static_assert((2 * mostLevels + 1) * closeness < qnKernel::parallelSine);

}  // namespace

bool Parallels::areClose(const Direction& a, const Direction& b) noexcept {
  return std::abs(qnKernel::cross(a, b)) <= closeness;
}

Parallels::Direction Parallels::directionOf(const plane::Edge& edge) noexcept {
  constexpr double none = std::numeric_limits<double>::quiet_NaN();
  constexpr double longest = 1e100;  // the squares of such lengths do not overflow
  if (plane::isDegenerate(edge)) return {};
  const qcVector<2> along = edge.to - edge.from;
  // The point where such an edge would cross is NaN.
  if (!std::isfinite(along.x()) || !std::isfinite(along.y())) return {};
  const double length = along.len();
  if (length >= longest) return {none, none};
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
