// SPDX-License-Identifier: MIT
//
// A quick proof that the ring of a single object is simple, as most are: a point from which the
// whole ring can be seen. It spares such rings the search for edges that meet
// (compute/selfcrossing.h and, in libcntrsets, the sweep of faces/faces.h).

#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <optional>
#include <span>

#include <cntr/plane/box.h>
#include <cntr/plane/orientation.h>

namespace cntr::plane {

/// Below this, products may have lost digits.
inline constexpr double smallestProduct = 1e-290;

/// The search for such a point, by cutting a box around the ring with the lines of the edges that
/// cannot be seen from the middle of what is left (A. Y. Levin's method of centres of gravity).
class StarSearch {
 public:
  /// `box` is that of the vertices. REQUIRES: there is a vertex.
  StarSearch(std::span<const qcVector<2>> ring, const Box& box) noexcept
      : ring_(ring), isCounterclockwise_(runsCounterclockwise(ring)) {
    corners_[0] = {box.minX, box.minY};
    corners_[1] = {box.maxX, box.minY};
    corners_[2] = {box.maxX, box.maxY};
    corners_[3] = {box.minX, box.maxY};
  }

  std::optional<qcVector<2>> run() noexcept {
    qcVector<2> centre = middle();
    std::size_t cuts = 0;
    std::size_t seen = 0;
    qcVector<2> from = ring_.back();
    for (std::size_t i = 0; seen < ring_.size();) {
      const qcVector<2>& to = ring_[i];
      if (isSeen(from, to, centre)) {
        ++seen;
        from = to;
        i = i + 1 < ring_.size() ? i + 1 : 0;
        continue;
      }
      if (++cuts > mostCuts) return std::nullopt;
      if (!(isCounterclockwise_ ? cut(from, to) : cut(to, from))) return std::nullopt;
      centre = middle();
      seen = 0;
    }
    if (passages(centre) != 2) return std::nullopt;
    return centre;
  }

 private:
  /// Each cut leaves at most two thirds of the area: this many leave a ten-millionth.
  static constexpr std::size_t mostCuts = 40;

  using Corners = std::array<qcVector<2>, mostCuts + 4>;

  /// The direction of a star-shaped ring; a few of its vertices are enough to tell.
  static bool runsCounterclockwise(std::span<const qcVector<2>> ring) noexcept {
    constexpr std::size_t enough = 32;
    const std::size_t step = ring.size() / enough + 1;
    double area = 0.0;
    qcVector<2> before;
    for (std::size_t i = 0; i < ring.size(); i += step) {
      const qcVector<2> next = ring[i] - ring.front();
      area += qnKernel::cross(before, next);
      before = next;
    }
    return area > 0.0;
  }

  /// Keeps what lies left of the way from a to b; false when nothing does.
  bool cut(const qcVector<2>& a, const qcVector<2>& b) noexcept {
    Corners& kept = spare_;
    std::size_t count = 0;
    qcVector<2> before = corners_[count_ - 1];
    double sideBefore = qnKernel::cross(a - before, b - before);
    for (std::size_t i = 0; i < count_; ++i) {
      const qcVector<2> corner = corners_[i];
      const double side = qnKernel::cross(a - corner, b - corner);
      if ((sideBefore > 0.0) != (side > 0.0)) {
        if (count == kept.size()) return false;
        kept[count++] = before + (corner - before) * (sideBefore / (sideBefore - side));
      }
      if (side > 0.0) {
        if (count == kept.size()) return false;
        kept[count++] = corner;
      }
      before = corner;
      sideBefore = side;
    }
    std::copy_n(kept.begin(), count, corners_.begin());
    count_ = count;
    return count >= 3;
  }

  /// The centre of mass of what is left.
  qcVector<2> middle() const noexcept {
    const qcVector<2> origin = corners_[0];
    double area = 0.0;
    qcVector<2> sum;
    for (std::size_t i = 2; i < count_; ++i) {
      const qcVector<2> a = corners_[i - 1] - origin;
      const qcVector<2> b = corners_[i] - origin;
      const double triangle = qnKernel::cross(a, b);
      area += triangle;
      sum = sum + (a + b) * triangle;
    }
    return origin + sum * (1.0 / (3.0 * area));
  }

  /// Whether c certainly lies left of the way from a to b, or right of it where the ring runs
  /// clockwise. Edges of length 0 are passed over.
  bool isSeen(const qcVector<2>& a, const qcVector<2>& b, const qcVector<2>& c) const noexcept {
    const double left = (a.x() - c.x()) * (b.y() - c.y());
    const double right = (a.y() - c.y()) * (b.x() - c.x());
    const double bound = estimateError * (std::abs(left) + std::abs(right));
    const double side = isCounterclockwise_ ? left - right : right - left;
    return side > bound + smallestProduct || a == b;
  }

  /// How often the ring passes from above c to below it or back.
  std::size_t passages(const qcVector<2>& c) const noexcept {
    std::size_t count = 0;
    bool wasBelow = ring_.back().y() <= c.y();
    for (const qcVector<2>& p : ring_) {
      const bool isBelow = p.y() <= c.y();
      count += isBelow != wasBelow ? 1U : 0U;
      wasBelow = isBelow;
    }
    return count;
  }

  std::span<const qcVector<2>> ring_;
  bool isCounterclockwise_;
  /// A convex polygon that contains all such points, and room for the next one.
  Corners corners_;
  Corners spare_;
  std::size_t count_ = 4;
};

/// A point around which the ring runs once, always in the same direction: every half-line from
/// there meets it exactly once, so that its edges share only the vertices between neighbours. An
/// empty result proves nothing: the ring may not be star-shaped, or only just, or have coordinates
/// that are too large, too small or not finite. The point found is checked against every edge,
/// allowing for rounding. `box` is that of the vertices. O(n), about 3 ns for each vertex.
inline std::optional<qcVector<2>> starCentre(std::span<const qcVector<2>> ring,
                                             const Box& box) noexcept {
  return ring.size() < 3 ? std::nullopt : StarSearch(ring, box).run();
}

}  // namespace cntr::plane
