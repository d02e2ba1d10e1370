// SPDX-License-Identifier: MIT
//
// What can be drawn over outlines, and in which colour.

#pragma once

#include <optional>
#include <span>
#include <string>

#include <platform/core/shapes.h>
#include <tools/feature.h>

namespace tool {

struct Overlay {
  /// Its name on the command line and in the legend.
  const char* name;
  const char* colour;
  /// The SVG elements for the outlines, with holes, or the lines of a feature. `unit` is a
  /// thousandth of the picture's size.
  std::string (*draw)(const Geometry& geometry, double unit);
  /// What stands for it in the legend, about 26 units wide.
  std::string (*symbol)(const qcVector<2>& centre, double unit);
  /// How far it reaches; null where that is not beyond the outline, or has no bounds.
  qcRect (*extent)(const Part& part);
};

/// All overlays, in the order in which they are drawn.
std::span<const Overlay> allOverlays();

/// The centre of mass of an outline less its holes, or the mean position of a line or of an outline
/// without an area.
qcVector<2> centreOf(const Part& part, bool closed);

}  // namespace tool
