// SPDX-License-Identifier: MIT
//
// One axis of a uniform grid.

#pragma once

#include <cstddef>

namespace cntr::index {

/// Equal intervals between two numbers, counted from 0. A larger number never falls into a lower
/// interval; numbers beyond either end fall into the interval at that end, NaN into the first.
class Axis {
 public:
  /// REQUIRES: intervals > 0.
  Axis(double low, double high, std::size_t intervals) noexcept
      : low_(low), perUnit_(static_cast<double>(intervals) / (high - low)), last_(intervals - 1) {}

  std::size_t intervalOf(double value) const noexcept {
    const double place = (value - low_) * perUnit_;
    if (!(place > 0.0)) return 0;
    return place < static_cast<double>(last_) ? static_cast<std::size_t>(place) : last_;
  }

 private:
  double low_;
  double perUnit_;
  std::size_t last_;
};

}  // namespace cntr::index
