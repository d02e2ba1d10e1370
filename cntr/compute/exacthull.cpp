// SPDX-License-Identifier: MIT
//
// Bands first, then two monotone chains over what they leave.

#include <cntr/compute/exacthull.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <limits>
#include <utility>

#include <cntr/plane/box.h>
#include <cntr/plane/orientation.h>

namespace cntr::compute {

namespace {

using Point = qcVector<2>;
using PointList = std::vector<Point>;

/// Fewer points than this are sorted without bands.
constexpr std::size_t fewPoints = 48;
/// The number of points per band, and the largest number of bands.
constexpr std::size_t pointsOfBand = 12;
constexpr std::size_t mostBands = 256;
/// The largest coordinate of a hull is scaled to this power of two: a product of six coordinates
/// does not overflow, and products of smaller ones do not vanish.
constexpr int scaledExponent = 150;

bool hasNaN(const Point& p) noexcept { return std::isnan(p.x()) || std::isnan(p.y()); }

bool byXThenY(const Point& a, const Point& b) noexcept {
  return a.x() < b.x() || (a.x() == b.x() && a.y() < b.y());
}

plane::Box boxAround(std::span<const Point> points) noexcept {
  // Two boxes are used in turn, and neither is returned: both stay in registers, and each point
  // waits only for the one before the last. That takes a third of the time.
  plane::Box even;
  plane::Box odd;
  const std::size_t pairs = points.size() / 2;
  for (std::size_t i = 0; i < pairs; ++i) {
    if (!hasNaN(points[2 * i])) even.add(points[2 * i]);
    if (!hasNaN(points[2 * i + 1])) odd.add(points[2 * i + 1]);
  }
  if (points.size() % 2 != 0 && !hasNaN(points.back())) even.add(points.back());
  return {std::min(even.minX, odd.minX), std::min(even.minY, odd.minY),
          std::max(even.maxX, odd.maxX), std::max(even.maxY, odd.maxY)};
}

/// True when c certainly lies left of the line from a to b.
bool clearlyLeft(const Point& a, const Point& b, const Point& c) noexcept {
  const double left = (a.x() - c.x()) * (b.y() - c.y());
  const double right = (a.y() - c.y()) * (b.x() - c.x());
  // The most that products below the smallest normal double may have lost.
  constexpr double vanished = 1e-300;
  return left - right > plane::estimateError * (std::abs(left) + std::abs(right)) + vanished;
}

/// Bands of equal width across x, each with a chord below the upper side of the hull and one above
/// its lower side. A chord joins points of the set in bands on either side, so that what lies
/// between the chords is no vertex of the hull.
class Bands {
 public:
  /// REQUIRES: the box of the points is finite and not of width 0.
  Bands(std::span<const Point> points, const plane::Box& box)
      : low_(box.minX), bands_(std::min(points.size() / pointsOfBand, mostBands)) {
    scale_ = (static_cast<double>(bands_.size()) - 0.5) / (box.maxX - box.minX);
    for (const Point& p : points) {
      if (hasNaN(p)) continue;
      Band& band = bands_[indexOf(p)];
      if (band.isEmpty || p.y() > band.top.y()) band.top = p;
      if (band.isEmpty || p.y() < band.bottom.y()) band.bottom = p;
      band.isEmpty = false;
    }
    layChords(1.0, &Band::top, &Band::upper);
    layChords(-1.0, &Band::bottom, &Band::lower);
    for (Band& band : bands_) {
      band.leastOfUpper = std::min(band.upper.first.y(), band.upper.second.y());
      band.greatestOfLower = std::max(band.lower.first.y(), band.lower.second.y());
    }
  }

  /// The points that may be vertices of the hull, without NaN, by x, then y.
  PointList candidates(std::span<const Point> points) const {
    PointList kept;
    std::vector<std::size_t> ends(bands_.size() + 1, 0);
    for (const Point& p : points) {
      if (hasNaN(p)) continue;
      const std::size_t index = indexOf(p);
      if (isInside(p, bands_[index])) continue;
      kept.push_back(p);
      ++ends[index + 1];
    }
    for (std::size_t i = 1; i < ends.size(); ++i) ends[i] += ends[i - 1];
    PointList sorted(kept.size());
    for (const Point& p : kept) sorted[ends[indexOf(p)]++] = p;
    auto begin = sorted.begin();
    for (std::size_t i = 0; i < bands_.size(); ++i) {
      const auto end = sorted.begin() + static_cast<std::ptrdiff_t>(ends[i]);
      std::sort(begin, end, byXThenY);
      begin = end;
    }
    return sorted;
  }

 private:
  using Chord = std::pair<Point, Point>;
  struct Band {
    Point top;
    Point bottom;
    Chord upper;
    Chord lower;
    /// Of each chord, the end nearer to the other chord.
    double leastOfUpper = 0.0;
    double greatestOfLower = 0.0;
    bool isEmpty = true;
    bool hasChords = false;
  };

  /// False when that is not certain.
  static bool isInside(const Point& p, const Band& band) noexcept {
    return band.hasChords &&
           (p.y() < band.leastOfUpper || clearlyLeft(band.upper.second, band.upper.first, p)) &&
           (p.y() > band.greatestOfLower || clearlyLeft(band.lower.first, band.lower.second, p));
  }

  std::size_t indexOf(const Point& p) const noexcept {
    return static_cast<std::size_t>((p.x() - low_) * scale_);
  }

  /// Finds the chain over the extreme points of the bands (`side` is 1 for the upper one), and for
  /// each band the chord from the last vertex of the chain before it to the first one after it.
  void layChords(double side, Point Band::*extreme, Chord Band::*chord) {
    std::vector<std::size_t> chain;
    const auto isBelow = [&](std::size_t a, std::size_t b, std::size_t c) {
      const auto turn =
          plane::orientation(bands_[a].*extreme, bands_[b].*extreme, bands_[c].*extreme);
      return side * turn >= 0.0;
    };
    for (std::size_t i = 0; i < bands_.size(); ++i) {
      if (bands_[i].isEmpty) continue;
      while (chain.size() >= 2 && isBelow(chain.end()[-2], chain.back(), i)) chain.pop_back();
      chain.push_back(i);
    }
    std::size_t after = 0;
    for (std::size_t i = 0; i < bands_.size(); ++i) {
      while (after < chain.size() && chain[after] <= i) ++after;
      if (after == chain.size()) break;
      const bool isVertex = after > 0 && chain[after - 1] == i;
      const std::size_t passed = isVertex ? 2 : 1;
      if (after < passed) continue;
      bands_[i].*chord = {bands_[chain[after - passed]].*extreme, bands_[chain[after]].*extreme};
      bands_[i].hasChords = true;
    }
  }

  double low_;
  double scale_ = 0.0;
  std::vector<Band> bands_;
};

/// The points that may be vertices of the hull, without NaN, by x, then y.
PointList candidates(std::span<const Point> points, const plane::Box& box) {
  const double width = box.maxX - box.minX;
  if (points.size() >= fewPoints && width > 0.0 && std::isfinite(width) &&
      std::isfinite(1.0 / width)) {
    return Bands(points, box).candidates(points);
  }
  PointList sorted;
  std::remove_copy_if(points.begin(), points.end(), std::back_inserter(sorted), hasNaN);
  std::sort(sorted.begin(), sorted.end(), byXThenY);
  return sorted;
}

/// Appends to `hull` those of the points in [first, last) at which the chain turns
/// counter-clockwise, and both ends.
template <class Iterator>
void appendChain(Iterator first, Iterator last, PointList& hull) {
  const std::size_t start = hull.size();
  for (; first != last; ++first) {
    while (hull.size() >= start + 2 &&
           plane::orientation(hull.end()[-2], hull.back(), *first) <= 0) {
      hull.pop_back();
    }
    hull.push_back(*first);
  }
}

/// The hull of points in order, without duplicates.
PointList hullOfSorted(const PointList& sorted) {
  PointList hull;
  appendChain(sorted.begin(), sorted.end(), hull);
  if (sorted.size() < 2) return hull;
  hull.pop_back();
  appendChain(sorted.rbegin(), sorted.rend(), hull);
  hull.pop_back();
  return hull;
}

/// Multiplies the points by the power of two that brings the largest coordinate to its scale, and
/// returns the exponent.
int scale(const plane::Box& box, PointList& points) {
  const double largest = plane::largestCoordinate(box, Point());
  if (largest == 0.0) return 0;
  const int exponent =
      std::min(scaledExponent - std::ilogb(largest), std::numeric_limits<double>::max_exponent - 1);
  const double factor = std::ldexp(1.0, exponent);
  for (Point& p : points) p = p * factor;
  return exponent;
}

}  // namespace

ExactHull exactHull(std::span<const qcVector<2>> points) {
  const plane::Box box = boxAround(points);
  if (!(box.minX <= box.maxX)) return {};
  if (std::isinf(plane::largestCoordinate(box, Point()))) return {{}, 0, false};
  PointList sorted = candidates(points, box);
  sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
  const int exponent = scale(box, sorted);
  return {hullOfSorted(sorted), exponent, true};
}

}  // namespace cntr::compute
