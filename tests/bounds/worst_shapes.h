// SPDX-License-Identifier: MIT
//
// Shapes on which boxes and directions decide nothing, and how they are made.

#pragma once

#include <cstddef>
#include <vector>

#include <cntr/contourdefs.h>
#include <platform/core/vector.h>
#include <testing/shapes/shapes.h>

/// Shapes are made with their crossings as they are.
constexpr auto keep = qcContourDefs::eNoIntersectionRepair;

/// Edges back and forth along one line, each overlapping many others.
inline std::vector<qcVector<2>> scatteredOnLine(std::size_t n) {
  shapes::Random random(401);
  std::vector<qcVector<2>> points;
  for (std::size_t i = 0; i < n; ++i) {
    const double x = random.uniform(0, 100);
    points.emplace_back(x, 0.5 * x);
  }
  return points;
}

/// Slanted strokes side by side at this spacing, whose boxes all overlap.
inline std::vector<qcVector<2>> slantedHatch(std::size_t n, double spacing) {
  std::vector<qcVector<2>> points;
  for (std::size_t i = 0; i < n; ++i) {
    const double shift = spacing * static_cast<double>(i / 2);
    const double reach = (i + 1) / 2 % 2 == 0 ? 0.0 : 1000.0;
    points.emplace_back(reach + shift, reach - shift);
  }
  return points;
}
