// SPDX-License-Identifier: MIT
//
// The curves of a feature one by one, each with the place where the file has it.

#pragma once

#include <optional>
#include <vector>

#include <tools/shapes.h>

namespace tool {

struct Place {
  /// The number of the part, from 1; none in a feature of a single part.
  std::optional<std::size_t> part;
  /// The number of the hole, from 1; none for an outline or a line.
  std::optional<std::size_t> hole;
};

struct Boundary {
  Place place;
  qcPtrHandle_const<qcContour> contour;
};

/// Every outline or line, each followed by its holes when they are wanted. Vertices are in the
/// file's order.
std::vector<Boundary> boundariesOf(const Geometry& geometry, bool withHoles);

}  // namespace tool
