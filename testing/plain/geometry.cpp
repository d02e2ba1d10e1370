// SPDX-License-Identifier: MIT
#include <testing/plain/geometry.h>

#include <cmath>

namespace plain {

Point plus(const Point& a, const Point& b) { return Point(a.x() + b.x(), a.y() + b.y()); }

Point minus(const Point& a, const Point& b) { return Point(a.x() - b.x(), a.y() - b.y()); }

Point times(const Point& a, double factor) { return Point(a.x() * factor, a.y() * factor); }

double dot(const Point& a, const Point& b) { return a.x() * b.x() + a.y() * b.y(); }

double cross(const Point& a, const Point& b) { return a.x() * b.y() - a.y() * b.x(); }

double len(const Point& a) { return std::sqrt(a.x() * a.x() + a.y() * a.y()); }

double distance(const Point& a, const Point& b) { return len(minus(a, b)); }

Point unit(const Point& a) {
  const double length = len(a);
  return length == 0.0 ? Point(0.0, 0.0) : Point(a.x() / length, a.y() / length);
}

bool same(const Point& a, const Point& b) { return a.x() == b.x() && a.y() == b.y(); }

bool realEq(const Point& a, const Point& b, double eps) {
  return std::fabs(a.x() - b.x()) <= eps && std::fabs(a.y() - b.y()) <= eps;
}

double norm(double angle) {
  constexpr double fullTurn = 2.0 * 3.141592653589793;
  double result = std::fmod(angle, fullTurn);
  if (result < 0.0) result += fullTurn;
  return result >= fullTurn ? 0.0 : result;
}

bool nanLast(double a, double b) { return std::isnan(a) ? false : std::isnan(b) || a < b; }

Point proj(const Line& line, const Point& p) {
  const double square = dot(line.dir, line.dir);
  if (square == 0.0) return line.pos;
  return plus(line.pos, times(line.dir, dot(minus(p, line.pos), line.dir) / square));
}

double distToPoint(const Line& line, const Point& p) {
  const double length = len(line.dir);
  if (length == 0.0) return distance(p, line.pos);
  return std::fabs(cross(line.dir, minus(p, line.pos))) / length;
}

bool isParallel(const Line& first, const Line& second) {
  return std::fabs(cross(first.dir, second.dir)) <= 1e-12 * len(first.dir) * len(second.dir);
}

Point intersect(const Line& first, const Line& second) {
  const double c = cross(first.dir, second.dir);
  if (c == 0.0) return proj(first, second.pos);
  return plus(first.pos, times(first.dir, cross(minus(second.pos, first.pos), second.dir) / c));
}

Line lineOf(const Segment& segment) { return {segment.a, minus(segment.b, segment.a)}; }

double distToPoint(const Segment& segment, const Point& p) {
  const Point d = minus(segment.b, segment.a);
  const double t = dot(minus(p, segment.a), d) / dot(d, d);
  if (!(t > 0.0)) return distance(p, segment.a);
  if (t >= 1.0) return distance(p, segment.b);
  return distance(p, plus(segment.a, times(d, t)));
}

Point nearestPoint(const Segment& segment, const Point& p) {
  const Point d = minus(segment.b, segment.a);
  const double t = dot(minus(p, segment.a), d) / dot(d, d);
  if (!(t > 0.0)) return segment.a;
  if (t >= 1.0) return segment.b;
  return proj(lineOf(segment), p);
}

bool operator==(const Box& a, const Box& b) {
  return a.minX == b.minX && a.minY == b.minY && a.maxX == b.maxX && a.maxY == b.maxY;
}

Box boxOf(const Point& p) { return {p.x(), p.y(), p.x(), p.y()}; }

Box enclose(const Box& a, const Box& b) {
  return {b.minX < a.minX ? b.minX : a.minX, b.minY < a.minY ? b.minY : a.minY,
          b.maxX > a.maxX ? b.maxX : a.maxX, b.maxY > a.maxY ? b.maxY : a.maxY};
}

Box boxOf(const Segment& segment) { return enclose(boxOf(segment.a), boxOf(segment.b)); }

bool within(const Box& box, const Point& p) {
  return box.minX <= p.x() && p.x() <= box.maxX && box.minY <= p.y() && p.y() <= box.maxY;
}

bool overlap(const Box& box, const Box& other) {
  return box.maxX >= other.minX && !(box.minX > other.maxX) &&  //
         box.maxY >= other.minY && !(box.minY > other.maxY);
}

}  // namespace plain
