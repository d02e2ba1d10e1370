// SPDX-License-Identifier: MIT
//
// The last steps of the smallest rectangle, strip and circle: numbers of twice the digits of a
// double, from the vertices that were chosen exactly.

#include <cntr/descriptors.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include <cntr/compute/calipers.h>
#include <cntr/compute/exacthull.h>
#include <cntr/compute/smallestcircle.h>
#include <cntr/contourdefs.h>
#include <cntr/plane/orientation.h>

namespace {

using cntr::compute::Caliper;
using cntr::compute::CircleSupport;
using cntr::compute::ExactHull;
using cntr::plane::crossProduct;
using cntr::plane::dotProduct;
using cntr::plane::doubledArea;
using cntr::plane::sumOf;
using cntr::plane::Twofold;
using Point = qcVector<2>;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// Throws EmptyContour when every point has a NaN coordinate.
ExactHull hullOf(std::span<const Point> points) {
  ExactHull hull = cntr::compute::exactHull(points);
  if (hull.finite && hull.vertices.empty()) throw qcContourDefs::EmptyContour();
  return hull;
}

/// Undoes the scale of a hull.
class Restore {
 public:
  explicit Restore(const ExactHull& hull) noexcept : exponent_(-hull.exponent) {}

  double operator()(const Twofold& value) const noexcept {
    return std::ldexp(value.high, exponent_);
  }
  Point operator()(const Twofold& x, const Twofold& y) const noexcept {
    return {(*this)(x), (*this)(y)};
  }

 private:
  int exponent_;
};

/// Whether a line's direction must be reversed to have its angle in (-90, 90].
bool isTurned(const Point& direction) noexcept {
  return direction.x() < 0.0 || (direction.x() == 0.0 && direction.y() < 0.0);
}

/// A line's direction as an angle in (-90, 90].
qcDegree angleOf(const Point& direction) noexcept {
  const Point forward = isTurned(direction) ? -direction : direction;
  const double degrees = qcDegree(qcRadian(std::atan2(forward.y(), forward.x()))).toDouble();
  return qcDegree(degrees <= -90.0 ? 90.0 : degrees + 0.0);
}

/// A quarter turn counter-clockwise.
Point across(const Point& direction) noexcept { return {-direction.y(), direction.x()}; }

/// The rectangle of a caliper, in the frame of its edge.
class Frame {
 public:
  Frame(const ExactHull& hull, const Caliper& caliper)
      : from_(hull.vertices[caliper.from]), to_(hull.vertices[caliper.to]), restore_(hull) {
    const Point& back = hull.vertices[caliper.back];
    const Point& front = hull.vertices[caliper.front];
    const Point& top = hull.vertices[caliper.top];
    const Twofold squared = dotProduct(from_, to_, from_, to_).rounded();
    const Twofold edge = rootOf(squared);
    const Twofold depth = crossProduct(from_, to_, from_, top).rounded();
    along = dotProduct(from_, to_, back, front).rounded() / edge;
    across = depth / edge;
    back_ = dotProduct(from_, to_, from_, back).rounded() / squared;
    front_ = dotProduct(from_, to_, from_, front).rounded() / squared;
    top_ = depth / squared;
  }

  /// The side on the edge and the one at right angles to it.
  Twofold along;
  Twofold across;

  /// Counter-clockwise from the corner at the back end of the edge.
  std::array<Point, 4> corners() const noexcept {
    const Twofold none;
    return {at(back_, none), at(front_, none), at(front_, top_), at(back_, top_)};
  }

  Point center() const noexcept {
    const Twofold half(0.5);
    return at((back_ + front_) * half, top_ * half);
  }

 private:
  /// The point at these multiples of the edge along and across it.
  Point at(const Twofold& alongShare, const Twofold& acrossShare) const noexcept {
    const Twofold dx = sumOf(to_.x(), -from_.x());
    const Twofold dy = sumOf(to_.y(), -from_.y());
    return restore_(Twofold(from_.x()) + (dx * alongShare - dy * acrossShare),
                    Twofold(from_.y()) + (dy * alongShare + dx * acrossShare));
  }

  Point from_;
  Point to_;
  Restore restore_;
  Twofold back_;
  Twofold front_;
  Twofold top_;
};

/// The circle on the ends of a diameter.
qcCircle circleOn(const Point& a, const Point& b, const Restore& restore) {
  const Twofold half(0.5);
  const Twofold diameter = rootOf(dotProduct(a, b, a, b).rounded());
  return {restore(sumOf(a.x(), b.x()) * half, sumOf(a.y(), b.y()) * half),
          restore(diameter * half)};
}

/// The circle through the corners of a triangle, relative to `a`.
qcCircle circleThrough(const Point& a, const Point& b, const Point& c, const Restore& restore) {
  const Twofold bb = dotProduct(a, b, a, b).rounded();
  const Twofold cc = dotProduct(a, c, a, c).rounded();
  const Twofold opposite = dotProduct(b, c, b, c).rounded();
  const Twofold area4 = doubledArea(a, b, c).rounded() * Twofold(2.0);
  const Twofold x = sumOf(c.y(), -a.y()) * bb - sumOf(b.y(), -a.y()) * cc;
  const Twofold y = sumOf(b.x(), -a.x()) * cc - sumOf(c.x(), -a.x()) * bb;
  const Twofold radius = rootOf(bb) * rootOf(cc) * rootOf(opposite) / area4;
  return {restore(Twofold(a.x()) + x / area4, Twofold(a.y()) + y / area4), restore(radius)};
}

/// The circle through three points, relative to an end of the shortest side: there its differences
/// lose no digits.
qcCircle circleThrough(const CircleSupport& support, const Restore& restore) {
  auto [a, b, c] = support.points;
  const double ab = a.distance(b);
  const double bc = b.distance(c);
  const double ca = c.distance(a);
  if (ab <= bc && ab <= ca) return circleThrough(a, b, c, restore);
  if (bc <= ca) return circleThrough(b, c, a, restore);
  return circleThrough(c, a, b, restore);
}

}  // namespace

qcOrientedRect qf_MinimumAreaRect(std::span<const qcVector<2>> points) {
  const ExactHull hull = hullOf(points);
  if (!hull.finite) {
    const Point nowhere(notANumber, notANumber);
    return {nowhere,
            notANumber,
            notANumber,
            qcDegree(notANumber),
            {nowhere, nowhere, nowhere, nowhere}};
  }
  const Restore restore(hull);
  if (hull.vertices.size() == 1) {
    const Point& p = hull.vertices.front();
    const Point only = restore(Twofold(p.x()), Twofold(p.y()));
    return {only, 0.0, 0.0, qcDegree(), {only, only, only, only}};
  }
  const Caliper caliper = cntr::compute::smallestRectangle(hull.vertices);
  const bool isLongAlong = cntr::compute::isLongAlongEdge(hull.vertices, caliper);
  const Frame frame(hull, caliper);
  const Point edge = hull.vertices[caliper.to] - hull.vertices[caliper.from];
  const Point longer = isLongAlong ? edge : across(edge);
  // The corners of the frame begin with the edge; those of the answer with the longer side.
  std::array<Point, 4> corners = frame.corners();
  const int first = (isLongAlong ? 0 : 1) + (isTurned(longer) ? 2 : 0);
  std::rotate(corners.begin(), corners.begin() + first, corners.end());
  return {frame.center(), restore(isLongAlong ? frame.along : frame.across),
          restore(isLongAlong ? frame.across : frame.along), angleOf(longer), corners};
}

qcWidth qf_MinimumWidth(std::span<const qcVector<2>> points) {
  const ExactHull hull = hullOf(points);
  if (!hull.finite) return {notANumber, qcDegree(notANumber)};
  if (hull.vertices.size() == 1) return {0.0, qcDegree()};
  const Caliper caliper = cntr::compute::narrowestStrip(hull.vertices);
  const Point edge = hull.vertices[caliper.to] - hull.vertices[caliper.from];
  return {Restore(hull)(Frame(hull, caliper).across), angleOf(across(edge))};
}

qcCircle qf_MinimumCircle(std::span<const qcVector<2>> points) {
  const ExactHull hull = hullOf(points);
  if (!hull.finite) return {{notANumber, notANumber}, notANumber};
  const Restore restore(hull);
  const CircleSupport support = cntr::compute::smallestCircle(hull.vertices);
  const Point& first = support.points[0];
  if (support.count == 1) return {restore(Twofold(first.x()), Twofold(first.y())), 0.0};
  if (support.count == 2) return circleOn(first, support.points[1], restore);
  return circleThrough(support, restore);
}
