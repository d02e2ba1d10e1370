// SPDX-License-Identifier: MIT
//
// The small dense linear algebra of the ellipse fit. The library keeps it to itself: this program
// has a copy of its source.

#include <platform/core/internal/fit_solver.h>

#include <cmath>

#include <gtest/gtest.h>
#include <platform/core/random.h>

namespace {

using qnFit::Columns;
using qnFit::Matrix3;
using qnFit::Vector3;

double dot(const Vector3& a, const Vector3& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

Vector3 column(const Matrix3& m, std::size_t j) { return {m[0][j], m[1][j], m[2][j]}; }

Matrix3 anyMatrix(qcRandomUniform& random) {
  Matrix3 m{};
  for (Vector3& row : m) {
    for (double& element : row) element = random.next(-1.0, 1.0);
  }
  return m;
}

TEST(MultiplyTest, TakesRowsTimesTheVector) {
  EXPECT_EQ(qnFit::multiply({{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}}, {1, 10, 100}),
            (Vector3{321, 654, 987}));
}

TEST(TriangularFactorTest, IsTheFactorOfColumnsThatAreOneAlready) {
  const Columns factor = qnFit::triangularFactor({{3, 0, 0}, {1, 2, 0}, {5, 6, 4}});
  EXPECT_EQ(factor, (Columns{{3, 1, 5}, {0, 2, 6}, {0, 0, 4}}));
}

TEST(TriangularFactorTest, HasTheProductsOfTheColumns) {
  qcRandomUniform random(7);
  // More than one run of the sums.
  Columns columns(3, std::vector<double>(1000));
  for (auto& one : columns) {
    for (double& element : one) element = random.next(-1.0, 1.0);
  }
  const Columns r = qnFit::triangularFactor(columns);
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = 0; j < 3; ++j) {
      double ofColumns = 0.0;
      for (std::size_t k = 0; k < 1000; ++k) ofColumns += columns[i][k] * columns[j][k];
      const double ofFactor = r[0][i] * r[0][j] + r[1][i] * r[1][j] + r[2][i] * r[2][j];
      EXPECT_NEAR(ofFactor, ofColumns, 1e-11);
      if (j < i) {
        EXPECT_EQ(r[i][j], 0.0);
      }
    }
  }
}

TEST(TriangularFactorTest, LeavesZeroColumnsOut) {
  const Columns factor = qnFit::triangularFactor({{0, 0}, {3, 4}});
  EXPECT_EQ(factor, (Columns{{0, 0}, {0, 5}}));
}

TEST(SingularValuesTest, OfADiagonalAreItsSizesFalling) {
  const auto [values, directions] = qnFit::singularValues({{{2, 0, 0}, {0, -5, 0}, {0, 0, 3}}});
  EXPECT_EQ(values, (Vector3{5, 3, 2}));
  EXPECT_EQ(column(directions, 0), (Vector3{0, 1, 0}));
  EXPECT_EQ(column(directions, 1), (Vector3{0, 0, 1}));
  EXPECT_EQ(column(directions, 2), (Vector3{1, 0, 0}));
}

TEST(SingularValuesTest, KeepEqualValuesInTheirOrder) {
  const Matrix3 unit = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
  EXPECT_EQ(qnFit::singularValues(unit).directions, unit);
  EXPECT_EQ(qnFit::singularValues({{{2, 0, 0}, {0, 3, 0}, {0, 0, 2}}}).directions,
            (Matrix3{{{0, 1, 0}, {1, 0, 0}, {0, 0, 1}}}));
}

TEST(SingularValuesTest, AreHowFarTheMatrixStretchesItsDirections) {
  qcRandomUniform random(3);
  for (int round = 0; round < 200; ++round) {
    const Matrix3 m = anyMatrix(random);
    const auto [values, directions] = qnFit::singularValues(m);
    EXPECT_GE(values[0], values[1]);
    EXPECT_GE(values[1], values[2]);
    for (std::size_t i = 0; i < 3; ++i) {
      const Vector3 image = qnFit::multiply(m, column(directions, i));
      EXPECT_NEAR(std::sqrt(dot(image, image)), values[i], 1e-14);
      for (std::size_t j = 0; j < 3; ++j) {
        EXPECT_NEAR(dot(column(directions, i), column(directions, j)), i == j ? 1.0 : 0.0, 1e-14);
        const Vector3 other = qnFit::multiply(m, column(directions, j));
        EXPECT_NEAR(dot(image, other), i == j ? values[i] * values[i] : 0.0, 1e-14);
      }
    }
  }
}

TEST(LeadingEigenvectorTest, BelongsToTheLargestEigenvalue) {
  EXPECT_EQ(qnFit::leadingEigenvector({{{-9, 0, 0}, {0, 2, 0}, {0, 0, 1}}}), (Vector3{0, 1, 0}));
  qcRandomUniform random(11);
  for (int round = 0; round < 200; ++round) {
    Matrix3 m = anyMatrix(random);
    for (std::size_t i = 0; i < 3; ++i) {
      for (std::size_t j = 0; j < i; ++j) m[i][j] = m[j][i];
    }
    const Vector3 v = qnFit::leadingEigenvector(m);
    EXPECT_NEAR(dot(v, v), 1.0, 1e-14);
    const Vector3 image = qnFit::multiply(m, v);
    const double value = dot(v, image);
    for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(image[i], value * v[i], 1e-14);
    for (int other = 0; other < 20; ++other) {
      Vector3 w = {random.next(-1.0, 1.0), random.next(-1.0, 1.0), random.next(-1.0, 1.0)};
      EXPECT_LE(dot(w, qnFit::multiply(m, w)), value * dot(w, w) + 1e-14);
    }
  }
}

}  // namespace
