// SPDX-License-Identifier: MIT
//
// A vertex can be left out as long as some line from the last kept vertex passes near it and near
// all those left out before it. The directions of such lines form a cone, which each vertex left
// out makes narrower.

#include <tools/draw/thinning.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace tool {

using namespace formats;

namespace {

double cross(const qcVector<2>& a, const qcVector<2>& b) { return a.x() * b.y() - a.y() * b.x(); }

/// The lines from a vertex that pass near all points added so far.
class Cone {
 public:
  /// The line may step back by up to half the distance across it: a vertex beyond its end is still
  /// within the tolerance.
  Cone(const qcVector<2>& apex, double tolerance)
      : apex_(apex), across_(tolerance * 2.0 / std::sqrt(5.0)), back_(0.5 * across_) {}

  /// Whether a line to `p` passes near all points that were added.
  bool allows(const qcVector<2>& p) const {
    const qcVector<2> d = p - apex_;
    if (d.len() < farthest_ - back_) return false;
    return !isBounded_ || (cross(right_, d) >= 0.0 && cross(d, left_) >= 0.0);
  }

  /// REQUIRES: allows(p).
  void add(const qcVector<2>& p) {
    const qcVector<2> d = p - apex_;
    const double length = d.len();
    farthest_ = std::max(farthest_, length);
    if (length <= across_) return;
    const double sine = across_ / length;
    const double cosine = std::sqrt(1.0 - sine * sine);
    const qcVector<2> along = d * (cosine / length);
    const qcVector<2> across = qcVector<2>(-d.y(), d.x()) * (sine / length);
    if (!isBounded_ || cross(along + across, left_) > 0.0) left_ = along + across;
    if (!isBounded_ || cross(right_, along - across) > 0.0) right_ = along - across;
    isBounded_ = true;
  }

 private:
  qcVector<2> apex_;
  double across_;
  double back_;
  double farthest_ = 0.0;
  bool isBounded_ = false;
  qcVector<2> left_;
  qcVector<2> right_;
};

/// One side of a box: the points p with p * normal <= limit.
struct Side {
  qcVector<2> normal;
  double limit;

  double beyond(const qcVector<2>& p) const { return p * normal - limit; }
};

std::array<Side, 4> sidesOf(const Box& box) {
  return {{{{-1.0, 0.0}, -box.low.x()},
           {{1.0, 0.0}, box.high.x()},
           {{0.0, -1.0}, -box.low.y()},
           {{0.0, 1.0}, box.high.y()}}};
}

/// Appends what one side leaves of the edge: all of it, a piece, or nothing.
void clipEdge(const Side& side, const qcVector<2>& from, const qcVector<2>& to, Points& kept) {
  const double before = side.beyond(from);
  const double after = side.beyond(to);
  if ((before > 0.0) != (after > 0.0)) {
    kept.push_back(from + (to - from) * (before / (before - after)));
  }
  if (after <= 0.0) kept.push_back(to);
}

Points clipped(Points points, const Box& box, bool closed) {
  for (const Side& side : sidesOf(box)) {
    Points kept;
    for (std::size_t i = 0; i < points.size(); ++i) {
      if (i > 0) {
        clipEdge(side, points[i - 1], points[i], kept);
      } else if (closed) {
        clipEdge(side, points.back(), points[i], kept);
      } else if (side.beyond(points[i]) <= 0.0) {
        kept.push_back(points[i]);
      }
    }
    points = std::move(kept);
  }
  return points;
}

}  // namespace

Points thinnedLine(const Points& points, double tolerance) {
  if (points.size() < 3) return points;
  Points kept{points.front()};
  Cone cone(points.front(), tolerance);
  for (std::size_t i = 1; i < points.size(); ++i) {
    if (!cone.allows(points[i])) {
      kept.push_back(points[i - 1]);
      cone = Cone(points[i - 1], tolerance);
    }
    cone.add(points[i]);
  }
  kept.push_back(points.back());
  return kept;
}

Points thinnedRing(const Points& points, double tolerance) {
  if (points.empty()) return points;
  Points line = points;
  line.push_back(points.front());
  Points kept = thinnedLine(line, tolerance);
  kept.pop_back();
  return kept;
}

Points clippedLine(const Points& points, const Box& box) { return clipped(points, box, false); }
Points clippedRing(const Points& points, const Box& box) { return clipped(points, box, true); }

}  // namespace tool
