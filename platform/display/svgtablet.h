// SPDX-License-Identifier: MIT
//
// A drawing surface that writes what was drawn as a standalone SVG picture.

#pragma once

#include <iosfwd>

#include <platform/core/shapes.h>
#include <platform/display/recordingtablet.h>

/// Collects segments and writes them as SVG: one group a layer, the image layer first; segments
/// that continue each other in one colour become one path.
class QCPLATFORM_EXPORT qcSvgTablet : public qcUITablet {
 public:
  /// A picture whose user units are those of the drawing and whose strokes are `strokeWidth` of them
  /// wide. The view is the box of all that was drawn, with a margin of four stroke widths.
  explicit qcSvgTablet(double strokeWidth = 1.0);
  /// The same with a fixed view.
  qcSvgTablet(const qcRect& view, double strokeWidth);

  void drawLineSeg(const qcPair<double>& from, const qcPair<double>& to, const qcColor& color,
                   Layers layers) override;

  /// Writes the picture, complete with its XML head. Coordinates are written with all their
  /// digits, in the C locale's form. Segments with a coordinate that is not finite are left out.
  void write(std::ostream& out) const;

 private:
  qcRecordingTablet drawing_;
  qcRect view_;
  bool hasView_ = false;
  double strokeWidth_;
};
