// SPDX-License-Identifier: MIT
//
// Convex hull by two monotone chains over the points in lexicographic order. Sorting is half of the
// work, so the points are first spread over buckets of equal width in x, which leaves little to
// sort unless they are crowded.

#include <platform/core/hull.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>

namespace {

using Point = qcVector<2>;
using Points = std::vector<Point>;

/// Below this many points, spreading them over buckets does not pay.
constexpr std::size_t smallSet = 32;
/// Buckets of more points than this are sorted on their own, so that inserting stays cheap.
constexpr std::uint32_t fullBucket = 16;

bool hasNaN(const Point& p) noexcept { return std::isnan(p.x()) || std::isnan(p.y()); }

bool byXThenY(const Point& a, const Point& b) noexcept {
  return a.x() < b.x() || (a.x() == b.x() && a.y() < b.y());
}

/// Sorts points that are nearly in order. Like all sorting here it is stable: of equal points (0
/// and -0 are equal) the first one stays first.
void insertionSort(Points& points) {
  for (std::size_t i = 1; i < points.size(); ++i) {
    const Point p = points[i];
    std::size_t hole = i;
    for (; hole > 0 && byXThenY(p, points[hole - 1]); --hole) points[hole] = points[hole - 1];
    points[hole] = p;
  }
}

/// Buckets of equal width from the smallest x to the largest, as many as there are points. The
/// bucket of a point never decreases with x, so only the points of one bucket are left to be
/// sorted.
class Buckets {
 public:
  explicit Buckets(const Points& points) : count_(points.size()) {
    double high = -std::numeric_limits<double>::infinity();
    for (const Point& p : points) {
      low_ = p.x() < low_ ? p.x() : low_;
      high = p.x() > high ? p.x() : high;
    }
    scale_ = (static_cast<double>(count_) - 0.5) / (high - low_);
  }

  /// False when the points are too few or too many, or their width is 0 or not finite.
  bool worthWhile() const noexcept {
    return count_ >= smallSet && count_ < std::numeric_limits<std::uint32_t>::max() &&
           scale_ > 0.0 && std::isfinite(scale_);
  }

  std::size_t count() const noexcept { return count_; }
  /// REQUIRES: worthWhile().
  std::uint32_t of(const Point& p) const noexcept {
    return static_cast<std::uint32_t>((p.x() - low_) * scale_);
  }

 private:
  std::size_t count_;
  double low_ = std::numeric_limits<double>::infinity();
  double scale_;
};

/// The points without NaN, in buckets; sets `ends` to where each bucket ends.
Points spreadOver(const Buckets& buckets, const Points& points, std::vector<std::uint32_t>& ends) {
  ends.assign(buckets.count() + 1, 0);
  for (const Point& p : points) {
    if (!hasNaN(p)) ++ends[buckets.of(p) + 1];
  }
  for (std::size_t i = 1; i < ends.size(); ++i) ends[i] += ends[i - 1];
  Points spread(ends.back());
  for (const Point& p : points) {
    if (!hasNaN(p)) spread[ends[buckets.of(p)]++] = p;
  }
  return spread;
}

Points sortedByBuckets(const Buckets& buckets, const Points& points) {
  std::vector<std::uint32_t> ends;
  Points spread = spreadOver(buckets, points, ends);
  std::uint32_t begin = 0;
  for (const std::uint32_t end : ends) {
    if (end - begin > fullBucket) {
      std::stable_sort(spread.begin() + begin, spread.begin() + end, byXThenY);
    }
    begin = end;
  }
  insertionSort(spread);
  return spread;
}

/// The points without NaN and without duplicates, by x, then y.
Points sortedDistinct(const Points& points) {
  Points sorted;
  if (const Buckets buckets(points); buckets.worthWhile()) {
    sorted = sortedByBuckets(buckets, points);
  } else {
    std::remove_copy_if(points.begin(), points.end(), std::back_inserter(sorted), hasNaN);
    std::stable_sort(sorted.begin(), sorted.end(), byXThenY);
  }
  sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
  return sorted;
}

/// True unless a, b, c turn counter-clockwise.
bool superfluous(const Point& a, const Point& b, const Point& c) noexcept {
  return (b.x() - a.x()) * (c.y() - a.y()) - (b.y() - a.y()) * (c.x() - a.x()) <= 0.0;
}

/// Appends to `hull` those of the points in [first, last) at which the chain turns
/// counter-clockwise, and both ends.
template <class Iterator>
void appendChain(Iterator first, Iterator last, Points& hull) {
  const std::size_t start = hull.size();
  for (; first != last; ++first) {
    while (hull.size() >= start + 2 && superfluous(hull.end()[-2], hull.back(), *first)) {
      hull.pop_back();
    }
    hull.push_back(*first);
  }
}

}  // namespace

void qfConvexHull(const std::vector<qcVector<2>>& points, std::vector<qcVector<2>>& hull) {
  const Points sorted = sortedDistinct(points);
  hull.clear();
  appendChain(sorted.begin(), sorted.end(), hull);
  if (sorted.size() < 2) return;
  hull.pop_back();
  appendChain(sorted.rbegin(), sorted.rend(), hull);
  hull.pop_back();
}
