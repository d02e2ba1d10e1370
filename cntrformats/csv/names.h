// SPDX-License-Identifier: MIT
//
// The names that rings have in CSV.
//
// In a file of vertices each run of equal ids is a ring. The id of a ring is that of its feature
// with a suffix: "7", or "7/part 2" in a feature of several parts, followed by "/hole 1" for a
// hole, and "7/line" for an open line.

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace formats {

struct RingName {
  /// The name of the feature.
  std::string id;
  bool isLine = false;
  /// From 1; 0 in a feature of a single part.
  std::size_t part = 0;
  /// From 1; 0 for an outline or a line.
  std::size_t hole = 0;

  bool operator==(const RingName&) const = default;
};

RingName parseRingName(const std::string& text);
std::string toText(const RingName& name);

/// What the name of a feature stands for: a whole number is a label, "#" and a number mean neither
/// label nor id, and any other text is an id.
struct FeatureName {
  std::optional<unsigned long> label;
  std::optional<std::string> id;
};

FeatureName parseFeatureName(const std::string& text);

/// True for a ring of the same feature as `before`: its next hole or its next part.
bool follows(const RingName& name, const RingName& before);

}  // namespace formats
