// SPDX-License-Identifier: MIT
//
// Rectangles and squares, counter-clockwise from the corner of the smaller coordinates, and what
// many tests ask of figures.

#pragma once

#include <vector>

#include <platform/core/vector.h>

namespace figures {

inline std::vector<qcVector<2>> rectangle(double x, double y, double width, double height) {
  return {{x, y}, {x + width, y}, {x + width, y + height}, {x, y + height}};
}

inline std::vector<qcVector<2>> square(double x, double y, double size) {
  return rectangle(x, y, size, size);
}
/// From the origin.
inline std::vector<qcVector<2>> square(double size) { return square(0, 0, size); }

inline std::vector<qcVector<2>> reversed(const std::vector<qcVector<2>>& points) {
  return {points.rbegin(), points.rend()};
}

/// The middle of the four shapes that testing/shapes draws around one point.
inline const qcVector<2> shapesCenter(640, 480);

}  // namespace figures
