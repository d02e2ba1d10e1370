// SPDX-License-Identifier: MIT
//
// The 2x2 matrix with its remembered determinant: a trivially copyable value. Transforms with a
// translation are in xform.h.

#pragma once

#include <platform/core/vector.h>

/// @addtogroup plane
/// @{

template <int N>
class qcMatrix;

/// A 2x2 matrix of doubles, element(row, column), that remembers its determinant.
template <>
class qcMatrix<2> {
 public:
  /// The identity.
  constexpr qcMatrix() noexcept : qcMatrix(1.0, 0.0, 0.0, 1.0) {}
  /// By rows; the determinant is computed.
  constexpr qcMatrix(double e00, double e01, double e10, double e11) noexcept
      : e00_(e00), e01_(e01), e10_(e10), e11_(e11), det_(e00 * e11 - e01 * e10) {}
  /// The matrix whose columns are xScale (cos, sin) of `xAxis` and yScale (-sin, cos) of `yAxis`.
  /// Two equal angles and unit scales give the rotation by that angle.
  qcMatrix(const qcRadian& xAxis, const qcRadian& yAxis, double xScale, double yScale) noexcept
      : qcMatrix(xScale * std::cos(xAxis.toDouble()), yScale * -std::sin(yAxis.toDouble()),
                 xScale * std::sin(xAxis.toDouble()), yScale * std::cos(yAxis.toDouble())) {}

  /// REQUIRES: row and column are 0 or 1.
  constexpr double element(int row, int column) const noexcept {
    if (row == 0) return column == 0 ? e00_ : e01_;
    return column == 0 ? e10_ : e11_;
  }
  /// Writes one element. The remembered determinant stays until setdt().
  constexpr void element(int row, int column, double value) noexcept {
    (row == 0 ? (column == 0 ? e00_ : e01_) : (column == 0 ? e10_ : e11_)) = value;
  }

  /// The remembered determinant: that of the last construction or setdt().
  constexpr double det() const noexcept { return det_; }
  /// Recomputes the determinant, e00*e11 - e01*e10, after elements were written.
  constexpr void setdt() noexcept { det_ = e00_ * e11_ - e01_ * e10_; }

  /// The matrix product: each element the sum of two products, in the order of the columns.
  constexpr qcMatrix operator*(const qcMatrix& other) const noexcept {
    return {e00_ * other.e00_ + e01_ * other.e10_, e00_ * other.e01_ + e01_ * other.e11_,
            e10_ * other.e00_ + e11_ * other.e10_, e10_ * other.e01_ + e11_ * other.e11_};
  }
  /// The image of a vector: (e00*x + e01*y, e10*x + e11*y).
  constexpr qcVector<2> operator*(const qcVector<2>& v) const noexcept {
    return {e00_ * v.x() + e01_ * v.y(), e10_ * v.x() + e11_ * v.y()};
  }

  /// The inverse. Throws qcMathError::Singular when the determinant, computed afresh, is 0 or not
  /// finite.
  QCPLATFORM_EXPORT qcMatrix inverse() const;

  /// Exact equality of the four elements; the remembered determinant is not compared.
  constexpr bool operator==(const qcMatrix& other) const noexcept {
    return e00_ == other.e00_ && e01_ == other.e01_ && e10_ == other.e10_ && e11_ == other.e11_;
  }

 private:
  double e00_;
  double e01_;
  double e10_;
  double e11_;
  double det_;
};

static_assert(std::is_trivially_copyable_v<qcMatrix<2>>);

/// True when all four elements agree within `eps`: |a - b| <= eps.
inline bool qfRealEq(const qcMatrix<2>& a, const qcMatrix<2>& b, double eps) noexcept {
  for (int row = 0; row < 2; ++row) {
    for (int column = 0; column < 2; ++column) {
      if (!(std::abs(a.element(row, column) - b.element(row, column)) <= eps)) return false;
    }
  }
  return true;
}

/// Stores or loads the four elements by rows; loading recomputes the determinant.
QCPLATFORM_EXPORT qcArchive& operator||(qcArchive& archive, qcMatrix<2>& matrix);

/// @}
