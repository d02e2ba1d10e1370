// SPDX-License-Identifier: MIT
#include <testing/plain/moments.h>

#include <cmath>

namespace plain {

namespace {

Matrix symmetric(double e00, double e11, double e01) {
  return {e00, e01, e01, e11, e11 * e00 - e01 * e01};
}

const Point& before(const Points& points, std::size_t i) {
  return i == 0 ? points.back() : points[i - 1];
}

struct Triangle {
  Point a;
  Point b;
  Point apex;
};

Triangle rotated(const Triangle& t) { return {t.b, t.apex, t.a}; }

bool footOutsideBase(const Triangle& t) {
  const Segment base{t.a, t.b};
  return distToPoint(lineOf(base), t.apex) < distToPoint(base, t.apex) - 1e-10;
}

Triangle withLongestBase(const Triangle& t) {
  Triangle longest = t;
  Triangle candidate = t;
  for (int i = 0; i < 2; ++i) {
    candidate = rotated(candidate);
    if (distance(candidate.a, candidate.b) > distance(longest.a, longest.b)) longest = candidate;
  }
  return longest;
}

// The first rotation whose base contains the foot of its apex; rounding may leave none.
Triangle standing(const Triangle& t) {
  Triangle candidate = t;
  for (int i = 0; i < 3; ++i) {
    if (!footOutsideBase(candidate)) return candidate;
    candidate = rotated(candidate);
  }
  return withLongestBase(t);
}

bool isClockwise(const Triangle& t) {
  return (t.b.x() - t.a.x()) * (t.apex.y() - t.a.y()) -
             (t.b.y() - t.a.y()) * (t.apex.x() - t.a.x()) <
         0.0;
}

Inertia mirroredAcrossBase(const Inertia& t) {
  return {-t.area, Point(t.center.x(), -t.center.y()),
          symmetric(t.matrix.e00, t.matrix.e11, -t.matrix.e01)};
}

// The local body turned so that its x axis lies along `base`, its origin moved to `foot`.
Inertia placed(const Inertia& local, const Point& foot, const Point& base) {
  const double length = len(base);
  const double c = length == 0.0 ? 1.0 : base.x() / length;
  const double s = length == 0.0 ? 0.0 : base.y() / length;
  const double sxx = local.matrix.e00;
  const double syy = local.matrix.e11;
  const double sxy = local.matrix.e01;
  const Point center(foot.x() + c * local.center.x() + -s * local.center.y(),
                     foot.y() + s * local.center.x() + c * local.center.y());
  return {local.area, center,
          symmetric(sxx * (c * c) - 2.0 * s * sxy * c + syy * (s * s),
                    sxx * (s * s) + 2.0 * s * sxy * c + syy * (c * c),
                    (c * c - s * s) * sxy + sxx * s * c - syy * s * c)};
}

}  // namespace

Inertia combine(const Inertia& body, const Inertia& other) {
  const double a1 = body.area;
  const double a2 = other.area;
  if (a1 == 0.0) return other;
  if (a2 == 0.0) return body;
  const Point center =
      std::fabs(a1 + a2) > 1e-16
          ? times(plus(times(body.center, a1), times(other.center, a2)), 1.0 / (a1 + a2))
          : Point(0.0, 0.0);
  const Point d1 = minus(center, body.center);
  const Point d2 = minus(center, other.center);
  const bool sameSign = a1 * a2 > 0.0;
  const bool opposite = a1 * a2 < 0.0;
  const double w1 = sameSign ? std::fabs(a1) : a1;
  const double w2 = sameSign ? std::fabs(a2) : a2;
  const double s1 = opposite && !(a1 > a2) ? -1.0 : 1.0;
  const double s2 = opposite && a1 > a2 ? -1.0 : 1.0;
  const Matrix& m1 = body.matrix;
  const Matrix& m2 = other.matrix;
  return {a1 + a2, center,
          symmetric(s1 * m1.e00 + d1.x() * w1 * d1.x() + s2 * m2.e00 + d2.x() * w2 * d2.x(),
                    d1.y() * w1 * d1.y() + s1 * m1.e11 + s2 * m2.e11 + d2.y() * w2 * d2.y(),
                    s1 * m1.e01 + d1.x() * w1 * d1.y() + s2 * m2.e01 + d2.x() * w2 * d2.y())};
}

double area(const Points& points) {
  double sum = 0.0;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const Point& previous = before(points, i);
    sum += points[i].y() * previous.x() - previous.y() * points[i].x();
  }
  return std::fabs(sum * 0.5);
}

Point triangleCentroid(const Point& a, const Point& b, const Point& c) {
  const Segment fromA{a, times(plus(b, c), 0.5)};
  const Segment fromB{b, times(plus(a, c), 0.5)};
  return intersect(lineOf(fromA), lineOf(fromB));
}

Point centerOfMass(const Points& points) {
  if (points.size() <= 2) return Point(0.0, 0.0);
  double total = 0.0;
  double gx = 0.0;
  double gy = 0.0;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const Point& previous = before(points, i);
    const double w = points[i].y() * previous.x() - previous.y() * points[i].x();
    if (!(std::fabs(w) > 1e-15)) continue;
    const Point g = triangleCentroid(Point(0.0, 0.0), previous, points[i]);
    total += w;
    gx += g.x() * w;
    gy += g.y() * w;
  }
  if (!(std::fabs(total) > 1e-6)) return Point(0.0, 0.0);
  const double r = 1.0 / total;
  return Point(gx * r, gy * r);
}

Inertia baseApexInertia(double u, double v, double h) {
  const double area = (u + v) * h * 0.5;
  const Point center((v - u) * 0.3333333333333333, h * 0.3333333333333333);
  const double x = center.x();
  const double y = center.y();
  const double sxx = (u * u * u + v * v * v) * h * 0.08333333333333333 - x * x * area;
  const double syy = (u + v) * (h * h * h) * 0.08333333333333333 - y * y * area;
  const double sxy = (v * v - u * u) * (h * h) * 0.041666666666666664 - y * x * area;
  return {area, center, symmetric(sxx, syy, sxy)};
}

Inertia triangleInertia(const Point& a, const Point& b, const Point& apex) {
  const Triangle t = standing({a, b, apex});
  const Point foot = proj(lineOf({t.a, t.b}), t.apex);
  Inertia local = baseApexInertia(distance(foot, t.a), distance(foot, t.b), distance(foot, t.apex));
  if (isClockwise(t)) local = mirroredAcrossBase(local);
  return placed(local, foot, minus(t.b, t.a));
}

Inertia polygonInertia(const Points& points) {
  Inertia sum;
  const std::size_t n = points.size();
  if (n < 3) return sum;
  const Point center = centerOfMass(points);
  std::vector<Inertia> fan;
  double mean = 0.0;
  for (std::size_t i = 0; i < n; ++i) {
    fan.push_back(triangleInertia(center, before(points, i), points[i]));
    mean += fan.back().area;
  }
  mean /= static_cast<double>(n);
  const double sliver = mean > 0.0 ? 1e-6 : -1e-6;
  std::vector<bool> used(n, false);
  for (int pass = 1; pass <= 3; ++pass) {
    for (std::size_t i = 0; i < n; ++i) {
      const double a = fan[i].area;
      const bool large = a > mean || (mean < 0.0 && a < mean);
      const bool whole = a > sliver || (sliver < 0.0 && a < sliver);
      if (used[i] || (pass == 1 && !large) || (pass == 2 && !whole)) continue;
      sum = combine(sum, fan[i]);
      used[i] = true;
    }
  }
  return sum;
}

}  // namespace plain
