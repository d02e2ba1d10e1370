// SPDX-License-Identifier: MIT
//
// Faster methods for a single ring, as most features are: four edges are processed at once, and
// errors are bounded instead of avoided. Where a bound does not settle an answer, none is given;
// the methods of filledrings.h, which take several times as long, then give it.

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

/// Sums over a ring: the integrals, relative to another origin and with errors. Those of two
/// coordinates are zero unless asked for.
struct LoneSums : Integrals {
  /// The origin of the integrals, in coordinates of the frame.
  qcVector<2> origin;
  // The largest possible errors: of area2, of the integrals of one coordinate, of those of two.
  double errorOfArea = 0.0;
  double errorOfFirst = 0.0;
  double errorOfSecond = 0.0;

  bool isCounterclockwise() const { return area2.high > 0.0; }
  /// The approximate centre of mass in coordinates of the frame.
  qcVector<2> roughCentre() const {
    return origin + qcVector<2>(x6.high, y6.high) * (1.0 / (3.0 * area2.high));
  }
};

/// What is known about the mass of a ring, in coordinates of the frame.
struct LoneMass {
  double area = 0.0;
  /// A point that, restored to the plane, is the same as the centre of mass.
  qcVector<2> centre;
  /// About the centre; if asked for.
  std::optional<qc_InertiaData> moments;
};

/// A vertex in each lane, in one cache line.
struct alignas(64) LaneVertices {
  std::array<double, plane::lanes> x;
  std::array<double, plane::lanes> y;
};

/// A single ring. An object can read one ring after the other and reuse its memory.
class CNTRSETS_EXPORT LoneRing {
 public:
  static constexpr std::size_t fewest = 3;
  static constexpr std::size_t most = 1024;

  /// Takes over the vertices, x and y in turn; false when there are too few or too many, or one is
  /// not finite. The other functions require a ring that has been taken.
  bool read(std::span<const double> coordinates);
  bool read(std::span<const qcVector<2>> vertices);

  /// The box of the vertices. Of 0 and -0 it may hold either.
  const plane::Box& box() const { return box_; }

  std::size_t size() const { return size_; }
  std::vector<qcVector<2>> vertices() const;

  /// `frame` is that of the ring.
  LoneSums sums(const Frame& frame, bool withMoments);

  /// The sum of distances from each vertex to the next, beginning with that from the last to the
  /// first, in the frame of the sums; nothing unless the ring certainly runs around this point
  /// once, always in the same direction. The proof is that of starcentre.h. REQUIRES: sums() was
  /// asked before.
  std::optional<double> lengthAround(const qcVector<2>& centre, bool isCounterclockwise) const;

 private:
  template <class VertexAt>
  bool take(std::size_t count, VertexAt vertexAt);

  /// Each lane has a stretch of the ring; its last vertex is the first one of the next lane. Unused
  /// places repeat the ring's last vertex.
  std::vector<LaneVertices> lanes_;
  std::size_t size_ = 0;
  /// From each vertex to the next, lane after lane.
  std::vector<double> distances_;
  plane::Box box_;
};

/// The mass of the area that a simple ring bounds, with the same bits as filledrings.h gives;
/// nothing if the sums are not accurate enough. Only the mixed moment may have other bits: it may
/// be off by less than 2^-58. For nearly symmetric rings it is almost 0, and its last digits are
/// rounding errors however it is summed.
CNTRSETS_EXPORT std::optional<LoneMass> massOf(const LoneSums& sums, const Frame& frame,
                                               bool withMoments);

}  // namespace cntr::sets
