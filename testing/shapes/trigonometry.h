// SPDX-License-Identifier: MIT
//
// Sine and cosine from sums and products only: the same bits on every system, whereas those of the
// standard library may differ in the last bit.

#pragma once

namespace shapes {

/// The sine of an angle in radians, below 1e5 in absolute value, to about 1e-15.
double sine(double angle);
/// The cosine, likewise.
double cosine(double angle);

}  // namespace shapes
