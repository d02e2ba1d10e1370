// SPDX-License-Identifier: MIT
//
// An outline beside which rays end inside it, for tests of what must leave such points to the ray.

#pragma once

#include <testing/shapes/shapes.h>

/// A square on its corner, cut from its middle, where it begins. From a point close to the upper
/// right side, the ray crosses it and ends in it.
inline shapes::Points cutSquare() {
  return {{0, 0},    {100, 0},  {75, 25},  {50, 50},  {0, 100},  {-25, 75},
          {-50, 50}, {-75, 25}, {-100, 0}, {0, -100}, {50, -50}, {100, -0.1}};
}
