// SPDX-License-Identifier: MIT
#include <testing/plain/extents.h>

#include <cmath>
#include <limits>

#include <testing/plain/error.h>

namespace plain {

namespace {

bool isIdentity(const Transform& t) {
  const auto is = [](double a, double b) { return std::fabs(a - b) <= 1e-15; };
  return realEq(t.translation, Point(0.0, 0.0), 1e-15) && is(t.matrix.e00, 1.0) &&
         is(t.matrix.e01, 0.0) && is(t.matrix.e10, 0.0) && is(t.matrix.e11, 1.0);
}

// How far `p` lies along `d`.
double reach(const Point& d, const Point& p) {
  if (realEq(d, Point(1.0, 0.0), 1e-15)) return p.x();
  if (realEq(d, Point(-1.0, 0.0), 1e-15)) return -p.x();
  if (realEq(d, Point(0.0, 1.0), 1e-15)) return p.y();
  if (realEq(d, Point(0.0, -1.0), 1e-15)) return -p.y();
  return d.y() * p.y() + d.x() * p.x();
}

}  // namespace

Transform identity() { return {{1.0, 0.0, 0.0, 1.0, 1.0}, Point(0.0, 0.0)}; }

Point map(const Transform& t, const Point& p) {
  return Point((t.matrix.e00 * p.x() + t.matrix.e01 * p.y()) + t.translation.x(),
               (t.matrix.e10 * p.x() + t.matrix.e11 * p.y()) + t.translation.y());
}

long extremalVertexIndex(const Contour& contour, double angle) {
  checkEmptyContour(contour);
  const Point d(std::cos(angle), std::sin(angle));
  double best = std::numeric_limits<double>::lowest();
  long index = -1;
  for (std::size_t i = 0; i < contour.points.size(); ++i) {
    const double value = reach(d, contour.points[i]);
    if (value > best) {
      best = value;
      index = static_cast<long>(i);
    }
  }
  return index;
}

Point extremalVertexPosition(const Contour& contour, double angle) {
  const long index = extremalVertexIndex(contour, angle);
  if (index < 0) throw Error{Error::badParams, ""};
  return contour.points[static_cast<std::size_t>(index)];
}

Box encloseRect(const Contour& contour, const Transform& transform) {
  checkEmptyContour(contour);
  const Points mapped = isIdentity(transform) ? contour.points : map(contour, transform).points;
  Box box = boxOf(mapped.front());
  for (const Point& p : mapped) box = enclose(box, boxOf(p));
  return box;
}

Contour map(const Contour& contour, const Transform& transform) {
  Contour result{{}, contour.closed};
  for (const Point& p : contour.points) result.points.push_back(map(transform, p));
  return result;
}

}  // namespace plain
