// SPDX-License-Identifier: MIT
//
// What is to be drawn of any number of features: they are added one by one, and what cannot be seen
// of them is not kept.

#pragma once

#include <optional>
#include <string>
#include <vector>

#include <cntrformats/feature.h>
#include <tools/draw/box.h>
#include <tools/draw/marks.h>
#include <tools/draw/overlays.h>
#include <tools/draw/squares.h>

namespace tool {

/// An outline with its holes, or a line.
struct Shape {
  /// The place of its feature: the number of the file, from 0, and the feature's number in it.
  std::size_t file = 0;
  std::size_t number = 0;
  /// Empty for none.
  std::string label;
  /// Decides the colour.
  unsigned long colour = 0;
  bool closed = true;
  /// Empty for a shape that becomes a dot.
  std::vector<formats::Points> rings;
  /// The box of the outline or line.
  Box box;
  /// The place of the label, if there is one.
  qcVector<2> middle{};
};

/// An overlay and all its marks.
struct Layer {
  const Overlay* overlay;
  MarkList marks;
};

/// Shapes and marks are within a tenth of a pixel of those in the files, unless a view that was set
/// after they were added is smaller than the shapes.
class Scene {
 public:
  /// The longer side of the view will be `size` pixels long. Labels are placed only if asked for.
  Scene(const std::vector<const Overlay*>& overlays, bool withLabels, double size);

  /// Shows only this area.
  void show(const Box& area);
  /// Shows the whole image that the features come from, unless show() says otherwise.
  void showImage(const Box& area) { images_.enclose(area); }

  /// Throws FeatureError for coordinates that cannot be drawn.
  void add(const formats::Feature& feature, std::size_t file);
  /// To be called once, after the last feature.
  void complete();

  /// What the picture shows: the area, the images, or all shapes and their overlays, with a margin.
  /// If there is nothing at all, the unit square of the pixel at (0, 0).
  Box view() const;
  /// The box of all outlines and lines.
  const Box& outlines() const noexcept { return outlines_; }
  const std::vector<Shape>& shapes() const noexcept { return shapes_; }
  const std::vector<Layer>& layers() const noexcept { return layers_; }

 private:
  /// A lower bound on the size of a pixel, 0 as long as none is known.
  double pixel() const;
  void addOverlays(const formats::Feature& feature, const formats::Geometry& framed,
                   const Frame& frame, const Box& box);
  void addShape(Shape shape);
  /// Leaves out what cannot be seen of the shape. False when nothing of it is to be drawn.
  bool thin(Shape& shape);
  /// `tolerance` is in pixels.
  void thinAll(double pixel, double tolerance);

  bool withLabels_;
  double size_;
  std::optional<Box> area_;
  Box images_;
  Box outlines_;
  /// The box of all outlines, lines and overlays.
  Box box_;
  /// What lies outside is not drawn; empty while the view is not known.
  std::optional<Box> limits_;
  /// The size of a pixel for which shapes have been thinned.
  double thinnedFor_ = 0.0;
  double tolerance_ = 0.0;
  Squares dots_{0.0};
  std::vector<Shape> shapes_;
  std::vector<Layer> layers_;
};

/// The border around the view, in pixels, outside which nothing can be seen.
inline constexpr double beyondView = 20.0;

}  // namespace tool
