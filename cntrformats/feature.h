// SPDX-License-Identifier: MIT
//
// What a file says: features made of outlines with holes, or of open lines. Readers make them,
// shapes.h makes the library's shapes from them, writers write them.

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include <cntrsets/rings.h>
#include <platform/core/vector.h>
#include <platform/image/edgelet.h>

namespace formats {

/// Vertices in the file's order, without the closing point that repeats the first one.
using Points = std::vector<qcVector<2>>;

struct Geometry {
  /// Outlines rather than open lines.
  bool closed = true;
  /// Written as a geometry of several parts, even if there is only one.
  bool multiple = false;
  /// An open line is an outline without holes. Empty if there is a problem, see Feature.
  std::vector<qcRings> parts = {};
  /// One list for each part, as long as its outline or empty; no lists at all if the file has no
  /// edge elements.
  std::vector<std::vector<qcEdgelet>> edgelets = {};
};

/// A number, or the name of a class.
using Label = std::variant<unsigned long, std::string>;
/// The largest label that is a number.
inline constexpr unsigned long largestLabel = 4294967295;

/// The label as people read it.
std::string toText(const Label& label);

struct Feature {
  /// Its place in the file, counted from 1.
  std::size_t number = 1;
  std::optional<Label> label;
  Geometry geometry;
  /// The name that the file gives the feature besides the label.
  std::optional<std::string> id;
  /// True when the file says more about the feature than is read, as files of annotation tools do.
  bool hasFurtherMembers = false;
  /// Why there is no geometry; empty when there is one.
  std::string problem;
  /// The JSON of the Feature or geometry from which it was read; empty when that was not JSON or
  /// was not kept.
  std::string text;
};

}  // namespace formats
