// SPDX-License-Identifier: MIT
//
// qcRegion, a planar area: a closed outline and holes, which are regions themselves. The outline
// is the region's qcContour part, so every query of contour.h is about the outline alone; the
// queries here take the holes into account. Sets of regions are in regionst.h.

#pragma once

#include <initializer_list>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include <cntr/contour.h>
#include <platform/core/matrix.h>

/// @addtogroup regions
/// @{

struct qc_RegionCache;

/// An area with holes. Holes are shared and must not be changed once they have been handed over:
/// later answers may be those from before the change.
///
/// Measures need an outline of at least 3 vertices and throw qcContourDefs::EmptyContour otherwise.
/// A null handle among the holes throws qcBadPointer when it is first met.
///
/// A query with holes costs as much as the same query on the outline and on every hole together,
/// see contour.h: it does not look for the holes that matter.
///
/// The outline is the virtual base qcContour, which is constructed by the most derived class. A
/// class derived from qcRegion must therefore give the vertices to both constructors; those given
/// to qcRegion alone are lost:
///
///     class Plate : public qcRegion {
///      public:
///       Plate(const std::vector<qcVector<2>>& outline, double thickness)
///           : qcContour(outline, true, 0),
///             qcRegion(outline, qcContourDefs::eNoIntersectionRepair),
///             thickness_(thickness) {}
///       ...
///     };
class CNTR_EXPORT qcRegion : public virtual qcContour {
 public:
  /// No vertices, no holes.
  qcRegion();
  /// An outline through `vertices`, label 0, no holes. Repaired in place when `mode` asks for it;
  /// see outerHull() and regularize() for exceptions.
  qcRegion(const std::vector<qcVector<2>>& vertices, qcContourDefs::IntersectionMode mode);
  /// The same for vertices listed in braces; `{}` means no vertices.
  qcRegion(std::initializer_list<qcVector<2>> vertices, qcContourDefs::IntersectionMode mode);
  /// The polygon's vertices, unchanged: a repeated last vertex is kept.
  qcRegion(const qcPolygon& polygon, qcContourDefs::IntersectionMode mode);
  /// A copy of the contour's vertices, label and cachedVectorSize. The region is closed even when
  /// the contour is open (its stored flag stays open and is what archives store).
  qcRegion(const qcContour& contour, qcContourDefs::IntersectionMode mode);
  /// Copies the remembered answers, too. Holes are shared, not cloned.
  qcRegion(const qcRegion& other);
  /// Copies like the copy constructor, after forgetting this object's own answers.
  qcRegion& operator=(const qcRegion& other);
  ~qcRegion() override;

  /// Compares the outlines as contours. Holes are not compared: two regions that differ only in
  /// their holes are equal; also compare holes() where that matters.
  bool operator==(const qcRegion& other) const;

  /// The holes in the order in which they were set.
  const std::vector<qcPtrHandle_const<qcRegion>>& holes() const noexcept { return holes_; }
  /// Replaces all holes and forgets all answers. Every new hole is checked first: a null handle
  /// throws qcBadPointer, a hole whose outline crosses or touches this one's (as reported by
  /// intersections()) throws BadParams "holes cannot intersect region"; the holes are then
  /// unchanged.
  ///
  /// Nothing else is checked: a hole may lie outside the outline, enclose it, or cross another
  /// hole. Check with inside() and intersections() where that matters.
  void holes(const std::vector<qcPtrHandle_const<qcRegion>>& holes);
  /// The same for handles that may change their hole; do not change it afterwards.
  void holes(const std::vector<qcPtrHandle<qcRegion>>& holes);
  /// The same for handles of either kind listed in braces; `{}` removes all holes.
  void holes(std::initializer_list<qcPtrHandle_const<qcRegion>> holes);

  /// Always true.
  bool isClosed() const override { return true; }
  /// Accepts true, which changes nothing; false throws qcContourDefs::RegionCannotBeSetOpen.
  void isClosed(bool closed) override;

  /// Area of the outline, with `considerHoles` less the areas of the holes. Only one level is
  /// subtracted: holes in a hole are not added back; add their area(true) yourself. Remembered.
  double area(bool considerHoles) const;
  /// Centre of mass of the outline, or with `considerHoles` of the area without the holes.
  ///
  /// With holes, only the first call after a change computes it; later calls return (0, 0). Keep
  /// the first answer. Without holes it is remembered.
  qcVector<2> centerOfMass(bool considerHoles) const;
  /// Second moments of the outline about its centre of mass, see qf_InertiaDataPolygon().
  /// With `considerHoles` on a region that has holes: throws BadParams
  /// "inertiaMatrix(considerHoles) is not implemented"; add up the qc_InertiaData records of
  /// the outline and, with negative area, of each hole instead. Remembered.
  qcMatrix<2> inertiaMatrix(bool considerHoles) const;

  /// True when p lies inside the outline and, with `considerHoles`, in none of its holes (a
  /// point in a hole of a hole is inside again).
  ///
  /// Each ring is decided by counting the crossings of a ray with it, in a direction that keeps
  /// clear of all its vertices. A point within 1e-6 of a vertex of the ring is inside it, unless it
  /// is outside its bounding box; a point elsewhere on the ring may fall on either side. The ray is
  /// twice as long as the largest distance of a vertex from the first one: for points near a corner
  /// of the bounding box it can fall short of the far side.
  ///
  /// For each ring, O(n) for the first few points; then O(log n) for well-behaved outlines,
  /// mostly O(1) after very many points (which takes up to 100 bytes per vertex plus 2,000),
  /// O(n log n) at worst. Each hole is decided only once, however many handles lead to it.
  bool inside(const qcVector<2>& p, bool considerHoles) const;
  /// Writes inside(points[i], considerHoles) to answers[i], for all i. Faster than one by one. When
  /// the numbers differ, throws BadParams "as many answers as points are needed" and answers
  /// nothing; throws nothing else when there are no points. A std::vector<bool> cannot be used for
  /// the answers.
  void inside(std::span<const qcVector<2>> points, bool considerHoles,
              std::span<bool> answers) const;
  /// Distance from p to the nearest boundary point or vertex; 0 when `zeroIfInside` and
  /// inside(p, considerHoles).
  double distToPoint(const qcVector<2>& p, bool vertexOnly, bool considerHoles,
                     bool zeroIfInside) const;
  /// The same for many points, see inside() and qcContour::closestPoint() for many.
  void distToPoint(std::span<const qcVector<2>> points, bool vertexOnly, bool considerHoles,
                   bool zeroIfInside, std::span<double> answers) const;
  /// The nearest vertex, or boundary point, of the outline and the holes; the outline and earlier
  /// holes win ties. `considerHoles` matters only with `vertexOnly`: otherwise holes are always
  /// searched; use the contour's closestPoint(p, false) for the outline alone.
  qcVector<2> closestPoint(const qcVector<2>& p, bool vertexOnly, bool considerHoles) const;
  /// The same for many points, see qcContour::closestPoint() for many.
  void closestPoint(std::span<const qcVector<2>> points, bool vertexOnly, bool considerHoles,
                    std::span<qcVector<2>> answers) const;
  /// The index of the nearest vertex and, in `holeIndex`, the hole whose outline it belongs to
  /// (-1: the outline).
  long closestVertexIndex(const qcVector<2>& p, bool considerHoles, long& holeIndex) const;
  /// Crossings of a segment with the outline, then with each hole's outline in hole order;
  /// sorted along the segment within each of them.
  std::vector<qcVector<2>> intersections(const qcLineSeg& segment, bool countEndpointTouches,
                                         bool considerHoles) const;
  /// Crossings of `other` with the outline, then with each hole's outline.
  std::vector<qcVector<2>> intersections(const qcContour& other, bool considerHoles) const;
  /// Crossings of a segment with the outline, see qcContour::intersections().
  std::vector<qcVector<2>> intersections(const qcLineSeg& segment,
                                         bool countEndpointTouches) const {
    return qcContour::intersections(segment, countEndpointTouches);
  }
  /// Crossings of `other` with the outline, see qcContour::intersections().
  std::vector<qcVector<2>> intersections(const qcContour& other) const {
    return qcContour::intersections(other);
  }

  /// The outline's own queries.
  using qcContour::closestPoint;
  using qcContour::closestVertexIndex;
  using qcContour::distToPoint;
  using qcContour::draw;
  using qcContour::map;

  /// Replaces `dest` by a region whose outline does not cross itself: walks along the outline from
  /// an edge that lies on its outside and turns onto every edge that it meets. What the outline
  /// covers twice is left out; parts of an outline with many crossings may be lost
  /// (docs/repair.md). The result has no holes.
  ///
  /// An outline that runs within 1e-6 of itself may give a result that still crosses itself, and
  /// one that bounds nothing may give a result of 2 vertices; docs/repair.md says how often.
  ///
  /// A region whose outline does not cross itself is copied unchanged, holes included; holes are
  /// not examined. Throws BadParams "invalid contour" when no edge can start the walk (every one is
  /// crossed) or the walk never returns, EmptyContour for fewer than 3 vertices; `dest`, which may
  /// be this region, is then unchanged. Remembered.
  ///
  /// For n vertices and k crossings the walk has up to n + k steps, all of which may be in the
  /// result. Each step costs as much as intersections() of a segment, every edge tried as a start
  /// that plus inside(). O((n + k) log n) for well-behaved outlines, O((n + k) n log n) at worst,
  /// where k may be n^2 / 2.
  void regularize(qcRegion& dest) const;
  /// The same walk, its result cut into simple loops where it touches itself within 1e-6; loops
  /// inside others are dropped and loops that touch are joined. The result is the first loop: the
  /// union, with openings filled, if the outline crosses itself once; otherwise parts may be
  /// missing (docs/repair.md). A walk of t steps is cleaned up in O(t log t) when it touches itself
  /// in few places, and in O(t^2 log t) at worst.
  void outerHull(qcRegion& dest) const;

  /// Writes the image of the outline to `dest`: same label, cachedVectorSize 3, no holes (map and
  /// set them yourself). A transform that mirrors reverses the winding.
  void map(const qcXform<2>& xform, qcRegion& dest) const;

  /// Draws nothing: use draw() with a mode, which draws the outline.
  virtual void draw(qcUITablet& tablet, const qcColor& color,
                    const qcUITablet::Layers& layers) const;

 protected:
  /// Current record version 1: the qcContour record, then the list of holes. Version 0, without
  /// holes, can be read but not stored.
  void dispatchSerialize(qcArchive& archive) override;
  /// The fields of a record of the given version; throws qcArchive::UnknownVersion for others.
  void serialize_(qcArchive& archive, unsigned char version) override;
  void cleanCacheInfo() override;
  /// Throws EmptyContour for fewer than 3 vertices.
  void checkEmptyContour() const;

 private:
  friend class qcRegionSet;
  using qcContour::crossingTarget;

  CNTR_LOCAL static qcPersistent* make();
  CNTR_LOCAL static qc_Instantiator sExemplar;

  CNTR_LOCAL void repair(qcContourDefs::IntersectionMode mode);
  CNTR_LOCAL void checkHole(const qcPtrHandle_const<qcRegion>& hole) const;
  /// The number of crossings of a ray from p with the outline; with `bothDirections` the smaller
  /// number of the ray and its opposite.
  CNTR_LOCAL long insideCount(const qcVector<2>& p, bool bothDirections) const;
  /// Makes the grid that answers most questions, once they have cost enough; null until then, and
  /// for outlines that can have none. REQUIRES: it is not known.
  CNTR_LOCAL const cntr::index::ContainmentGrid* containmentGrid() const;
  /// The existing grid, or null.
  CNTR_LOCAL const cntr::index::ContainmentGrid* knownContainmentGrid() const;
  /// The existing grid, or a new one when it is time, or null.
  CNTR_LOCAL const cntr::index::ContainmentGrid* gridToAsk() const;
  /// True when insideCount(p, false) is odd.
  CNTR_LOCAL bool isInsideBoundary(const qcVector<2>& p) const;
  /// Writes the same for points[i] to answers[i].
  CNTR_LOCAL void areInsideBoundary(std::span<const qcVector<2>> points,
                                    std::span<bool> answers) const;
  /// The same by even-odd parity, where that decides; else by the ray. Counts the work.
  CNTR_LOCAL bool isInsideWithoutGrid(const qcVector<2>& p) const;
  CNTR_LOCAL void addContainmentWork(std::size_t work) const;
  /// REQUIRES: the outline holds p.
  CNTR_LOCAL bool isInHole(const qcVector<2>& p) const;
  CNTR_LOCAL double areaWithHoles() const;
  CNTR_LOCAL qcVector<2> centerOfMassWithHoles() const;
  /// The box of the outline and of all holes; nothing when asking the region could throw: a
  /// null hole, a ring of fewer than 2 vertices, coordinates that are not finite.
  CNTR_LOCAL std::optional<cntr::plane::Box> boxOfBoundaries() const;
  /// The same for the outline alone.
  CNTR_LOCAL std::optional<cntr::plane::Box> boxOfBoundary() const;
  /// True when the outlines cross or touch: intersections(other) has a point.
  CNTR_LOCAL bool crosses(const qcRegion& other) const;
  CNTR_LOCAL void assignRepaired(qcRegion& dest, bool outerHullMode) const;
  CNTR_LOCAL void outerHullRegularize(qcRegion& dest, bool outerHullMode) const;
  /// Joins two regions whose outlines cross into one ring that runs around both; throws
  /// BadParams "spliced regions do not intersect".
  CNTR_LOCAL void splice(const qcRegion& other, qcRegion& dest) const;
  CNTR_LOCAL qc_RegionCache& regionCache() const;

  std::vector<qcPtrHandle_const<qcRegion>> holes_;
  /// Of the outline, which is never negative; less while it is not known. Here and not among the
  /// other answers, so that asking for it allocates nothing.
  mutable double area_ = -1.0;
  mutable std::unique_ptr<qc_RegionCache> regionCache_;
};

/// @}
