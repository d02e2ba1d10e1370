// SPDX-License-Identifier: MIT
//
// At most one thing for each square of a grid: how many things are drawn does not depend on how
// many there are.

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
  /// False when there is something in the square of `p` already. Squares of size 0 hold one place
  /// each.
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

  /// Round coordinates are no borders, so that a place which is rounded differently is in one
  /// square nevertheless.
  double number(double coordinate) const { return std::floor(coordinate / size_ + shift); }

  static constexpr double shift = 0.381966;
  double size_;
  std::unordered_set<Square, Hash> taken_;
};

}  // namespace tool
