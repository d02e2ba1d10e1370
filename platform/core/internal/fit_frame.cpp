// SPDX-License-Identifier: MIT
//
// The coordinates in which curves are fitted.

#include <platform/core/internal/fit_frame.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include <platform/core/fit.h>

namespace qnFit {

namespace {

/// Points on a line deviate from it by their rounding errors, at most about one epsilon in the
/// frame; the rest covers the arithmetic here.
constexpr double roundingAcross = 8.0 * std::numeric_limits<double>::epsilon();

double largestCoordinate(const Points& points) {
  double largest = 0.0;
  for (const Point& p : points) {
    if (!std::isfinite(p.x()) || !std::isfinite(p.y())) {
      throw qcFitError(L"a point is not finite");
    }
    largest = std::max({largest, std::abs(p.x()), std::abs(p.y())});
  }
  return largest;
}

void checkFinite(double result) {
  if (!std::isfinite(result)) throw qcFitError(L"the curve is too large for double precision");
}

}  // namespace

PowerOfTwo::PowerOfTwo(int exponent) noexcept {
  constexpr int largestExponent = 1000;
  const int first = std::min(exponent, largestExponent);
  first_ = std::ldexp(1.0, first);
  second_ = std::ldexp(1.0, exponent - first);
}

Frame::Frame(const Points& points, std::size_t atLeast) {
  if (points.size() < atLeast) throw qcFitError(L"too few points");
  int exponent = 0;
  std::frexp(largestCoordinate(points), &exponent);
  enlarging_ = PowerOfTwo(exponent);
  shrinking_ = PowerOfTwo(-exponent);
  Point sum;
  for (const Point& p : points) sum = sum + p * shrinking_;
  mean_ = sum * (1.0 / static_cast<double>(points.size()));
}

Point Frame::enter(const Point& p) const noexcept { return p * shrinking_ - mean_; }

Points Frame::enter(const Points& points) const {
  Points framed;
  framed.reserve(points.size());
  for (const Point& p : points) framed.push_back(enter(p));
  return framed;
}

Point Frame::leave(const Point& p) const {
  const Point left = (p + mean_) * enlarging_;
  checkFinite(left.x());
  checkFinite(left.y());
  return left;
}

double Frame::leave(double length) const {
  const double left = length * enlarging_;
  checkFinite(left);
  return left;
}

Spread::Spread(const Points& framed) {
  const double share = 1.0 / static_cast<double>(framed.size());
  double xx = 0.0;
  double xy = 0.0;
  for (const Point& p : framed) {
    xx += p.x() * p.x();
    xy += p.x() * p.y();
  }
  xu = std::sqrt(xx * share);
  yu = xu > 0.0 ? xy * share / xu : 0.0;
  // A second pass rather than a difference of sums of squares, which would lose the digits of a
  // narrow spread.
  double rest = 0.0;
  for (const Point& p : framed) {
    const double y = xu > 0.0 ? p.y() - yu * (p.x() / xu) : p.y();
    rest += y * y;
  }
  yv = std::sqrt(rest * share);
  const double along = std::sqrt(xu * xu + yu * yu + yv * yv);
  if (along <= roundingAcross) throw qcFitError(L"the points coincide");
  across = xu * yv / along;
  if (across <= roundingAcross) throw qcFitError(L"the points lie on a line");
}

}  // namespace qnFit
