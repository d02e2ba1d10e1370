// SPDX-License-Identifier: MIT
//
// Sums of products without rounding error. A sum is held as an expansion: doubles of growing size
// that do not overlap, whose exact sum is the value.

#include <cntrsets/exact/predicates.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include <cntrsets/exact/twofold.h>

namespace cntr::sets {
namespace {

/// An exact sum of at most eight products and one number more.
class ExactSum {
 public:
  void add(double value) noexcept {
    std::size_t kept = 0;
    for (std::size_t i = 0; i < size_; ++i) {
      const Twofold sum = sumOf(value, terms_[i]);
      value = sum.high;
      if (sum.low != 0.0) terms_[kept++] = sum.low;
    }
    if (value != 0.0) terms_[kept++] = value;
    size_ = kept;
  }

  void addProduct(double a, double b) noexcept {
    const Twofold product = productOf(a, b);
    add(product.low);
    add(product.high);
  }

  int sign() const noexcept {
    if (size_ == 0) return 0;
    return terms_[size_ - 1] > 0.0 ? 1 : -1;
  }

  /// The value to twice the digits of a double.
  Twofold rounded() const noexcept {
    const double high = nearest();
    ExactSum rest = *this;
    rest.add(-high);
    return {high, rest.nearest()};
  }

 private:
  double nearest() const noexcept {
    double sum = 0.0;
    for (std::size_t i = 0; i < size_; ++i) sum += terms_[i];
    return sum;
  }

  std::array<double, 17> terms_{};
  std::size_t size_ = 0;
};

/// Twice the signed area of the triangle.
ExactSum doubledArea(const Point& a, const Point& b, const Point& c) noexcept {
  ExactSum sum;
  sum.addProduct(a.x(), b.y());
  sum.addProduct(-a.y(), b.x());
  sum.addProduct(b.x(), c.y());
  sum.addProduct(-b.y(), c.x());
  sum.addProduct(c.x(), a.y());
  sum.addProduct(-c.y(), a.x());
  return sum;
}

/// The cross product of b - a and d - c.
ExactSum crossProduct(const Point& a, const Point& b, const Point& c, const Point& d) noexcept {
  ExactSum sum;
  sum.addProduct(b.x(), d.y());
  sum.addProduct(-b.x(), c.y());
  sum.addProduct(-a.x(), d.y());
  sum.addProduct(a.x(), c.y());
  sum.addProduct(-b.y(), d.x());
  sum.addProduct(b.y(), c.x());
  sum.addProduct(a.y(), d.x());
  sum.addProduct(-a.y(), c.x());
  return sum;
}

double along(double from, double to, const Twofold& share) noexcept {
  return (share * sumOf(to, -from) + Twofold(from)).high;
}

/// `value` moved into the interval that both pairs of ends enclose.
double between(double value, double a, double b, double c, double d) noexcept {
  const double low = std::max(std::min(a, b), std::min(c, d));
  const double high = std::min(std::max(a, b), std::max(c, d));
  return std::min(std::max(value, low), high);
}

}  // namespace

int orientation(const Point& a, const Point& b, const Point& c) noexcept {
  const double left = (a.x() - c.x()) * (b.y() - c.y());
  const double right = (a.y() - c.y()) * (b.x() - c.x());
  const double estimate = left - right;
  // (3 + 16 e) e with e = 2^-53: the bound of the first stage in Shewchuk's orient2d.
  constexpr double errorBound = 3.3306690738754716e-16;
  if (std::abs(estimate) > errorBound * (std::abs(left) + std::abs(right)))
    return estimate > 0.0 ? 1 : -1;
  if (left == 0.0 && right == 0.0) return 0;
  return doubledArea(a, b, c).sign();
}

Point crossing(const Point& a, const Point& b, const Point& c, const Point& d) noexcept {
  const Twofold share = doubledArea(a, c, d).rounded() / crossProduct(a, b, c, d).rounded();
  return {between(along(a.x(), b.x(), share), a.x(), b.x(), c.x(), d.x()),
          between(along(a.y(), b.y(), share), a.y(), b.y(), c.y(), d.y())};
}

}  // namespace cntr::sets
