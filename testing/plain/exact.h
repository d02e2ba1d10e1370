// SPDX-License-Identifier: MIT
//
// Numbers without rounding: integer multiples of powers of two, as long as necessary. Sums and
// products of doubles are such numbers; their quotients and roots are found among the doubles by
// trial. The plainest exact arithmetic: slow, and sharing nothing with the library.

#pragma once

#include <compare>
#include <cstdint>
#include <vector>

namespace plain {

class Exact {
 public:
  Exact() = default;
  /// A finite double as it is.
  Exact(double value);

  Exact operator+(const Exact& other) const;
  Exact operator-(const Exact& other) const { return *this + -other; }
  Exact operator*(const Exact& other) const;
  Exact operator-() const;

  /// -1, 0 or 1.
  int sign() const;
  std::strong_ordering operator<=>(const Exact& other) const;
  bool operator==(const Exact& other) const { return (*this - other).sign() == 0; }

 private:
  /// Digits to the base 2^32, the lowest first, times 2^(32 exponent).
  std::vector<std::uint32_t> digits_;
  long exponent_ = 0;
  bool negative_ = false;

  void trim();
  std::uint32_t digitAt(long place) const;
  static int compareSizes(const Exact& a, const Exact& b);
  static Exact sumOfSizes(const Exact& a, const Exact& b);
  static Exact differenceOfSizes(const Exact& a, const Exact& b);
};

/// The double nearest to a quotient, on ties the one of larger absolute value. REQUIRES: the
/// denominator is positive.
double nearest(const Exact& numerator, const Exact& denominator = 1.0);
/// The double nearest to the root of a quotient. REQUIRES: the quotient is not negative.
double nearestRoot(const Exact& numerator, const Exact& denominator = 1.0);

}  // namespace plain
