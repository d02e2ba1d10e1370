// SPDX-License-Identifier: MIT
//
// The small dense linear algebra of the ellipse fit (internal to the fits), with sums, products,
// quotients and square roots only, so that it gives the same bits everywhere.

#pragma once

#include <array>
#include <cstddef>
#include <vector>

namespace qnFit {

using Vector3 = std::array<double, 3>;
/// By rows.
using Matrix3 = std::array<Vector3, 3>;

Vector3 multiply(const Matrix3& matrix, const Vector3& vector) noexcept;

/// Columns of equal length.
using Columns = std::vector<std::vector<double>>;

/// The upper triangular factor R of the columns' QR decomposition, R[i][j] with i <= j; the
/// elements below the diagonal are 0. By modified Gram-Schmidt, which gives as good a factor as
/// reflections (Å. Björck, 1967). O(n).
Columns triangularFactor(Columns columns);

/// R = U diag(values) V^T, the values in descending order; the columns of V are the directions.
struct Singular {
  Vector3 values;
  Matrix3 directions;
};

/// By one-sided Jacobi rotations, which keep the small values' digits (J. Demmel, K. Veselic,
/// 1992).
Singular singularValues(const Matrix3& matrix) noexcept;

/// The unit eigenvector of the largest eigenvalue of a symmetric matrix, by Jacobi rotations.
Vector3 leadingEigenvector(const Matrix3& symmetric) noexcept;

}  // namespace qnFit
