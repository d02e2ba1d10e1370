// SPDX-License-Identifier: MIT
//
// The rings of most features in tests.

#pragma once

#include <vector>

#include <platform/core/vector.h>

using Points = std::vector<qcVector<2>>;

inline const Points square{{0, 0}, {10, 0}, {10, 10}, {0, 10}};
/// A hole in the square.
inline const Points hole{{1, 1}, {1, 2}, {2, 2}};
/// Apart from the square.
inline const Points triangle{{20, 0}, {30, 0}, {20, 5}};
/// Crosses itself.
inline const Points bowTie{{0, 0}, {4, 4}, {4, 0}, {0, 4}};
