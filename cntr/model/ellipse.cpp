// SPDX-License-Identifier: MIT

#include <cntr/ellipse.h>

#include <cmath>

#include <platform/core/fit.h>

namespace {

constexpr double piSquared = 9.869604401089358;

/// A principal moment of at most this absolute value belongs to a line or to nothing.
constexpr double smallestMoment = 1e-12;

/// The semi-axis along which a solid ellipse has the second moment `along`, `across` being the
/// other one. With semi-axes a and b the moments are pi a^3 b / 4 and pi a b^3 / 4, so that a^8 =
/// 16 along^3 / (across pi^2).
double semiAxis(double along, double across) {
  const double eighthPower = 16.0 * (along * along * along) / (across * piSquared);
  return std::sqrt(std::sqrt(std::sqrt(eighthPower)));
}

qcMatrix<2> rotation(const qcRadian& angle) { return {angle, angle, 1.0, 1.0}; }

}  // namespace

qcEllipse qf_EllipseFromInertiaData(const qc_InertiaData& data) {
  const qcMatrix<2>& m = data.inertiaMatrix();
  const qcRadian theta(std::atan2(2.0 * m.element(0, 1), m.element(0, 0) - m.element(1, 1)) * 0.5);
  const qcMatrix<2> principal = (rotation(-theta) * m) * rotation(theta);
  const double first = std::abs(principal.element(0, 0));
  const double second = std::abs(principal.element(1, 1));
  if (!(first > smallestMoment && second > smallestMoment)) throw qcMathError::Singular();
  return qcEllipse(qcEllipse::qcEllipseGeom{data.centerOfMass(), semiAxis(first, second),
                                            semiAxis(second, first), theta, qcRadian(0.0)});
}

namespace {

void fitCircle(const std::vector<qcVector<2>>& points, qcEllipse& ellipse, double& residual) {
  qcCircleFitResults results;
  qfCircleFit(qcCircleFitParams(), points, results);
  ellipse = qcEllipse(results.circle());
  residual = results.residual();
}

void fitCircleOrNothing(const std::vector<qcVector<2>>& points, qcEllipse& ellipse,
                        double& residual) {
  try {
    fitCircle(points, ellipse, residual);
  } catch (const qcException&) {
    ellipse = qcEllipse();
    residual = -1.0;
  }
}

}  // namespace

void qf_FitEllipse(const std::vector<qcVector<2>>& points, qcEllipse& ellipse, double& residual) {
  try {
    qcEllipseFitResults results;
    qfEllipseFit(qcEllipseFitParams(), points, results);
    ellipse = results.ellipse();
    residual = results.residual();
  } catch (const qcException&) {
    fitCircleOrNothing(points, ellipse, residual);
  }
}

void qf_FitEllipse(const std::vector<qcEdgelet>& edgelets, qcEllipse& ellipse, double& residual) {
  std::vector<qcVector<2>> positions;
  positions.reserve(edgelets.size());
  for (const qcEdgelet& edgelet : edgelets) positions.push_back(edgelet.position());
  qf_FitEllipse(positions, ellipse, residual);
}

double qf_StdDev(const std::vector<double>& values) {
  const double reciprocal = 1.0 / static_cast<double>(values.size());
  double sum = 0.0;
  for (const double value : values) sum += value;
  const double mean = reciprocal * sum;
  double squares = 0.0;
  for (const double value : values) squares += (value - mean) * (value - mean);
  return std::sqrt(reciprocal * squares);
}
