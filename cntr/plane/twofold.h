// SPDX-License-Identifier: MIT
//
// Numbers of twice the digits of a double, for the few places where a double's are not enough.

#pragma once

#include <cmath>

namespace cntr::plane {

/// A number as the exact sum of two doubles, the second at most half a unit in the last place of
/// the first. Sums, products and quotients are right to about 2^-100 of the largest term (T. J.
/// Dekker, A Floating-Point Technique for Extending the Available Precision, 1971); products need
/// intermediate results that neither overflow nor fall below the smallest double.
struct Twofold {
  double high = 0.0;
  double low = 0.0;

  constexpr Twofold() noexcept = default;
  /// The number as it is.
  constexpr explicit Twofold(double value) noexcept : high(value) {}
  /// REQUIRES: high is the double nearest to high + low.
  constexpr Twofold(double high_part, double low_part) noexcept : high(high_part), low(low_part) {}
};

/// a + b, exactly.
inline Twofold sumOf(double a, double b) noexcept {
  const double sum = a + b;
  const double fromB = sum - a;
  return {sum, (a - (sum - fromB)) + (b - fromB)};
}

/// What a times b is more than its rounded `product`, exactly.
inline double restOfProduct(double a, double b, double product) noexcept {
#if defined(__MINGW32__)
  // fma rounds twice there. Halves of 26 bits have exact products (Dekker); large numbers are made
  // smaller first, for the first half of a number is found by way of one 2^27 times as large.
  constexpr double large = 0x1p990;
  constexpr double smaller = 0x1p-60;
  if (std::abs(a) > large) return restOfProduct(a * smaller, b, product * smaller) / smaller;
  if (std::abs(b) > large) return restOfProduct(a, b * smaller, product * smaller) / smaller;
  const auto firstHalf = [](double number) {
    const double above = (0x1p27 + 1.0) * number;
    return above - (above - number);
  };
  const double highA = firstHalf(a);
  const double lowA = a - highA;
  const double highB = firstHalf(b);
  const double lowB = b - highB;
  return ((highA * highB - product) + highA * lowB + lowA * highB) + lowA * lowB;
#else
  return std::fma(a, b, -product);
#endif
}

/// a times b, exactly.
inline Twofold productOf(double a, double b) noexcept {
  const double product = a * b;
  return {product, restOfProduct(a, b, product)};
}

inline Twofold operator-(const Twofold& a) noexcept { return {-a.high, -a.low}; }

inline Twofold operator+(const Twofold& a, const Twofold& b) noexcept {
  const Twofold high = sumOf(a.high, b.high);
  const Twofold low = sumOf(a.low, b.low);
  const Twofold sum = sumOf(high.high, high.low + low.high);
  return sumOf(sum.high, sum.low + low.low);
}

inline Twofold operator-(const Twofold& a, const Twofold& b) noexcept { return a + -b; }

inline Twofold operator*(const Twofold& a, const Twofold& b) noexcept {
  const Twofold product = productOf(a.high, b.high);
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
