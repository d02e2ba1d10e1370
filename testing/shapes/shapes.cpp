// SPDX-License-Identifier: MIT
#include <testing/shapes/shapes.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include <testing/shapes/numbers.h>
#include <testing/shapes/trigonometry.h>

namespace shapes {

namespace {

double real(std::size_t value) { return static_cast<double>(value); }

Point polar(const Point& center, double radius, double angle) {
  return Point(center.x() + radius * cosine(angle), center.y() + radius * sine(angle));
}

Point shifted(const Point& p, double dx, double dy) { return Point(p.x() + dx, p.y() + dy); }

// The point at fraction t from a to b.
Point between(const Point& a, const Point& b, double t) {
  return Point(a.x() + (b.x() - a.x()) * t, a.y() + (b.y() - a.y()) * t);
}

template <class T, std::size_t N>
const T& pick(Random& random, const T (&choices)[N]) {
  return choices[random.below(N)];
}

double sign(Random& random) { return random.chance(0.5) ? 1.0 : -1.0; }

double farOffset(Random& random) {
  static const double offsets[] = {0.0, 1.0, 1e3, 1e6, 1e9};
  const double side = sign(random);
  return side * pick(random, offsets);
}

// One draw per expression throughout: the order of two would depend on the compiler.

// Distances around the tolerances of the library.
double tinyOffset(Random& random) {
  static const double offsets[] = {1e-5, 2e-6, 1e-6, 1e-6 * (1 + 1e-9), 1e-6 * (1 - 1e-9), 5e-7,
                                   1e-7, 1e-9, 1e-15};
  const double side = sign(random);
  return side * pick(random, offsets);
}

struct Extent {
  double minX = 0.0;
  double minY = 0.0;
  double maxX = 1.0;
  double maxY = 1.0;
};

// The extent of the finite points; the unit square if there are none.
Extent extentOf(const Points& points) {
  Extent e{infinity, infinity, -infinity, -infinity};
  for (const Point& p : points) {
    if (!std::isfinite(p.x()) || !std::isfinite(p.y())) continue;
    e = {std::min(e.minX, p.x()), std::min(e.minY, p.y()), std::max(e.maxX, p.x()),
         std::max(e.maxY, p.y())};
  }
  return e.minX <= e.maxX ? e : Extent();
}

Point uniformIn(Random& random, const Extent& e) {
  const double x = random.uniform(e.minX, e.maxX);
  return Point(x, random.uniform(e.minY, e.maxY));
}

double distance(double dx, double dy) { return std::sqrt(dx * dx + dy * dy); }

double diagonal(const Extent& e) { return distance(e.maxX - e.minX, e.maxY - e.minY); }

// Two points on opposite sides of the box.
Segment acrossBox(Random& random, const Extent& e) {
  if (random.chance(0.5)) {
    const double y = random.uniform(e.minY, e.maxY);
    return {Point(e.minX, y), Point(e.maxX, random.uniform(e.minY, e.maxY))};
  }
  const double x = random.uniform(e.minX, e.maxX);
  return {Point(x, e.minY), Point(random.uniform(e.minX, e.maxX), e.maxY)};
}

Segment shortFrom(Random& random, const Point& start, double length) {
  return {start, polar(start, length, random.uniform(0.0, 2.0 * pi))};
}

const Point& anyVertex(Random& random, const Points& points) {
  return points[random.below(points.size())];
}

Segment anyEdge(Random& random, const Points& points) {
  const std::size_t i = random.below(points.size());
  return {points[i == 0 ? points.size() - 1 : i - 1], points[i]};
}

Point onEdge(Random& random, const Points& points) {
  static const double fractions[] = {0.0, 0.25, 0.5, 1.0};
  const Segment edge = anyEdge(random, points);
  return between(edge.a, edge.b, random.chance(0.5) ? pick(random, fractions) : random.uniform());
}

Point besideEdge(Random& random, const Points& points) {
  const Segment edge = anyEdge(random, points);
  const double length = distance(edge.b.x() - edge.a.x(), edge.b.y() - edge.a.y());
  const double offset = tinyOffset(random);
  if (!(length > 0.0)) return shifted(edge.a, offset, 0.0);
  return shifted(between(edge.a, edge.b, random.uniform()),
                 -(edge.b.y() - edge.a.y()) / length * offset,
                 (edge.b.x() - edge.a.x()) / length * offset);
}

Point besideVertex(Random& random, const Points& points) {
  const Point vertex = anyVertex(random, points);
  const double offset = tinyOffset(random);
  return polar(vertex, offset, random.uniform(0.0, 2.0 * pi));
}

Point onBorder(Random& random, const Extent& e) {
  const double x = random.uniform(e.minX, e.maxX);
  const double y = random.uniform(e.minY, e.maxY);
  switch (random.below(5)) {
    case 0:
      return Point(e.minX, y);
    case 1:
      return Point(e.maxX, y);
    case 2:
      return Point(x, e.minY);
    case 3:
      return Point(x, e.maxY);
    default: {
      const double side = random.chance(0.5) ? e.minX : e.maxX;
      return Point(side, random.chance(0.5) ? e.minY : e.maxY);
    }
  }
}

double badNumber(Random& random) {
  static const double bad[] = {std::numeric_limits<double>::quiet_NaN(), infinity, -infinity,
                               std::numeric_limits<double>::max(), 1e200};
  return pick(random, bad);
}

void spoilCoordinate(Random& random, Point& p) {
  const double bad = badNumber(random);
  p = random.chance(0.5) ? Point(bad, p.y()) : Point(p.x(), bad);
}

void insertBefore(Points& points, std::size_t i, const Point& p) {
  points.insert(points.begin() + static_cast<std::ptrdiff_t>(i), p);
}

// How many vertices a change may add: a few, but never beyond `maxVertices`.
std::size_t additions(Random& random, const Points& points, std::size_t maxVertices) {
  if (points.empty() || points.size() >= maxVertices) return 0;
  return std::min(maxVertices - points.size(), 1 + random.below(1 + points.size() / 4));
}

// One long side of a tooth, with `spare` vertices between its two corners, from the bar to the tip.
Points toothSide(Random& random, const Point& bar, const Point& tip, std::size_t spare, double w) {
  Points side{bar};
  for (std::size_t j = 1; j <= spare; ++j) {
    const double f = real(j) / real(spare + 1);
    const double shift = 0.08 * w * sine(40.0 * f) + 0.01 * w * (random.uniform() - 0.5);
    side.push_back(shifted(between(bar, tip, f), shift, 0.0));
  }
  side.push_back(tip);
  return side;
}

void append(Points& points, const Points& more) {
  points.insert(points.end(), more.begin(), more.end());
}

using Named = std::pair<std::string, Points>;

std::size_t atLeast(std::size_t n, std::size_t least) { return std::max(n, least); }

Named simpleShape(Random& random, std::size_t n) {
  switch (random.below(6)) {
    case 0:
      return {"smooth star", smoothStar(n, random.next())};
    case 1:
      return {"spiky star", spikyStar(n, random.next())};
    case 2:
      return {"comb", comb(atLeast(n, 10), random.next())};
    case 3:
      return {"regular polygon", regularPolygon(n, 100.0, Point(10.0, -20.0))};
    case 4:
      return {"spiral", spiral(n, random.uniform(0.5, 4.0))};
    default:
      return {"skyline", skyline(random, n)};
  }
}

Named crossingShape(Random& random, std::size_t n) {
  switch (random.below(6)) {
    case 0:
      return {"crossing star", crossingStar(n, random.next())};
    case 1:
      return {"star polygon", starPolygon(n, 1 + random.below(atLeast(n, 1)), 50.0)};
    case 2:
      return {"closed walk", closedWalk(random, n)};
    case 3:
      return {"cloud", cloud(random, n)};
    default: {
      const unsigned p = 1 + static_cast<unsigned>(random.below(4));
      const unsigned q = 1 + static_cast<unsigned>(random.below(4));
      return {"lissajous", lissajous(n, p, q, random.uniform(0.0, pi))};
    }
  }
}

Named degenerateShape(Random& random, std::size_t n) {
  switch (random.below(6)) {
    case 0:
      return {"collinear", collinear(random, n)};
    case 1:
      return {"all equal", allEqual(random, n)};
    case 2:
    case 3:
      return {"grid walk", gridWalk(random, n)};
    default:
      return {"grid points", gridPoints(random, n, 2 + random.below(8))};
  }
}

Named baseShape(Random& random, std::size_t n) {
  switch (random.below(3)) {
    case 0:
      return simpleShape(random, n);
    case 1:
      return crossingShape(random, n);
    default:
      return degenerateShape(random, n);
  }
}

// Mostly small, sometimes tiny, sometimes all that is allowed.
std::size_t vertexCount(Random& random, std::size_t maxVertices) {
  const std::size_t small = std::min<std::size_t>(maxVertices, 40);
  if (random.chance(0.1)) return random.below(std::min<std::size_t>(maxVertices, 5) + 1);
  if (random.chance(0.7)) return random.below(small + 1);
  return random.below(maxVertices + 1);
}

void changeVertices(Random& random, Shape& shape, std::size_t maxVertices) {
  if (random.chance(0.15)) {
    repeatVertices(random, shape.points, maxVertices);
    shape.name += ", repeated vertices";
  }
  if (random.chance(0.15)) {
    addNearVertices(random, shape.points, maxVertices);
    shape.name += ", near vertices";
  }
  if (random.chance(0.15)) {
    addVerticesOnEdges(random, shape.points, maxVertices);
    shape.name += ", vertices on edges";
  }
  if (random.chance(0.3)) {
    std::reverse(shape.points.begin(), shape.points.end());
    shape.name += ", reversed";
  }
}

void changePlace(Random& random, Shape& shape) {
  static const double scales[] = {1e-9, 1e-6, 1e-3, 0.1, 1e3, 1e6, 1e9, 1e12};
  if (random.chance(0.3)) {
    rotate(shape.points, random.uniform(0.0, 2.0 * pi));
    shape.name += ", turned";
  }
  if (random.chance(0.25)) {
    const double scale = pick(random, scales);
    const double dx = farOffset(random);
    scaleAndShift(shape.points, scale, Point(dx, farOffset(random)));
    shape.name += ", scaled and shifted";
  }
}

}  // namespace

std::uint64_t Random::next() {
  state_ += 0x9e3779b97f4a7c15u;
  std::uint64_t z = state_;
  z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9u;
  z = (z ^ (z >> 27)) * 0x94d049bb133111ebu;
  return z ^ (z >> 31);
}

double Random::uniform() { return static_cast<double>(next() >> 11) * 0x1p-53; }

double Random::uniform(double low, double high) { return low + (high - low) * uniform(); }

std::size_t Random::below(std::size_t count) {
  return static_cast<std::size_t>(next() % static_cast<std::uint64_t>(count));
}

Points smoothStar(std::size_t n, std::uint64_t seed) {
  Random random(seed);
  Points points;
  const double roughness = std::min(2.0 * pi * 500.0 / real(n), 20.0);
  for (std::size_t i = 0; i < n; ++i) {
    const double t = 2.0 * pi * real(i) / real(n);
    const double wave = 1.0 + 0.08 * cosine(5.0 * t + 1.0) + 0.04 * cosine(17.0 * t + 2.0);
    const double radius = 450.0 * wave + 0.8 * (random.uniform() - 0.5) * roughness;
    points.push_back(polar(Point(640.0, 480.0), radius, t));
  }
  return points;
}

Points spikyStar(std::size_t n, std::uint64_t seed) {
  Random random(seed);
  Points points;
  for (std::size_t i = 0; i < n; ++i) {
    const double radius = 500.0 * (0.9 + 0.2 * (random.uniform() - 0.5));
    points.push_back(polar(Point(640.0, 480.0), radius, 2.0 * pi * real(i) / real(n)));
  }
  return points;
}

Points comb(std::size_t n, std::uint64_t seed) {
  constexpr double left = 140.0, right = 1140.0, tip = 30.0, bar = 870.0, top = 930.0;
  Random random(seed);
  const std::size_t teeth = std::clamp<std::size_t>(n / 8, 2, 16);
  const double w = (right - left) / real(2 * teeth - 1);
  const std::size_t sides = 2 * teeth;
  const std::size_t corners = 4 * teeth + 2;
  const std::size_t spare = n > corners ? n - corners : 0;
  Points points{Point(right, top), Point(left, top)};
  for (std::size_t k = 0; k < sides; ++k) {
    const double x = left + w * real(k);
    const std::size_t count = spare / sides + (k < spare % sides ? 1 : 0);
    Points side = toothSide(random, Point(x, bar), Point(x, tip), count, w);
    if (k % 2 == 1) std::reverse(side.begin(), side.end());
    append(points, side);
  }
  return points;
}

Points crossingStar(std::size_t n, std::uint64_t seed) {
  Points points = smoothStar(n, seed);
  for (std::size_t i = 0; i + 1 < n; i += 10) std::swap(points[i], points[i + 1]);
  return points;
}

Points regularPolygon(std::size_t n, double radius, const Point& center) {
  Points points;
  for (std::size_t i = 0; i < n; ++i) {
    points.push_back(polar(center, radius, 2.0 * pi * real(i) / real(n)));
  }
  return points;
}

Points starPolygon(std::size_t n, std::size_t stride, double radius) {
  const Points corners = regularPolygon(n, radius, Point(0.0, 0.0));
  Points points;
  for (std::size_t i = 0; i < n; ++i) points.push_back(corners[i * stride % n]);
  return points;
}

Points spiral(std::size_t n, double turns) {
  const std::size_t outward = (n + 1) / 2;
  const auto arm = [turns](double fraction, double offset) {
    const double angle = 2.0 * pi * turns * fraction;
    return polar(Point(0.0, 0.0), 10.0 + offset + 10.0 * turns * fraction, angle);
  };
  Points points;
  for (std::size_t i = 0; i < outward; ++i) points.push_back(arm(real(i) / real(outward), 4.0));
  for (std::size_t i = n - outward; i-- > 0;) points.push_back(arm(real(i) / real(outward), 0.0));
  return points;
}

Points gridWalk(Random& random, std::size_t n) {
  static const double steps[][2] = {{1.0, 0.0}, {-1.0, 0.0}, {0.0, 1.0}, {0.0, -1.0}};
  Points points;
  Point p(0.0, 0.0);
  for (std::size_t i = 0; i < n; ++i) {
    points.push_back(p);
    const auto& step = pick(random, steps);
    p = shifted(p, step[0], step[1]);
  }
  return points;
}

Points gridPoints(Random& random, std::size_t n, std::size_t size) {
  Points points;
  for (std::size_t i = 0; i < n; ++i) {
    const double x = real(random.below(size));
    points.push_back(Point(x, real(random.below(size))));
  }
  return points;
}

Points skyline(Random& random, std::size_t n) {
  const std::size_t columns = n / 2;
  Points points;
  for (std::size_t i = 0; i + 1 < columns; ++i) {
    const double height = 1.0 + real(random.below(9));
    points.push_back(Point(real(i), height));
    points.push_back(Point(real(i + 1), height));
  }
  std::reverse(points.begin(), points.end());
  points.push_back(Point(0.0, 0.0));
  for (std::size_t i = points.size(); i < n; ++i) {
    points.push_back(Point(real(columns == 0 ? 0 : columns - 1) * real(i + 1) / real(n), 0.0));
  }
  points.resize(n);
  return points;
}

Points closedWalk(Random& random, std::size_t n) {
  Points points;
  Point p(0.0, 0.0);
  for (std::size_t i = 0; i < n; ++i) {
    points.push_back(p);
    const double length = random.uniform(0.0, 10.0);
    p = polar(p, length, random.uniform(0.0, 2.0 * pi));
  }
  for (std::size_t i = 0; i < n; ++i) {
    const double fraction = real(i) / real(n);
    points[i] = shifted(points[i], -p.x() * fraction, -p.y() * fraction);
  }
  return points;
}

Points cloud(Random& random, std::size_t n) {
  Points points;
  for (std::size_t i = 0; i < n; ++i) {
    points.push_back(uniformIn(random, {-100.0, -100.0, 100.0, 100.0}));
  }
  return points;
}

Points lissajous(std::size_t n, unsigned p, unsigned q, double phase) {
  Points points;
  for (std::size_t i = 0; i < n; ++i) {
    const double t = 2.0 * pi * real(i) / real(n);
    points.push_back(Point(80.0 * cosine(p * t + phase), 60.0 * sine(q * t)));
  }
  return points;
}

Points collinear(Random& random, std::size_t n) {
  const Point start = uniformIn(random, {-10.0, -10.0, 10.0, 10.0});
  const double dx = real(random.below(4));
  const double dy = random.chance(0.5) ? real(random.below(4)) : random.uniform(-1.0, 1.0);
  Points points;
  for (std::size_t i = 0; i < n; ++i) {
    const double t = real(random.below(20));
    points.push_back(shifted(start, dx * t, dy * t));
  }
  return points;
}

Points allEqual(Random& random, std::size_t n) {
  return Points(n, uniformIn(random, {-10.0, -10.0, 10.0, 10.0}));
}

void repeatVertices(Random& random, Points& points, std::size_t maxVertices) {
  for (std::size_t k = additions(random, points, maxVertices); k > 0; --k) {
    const std::size_t i = random.below(points.size());
    const std::size_t where = random.chance(0.5) ? i : random.below(points.size() + 1);
    insertBefore(points, where, Point(points[i]));
  }
}

void addNearVertices(Random& random, Points& points, std::size_t maxVertices) {
  for (std::size_t k = additions(random, points, maxVertices); k > 0; --k) {
    const std::size_t where = random.below(points.size() + 1);
    insertBefore(points, where, besideVertex(random, points));
  }
}

void addVerticesOnEdges(Random& random, Points& points, std::size_t maxVertices) {
  for (std::size_t k = additions(random, points, maxVertices); k > 0; --k) {
    const bool exactly = random.chance(0.5);
    const Point p = exactly ? onEdge(random, points) : besideEdge(random, points);
    insertBefore(points, random.below(points.size() + 1), p);
  }
}

void rotate(Points& points, double angle) {
  const double c = cosine(angle);
  const double s = sine(angle);
  for (Point& p : points) p = Point(c * p.x() - s * p.y(), s * p.x() + c * p.y());
}

void scaleAndShift(Points& points, double scale, const Point& shift) {
  for (Point& p : points) p = Point(p.x() * scale + shift.x(), p.y() * scale + shift.y());
}

void spoil(Random& random, Points& points) {
  if (points.empty()) return;
  for (std::size_t k = 1 + random.below(3); k > 0; --k) {
    spoilCoordinate(random, points[random.below(points.size())]);
  }
}

Shape anyFinite(std::uint64_t seed, std::size_t maxVertices) {
  Random random(seed);
  Named base = baseShape(random, vertexCount(random, maxVertices));
  Shape shape{base.first, base.second, random.chance(0.75)};
  if (shape.points.size() > maxVertices) shape.points.resize(maxVertices);
  changeVertices(random, shape, maxVertices);
  changePlace(random, shape);
  shape.name += (shape.closed ? ", closed, seed " : ", open, seed ") + std::to_string(seed);
  return shape;
}

Shape any(std::uint64_t seed, std::size_t maxVertices) {
  Shape shape = anyFinite(seed, maxVertices);
  Random random(~seed);
  if (random.chance(0.08)) {
    spoil(random, shape.points);
    shape.name += ", spoiled";
  }
  return shape;
}

Point queryPoint(Random& random, const Points& points) {
  const Extent e = extentOf(points);
  if (points.empty() || random.chance(0.35)) return uniformIn(random, e);
  switch (random.below(20)) {
    case 0:
    case 1:
    case 2:
      return anyVertex(random, points);
    case 3:
    case 4:
    case 5:
      return besideVertex(random, points);
    case 6:
    case 7:
    case 8:
      return onEdge(random, points);
    case 9:
    case 10:
    case 11:
    case 12:
      return besideEdge(random, points);
    case 13:
    case 14:
    case 15:
      return onBorder(random, e);
    case 16:
    case 17: {
      const Point p = uniformIn(random, e);
      return Point(std::round(p.x()), std::round(p.y()));
    }
    case 18:
      return polar(Point(e.minX, e.minY), 3.0 * diagonal(e), random.uniform(0.0, 2.0 * pi));
    default: {
      Point p = uniformIn(random, e);
      if (random.chance(0.25)) spoilCoordinate(random, p);
      return p;
    }
  }
}

Segment querySegment(Random& random, const Points& points) {
  const Extent e = extentOf(points);
  if (points.empty()) return acrossBox(random, e);
  switch (random.below(8)) {
    case 0:
      return shortFrom(random, uniformIn(random, e), 0.01 * diagonal(e));
    case 1:
      return acrossBox(random, e);
    case 2:
      return anyEdge(random, points);
    case 3: {
      const Segment edge = anyEdge(random, points);
      const double from = random.uniform(-0.5, 1.0);
      return {between(edge.a, edge.b, from), between(edge.a, edge.b, random.uniform(0.0, 1.5))};
    }
    case 4: {
      const Point a = anyVertex(random, points);
      return {a, anyVertex(random, points)};
    }
    case 5: {
      const Point a = queryPoint(random, points);
      return {a, random.chance(0.05) ? a : queryPoint(random, points)};
    }
    case 6: {
      const Point a = onEdge(random, points);
      return {a, uniformIn(random, e)};
    }
    default: {
      const Point a = queryPoint(random, points);
      return random.chance(0.5) ? Segment{a, besideEdge(random, points)}
                                : Segment{a, besideVertex(random, points)};
    }
  }
}

Points pointsInBox(const Points& points, std::size_t count, std::uint64_t seed) {
  Random random(seed);
  const Extent e = extentOf(points);
  Points result;
  for (std::size_t i = 0; i < count; ++i) result.push_back(uniformIn(random, e));
  return result;
}

std::vector<Segment> shortSegments(const Points& points, std::size_t count, std::uint64_t seed) {
  Random random(seed);
  const Extent e = extentOf(points);
  std::vector<Segment> result;
  for (std::size_t i = 0; i < count; ++i) {
    result.push_back(shortFrom(random, uniformIn(random, e), 0.01 * diagonal(e)));
  }
  return result;
}

std::vector<Segment> longSegments(const Points& points, std::size_t count, std::uint64_t seed) {
  Random random(seed);
  const Extent e = extentOf(points);
  std::vector<Segment> result;
  for (std::size_t i = 0; i < count; ++i) result.push_back(acrossBox(random, e));
  return result;
}

}  // namespace shapes
