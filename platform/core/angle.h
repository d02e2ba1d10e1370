// SPDX-License-Identifier: MIT
//
// Angles: radians, degrees and the 8-bit angle of an edge element. A value's type says its unit;
// no bare double is ever an angle in a public signature.
//
// Angles grow from the x axis towards the y axis: counter-clockwise with y up, clockwise on a
// screen whose y points down.

#pragma once

#include <cmath>
#include <compare>
#include <numbers>

#include <platform/export.h>

/// @addtogroup plane
/// @{

class qcArchive;
class qcDegree;

/// An angle in radians. Keeps the value as given; only norm() normalises it.
class qcRadian {
 public:
  /// A full turn, 2 pi.
  static constexpr double fullTurn = 2.0 * std::numbers::pi;

  /// The angle of `radians`; any value is accepted.
  constexpr explicit qcRadian(double radians = 0.0) noexcept : value_(radians) {}
  /// Converts by one multiplication with pi / 180 (rounded once).
  constexpr qcRadian(const qcDegree& degrees) noexcept;

  /// The angle in radians.
  constexpr double toDouble() const noexcept { return value_; }

  /// The same direction in [0, 2 pi). Exact for values in [0, 2 pi); a negative value that rounds
  /// up to the full turn gives 0. NaN and infinite angles give NaN.
  qcRadian norm() const noexcept;

  /// @{
  /// Arithmetic on the stored values: results are not normalised.
  constexpr qcRadian operator-() const noexcept { return qcRadian(-value_); }
  constexpr qcRadian operator+(qcRadian other) const noexcept {
    return qcRadian(value_ + other.value_);
  }
  constexpr qcRadian operator-(qcRadian other) const noexcept {
    return qcRadian(value_ - other.value_);
  }
  constexpr qcRadian operator*(double factor) const noexcept { return qcRadian(value_ * factor); }
  /// @}
  /// Compares the stored values: 0 and 2 pi are different.
  constexpr auto operator<=>(const qcRadian&) const noexcept = default;

 private:
  double value_;
};

/// An angle in degrees. Keeps the value as given.
class qcDegree {
 public:
  /// A full turn, 360.
  static constexpr double fullTurn = 360.0;

  /// The angle of `degrees`; any value is accepted.
  constexpr explicit qcDegree(double degrees = 0.0) noexcept : value_(degrees) {}
  /// Converts by one multiplication with 180 / pi (rounded once).
  constexpr qcDegree(const qcRadian& radians) noexcept
      : value_(radians.toDouble() * 57.29577951308232) {}

  /// The angle in degrees.
  constexpr double toDouble() const noexcept { return value_; }

  /// The same direction in [0, 360), with the rules of qcRadian::norm().
  qcDegree norm() const noexcept;

  /// @{
  /// Arithmetic on the stored values: results are not normalised.
  constexpr qcDegree operator-() const noexcept { return qcDegree(-value_); }
  constexpr qcDegree operator+(qcDegree other) const noexcept {
    return qcDegree(value_ + other.value_);
  }
  constexpr qcDegree operator-(qcDegree other) const noexcept {
    return qcDegree(value_ - other.value_);
  }
  constexpr qcDegree operator*(double factor) const noexcept { return qcDegree(value_ * factor); }
  /// @}
  /// Compares the stored values: 0 and 360 are different.
  constexpr auto operator<=>(const qcDegree&) const noexcept = default;

 private:
  double value_;
};

/// The 8-bit angle of an edge element: 256 steps make a full turn. Sums and differences wrap.
class qcAngle8 {
 public:
  /// One step in degrees, 360 / 256 (exact).
  static constexpr double degreesPerStep = 1.40625;

  /// The angle of `steps` 256ths of a full turn.
  constexpr explicit qcAngle8(unsigned char steps = 0) noexcept : steps_(steps) {}

  /// The angle in 256ths of a full turn.
  constexpr unsigned char steps() const noexcept { return steps_; }
  /// The angle in degrees, in [0, 360). Exact.
  constexpr operator qcDegree() const noexcept { return qcDegree(steps_ * degreesPerStep); }

  /// The sum, modulo a full turn.
  constexpr qcAngle8 operator+(qcAngle8 other) const noexcept {
    return qcAngle8(static_cast<unsigned char>(steps_ + other.steps_));
  }
  /// The difference, modulo a full turn.
  constexpr qcAngle8 operator-(qcAngle8 other) const noexcept {
    return qcAngle8(static_cast<unsigned char>(steps_ - other.steps_));
  }
  /// Equal steps.
  constexpr bool operator==(const qcAngle8&) const noexcept = default;

 private:
  unsigned char steps_;
};

constexpr qcRadian::qcRadian(const qcDegree& degrees) noexcept
    : value_(degrees.toDouble() * 0.017453292519943295) {}

/// Maps a value into [0, turn); see qcRadian::norm().
inline double qfNormTurn(double value, double turn) noexcept {
  if (value >= 0.0 && value < turn) return value;
  double rest = std::fmod(value, turn);
  if (rest < 0.0) rest += turn;
  return rest >= turn ? 0.0 : rest;
}

inline qcRadian qcRadian::norm() const noexcept { return qcRadian(qfNormTurn(value_, fullTurn)); }
inline qcDegree qcDegree::norm() const noexcept { return qcDegree(qfNormTurn(value_, fullTurn)); }

/// @{
/// Stores or loads an angle as given: one double, the steps of a qcAngle8 as one byte.
QCPLATFORM_EXPORT qcArchive& operator||(qcArchive& archive, qcRadian& angle);
QCPLATFORM_EXPORT qcArchive& operator||(qcArchive& archive, qcDegree& angle);
QCPLATFORM_EXPORT qcArchive& operator||(qcArchive& archive, qcAngle8& angle);
/// @}

/// @}
