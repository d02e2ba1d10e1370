// SPDX-License-Identifier: MIT
//
// Set operations on outlines with holes, and repair of outlines that cross or overlap. The outlines
// are plain values, see rings.h; geos.h exchanges them with GEOS.
//
// A feature is a list of parts; its *filled set* by the rule eNonZero is the union over its parts
// of the points whose winding number about the part's outline is not 0 and about each of the part's
// holes is 0; by eEvenOdd it is the points for which the winding numbers about all rings sum to an
// odd number. The winding of rings does not matter; rings of fewer than 3 vertices fill nothing.
//
// All functions give features in the *normal form*: valid as simple features of OGC (ISO 19125-1);
// outlines counter-clockwise with y up, holes clockwise; rings start at their lowest-leftmost
// vertex (smallest x, then smallest y); parts are sorted by these vertices, and so are the holes of
// a part. qf_MakeValid() returns a feature in normal form bit for bit, and gives the same for
// features that differ from it only in the start and winding of rings.
//
// Method: rings are cut where they meet, by exact predicates on the coordinates as given; winding
// numbers are carried from face to face over the cut edges, so no face is too thin to be judged;
// the edges between kept and other faces are joined to rings. Vertices of the input that lie on the
// boundary of the result keep their bits, and none is left out because it lies on a straight line.
// Coordinates smaller than the largest by a factor of more than 2^944, about 1e284, come back as 0.
// Crossings are rounded to the nearest doubles. If rounded crossings keep making new ones (for
// outlines as small as the precision of their coordinates), all vertices are moved to a grid.
//
// All functions are pure and may be called by several threads. They take O((n + k) log n) for n
// vertices and k meetings of edges, about 1 us per vertex of a simple outline. All throw
// qcContourDefs::BadParams
// - "a coordinate is not a finite number",
// - "the outlines cannot be cut at their crossings" when no grid helps; not seen so far,
// - "the result is not valid: ..." when GEOS, which judges every result that has edges not in the
//   input, finds a flaw, or when areas do not add up: the areas of the faces, each taken as often
//   as a ring winds around it, to that of the ring; those of the kept faces to that of the result.
//   Not seen so far.

#pragma once

#include <cstddef>
#include <vector>

#include <cntrsets/export.h>
#include <cntrsets/rings.h>
#include <platform/core/shapes.h>

/// @addtogroup setoperations
/// @{

/// What a repair has done.
struct qcRepairReport {
  /// The result differs from the input.
  bool changed = false;
  /// It differs in more than the start and winding of rings and the order of parts and holes.
  bool repaired = false;
  /// Vertices were moved to a grid.
  bool snapped = false;
  /// The spacing of that grid; 0 without one.
  double gridSize = 0.0;
  /// Area of the result.
  double area = 0.0;
  /// By how much the area can differ from that of the filled set, because crossings and grid
  /// vertices are rounded.
  double areaError = 0.0;
  /// Vertices of all rings of the input.
  std::size_t verticesBefore = 0;
  /// Vertices of all rings of the result.
  std::size_t verticesAfter = 0;
  /// Parts of the result.
  std::size_t parts = 0;
  /// Holes of the result.
  std::size_t holes = 0;
};

/// The filled set of the feature by the rule, in normal form. `report`, unless it is null, is set
/// when there is a result. Its area is within 1e-9 of the filled set's plus the length of all rings
/// times the unit in the last place of the largest coordinate, unless a grid had to be used.
///
/// Throws qcContourDefs::BadParams "the feature has no area" when nothing is filled: for a feature
/// without parts, a line walked there and back, a hole that covers its outline.
CNTRSETS_EXPORT std::vector<qcRings> qf_MakeValid(const std::vector<qcRings>& feature,
                                                  qcPolygon::PolyFillMode rule,
                                                  qcRepairReport* report = nullptr);

/// The points of either filled set (eNonZero), with boundaries taken as part of the sets. Empty
/// when both are.
CNTRSETS_EXPORT std::vector<qcRings> qf_Union(const std::vector<qcRings>& a,
                                              const std::vector<qcRings>& b);
/// The area that both filled sets (eNonZero) share; empty when they share only points and lines.
CNTRSETS_EXPORT std::vector<qcRings> qf_Intersection(const std::vector<qcRings>& a,
                                                     const std::vector<qcRings>& b);
/// The filled set of a without that of b (eNonZero).
CNTRSETS_EXPORT std::vector<qcRings> qf_Difference(const std::vector<qcRings>& a,
                                                   const std::vector<qcRings>& b);
/// The area that belongs to exactly one of the two filled sets (eNonZero).
CNTRSETS_EXPORT std::vector<qcRings> qf_SymmetricDifference(const std::vector<qcRings>& a,
                                                            const std::vector<qcRings>& b);

/// All points within `distance` of the filled set (eNonZero), with rounded corners; with a negative
/// distance, the points of the set that are at least that far from everything outside it. Arcs
/// become chords that deviate by at most `arcTolerance` (limited to between 1e-8 and 0.25 of the
/// distance), towards the original boundary. Distance 0 gives the filled set. Empty when nothing is
/// left.
///
/// Throws BadParams "the distance is not a finite number" or "the arc tolerance must be above 0".
/// An outline of short edges crosses its own offset k = O(n distance / edge length) times.
CNTRSETS_EXPORT std::vector<qcRings> qf_Offset(const std::vector<qcRings>& feature, double distance,
                                               double arcTolerance);

/// @}
