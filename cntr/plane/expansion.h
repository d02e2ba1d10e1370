// SPDX-License-Identifier: MIT
//
// Polynomials of coordinates without rounding error, for the few decisions that no estimate
// settles. exactsum.h is quicker where the number of terms is known.

#pragma once

#include <cstddef>
#include <vector>

#include <cntr/plane/twofold.h>

namespace cntr::plane {

/// A number as the exact sum of non-zero doubles of increasing size that do not overlap (J. R.
/// Shewchuk, Adaptive Precision Floating-Point Arithmetic and Fast Robust Geometric Predicates,
/// 1997). Exact as long as no product of two terms overflows or falls below the smallest double.
class Expansion {
 public:
  Expansion() = default;

  /// a - b.
  static Expansion difference(double a, double b) {
    Expansion result;
    result.add(a);
    result.add(-b);
    return result;
  }

  Expansion operator+(const Expansion& other) const {
    Expansion sum = *this;
    for (const double term : other.terms_) sum.add(term);
    return sum;
  }

  Expansion operator-(const Expansion& other) const {
    Expansion rest = *this;
    for (const double term : other.terms_) rest.add(-term);
    return rest;
  }

  Expansion operator*(const Expansion& other) const {
    Expansion result;
    for (const double a : terms_) {
      for (const double b : other.terms_) {
        const Twofold product = productOf(a, b);
        result.add(product.low);
        result.add(product.high);
      }
    }
    return result;
  }

  int sign() const noexcept {
    if (terms_.empty()) return 0;
    return terms_.back() > 0.0 ? 1 : -1;
  }

 private:
  void add(double value) {
    std::size_t kept = 0;
    for (const double term : terms_) {
      const Twofold sum = sumOf(value, term);
      value = sum.high;
      if (sum.low != 0.0) terms_[kept++] = sum.low;
    }
    terms_.resize(kept);
    if (value != 0.0) terms_.push_back(value);
  }

  std::vector<double> terms_;
};

}  // namespace cntr::plane
