// SPDX-License-Identifier: MIT
//
// The picture that `cntr draw` makes: outlines filled by label, overlays, labels and a legend.

#pragma once

#include <optional>
#include <string>
#include <vector>

#include <platform/core/shapes.h>
#include <tools/draw/overlays.h>
#include <tools/feature.h>
#include <tools/input/document.h>

namespace tool {

/// A feature as it is drawn.
struct Drawn {
  /// What a browser shows under the mouse.
  std::string title;
  Feature feature;
};

struct Drawing {
  std::vector<Drawn> features;
  std::vector<const Overlay*> overlays;
  /// What the picture shows, without the legend.
  qcRect view;
};

/// The area of the image that a collection with the members `width` and `height` says it comes
/// from: pixel centres have whole coordinates, so it begins at (-0.5, -0.5).
std::optional<qcRect> imageArea(const Json& collection);

/// The rectangle around all features with a margin. REQUIRES: at least one feature.
qcRect viewAround(const std::vector<Drawn>& features);

/// The drawing as a standalone SVG file, y downwards, its user units those of the coordinates.
std::string toSvg(const Drawing& drawing);

}  // namespace tool
