// SPDX-License-Identifier: MIT
//
// Hu's invariants from the moments of third order, which are sums over edges. Moments are taken
// about a point near the centre and at a size near 1, so that neither place nor size loses digits.

#include <cntr/descriptors.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace {

using Point = qcVector<2>;
using Ring = std::span<const Point>;
using Invariants = std::array<double, 7>;

/// The moments of what a ring bounds, up to the third order: mXY is the integral of x^X y^Y.
struct Moments {
  double m00 = 0.0;
  double m10 = 0.0;
  double m01 = 0.0;
  double m20 = 0.0;
  double m11 = 0.0;
  double m02 = 0.0;
  double m30 = 0.0;
  double m21 = 0.0;
  double m12 = 0.0;
  double m03 = 0.0;
  /// What m00 would be if all terms were positive.
  double gross = 0.0;

  /// Adds the triangle from the origin to the edge a-b.
  void add(const Point& a, const Point& b) noexcept {
    const double ax = a.x(), ay = a.y(), bx = b.x(), by = b.y();
    const double cross = ax * by - bx * ay;
    gross += (std::abs(ax * by) + std::abs(bx * ay)) / 2.0;
    m00 += cross / 2.0;
    m10 += cross * (ax + bx) / 6.0;
    m01 += cross * (ay + by) / 6.0;
    m20 += cross * (ax * ax + ax * bx + bx * bx) / 12.0;
    m02 += cross * (ay * ay + ay * by + by * by) / 12.0;
    m11 += cross * (2.0 * ax * ay + ax * by + bx * ay + 2.0 * bx * by) / 24.0;
    m30 += cross * (ax + bx) * (ax * ax + bx * bx) / 20.0;
    m03 += cross * (ay + by) * (ay * ay + by * by) / 20.0;
    m21 += cross *
           (ax * ax * (3.0 * ay + by) + 2.0 * ax * bx * (ay + by) + bx * bx * (ay + 3.0 * by)) /
           60.0;
    m12 += cross *
           (ay * ay * (3.0 * ax + bx) + 2.0 * ay * by * (ax + bx) + by * by * (ax + 3.0 * bx)) /
           60.0;
  }

  /// False when only rounding errors of `terms` terms are left of the area.
  bool hasArea(std::size_t terms) const noexcept {
    constexpr double epsilon = std::numeric_limits<double>::epsilon();
    return std::abs(m00) > epsilon * static_cast<double>(terms) * gross;
  }
};

/// A list of rings relative to a point, scaled.
template <class Rings>
Moments momentsOf(const Rings& rings, const Point& origin, double factor) noexcept {
  Moments moments;
  for (const Ring ring : rings) {
    if (ring.size() < 3) continue;
    Point previous = (ring.back() - origin) * factor;
    for (const Point& p : ring) {
      const Point next = (p - origin) * factor;
      moments.add(previous, next);
      previous = next;
    }
  }
  return moments;
}

/// The invariants of moments about any point.
Invariants invariantsOf(const Moments& m) noexcept {
  const double cx = m.m10 / m.m00;
  const double cy = m.m01 / m.m00;
  // Clockwise rings have all their moments with the opposite sign, and so have these powers.
  const double squared = m.m00 * std::abs(m.m00);
  const double power = squared * std::sqrt(std::abs(m.m00));
  const double n20 = (m.m20 - cx * m.m10) / squared;
  const double n02 = (m.m02 - cy * m.m01) / squared;
  const double n11 = (m.m11 - cx * m.m01) / squared;
  const double n30 = (m.m30 - 3.0 * cx * m.m20 + 2.0 * cx * cx * m.m10) / power;
  const double n03 = (m.m03 - 3.0 * cy * m.m02 + 2.0 * cy * cy * m.m01) / power;
  const double n21 = (m.m21 - 2.0 * cx * m.m11 - cy * m.m20 + 2.0 * cx * cx * m.m01) / power;
  const double n12 = (m.m12 - 2.0 * cy * m.m11 - cx * m.m02 + 2.0 * cy * cy * m.m10) / power;

  const double p = n30 - 3.0 * n12;
  const double q = 3.0 * n21 - n03;
  const double r = n30 + n12;
  const double s = n21 + n03;
  const double difference = n20 - n02;
  const double left = r * (r * r - 3.0 * s * s);
  const double right = s * (3.0 * r * r - s * s);
  return {n20 + n02,
          difference * difference + 4.0 * n11 * n11,
          p * p + q * q,
          r * r + s * s,
          p * left + q * right,
          difference * (r * r - s * s) + 4.0 * n11 * r * s,
          q * left - p * right};
}

/// The power of two that brings the farthest vertex to a distance near 1; NaN if a coordinate is
/// not finite, or if all distances are 0.
template <class Rings>
double factorFor(const Rings& rings, const Point& origin) noexcept {
  double farthest = 0.0;
  for (const Ring ring : rings) {
    for (const Point& p : ring) {
      const Point d = p - origin;
      if (!std::isfinite(d.x()) || !std::isfinite(d.y()))
        return std::numeric_limits<double>::quiet_NaN();
      farthest = std::max({farthest, std::abs(d.x()), std::abs(d.y())});
    }
  }
  if (farthest < std::numeric_limits<double>::min())
    return std::numeric_limits<double>::quiet_NaN();
  return std::ldexp(1.0, -std::ilogb(farthest));
}

template <class Rings>
Invariants huMoments(const Rings& rings) noexcept {
  Invariants nothing;
  nothing.fill(std::numeric_limits<double>::quiet_NaN());
  std::size_t vertices = 0;
  const Point* origin = nullptr;
  for (const Ring ring : rings) {
    vertices += ring.size();
    if (origin == nullptr && ring.size() >= 3) origin = &ring.front();
  }
  if (origin == nullptr) return nothing;
  const double factor = factorFor(rings, *origin);
  if (std::isnan(factor)) return nothing;
  const Moments first = momentsOf(rings, *origin, factor);
  if (!first.hasArea(vertices)) return nothing;
  const Point center(first.m10 / first.m00, first.m01 / first.m00);
  return invariantsOf(momentsOf(rings, *origin + center * (1.0 / factor), factor));
}

}  // namespace

std::array<double, 7> qf_HuMoments(std::span<const qcVector<2>> points) {
  return huMoments(std::array<Ring, 1>{points});
}

std::array<double, 7> qf_HuMoments(std::span<const std::vector<qcVector<2>>> rings) {
  return huMoments(rings);
}
