// SPDX-License-Identifier: MIT
//
// Local coordinates of a feature, so that its measures are equally accurate wherever it lies and
// whatever its size.

#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include <cntr/plane/box.h>
#include <platform/core/vector.h>

namespace cntr::sets {

/// The box of all vertices. Even and odd ones separately: two chains of comparisons run side by
/// side.
inline plane::Box boxOf(const std::vector<std::span<const qcVector<2>>>& rings) {
  plane::Box even;
  plane::Box odd;
  for (const std::span<const qcVector<2>>& ring : rings) {
    std::size_t i = 0;
    for (; i + 1 < ring.size(); i += 2) {
      even.add(ring[i]);
      odd.add(ring[i + 1]);
    }
    if (i < ring.size()) even.add(ring[i]);
  }
  even.add(odd);
  return even;
}

/// std::ldexp(), without a call for the powers of two that are normal doubles.
inline double timesPowerOfTwo(double value, int exponent) {
  constexpr int bias = 1023;
  constexpr int digits = 52;
  if (exponent <= -bias || exponent > bias) return std::ldexp(value, exponent);
  return value * std::bit_cast<double>(static_cast<std::uint64_t>(exponent + bias) << digits);
}

/// The origin of local coordinates, and a power of two by which they are multiplied so that the
/// feature's size is about 1.
class Frame {
 public:
  /// REQUIRES: coordinates are finite.
  explicit Frame(const std::vector<std::span<const qcVector<2>>>& rings) : Frame(boxOf(rings)) {}

  /// For vertices in this box.
  explicit Frame(const plane::Box& box) {
    if (!(box.minX <= box.maxX)) return;
    // Halves first: the differences of the largest doubles would overflow.
    const double extent =
        std::max(box.maxX * 0.5 - box.minX * 0.5, box.maxY * 0.5 - box.minY * 0.5);
    // The power itself must be a double, so sizes below all normal doubles stay smaller than 1.
    exponent_ = extent > 0.0 ? std::min(-1 - std::ilogb(extent), 1023) : 0;
    factor_ = timesPowerOfTwo(1.0, exponent_);
    origin_ = {originOf(box.minX, box.maxX), originOf(box.minY, box.maxY)};
    const qcVector<2> low = local({box.minX, box.minY});
    const qcVector<2> high = local({box.maxX, box.maxY});
    largestProduct_ = std::max(-low.x(), high.x()) * std::max(-low.y(), high.y());
  }

  /// Exact, unless a coordinate is smaller than the feature by more than 300 orders of magnitude:
  /// another origin than the plane's is used only where the differences are exact.
  qcVector<2> local(const qcVector<2>& p) const {
    return {(p.x() - origin_.x()) * factor_, (p.y() - origin_.y()) * factor_};
  }

  // Local coordinates are those relative to here, times this power of two.

  const qcVector<2>& origin() const { return origin_; }
  double factor() const { return factor_; }

  /// The largest absolute value of a product of a local x and a local y.
  double largestProduct() const { return largestProduct_; }

  /// The point in the plane, rounded once.
  qcVector<2> restored(const qcVector<2>& p) const {
    return {origin_.x() + timesPowerOfTwo(p.x(), -exponent_),
            origin_.y() + timesPowerOfTwo(p.y(), -exponent_)};
  }

  /// A length in local coordinates.
  double scaled(double length) const { return timesPowerOfTwo(length, exponent_); }

  /// A value in this power of the local unit of length, converted to the plane's unit.
  double restored(double value, int power) const {
    return timesPowerOfTwo(value, -exponent_ * power);
  }

 private:
  /// 0, the plane's own origin, when it lies near.
  double originOf(double low, double high) const {
    const double middle = low * 0.5 + high * 0.5;
    return std::abs(timesPowerOfTwo(middle, exponent_)) < 2.0 ? 0.0 : middle;
  }

  qcVector<2> origin_;
  int exponent_ = 0;
  double factor_ = 1.0;
  double largestProduct_ = 0.0;
};

}  // namespace cntr::sets
