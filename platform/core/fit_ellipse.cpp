// SPDX-License-Identifier: MIT
//
// Direct least-squares fit of an ellipse. The conic a u^2 + b uv + c v^2 + d u + e v + f = 0 with
// the least sum of squares of its left side over the points is sought among those with
// 4ac - b^2 = 1, all of which are ellipses. An affine map of the points changes 4ac - b^2 by a
// constant factor, so the answer does not depend on the coordinates; it is computed in those where
// the points have unit variance and no correlation (fit_frame.h), which keeps long and narrow
// ellipses as well determined as circles.

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include <platform/core/fit.h>
#include <platform/core/internal/fit_distance.h>
#include <platform/core/internal/fit_frame.h>
#include <platform/core/internal/fit_outliers.h>
#include <platform/core/internal/fit_rounding.h>
#include <platform/core/internal/fit_solver.h>

namespace qnFit {

namespace {

constexpr std::size_t fewestPointsOfAnEllipse = 5;

/// a u^2 + b uv + c v^2 + d u + e v + f.
struct Conic {
  double a, b, c, d, e, f;

  /// Positive for an ellipse, 0 for a parabola, negative for a hyperbola.
  double discriminant() const noexcept { return 4.0 * a * c - b * b; }
};

/// An ellipse in the coordinates of the frame.
struct Ellipse {
  Point center;
  double major;
  double minor;
  /// Unit vector along the major axis.
  Point axis;

  double distance(const Point& p) const noexcept {
    return distanceToEllipse(turned(p), major, minor);
  }

  /// The point relative to the centre, along the axes.
  Point turned(const Point& p) const noexcept {
    const Point q = p - center;
    return {q * axis, q.y() * axis.x() - q.x() * axis.y()};
  }
};

double rootMeanSquareDistance(const Ellipse& ellipse, const Points& points) {
  double sum = 0.0;
  std::array<Point, lanes> turned;
  for (std::size_t begin = 0; begin < points.size(); begin += lanes) {
    const std::size_t count = std::min(lanes, points.size() - begin);
    for (std::size_t i = 0; i < count; ++i) turned[i] = ellipse.turned(points[begin + i]);
    const std::array<double, lanes> distances =
        distancesToEllipse(turned, ellipse.major, ellipse.minor);
    for (std::size_t i = 0; i < count; ++i) sum += distances[i] * distances[i];
  }
  return std::sqrt(sum / static_cast<double>(points.size()));
}

/// The factor R of the points' columns u, v, 1, u^2, uv, v^2, divided by sqrt(n).
Columns conicFactor(const Points& framed, const Spread& spread) {
  Columns columns(6, std::vector<double>(framed.size()));
  const double share = std::sqrt(1.0 / static_cast<double>(framed.size()));
  for (std::size_t i = 0; i < framed.size(); ++i) {
    const Point p = spread.fromFrame(framed[i]);
    const double row[] = {p.x(), p.y(), 1.0, p.x() * p.x(), p.x() * p.y(), p.y() * p.y()};
    for (std::size_t j = 0; j < columns.size(); ++j) columns[j][i] = row[j] * share;
  }
  return triangularFactor(std::move(columns));
}

/// Relative rounding error of the factor: that of the coordinates, seen in the narrowest direction,
/// and that of the sums.
double roundingOf(const Points& framed, const Spread& spread) {
  return epsilon * (1.0 / spread.across + std::sqrt(static_cast<double>(framed.size())));
}

/// (a, b, c) of the best ellipse from the part of the factor that stands for u^2, uv and v^2 once
/// u, v and 1 are eliminated: the left side's sum of squares is |factor (a, b, c)|^2. Written in
/// the singular directions and scaled by the least singular value s2, the condition becomes w^T N w
/// with N_ij = K_ij (s2 / s_i) (s2 / s_j), K being the matrix of 4ac - b^2 there, and the answer is
/// the eigenvector of N's one positive eigenvalue. No quotient exceeds 1, also for points exactly
/// on an ellipse, where s2 is 0.
Vector3 bestQuadraticPart(const Matrix3& factor, double rounding) {
  const auto [values, directions] = singularValues(factor);
  // The columns have norms of about 1 before u, v and 1 are eliminated; with three distinct points,
  // only rounding errors of that size are left.
  const double error = safety * rounding * std::max(values[0], 1.0);
  if (!(values[1] > error)) throw qcFitError(L"the points do not determine an ellipse");
  const Vector3 shrunk = {values[2] / values[0], values[2] / values[1], 1.0};
  Matrix3 n;
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = 0; j < 3; ++j) {
      const double k =
          2.0 * (directions[0][i] * directions[2][j] + directions[2][i] * directions[0][j]) -
          directions[1][i] * directions[1][j];
      n[i][j] = k * shrunk[i] * shrunk[j];
    }
  }
  const bool onConic = values[2] <= error;
  if (onConic && n[2][2] <= error / values[1]) {
    throw qcFitError(L"the points lie on a curve that is not an ellipse");
  }
  Vector3 w = leadingEigenvector(n);
  for (std::size_t i = 0; i < 3; ++i) w[i] *= shrunk[i];
  return multiply(directions, w);
}

/// The conic of a factor and its quadratic part: u, v and 1 by back substitution. Its sign makes
/// a and c positive.
Conic withLinearPart(const Columns& r, const Vector3& quadratic) {
  double linear[3];
  for (std::size_t i = 3; i-- > 0;) {
    double rest = r[i][3] * quadratic[0] + r[i][4] * quadratic[1] + r[i][5] * quadratic[2];
    for (std::size_t j = i + 1; j < 3; ++j) rest += r[i][j] * linear[j];
    linear[i] = -rest / r[i][i];
  }
  const double sign = quadratic[0] < 0.0 ? -1.0 : 1.0;
  return {sign * quadratic[0], sign * quadratic[1], sign * quadratic[2],
          sign * linear[0],    sign * linear[1],    sign * linear[2]};
}

Conic bestConic(const Points& framed, const Spread& spread) {
  const Columns r = conicFactor(framed, spread);
  const Matrix3 quadratic = {{{r[3][3], r[3][4], r[3][5]},  //
                              {0.0, r[4][4], r[4][5]},      //
                              {0.0, 0.0, r[5][5]}}};
  return withLinearPart(r, bestQuadraticPart(quadratic, roundingOf(framed, spread)));
}

/// The semi-axes of the image of the unit circle under [[m00, m01], [m10, m11]]: its singular
/// values and its first left singular vector. The smaller one comes from the determinant, which is
/// accurate to all digits.
Ellipse imageOfUnitCircle(double m00, double m01, double m10, double m11, double det) {
  const double xx = m00 * m00 + m01 * m01;
  const double xy = m00 * m10 + m01 * m11;
  const double yy = m10 * m10 + m11 * m11;
  const double half = 0.5 * (xx - yy);
  const double root = std::sqrt(half * half + xy * xy);
  const Point axis = half >= 0.0 ? Point(half + root, xy) : Point(xy, root - half);
  const double major = std::sqrt(0.5 * (xx + yy) + root);
  return {Point(), major, std::min(det / major, major), root > 0.0 ? axis.unit() : Point(1.0, 0.0)};
}

/// The ellipse of a conic given in the spread's coordinates. With the conic written as
/// |G (p - center)|^2 = 1, G upper triangular, the ellipse is the image of the unit circle under
/// the spread's map times the inverse of G.
Ellipse ellipseOf(const Conic& conic, const Spread& spread) {
  const double discriminant = conic.discriminant();
  const Point center((conic.b * conic.e - 2.0 * conic.c * conic.d) / discriminant,
                     (conic.b * conic.d - 2.0 * conic.a * conic.e) / discriminant);
  const double level = -(conic.f + 0.5 * (conic.d * center.x() + conic.e * center.y()));
  const double g00 = std::sqrt(conic.a / level);
  const double g01 = 0.5 * conic.b / (level * g00);
  const double g11 = 0.5 * std::sqrt(discriminant) / (level * g00);
  const double h01 = -g01 / (g00 * g11);
  Ellipse ellipse =
      imageOfUnitCircle(spread.xu / g00, spread.xu * h01, spread.yu / g00,
                        spread.yu * h01 + spread.yv / g11, spread.xu * spread.yv / (g00 * g11));
  ellipse.center = spread.toFrame(center);
  const bool valid = discriminant > 0.0 && std::isfinite(ellipse.major) && ellipse.minor > 0.0 &&
                     std::isfinite(ellipse.center.len());
  if (!valid) throw qcFitError(L"the points do not determine an ellipse");
  return ellipse;
}

/// One fit with its frame.
class EllipseFit {
 public:
  explicit EllipseFit(const Points& points) : frame_(points, fewestPointsOfAnEllipse) {
    const Points framed = frame_.enter(points);
    const Spread spread(framed);
    rounding_ = roundingOf(framed, spread);
    ellipse_ = ellipseOf(bestConic(framed, spread), spread);
    residual_ = rootMeanSquareDistance(ellipse_, framed);
  }

  double distance(const Point& p) const { return frame_.leave(ellipse_.distance(frame_.enter(p))); }

  double residual() const { return frame_.leave(residual_); }

  qcEllipse ellipse(const qcRadian& reference) const {
    return qcEllipse(
        qcEllipse::qcEllipseGeom{frame_.leave(ellipse_.center), frame_.leave(ellipse_.major),
                                 frame_.leave(ellipse_.minor), rotation(reference), qcRadian()});
  }

 private:
  /// The direction of the major axis within a quarter turn of `reference`; `reference` itself for a
  /// circle, whose axis is only rounding errors.
  qcRadian rotation(const qcRadian& reference) const noexcept {
    if (ellipse_.major - ellipse_.minor <= safety * rounding_ * ellipse_.major) return reference;
    const double angle = ellipse_.axis.angle().toDouble() - reference.toDouble();
    const double turned = std::remainder(angle, std::numbers::pi);
    const double atMostQuarter = turned > -0.5 * std::numbers::pi ? turned : -turned;
    return qcRadian(reference.toDouble() + atMostQuarter);
  }

  Frame frame_;
  Ellipse ellipse_{};
  double rounding_ = 0.0;
  double residual_ = 0.0;
};

}  // namespace

}  // namespace qnFit

void qfEllipseFit(const qcEllipseFitParams& params, const std::vector<qcVector<2>>& points,
                  qcEllipseFitResults& results) {
  if (!std::isfinite(params.angle().toDouble())) {
    throw qcFitError(L"the reference angle is not finite");
  }
  const auto fit = qnFit::fitWithoutOutliers(
      points, params.count(), params.threshold(), qnFit::fewestPointsOfAnEllipse,
      [](const std::vector<qcVector<2>>& kept) { return qnFit::EllipseFit(kept); });
  results = qcEllipseFitResults(fit.ellipse(params.angle()), fit.residual());
}
