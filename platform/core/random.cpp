// SPDX-License-Identifier: MIT
//
// The uniform generator and the integer floor; see random.h.

#include <platform/core/random.h>

#include <cmath>
#include <limits>

double qcRandomUniform::next(double low, double high) noexcept {
  state_ += 0x9E3779B97F4A7C15U;
  std::uint64_t z = state_;
  z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9U;
  z = (z ^ (z >> 27U)) * 0x94D049BB133111EBU;
  z ^= z >> 31U;
  const double u = static_cast<double>(z >> 11U) * 0x1.0p-53;
  const double deviate = low + u * (high - low);
  return deviate < high ? deviate : low;
}

int qfIFloor(double value) noexcept {
  if (std::isnan(value)) return 0;
  const double floor = std::floor(value);
  if (floor <= std::numeric_limits<int>::min()) return std::numeric_limits<int>::min();
  if (floor >= std::numeric_limits<int>::max()) return std::numeric_limits<int>::max();
  return static_cast<int>(floor);
}
