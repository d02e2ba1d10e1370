// SPDX-License-Identifier: MIT

#include "hard_questions.h"

#include <algorithm>
#include <cmath>

#include <testing/shapes/numbers.h>

namespace hard {

namespace {

using shapes::Point;
using shapes::Points;
using shapes::Random;
using shapes::Segment;

template <std::size_t N>
double pick(Random& random, const double (&choices)[N]) {
  return choices[random.below(N)];
}

double signedPick(Random& random, double value) { return random.chance(0.5) ? value : -value; }

const Point& anyOf(Random& random, const Points& points) {
  return points[random.below(points.size())];
}

Segment anyEdge(Random& random, const Points& points) {
  const std::size_t i = random.below(points.size());
  return {points[i == 0 ? points.size() - 1 : i - 1], points[i]};
}

/// The box of a few neighbours, as an index keeps it.
Segment boxOfRun(Random& random, const Points& points) {
  static const double lengths[] = {1, 8, 9, 64, 65};
  const std::size_t first = random.below(points.size());
  const auto length = static_cast<std::size_t>(pick(random, lengths));
  Point low = points[first];
  Point high = low;
  for (std::size_t i = first; i < std::min(first + length, points.size()); ++i) {
    low = Point(std::fmin(low.x(), points[i].x()), std::fmin(low.y(), points[i].y()));
    high = Point(std::fmax(high.x(), points[i].x()), std::fmax(high.y(), points[i].y()));
  }
  return {low, high};
}

Point cornerOf(Random& random, const Segment& box) {
  const double x = random.chance(0.5) ? box.a.x() : box.b.x();
  return {x, random.chance(0.5) ? box.a.y() : box.b.y()};
}

/// The point as far from a as from b and from c, give or take rounding.
Point circumcentre(const Point& a, const Point& b, const Point& c) {
  const Point u = b - a;
  const Point v = c - a;
  const double twice = 2.0 * (u.x() * v.y() - u.y() * v.x());
  return a + Point((v.y() * (u * u) - u.y() * (v * v)) / twice,
                   (u.x() * (v * v) - v.x() * (u * u)) / twice);
}

/// Offsets about as large as the tolerances of crossings.
double graze(Random& random) {
  static const double offsets[] = {0, 1e-7, 5e-7, 1e-6, 1.5e-6, 2e-6, 3e-6, 4e-6, 1e-5, 1e-3};
  return signedPick(random, pick(random, offsets) * random.uniform(0.99, 1.01));
}

Point squareTo(const Point& d) { return Point(-d.y(), d.x()).unit(); }

/// The line through both points, far beyond them, shifted sideways very slightly.
Segment longLine(Random& random, const Point& a, const Point& b) {
  static const double factors[] = {1, 1, 3, 10, 1000, 1e6};
  const Point d = b - a;
  const Point aside = squareTo(d) * graze(random);
  const Point from = a - d * (pick(random, factors) * random.uniform());
  return {from + aside, b + d * (pick(random, factors) * random.uniform()) + aside};
}

/// A segment along an edge, turned by an angle about as small as the parallel rule's.
Segment nearlyAlong(Random& random, const Segment& edge) {
  static const double turns[] = {0, 5e-13, 9e-13, 1e-12, 1.1e-12, 2e-12, 1e-9, 1e-6};
  const Point d = edge.b - edge.a;
  const Point aside = Point(-d.y(), d.x()) * signedPick(random, pick(random, turns));
  return {edge.a - d * random.uniform(-0.5, 1) - aside,
          edge.b + d * random.uniform(-0.5, 1) + aside};
}

Segment axisParallel(Random& random, const Points& points) {
  const Point through = anyOf(random, points);
  const Point other = anyOf(random, points);
  if (random.chance(0.5)) return {through, {other.x(), through.y()}};
  return {{through.x(), other.y()}, through};
}

Point nearlyAxis(Random& random, const Points& points) {
  return anyOf(random, points) + Point(graze(random), graze(random));
}

}  // namespace

shapes::Shape shape(std::uint64_t seed, std::size_t maxVertices) {
  static const double scales[] = {1e-160, 1e-150, 1e-20, 1e9, 1e12, 1e140, 1e151, 1e152, 1e300};
  shapes::Shape shape = shapes::any(seed, maxVertices);
  Random random(~seed * 3);
  if (random.chance(0.06)) {
    const double scale = pick(random, scales);
    shapes::scaleAndShift(shape.points, scale, {0, 0});
    shape.name += ", times " + std::to_string(std::log10(scale)) + " digits";
  }
  return shape;
}

Point point(Random& random, const Points& points) {
  static const double distances[] = {1e3, 1e6, 1e12, 1e200};
  if (points.empty()) return shapes::queryPoint(random, points);
  switch (random.below(12)) {
    case 0:
    case 1:
      return (anyOf(random, points) + anyOf(random, points)) * 0.5;
    case 2:
      return circumcentre(anyOf(random, points), anyOf(random, points), anyOf(random, points));
    case 3:
      return cornerOf(random, boxOfRun(random, points));
    case 4: {
      const Segment box = boxOfRun(random, points);
      return (box.a + box.b) * 0.5;
    }
    case 5: {
      const Point p = anyOf(random, points);
      return {std::nextafter(p.x(), random.uniform(-1, 1)), p.y()};
    }
    case 6:
      return Point(pick(random, distances), qcRadian(random.uniform(0, 2 * pi)));
    case 7: {
      const Segment edge = anyEdge(random, points);
      return edge.a + squareTo(edge.b - edge.a) * random.uniform(-1, 1);
    }
    case 8:
      return random.chance(0.5) ? Point(0, 0) : Point(640, 480);
    default:
      return shapes::queryPoint(random, points);
  }
}

Segment segment(Random& random, const Points& points) {
  if (points.empty()) return shapes::querySegment(random, points);
  switch (random.below(12)) {
    case 0:
    case 1:
      return longLine(random, anyOf(random, points), anyOf(random, points));
    case 2: {
      const Segment edge = anyEdge(random, points);
      return longLine(random, edge.a, edge.b);
    }
    case 3:
      return nearlyAlong(random, anyEdge(random, points));
    case 4:
      return axisParallel(random, points);
    case 5: {
      const Segment box = boxOfRun(random, points);
      return longLine(random, cornerOf(random, box), cornerOf(random, box));
    }
    case 6: {
      const Point corner = cornerOf(random, boxOfRun(random, points));
      return {corner, cornerOf(random, boxOfRun(random, points))};
    }
    case 7: {
      const Point from = nearlyAxis(random, points);
      return {from, nearlyAxis(random, points)};
    }
    case 8: {
      const Point from = point(random, points);
      return {from, point(random, points)};
    }
    default:
      return shapes::querySegment(random, points);
  }
}

double angle(Random& random, const Points& points) {
  static const double nearZero[] = {0, 1e-15, -1e-15, 1.0000000000000003e-15, 1e-16, -2e-15, 1e-9};
  static const double odd[] = {notANumber, infinity, -infinity, 1e300, 1e-300};
  switch (random.below(8)) {
    case 0:
    case 1: {
      const double quarterTurns = static_cast<double>(random.below(9)) - 4;
      return quarterTurns * (pi / 2) + (random.chance(0.5) ? 0.0 : pick(random, nearZero));
    }
    case 2:
      return (static_cast<double>(random.below(17)) - 8) * (pi / 4);
    case 3:
    case 4: {
      if (points.empty()) return 0;
      const Segment edge = anyEdge(random, points);
      return squareTo(edge.b - edge.a).angle().toDouble();
    }
    case 5:
      return random.chance(0.2) ? pick(random, odd) : random.uniform(-100, 100);
    default:
      return random.uniform(-pi, pi);
  }
}

qcXform<2> xform(Random& random) {
  static const double trifles[] = {0, 1e-15, -1e-15, 1.0000000000000003e-15, 1e-16, 1e-12};
  static const double values[] = {0, 1, -1, 0.5, 3, 1e-9, 1e9, 1e200, notANumber, infinity};
  switch (random.below(6)) {
    case 0:
      return qcXform<2>::I;
    case 1: {
      const double a = pick(random, trifles), b = pick(random, trifles);
      const double x = pick(random, trifles), y = pick(random, trifles);
      return {qcMatrix<2>(1 + a, b, -b, 1 - a), {x, y}};
    }
    case 2: {
      const qcRadian turn(random.uniform(-pi, pi));
      return {qcMatrix<2>(turn, turn, 1, 1), {random.uniform(-100, 100), 0}};
    }
    case 3: {
      const double a = pick(random, values), b = pick(random, values), c = pick(random, values);
      const double d = pick(random, values), x = pick(random, values);
      return {qcMatrix<2>(a, b, c, d), {x, pick(random, values)}};
    }
    default: {
      const double a = random.uniform(-2, 2), b = random.uniform(-2, 2), c = random.uniform(-2, 2);
      return {qcMatrix<2>(a, b, c, random.uniform(-2, 2)), {random.uniform(-9, 9), 7}};
    }
  }
}

double tolerance(Random& random) {
  static const double usual[] = {1e-6, 1e-3, 0.1, 0.5, 1, 2, 10, 50};
  static const double odd[] = {0, -1, notANumber, infinity, 1e-300, 1e300};
  if (random.chance(0.1)) return pick(random, odd);
  return random.chance(0.7) ? pick(random, usual) : std::pow(10.0, random.uniform(-7, 3));
}

}  // namespace hard
