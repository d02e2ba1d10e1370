// SPDX-License-Identifier: MIT
//
// Sums of products without rounding error. A sum is held as an expansion: doubles of increasing
// size that do not overlap, whose exact sum is the value. orientation.h decides which way three
// points turn.

#pragma once

#include <array>
#include <cstddef>

#include <cntr/plane/twofold.h>

namespace cntr::plane {

/// An exact sum of at most eight products and one more number.
class ExactSum {
 public:
  void add(double value) noexcept {
    std::size_t kept = 0;
    for (std::size_t i = 0; i < size_; ++i) {
      const Twofold sum = sumOf(value, terms_[i]);
      value = sum.high;
      if (sum.low != 0.0) terms_[kept++] = sum.low;
    }
    if (value != 0.0) terms_[kept++] = value;
    size_ = kept;
  }

  void addProduct(double a, double b) noexcept {
    const Twofold product = productOf(a, b);
    add(product.low);
    add(product.high);
  }

  int sign() const noexcept {
    if (size_ == 0) return 0;
    return terms_[size_ - 1] > 0.0 ? 1 : -1;
  }

  /// The value to twice the digits of a double.
  Twofold rounded() const noexcept {
    const double high = nearest();
    ExactSum rest = *this;
    rest.add(-high);
    return {high, rest.nearest()};
  }

 private:
  double nearest() const noexcept {
    double sum = 0.0;
    for (std::size_t i = 0; i < size_; ++i) sum += terms_[i];
    return sum;
  }

  std::array<double, 17> terms_{};
  std::size_t size_ = 0;
};

}  // namespace cntr::plane
