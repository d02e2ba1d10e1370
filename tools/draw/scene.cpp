// SPDX-License-Identifier: MIT
//
// As long as the view is not known, its size is taken to be that of what has been added so far. The
// view is at least as large, so nothing is left out too early. Whenever the size has doubled, what
// is kept is thinned again.

#include <tools/draw/scene.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

#include <cntrformats/errors.h>
#include <tools/answers/body.h>
#include <tools/draw/thinning.h>

namespace tool {

using namespace formats;

namespace {

constexpr double marginShare = 0.04;
/// In pixels: together with the rounding of coordinates, a tenth. Thinning again whenever pixels
/// double moves vertices by less than twice the first tolerance.
constexpr double firstTolerance = 0.02;
constexpr double lastTolerance = 0.05;
/// A shape no larger than this, in pixels, becomes a dot; of dots that share a square the first is
/// drawn.
constexpr double dotSize = 2.0;
constexpr double dotSpacing = 1.5;
/// Beyond this, squares of lengths overflow; no camera's coordinates come near it.
constexpr double largestCoordinate = 1e100;
constexpr double smallestExtent = 1e-100;

/// Wide enough to make a difference to the coordinates even around a single point.
double marginOf(const Box& box) {
  if (box.extent() > smallestExtent) return marginShare * box.extent();
  return std::max(0.5, 1e-9 * std::max(std::abs(box.low.x()), std::abs(box.low.y())));
}

Box boxAround(const Geometry& geometry) {
  Box box;
  for (const qcRings& part : geometry.parts) box.enclose(tool::boxAround(part.outline));
  return box;
}

bool isDrawable(const Points& points) {
  return std::all_of(points.begin(), points.end(), [](const qcVector<2>& p) {
    return p.x() >= -largestCoordinate && p.x() <= largestCoordinate &&
           p.y() >= -largestCoordinate && p.y() <= largestCoordinate;
  });
}

void requireDrawable(const Geometry& geometry) {
  for (const qcRings& part : geometry.parts) {
    if (isDrawable(part.outline) && std::all_of(part.holes.begin(), part.holes.end(), isDrawable))
      continue;
    throw FeatureError("cannot be drawn: the coordinates are too large");
  }
}

/// A number for each name, the same on every system.
unsigned long numberOf(const std::string& name) {
  std::uint32_t hash = 2166136261U;
  for (const char byte : name) hash = (hash ^ static_cast<unsigned char>(byte)) * 16777619U;
  return hash % 1000U;
}

/// The label decides the colour; a feature without one gets the colour of its place in the file.
unsigned long colourOf(const Feature& feature) {
  if (!feature.label) return feature.number;
  const auto* const number = std::get_if<unsigned long>(&*feature.label);
  return number != nullptr ? *number : numberOf(std::get<std::string>(*feature.label));
}

std::vector<Points> ringsOf(const qcRings& part) {
  std::vector<Points> rings{part.outline};
  rings.insert(rings.end(), part.holes.begin(), part.holes.end());
  return rings;
}

}  // namespace

Scene::Scene(const std::vector<const Overlay*>& overlays, bool withLabels, double size)
    : withLabels_(withLabels), size_(size) {
  for (const Overlay* overlay : overlays) layers_.push_back({overlay, MarkList(0.0)});
}

void Scene::show(const Box& area) {
  area_ = area;
  limits_ = area.widened(beyondView * pixel());
}

Box Scene::view() const {
  if (area_) return *area_;
  if (!images_.isEmpty()) return images_;
  if (box_.isEmpty()) return {{-0.5, -0.5}, {0.5, 0.5}};
  return box_.widened(marginOf(box_));
}

double Scene::pixel() const {
  if (area_) return area_->extent() / size_;
  return (images_.isEmpty() ? box_ : images_).extent() / size_;
}

void Scene::add(const Feature& feature, std::size_t file) {
  const Geometry& geometry = feature.geometry;
  requireDrawable(geometry);
  const Box box = boxAround(geometry);
  outlines_.enclose(box);
  box_.enclose(box);
  const Frame frame(box);
  const Geometry framed = frame.into(geometry);
  addOverlays(feature, framed, frame, box);
  if (pixel() >= 2.0 * thinnedFor_) thinAll(pixel(), firstTolerance);
  for (std::size_t i = 0; i < geometry.parts.size(); ++i) {
    const qcRings& part = geometry.parts[i];
    Shape shape;
    shape.file = file;
    shape.number = feature.number;
    shape.colour = colourOf(feature);
    shape.closed = geometry.closed;
    shape.rings = ringsOf(part);
    shape.box = tool::boxAround(part.outline);
    if (feature.label) {
      shape.label = toText(*feature.label);
      if (withLabels_) shape.middle = frame.back(middleOf(framed.parts[i], geometry.closed));
    }
    addShape(std::move(shape));
  }
}

void Scene::addOverlays(const Feature& feature, const Geometry& framed, const Frame& frame,
                        const Box& box) {
  for (Layer& layer : layers_) {
    std::vector<Mark> marks =
        layer.overlay->find({feature, feature.geometry, framed, frame, pixel()});
    for (const Mark& mark : marks) box_.enclose(reachOf(mark, box));
    layer.marks.add(std::move(marks));
  }
}

void Scene::addShape(Shape shape) {
  if (thin(shape)) shapes_.push_back(std::move(shape));
}

bool Scene::thin(Shape& shape) {
  if (limits_ && !limits_->meets(shape.box)) return false;
  if (shape.box.extent() <= dotSize * thinnedFor_) {
    shape.rings = {};
    return dots_.take(shape.box.middle());
  }
  const bool isClipped = limits_ && !limits_->holds(shape.box);

  for (Points& ring : shape.rings) {
    if (isClipped) ring = shape.closed ? clippedRing(ring, *limits_) : clippedLine(ring, *limits_);
    ring = shape.closed ? thinnedRing(ring, tolerance_) : thinnedLine(ring, tolerance_);
  }
  std::erase_if(shape.rings, [](const Points& ring) { return ring.size() < 2; });
  return !shape.rings.empty();
}

void Scene::thinAll(double pixel, double tolerance) {
  thinnedFor_ = pixel;
  tolerance_ = tolerance * pixel;
  dots_ = Squares(dotSpacing * pixel);
  for (Shape& shape : std::exchange(shapes_, {})) addShape(std::move(shape));
  for (Layer& layer : layers_) layer.marks.thin(pixel);
}

void Scene::complete() {
  const double pixel = view().extent() / size_;
  limits_ = view().widened(beyondView * pixel);
  thinAll(pixel, lastTolerance);
}

}  // namespace tool
