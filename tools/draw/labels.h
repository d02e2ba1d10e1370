// SPDX-License-Identifier: MIT
//
// Which labels are shown, and where.

#pragma once

#include <string>
#include <vector>

#include <tools/draw/canvas.h>
#include <tools/draw/scene.h>

namespace tool {

/// In pixels.
struct Label {
  /// The middle of its baseline.
  qcVector<2> at;
  double size;
  std::string text;
};

/// The approximate width of a text.
double widthOf(const std::string& text, double size);

/// The labels of the largest shapes, as far as there is room: they do not overlap, and those larger
/// than their shapes stand beside them and cover at most a fiftieth of the view. The others are in
/// the middle of their shapes, or above it where centres are marked.
std::vector<Label> labelsOf(const Scene& scene, const Canvas& canvas, bool centresAreMarked);

}  // namespace tool
