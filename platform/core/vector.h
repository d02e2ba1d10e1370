// SPDX-License-Identifier: MIT
//
// The 2-D vector, of which everything here is made: two doubles, trivially copyable, no virtual
// table. Angles are in angle.h, matrices in matrix.h, the shape classes in shapes.h.

#pragma once

#include <cmath>
#include <type_traits>

#include <platform/core/angle.h>

/// @addtogroup plane
/// @{

/// Two values of one type: coordinates without geometry.
template <class T>
class qcPair {
 public:
  constexpr qcPair() noexcept : x_(), y_() {}
  /// The two values.
  constexpr qcPair(T x, T y) noexcept : x_(x), y_(y) {}

  /// The first value.
  constexpr T x() const noexcept { return x_; }
  /// The second value.
  constexpr T y() const noexcept { return y_; }
  /// Equality of both values.
  constexpr bool operator==(const qcPair&) const noexcept = default;

 private:
  T x_;
  T y_;
};

template <int N>
class qcVector;

/// A point or a direction of the plane, in the caller's unit (pixels, millimetres).
/// All operations are evaluated as written in their comments, without fused operations, so that
/// they give the same bits everywhere. NaN and infinities pass through.
template <>
class qcVector<2> {
 public:
  /// The origin.
  constexpr qcVector() noexcept : x_(0.0), y_(0.0) {}
  /// The vector of these coordinates.
  constexpr qcVector(double x, double y) noexcept : x_(x), y_(y) {}
  /// The vector of a length and a direction: (length cos angle, length sin angle).
  qcVector(double length, const qcRadian& angle) noexcept
      : x_(length * std::cos(angle.toDouble())), y_(length * std::sin(angle.toDouble())) {}
  /// A pixel position. Exact below 2^53 in absolute value.
  constexpr qcVector(const qcPair<long>& pixel) noexcept
      : x_(static_cast<double>(pixel.x())), y_(static_cast<double>(pixel.y())) {}

  /// The coordinate along the x axis.
  constexpr double x() const noexcept { return x_; }
  /// The coordinate along the y axis.
  constexpr double y() const noexcept { return y_; }

  /// (x + x', y + y').
  constexpr qcVector operator+(const qcVector& other) const noexcept {
    return {x_ + other.x_, y_ + other.y_};
  }
  /// (x - x', y - y').
  constexpr qcVector operator-(const qcVector& other) const noexcept {
    return {x_ - other.x_, y_ - other.y_};
  }
  /// (-x, -y).
  constexpr qcVector operator-() const noexcept { return {-x_, -y_}; }
  /// (x * factor, y * factor).
  constexpr qcVector operator*(double factor) const noexcept { return {x_ * factor, y_ * factor}; }
  /// Dot product, x*x' + y*y'.
  constexpr double operator*(const qcVector& other) const noexcept {
    return x_ * other.x_ + y_ * other.y_;
  }

  /// Exact equality of both coordinates (0 equals -0, NaN equals nothing).
  constexpr bool operator==(const qcVector& other) const noexcept = default;

  /// Euclidean norm, sqrt(x*x + y*y): never negative; infinite above about 1e154.
  double len() const noexcept { return std::sqrt(x_ * x_ + y_ * y_); }
  /// Euclidean distance, sqrt(dx*dx + dy*dy).
  double distance(const qcVector& other) const noexcept { return (*this - other).len(); }
  /// The direction, (x/len, y/len). A vector of length 0 gives (0, 0).
  qcVector unit() const noexcept {
    const double length = len();
    return length == 0.0 ? qcVector() : qcVector(x_ / length, y_ / length);
  }
  /// The direction as an angle in [-pi, pi], atan2(y, x); 0 for the zero vector.
  qcRadian angle() const noexcept { return qcRadian(std::atan2(y_, x_)); }

 private:
  double x_;
  double y_;
};

static_assert(std::is_trivially_copyable_v<qcVector<2>> && sizeof(qcVector<2>) == 16);

/// (x * factor, y * factor).
constexpr qcVector<2> operator*(double factor, const qcVector<2>& vector) noexcept {
  return vector * factor;
}

/// True when both coordinates agree within `eps`: |a - b| <= eps. False with NaN, and for two equal
/// infinities (their difference is NaN).
inline bool qfRealEq(const qcVector<2>& a, const qcVector<2>& b, double eps) noexcept {
  return std::abs(a.x() - b.x()) <= eps && std::abs(a.y() - b.y()) <= eps;
}

/// Stores or loads a vector: x, then y.
QCPLATFORM_EXPORT qcArchive& operator||(qcArchive& archive, qcVector<2>& vector);

/// @}
