// SPDX-License-Identifier: MIT
//
// The inverse of a 2x2 matrix. All other operations are inline in matrix.h.

#include <platform/core/matrix.h>

#include <cmath>

#include <platform/core/exception.h>

qcMatrix<2> qcMatrix<2>::inverse() const {
  const double det = e00_ * e11_ - e01_ * e10_;
  if (det == 0.0 || !std::isfinite(det)) throw qcMathError::Singular();
  return {e11_ / det, -e01_ / det, -e10_ / det, e00_ / det};
}
