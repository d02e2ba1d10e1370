// SPDX-License-Identifier: MIT
//
// Sine and cosine made of sums and products alone: the same bits on every system, where those of
// the standard library may differ in the last one.

#pragma once

namespace shapes {

/// The sine of an angle in radians, below 1e5 in size, to about 1e-15.
double sine(double angle);
/// The cosine, likewise.
double cosine(double angle);

}  // namespace shapes
