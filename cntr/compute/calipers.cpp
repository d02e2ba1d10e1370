// SPDX-License-Identifier: MIT
//
// Sizes are compared in up to three ways: as intervals of doubles, to twice the digits of a double,
// and exactly. Each is used only where the one before did not decide.

#include <cntr/compute/calipers.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include <cntr/plane/expansion.h>
#include <cntr/plane/orientation.h>

namespace cntr::compute {

namespace {

using plane::Expansion;
using plane::Twofold;
using Point = qcVector<2>;
using Hull = std::span<const Point>;

std::size_t following(Hull hull, std::size_t i) noexcept {
  return i + 1 == hull.size() ? 0 : i + 1;
}

/// Calls visit(caliper) for every edge, from vertex 0 on.
template <class Visit>
void forEachCaliper(Hull hull, Visit visit) {
  Caliper at{0, 0, 0, 1, 1};
  // The sign of the step from vertex i in the direction of the edge.
  const auto ahead = [&](std::size_t i) {
    return plane::dotSign(hull[at.from], hull[at.to], hull[i], hull[following(hull, i)]);
  };
  const auto rises = [&](std::size_t i) {
    const Point& next = hull[following(hull, i)];
    return plane::crossSign(hull[at.from], hull[at.to], hull[i], next) > 0;
  };
  for (at.from = 0; at.from < hull.size(); ++at.from) {
    at.to = following(hull, at.from);
    if (at.front == at.from) at.front = at.to;
    while (ahead(at.front) > 0) at.front = following(hull, at.front);
    if (at.from == 0) at.top = at.front;
    while (rises(at.top)) at.top = following(hull, at.top);
    if (at.from == 0) at.back = at.top;
    while (ahead(at.back) < 0) at.back = following(hull, at.back);
    visit(at);
  }
}

/// The size of a rectangle as a quotient, in one of three kinds of numbers.
template <class Number>
struct Quotient {
  Number numerator;
  Number denominator;
};

/// An interval around the true value: the numbers of the first comparison.
struct Interval {
  double value = 0.0;
  double error = 0.0;

  Interval operator*(const Interval& other) const noexcept {
    constexpr double rounding = 2.0 * std::numeric_limits<double>::epsilon();
    const double product = value * other.value;
    return {product, std::abs(value) * other.error + error * std::abs(other.value) +
                         error * other.error + rounding * std::abs(product)};
  }
};

/// The sum of two products of differences.
Interval intervalOf(double first, double second) noexcept {
  return {first + second, plane::estimateError * (std::abs(first) + std::abs(second))};
}

/// The dot and cross products of b - a and d - c, in each kind of number.
struct InDoubles {
  using Number = Interval;
  static Interval dot(const Point& a, const Point& b, const Point& c, const Point& d) noexcept {
    return intervalOf((b.x() - a.x()) * (d.x() - c.x()), (b.y() - a.y()) * (d.y() - c.y()));
  }
  static Interval cross(const Point& a, const Point& b, const Point& c, const Point& d) noexcept {
    return intervalOf((b.x() - a.x()) * (d.y() - c.y()), -(b.y() - a.y()) * (d.x() - c.x()));
  }
};

/// b - a, with exact coordinates.
struct Difference {
  Twofold x;
  Twofold y;

  Difference(const Point& a, const Point& b) noexcept
      : x(plane::sumOf(b.x(), -a.x())), y(plane::sumOf(b.y(), -a.y())) {}
};

/// Whether a sum of two products in Twofolds is accurate to 2^-98 relative: its terms are accurate
/// to 2^-102 and do not cancel by more than a factor of 8.
bool isSumRight(const Twofold& first, const Twofold& second, const Twofold& sum) noexcept {
  return std::abs(first.high) + std::abs(second.high) <= 8.0 * std::abs(sum.high);
}

/// Sums that are not accurate to 2^-98 are computed exactly and rounded.
struct InTwofolds {
  using Number = Twofold;
  static Twofold dot(const Point& a, const Point& b, const Point& c, const Point& d) noexcept {
    const Difference edge(a, b);
    const Difference other(c, d);
    const Twofold first = edge.x * other.x;
    const Twofold second = edge.y * other.y;
    const Twofold sum = first + second;
    if (isSumRight(first, second, sum)) return sum;
    return plane::dotProduct(a, b, c, d).rounded();
  }
  static Twofold cross(const Point& a, const Point& b, const Point& c, const Point& d) noexcept {
    const Difference edge(a, b);
    const Difference other(c, d);
    const Twofold first = edge.x * other.y;
    const Twofold second = -(edge.y * other.x);
    const Twofold sum = first + second;
    if (isSumRight(first, second, sum)) return sum;
    return plane::crossProduct(a, b, c, d).rounded();
  }
};

struct Exactly {
  using Number = Expansion;
  static Expansion dot(const Point& a, const Point& b, const Point& c, const Point& d) {
    return Expansion::difference(b.x(), a.x()) * Expansion::difference(d.x(), c.x()) +
           Expansion::difference(b.y(), a.y()) * Expansion::difference(d.y(), c.y());
  }
  static Expansion cross(const Point& a, const Point& b, const Point& c, const Point& d) {
    return Expansion::difference(b.x(), a.x()) * Expansion::difference(d.y(), c.y()) -
           Expansion::difference(b.y(), a.y()) * Expansion::difference(d.x(), c.x());
  }
};

/// The sides of a rectangle and its edge, as products with the edge's length.
template <class Kind>
struct Sides {
  typename Kind::Number along;
  typename Kind::Number across;
  typename Kind::Number edge;

  Sides(Hull hull, const Caliper& at)
      : along(Kind::dot(hull[at.from], hull[at.to], hull[at.back], hull[at.front])),
        across(Kind::cross(hull[at.from], hull[at.to], hull[at.from], hull[at.top])),
        edge(Kind::dot(hull[at.from], hull[at.to], hull[at.from], hull[at.to])) {}
};

struct Area {
  template <class Kind>
  static Quotient<typename Kind::Number> of(Hull hull, const Caliper& caliper) {
    const Sides<Kind> sides(hull, caliper);
    return {sides.along * sides.across, sides.edge};
  }
};

struct SquaredWidth {
  template <class Kind>
  static Quotient<typename Kind::Number> of(Hull hull, const Caliper& caliper) {
    const Sides<Kind> sides(hull, caliper);
    return {sides.across * sides.across, sides.edge};
  }
};

/// The smallest and the largest possible value of a quotient whose denominator is certainly
/// positive.
struct Bounds {
  double least = 0.0;
  double greatest = 0.0;

  explicit Bounds(const Quotient<Interval>& quotient) noexcept {
    constexpr double slack = 8.0 * std::numeric_limits<double>::epsilon();
    const auto& [numerator, denominator] = quotient;
    least = (numerator.value - numerator.error) / denominator.value;
    greatest = (numerator.value + numerator.error) / denominator.value;
    least -= slack * std::abs(least);
    greatest += slack * std::abs(greatest);
  }
};

/// Sizes to twice the digits of a double, none of them negative, have relative errors of some
/// 2^-98: a relative difference larger than this is certain.
constexpr double errorOfTwofolds = 0x1p-95;

/// Whether the size of a is smaller than that of b.
template <class Size>
bool isSmaller(Hull hull, const Caliper& a, const Quotient<Twofold>& measuredA, const Caliper& b,
               const Quotient<Twofold>& measuredB) {
  const Twofold left = measuredA.numerator * measuredB.denominator;
  const Twofold right = measuredB.numerator * measuredA.denominator;
  const double difference = (left - right).high;
  if (std::abs(difference) > errorOfTwofolds * left.high) return difference < 0.0;
  const auto exactA = Size::template of<Exactly>(hull, a);
  const auto exactB = Size::template of<Exactly>(hull, b);
  return (exactA.numerator * exactB.denominator - exactB.numerator * exactA.denominator).sign() < 0;
}

struct Bounded {
  Caliper caliper;
  double least = 0.0;
};

template <class Size>
Caliper smallest(Hull hull) {
  std::vector<Bounded> candidates;
  double greatest = std::numeric_limits<double>::infinity();
  forEachCaliper(hull, [&](const Caliper& caliper) {
    const Bounds bounds(Size::template of<InDoubles>(hull, caliper));
    greatest = std::min(greatest, bounds.greatest);
    if (bounds.least <= greatest) candidates.push_back({caliper, bounds.least});
  });
  std::erase_if(candidates, [&](const Bounded& each) { return each.least > greatest; });
  Caliper best = candidates.front().caliper;
  if (candidates.size() == 1) return best;
  auto measured = Size::template of<InTwofolds>(hull, best);
  for (const Bounded& each : std::span(candidates).subspan(1)) {
    const auto now = Size::template of<InTwofolds>(hull, each.caliper);
    if (!isSmaller<Size>(hull, each.caliper, now, best, measured)) continue;
    best = each.caliper;
    measured = now;
  }
  return best;
}

}  // namespace

Caliper smallestRectangle(Hull hull) { return smallest<Area>(hull); }

Caliper narrowestStrip(Hull hull) { return smallest<SquaredWidth>(hull); }

bool isLongAlongEdge(Hull hull, const Caliper& caliper) {
  const Sides<InTwofolds> rounded(hull, caliper);
  const double difference = (rounded.along - rounded.across).high;
  if (std::abs(difference) > errorOfTwofolds * rounded.along.high) return difference > 0.0;
  const Sides<Exactly> sides(hull, caliper);
  return (sides.along - sides.across).sign() >= 0;
}

}  // namespace cntr::compute
