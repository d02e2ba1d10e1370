// SPDX-License-Identifier: MIT
//
// Convex hull by two monotone chains over the points in lexicographic order. Sorting is half of the
// work, so the points are first spread over buckets of equal width in x, which leaves little to
// sort unless many share a bucket.

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
/// Buckets with more points than this are sorted separately, so that insertion stays cheap.
constexpr std::uint32_t fullBucket = 16;

bool hasNaN(const Point& p) noexcept { return std::isunordered(p.x(), p.y()); }

bool byXThenY(const Point& a, const Point& b) noexcept {
  return a.x() < b.x() || (a.x() == b.x() && a.y() < b.y());
}

/// Sorts points that are nearly in order and drops duplicates. Like all sorting here it is stable:
/// of equal points (0 and -0 are equal) the first one stays.
void insertDistinct(Points& points) {
  auto end = points.begin();
  for (const Point p : points) {
    auto hole = end++;
    for (; hole != points.begin() && byXThenY(p, hole[-1]); --hole) *hole = hole[-1];
    if (hole != points.begin() && hole[-1] == p) {
      end = std::copy(hole + 1, end, hole);
    } else {
      *hole = p;
    }
  }
  points.erase(end, points.end());
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
      areNumbers_ &= !hasNaN(p);
    }
    scale_ = (static_cast<double>(count_) - 0.5) / (high - low_);
  }

  /// False when there are too few or too many points, one has a NaN, or their width is 0 or not
  /// finite.
  bool worthWhile() const noexcept {
    return count_ >= smallSet && count_ < std::numeric_limits<std::uint32_t>::max() &&
           areNumbers_ && scale_ > 0.0 && std::isfinite(scale_);
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
  bool areNumbers_ = true;
};

/// The points by bucket; sorted where a bucket is full.
Points sortedByBuckets(const Buckets& buckets, const Points& points) {
  std::vector<std::uint32_t> ends(buckets.count() + 1, 0);
  for (const Point& p : points) ++ends[buckets.of(p) + 1];
  std::uint32_t fullest = 0;
  for (std::size_t i = 1; i < ends.size(); ++i) {
    fullest = std::max(fullest, ends[i]);
    ends[i] += ends[i - 1];
  }
  Points spread(points.size());
  for (const Point& p : points) spread[ends[buckets.of(p)]++] = p;
  if (fullest <= fullBucket) return spread;
  std::uint32_t begin = 0;
  for (const std::uint32_t end : ends) {
    if (end - begin > fullBucket) {
      std::stable_sort(spread.begin() + begin, spread.begin() + end, byXThenY);
    }
    begin = end;
  }
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
  insertDistinct(sorted);
  return sorted;
}

/// True unless a, b, c turn counter-clockwise.
bool superfluous(const Point& a, const Point& b, const Point& c) noexcept {
  return (b.x() - a.x()) * (c.y() - a.y()) - (b.y() - a.y()) * (c.x() - a.x()) <= 0.0;
}

/// Writes to `chain`, which may be `first`, both ends of [first, last) and the points between at
/// which the chain turns counter-clockwise; returns the end of the chain.
template <class Iterator>
Iterator writeChain(Iterator first, Iterator last, Iterator chain) {
  Iterator end = chain;
  for (; first != last; ++first) {
    const Point p = *first;
    while (end - chain >= 2 && superfluous(end[-2], end[-1], p)) --end;
    *end = p;
    ++end;
  }
  return end;
}

}  // namespace

void qfConvexHull(const std::vector<qcVector<2>>& points, std::vector<qcVector<2>>& hull) {
  Points sorted = sortedDistinct(points);
  hull.clear();
  if (sorted.size() < 2) return hull.swap(sorted);
  Points lower(sorted.size());
  const auto lowerEnd = writeChain(sorted.begin(), sorted.end(), lower.begin());
  const auto upperEnd = writeChain(sorted.rbegin(), sorted.rend(), sorted.rbegin());
  // Each chain without its last point, which is the first one of the other.
  hull.reserve(static_cast<std::size_t>((lowerEnd - lower.begin()) + (upperEnd - sorted.rbegin())));
  hull.assign(lower.begin(), lowerEnd - 1);
  hull.insert(hull.end(), sorted.rbegin(), upperEnd - 1);
}
