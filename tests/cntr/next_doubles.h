// SPDX-License-Identifier: MIT
//
// The doubles on either side of another.

#pragma once

#include <cmath>

#include <testing/shapes/numbers.h>

inline double justAbove(double value) { return std::nextafter(value, infinity); }
inline double justBelow(double value) { return std::nextafter(value, -infinity); }
