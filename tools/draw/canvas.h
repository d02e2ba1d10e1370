// SPDX-License-Identifier: MIT
//
// Maps coordinates of the files to the picture.

#pragma once

#include <cntrformats/feature.h>
#include <tools/draw/box.h>
#include <tools/draw/marks.h>

namespace tool {

/// Maps the view to pixels, from (0, 0) in the upper left corner.
class Canvas {
 public:
  /// The longer side of the view is `size` pixels long. The y axis points downwards in the picture
  /// unless `isUp`. REQUIRES: the view has an extent above 0.
  Canvas(const Box& view, double size, bool isUp)
      : view_(view), pixel_(view.extent() / size), isUp_(isUp) {}

  /// The size of a pixel in coordinates.
  double pixel() const noexcept { return pixel_; }
  double width() const noexcept { return view_.width() / pixel_; }
  double height() const noexcept { return view_.height() / pixel_; }

  double map(double length) const { return length / pixel_; }
  qcVector<2> map(const qcVector<2>& p) const;
  formats::Points map(const formats::Points& points) const;
  Box map(const Box& box) const;
  Mark map(const Mark& mark) const;

 private:
  Box view_;
  double pixel_;
  bool isUp_;
};

}  // namespace tool
