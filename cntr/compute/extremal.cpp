// SPDX-License-Identifier: MIT
//
// With the index, boxes are searched in descending order of the position of their farthest corner,
// computed like that of a vertex: rounding is monotonic, so no vertex is computed to lie beyond it.

#include <cntr/compute/extremal.h>

#include <cmath>
#include <limits>
#include <optional>

namespace cntr::compute {

namespace {

/// How close a direction must be to an axis to be taken for it.
constexpr double axisTolerance = 1e-15;

/// The axis that a direction is taken for, if any.
std::optional<qcVector<2>> axisOf(const qcVector<2>& direction) {
  for (const auto& axis :
       {qcVector<2>(1, 0), qcVector<2>(-1, 0), qcVector<2>(0, 1), qcVector<2>(0, -1)}) {
    if (qfRealEq(direction, axis, axisTolerance)) return axis;
  }
  return {};
}

template <class Position>
long lastAlong(const plane::Path& path, Position position) {
  double best = std::numeric_limits<double>::lowest();
  long index = -1;
  for (std::size_t i = 0; i < path.points.size(); ++i) {
    const double value = position(path.points[i]);
    if (value > best) {
      best = value;
      index = static_cast<long>(i);
    }
  }
  return index;
}

/// Position along a direction. Along an axis it is the bare coordinate if both are finite.
double along(const qcVector<2>& direction, double x, double y) {
  return direction.y() * y + direction.x() * x;
}

long extremalByScan(const plane::Path& path, const qcVector<2>& direction, bool isAxis) {
  if (isAxis && direction.y() == 0.0) {
    return lastAlong(path, [&](const qcVector<2>& p) { return direction.x() * p.x(); });
  }
  if (isAxis) return lastAlong(path, [&](const qcVector<2>& p) { return direction.y() * p.y(); });
  return lastAlong(path, [&](const qcVector<2>& p) { return along(direction, p.x(), p.y()); });
}

/// The farthest vertex so far; the lowest index on ties.
struct Best {
  double position = std::numeric_limits<double>::lowest();
  std::size_t index = 0;
  bool isFound = false;

  void offer(double candidate, std::size_t candidateIndex) {
    if (candidate < position) return;
    const bool isEarlierTie = isFound && candidate == position && candidateIndex < index;
    if (candidate > position || isEarlierTie) *this = {candidate, candidateIndex, true};
  }
};

long extremalByIndex(const plane::Path& path, const index::EdgeIndex& index,
                     const qcVector<2>& direction) {
  Best best;
  const auto offer = [&](std::size_t vertex) {
    best.offer(along(direction, path.points[vertex].x(), path.points[vertex].y()), vertex);
  };
  double plane::Box::*const farX = direction.x() > 0.0 ? &plane::Box::maxX : &plane::Box::minX;
  double plane::Box::*const farY = direction.y() > 0.0 ? &plane::Box::maxY : &plane::Box::minY;
  const auto farthestCorner = [&](const plane::Box& box) {
    return along(direction, box.*farX, box.*farY);
  };
  if (!path.closed) offer(0);
  index.forEachRunByBound([&](const plane::Box& box) { return -farthestCorner(box); },
                          [&] { return -best.position; },
                          [&](std::size_t first, std::size_t last) {
                            for (std::size_t k = first; k < last; ++k) offer(path.endOf(k));
                          });
  return best.isFound ? static_cast<long>(best.index) : -1;
}

}  // namespace

long extremalVertex(const plane::Path& path, const index::EdgeIndex* index, const qcRadian& angle) {
  const qcVector<2> given(std::cos(angle.toDouble()), std::sin(angle.toDouble()));
  const std::optional<qcVector<2>> axis = axisOf(given);
  const qcVector<2> direction = axis.value_or(given);
  if (index == nullptr || !index->isFinite()) {
    return extremalByScan(path, direction, axis.has_value());
  }
  return extremalByIndex(path, *index, direction);
}

}  // namespace cntr::compute
