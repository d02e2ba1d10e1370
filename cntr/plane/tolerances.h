// SPDX-License-Identifier: MIT
//
// The distances within which points and edges count as touching, and the margins derived from them
// that let a search skip what it cannot touch. They are kept together because one proof rests on
// several of them: if one is changed, the assertions below say which argument no longer holds.
//
// A tolerance that serves a single definition stays with that definition, even if it has the same
// digits: the smallest area with a centroid (model/inertia.cpp), a direction taken for an axis
// (compute/extremal.cpp), a transform taken for the identity (compute/extents.cpp).

#pragma once

#include <limits>

#include <platform/core/vector.h>

namespace cntr::plane {

/// Points whose coordinates both agree within this coincide; an edge between them has no direction.
inline constexpr double coincidence = 1e-15;

inline bool coincide(const qcVector<2>& a, const qcVector<2>& b) noexcept {
  return qfRealEq(a, b, coincidence);
}

/// A crossing point lies nearer than this to both segments; the end of a segment as near as this to
/// an edge touches it; a point as near as this to a vertex is on it; vertices nearer to each other
/// than this lie in one place.
inline constexpr double touchDistance = 1e-6;

/// Edges that cross come nearer to each other than this: their crossing point is within
/// touchDistance of both, and the rest allows for rounding in coordinates of up to
/// `largestCoordinate`.
constexpr double crossingMargin(double largestCoordinate) noexcept {
  return 3.0 * touchDistance + 64.0 * std::numeric_limits<double>::epsilon() * largestCoordinate;
}
static_assert(crossingMargin(0.0) > 2.0 * touchDistance);

/// The margin m of the containment grid, and the size below which it takes coordinates: see the
/// proof in index/containmentgrid.h. The grid of cntrsets/operations/insidegrid.h rests on it as
/// well: its answer "outside" is right for points farther than touchDistance from every edge.
inline constexpr double containmentMargin = 1.1 * touchDistance;
inline constexpr double containmentCoordinates = 1e6;
/// How far rounding moves a crossing computed from such coordinates.
inline constexpr double containmentRounding = 1e-8;
static_assert(containmentRounding < touchDistance, "a proper crossing is found");
static_assert(containmentMargin - containmentRounding > touchDistance,
              "a miss is not, and what keeps clear by the margin is farther than touchDistance");
static_assert(containmentRounding >
                  32.0 * std::numeric_limits<double>::epsilon() * containmentCoordinates,
              "some roundings in the last place of such coordinates stay below it");

/// Square roots merge squares that differ by less than about 2^-52 of their size: a squared
/// distance may exceed another by this factor and still tie with it.
inline constexpr double tieSlack = 1.0 + 4.0 * std::numeric_limits<double>::epsilon();

}  // namespace cntr::plane
