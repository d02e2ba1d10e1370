// SPDX-License-Identifier: MIT

#include <tools/draw/labels.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

namespace tool {

namespace {

/// The range of letter sizes, in pixels: legible, but not obtrusive.
constexpr double smallestLetters = 9.0;
constexpr double largestLetters = 24.0;
/// The fraction of the view that labels larger than their shapes may cover.
constexpr double mostCovered = 0.02;
constexpr double baselineOverCentre = 9.0;
/// Between a shape and the label above or below it.
constexpr double gapToShape = 4.0;

/// A label and the place that it would take.
struct Candidate {
  Label label;
  Box box;
  Box shape;
};

/// The largest size at which the text fits into the shape, within the range above.
double letterSize(const std::string& text, const Box& shape) {
  const double fitting = std::min(0.5 * shape.height(), 0.8 * shape.width() / widthOf(text, 1.0));
  return std::clamp(fitting, smallestLetters, largestLetters);
}

/// The middle, moved so that the label lies inside the view unless the view is narrower.
double inside(double middle, double half, double width) {
  return std::clamp(middle, std::min(half, 0.5 * width), std::max(width - half, 0.5 * width));
}

/// In the middle of a shape into which it fits, above or below any other.
Candidate candidateFor(const Shape& shape, const Canvas& canvas, bool centresAreMarked) {
  const Box box = canvas.map(shape.box);
  const double size = letterSize(shape.label, box);
  const double half = 0.5 * widthOf(shape.label, size);
  const qcVector<2> middle = canvas.map(shape.middle);
  double baseline = middle.y() + (centresAreMarked ? -baselineOverCentre : 0.35 * size);
  if (2.0 * half > box.width() || size > box.height()) {
    const bool isTop = box.low.y() < size + gapToShape;
    baseline = isTop ? box.high.y() + gapToShape + 0.8 * size : box.low.y() - gapToShape;
  }
  const qcVector<2> at(inside(middle.x(), half, canvas.width()), baseline);
  const Box place{at - qcVector<2>(half, 0.8 * size), at + qcVector<2>(half, 0.2 * size)};
  return {{at, size, shape.label}, place, box};
}

/// The places that are taken, found by position.
class TakenPlaces {
 public:
  /// False when the place is already taken.
  bool take(const Box& box) {
    for (const Box* other : near(box)) {
      if (other->meets(box)) return false;
    }
    forEachSquare(box, [&](const Square& square) { taken_[square].push_back(box); });
    return true;
  }

 private:
  using Square = std::pair<double, double>;
  static constexpr double size = 64.0;

  template <typename Action>
  static void forEachSquare(const Box& box, Action action) {
    for (double x = std::floor(box.low.x() / size); x * size <= box.high.x(); ++x) {
      for (double y = std::floor(box.low.y() / size); y * size <= box.high.y(); ++y) action({x, y});
    }
  }

  std::vector<const Box*> near(const Box& box) const {
    std::vector<const Box*> found;
    forEachSquare(box, [&](const Square& square) {
      const auto boxes = taken_.find(square);
      if (boxes == taken_.end()) return;
      for (const Box& other : boxes->second) found.push_back(&other);
    });
    return found;
  }

  std::map<Square, std::vector<Box>> taken_;
};

std::vector<Candidate> candidates(const Scene& scene, const Canvas& canvas, bool centresAreMarked) {
  const Box view{{0.0, 0.0}, {canvas.width(), canvas.height()}};
  std::vector<Candidate> found;
  for (const Shape& shape : scene.shapes()) {
    if (shape.label.empty()) continue;
    Candidate candidate = candidateFor(shape, canvas, centresAreMarked);
    if (view.meets(candidate.shape)) found.push_back(std::move(candidate));
  }
  std::stable_sort(found.begin(), found.end(), [](const Candidate& a, const Candidate& b) {
    return a.shape.width() * a.shape.height() > b.shape.width() * b.shape.height();
  });
  return found;
}

double areaOf(const Box& box) { return box.width() * box.height(); }

}  // namespace

double widthOf(const std::string& text, double size) {
  const auto letters = std::count_if(text.begin(), text.end(), [](char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
  });
  return 0.66 * size * static_cast<double>(letters);
}

std::vector<Label> labelsOf(const Scene& scene, const Canvas& canvas, bool centresAreMarked) {
  double free = mostCovered * canvas.width() * canvas.height();
  TakenPlaces places;
  std::vector<Label> labels;
  for (Candidate& candidate : candidates(scene, canvas, centresAreMarked)) {
    const bool isLarger = areaOf(candidate.box) > areaOf(candidate.shape);
    if (isLarger && areaOf(candidate.box) > free) continue;
    if (!places.take(candidate.box)) continue;
    if (isLarger) free -= areaOf(candidate.box);
    labels.push_back(std::move(candidate.label));
  }
  return labels;
}

}  // namespace tool
