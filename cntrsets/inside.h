// SPDX-License-Identifier: MIT
//
// Which points lie in a feature: the answer given by the program, by tables and by joins.

#pragma once

#include <memory>
#include <span>
#include <vector>

#include <cntrsets/export.h>
#include <cntrsets/rings.h>

/// @addtogroup setoperations
/// @{

/// Tells which points lie in the filled set of a feature (eNonZero, see sets.h).
///
/// For rings that are simple or touch (filled.h) the answer is that of the library's regions:
/// inside if, by qcRegion::inside(), the point lies in some part's outline and in none of that
/// part's holes. But a point that is outside by exact even-odd parity, and farther than 1e-6 from
/// every edge, is outside: the ray by which a region decides can be too short near a corner of the
/// bounding box.
///
/// For rings that cross or overlap, exact winding numbers decide; a point on an edge is treated
/// like the points just beyond it: it is inside on an edge between two filled faces, and may fall
/// on either side on the boundary.
///
/// Rings of fewer than 3 vertices hold no points, and no point outside the box of all outlines is
/// inside. Points may have any coordinates.
///
/// Queries remember what later ones need, which never changes an answer; an object may therefore be
/// used by only one thread at a time, like a shape. The first point in the box costs as much as
/// qf_RingContact() and a pass over all edges; after a few points, each costs O(log n) for
/// well-behaved outlines; after about as many as there are vertices, most answers are a look-up of
/// some nanoseconds, in up to 300 bytes per vertex. O(n) for each point at worst.
class CNTRSETS_EXPORT qcInside {
 public:
  /// Copies the feature. Throws qcContourDefs::BadParams "a coordinate is not a finite number".
  /// O(n).
  explicit qcInside(const std::vector<qcRings>& feature);
  /// Takes over the feature of `other`, which can then only be assigned to or destroyed.
  qcInside(qcInside&& other) noexcept;
  /// The same; replaces this object's feature.
  qcInside& operator=(qcInside&& other) noexcept;
  ~qcInside();

  /// Whether the point lies in the feature.
  bool contains(const qcVector<2>& p) const;
  /// The same in answers[i] for points[i]. When the numbers differ, throws BadParams "as many
  /// answers as points are needed" and answers nothing.
  void contains(std::span<const qcVector<2>> points, std::span<bool> answers) const;

 private:
  friend struct qc_InsideWays;
  struct State;

  std::unique_ptr<State> state_;
};

/// For each point whether qcInside says that it lies in the feature. O((n + m) log n) for n
/// vertices of well-behaved outlines and m points, O(n m) at worst. Throws what its constructor
/// throws.
CNTRSETS_EXPORT std::vector<bool> qf_Inside(const std::vector<qcRings>& feature,
                                            std::span<const qcVector<2>> points);

/// @}
