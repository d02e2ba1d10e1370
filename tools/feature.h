// SPDX-License-Identifier: MIT
//
// What a file says, before any question is asked: features made of outlines with holes, or of open
// lines. input/ reads them, subject.h makes the library's shapes of them.

#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include <platform/core/vector.h>
#include <platform/image/edgelet.h>

namespace tool {

/// Vertices in the file's order, without the closing point that repeats the first one.
using Points = std::vector<qcVector<2>>;

/// One outline with the holes in it, or one open line (which has none).
struct Part {
  Points outline;
  std::vector<Points> holes;
  /// One for each vertex of the outline, or none at all.
  std::vector<qcEdgelet> edgelets;
};

struct Geometry {
  /// Outlines rather than open lines.
  bool closed = true;
  /// At least one.
  std::vector<Part> parts;
};

struct Feature {
  /// Its place in the file, counted from 1.
  std::size_t number = 1;
  std::optional<unsigned long> label;
  Geometry geometry;
};

}  // namespace tool
