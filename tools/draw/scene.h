// SPDX-License-Identifier: MIT
//
// What is to be drawn of any number of features: they come one by one, and what cannot be seen of
// them is not kept.

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
  /// The place of its feature: the number of the file, from 0, and that in the file.
  std::size_t file = 0;
  std::size_t number = 0;
  /// Empty for none.
  std::string label;
  /// Decides on the colour.
  unsigned long colour = 0;
  bool closed = true;
  /// Empty for what is smaller than a dot.
  std::vector<formats::Points> rings;
  /// Of the outline or line.
  Box box;
  /// Where the label is, if there is one.
  qcVector<2> middle{};
};

/// An overlay with all of its marks.
struct Layer {
  const Overlay* overlay;
  MarkList marks;
};

/// Shapes and marks are within a tenth of a pixel of those of the files, unless a view that was
/// told after them is smaller than the shapes.
class Scene {
 public:
  /// The longer side of the view will take `size` pixels. Labels have places only if asked for.
  Scene(const std::vector<const Overlay*>& overlays, bool withLabels, double size);

  /// Shows this area, whatever else there is.
  void show(const Box& area);
  /// Shows the whole image that the features come from, unless show() says otherwise.
  void showImage(const Box& area) { images_.enclose(area); }

  /// Throws FeatureError for coordinates that cannot be drawn.
  void add(const formats::Feature& feature, std::size_t file);
  /// To be called once, after the last feature.
  void complete();

  /// What the picture shows: an area, the images, or all shapes and what overlays them, with a
  /// margin. Around nothing at all, the unit square of the pixel at (0, 0).
  Box view() const;
  /// Of all outlines and lines.
  const Box& outlines() const noexcept { return outlines_; }
  const std::vector<Shape>& shapes() const noexcept { return shapes_; }
  const std::vector<Layer>& layers() const noexcept { return layers_; }

 private:
  /// The size of a pixel; 0 where that is not known to be more.
  double pixel() const;
  void addOverlays(const formats::Feature& feature, const formats::Geometry& framed,
                   const Frame& frame, const Box& box);
  void addShape(Shape shape);
  /// Whether it is to be drawn. Leaves out what cannot be seen of it.
  bool thin(Shape& shape);
  /// `tolerance` is in pixels.
  void thinAll(double pixel, double tolerance);

  bool withLabels_;
  double size_;
  std::optional<Box> area_;
  Box images_;
  Box outlines_;
  /// Of all outlines and lines and what overlays them.
  Box box_;
  /// What lies outside is not drawn; empty while that is not known.
  std::optional<Box> limits_;
  /// The size of a pixel that shapes have been thinned for.
  double thinnedFor_ = 0.0;
  double tolerance_ = 0.0;
  Squares dots_{0.0};
  std::vector<Shape> shapes_;
  std::vector<Layer> layers_;
};

/// The border around the view, in pixels, beyond which nothing shows.
inline constexpr double beyondView = 20.0;

}  // namespace tool
