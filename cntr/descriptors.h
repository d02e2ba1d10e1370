// SPDX-License-Identifier: MIT
//
// What describes a shape besides its moments: the smallest rectangle and circle around a list of
// points, their smallest width, and Hu's moment invariants. Area, centre and second moments are in
// inertia.h.
//
// Neither the order nor the repetition of points matters, except to qf_HuMoments(). All functions
// are pure and keep no state.

#pragma once

#include <array>
#include <span>
#include <vector>

#include <cntr/export.h>
#include <platform/core/shapes.h>

/// @addtogroup descriptors
/// @{

/// A rectangle in any direction. Lengths are in the unit of the coordinates.
struct qcOrientedRect {
  /// Where the diagonals meet.
  qcVector<2> center;
  /// The longer side.
  double length = 0.0;
  /// The shorter side; 0 around points on a line.
  double width = 0.0;
  /// The direction of the longer side, from the x axis towards the y axis, in (-90, 90].
  qcDegree angle;
  /// The corners, counter-clockwise with y up. The first two are the ends of a longer side, in the
  /// order of the angle's direction; of a side that falls so nearly upright that its angle is
  /// rounded to 90 degrees, from top to bottom.
  std::array<qcVector<2>, 4> corners;

  /// Exact equality of all numbers.
  bool operator==(const qcOrientedRect&) const noexcept = default;
};

/// The width of a shape: the distance between two parallel lines that enclose it.
struct qcWidth {
  /// The distance between the lines, in the unit of the coordinates.
  double width = 0.0;
  /// The direction across, at right angles to the lines, from the x axis towards the y axis, in
  /// (-90, 90].
  qcDegree angle;

  /// Exact equality of both numbers.
  bool operator==(const qcWidth&) const noexcept = default;
};

/// The rectangle with the smallest area around the points. It has a side on an edge of their convex
/// hull; of several smallest rectangles it is the one on the first such edge, counter-clockwise
/// from the lowest-leftmost vertex (smallest x, then smallest y). When its sides are equal, the one
/// on the edge counts as the longer one.
///
/// Exact: the hull, the choice and the ties are decided without rounding errors, and the numbers
/// are those of the true rectangle to within a unit in the last place, the angle to within 1e-13
/// degrees. This holds when every coordinate is 0 or at least 1e-80 of the largest one.
///
/// Points on a line give a rectangle of width 0 along the line, a single point one of size 0 at
/// angle 0. Points with a NaN coordinate are left out; an infinite coordinate makes all numbers
/// NaN. Throws qcContourDefs::EmptyContour without points.
///
/// O(n log n), and O(h) from the hull of h vertices. H. Freeman, R. Shapira, "Determining the
/// minimum-area encasing rectangle for an arbitrary closed curve", Communications of the ACM 18
/// (1975); G. T. Toussaint, "Solving geometric problems with the rotating calipers", MELECON 1983.
CNTR_EXPORT qcOrientedRect qf_MinimumAreaRect(std::span<const qcVector<2>> points);

/// The smallest width of the points: the smallest distance between two parallel lines that enclose
/// them. One of the lines goes through an edge of the convex hull. Ties, exactness, points on a
/// line (width 0, the angle across it), one point (0, angle 0), NaN, infinities, exceptions and
/// cost are those of qf_MinimumAreaRect().
///
/// M. E. Houle, G. T. Toussaint, "Computing the width of a set", IEEE Transactions on Pattern
/// Analysis and Machine Intelligence 10 (1988).
CNTR_EXPORT qcWidth qf_MinimumWidth(std::span<const qcVector<2>> points);

/// The smallest circle around the points. There is exactly one, and it rests on two points that are
/// the ends of a diameter, or on three that form an acute triangle: centre and radius are computed
/// from these alone. One point gives radius 0. Exactness, NaN, infinities and exceptions are those
/// of qf_MinimumAreaRect(); the radius is rounded, so that a point on which the circle rests may
/// lie a unit in the last place outside.
///
/// O(n log n) for the hull of h vertices, then O(h) on average over a random order drawn from a
/// fixed seed. E. Welzl, "Smallest enclosing disks (balls and ellipsoids)", New Results and New
/// Trends in Computer Science (1991).
CNTR_EXPORT qcCircle qf_MinimumCircle(std::span<const qcVector<2>> points);

/// Hu's seven moment invariants of what a ring bounds. They have no unit: they do not change when
/// the shape is shifted, turned or scaled, and the last one changes its sign in a mirror image. The
/// winding of the ring does not matter; where it crosses itself, lobes count with their own signs.
///
/// Each is accurate to about 1e-13 of its largest term, wherever the ring lies, for areas of at
/// least 1e-3 of the squared extent. All are NaN for fewer than 3 vertices, without area, and when
/// a coordinate is not finite. Never throws. O(n), no allocation.
///
/// M.-K. Hu, "Visual pattern recognition by moment invariants", IRE Transactions on Information
/// Theory 8 (1962).
CNTR_EXPORT std::array<double, 7> qf_HuMoments(std::span<const qcVector<2>> points);

/// The same of what several rings bound together: their signed moments are added, so holes must be
/// wound oppositely to outlines. Rings of fewer than 3 vertices add nothing.
CNTR_EXPORT std::array<double, 7> qf_HuMoments(std::span<const std::vector<qcVector<2>>> rings);

/// @}
