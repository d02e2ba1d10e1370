// SPDX-License-Identifier: MIT
//
// A drawing surface that writes what was drawn as a standalone SVG picture.

#pragma once

#include <iosfwd>

#include <platform/core/shapes.h>
#include <platform/display/recordingtablet.h>

/// @addtogroup display
/// @{

/// Collects segments and writes them as SVG: one group per layer, the image layer first; segments
/// of one colour that continue each other become one path. Line ends and corners are round.
class QCPLATFORM_EXPORT qcSvgTablet : public qcUITablet {
 public:
  /// A picture whose user units are those of the drawing and whose strokes are `strokeWidth` units
  /// wide. The view is the box of all that was drawn, with a margin of four stroke widths; when
  /// nothing was drawn, the margin around the origin.
  /// REQUIRES: strokeWidth is finite and not negative.
  explicit qcSvgTablet(double strokeWidth = 1.0);
  /// The same with a fixed view, which has finite corners.
  qcSvgTablet(const qcRect& view, double strokeWidth);

  void drawLineSeg(const qcPair<double>& from, const qcPair<double>& to, const qcColor& color,
                   Layers layers) override;

  /// Writes the picture, complete with the XML declaration. Numbers are written with the digits
  /// that read back as the same double, in the format of the C locale whatever the stream's locale.
  /// Segments with a coordinate that is not finite are left out.
  void write(std::ostream& out) const;

 private:
  qcRecordingTablet drawing_;
  qcRect view_;
  bool hasView_ = false;
  double strokeWidth_;
};

/// @}
