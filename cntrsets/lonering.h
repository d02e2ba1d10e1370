// SPDX-License-Identifier: MIT
//
// Short ways for a single ring, as most features are: four edges are looked at at once, and errors
// are bounded instead of avoided. Where a bound leaves an answer open there is none, and the ways
// of filledrings.h, which take several times as long, give it.

#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include <cntr/inertia.h>
#include <cntr/plane/box.h>
#include <cntr/plane/lanes.h>
#include <cntrsets/export.h>
#include <cntrsets/frame.h>
#include <cntrsets/integrals.h>

namespace cntr::sets {

/// What is summed up over a ring: the integrals, from another origin, and with errors. Those with
/// two coordinates are zero unless they are asked for.
struct LoneSums : Integrals {
  /// Where the integrals are counted from, in coordinates of the frame.
  qcVector<2> origin;
  // By how much each integral may be off at most: area2, those of one coordinate, those of two.
  double errorOfArea = 0.0;
  double errorOfFirst = 0.0;
  double errorOfSecond = 0.0;

  bool isCounterclockwise() const { return area2.high > 0.0; }
  /// The centre of mass in coordinates of the frame, roughly.
  qcVector<2> roughCentre() const {
    return origin + qcVector<2>(x6.high, y6.high) * (1.0 / (3.0 * area2.high));
  }
};

/// What is known of the mass of a ring, in coordinates of the frame.
struct LoneMass {
  double area = 0.0;
  /// A point that is the same one as the centre of mass when it is restored to the plane.
  qcVector<2> centre;
  /// About the centre; where they are asked for.
  std::optional<qc_InertiaData> moments;
};

/// A vertex in each lane, in a line of the cache.
struct alignas(64) LaneVertices {
  std::array<double, plane::lanes> x;
  std::array<double, plane::lanes> y;
};

/// A single ring. An object can read one ring after the other, which spares it its memory.
class CNTRSETS_EXPORT LoneRing {
 public:
  static constexpr std::size_t fewest = 3;
  static constexpr std::size_t most = 1024;

  /// Takes over the vertices, x and y in turn; false when there are too few or too many, or one is
  /// not finite. What follows is only for rings that have been taken.
  bool read(std::span<const double> coordinates);
  bool read(std::span<const qcVector<2>> vertices);

  /// Of the vertices. Of a zero and a negative one it may hold either.
  const plane::Box& box() const { return box_; }

  std::size_t size() const { return size_; }
  std::vector<qcVector<2>> vertices() const;

  /// `frame` is that of the ring.
  LoneSums sums(const Frame& frame, bool withMoments);

  /// The sum of distances from each vertex to the next, the last one's to the first one first, in
  /// the frame of the sums; nothing unless the ring certainly runs around this point once, always
  /// the same way. The proof is that of starcentre.h. REQUIRES: sums() was asked before.
  std::optional<double> lengthAround(const qcVector<2>& centre, bool isCounterclockwise) const;

 private:
  template <class VertexAt>
  bool take(std::size_t count, VertexAt vertexAt);

  /// Each lane has a stretch of the ring; its last vertex is the first one of the next lane. What
  /// is left over repeats the ring's last vertex.
  std::vector<LaneVertices> lanes_;
  std::size_t size_ = 0;
  /// Of each vertex to the next, those of a lane behind those of the lane before.
  std::vector<double> distances_;
  plane::Box box_;
};

/// The mass of the area that a simple ring bounds, the same bits as filledrings.h gives; nothing
/// where the sums are not good enough for that. Only the mixed moment may have other bits: it may
/// be off by less than 2^-58. Of rings that are nearly symmetric it is next to nothing, and its
/// last digits are rounding errors however they are summed up.
CNTRSETS_EXPORT std::optional<LoneMass> massOf(const LoneSums& sums, const Frame& frame,
                                               bool withMoments);

}  // namespace cntr::sets
