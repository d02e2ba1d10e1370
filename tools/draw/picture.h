// SPDX-License-Identifier: MIT
//
// The picture that `cntr draw` makes: outlines filled by label, perhaps over a photograph, overlays
// and labels; below them a legend and a scale bar.

#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include <tools/draw/scalebar.h>
#include <tools/draw/scene.h>
#include <tools/draw/underlay.h>

namespace tool {

/// How a scene is drawn.
struct Look {
  /// The names of the files, for tooltips in a browser.
  std::vector<std::string> files;
  bool withTitles = true;
  bool withLabels = true;
  /// The length in pixels of the longer side of the view.
  double size = 1000.0;
  /// The y axis points upwards.
  bool isUp = false;
  std::optional<Underlay> underlay;
  Scale scale;
};

/// Writes a completed scene as a standalone SVG file, with lengths in pixels.
void writeSvg(std::ostream& out, const Scene& scene, const Look& look);

}  // namespace tool
