// SPDX-License-Identifier: MIT
//
// What can be drawn over outlines, and in which colour.

#pragma once

#include <optional>
#include <span>
#include <string>

#include <cntrformats/feature.h>
#include <platform/core/shapes.h>

namespace tool {

struct Overlay {
  /// Its name on the command line and in the legend.
  const char* name;
  const char* colour;
  /// The SVG elements for the outlines, with holes, or the lines of a feature. `unit` is a
  /// thousandth of the picture's size.
  std::string (*draw)(const formats::Geometry& geometry, double unit);
  /// What stands for it in the legend, about 26 units wide.
  std::string (*symbol)(const qcVector<2>& centre, double unit);
  /// How far it reaches; null where that is not beyond the outline, or has no bounds.
  qcRect (*extent)(const qcRings& part);
};

/// All overlays, in the order in which they are drawn.
std::span<const Overlay> allOverlays();

}  // namespace tool
