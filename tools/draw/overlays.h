// SPDX-License-Identifier: MIT
//
// What can be drawn over outlines, and in which colour.

#pragma once

#include <functional>
#include <span>
#include <vector>

#include <cntrformats/feature.h>
#include <tools/draw/frame.h>
#include <tools/draw/marks.h>

namespace tool {

/// A feature whose overlays are to be found.
struct Overlaid {
  const formats::Feature& feature;
  const formats::Geometry& geometry;
  /// The same in coordinates that suit the library's tolerances.
  const formats::Geometry& framed;
  const Frame& frame;
  /// The size of a pixel of the picture.
  double pixel;
};

struct Overlay {
  /// Its name on the command line and in the legend.
  const char* name;
  const char* colour;
  std::function<std::vector<Mark>(const Overlaid& feature)> find;
  /// The symbol of its entry in the legend; null for a line.
  Mark (*symbol)(const qcVector<2>& centre);
  /// Whether it consists of tints, whose colours the legend explains.
  bool isColoured = false;
};

/// The overlays that need only the feature, in the order in which they are drawn; the one that
/// needs another file is in deviations.h.
std::span<const Overlay> allOverlays();

/// The box that the picture must show of a mark of a feature in `box`: the whole mark, but nothing
/// of an ellipse much larger than the feature, such as that of a nearly straight line.
Box reachOf(const Mark& mark, const Box& box);

}  // namespace tool
