// SPDX-License-Identifier: MIT
//
// At most one thing in each square of a grid, to limit the number of things drawn.

#pragma once

#include <cmath>
#include <cstdint>
#include <functional>
#include <unordered_set>

#include <platform/core/vector.h>

namespace tool {

class Squares {
 public:
  explicit Squares(double size) : size_(size) {}

  double size() const noexcept { return size_; }
  /// False when the square of `p` is already taken. With squares of size 0 only equal points share
  /// one.
  bool take(const qcVector<2>& p) {
    if (size_ == 0.0) return taken_.insert({p.x(), p.y()}).second;
    return taken_.insert({number(p.x()), number(p.y())}).second;
  }

 private:
  struct Square {
    double x;
    double y;
    bool operator==(const Square&) const = default;
  };
  struct Hash {
    std::size_t operator()(const Square& square) const noexcept {
      const std::uint64_t x = std::hash<double>()(square.x);
      const std::uint64_t y = std::hash<double>()(square.y);
      return (x * 0x9E3779B97F4A7C15U) ^ (y * 0xC2B2AE3D27D4EB4FU);
    }
  };

  /// Squares do not begin at round coordinates, so that places that differ only by rounding fall
  /// into the same square.
  double number(double coordinate) const { return std::floor(coordinate / size_ + shift); }

  static constexpr double shift = 0.381966;
  double size_;
  std::unordered_set<Square, Hash> taken_;
};

}  // namespace tool
