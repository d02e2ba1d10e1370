// SPDX-License-Identifier: MIT
//
// A small uniform random generator with the same sequence on every platform, and the integer
// floor.

#pragma once

#include <cstdint>

#include <platform/export.h>

/// @addtogroup objects
/// @{

/// Uniform deviates from a 64-bit state. Not for cryptography.
///
/// G. L. Steele, D. Lea, C. H. Flood, "Fast splittable pseudorandom number generators", OOPSLA 2014
/// (SplitMix64); period 2^64.
class QCPLATFORM_EXPORT qcRandomUniform {
 public:
  /// Starts the sequence of `seed`; equal seeds give equal sequences.
  qcRandomUniform(long seed) noexcept : state_(static_cast<std::uint64_t>(seed)) {}

  /// The next deviate in [low, high): low + u * (high - low) with u a multiple of 2^-53 in [0, 1).
  /// Gives `low` when the range is empty or the sum rounds up to `high`.
  double next(double low, double high) noexcept;

 private:
  std::uint64_t state_;
};

/// The largest integer that is not greater than `value`. Values beyond an int give the nearest int,
/// NaN gives 0.
QCPLATFORM_EXPORT int qfIFloor(double value) noexcept;

/// @}
