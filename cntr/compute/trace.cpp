// SPDX-License-Identifier: MIT
//
// The walk along the outside of a boundary that crosses itself.

#include <bit>
#include <cstdint>

#include <cntr/compute/repair.h>

namespace cntr::compute {

namespace {

/// True when nothing lies between edge i (from vertex i to i + 1) and the outside on one of its
/// sides: a short probe across its middle meets only the edge, the edge meets the boundary only at
/// its two ends, and from one end of the probe a ray escapes.
bool liesOutside(const Outline& boundary, std::size_t i, double probe) {
  const qcVector<2>& a = boundary.points()[i];
  const qcVector<2>& b = boundary.points()[i + 1];
  const qcVector<2> middle = (a + b) * 0.5;
  const qcVector<2> u = (a - b).unit();
  const qcVector<2> left(middle.x() - u.y() * probe, middle.y() + u.x() * probe);
  const qcVector<2> right(middle.x() + u.y() * probe, middle.y() - u.x() * probe);
  return boundary.countCrossingsWith(left, right, true, 2) == 1 &&
         boundary.countCrossingsWith(a, b, true, 3) == 2 &&
         (boundary.rayCrossingsFrom(left, true) == 0 ||
          boundary.rayCrossingsFrom(right, true) == 0);
}

/// Where a walk stands: a point, the vertex that bounds its edge ahead, and the direction.
struct State {
  qcVector<2> point;
  std::size_t vertex;
  bool forward;

  bool operator==(const State& other) const noexcept {
    return bits(point.x()) == bits(other.point.x()) && bits(point.y()) == bits(other.point.y()) &&
           vertex == other.vertex && forward == other.forward;
  }
  static std::uint64_t bits(double value) noexcept { return std::bit_cast<std::uint64_t>(value); }
};

/// Detects a walk that has entered a cycle without its start: a state noted from time to time
/// recurs (R. P. Brent, "An improved Monte Carlo factorization algorithm", BIT 20, 1980). The walk
/// goes on for at most three times as many steps as it takes to close the cycle.
class CircleWatch {
 public:
  explicit CircleWatch(const State& start) : noted_(start) {}

  bool isBackAt(const State& state) {
    if (state == noted_) return true;
    if (++steps_ == stepsUntilNote_) {
      noted_ = state;
      steps_ = 0;
      stepsUntilNote_ *= 2;
    }
    return false;
  }

 private:
  State noted_;
  std::size_t steps_ = 0;
  std::size_t stepsUntilNote_ = 1;
};

/// One step: to the nearest crossing ahead, turning onto the crossed edge, or else to the vertex
/// ahead.
State step(const Outline& boundary, const State& from) {
  const std::size_t n = boundary.size();
  const std::size_t before = from.vertex == 0 ? n - 1 : from.vertex - 1;
  const std::size_t after = from.vertex + 1 == n ? 0 : from.vertex + 1;
  const qcVector<2>& target = boundary.points()[from.forward ? from.vertex : before];
  const std::optional<Crossing> ahead = boundary.firstCrossingWith(from.point, target, false);
  if (!ahead) return {target, from.forward ? after : before, from.forward};
  return {ahead->point, ahead->edge, !from.forward};
}

}  // namespace

std::optional<std::size_t> startingEdge(const Outline& boundary, double probe) {
  for (std::size_t i = 0; i + 1 < boundary.size(); ++i) {
    if (liesOutside(boundary, i, probe)) return i;
  }
  return {};
}

std::optional<std::vector<qcVector<2>>> traceBoundary(const Outline& boundary, double probe) {
  const std::optional<std::size_t> first = startingEdge(boundary, probe);
  if (!first) return {};
  const qcVector<2> start = boundary.points()[*first];
  std::vector<qcVector<2>> traced;
  State state{start, *first + 1, true};
  CircleWatch watch(state);
  while (true) {
    state = step(boundary, state);
    traced.push_back(state.point);
    if (state.point == start) return traced;
    if (watch.isBackAt(state)) return {};
  }
}

}  // namespace cntr::compute
