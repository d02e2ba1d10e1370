// SPDX-License-Identifier: MIT
#include <testing/plain/exact.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <limits>

namespace plain {

namespace {

/// The largest non-negative double for which `isTooLarge` is false, or the next one if the middle
/// between the two is not too large either. Non-negative doubles are ordered like their bits, so
/// halving the bits halves the range.
template <class IsTooLarge>
double search(IsTooLarge isTooLarge) {
  std::uint64_t low = 0;
  std::uint64_t high = std::bit_cast<std::uint64_t>(std::numeric_limits<double>::infinity());
  while (high - low > 1) {
    const std::uint64_t middle = low + (high - low) / 2;
    (isTooLarge(Exact(std::bit_cast<double>(middle))) ? high : low) = middle;
  }
  const double below = std::bit_cast<double>(low);
  const double above = std::bit_cast<double>(high);
  if (std::isinf(above)) return below;
  const Exact between = (Exact(below) + Exact(above)) * 0.5;
  return isTooLarge(between) ? below : above;
}

}  // namespace

Exact::Exact(double value) {
  negative_ = std::signbit(value);
  int power = 0;
  const double fraction = std::frexp(std::abs(value), &power);
  auto whole = static_cast<std::uint64_t>(std::ldexp(fraction, 53));
  // value = whole 2^(power - 53), and the exponent counts powers of 2^32.
  power -= 53;
  const long places = power >= 0 ? power / 32 : -((31 - power) / 32);
  const int shift = static_cast<int>(power - 32 * places);
  exponent_ = places;
  digits_ = {0, 0, 0};
  for (int bit = 0; bit < 53; ++bit) {
    if (((whole >> static_cast<unsigned>(bit)) & 1U) == 0) continue;
    const auto at = static_cast<unsigned>(bit + shift);
    digits_[at / 32] |= std::uint32_t{1} << (at % 32);
  }
  trim();
}

void Exact::trim() {
  while (!digits_.empty() && digits_.back() == 0) digits_.pop_back();
  std::size_t zeros = 0;
  while (zeros < digits_.size() && digits_[zeros] == 0) ++zeros;
  digits_.erase(digits_.begin(), digits_.begin() + static_cast<std::ptrdiff_t>(zeros));
  exponent_ += static_cast<long>(zeros);
  if (!digits_.empty()) return;
  exponent_ = 0;
  negative_ = false;
}

std::uint32_t Exact::digitAt(long place) const {
  const long index = place - exponent_;
  if (index < 0 || index >= static_cast<long>(digits_.size())) return 0;
  return digits_[static_cast<std::size_t>(index)];
}

int Exact::compareSizes(const Exact& a, const Exact& b) {
  const long topA = a.exponent_ + static_cast<long>(a.digits_.size());
  const long topB = b.exponent_ + static_cast<long>(b.digits_.size());
  const long bottom = std::min(a.exponent_, b.exponent_);
  for (long place = std::max(topA, topB) - 1; place >= bottom; --place) {
    if (a.digitAt(place) != b.digitAt(place)) return a.digitAt(place) < b.digitAt(place) ? -1 : 1;
  }
  return 0;
}

Exact Exact::sumOfSizes(const Exact& a, const Exact& b) {
  Exact sum;
  sum.exponent_ = std::min(a.exponent_, b.exponent_);
  const long top = std::max(a.exponent_ + static_cast<long>(a.digits_.size()),
                            b.exponent_ + static_cast<long>(b.digits_.size()));
  sum.digits_.reserve(static_cast<std::size_t>(top - sum.exponent_ + 1));
  std::uint64_t carry = 0;
  for (long place = sum.exponent_; place <= top; ++place) {
    carry += std::uint64_t{a.digitAt(place)} + b.digitAt(place);
    sum.digits_.push_back(static_cast<std::uint32_t>(carry));
    carry >>= 32U;
  }
  sum.trim();
  return sum;
}

Exact Exact::differenceOfSizes(const Exact& a, const Exact& b) {
  Exact rest;
  rest.exponent_ = std::min(a.exponent_, b.exponent_);
  const long top = a.exponent_ + static_cast<long>(a.digits_.size());
  rest.digits_.reserve(static_cast<std::size_t>(top - rest.exponent_));
  std::int64_t borrowed = 0;
  for (long place = rest.exponent_; place < top; ++place) {
    std::int64_t digit = std::int64_t{a.digitAt(place)} - b.digitAt(place) - borrowed;
    borrowed = digit < 0 ? 1 : 0;
    if (digit < 0) digit += std::int64_t{1} << 32U;
    rest.digits_.push_back(static_cast<std::uint32_t>(digit));
  }
  rest.trim();
  return rest;
}

Exact Exact::operator-() const {
  Exact negated = *this;
  negated.negative_ = !negative_ && !digits_.empty();
  return negated;
}

Exact Exact::operator+(const Exact& other) const {
  if (digits_.empty()) return other;
  if (other.digits_.empty()) return *this;
  if (negative_ == other.negative_) {
    Exact sum = sumOfSizes(*this, other);
    sum.negative_ = negative_;
    return sum;
  }
  const bool isLarger = compareSizes(*this, other) >= 0;
  Exact rest = isLarger ? differenceOfSizes(*this, other) : differenceOfSizes(other, *this);
  rest.negative_ = !rest.digits_.empty() && (isLarger ? negative_ : other.negative_);
  return rest;
}

Exact Exact::operator*(const Exact& other) const {
  Exact product;
  product.exponent_ = exponent_ + other.exponent_;
  product.digits_.assign(digits_.size() + other.digits_.size() + 1, 0);
  for (std::size_t i = 0; i < digits_.size(); ++i) {
    std::uint64_t carry = 0;
    for (std::size_t j = 0; j < other.digits_.size() || carry != 0; ++j) {
      const std::uint64_t factor = j < other.digits_.size() ? other.digits_[j] : 0;
      carry += product.digits_[i + j] + std::uint64_t{digits_[i]} * factor;
      product.digits_[i + j] = static_cast<std::uint32_t>(carry);
      carry >>= 32U;
    }
  }
  product.negative_ = negative_ != other.negative_;
  product.trim();
  return product;
}

int Exact::sign() const {
  if (digits_.empty()) return 0;
  return negative_ ? -1 : 1;
}

std::strong_ordering Exact::operator<=>(const Exact& other) const {
  return (*this - other).sign() <=> 0;
}

double nearest(const Exact& numerator, const Exact& denominator) {
  if (numerator.sign() < 0) return -nearest(-numerator, denominator);
  return search([&](const Exact& value) { return value * denominator > numerator; });
}

double nearestRoot(const Exact& numerator, const Exact& denominator) {
  return search([&](const Exact& value) { return value * value * denominator > numerator; });
}

}  // namespace plain
