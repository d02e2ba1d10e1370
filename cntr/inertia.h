// SPDX-License-Identifier: MIT
//
// Moments of polygons: area, centre of mass, and the inertia record qc_InertiaData that adds bodies
// and subtracts holes. Ellipses from these moments are in ellipse.h.
//
// A polygon is a list of vertices taken as closed. Its signed area is positive when it is traversed
// counter-clockwise (x right, y up). All functions are pure and keep no state; none throws on
// degenerate input.

#pragma once

#include <vector>

#include <cntr/export.h>
#include <platform/core/matrix.h>
#include <platform/core/vector.h>
#include <platform/image/edgelet.h>

/// @addtogroup moments
/// @{

/// Zeroth, first and central second moments of a plane body: a plain value.
///
/// The matrix holds the second moments about the centre of mass: element (0,0) the integral of
/// (x - cx)^2, (1,1) that of (y - cy)^2, (0,1) and (1,0) that of (x - cx)(y - cy), with a plus
/// sign. Its diagonal is not negative even for a body of negative area: only the sign of the area
/// tells the winding.
class CNTR_EXPORT qc_InertiaData {
 public:
  /// The body of the given signed area, centre of mass and central second moments; without
  /// arguments the empty record: area 0, centre (0, 0), a zero matrix.
  qc_InertiaData(double area = 0.0, const qcVector<2>& centerOfMass = qcVector<2>(),
                 const qcMatrix<2>& inertiaMatrix = qcMatrix<2>(0.0, 0.0, 0.0, 0.0)) noexcept
      : area_(area), center_(centerOfMass), matrix_(inertiaMatrix) {}

  /// Signed area, negative for a clockwise outline or a hole.
  double area() const noexcept { return area_; }
  /// The centre of mass, in the unit of the coordinates; (0, 0) when there is no area.
  const qcVector<2>& centerOfMass() const noexcept { return center_; }
  /// The second moments about the centre of mass, in the fourth power of the coordinates' unit.
  const qcMatrix<2>& inertiaMatrix() const noexcept { return matrix_; }

  /// The combined body. Bodies of the same sign are added; of a body and one of the opposite sign
  /// (a hole), the negative operand's moments are subtracted. When the hole is the larger one, the
  /// matrix may have a negative diagonal. A record of area exactly 0 adds nothing. When the areas
  /// cancel (|sum| <= 1e-16) the combined centre is (0, 0).
  qc_InertiaData operator+(const qc_InertiaData& other) const noexcept;

 private:
  double area_;
  qcVector<2> center_;
  qcMatrix<2> matrix_;
};

/// Area of the polygon, never negative: half the absolute value of the sum of
/// p[i].y * p[i-1].x - p[i-1].y * p[i].x. 0 for fewer than 3 vertices. Lobes of a polygon that
/// crosses itself count with their own signs. O(n), no allocation.
CNTR_EXPORT double qf_Area(const std::vector<qcVector<2>>& points);
/// The same over the positions of edge elements.
CNTR_EXPORT double qf_Area(const std::vector<qcEdgelet>& edgelets);

/// The same as qnContour::centerOfMass(points).
CNTR_EXPORT qcVector<2> qf_CenterOfMass(const std::vector<qcVector<2>>& points);
/// The same over the positions of edge elements.
CNTR_EXPORT qcVector<2> qf_CenterOfMass(const std::vector<qcEdgelet>& edgelets);

namespace qnContour {

/// Centroid of the polygon, the same for both windings: the mean of the centroids of the
/// triangles from the origin to each edge, weighted with their signed areas; each of these is
/// found as the crossing of two medians.
///
/// (0, 0) for fewer than 3 vertices, and whenever twice the signed area is at most 1e-6 in absolute
/// value: the threshold does not scale, so that a shape about 1e-3 across has its centre at (0, 0).
/// Scale such shapes up first. O(n), no allocation.
CNTR_EXPORT qcVector<2> centerOfMass(const std::vector<qcVector<2>>& points);

}  // namespace qnContour

/// Signed area, centre and second moments of the polygon, summed over the triangles between its
/// centroid and each edge. The empty record for fewer than 3 vertices.
///
/// Meaningful for outlines that do not cross themselves. Clockwise ones must be convex: seen from
/// the centroid, an edge that runs backwards counts as a hole, and adding a hole to an outline of
/// negative area subtracts the wrong moments. Reverse a clockwise outline with reflex corners
/// first. O(n), allocates n records.
CNTR_EXPORT qc_InertiaData qf_InertiaDataPolygon(const std::vector<qcVector<2>>& points);

/// @}
