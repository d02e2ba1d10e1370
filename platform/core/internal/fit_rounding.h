// SPDX-License-Identifier: MIT
//
// What the fits allow for rounding errors (internal to the fits).

#pragma once

#include <limits>

namespace qnFit {

inline constexpr double epsilon = std::numeric_limits<double>::epsilon();

/// A number counts as different from 0 when it exceeds this multiple of its rounding error's bound.
inline constexpr double safety = 16.0;

}  // namespace qnFit
