// SPDX-License-Identifier: MIT
//
// Crossings as quotients of two exact sums.

#include <cntrsets/exact/predicates.h>

#include <algorithm>
#include <cmath>

#include <cntr/plane/twofold.h>

namespace cntr::sets {

using plane::crossProduct;
using plane::doubledArea;
using plane::sumOf;
using plane::Twofold;

namespace {

double along(double from, double to, const Twofold& share) noexcept {
  const double sum = (share * sumOf(to, -from) + Twofold(from)).high;
  return std::abs(sum) < leastCoordinate ? 0.0 : sum;
}

/// `value` moved into the interval common to both pairs of ends.
double between(double value, double a, double b, double c, double d) noexcept {
  const double low = std::max(std::min(a, b), std::min(c, d));
  const double high = std::min(std::max(a, b), std::max(c, d));
  return std::min(std::max(value, low), high);
}

}  // namespace

Point crossing(const Point& a, const Point& b, const Point& c, const Point& d) noexcept {
  const Twofold share = doubledArea(a, c, d).rounded() / crossProduct(a, b, c, d).rounded();
  return {between(along(a.x(), b.x(), share), a.x(), b.x(), c.x(), d.x()),
          between(along(a.y(), b.y(), share), a.y(), b.y(), c.y(), d.y())};
}

}  // namespace cntr::sets
