// SPDX-License-Identifier: MIT

#include <cntrsets/operations/tangents.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace cntr::sets {

namespace {

using Triple = std::array<double, 3>;

constexpr std::size_t noTangent = std::numeric_limits<std::size_t>::max();
/// Hardly any program takes more than ten steps.
constexpr int mostSteps = 50;
/// A violation smaller than this is rounding.
constexpr double tiny = 1e-14;

double dot(const Triple& a, const Triple& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

Triple cross(const Triple& a, const Triple& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

}  // namespace

/// factors . (x, y, t) <= limit; t is the value to be maximised.
struct TangentProgram::Row {
  Triple factors;
  double limit;
  /// noTangent for a side of the rectangle.
  std::size_t tangent;
};

TangentProgram::Row TangentProgram::rowOf(std::size_t tangent) const {
  const Tangent& t = tangents_[tangent];
  return {{-t.growth.x(), -t.growth.y(), 1.0}, t.value, tangent};
}

/// The row whose limit is exceeded most or, if none is, that is nearest to its limit.
TangentProgram::Row TangentProgram::mostViolated(const Triple& at, const qcVector<2>& half) const {
  std::size_t worst = 0;
  double least = std::numeric_limits<double>::infinity();
  for (std::size_t i = 0; i < tangents_.size(); ++i) {
    const Tangent& t = tangents_[i];
    const double value = t.value + t.growth.x() * at[0] + t.growth.y() * at[1];
    if (value < least) {
      least = value;
      worst = i;
    }
  }
  const double byTangent = at[2] - least;
  const double byX = std::abs(at[0]) - half.x();
  const double byY = std::abs(at[1]) - half.y();
  if (byTangent >= byX && byTangent >= byY) return rowOf(worst);
  if (byX >= byY) return {{std::copysign(1.0, at[0]), 0.0, 0.0}, half.x(), noTangent};
  return {{0.0, std::copysign(1.0, at[1]), 0.0}, half.y(), noTangent};
}

TangentProgram::Solution TangentProgram::solve(const qcVector<2>& half) const {
  const auto nearest =
      std::min_element(tangents_.begin(), tangents_.end(),
                       [](const Tangent& a, const Tangent& b) { return a.value < b.value; });
  const double toRight = std::copysign(1.0, nearest->growth.x());
  const double upwards = std::copysign(1.0, nearest->growth.y());
  std::array<Row, 3> rows{rowOf(static_cast<std::size_t>(nearest - tangents_.begin())),
                          Row{{toRight, 0.0, 0.0}, half.x(), noTangent},
                          Row{{0.0, upwards, 0.0}, half.y(), noTangent}};
  // How (0, 0, 1) is combined from the factors of the rows.
  Triple weights{1.0, std::abs(nearest->growth.x()), std::abs(nearest->growth.y())};
  Triple at{toRight * half.x(), upwards * half.y(), 0.0};
  at[2] = nearest->value + nearest->growth.x() * at[0] + nearest->growth.y() * at[1];
  for (int step = 0; step < mostSteps; ++step) {
    const Row entering = mostViolated(at, half);
    if (!(dot(entering.factors, at) - entering.limit > tiny)) break;
    const std::array<Triple, 3> duals{cross(rows[1].factors, rows[2].factors),
                                      cross(rows[2].factors, rows[0].factors),
                                      cross(rows[0].factors, rows[1].factors)};
    const double volume = dot(rows[0].factors, duals[0]);
    std::size_t leaving = rows.size();
    double ratio = std::numeric_limits<double>::infinity();
    Triple shares{};
    for (std::size_t i = 0; i < rows.size(); ++i) {
      shares[i] = dot(entering.factors, duals[i]) / volume;
      if (shares[i] > tiny && weights[i] / shares[i] < ratio) {
        ratio = weights[i] / shares[i];
        leaving = i;
      }
    }
    if (leaving == rows.size()) break;
    std::array<Row, 3> changed = rows;
    changed[leaving] = entering;
    const Triple yz = cross(changed[1].factors, changed[2].factors);
    const Triple zx = cross(changed[2].factors, changed[0].factors);
    const Triple xy = cross(changed[0].factors, changed[1].factors);
    const double newVolume = dot(changed[0].factors, yz);
    if (!(std::abs(newVolume) > tiny)) break;
    rows = changed;
    for (std::size_t i = 0; i < rows.size(); ++i)
      weights[i] = i == leaving ? ratio : std::max(0.0, weights[i] - ratio * shares[i]);
    for (std::size_t i = 0; i < at.size(); ++i)
      at[i] = (rows[0].limit * yz[i] + rows[1].limit * zx[i] + rows[2].limit * xy[i]) / newVolume;
  }
  Solution solution{
      {std::clamp(at[0], -half.x(), half.x()), std::clamp(at[1], -half.y(), half.y())}, at[2], {}};
  double sum = 0.0;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (rows[i].tangent == noTangent) continue;
    solution.shares[i] = {tangents_[rows[i].tangent].side, weights[i]};
    sum += weights[i];
  }
  for (Share& share : solution.shares) share.weight /= sum;
  return solution;
}

}  // namespace cntr::sets
