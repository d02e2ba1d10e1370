// SPDX-License-Identifier: MIT
//
// The length of a scale bar and the text beside it.

#pragma once

#include <string>

namespace tool {

/// The unit of the coordinates.
struct Scale {
  /// The length of one unit of the coordinates, in that unit. Positive and finite.
  double factor = 1.0;
  std::string unit = "px";
};

struct ScaleBar {
  /// In units of the coordinates.
  double length;
  /// The length in the unit, e.g. "50 px".
  std::string text;
};

/// The longest bar of 1, 2 or 5 times a power of ten that is no longer than `longest`, which is in
/// units of the coordinates. REQUIRES: `longest` is positive and finite.
ScaleBar scaleBarFor(double longest, const Scale& scale);

}  // namespace tool
