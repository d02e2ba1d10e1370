// SPDX-License-Identifier: MIT
//
// What a file says, before any question is asked: features made of outlines with holes, or of open
// lines. Readers make them, shapes.h makes the library's shapes of them, writers write them.

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include <cntrformats/json.h>
#include <platform/core/vector.h>
#include <platform/image/edgelet.h>

namespace formats {

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
  /// Made to have several parts, even if it has one.
  bool multiple = false;
};

// Nothing that moves or dies here throws; nlohmann-json does not say so.
struct Feature {  // NOLINT(bugprone-exception-escape)
  /// Its place in the file, counted from 1.
  std::size_t number = 1;
  std::optional<unsigned long> label;
  Geometry geometry;
  /// The name that the file gives it besides the label.
  std::optional<std::string> id;
  /// The Feature or geometry that it was read from; null when that was not JSON or was not to be
  /// kept.
  Json source;
};

}  // namespace formats
