// SPDX-License-Identifier: MIT
//
// The main direction of edges is that of the larger axis of sum(d * d^T) over their vectors d:
// twice its angle is the angle of the sum of (d.x^2 - d.y^2, 2 d.x d.y).

#include <cntr/index/strips.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace cntr::index {

namespace {

using Point = qcVector<2>;

Point across(const Point& along) { return {-along.y(), along.x()}; }

/// The smallest strip along a direction that contains all points added.
class Frame {
 public:
  explicit Frame(const Point& along) : along_(along) {}

  void add(const Point& p) { box_.add(Point(along_ * p, across(along_) * p)); }
  void add(const Strip& strip) {
    const Point u = strip.along * strip.halfAlong;
    const Point v = across(strip.along) * strip.halfAcross;
    for (const Point& corner :
         {strip.center + u + v, strip.center + u - v, strip.center - u + v, strip.center - u - v}) {
      add(corner);
    }
  }
  Strip strip() const {
    const double middleAlong = (box_.minX + box_.maxX) * 0.5;
    const double middleAcross = (box_.minY + box_.maxY) * 0.5;
    return {along_, along_ * middleAlong + across(along_) * middleAcross,
            (box_.maxX - box_.minX) * 0.5, (box_.maxY - box_.minY) * 0.5};
  }

 private:
  Point along_;
  plane::Box box_;
};

/// How far a strip reaches from its centre towards a unit vector.
double reach(const Strip& strip, const Point& towards) {
  return strip.halfAlong * std::abs(strip.along * towards) +
         strip.halfAcross * std::abs(across(strip.along) * towards);
}

}  // namespace

qcVector<2> MainDirection::along() const {
  const double r = std::sqrt(cos_ * cos_ + sin_ * sin_);
  if (!(r > 0.0)) return {1.0, 0.0};
  const double c = std::clamp(cos_ / r, -1.0, 1.0);
  return {std::sqrt((1.0 + c) * 0.5), std::copysign(std::sqrt((1.0 - c) * 0.5), sin_)};
}

bool areApart(const Strip& a, const Strip& b, double margin) {
  const Point between = b.center - a.center;
  const auto apartAlong = [&](const Point& axis) {
    return std::abs(between * axis) > reach(a, axis) + reach(b, axis) + margin;
  };
  return apartAlong(across(a.along)) || apartAlong(across(b.along)) || apartAlong(a.along) ||
         apartAlong(b.along);
}

bool areApart(const plane::Edge& edge, const Strip& strip, double margin) {
  const auto apartAlong = [&](const Point& axis, double half) {
    const double from = (edge.from - strip.center) * axis;
    const double to = (edge.to - strip.center) * axis;
    return std::min(from, to) > half + margin || std::max(from, to) < -half - margin;
  };
  return apartAlong(across(strip.along), strip.halfAcross) ||
         apartAlong(strip.along, strip.halfAlong);
}

Strips::Bundle Strips::bundleOfEdges(const plane::Path& path, std::size_t first, std::size_t last) {
  MainDirection direction;
  for (std::size_t k = first; k < last; ++k) {
    const plane::Edge edge = path.edge(k);
    direction.add(edge.to - edge.from);
  }
  Frame frame(direction.along());
  frame.add(path.edge(first).from);
  for (std::size_t k = first; k < last; ++k) frame.add(path.edge(k).to);
  return {direction, frame.strip()};
}

Strips::Bundle Strips::bundleOfBundles(std::size_t level, std::size_t first,
                                       std::size_t last) const {
  MainDirection direction;
  for (std::size_t k = first; k < last; ++k) direction.add(levels_[level][k].direction);
  Frame frame(direction.along());
  for (std::size_t k = first; k < last; ++k) frame.add(levels_[level][k].strip);
  return {direction, frame.strip()};
}

Strips::Strips(const plane::Path& path, const EdgeIndex& index) {
  for (std::size_t level = 0; level < index.levelCount(); ++level) {
    std::vector<Bundle> bundles;
    bundles.reserve(index.boxes(level).size());
    for (std::size_t i = 0; i < index.boxes(level).size(); ++i) {
      const auto [first, last] = index.childrenOf(level, i);
      bundles.push_back(level == 0 ? bundleOfEdges(path, first, last)
                                   : bundleOfBundles(level - 1, first, last));
    }
    levels_.push_back(std::move(bundles));
  }
}

}  // namespace cntr::index
