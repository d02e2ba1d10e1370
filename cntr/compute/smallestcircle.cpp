// SPDX-License-Identifier: MIT
//
// Doubles only choose the order in which points are taken; the predicates decide.

#include <cntr/compute/smallestcircle.h>

#include <cmath>
#include <optional>
#include <utility>
#include <vector>

#include <cntr/plane/expansion.h>
#include <cntr/plane/orientation.h>
#include <platform/core/kernels.h>
#include <platform/core/random.h>

namespace cntr::compute {

namespace {

using plane::Expansion;
using plane::Twofold;
using Point = qcVector<2>;
using PointList = std::vector<Point>;

/// How often, at most, the search in doubles takes in the farthest point.
constexpr int mostSearches = 32;

/// The determinant whose sign tells whether p lies in the circle through a, b and c: in any kind of
/// number, built from the differences from p by `difference(x, y)`.
template <class Difference>
auto circleDeterminant(const Point& a, const Point& b, const Point& c, const Point& p,
                       Difference difference) {
  const auto ax = difference(a.x(), p.x());
  const auto ay = difference(a.y(), p.y());
  const auto bx = difference(b.x(), p.x());
  const auto by = difference(b.y(), p.y());
  const auto cx = difference(c.x(), p.x());
  const auto cy = difference(c.y(), p.y());
  return (ax * ax + ay * ay) * (bx * cy - cx * by) + (bx * bx + by * by) * (cx * ay - ax * cy) +
         (cx * cx + cy * cy) * (ax * by - bx * ay);
}

/// The sum of the absolute values of the terms of that determinant.
double circlePermanent(const Point& a, const Point& b, const Point& c, const Point& p) noexcept {
  const Point u = a - p;
  const Point v = b - p;
  const Point w = c - p;
  const auto size = [](const Point& d, const Point& e) {
    return std::abs(d.x() * e.y()) + std::abs(e.x() * d.y());
  };
  return (u * u) * size(v, w) + (v * v) * size(w, u) + (w * w) * size(u, v);
}

/// The circle through three points as an equation in the differences q from the first of them, its
/// coefficients to twice the digits of a double: area * q * q - x * q.x - y * q.y is negative
/// inside, for points that turn counter-clockwise.
class CircleEquation {
 public:
  CircleEquation(const Point& a, const Point& b, const Point& c) noexcept : from_(a) {
    const Twofold bx = plane::sumOf(b.x(), -a.x());
    const Twofold by = plane::sumOf(b.y(), -a.y());
    const Twofold cx = plane::sumOf(c.x(), -a.x());
    const Twofold cy = plane::sumOf(c.y(), -a.y());
    const Twofold bb = bx * bx + by * by;
    const Twofold cc = cx * cx + cy * cy;
    area_ = bx * cy - by * cx;
    x_ = cy * bb - by * cc;
    y_ = bx * cc - cx * bb;
    areaTerms_ = std::abs(bx.high * cy.high) + std::abs(by.high * cx.high);
    xTerms_ = std::abs(cy.high) * bb.high + std::abs(by.high) * cc.high;
    yTerms_ = std::abs(bx.high) * cc.high + std::abs(cx.high) * bb.high;
  }

  /// 1 when p is certainly inside, -1 when it is certainly outside, else 0.
  int sideOf(const Point& p) const noexcept {
    // Each of some twenty operations is accurate to 2^-100 of its terms.
    constexpr double error = 0x1p-94;
    const Twofold qx = plane::sumOf(p.x(), -from_.x());
    const Twofold qy = plane::sumOf(p.y(), -from_.y());
    const Twofold qq = qx * qx + qy * qy;
    const double value = (area_ * qq - (x_ * qx + y_ * qy)).high;
    const double terms =
        areaTerms_ * qq.high + xTerms_ * std::abs(qx.high) + yTerms_ * std::abs(qy.high);
    if (!(std::abs(value) > error * terms)) return 0;
    return value < 0.0 ? 1 : -1;
  }

 private:
  Point from_;
  Twofold area_;
  Twofold x_;
  Twofold y_;
  /// The sums of the absolute values of the terms of these.
  double areaTerms_ = 0.0;
  double xTerms_ = 0.0;
  double yTerms_ = 0.0;
};

/// The sign of the first estimate if it is certain, else 0.
int estimatedSide(const Point& a, const Point& b, const Point& c, const Point& p) noexcept {
  // (10 + 96 e) e with e = 2^-53: the bound of the first stage in Shewchuk's incircle.
  constexpr double errorOfDoubles = 1.1102230246251577e-15;
  const double estimate =
      circleDeterminant(a, b, c, p, [](double from, double to) { return from - to; });
  if (!(std::abs(estimate) > errorOfDoubles * circlePermanent(a, b, c, p))) return 0;
  return estimate > 0.0 ? 1 : -1;
}

CircleSupport supportOf(const Point& a) { return {{a}, 1}; }

CircleSupport supportOf(const Point& a, const Point& b) { return {{a, b}, 2}; }

/// REQUIRES: the three points are not on one line.
CircleSupport supportOf(const Point& a, const Point& b, const Point& c) {
  if (plane::orientation(a, b, c) > 0) return {{a, b, c}, 3};
  return {{a, c, b}, 3};
}

/// A circle and which points lie in it.
class Circle {
 public:
  explicit Circle(const CircleSupport& support) noexcept : support_(support) {}

  const CircleSupport& support() const noexcept { return support_; }

  /// Whether p lies in the circle or on it.
  bool holds(const Point& p) {
    const auto& [a, b, c] = support_.points;
    if (support_.count == 1) return p == a;
    if (support_.count == 2) return plane::dotSign(p, a, p, b) <= 0;
    return sideOf(p) >= 0;
  }

 private:
  /// 1 when p lies inside the circle through the three points, 0 when on it, -1 when outside.
  int sideOf(const Point& p) {
    const auto& [a, b, c] = support_.points;
    const int estimate = estimatedSide(a, b, c, p);
    if (estimate != 0) return estimate;
    if (!equation_) equation_.emplace(a, b, c);
    const int side = equation_->sideOf(p);
    if (side != 0) return side;
    return circleDeterminant(a, b, c, p, &Expansion::difference).sign();
  }

  CircleSupport support_;
  /// Made when it is first needed.
  std::optional<CircleEquation> equation_;
};

/// The smallest circle around `points`: distinct vertices of a convex polygon.
CircleSupport smallestAround(std::span<const Point> points) {
  Circle circle(supportOf(points.front()));
  for (std::size_t i = 1; i < points.size(); ++i) {
    if (circle.holds(points[i])) continue;
    circle = Circle(supportOf(points[i]));
    for (std::size_t j = 0; j < i; ++j) {
      if (circle.holds(points[j])) continue;
      circle = Circle(supportOf(points[i], points[j]));
      for (std::size_t k = 0; k < j; ++k) {
        if (!circle.holds(points[k])) circle = Circle(supportOf(points[i], points[j], points[k]));
      }
    }
  }
  return circle.support();
}

/// A circle in doubles, good enough to look for points outside.
struct RoughCircle {
  Point center;
  double squaredRadius = 0.0;

  explicit RoughCircle(const CircleSupport& support) noexcept {
    const auto& [a, b, c] = support.points;
    center = support.count == 1 ? a : (a + b) * 0.5;
    if (support.count == 3) {
      const Point u = b - a;
      const Point v = c - a;
      const double area4 = 2.0 * qnKernel::cross(u, v);
      center = a + Point(v.y() * (u * u) - u.y() * (v * v), u.x() * (v * v) - v.x() * (u * u)) *
                       (1.0 / area4);
    }
    squaredRadius = (a - center) * (a - center);
  }
};

/// The vertex farthest from the centre of the circle, if it is clearly outside; else nullptr.
const Point* farthestOutside(std::span<const Point> hull, const RoughCircle& circle) noexcept {
  const Point* farthest = nullptr;
  double most = circle.squaredRadius * (1.0 + 1e-12);
  for (const Point& p : hull) {
    const Point d = p - circle.center;
    const double squared = d * d;
    if (squared > most) {
      most = squared;
      farthest = &p;
    }
  }
  return farthest;
}

/// Takes in the farthest point outside again and again: the support of a circle that is nearly
/// always the right one.
CircleSupport roughSupport(std::span<const Point> hull) {
  CircleSupport support = supportOf(hull.front());
  for (int search = 0; search < mostSearches; ++search) {
    const Point* outside = farthestOutside(hull, RoughCircle(support));
    if (outside == nullptr) break;
    std::array<Point, 4> few{*outside};
    for (std::size_t i = 0; i < support.count; ++i) {
      if (support.points[i] == *outside) return support;
      few[i + 1] = support.points[i];
    }
    support = smallestAround(std::span(few).first(support.count + 1));
  }
  return support;
}

/// The vertices, those of the support first and the others in random order.
PointList inOrder(std::span<const Point> hull, const CircleSupport& support) {
  PointList points(hull.begin(), hull.end());
  qcRandomUniform random(1);
  for (std::size_t i = points.size() - 1; i > 0; --i) {
    const double pick = random.next(0.0, static_cast<double>(i + 1));
    std::swap(points[i], points[static_cast<std::size_t>(pick)]);
  }
  for (std::size_t i = 0; i < support.count; ++i) {
    for (Point& p : points) {
      if (p == support.points[i]) std::swap(p, points[i]);
    }
  }
  return points;
}

/// Drops the corner of a right angle: the other two are the ends of a diameter.
CircleSupport withoutRightAngle(const CircleSupport& circle) noexcept {
  if (circle.count < 3) return circle;
  const auto& [a, b, c] = circle.points;
  if (plane::dotSign(a, b, a, c) == 0) return supportOf(b, c);
  if (plane::dotSign(b, c, b, a) == 0) return supportOf(c, a);
  if (plane::dotSign(c, a, c, b) == 0) return supportOf(a, b);
  return circle;
}

}  // namespace

CircleSupport smallestCircle(std::span<const qcVector<2>> hull) {
  return withoutRightAngle(smallestAround(inOrder(hull, roughSupport(hull))));
}

}  // namespace cntr::compute
