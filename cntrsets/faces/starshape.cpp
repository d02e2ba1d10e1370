// SPDX-License-Identifier: MIT

#include <cntrsets/faces/starshape.h>

#include <array>
#include <cmath>
#include <cstddef>

#include <cntr/plane/box.h>

namespace cntr::sets {
namespace {

/// Each cut leaves at most two thirds of the area: these leave a ten-millionth.
constexpr std::size_t mostCuts = 40;

/// Below this, products may have lost digits.
constexpr double smallestProduct = 1e-290;

/// Twice the signed area of the triangle, positive when c lies left of the way from a to b.
double doubledArea(const Point& a, const Point& b, const Point& c) noexcept {
  return (a.x() - c.x()) * (b.y() - c.y()) - (a.y() - c.y()) * (b.x() - c.x());
}

/// A convex polygon.
class Candidates {
 public:
  explicit Candidates(const plane::Box& box) noexcept
      : corners_{Point(box.minX, box.minY), Point(box.maxX, box.minY), Point(box.maxX, box.maxY),
                 Point(box.minX, box.maxY)} {}

  /// Keeps what lies left of the way from a to b; false when nothing does.
  bool cut(const Point& a, const Point& b) noexcept {
    std::array<Point, mostCuts + 4> kept;
    std::size_t count = 0;
    Point before = corners_[count_ - 1];
    double sideBefore = doubledArea(a, b, before);
    for (std::size_t i = 0; i < count_; ++i) {
      const Point corner = corners_[i];
      const double side = doubledArea(a, b, corner);
      if ((sideBefore > 0.0) != (side > 0.0)) {
        if (count == kept.size()) return false;
        kept[count++] = before + (corner - before) * (sideBefore / (sideBefore - side));
      }
      if (side > 0.0) {
        if (count == kept.size()) return false;
        kept[count++] = corner;
      }
      before = corner;
      sideBefore = side;
    }
    corners_ = kept;
    count_ = count;
    return count >= 3;
  }

  Point centre() const noexcept {
    const Point origin = corners_[0];
    double area = 0.0;
    Point sum;
    for (std::size_t i = 2; i < count_; ++i) {
      const Point a = corners_[i - 1] - origin;
      const Point b = corners_[i] - origin;
      const double triangle = a.x() * b.y() - a.y() * b.x();
      area += triangle;
      sum = sum + (a + b) * triangle;
    }
    return origin + sum * (1.0 / (3.0 * area));
  }

 private:
  std::array<Point, mostCuts + 4> corners_;
  std::size_t count_ = 4;
};

struct Survey {
  plane::Box box;
  bool isCounterclockwise = false;
};

Survey surveyOf(std::span<const Point> ring) noexcept {
  Survey survey;
  double area = 0.0;
  Point before = ring.back() - ring.front();
  for (const Point& p : ring) {
    survey.box.add(p);
    const Point next = p - ring.front();
    area += before.x() * next.y() - before.y() * next.x();
    before = next;
  }
  survey.isCounterclockwise = area > 0.0;
  return survey;
}

/// Whether c certainly lies left of the way from a to b, or right of it where `sign` is -1. Edges
/// of no length are passed over.
bool isSeen(const Point& a, const Point& b, const Point& c, double sign) noexcept {
  const double left = (a.x() - c.x()) * (b.y() - c.y());
  const double right = (a.y() - c.y()) * (b.x() - c.x());
  const double bound = plane::estimateError * (std::abs(left) + std::abs(right));
  return sign * (left - right) > bound + smallestProduct || a == b;
}

/// How often the ring passes between above c and below it.
std::size_t passages(std::span<const Point> ring, const Point& c) noexcept {
  std::size_t count = 0;
  bool wasBelow = ring.back().y() <= c.y();
  for (const Point& p : ring) {
    const bool isBelow = p.y() <= c.y();
    count += isBelow != wasBelow ? 1U : 0U;
    wasBelow = isBelow;
  }
  return count;
}

}  // namespace

bool isStarShaped(std::span<const Point> ring) noexcept {
  if (ring.size() < 3) return false;
  const Survey survey = surveyOf(ring);
  const double sign = survey.isCounterclockwise ? 1.0 : -1.0;
  Candidates candidates(survey.box);
  Point centre = candidates.centre();
  std::size_t cuts = 0;
  std::size_t seen = 0;
  Point from = ring.back();
  for (std::size_t i = 0; seen < ring.size();) {
    const Point& to = ring[i];
    if (isSeen(from, to, centre, sign)) {
      ++seen;
      from = to;
      i = i + 1 < ring.size() ? i + 1 : 0;
      continue;
    }
    if (++cuts > mostCuts) return false;
    if (!(survey.isCounterclockwise ? candidates.cut(from, to) : candidates.cut(to, from)))
      return false;
    centre = candidates.centre();
    seen = 0;
  }
  return passages(ring, centre) == 2;
}

}  // namespace cntr::sets
