// SPDX-License-Identifier: MIT
//
// How long a scale bar is, and what stands beside it.

#pragma once

#include <string>

namespace tool {

/// Real units for coordinates.
struct Scale {
  /// The length of 1 in coordinates, in the unit. Positive and finite.
  double factor = 1.0;
  std::string unit = "px";
};

struct ScaleBar {
  /// In coordinates.
  double length;
  /// The length in the unit, e.g. "50 px".
  std::string text;
};

/// The longest bar of 1, 2 or 5 times a power of ten units that is at most `longest` in
/// coordinates. REQUIRES: `longest` is positive and finite.
ScaleBar scaleBarFor(double longest, const Scale& scale);

}  // namespace tool
