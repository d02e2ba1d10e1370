// SPDX-License-Identifier: MIT
//
// What can be drawn over an outline, and in which colour.

#pragma once

#include <span>
#include <string>

#include <tools/feature.h>

namespace tool {

struct Overlay {
  /// Its name on the command line and in the legend.
  const char* name;
  const char* colour;
  /// The SVG elements for an outline with holes, or an open line. `unit` is a thousandth of the
  /// picture's size.
  std::string (*draw)(const Part& part, bool closed, double unit);
};

/// All overlays, in the order in which they are drawn.
std::span<const Overlay> allOverlays();

/// The centre of mass of an outline less its holes, or the mean position of a line or of an outline
/// without an area.
qcVector<2> centreOf(const Part& part, bool closed);

}  // namespace tool
