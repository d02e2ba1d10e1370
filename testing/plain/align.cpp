// SPDX-License-Identifier: MIT
#include <testing/plain/align.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>

#include <testing/plain/deviation.h>

namespace plain {

namespace {

/// The step along the contours, as a fraction of their length.
constexpr double stepShare = 1.0 / 512.0;
/// The rotations that are tried, and how many of them are followed to the end.
constexpr int turns = 36;
constexpr std::size_t followed = 3;

/// A rotation about the centre of the points, and the place to which the centre is moved, all as
/// lengths.
using Pose = std::array<double, 3>;

struct Tried {
  Pose pose{};
  double residual = 0.0;
};

bool isBetter(const Tried& a, const Tried& b) { return a.residual < b.residual; }

std::vector<WeighedPoint> pointsOf(const std::vector<Contour>& contours) {
  double length = 0.0;
  for (const Contour& contour : contours) {
    for (const Segment& edge : edgesOf(contour)) length += distance(edge.a, edge.b);
  }
  std::vector<WeighedPoint> points;
  for (const Contour& contour : contours) {
    const std::vector<WeighedPoint> more = pointsAlong(contour, length * stepShare);
    points.insert(points.end(), more.begin(), more.end());
  }
  return points;
}

Point centerOf(const std::vector<WeighedPoint>& points) {
  double weights = 0.0;
  Point sum(0.0, 0.0);
  for (const auto& [at, weight] : points) {
    weights += weight;
    sum = plus(sum, times(at, weight));
  }
  return times(sum, 1.0 / weights);
}

class Search {
 public:
  Search(const std::vector<Contour>& measured, const std::vector<Contour>& nominal)
      : points_(pointsOf(measured)), nominal_(nominal), center_(centerOf(points_)) {
    for (const auto& [at, weight] : points_) extent_ = std::max(extent_, distance(at, center_));
  }

  const Point& center() const { return center_; }
  double extent() const { return extent_; }
  double angleOf(const Pose& pose) const { return pose[0] / extent_; }

  /// The root mean square distance in a pose.
  Tried tried(const Pose& pose) const {
    const double c = std::cos(angleOf(pose));
    const double s = std::sin(angleOf(pose));
    double squares = 0.0;
    double weights = 0.0;
    for (const auto& [at, weight] : points_) {
      const Point d = minus(at, center_);
      const Point there(pose[1] + c * d.x() - s * d.y(), pose[2] + s * d.x() + c * d.y());
      const double away = distanceToCurves(nominal_, there);
      squares += weight * (away * away);
      weights += weight;
    }
    return {pose, std::sqrt(squares / weights)};
  }

  /// Downhill from a pose with a simplex of this size, for this many poses (J. A. Nelder, R. Mead,
  /// A Simplex Method for Function Minimization, 1965).
  Tried downhill(const Pose& start, double size, int poses) const {
    std::array<Tried, 4> corners;
    corners.fill(tried(start));
    for (std::size_t i = 0; i < 3; ++i) {
      Pose pose = start;
      pose[i] += size;
      corners[i] = tried(pose);
    }
    for (int k = 0; k < poses; ++k) {
      std::sort(corners.begin(), corners.end(), isBetter);
      Tried& worst = corners[3];
      const Tried opposite = tried(along(corners, 1.0));
      if (isBetter(opposite, corners[0])) {
        const Tried beyond = tried(along(corners, 2.0));
        worst = std::min(opposite, beyond, isBetter);
      } else if (isBetter(opposite, corners[2])) {
        worst = opposite;
      } else {
        const Tried between = tried(along(corners, isBetter(opposite, worst) ? 0.5 : -0.5));
        if (isBetter(between, std::min(opposite, worst, isBetter))) {
          worst = between;
        } else {
          shrink(corners);
        }
      }
    }
    return *std::min_element(corners.begin(), corners.end(), isBetter);
  }

 private:
  /// From the middle of the three best corners away from the worst, by this multiple of its
  /// distance.
  static Pose along(const std::array<Tried, 4>& corners, double share) {
    Pose pose{};
    for (std::size_t i = 0; i < 3; ++i) {
      const double middle = (corners[0].pose[i] + corners[1].pose[i] + corners[2].pose[i]) / 3.0;
      pose[i] = middle + share * (middle - corners[3].pose[i]);
    }
    return pose;
  }

  /// Moves all corners half way to the best.
  void shrink(std::array<Tried, 4>& corners) const {
    for (std::size_t k = 1; k < corners.size(); ++k) {
      Pose pose{};
      for (std::size_t i = 0; i < 3; ++i) pose[i] = 0.5 * (corners[0].pose[i] + corners[k].pose[i]);
      corners[k] = tried(pose);
    }
  }

  std::vector<WeighedPoint> points_;
  const std::vector<Contour>& nominal_;
  Point center_;
  double extent_ = 0.0;
};

}  // namespace

Aligned align(const std::vector<Contour>& measured, const std::vector<Contour>& nominal) {
  const Search search(measured, nominal);
  const Point place = centerOf(pointsOf(nominal));
  const double extent = search.extent();
  std::vector<Tried> starts;
  for (int k = 0; k < turns; ++k) {
    const double turn = 2.0 * std::numbers::pi / turns * k;
    starts.push_back(search.downhill({turn * extent, place.x(), place.y()}, 0.05 * extent, 20));
  }
  std::sort(starts.begin(), starts.end(), isBetter);
  Tried best = starts.front();
  for (std::size_t k = 0; k < followed; ++k) {
    Tried here = starts[k];
    // A simplex that has become flat is enlarged again.
    for (const double size : {1e-2, 1e-4, 1e-7}) {
      here = search.downhill(here.pose, size * extent, 100);
    }
    best = std::min(best, here, isBetter);
  }
  const double angle = search.angleOf(best.pose);
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  const Point& from = search.center();
  return {
      angle,
      {best.pose[1] - (c * from.x() - s * from.y()), best.pose[2] - (s * from.x() + c * from.y())},
      best.residual};
}

}  // namespace plain
