// SPDX-License-Identifier: MIT
//
// How long a scale bar is, and what stands beside it.

#pragma once

#include <string>

namespace tool {

/// The unit that coordinates stand for.
struct Scale {
  /// The length of one unit of the coordinates, in that unit. Positive and finite.
  double factor = 1.0;
  std::string unit = "px";
};

struct ScaleBar {
  /// In the coordinates' unit.
  double length;
  /// The length in the unit, e.g. "50 px".
  std::string text;
};

/// The longest bar of 1, 2 or 5 times a power of ten units that is no longer than `longest`, which
/// is in the coordinates' unit. REQUIRES: `longest` is positive and finite.
ScaleBar scaleBarFor(double longest, const Scale& scale);

}  // namespace tool
