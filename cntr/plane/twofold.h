// SPDX-License-Identifier: MIT
//
// Numbers with twice the digits of a double, for the few places where those of a double are not
// enough.

#pragma once

#include <cmath>

// Lanes are passed only to functions that are inlined, so that the calling convention does not
// matter.
#pragma GCC diagnostic ignored "-Wpsabi"

namespace cntr::plane {

/// A number as the exact sum of two doubles, the second at most half a unit in the last place of
/// the first. Sums, products and quotients are accurate to about 2^-100 of the largest term (T. J.
/// Dekker, A Floating-Point Technique for Extending the Available Precision, 1971); products need
/// intermediate results that neither overflow nor fall below the smallest double.
///
/// Number is double, or Lanes (lanes.h) for several such numbers side by side. Everything is
/// inlined into functions that are compiled for newer processors.
template <class Number>
struct TwofoldOf {
  Number high{};
  Number low{};

  constexpr TwofoldOf() noexcept = default;
  /// The number as it is.
  constexpr explicit TwofoldOf(const Number& value) noexcept : high(value) {}
  /// REQUIRES: high is the double nearest to high + low.
  constexpr TwofoldOf(const Number& high_part, const Number& low_part) noexcept
      : high(high_part), low(low_part) {}
};

using Twofold = TwofoldOf<double>;

/// a + b, exactly.
template <class Number>
[[gnu::always_inline]] inline TwofoldOf<Number> sumOf(const Number& a, const Number& b) noexcept {
  const Number sum = a + b;
  const Number fromB = sum - a;
  return {sum, (a - (sum - fromB)) + (b - fromB)};
}

/// The exact difference of a times b and its rounded `product`, by halves of 26 bits (Dekker).
/// REQUIRES: absolute values below 2^990, because the first half of a number is computed from one
/// 2^27 times as large.
template <class Number>
[[gnu::always_inline]] inline Number restOfProduct(const Number& a, const Number& b,
                                                   const Number& product) noexcept {
  constexpr double splitter = 0x1p27 + 1.0;
  const Number aboveA = a * splitter;
  const Number aboveB = b * splitter;
  const Number highA = aboveA - (aboveA - a);
  const Number highB = aboveB - (aboveB - b);
  const Number lowA = a - highA;
  const Number lowB = b - highB;
  return ((highA * highB - product) + highA * lowB + lowA * highB) + lowA * lowB;
}

/// The same for doubles of any size.
inline double restOfProduct(double a, double b, double product) noexcept {
#if defined(__MINGW32__)
  // On this platform fma rounds twice. Large numbers are scaled down first.
  constexpr double large = 0x1p990;
  constexpr double smaller = 0x1p-60;
  if (std::abs(a) > large) return restOfProduct(a * smaller, b, product * smaller) / smaller;
  if (std::abs(b) > large) return restOfProduct(a, b * smaller, product * smaller) / smaller;
  return restOfProduct<double>(a, b, product);
#else
  return std::fma(a, b, -product);
#endif
}

/// a times b, exactly.
template <class Number>
[[gnu::always_inline]] inline TwofoldOf<Number> productOf(const Number& a,
                                                          const Number& b) noexcept {
  const Number product = a * b;
  return {product, restOfProduct(a, b, product)};
}

template <class Number>
[[gnu::always_inline]] inline TwofoldOf<Number> operator-(const TwofoldOf<Number>& a) noexcept {
  return {-a.high, -a.low};
}

template <class Number>
[[gnu::always_inline]] inline TwofoldOf<Number> operator+(const TwofoldOf<Number>& a,
                                                          const TwofoldOf<Number>& b) noexcept {
  const TwofoldOf<Number> high = sumOf(a.high, b.high);
  const TwofoldOf<Number> low = sumOf(a.low, b.low);
  const TwofoldOf<Number> sum = sumOf(high.high, high.low + low.high);
  return sumOf(sum.high, sum.low + low.low);
}

template <class Number>
[[gnu::always_inline]] inline TwofoldOf<Number> operator-(const TwofoldOf<Number>& a,
                                                          const TwofoldOf<Number>& b) noexcept {
  return a + -b;
}

template <class Number>
[[gnu::always_inline]] inline TwofoldOf<Number> operator*(const TwofoldOf<Number>& a,
                                                          const TwofoldOf<Number>& b) noexcept {
  const TwofoldOf<Number> product = productOf(a.high, b.high);
  return sumOf(product.high, product.low + (a.high * b.low + a.low * b.high));
}

inline Twofold operator/(const Twofold& a, const Twofold& b) noexcept {
  const double first = a.high / b.high;
  const Twofold rest = a - Twofold(first) * b;
  return sumOf(first, rest.high / b.high);
}

/// The square root. REQUIRES: a is not negative.
inline Twofold rootOf(const Twofold& a) noexcept {
  if (a.high == 0.0) return a;
  const double first = std::sqrt(a.high);
  const Twofold rest = a - productOf(first, first);
  return sumOf(first, rest.high / (2.0 * first));
}

}  // namespace cntr::plane
