// SPDX-License-Identifier: MIT
//
// Pairs and vectors: construction, arithmetic in the order of its definition, and bytes.

#include <platform/core/vector.h>

#include <cmath>
#include <numbers>
#include <type_traits>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <testing/shapes/numbers.h>

namespace {

using Vector = qcVector<2>;

static_assert(std::is_trivially_copyable_v<Vector> && sizeof(Vector) == 2 * sizeof(double));
static_assert(std::is_trivially_copyable_v<qcPair<long>>);
static_assert(std::is_convertible_v<qcPair<long>, Vector>);
static_assert((Vector(1, 2) + Vector(3, 4)) * 2.0 == Vector(8, 12), "usable in constants");

TEST(PairTest, HoldsTwoValues) {
  const qcPair<long> pair(3, -4);
  EXPECT_EQ(pair.x(), 3);
  EXPECT_EQ(pair.y(), -4);
  EXPECT_EQ(pair, (qcPair<long>(3, -4)));
  EXPECT_NE(pair, (qcPair<long>(3, 4)));
  EXPECT_NE(pair, (qcPair<long>(2, -4)));
  EXPECT_EQ(qcPair<double>(), (qcPair<double>(0.0, 0.0)));
}

TEST(VectorTest, DefaultIsTheOrigin) {
  EXPECT_EQ(Vector().x(), 0.0);
  EXPECT_EQ(Vector().y(), 0.0);
}

TEST(VectorTest, IsMadeFromLengthAndDirection) {
  const Vector v(2.0, qcRadian(0.5));
  EXPECT_EQ(v.x(), 2.0 * std::cos(0.5));
  EXPECT_EQ(v.y(), 2.0 * std::sin(0.5));
  EXPECT_EQ(Vector(3.0, qcRadian(0.0)), Vector(3.0, 0.0));
  EXPECT_EQ(Vector(-3.0, qcRadian(0.0)).x(), -3.0);
}

TEST(VectorTest, TakesItsDirectionInDegreesToo) {
  const Vector v(2.0, qcDegree(90.0));
  EXPECT_NEAR(v.x(), 0.0, 1e-15);
  EXPECT_EQ(v.y(), 2.0);
}

TEST(VectorTest, IsMadeFromAPixel) { EXPECT_EQ(Vector(qcPair<long>(-7, 12)), Vector(-7.0, 12.0)); }

TEST(VectorTest, AddsSubtractsAndScales) {
  EXPECT_EQ(Vector(1, 2) + Vector(10, 20), Vector(11, 22));
  EXPECT_EQ(Vector(1, 2) - Vector(10, 30), Vector(-9, -28));
  EXPECT_EQ(-Vector(1, -2), Vector(-1, 2));
  EXPECT_EQ(Vector(1, 2) * 3.0, Vector(3, 6));
  EXPECT_EQ(3.0 * Vector(1, 2), Vector(3, 6));
  EXPECT_EQ(Vector(1, 2) * Vector(10, 100), 210.0);
}

TEST(VectorTest, NegatingZeroGivesNegativeZero) {
  EXPECT_TRUE(std::signbit((-Vector(0.0, 0.0)).x()));
  EXPECT_TRUE(std::signbit((-Vector(0.0, 0.0)).y()));
}

TEST(VectorTest, ProductsAreRoundedBeforeTheyAreAdded) {
  // Fusing the first product with the sum makes the first line 2^-60, fusing the second the other.
  const double a = 1.0 + std::ldexp(1.0, -30);
  const volatile double rounded = a * a;
  EXPECT_EQ(Vector(a, 1.0) * Vector(a, -rounded), 0.0);
  EXPECT_EQ(Vector(1.0, a) * Vector(-rounded, a), 0.0);
}

TEST(VectorTest, EqualityIsExact) {
  EXPECT_EQ(Vector(0.0, 1.0), Vector(-0.0, 1.0));
  EXPECT_NE(Vector(1.0, 2.0), Vector(1.0, std::nextafter(2.0, 3.0)));
  EXPECT_NE(Vector(1.0, 2.0), Vector(std::nextafter(1.0, 3.0), 2.0));
  EXPECT_FALSE(Vector(notANumber, 0.0) == Vector(notANumber, 0.0));
  EXPECT_TRUE(Vector(notANumber, 0.0) != Vector(notANumber, 0.0));
  EXPECT_EQ(Vector(infinity, 0.0), Vector(infinity, 0.0));
}

TEST(VectorTest, LengthIsTheRootOfTheSumOfSquares) {
  EXPECT_EQ(Vector(3, -4).len(), 5.0);
  EXPECT_EQ(Vector().len(), 0.0);
  EXPECT_EQ(Vector(1, 1).distance(Vector(4, 5)), 5.0);
  EXPECT_EQ(Vector(0.1, 0.7).len(), std::sqrt(0.1 * 0.1 + 0.7 * 0.7));
}

TEST(VectorTest, LengthDoesNotEscapeOverflowOrUnderflow) {
  EXPECT_EQ(Vector(1e155, 0.0).len(), infinity);
  EXPECT_EQ(Vector(1e-170, 0.0).len(), 0.0);
}

TEST(VectorTest, UnitDividesByTheLength) {
  const Vector v(0.3, -0.7);
  EXPECT_EQ(v.unit(), Vector(0.3 / v.len(), -0.7 / v.len()));
  EXPECT_EQ(Vector(0, -5).unit(), Vector(0, -1));
}

TEST(VectorTest, UnitOfALengthOfZeroIsZero) {
  EXPECT_EQ(Vector().unit(), Vector());
  EXPECT_EQ(Vector(-0.0, 0.0).unit(), Vector());
  EXPECT_EQ(Vector(1e-170, 1e-170).unit(), Vector());
}

TEST(VectorTest, NotANumberPassesThrough) {
  const Vector v(notANumber, 1.0);
  EXPECT_TRUE(std::isnan(v.len()));
  EXPECT_TRUE(std::isnan(v.distance(Vector())));
  EXPECT_TRUE(std::isnan(v.unit().x()) && std::isnan(v.unit().y()));
  EXPECT_TRUE(std::isnan(v.angle().toDouble()));
  EXPECT_TRUE(std::isnan(v * Vector(0.0, 1.0)));
  EXPECT_EQ((v + v).y(), 2.0);
}

TEST(VectorTest, AngleIsThatOfItsDirection) {
  EXPECT_EQ(Vector(1, 0).angle(), qcRadian(0.0));
  EXPECT_EQ(Vector(0, 2).angle(), qcRadian(std::numbers::pi / 2));
  EXPECT_EQ(Vector(-1, 0).angle(), qcRadian(std::numbers::pi));
  EXPECT_EQ(Vector(-1, -0.0).angle(), qcRadian(-std::numbers::pi));
  EXPECT_EQ(Vector(3, -4).angle(), qcRadian(std::atan2(-4.0, 3.0)));
  EXPECT_EQ(Vector().angle(), qcRadian(0.0));
}

TEST(RealEqTest, ToleranceIsIncluded) {
  EXPECT_TRUE(qfRealEq(Vector(1, 2), Vector(1.5, 1.5), 0.5));
  EXPECT_FALSE(qfRealEq(Vector(1, 2), Vector(1.5, 1.5), std::nextafter(0.5, 0.0)));
  EXPECT_TRUE(qfRealEq(Vector(1, 2), Vector(1, 2), 0.0));
}

TEST(RealEqTest, AsksBothCoordinates) {
  EXPECT_FALSE(qfRealEq(Vector(1, 2), Vector(1, 3), 0.5));
  EXPECT_FALSE(qfRealEq(Vector(1, 2), Vector(2, 2), 0.5));
  EXPECT_FALSE(qfRealEq(Vector(1, 2), Vector(0, 2), 0.5));
}

TEST(RealEqTest, IsFalseWithoutANumber) {
  EXPECT_FALSE(qfRealEq(Vector(notANumber, 0), Vector(notANumber, 0), 1.0));
  EXPECT_FALSE(qfRealEq(Vector(0, 0), Vector(0, notANumber), infinity));
  EXPECT_FALSE(qfRealEq(Vector(infinity, 0), Vector(infinity, 0), 1.0));
}

RC_GTEST_PROP(VectorTest, PolarFormAndAngleAreInverse, ()) {
  const double degrees = *rc::gen::inRange(-179, 180);
  const double length = *rc::gen::inRange(1, 1000) / 8.0;
  const Vector v(length, qcDegree(degrees));
  RC_ASSERT(std::abs(qcDegree(v.angle()).toDouble() - degrees) < 1e-12);
  RC_ASSERT(std::abs(v.len() - length) < 1e-12);
}

}  // namespace
