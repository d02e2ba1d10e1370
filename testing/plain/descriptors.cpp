// SPDX-License-Identifier: MIT
#include <testing/plain/descriptors.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <stdexcept>

#include <testing/plain/error.h>
#include <testing/plain/exact.h>

namespace plain {

namespace {

/// A point or a direction in exact numbers.
struct Exact2 {
  Exact x;
  Exact y;
};

Exact2 exact(const Point& p) { return {p.x(), p.y()}; }
Exact2 from(const Point& a, const Point& b) { return {Exact(b.x()) - a.x(), Exact(b.y()) - a.y()}; }
Exact exactDot(const Exact2& a, const Exact2& b) { return a.x * b.x + a.y * b.y; }
Exact exactCross(const Exact2& a, const Exact2& b) { return a.x * b.y - a.y * b.x; }

bool isBefore(const Point& a, const Point& b) {
  return a.x() < b.x() || (a.x() == b.x() && a.y() < b.y());
}

Points distinct(const Points& points) {
  Points kept;
  for (const Point& p : points) {
    if (std::isnan(p.x()) || std::isnan(p.y())) continue;
    if (std::none_of(kept.begin(), kept.end(), [&](const Point& q) { return same(p, q); })) {
      kept.push_back(p);
    }
  }
  return kept;
}

/// Whether the hull goes from `a` to `b`: every other point lies to the left of that edge or on it.
bool isHullEdge(const Points& points, const Point& a, const Point& b) {
  return std::all_of(points.begin(), points.end(), [&](const Point& p) {
    const Exact2 way = from(a, b);
    const int side = exactCross(way, from(a, p)).sign();
    const Exact along = exactDot(way, from(a, p));
    return side > 0 || (side == 0 && along.sign() >= 0 && along <= exactDot(way, way));
  });
}

/// The rectangle on an edge: the smallest and largest positions along it and the largest across, as
/// multiples of the edge times its squared length.
struct OnEdge {
  Point from{0.0, 0.0};
  Point to{0.0, 0.0};
  Exact least;
  Exact greatest;
  Exact depth;
  Exact squared;
};

std::vector<OnEdge> rectanglesOn(const Points& hull) {
  std::vector<OnEdge> all;
  for (std::size_t i = 0; i < hull.size(); ++i) {
    OnEdge on;
    on.from = hull[i];
    on.to = hull[(i + 1) % hull.size()];
    const Exact2 way = from(on.from, on.to);
    on.squared = exactDot(way, way);
    for (const Point& p : hull) {
      on.least = std::min(on.least, exactDot(way, from(on.from, p)));
      on.greatest = std::max(on.greatest, exactDot(way, from(on.from, p)));
      on.depth = std::max(on.depth, exactCross(way, from(on.from, p)));
    }
    all.push_back(on);
  }
  return all;
}

/// The first of the smallest by `size`, a quotient over the squared edge.
template <class Size>
OnEdge firstSmallest(const std::vector<OnEdge>& all, Size size) {
  OnEdge best = all.front();
  for (const OnEdge& on : all) {
    if (size(on) * best.squared < size(best) * on.squared) best = on;
  }
  return best;
}

/// The angle of a line in (-90, 90].
double lineAngle(Point direction) {
  if (direction.x() < 0.0 || (direction.x() == 0.0 && direction.y() < 0.0)) {
    direction = times(direction, -1.0);
  }
  const double degrees = std::atan2(direction.y(), direction.x()) * 57.29577951308232;
  return degrees <= -90.0 ? 90.0 : degrees;
}

/// The corner at these multiples of the edge, which are given times its squared length and times
/// `divisor`.
Point corner(const OnEdge& on, const Exact& along, const Exact& across, double divisor) {
  const Exact2 way = from(on.from, on.to);
  const Exact denominator = on.squared * divisor;
  const Exact2 start = exact(on.from);
  return {nearest(start.x * denominator + way.x * along - way.y * across, denominator),
          nearest(start.y * denominator + way.y * along + way.x * across, denominator)};
}

struct ExactCircle {
  Exact2 center;
  Exact divisor;
  Exact squaredRadius;
};

/// Whether p is in the circle or on it. The centre is given times the divisor, the squared radius
/// times its square.
bool holds(const ExactCircle& circle, const Point& p) {
  const Exact2 way = {Exact(p.x()) * circle.divisor - circle.center.x,
                      Exact(p.y()) * circle.divisor - circle.center.y};
  return exactDot(way, way) <= circle.squaredRadius;
}

ExactCircle onDiameter(const Point& a, const Point& b) {
  const Exact2 way = from(a, b);
  return {{Exact(a.x()) + b.x(), Exact(a.y()) + b.y()}, 2.0, exactDot(way, way)};
}

/// REQUIRES: a, b, c turn counter-clockwise.
ExactCircle through(const Point& a, const Point& b, const Point& c) {
  const Exact2 u = from(a, b);
  const Exact2 v = from(a, c);
  const Exact divisor = exactCross(u, v) * 2.0;
  const Exact x = v.y * exactDot(u, u) - u.y * exactDot(v, v);
  const Exact y = u.x * exactDot(v, v) - v.x * exactDot(u, u);
  return {{Exact(a.x()) * divisor + x, Exact(a.y()) * divisor + y}, divisor, x * x + y * y};
}

std::vector<ExactCircle> circlesOn(const Points& points) {
  std::vector<ExactCircle> all;
  for (const Point& a : points) {
    for (const Point& b : points) {
      if (!same(a, b)) all.push_back(onDiameter(a, b));
      for (const Point& c : points) {
        if (exactCross(from(a, b), from(a, c)).sign() > 0) all.push_back(through(a, b, c));
      }
    }
  }
  return all;
}

}  // namespace

Points exactHull(const Points& points) {
  const Points all = distinct(points);
  if (all.empty()) throw Error{Error::emptyContour, ""};
  Points hull = {*std::min_element(all.begin(), all.end(), isBefore)};
  for (;;) {
    const auto next = std::find_if(all.begin(), all.end(), [&](const Point& p) {
      return !same(p, hull.back()) && isHullEdge(all, hull.back(), p);
    });
    if (next == all.end() || same(*next, hull.front())) return hull;
    hull.push_back(*next);
  }
}

OrientedRect minimumAreaRect(const Points& points) {
  const Points hull = exactHull(points);
  if (hull.size() == 1) return {hull[0], 0.0, 0.0, 0.0, {hull[0], hull[0], hull[0], hull[0]}};
  const OnEdge on = firstSmallest(rectanglesOn(hull), [](const OnEdge& each) {
    return (each.greatest - each.least) * each.depth;
  });
  const Exact along = on.greatest - on.least;
  OrientedRect rect;
  rect.center = corner(on, on.greatest + on.least, on.depth, 2.0);
  rect.length = nearestRoot(std::max(along, on.depth) * std::max(along, on.depth), on.squared);
  rect.width = nearestRoot(std::min(along, on.depth) * std::min(along, on.depth), on.squared);
  const Point edge = minus(on.to, on.from);
  const Point quarter(-edge.y(), edge.x());
  rect.angle = lineAngle(along >= on.depth ? edge : quarter);
  rect.corners = {corner(on, on.least, 0.0, 1.0), corner(on, on.greatest, 0.0, 1.0),
                  corner(on, on.greatest, on.depth, 1.0), corner(on, on.least, on.depth, 1.0)};
  return rect;
}

Width minimumWidth(const Points& points) {
  const Points hull = exactHull(points);
  if (hull.size() == 1) return {};
  const OnEdge on =
      firstSmallest(rectanglesOn(hull), [](const OnEdge& each) { return each.depth * each.depth; });
  const Point edge = minus(on.to, on.from);
  return {nearestRoot(on.depth * on.depth, on.squared), lineAngle({-edge.y(), edge.x()})};
}

Circle minimumCircle(const Points& points) {
  const Points all = distinct(points);
  if (all.empty()) throw Error{Error::emptyContour, ""};
  if (all.size() == 1) return {all[0], 0.0};
  const ExactCircle* best = nullptr;
  const std::vector<ExactCircle> circles = circlesOn(all);
  for (const ExactCircle& circle : circles) {
    const bool isLarge =
        best != nullptr && circle.squaredRadius * (best->divisor * best->divisor) >=
                               best->squaredRadius * (circle.divisor * circle.divisor);
    if (isLarge) continue;
    if (std::all_of(all.begin(), all.end(), [&](const Point& p) { return holds(circle, p); })) {
      best = &circle;
    }
  }
  if (best == nullptr) throw std::logic_error("no circle holds all points");
  return {{nearest(best->center.x, best->divisor), nearest(best->center.y, best->divisor)},
          nearestRoot(best->squaredRadius, best->divisor * best->divisor)};
}

std::array<double, 7> huMoments(const std::vector<Points>& rings) {
  // The integrals of x^i y^j over the rings, times 2, 6, 12, 24, 20 and 60.
  Exact m2, x6, y6, xx12, yy12, xy24, xxx20, yyy20, xxy60, xyy60;
  for (const Points& ring : rings) {
    if (ring.size() < 3) continue;
    for (std::size_t i = 0; i < ring.size(); ++i) {
      const auto [ax, ay] = exact(ring[i]);
      const auto [bx, by] = exact(ring[(i + 1) % ring.size()]);
      const Exact c = ax * by - ay * bx;
      m2 = m2 + c;
      x6 = x6 + c * (ax + bx);
      y6 = y6 + c * (ay + by);
      xx12 = xx12 + c * (ax * ax + ax * bx + bx * bx);
      yy12 = yy12 + c * (ay * ay + ay * by + by * by);
      xy24 = xy24 + c * (ax * ay * 2.0 + ax * by + bx * ay + bx * by * 2.0);
      xxx20 = xxx20 + c * (ax * ax * ax + ax * ax * bx + ax * bx * bx + bx * bx * bx);
      yyy20 = yyy20 + c * (ay * ay * ay + ay * ay * by + ay * by * by + by * by * by);
      xxy60 = xxy60 + c * (ax * ax * (ay * 3.0 + by) + ax * bx * (ay + by) * 2.0 +
                           bx * bx * (ay + by * 3.0));
      xyy60 = xyy60 + c * (ay * ay * (ax * 3.0 + bx) + ay * by * (ax + bx) * 2.0 +
                           by * by * (ax + bx * 3.0));
    }
  }
  // All of them times 120.
  const Exact m = m2 * 60.0, x = x6 * 20.0, y = y6 * 20.0;
  const Exact xx = xx12 * 10.0, yy = yy12 * 10.0, xy = xy24 * 5.0;
  const Exact xxx = xxx20 * 6.0, yyy = yyy20 * 6.0, xxy = xxy60 * 2.0, xyy = xyy60 * 2.0;
  // About the centre: second moments times m, third ones times m^2, in numbers 120 times as large.
  // Divided once, twice or three times more by the area, they have no unit.
  const Exact mm = m * m;
  const double sign = m.sign() < 0 ? -1.0 : 1.0;
  const auto second = [&](const Exact& value) { return nearest(value * 120.0, mm * m * sign); };
  const double root = sign * nearestRoot(m * sign, 120.0);
  const auto third = [&](const Exact& value) { return nearest(value * 120.0, mm * mm) / root; };
  const double n20 = second(xx * m - x * x);
  const double n02 = second(yy * m - y * y);
  const double n11 = second(xy * m - x * y);
  const double n30 = third(xxx * mm - x * xx * m * 3.0 + x * x * x * 2.0);
  const double n03 = third(yyy * mm - y * yy * m * 3.0 + y * y * y * 2.0);
  const double n21 = third(xxy * mm - x * xy * m * 2.0 - y * xx * m + x * x * y * 2.0);
  const double n12 = third(xyy * mm - y * xy * m * 2.0 - x * yy * m + y * y * x * 2.0);
  const double r = n30 + n12;
  const double s = n21 + n03;
  const double p = n30 - 3.0 * n12;
  const double q = 3.0 * n21 - n03;
  return {n20 + n02,
          (n20 - n02) * (n20 - n02) + 4.0 * n11 * n11,
          p * p + q * q,
          r * r + s * s,
          p * r * (r * r - 3.0 * s * s) + q * s * (3.0 * r * r - s * s),
          (n20 - n02) * (r * r - s * s) + 4.0 * n11 * r * s,
          q * r * (r * r - 3.0 * s * s) - p * s * (3.0 * r * r - s * s)};
}

}  // namespace plain
