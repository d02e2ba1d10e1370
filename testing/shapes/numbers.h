// SPDX-License-Identifier: MIT
//
// Numbers that have no literal.

#pragma once

#include <limits>
#include <numbers>

inline constexpr double infinity = std::numeric_limits<double>::infinity();
inline constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
inline constexpr double pi = std::numbers::pi;
