// SPDX-License-Identifier: MIT
//
// Least-squares fit of a circle: an algebraic fit to start from, then Newton steps on the sum of
// the squared distances, damped as K. Levenberg does where a full step would not reduce it.

#include <algorithm>
#include <cmath>
#include <limits>

#include <platform/core/fit.h>
#include <platform/core/internal/fit_frame.h>
#include <platform/core/internal/fit_outliers.h>
#include <platform/core/internal/fit_rounding.h>

namespace qnFit {

namespace {

constexpr std::size_t fewestPointsOfACircle = 3;
/// The limit on steps at full length; with shorter steps there may be proportionally more.
constexpr double maxFullSteps = 200.0;
constexpr double maxShortSteps = 1e5;
/// Steps this small relative to the radius, or expected to reduce the sum of squares by less than
/// this fraction, are taken unchecked: the sum can no longer tell better from worse.
constexpr double nearby = 1e-6;
constexpr double invisible = 1e-11;

/// A circle around `center` whose radius is the mean distance of the points, the best for that
/// centre.
struct Circle {
  Point center;
  double radius = 0.0;
  double sumOfSquares = 0.0;

  Circle(const Points& points, const Point& around) : center(around) {
    for (const Point& p : points) radius += p.distance(center);
    radius /= static_cast<double>(points.size());
    for (const Point& p : points) {
      const double off = p.distance(center) - radius;
      sumOfSquares += off * off;
    }
  }

  double distance(const Point& p) const noexcept { return std::abs(p.distance(center) - radius); }
};

/// Symmetric 2x2.
struct Symmetric {
  double xx = 0.0;
  double xy = 0.0;
  double yy = 0.0;

  double det() const noexcept { return xx * yy - xy * xy; }
  bool positiveDefinite() const noexcept { return xx > 0.0 && det() > 0.0; }
  Symmetric plus(double diagonal) const noexcept { return {xx + diagonal, xy, yy + diagonal}; }
  Point solve(const Point& right) const noexcept {
    return {(yy * right.x() - xy * right.y()) / det(), (xx * right.y() - xy * right.x()) / det()};
  }
  /// A unit vector of the smaller eigenvalue.
  Point lesserDirection() const noexcept {
    const double half = 0.5 * (xx - yy);
    const double root = std::sqrt(half * half + xy * xy);
    if (root == 0.0) return {1.0, 0.0};
    return half >= 0.0 ? Point(-xy, half + root).unit() : Point(root - half, -xy).unit();
  }
  void addSquare(const Point& v, double weight) noexcept {
    xx += weight * v.x() * v.x();
    xy += weight * v.x() * v.y();
    yy += weight * v.y() * v.y();
  }
};

/// The centre that minimises the sum of the squares of |p - center|^2 - r^2 (I. Kasa, 1976). In the
/// spread's coordinates the normal equations are diagonal.
Point algebraicCenter(const Points& framed, const Spread& spread) {
  Point sum;
  for (const Point& p : framed) sum = sum + spread.fromFrame(p) * (p * p);
  const Point mean = sum * (1.0 / static_cast<double>(framed.size()));
  const double y = mean.y() / (2.0 * spread.yv);
  return {(0.5 * mean.x() - y * spread.yu) / spread.xu, y};
}

/// The directions of the points from the centre: unit vectors, and their mean.
std::vector<Point> directions(const Points& points, const Point& center) {
  std::vector<Point> result;
  result.reserve(points.size());
  for (const Point& p : points) result.push_back((p - center).unit());
  return result;
}

/// Half of the negative gradient and half of the Hessian of the sum of squares as a function of the
/// centre, with the best radius for each centre.
struct Descent {
  Point direction;
  Symmetric gaussNewton;
  Symmetric newton;
  /// The centre is one of the points, where the sum of squares has a peak and no derivatives.
  bool onPoint = false;

  Descent(const Points& points, const Circle& circle) {
    const std::vector<Point> seen = directions(points, circle.center);
    Point mean;
    for (const Point& e : seen) mean = mean + e;
    mean = mean * (1.0 / static_cast<double>(seen.size()));
    for (std::size_t i = 0; i < points.size(); ++i) add(points[i], seen[i], mean, circle);
    newton.xx += gaussNewton.xx;
    newton.xy += gaussNewton.xy;
    newton.yy += gaussNewton.yy;
  }

  /// True when the sum curves upwards in every direction.
  bool curvesUp() const noexcept { return !onPoint && newton.positiveDefinite(); }

  /// The step towards the minimum, with `damping` times the size of the Hessian added to the
  /// Hessian.
  Point step(double damping) const noexcept {
    const Symmetric& hessian = curvesUp() ? newton : gaussNewton;
    return hessian.plus(damping * (hessian.xx + hessian.yy)).solve(direction);
  }

 private:
  /// The second derivative of a distance d along unit vector e is (1 - e e^T) / d.
  void add(const Point& p, const Point& e, const Point& mean, const Circle& circle) noexcept {
    const double distance = p.distance(circle.center);
    const double off = distance - circle.radius;
    direction = direction + (e - mean) * off;
    gaussNewton.addSquare(e - mean, 1.0);
    if (distance > 0.0) {
      newton.addSquare(Point(-e.y(), e.x()), off / distance);
    } else {
      onPoint = true;
    }
  }
};

/// Throws when the circle is so large that its points cannot be told from those of a line: when the
/// rounding of distances to its centre comes close to the spread across the line.
void checkCurvature(const Circle& circle, const Spread& spread) {
  if (!(safety * epsilon * circle.radius < spread.across)) {
    throw qcFitError(L"the points lie on a line");
  }
}

/// Goes step by step down to the minimum of the sum of squares.
class Refinement {
 public:
  Refinement(const Points& points, const Circle& start, double relaxation)
      : points_(points), circle_(start), relaxation_(relaxation) {}

  const Circle& circle() const noexcept { return circle_; }

  /// True once the steps are as short as rounding allows.
  bool settled() const noexcept { return settled_; }
  /// True when no step makes progress. That happens far away, where the sum is almost constant.
  bool stuck() const noexcept { return stuck_; }

  void advance() {
    const Descent descent(points_, circle_);
    if (descent.curvesUp()) {
      const Point full = descent.newton.solve(descent.direction);
      const bool close = full.len() <= nearby * circle_.radius ||
                         full * descent.direction <= invisible * circle_.sumOfSquares;
      if (close) return settle(full);
    }
    const Point step = descent.step(damping_);
    if (step.len() <= nearby * circle_.radius && leaveSaddle(descent)) return;
    lastStep_ = infinity;
    const Circle next(points_, circle_.center + step * relaxation_);
    if (next.sumOfSquares < circle_.sumOfSquares) {
      circle_ = next;
      damping_ = damping_ > leastDamping ? damping_ * 0.1 : 0.0;
    } else {
      damping_ = std::max(10.0 * damping_, leastDamping);
      if (damping_ >= mostDamping) (isExact() ? settled_ : stuck_) = true;
    }
  }

 private:
  static constexpr double infinity = std::numeric_limits<double>::infinity();
  static constexpr double leastDamping = 1e-6;
  static constexpr double mostDamping = 1e8;

  /// True when the points are no farther from the circle than rounding errors can explain.
  bool isExact() const noexcept {
    const double rounding = safety * epsilon * circle_.radius;
    return circle_.sumOfSquares <= static_cast<double>(points_.size()) * (rounding * rounding);
  }

  /// Symmetric points can lead to a place where the sum is minimal only along their axis, or to one
  /// of the points. Escapes from there by one move across the axis; false when this is no such
  /// place.
  bool leaveSaddle(const Descent& descent) {
    if (descent.curvesUp()) return false;
    const Point across = descent.newton.lesserDirection() * circle_.radius;
    for (const double share : {0.1, -0.1, 0.01, -0.01, 0.001, -0.001}) {
      const Circle moved(points_, circle_.center + across * share);
      if (moved.sumOfSquares < circle_.sumOfSquares) {
        circle_ = moved;
        return true;
      }
    }
    return false;
  }

  /// Takes the last steps, as long as each is shorter than the one before. On the way to a circle
  /// that grows without bound every step is a third of the radius.
  void settle(const Point& step) {
    const double length = step.len();
    if (length < lastStep_) {
      lastStep_ = length;
      circle_ = Circle(points_, circle_.center + step * relaxation_);
      settled_ = length <= epsilon * circle_.radius;
    } else {
      settled_ = length <= 0.1 * circle_.radius;
      stuck_ = !settled_;
    }
  }

  const Points& points_;
  Circle circle_;
  double relaxation_;
  double damping_ = 0.0;
  double lastStep_ = infinity;
  bool settled_ = false;
  bool stuck_ = false;
};

Circle bestCircle(const Points& framed, const Spread& spread, double relaxation) {
  Refinement refinement(framed, Circle(framed, algebraicCenter(framed, spread)), relaxation);
  const double steps = std::min(maxFullSteps / relaxation, maxShortSteps);
  for (double step = 0.0; step < steps && !refinement.stuck(); ++step) {
    checkCurvature(refinement.circle(), spread);
    refinement.advance();
    if (refinement.settled()) return refinement.circle();
  }
  throw qcFitError(L"the points determine no circle");
}

/// One fit with its frame.
class CircleFit {
 public:
  CircleFit(const Points& points, double relaxation)
      : frame_(points, fewestPointsOfACircle),
        framed_(frame_.enter(points)),
        circle_(bestCircle(framed_, Spread(framed_), relaxation)) {}

  double distance(const Point& p) const { return frame_.leave(circle_.distance(frame_.enter(p))); }

  qcCircleFitResults results() const {
    return {qcCircle(frame_.leave(circle_.center), frame_.leave(circle_.radius)),
            frame_.leave(rootMeanSquareDistance(circle_, framed_))};
  }

 private:
  Frame frame_;
  Points framed_;
  Circle circle_;
};

}  // namespace

}  // namespace qnFit

void qfCircleFit(const qcCircleFitParams& params, const std::vector<qcVector<2>>& points,
                 qcCircleFitResults& results) {
  if (!(params.relaxation() > 0.0 && params.relaxation() <= 1.0)) {
    throw qcFitError(L"the relaxation is not in (0, 1]");
  }
  const auto fit = qnFit::fitWithoutOutliers(points, params.count(), params.threshold(),
                                             qnFit::fewestPointsOfACircle,
                                             [&params](const std::vector<qcVector<2>>& kept) {
                                               return qnFit::CircleFit(kept, params.relaxation());
                                             });
  results = fit.results();
}
