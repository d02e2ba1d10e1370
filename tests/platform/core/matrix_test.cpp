// SPDX-License-Identifier: MIT
//
// The 2x2 matrix: construction, its remembered determinant, products, inverse, bytes.

#include <platform/core/matrix.h>

#include <cmath>
#include <type_traits>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <testing/shapes/numbers.h>

#include <platform/core/exception.h>

namespace {

using Matrix = qcMatrix<2>;
using Vector = qcVector<2>;

static_assert(std::is_trivially_copyable_v<Matrix>);
static_assert(Matrix(1, 2, 3, 4).det() == -2.0, "usable in constants");

TEST(MatrixTest, DefaultIsTheIdentity) {
  EXPECT_EQ(Matrix(), Matrix(1, 0, 0, 1));
  EXPECT_EQ(Matrix().det(), 1.0);
}

TEST(MatrixTest, ElementsAreByRows) {
  const Matrix m(1, 2, 3, 4);
  EXPECT_EQ(m.element(0, 0), 1.0);
  EXPECT_EQ(m.element(0, 1), 2.0);
  EXPECT_EQ(m.element(1, 0), 3.0);
  EXPECT_EQ(m.element(1, 1), 4.0);
}

TEST(MatrixTest, ElementsCanBeWritten) {
  Matrix m(1, 2, 3, 4);
  m.element(0, 0, 10.0);
  m.element(0, 1, 20.0);
  m.element(1, 0, 30.0);
  m.element(1, 1, 40.0);
  EXPECT_EQ(m, Matrix(10, 20, 30, 40));
}

TEST(MatrixTest, TwoAnglesAndScalesGiveItsColumns) {
  const Matrix m(qcRadian(0.3), qcRadian(0.8), 2.0, 5.0);
  EXPECT_EQ(m.element(0, 0), 2.0 * std::cos(0.3));
  EXPECT_EQ(m.element(1, 0), 2.0 * std::sin(0.3));
  EXPECT_EQ(m.element(0, 1), 5.0 * -std::sin(0.8));
  EXPECT_EQ(m.element(1, 1), 5.0 * std::cos(0.8));
  EXPECT_EQ(m.det(), m.element(0, 0) * m.element(1, 1) - m.element(0, 1) * m.element(1, 0));
}

TEST(MatrixTest, EqualAnglesAndUnitScalesRotate) {
  const Vector turned = Matrix(qcDegree(90), qcDegree(90), 1.0, 1.0) * Vector(3.0, 1.0);
  EXPECT_NEAR(turned.x(), -1.0, 1e-15);
  EXPECT_NEAR(turned.y(), 3.0, 1e-15);
}

TEST(MatrixTest, DeterminantIsRememberedUntilItIsAskedToRefresh) {
  Matrix m(1, 2, 3, 4);
  m.element(0, 0, 11.0);
  EXPECT_EQ(m.det(), -2.0);
  m.setdt();
  EXPECT_EQ(m.det(), 38.0);
}

TEST(MatrixTest, EqualityIgnoresTheRememberedDeterminant) {
  Matrix written(1, 2, 3, 5);
  written.element(1, 1, 4.0);
  EXPECT_NE(written.det(), Matrix(1, 2, 3, 4).det());
  EXPECT_EQ(written, Matrix(1, 2, 3, 4));
}

TEST(MatrixTest, EqualityAsksEveryElement) {
  EXPECT_FALSE(Matrix(1, 2, 3, 4) == Matrix(0, 2, 3, 4));
  EXPECT_FALSE(Matrix(1, 2, 3, 4) == Matrix(1, 0, 3, 4));
  EXPECT_FALSE(Matrix(1, 2, 3, 4) == Matrix(1, 2, 0, 4));
  EXPECT_FALSE(Matrix(1, 2, 3, 4) == Matrix(1, 2, 3, 0));
}

TEST(MatrixTest, MultipliesRowsByColumns) {
  EXPECT_EQ(Matrix(1, 2, 3, 4) * Matrix(5, 6, 7, 8), Matrix(19, 22, 43, 50));
  EXPECT_EQ((Matrix(1, 2, 3, 4) * Matrix(5, 6, 7, 8)).det(), 19.0 * 50.0 - 22.0 * 43.0);
  EXPECT_EQ(Matrix(1, 2, 3, 4) * Vector(10, 100), Vector(210, 430));
}

TEST(MatrixTest, InverseUndoes) {
  EXPECT_EQ(Matrix(2, 0, 0, 4).inverse(), Matrix(0.5, 0, 0, 0.25));
  EXPECT_EQ(Matrix(1, 2, 3, 5).inverse(), Matrix(-5, 2, 3, -1));
  EXPECT_EQ(Matrix(0, 1, -1, 0).inverse(), Matrix(0, -1, 1, 0));
}

TEST(MatrixTest, InverseTakesAFreshDeterminant) {
  Matrix m(1, 2, 2, 4);
  m.element(1, 1, 5.0);
  EXPECT_EQ(m.det(), 0.0);
  EXPECT_EQ(m.inverse(), Matrix(5, -2, -2, 1));
  m.setdt();
  m.element(1, 1, 4.0);
  EXPECT_THROW(m.inverse(), qcMathError::Singular);
}

TEST(MatrixTest, SingularMatricesHaveNoInverse) {
  EXPECT_THROW(Matrix(0, 0, 0, 0).inverse(), qcMathError::Singular);
  EXPECT_THROW(Matrix(1, 2, 2, 4).inverse(), qcMathError::Singular);
  EXPECT_THROW(Matrix(1e-170, 0, 0, 1e-170).inverse(), qcMathError::Singular);
  EXPECT_THROW(Matrix(1e170, 0, 0, 1e170).inverse(), qcMathError::Singular);
  EXPECT_THROW(Matrix(infinity, 0, 0, 1).inverse(), qcMathError::Singular);
  EXPECT_THROW(Matrix(notANumber, 0, 0, 1).inverse(), qcMathError::Singular);
}

TEST(MatrixTest, RealEqAsksEveryElementWithToleranceIncluded) {
  const Matrix m(1, 2, 3, 4);
  EXPECT_TRUE(qfRealEq(m, Matrix(1.5, 2.5, 2.5, 3.5), 0.5));
  EXPECT_FALSE(qfRealEq(m, Matrix(1.75, 2, 3, 4), 0.5));
  EXPECT_FALSE(qfRealEq(m, Matrix(1, 2.75, 3, 4), 0.5));
  EXPECT_FALSE(qfRealEq(m, Matrix(1, 2, 2.25, 4), 0.5));
  EXPECT_FALSE(qfRealEq(m, Matrix(1, 2, 3, 3.25), 0.5));
  EXPECT_FALSE(qfRealEq(m, Matrix(1, 2, 3, std::nan("")), infinity));
}

RC_GTEST_PROP(MatrixTest, InverseTimesMatrixIsTheIdentity, ()) {
  const auto element = [] { return *rc::gen::inRange(-1000, 1000) / 16.0; };
  const Matrix m(element(), element(), element(), element());
  RC_PRE(std::abs(m.det()) > 1.0);
  RC_ASSERT(qfRealEq(m.inverse() * m, Matrix(), 1e-9));
  RC_ASSERT(qfRealEq(m * m.inverse(), Matrix(), 1e-9));
}

}  // namespace
