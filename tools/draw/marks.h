// SPDX-License-Identifier: MIT
//
// The marks of which overlays consist, in the coordinates of the file.

#pragma once

#include <variant>
#include <vector>

#include <cntrformats/feature.h>
#include <tools/draw/box.h>
#include <tools/draw/squares.h>

namespace tool {

struct Circle {
  qcVector<2> centre;
  double radius;
};

/// Radii along and across the direction `angle`, in radians from the x axis towards the y axis.
struct Ellipse {
  qcVector<2> centre;
  double along;
  double across;
  double angle;
};

struct Ring {
  formats::Points points;
};

struct Segment {
  qcVector<2> from;
  qcVector<2> to;
};

/// A piece of a line in the colour of a value.
struct Tint {
  qcVector<2> from;
  qcVector<2> to;
  double value;
};

/// A cross that marks a place.
struct Cross {
  qcVector<2> at;
};

/// A small circle around a place.
struct Spot {
  qcVector<2> at;
};

using Mark = std::variant<Box, Circle, Ellipse, Ring, Segment, Tint, Cross, Spot>;

/// The box around a mark; for a mark at a place, only that place.
Box boxOf(const Mark& mark);

/// The size, in pixels, of the squares in each of which only one crossing is shown.
inline constexpr double spotSpacing = 3.0;

/// The marks of an overlay, without what cannot be seen: vertices of rings, and crossings, short
/// segments and tints that share a square with another one. Tints are short, and two that begin in
/// the same square would be drawn over each other.
class MarkList {
 public:
  /// `pixel` is the size of a pixel.
  explicit MarkList(double pixel) : thinner_(pixel) {}

  void add(std::vector<Mark> marks);
  /// Removes what cannot be seen when pixels are this large.
  void thin(double pixel);

  const std::vector<Mark>& marks() const noexcept { return marks_; }
  /// The largest absolute value of all tints that were added.
  double range() const noexcept { return range_; }

 private:
  /// Whether a mark stays, perhaps reduced.
  class Thinner {
   public:
    explicit Thinner(double pixel);

    bool operator()(Ring& ring) const;
    bool operator()(const Segment& segment);
    bool operator()(const Tint& tint) { return tints_.take(tint.from); }
    bool operator()(const Spot& spot) { return spots_.take(spot.at); }
    template <typename Other>
    bool operator()(const Other&) const {
      return true;
    }

   private:
    double tolerance_;
    Squares spots_;
    Squares segments_;
    Squares tints_;
  };

  Thinner thinner_;
  std::vector<Mark> marks_;
  double range_ = 0.0;
};

}  // namespace tool
