// SPDX-License-Identifier: MIT
//
// Filled sets by their definition.

#include <testing/plain/filled.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace plain {
namespace {

struct Side {
  Point from;
  Point to;
};

std::vector<Points> ringsOf(const Parts& parts) {
  std::vector<Points> rings;
  for (const Part& part : parts) {
    rings.push_back(part.outline);
    rings.insert(rings.end(), part.holes.begin(), part.holes.end());
  }
  return rings;
}

std::vector<Side> sidesOf(const Points& ring) {
  std::vector<Side> sides;
  for (std::size_t i = 0; i < ring.size(); ++i)
    sides.push_back({ring[i], ring[(i + 1) % ring.size()]});
  return sides;
}

std::vector<Side> sidesOf(const Parts& parts) {
  std::vector<Side> all;
  for (const Points& ring : ringsOf(parts)) {
    const std::vector<Side> sides = sidesOf(ring);
    all.insert(all.end(), sides.begin(), sides.end());
  }
  return all;
}

double distanceToSide(const Side& side, const Point& p) {
  const Point along = minus(side.to, side.from);
  const double square = dot(along, along);
  double t = square > 0.0 ? dot(minus(p, side.from), along) / square : 0.0;
  t = std::min(std::max(t, 0.0), 1.0);
  return distance(p, plus(side.from, times(along, t)));
}

/// Adds the abscissa where two sides cross, if they do.
void addCrossing(const Side& a, const Side& b, std::vector<double>& xs) {
  const Point alongA = minus(a.to, a.from);
  const Point alongB = minus(b.to, b.from);
  const double c = cross(alongA, alongB);
  if (c == 0.0) return;
  const double t = cross(minus(b.from, a.from), alongB) / c;
  const double u = cross(minus(b.from, a.from), alongA) / c;
  if (t >= 0.0 && t <= 1.0 && u >= 0.0 && u <= 1.0) xs.push_back(a.from.x() + t * alongA.x());
}

std::vector<double> stripBorders(const Parts& parts) {
  const std::vector<Side> sides = sidesOf(parts);
  std::vector<double> xs;
  for (std::size_t i = 0; i < sides.size(); ++i) {
    xs.push_back(sides[i].from.x());
    for (std::size_t j = 0; j < i; ++j) addCrossing(sides[i], sides[j], xs);
  }
  std::sort(xs.begin(), xs.end());
  return xs;
}

double heightAt(const Side& side, double x) {
  const double t = (x - side.from.x()) / (side.to.x() - side.from.x());
  return side.from.y() + t * (side.to.y() - side.from.y());
}

/// The heights at which sides meet the vertical line at x, ascending.
std::vector<double> heightsAt(const Parts& parts, double x) {
  std::vector<double> heights;
  for (const Side& side : sidesOf(parts))
    if ((side.from.x() < x) != (side.to.x() < x)) heights.push_back(heightAt(side, x));
  std::sort(heights.begin(), heights.end());
  return heights;
}

}  // namespace

int windingNumber(const Points& ring, const Point& p) {
  int count = 0;
  for (const Side& side : sidesOf(ring)) {
    const double area = cross(minus(side.to, side.from), minus(p, side.from));
    if (side.from.y() <= p.y() && side.to.y() > p.y() && area > 0.0) ++count;
    if (side.from.y() > p.y() && side.to.y() <= p.y() && area < 0.0) --count;
  }
  return count;
}

bool fills(const Parts& parts, Rule rule, const Point& p) {
  if (rule == Rule::evenOdd) {
    int sum = 0;
    for (const Points& ring : ringsOf(parts)) sum += windingNumber(ring, p);
    return sum % 2 != 0;
  }
  for (const Part& part : parts) {
    bool filled = windingNumber(part.outline, p) != 0;
    for (const Points& hole : part.holes) filled = filled && windingNumber(hole, p) == 0;
    if (filled) return true;
  }
  return false;
}

double distanceToRings(const Parts& parts, const Point& p) {
  double least = std::numeric_limits<double>::infinity();
  for (const Side& side : sidesOf(parts)) least = std::min(least, distanceToSide(side, p));
  return least;
}

double filledArea(const Parts& parts, Rule rule) {
  const std::vector<double> xs = stripBorders(parts);
  double area = 0.0;
  for (std::size_t i = 1; i < xs.size(); ++i) {
    if (xs[i] == xs[i - 1]) continue;
    // Within a strip no side ends or crosses another, so the heights in its middle give its area.
    const double x = 0.5 * (xs[i - 1] + xs[i]);
    const std::vector<double> ys = heightsAt(parts, x);
    for (std::size_t k = 1; k < ys.size(); ++k)
      if (fills(parts, rule, {x, 0.5 * (ys[k - 1] + ys[k])}))
        area += (xs[i] - xs[i - 1]) * (ys[k] - ys[k - 1]);
  }
  return area;
}

}  // namespace plain
