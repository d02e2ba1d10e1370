// SPDX-License-Identifier: MIT
//
// Angles: conversion, normalising, the 8-bit angle, and their bytes.

#include <platform/core/angle.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <testing/shapes/numbers.h>

namespace {

static_assert(std::is_trivially_copyable_v<qcRadian> && sizeof(qcRadian) == sizeof(double));
static_assert(std::is_trivially_copyable_v<qcDegree> && sizeof(qcDegree) == sizeof(double));
static_assert(std::is_trivially_copyable_v<qcAngle8> && sizeof(qcAngle8) == 1);
static_assert(!std::is_convertible_v<double, qcRadian> && !std::is_convertible_v<double, qcDegree>);
static_assert(!std::is_convertible_v<int, qcAngle8>);

TEST(RadianTest, DefaultIsZero) {
  EXPECT_EQ(qcRadian().toDouble(), 0.0);
  EXPECT_EQ(qcDegree().toDouble(), 0.0);
}

TEST(RadianTest, KeepsWhatItWasGiven) {
  EXPECT_EQ(qcRadian(100.0).toDouble(), 100.0);
  EXPECT_EQ(qcDegree(-720.5).toDouble(), -720.5);
}

TEST(RadianTest, ConvertsFromAndToDegrees) {
  EXPECT_EQ(qcRadian(qcDegree(180.0)).toDouble(), pi);
  EXPECT_EQ(qcRadian(qcDegree(-90.0)).toDouble(), -pi / 2);
  EXPECT_EQ(qcDegree(qcRadian(pi)).toDouble(), 180.0);
  EXPECT_EQ(qcDegree(qcRadian(-pi / 2)).toDouble(), -90.0);
}

TEST(RadianTest, CalculatesWithTheStoredValues) {
  EXPECT_EQ((-qcRadian(2.0)).toDouble(), -2.0);
  EXPECT_EQ((qcRadian(5.0) + qcRadian(4.0)).toDouble(), 9.0);
  EXPECT_EQ((qcRadian(5.0) - qcRadian(7.0)).toDouble(), -2.0);
  EXPECT_EQ((qcRadian(5.0) * 3.0).toDouble(), 15.0);
  EXPECT_EQ((-qcDegree(2.0)).toDouble(), -2.0);
  EXPECT_EQ((qcDegree(300.0) + qcDegree(100.0)).toDouble(), 400.0);
  EXPECT_EQ((qcDegree(5.0) - qcDegree(7.0)).toDouble(), -2.0);
  EXPECT_EQ((qcDegree(5.0) * 3.0).toDouble(), 15.0);
}

TEST(RadianTest, ComparesTheStoredValues) {
  EXPECT_NE(qcRadian(0.0), qcRadian(qcRadian::fullTurn));
  EXPECT_LT(qcRadian(1.0), qcRadian(2.0));
  EXPECT_EQ(qcDegree(90.0), qcDegree(90.0));
  EXPECT_GT(qcDegree(360.0), qcDegree(0.0));
  EXPECT_FALSE(qcRadian(notANumber) == qcRadian(notANumber));
}

struct NormCase {
  double given;
  double expected;
};

TEST(NormTest, BringsRadiansIntoOneTurn) {
  const double turn = qcRadian::fullTurn;
  const double below = std::nextafter(turn, 0.0);
  const NormCase cases[] = {{0.0, 0.0},
                            {1.0, 1.0},
                            {below, below},
                            {turn, 0.0},
                            {turn + 1.0, std::fmod(turn + 1.0, turn)},
                            {-1.0, turn - 1.0},
                            {-turn, 0.0},
                            {-turn - 1.0, turn + std::fmod(-turn - 1.0, turn)},
                            {3.0 * turn, 0.0}};
  for (const NormCase& c : cases) EXPECT_EQ(qcRadian(c.given).norm().toDouble(), c.expected);
}

TEST(NormTest, BringsDegreesIntoOneTurn) {
  const double below = std::nextafter(360.0, 0.0);
  const NormCase cases[] = {{0.0, 0.0},    {359.0, 359.0},  {below, below},
                            {360.0, 0.0},  {725.0, 5.0},    {-1.0, 359.0},
                            {-360.0, 0.0}, {-725.5, 354.5}, {1e15 * 360, 0.0}};
  for (const NormCase& c : cases) EXPECT_EQ(qcDegree(c.given).norm().toDouble(), c.expected);
}

TEST(NormTest, WhatRoundsUpToTheFullTurnIsZero) {
  for (const double tiny : {-1e-17, -1e-300, -std::numeric_limits<double>::denorm_min()}) {
    EXPECT_EQ(qcRadian(tiny).norm().toDouble(), 0.0);
    EXPECT_EQ(qcDegree(tiny).norm().toDouble(), 0.0);
  }
  EXPECT_EQ(qcDegree(-5e-14).norm().toDouble(), 360.0 - 5e-14);
}

TEST(NormTest, OfWhatIsNoAngleIsNotANumber) {
  for (const double bad : {notANumber, infinity, -infinity}) {
    EXPECT_TRUE(std::isnan(qcRadian(bad).norm().toDouble()));
    EXPECT_TRUE(std::isnan(qcDegree(bad).norm().toDouble()));
  }
}

RC_GTEST_PROP(NormTest, IsInTheRangeAndStaysThere, ()) {
  const auto bits = *rc::gen::arbitrary<std::uint64_t>();
  const auto value = std::bit_cast<double>(bits);
  RC_PRE(std::isfinite(value));
  const double radians = qcRadian(value).norm().toDouble();
  RC_ASSERT(radians >= 0.0 && radians < qcRadian::fullTurn);
  RC_ASSERT(qcRadian(radians).norm().toDouble() == radians);
  const double degrees = qcDegree(value).norm().toDouble();
  RC_ASSERT(degrees >= 0.0 && degrees < 360.0);
  RC_ASSERT(qcDegree(degrees).norm().toDouble() == degrees);
}

RC_GTEST_PROP(NormTest, KeepsTheDirection, ()) {
  const double degrees = *rc::gen::inRange(-100000, 100000) / 64.0;
  const double turns = (degrees - qcDegree(degrees).norm().toDouble()) / 360.0;
  RC_ASSERT(turns == std::floor(turns));
}

TEST(Angle8Test, HasSteps) {
  EXPECT_EQ(qcAngle8().steps(), 0);
  EXPECT_EQ(qcAngle8(200).steps(), 200);
  EXPECT_EQ(qcAngle8(7), qcAngle8(7));
  EXPECT_NE(qcAngle8(7), qcAngle8(8));
}

TEST(Angle8Test, SumsAndDifferencesWrap) {
  EXPECT_EQ(qcAngle8(250) + qcAngle8(10), qcAngle8(4));
  EXPECT_EQ(qcAngle8(255) + qcAngle8(255), qcAngle8(254));
  EXPECT_EQ(qcAngle8(10) + qcAngle8(20), qcAngle8(30));
  EXPECT_EQ(qcAngle8(0) - qcAngle8(1), qcAngle8(255));
  EXPECT_EQ(qcAngle8(30) - qcAngle8(20), qcAngle8(10));
}

TEST(Angle8Test, ConvertsToDegrees) {
  EXPECT_EQ(qcDegree(qcAngle8(0)).toDouble(), 0.0);
  EXPECT_EQ(qcDegree(qcAngle8(1)).toDouble(), 1.40625);
  EXPECT_EQ(qcDegree(qcAngle8(64)).toDouble(), 90.0);
  EXPECT_EQ(qcDegree(qcAngle8(255)).toDouble(), 358.59375);
}

}  // namespace
