// SPDX-License-Identifier: MIT
#include <testing/plain/ellipse.h>

#include <cmath>

#include <testing/plain/error.h>

namespace plain {

namespace {

Matrix rotation(double angle) {
  return {std::cos(angle), -std::sin(angle), std::sin(angle), std::cos(angle), 1.0};
}

Matrix product(const Matrix& a, const Matrix& b) {
  const double e00 = a.e00 * b.e00 + a.e01 * b.e10;
  const double e01 = a.e00 * b.e01 + a.e01 * b.e11;
  const double e10 = a.e10 * b.e00 + a.e11 * b.e10;
  const double e11 = a.e10 * b.e01 + a.e11 * b.e11;
  return {e00, e01, e10, e11, e00 * e11 - e01 * e10};
}

// Semi-axis along the first of the two principal moments.
double semiAxis(double along, double across) {
  const double eighthPower = 16.0 * (along * along * along) / (across * 9.869604401089358);
  return std::sqrt(std::sqrt(std::sqrt(eighthPower)));
}

}  // namespace

Ellipse ellipseOf(const Inertia& inertia) {
  const Matrix& m = inertia.matrix;
  const double angle = std::atan2(2.0 * m.e01, m.e00 - m.e11) * 0.5;
  const Matrix principal = product(product(rotation(-angle), m), rotation(angle));
  const double l1 = std::fabs(principal.e00);
  const double l2 = std::fabs(principal.e11);
  if (!(l1 > 1e-12 && l2 > 1e-12)) throw Error{Error::singular, ""};
  return {inertia.center, semiAxis(l1, l2), semiAxis(l2, l1), angle};
}

double standardDeviation(const std::vector<double>& values) {
  const double r = 1.0 / static_cast<double>(values.size());
  double sum = 0.0;
  for (const double value : values) sum += value;
  const double mean = r * sum;
  double squares = 0.0;
  for (const double value : values) squares += (value - mean) * (value - mean);
  return std::sqrt(r * squares);
}

}  // namespace plain
