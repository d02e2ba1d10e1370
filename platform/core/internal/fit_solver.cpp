// SPDX-License-Identifier: MIT
//
// The small dense linear algebra of the ellipse fit.

#include <platform/core/internal/fit_solver.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include <platform/core/internal/fit_rounding.h>

namespace qnFit {

namespace {

/// Jacobi sweeps converge quadratically; a 3x3 matrix takes five or six.
constexpr int maxSweeps = 30;
constexpr Matrix3 identity = {{{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}}};
constexpr std::pair<std::size_t, std::size_t> planes[] = {{0, 1}, {0, 2}, {1, 2}};

/// Sums short runs first: rounding grows with the length of a run plus the number of runs.
double dot(const std::vector<double>& a, const std::vector<double>& b) {
  constexpr std::size_t run = 256;
  double sum = 0.0;
  for (std::size_t begin = 0; begin < a.size(); begin += run) {
    const std::size_t end = std::min(begin + run, a.size());
    double part = 0.0;
    for (std::size_t i = begin; i < end; ++i) part += a[i] * b[i];
    sum += part;
  }
  return sum;
}

double columnDot(const Matrix3& m, std::size_t i, std::size_t j) {
  return m[0][i] * m[0][j] + m[1][i] * m[1][j] + m[2][i] * m[2][j];
}

struct Rotation {
  double cosine;
  double sine;
};

/// The smaller rotation that makes the off-diagonal element of [[first, off], [off, second]]
/// vanish. REQUIRES: off is not 0.
Rotation diagonalising(double first, double second, double off) {
  const double zeta = (second - first) / (2.0 * off);
  const double size = 1.0 / (std::abs(zeta) + std::sqrt(1.0 + zeta * zeta));
  const double tangent = zeta < 0.0 ? -size : size;
  const double cosine = 1.0 / std::sqrt(1.0 + tangent * tangent);
  return {cosine, cosine * tangent};
}

void rotateColumns(Matrix3& m, std::size_t i, std::size_t j, Rotation rotation) {
  for (Vector3& row : m) {
    const double left = row[i];
    row[i] = rotation.cosine * left - rotation.sine * row[j];
    row[j] = rotation.sine * left + rotation.cosine * row[j];
  }
}

void rotateRows(Matrix3& m, std::size_t i, std::size_t j, Rotation rotation) {
  for (std::size_t k = 0; k < 3; ++k) {
    const double upper = m[i][k];
    m[i][k] = rotation.cosine * upper - rotation.sine * m[j][k];
    m[j][k] = rotation.sine * upper + rotation.cosine * m[j][k];
  }
}

/// Makes each pair of columns orthogonal once; false when all pairs already were.
bool orthogonalise(Matrix3& m, Matrix3& directions) {
  bool rotated = false;
  for (const auto& [i, j] : planes) {
    const double off = columnDot(m, i, j);
    const double first = columnDot(m, i, i);
    const double second = columnDot(m, j, j);
    if (!(std::abs(off) > epsilon * std::sqrt(first) * std::sqrt(second))) continue;
    const Rotation rotation = diagonalising(first, second, off);
    rotateColumns(m, i, j, rotation);
    rotateColumns(directions, i, j, rotation);
    rotated = true;
  }
  return rotated;
}

/// Makes each off-diagonal element vanish once; false when all of them already were 0.
bool diagonalise(Matrix3& m, Matrix3& directions) {
  const double size = std::abs(m[0][0]) + std::abs(m[1][1]) + std::abs(m[2][2]);
  bool rotated = false;
  for (const auto& [i, j] : planes) {
    if (!(std::abs(m[i][j]) > 0.0625 * epsilon * size)) continue;
    const Rotation rotation = diagonalising(m[i][i], m[j][j], m[i][j]);
    rotateColumns(m, i, j, rotation);
    rotateRows(m, i, j, rotation);
    rotateColumns(directions, i, j, rotation);
    rotated = true;
  }
  return rotated;
}

Vector3 column(const Matrix3& m, std::size_t j) { return {m[0][j], m[1][j], m[2][j]}; }

void swapColumns(Singular& singular, std::size_t i, std::size_t j) {
  std::swap(singular.values[i], singular.values[j]);
  for (Vector3& row : singular.directions) std::swap(row[i], row[j]);
}

}  // namespace

Vector3 multiply(const Matrix3& matrix, const Vector3& vector) noexcept {
  Vector3 product;
  std::transform(matrix.begin(), matrix.end(), product.begin(), [&](const Vector3& row) {
    return row[0] * vector[0] + row[1] * vector[1] + row[2] * vector[2];
  });
  return product;
}

Columns triangularFactor(Columns columns) {
  Columns factor(columns.size(), std::vector<double>(columns.size()));
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const double length = std::sqrt(dot(columns[i], columns[i]));
    factor[i][i] = length;
    if (length == 0.0) continue;
    for (double& element : columns[i]) element /= length;
    for (std::size_t j = i + 1; j < columns.size(); ++j) {
      const double share = dot(columns[i], columns[j]);
      factor[i][j] = share;
      for (std::size_t k = 0; k < columns[j].size(); ++k) columns[j][k] -= share * columns[i][k];
    }
  }
  return factor;
}

Singular singularValues(const Matrix3& matrix) noexcept {
  Matrix3 columns = matrix;
  Singular result{{}, identity};
  for (int sweep = 0; sweep < maxSweeps && orthogonalise(columns, result.directions); ++sweep) {
  }
  for (std::size_t j = 0; j < 3; ++j) result.values[j] = std::sqrt(columnDot(columns, j, j));
  for (const auto& [i, j] : planes) {
    if (result.values[i] < result.values[j]) swapColumns(result, i, j);
  }
  return result;
}

Vector3 leadingEigenvector(const Matrix3& symmetric) noexcept {
  Matrix3 m = symmetric;
  Matrix3 directions = identity;
  for (int sweep = 0; sweep < maxSweeps && diagonalise(m, directions); ++sweep) {
  }
  const Vector3 values = {m[0][0], m[1][1], m[2][2]};
  const auto largest = std::max_element(values.begin(), values.end()) - values.begin();
  return column(directions, static_cast<std::size_t>(largest));
}

}  // namespace qnFit
