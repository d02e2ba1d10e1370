// SPDX-License-Identifier: MIT
//
// qcContour, an ordered list of vertices, open or closed, that answers questions about its curve.
// Start here. Regions (a closed contour with holes) are in region.h, sets of regions in regionst.h,
// contours that carry an edge element for each vertex in cntrtmpl/contourt.h.
//
// Answers are computed when they are first asked for and remembered until the vertices or the
// closed flag change; a copy carries them along. Const queries write what they remember: a contour
// may be used by only one thread at a time, distinct contours by different threads.
//
// Units are the caller's: lengths in the unit of the coordinates, areas in its square. Angles run
// from the x axis towards the y axis. NaN and infinite coordinates never make a query crash or
// hang; where no answer is stated for them, the answer is a meaningless number.

#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include <cntr/contourdefs.h>
#include <platform/core/handle.h>
#include <platform/core/persistent.h>
#include <platform/core/shapes.h>
#include <platform/core/vector.h>
#include <platform/core/xform.h>
#include <platform/display/tablet.h>

/// @addtogroup contours
/// @{

class qcRegion;
struct qc_ContourCache;
namespace cntr::compute {
struct CrossingTarget;
}  // namespace cntr::compute
namespace cntr::index {
class ContainmentGrid;
class EdgeIndex;
}  // namespace cntr::index
namespace cntr::plane {
struct Box;
struct Path;
}  // namespace cntr::plane

/// A list of vertices joined by edges, open or closed (then the edge from the last vertex back to
/// the first belongs to it), with a label for the caller's own use.
///
/// Edges have a fixed order: a closed contour of n vertices has the edges (p[n-1], p[0]),
/// (p[0], p[1]), ..., (p[n-2], p[n-1]), an open one (p[0], p[1]), ..., (p[n-2], p[n-1]). Sums
/// are taken in this order, and of several equally good answers the first one counts.
///
/// To make a shape forget its answers and free their memory, set what it already has:
/// `contour.isClosed(contour.isClosed())`, `region.points(region.points())`, for shapes with edge
/// elements `shape.data(shape.data())` (setting their points would reset the elements),
/// `set.regions(set.regions(), qcContourDefs::eNoIntersectionRepair)`. A region of 100 vertices
/// takes 2 kB, and 14 kB once every query has been asked.
///
/// Costs are given for a contour of n vertices. Where none is given, the time is O(n) at worst;
/// memory is O(n) unless stated otherwise, and the indexes take less than the vertices.
class CNTR_EXPORT qcContour : public virtual qcPersistent, public virtual qcRepBase {
 public:
  /// Any number of vertices is accepted; queries that need a curve throw
  /// qcContourDefs::EmptyContour when there are fewer than 2. Every constructor that takes a label
  /// checks it as label(label) does.
  qcContour(const std::vector<qcVector<2>>& points, bool closed, unsigned long label);
  /// All vertices of the polygon. Closed when the first and the last coincide within 1e-15 (the
  /// repeated vertex is kept); a polygon without vertices gives an empty open contour.
  qcContour(const qcPolygon& polygon, unsigned long label);
  /// Copies the remembered answers, too; the copy is independent. Vertices and indexes are shared
  /// until one of the two changes: the time does not depend on the number of vertices, unless a
  /// derived class has asked for the edges as shapes.
  qcContour(const qcContour& other);
  /// Copies like the copy constructor, after forgetting this object's own answers.
  qcContour& operator=(const qcContour& other);
  ~qcContour() override;

  /// True when both are open or both closed, and vertices (exactly) and cachedVectorSize are equal.
  /// Labels are not compared.
  bool operator==(const qcContour& other) const;

  /// The vertices in order. A closed contour does not repeat its first vertex, unless it was given
  /// that way. The list stays unchanged until the contour is assigned to, given other vertices,
  /// loaded or destroyed.
  const std::vector<qcVector<2>>& points() const noexcept { return *points_; }
  /// Replaces the vertices and forgets all answers. The closed flag and the label are kept.
  virtual void points(const std::vector<qcVector<2>>& points);
  /// True when the edge from the last vertex back to the first belongs to the contour.
  virtual bool isClosed() const { return closed_; }
  /// Opens or closes the contour and forgets all answers.
  virtual void isClosed(bool closed);
  /// A number for the caller's own use; 0 unless given.
  unsigned long label() const noexcept { return label_; }
  /// Sets the label; answers are kept. When no archive could hold it, throws
  /// qcContourDefs::BadParams "label is above 4294967295" and changes nothing.
  void label(unsigned long label);
  /// The capacity of each list of remembered answers that depend on an argument (an angle, a
  /// transform); 3 in a new contour. Such a list holds at most one answer more than that.
  long cachedVectorSize() const noexcept { return cachedVectorSize_; }
  /// Takes effect when the next answer is remembered; lists are not shortened. When `size` is
  /// negative, throws qcContourDefs::BadParams and changes nothing.
  void cachedVectorSize(long size);

  /// Length of the curve; 0 for fewer than 2 vertices. O(n), remembered.
  double length() const;
  /// Centroid of the contour as a uniform wire. Not finite when all edges have length 0. Throws
  /// EmptyContour for fewer than 2 vertices. O(n), remembered.
  qcVector<2> meanPosition() const;

  /// The point of the contour nearest to p: with `vertexOnly`, the vertex at closestVertexIndex(p),
  /// else the nearest point of the first nearest edge. (0, 0) when no distance is finite. Throws
  /// EmptyContour for fewer than 2 vertices. O(log n) for well-behaved outlines, O(n) at worst.
  qcVector<2> closestPoint(const qcVector<2>& p, bool vertexOnly) const;
  /// The index of the vertex nearest to p, the lowest one on ties; 0 when no distance is finite.
  /// Throws EmptyContour for fewer than 2 vertices. O(log n) for well-behaved outlines, O(n) at
  /// worst.
  long closestVertexIndex(const qcVector<2>& p) const;
  /// Distance from p to closestPoint(p, vertexOnly).
  double distToPoint(const qcVector<2>& p, bool vertexOnly) const;
  /// Writes closestPoint(points[i], vertexOnly) to answers[i], for all i. Faster than one by one,
  /// because each search begins where that for a neighbouring point ended. When the numbers differ,
  /// throws BadParams "as many answers as points are needed" and answers nothing; throws nothing
  /// else when there are no points. O(m) memory for m points. The lists must not overlap.
  void closestPoint(std::span<const qcVector<2>> points, bool vertexOnly,
                    std::span<qcVector<2>> answers) const;
  /// The same for distToPoint(points[i], vertexOnly).
  void distToPoint(std::span<const qcVector<2>> points, bool vertexOnly,
                   std::span<double> answers) const;

  /// The vertices as a polygon (even-odd). The polygon of a closed contour repeats the first vertex
  /// at the end, so that a contour made from it is closed again. Empty for a contour without
  /// vertices.
  qcPolygon polygon() const;
  /// The convex hull as a region, written to `hull`: counter-clockwise (y up) from the
  /// lowest-leftmost vertex, see qfConvexHull(). Throws EmptyContour for fewer than 2 vertices.
  /// O(n log n), remembered.
  void convexHull(qcRegion& hull) const;
  /// The ellipse that fits the vertices best and its residual (root mean square distance), or a
  /// circle if no ellipse fits; see qf_FitEllipse(), also for a residual of -1. Throws EmptyContour
  /// for fewer than 2 vertices. O(n), remembered.
  void fitEllipse(qcEllipse& ellipse, double& error) const;

  /// A circle from vertex distances, see qcContourDefs::DiameterMode; not the minimum enclosing
  /// circle. Open and closed contours give the same. eFarthestVertexPair takes, of several farthest
  /// pairs, the first in the order of (i, j), and a default circle when all vertices coincide or
  /// there are none. eFromFirstVertex throws EmptyContour without vertices. Any other mode throws
  /// BadParams "diameterMode is not one of the valid enums". Remembered by mode. O(n); the farthest
  /// pair O(n log n) for well-behaved outlines, O(n^2) at worst: when neighbours are far apart and
  /// all vertices near the rim.
  qcCircle encloseCircle(qcContourDefs::DiameterMode mode) const;
  /// Twice the radius of encloseCircle(mode): with eFromFirstVertex it can be nearly twice the
  /// largest extent.
  double diameter(qcContourDefs::DiameterMode mode) const;

  /// Where `segment` crosses the contour, in order along the segment.
  ///
  /// A crossing is the meeting point of the two carrying lines when it lies within 1e-6 of both the
  /// edge and the segment. Parallel edges never cross, not even where they overlap. Unless
  /// `countEndpointTouches`, edges that pass within 1e-6 of either end of the segment are left out.
  /// Nothing is merged: a segment through a vertex reports it once for each of its two edges.
  /// Points at equal positions along the segment are in the order in which an exchange sort over
  /// the edges leaves them. Throws EmptyContour for fewer than 2 vertices. With k crossings
  /// O(log n + k log k) for well-behaved outlines, O(n + k log k) at worst.
  std::vector<qcVector<2>> intersections(const qcLineSeg& segment, bool countEndpointTouches) const;
  /// The crossings of every edge of `other` with this contour, edge by edge in `other`'s order, end
  /// touches counted. Throws EmptyContour when this contour has fewer than 2 vertices. Costs as
  /// much as one query per edge of `other`; there may be as many crossings as pairs of edges.
  std::vector<qcVector<2>> intersections(const qcContour& other) const;
  /// True when intersections(segment, countEndpointTouches) has a point: the search ends with the
  /// first. Throws EmptyContour for fewer than 2 vertices.
  bool isCrossedBy(const qcLineSeg& segment, bool countEndpointTouches) const;
  /// True when an edge crosses another one away from its own ends. Edges that only meet at a vertex
  /// or overlap along a line do not count; a vertex in the interior of another edge does. False for
  /// fewer than 2 vertices. O(n log n) for well-behaved outlines, even where many edges lie side by
  /// side or on one line; O(n^2) at worst. Remembered.
  bool isSelfIntersecting() const;
  /// The vertices nearer than `tolerance` to `point`, from a grid of cells of that size: cell by
  /// cell (x-major), ascending within a cell. A grid is kept for every tolerance used. Cell numbers
  /// saturate at 64 bits, so a tolerance of 0 finds nothing. Throws EmptyContour for fewer than 2
  /// vertices. O(n) for the first query with a tolerance, whose grid takes up to 80 bytes per
  /// vertex; after that proportional to the number of vertices in nine cells, O(n) at worst.
  std::vector<int> vertexIndex(const qcVector<2>& point, double tolerance) const;

  /// The index of the vertex farthest in the direction of `angle`, the lowest one on ties; -1 when
  /// no vertex has a finite position in that direction. The four axis directions are decided on
  /// exact coordinates. Throws EmptyContour for fewer than 2 vertices. O(n) for the first few
  /// angles, O(log n) after that for well-behaved outlines, O(n) at worst; remembered by angle.
  long extremalVertexIndex(const qcRadian& angle) const;
  /// The vertex at extremalVertexIndex(angle). Throws BadParams when there is none.
  qcVector<2> extremalVertexPosition(const qcRadian& angle) const;
  /// The smallest axis-aligned rectangle around the vertices mapped by `xform`. Throws EmptyContour
  /// for fewer than 2 vertices. O(n), remembered by transform.
  qcRect encloseRect(const qcXform<2>& xform) const;
  /// Writes the image of the contour to `result`: same closed flag and label, no answers,
  /// cachedVectorSize 3. A result that is a region forgets its own answers and keeps its holes.
  void map(const qcXform<2>& xform, qcContour& result) const;

  /// Draws every edge in order, one segment each, whatever the mode. Edges of length 0 are drawn;
  /// vertices are not marked.
  virtual void draw(qcUITablet& tablet, qcContourDefs::DrawMode mode, const qcColor& color,
                    const qcUITablet::Layers& layers) const;

 protected:
  /// Current record version 1: the qcPersistent record, the label, the closed flag, the list of
  /// points, cachedVectorSize. Version 0, without label, is still read.
  void dispatchSerialize(qcArchive& archive) override;
  /// The fields of a record of the given version. Throws qcArchive::UnknownVersion naming
  /// "cntr/contour" for a version other than 0 and 1.
  virtual void serialize_(qcArchive& archive, unsigned char version);
  /// The record of version 0, the same for contours and regions: the record of a former base class
  /// (a version byte 0, else qcArchive::UnknownVersion naming `source` and `line`, and the
  /// qcPersistent record), the list of points, a byte that is ignored, cachedVectorSize, the closed
  /// flag. Loading sets the label to 0.
  void serializeOldRecord_(qcArchive& archive, const char* source, int line);

  /// Hook for contours that carry data for each vertex: called after the points have been set. Does
  /// nothing here.
  virtual void makeDataConsistentWithPoints();
  /// Its counterpart: called after the data have been set.
  virtual void makePointsConsistentWithData();
  /// Forgets every answer and sends a change notice. This is the only place where answers are
  /// forgotten: every change of the vertices or the closed flag ends here.
  virtual void cleanCacheInfo();

  /// Replaces the vertices without calling makeDataConsistentWithPoints().
  void setPoints(const std::vector<qcVector<2>>& points);
  /// Throws EmptyContour for fewer than 2 vertices.
  void checkEmptyContour() const;

  /// The middle edge length (the upper one of two). Throws EmptyContour for fewer than 2 vertices.
  /// O(n), remembered.
  double medianFeatureSize() const;
  /// Builds what lineSegs() and validLine() return, unless it already exists.
  void computeLineSegs() const;
  /// The edges as segments, in order; a default segment for an edge whose ends coincide within
  /// 1e-15. Built on first use.
  const std::vector<qcLineSeg>& lineSegs() const;
  /// For each edge, false if its ends coincide within 1e-15, else true. Built on first use.
  const std::vector<bool>& validLine() const;
  /// Like the public form; `segIndices` receives the index of the crossed edge for each point.
  std::vector<qcVector<2>> intersections(const qcLineSeg& segment, std::vector<int>& segIndices,
                                         bool countEndpointTouches) const;

 private:
  friend class qcRegion;
  /// Gives the tests access to what is remembered.
  friend struct qc_RememberedBy;

  CNTR_LOCAL static qcPersistent* make();
  CNTR_LOCAL static qc_Instantiator sExemplar;

  /// What a record holds.
  struct Fields {
    unsigned long label;
    bool closed;
    long cachedVectorSize;
    std::vector<qcVector<2>> points;
  };

  /// Makes a loaded record this contour's content. When the record is invalid, throws
  /// qcArchive::BadFormat and changes nothing.
  CNTR_LOCAL void takeLoaded(Fields fields);
  CNTR_LOCAL qc_ContourCache& cache() const;
  CNTR_LOCAL cntr::plane::Path path() const;
  /// The index of the edges; null for contours that are quicker without one.
  CNTR_LOCAL const cntr::index::EdgeIndex* edgeIndex() const;
  /// The same for extremal vertices: null until enough directions have been asked for.
  CNTR_LOCAL const cntr::index::EdgeIndex* indexForExtremes() const;
  /// The box of all vertices. REQUIRES: at least one vertex.
  CNTR_LOCAL const cntr::plane::Box& bounds() const;
  /// REQUIRES: at least one vertex.
  CNTR_LOCAL cntr::compute::CrossingTarget crossingTarget() const;

  unsigned long label_;
  bool closed_;
  /// What questions about containment have cost so far, see cntr/index/policy.h. Not among the
  /// remembered answers, so that a small shape asked about one point allocates nothing.
  mutable std::uint32_t containmentWork_ = 0;
  /// Never null; never changed in place, because copies share it.
  std::shared_ptr<std::vector<qcVector<2>>> points_;
  long cachedVectorSize_ = 3;
  mutable std::unique_ptr<qc_ContourCache> cache_;
};

/// @}
