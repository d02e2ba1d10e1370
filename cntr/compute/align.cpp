// SPDX-License-Identifier: MIT
//
// Every start gets a few steps with few points; the best of them goes on with all points. A step
// solves for the small motion that would be best if every point's nearest edge were a line
// (Gauss-Newton), damped until it helps (Levenberg-Marquardt). Rotations are unit vectors: sines
// would differ from one system to the next.

#include <cntr/compute/align.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include <cntr/index/strips.h>
#include <platform/core/kernels.h>

namespace cntr::compute {

namespace {

using Point = qcVector<2>;
using WeighedPoints = std::span<const WeighedPoint>;

/// The number of points with which a start is tried, and the number of its steps.
constexpr std::size_t triedPoints = 128;
constexpr int triedSteps = 8;
/// The limit on the steps of the best start.
constexpr int mostSteps = 50;
/// The last step is one that moves every point, or lowers the residual, by at most this fraction of
/// the extent.
constexpr double smallStep = 1e-10;

/// Centre, principal axis and extent of a set of points.
struct Body {
  Point center;
  Point axis;
  double extent = 0.0;

  explicit Body(WeighedPoints points) noexcept {
    double weights = 0.0;
    // Relative to the first point, so that no digits are lost far from the origin.
    const Point origin = points.front().at;
    Point sum;
    for (const WeighedPoint& p : points) {
      weights += p.weight;
      sum = sum + (p.at - origin) * p.weight;
    }
    center = origin + sum * (1.0 / weights);
    index::MainDirection direction;
    for (const WeighedPoint& p : points) {
      const Point d = p.at - center;
      direction.add(d * std::sqrt(p.weight));
      extent = std::max(extent, d.len());
    }
    axis = direction.along();
  }
};

/// The rotation that brings the x axis to `direction`, of p.
Point turned(const Point& p, const Point& direction) noexcept {
  return {direction.x() * p.x() - direction.y() * p.y(),
          direction.y() * p.x() + direction.x() * p.y()};
}

/// The equations for a small motion (along x, along y, around the centre), and the sum of the
/// squared distances without it.
struct Equations {
  std::array<std::array<double, 3>, 3> matrix{};
  std::array<double, 3> right{};
  double squares = 0.0;
  double weights = 0.0;

  void add(const std::array<double, 3>& slope, double distance, double weight) noexcept {
    for (std::size_t i = 0; i < 3; ++i) {
      for (std::size_t j = 0; j < 3; ++j) matrix[i][j] += weight * slope[i] * slope[j];
      right[i] -= weight * slope[i] * distance;
    }
    squares += weight * (distance * distance);
    weights += weight;
  }

  double residual() const noexcept { return std::sqrt(squares / weights); }

  /// The motion, with the diagonal increased by the fraction `damping`; by Cholesky's method. A
  /// component on which nothing depends is 0.
  std::array<double, 3> solve(double damping) const noexcept {
    std::array<std::array<double, 3>, 3> root{};
    std::array<double, 3> motion{};
    for (std::size_t i = 0; i < 3; ++i) {
      for (std::size_t j = 0; j <= i; ++j) {
        double sum = matrix[i][j] * (i == j ? 1.0 + damping : 1.0);
        for (std::size_t k = 0; k < j; ++k) sum -= root[i][k] * root[j][k];
        if (i == j) {
          root[i][i] = sum > 0.0 ? std::sqrt(sum) : 0.0;
        } else {
          root[i][j] = root[j][j] > 0.0 ? sum / root[j][j] : 0.0;
        }
      }
    }
    for (std::size_t i = 0; i < 3; ++i) {
      double sum = right[i];
      for (std::size_t k = 0; k < i; ++k) sum -= root[i][k] * motion[k];
      motion[i] = root[i][i] > 0.0 ? sum / root[i][i] : 0.0;
    }
    for (std::size_t i = 3; i-- > 0;) {
      double sum = motion[i];
      for (std::size_t k = i + 1; k < 3; ++k) sum -= root[k][i] * motion[k];
      motion[i] = root[i][i] > 0.0 ? sum / root[i][i] : 0.0;
    }
    return motion;
  }
};

/// Points that are moved towards curves.
class Motion {
 public:
  Motion(WeighedPoints points, const Curves& curves, const Point& center, double extent)
      : points_(points), curves_(curves), center_(center), extent_(extent) {}

  Equations at(const Pose& pose) const {
    Equations equations;
    for (const WeighedPoint& p : points_) {
      const Point d = p.at - center_;
      const Point arm = turned(d, pose.direction);
      const Point q = pose.place + arm;
      const auto [normal, distance] = towards(q);
      // Angles as lengths at the extent, so that all three components have comparable sizes.
      const double turn = qnKernel::cross(arm, normal) / extent_;
      equations.add({normal.x(), normal.y(), turn}, distance, p.weight);
    }
    return equations;
  }

  /// Takes steps until one is small enough, at most `most` of them.
  Alignment refine(const Pose& start, int most) const {
    Alignment found{start, center_, 0.0, 0, false};
    Equations here = at(start);
    double damping = 0.0;
    while (found.steps < most && !found.settled) {
      ++found.steps;
      const std::array<double, 3> motion = here.solve(damping);
      const double size = std::abs(motion[0]) + std::abs(motion[1]) + std::abs(motion[2]);
      const Pose next{turned(found.pose.direction, Point(1.0, motion[2] / extent_)).unit(),
                      found.pose.place + Point(motion[0], motion[1])};
      const Equations there = at(next);
      if (there.squares < here.squares) {
        // Near curves with corners, distances can decrease forever by less and less.
        found.settled = here.residual() - there.residual() <= smallStep * extent_;
        found.pose = next;
        here = there;
        damping *= 0.1;
      } else {
        damping = std::max(10.0 * damping, 1e-3);
      }
      found.settled = found.settled || size <= smallStep * extent_;
    }
    found.residual = here.residual();
    return found;
  }

 private:
  struct Direction {
    Point normal;
    double distance = 0.0;
  };

  /// The direction in which the distance of q grows, and the distance along it: across the nearest
  /// edge, or away from its end.
  Direction towards(const Point& q) const {
    const auto& [from, to] = curves_.edges()[curves_.nearest(q).edge];
    const Point nearest = qnKernel::closestOnSegment(q, from, to);
    const Point away = q - nearest;
    const Point edge = (to - from).unit();
    const Point across(-edge.y(), edge.x());
    const bool isEnd = nearest == from || nearest == to;
    if (isEnd && away.len() > 0.0) return {away.unit(), away.len()};
    return {across, away * across};
  }

  WeighedPoints points_;
  const Curves& curves_;
  Point center_;
  double extent_;
};

std::vector<WeighedPoint> fewOf(WeighedPoints points) {
  std::vector<WeighedPoint> few;
  const std::size_t stride = (points.size() + triedPoints - 1) / triedPoints;
  for (std::size_t i = 0; i < points.size(); i += stride) few.push_back(points[i]);
  return few;
}

/// The rotations to start from: one principal axis laid on the other both ways, and rotations all
/// around.
std::vector<Point> startDirections(const Body& moved, const Body& fixed) {
  const Point onto = turned(fixed.axis, {moved.axis.x(), -moved.axis.y()});
  std::vector<Point> directions = {onto, -onto};
  constexpr double cosine = 0.92387953251128674;  // of 22.5 degrees
  constexpr double sine = 0.38268343236508977;
  constexpr double diagonal = 0.70710678118654752;
  for (const Point& p :
       {Point(1.0, 0.0), Point(cosine, sine), Point(diagonal, diagonal), Point(sine, cosine)}) {
    for (const Point& quarter : {p, Point(-p.y(), p.x()), -p, Point(p.y(), -p.x())}) {
      directions.push_back(quarter);
    }
  }
  return directions;
}

}  // namespace

Alignment align(WeighedPoints moved, WeighedPoints fixed, const Curves& curves) {
  const Body body(moved);
  const Body target(fixed);
  const double extent = body.extent > 0.0 ? body.extent : 1.0;
  const std::vector<WeighedPoint> few = fewOf(moved);
  const Motion trial(few, curves, body.center, extent);
  std::optional<Alignment> best;
  for (const Point& direction : startDirections(body, target)) {
    const Alignment tried = trial.refine({direction, target.center}, triedSteps);
    if (!best || tried.residual < best->residual) best = tried;
  }
  return Motion(moved, curves, body.center, extent).refine(best->pose, mostSteps);
}

}  // namespace cntr::compute
