// SPDX-License-Identifier: MIT
//
// What formats without properties cannot hold.

#pragma once

#include <vector>

#include <cntrformats/feature.h>

namespace formats {

/// What a feature loses, in words such as "labels".
using Losses = std::vector<const char*>;

/// What a format holds of a feature besides its geometry.
struct Holding {
  bool label = false;
  bool id = false;
  bool edgelets = false;
  /// Properties besides the label and the edge elements.
  bool properties = false;
};

/// Everything that the feature has besides its geometry and what is held.
Losses lossesOf(const Feature& feature, const Holding& holding);

}  // namespace formats
