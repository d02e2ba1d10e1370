// SPDX-License-Identifier: MIT
//
// The picture that `cntr draw` makes: outlines filled by label, perhaps over a photograph, overlays
// and labels; below them a legend and a scale bar.

#pragma once

#include <optional>
#include <string>
#include <vector>

#include <cntrformats/feature.h>
#include <platform/core/shapes.h>
#include <tools/draw/overlays.h>
#include <tools/draw/scalebar.h>
#include <tools/draw/underlay.h>

namespace tool {

/// A feature as it is drawn.
struct Drawn {
  /// What a browser shows under the mouse.
  std::string title;
  formats::Feature feature;
};

struct Drawing {
  std::vector<Drawn> features;
  std::vector<const Overlay*> overlays;
  bool withLabels = true;
  std::optional<Underlay> underlay;
  Scale scale;
  /// What the picture shows, without the legend and the scale bar.
  qcRect view;
};

/// The rectangle around all features, and what overlays them, with a margin. REQUIRES: at least one
/// feature.
qcRect viewAround(const Drawing& drawing);

/// The drawing as a standalone SVG file, y downwards, its user units those of the coordinates.
std::string toSvg(const Drawing& drawing);

}  // namespace tool
