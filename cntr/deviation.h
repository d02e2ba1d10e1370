// SPDX-License-Identifier: MIT
//
// How far one set of curves lies from another: signed distances of a measured outline from its
// nominal one, the Hausdorff distance, and the motion that brings them together.
//
// Curves are lists of contours, open and closed: an outline and its holes, for example. A contour
// of one vertex is that point.

#pragma once

#include <vector>

#include <cntr/contour.h>
#include <platform/core/xform.h>

/// @addtogroup descriptors
/// @{

/// What qf_Deviation() finds. Distances are in the unit of the coordinates.
struct qcDeviation {
  /// The least distance: how deep inside the nominal area the measured curves come, where distances
  /// are signed.
  double least = 0.0;
  /// The first point with that distance.
  qcVector<2> leastAt;
  /// The greatest distance.
  double greatest = 0.0;
  /// The first point with that distance.
  qcVector<2> greatestAt;
  /// The mean distance along the measured curves.
  double mean = 0.0;
  /// The root mean square of the distances along the measured curves.
  double rms = 0.0;
  /// Whether the distances have signs, positive outside the nominal area and negative inside. They
  /// have none when a nominal contour is open.
  bool isSigned = true;

  /// Exact equality of all members.
  bool operator==(const qcDeviation&) const noexcept = default;
};

/// How far `measured` lies from the nearest points of `nominal`: taken at every measured vertex,
/// and between vertices at equal steps of at most `spacing`, which may be infinite. Each point
/// weighs half of the steps beside it; in a contour without length all points weigh the same.
///
/// The nominal area holds the points about which the winding numbers of the nominal contours do not
/// sum to 0: holes must run in the opposite direction to outlines.
///
/// Throws qcContourDefs::EmptyContour when either has no vertices, qcContourDefs::BadParams
/// "spacing is not positive", "a coordinate is not finite", and "spacing is too small for the
/// contour" for more than 2^31 steps in an edge. O((n + m) log n) for n nominal vertices and m
/// points, as long as the nominal edges are not all equally near.
CNTR_EXPORT qcDeviation qf_Deviation(const std::vector<qcContour>& measured,
                                     const std::vector<qcContour>& nominal, double spacing);

/// The Hausdorff distance of the curves `a` and `b`, in the unit of the coordinates: the distance
/// from the other curves of the point of either that is farthest from them. All points of the edges
/// count, not only the vertices. The result is the distance of such a point: except for rounding it
/// is never above the true value, and at most `tolerance` below it.
///
/// Throws qcContourDefs::EmptyContour when either has no vertices, qcContourDefs::BadParams "a
/// coordinate is not finite" and "tolerance is not positive".
///
/// Edges are halved as long as a point of them might be farther by more than `tolerance` than the
/// farthest one so far; a part of an edge that is near one edge of the other curve at both ends is
/// nowhere farther from it (distances from a segment are convex). O((n + m) log(n + m)) for most
/// curves, and never more than the sum of the lengths over `tolerance` many points.
CNTR_EXPORT double qf_Hausdorff(const std::vector<qcContour>& a, const std::vector<qcContour>& b,
                                double tolerance);

/// What qf_Align() finds.
struct qcAlignment {
  /// Moves the measured curves onto the nominal ones: a rotation, then a translation.
  qcXform<2> transform;
  /// The rotation, in [-180, 180] degrees.
  qcDegree angle;
  /// The root mean square distance that is left, in the unit of the coordinates.
  double residual = 0.0;
  /// How many steps the last refinement took, at most 50.
  int steps = 0;
  /// Whether it ended because a further step would change next to nothing: 1e-10 of the extent.
  bool settled = false;
};

/// The rigid motion, without mirroring, that gives the measured curves the least root mean square
/// distance from the nominal ones: over their vertices and points between at steps of at most 1/512
/// of their length, each weighing the length that it stands for.
///
/// It is the least that is found: from the principal axes laid upon each other both ways and from
/// 16 rotations, each refined a little with some of the points, the best is refined with all. A
/// shape with a symmetry may come out under any of its members, curves far from similar in another
/// of several places that are about as good. Without any length all points weigh the same.
///
/// Throws qcContourDefs::EmptyContour when either has no vertices, qcContourDefs::BadParams "a
/// coordinate is not finite", and "spacing is too small for the contour" where a length is not
/// finite. O((n + m) log n) for each of about 200 steps. P. J. Besl, N. D. McKay, "A method for
/// registration of 3-D shapes", IEEE Transactions on Pattern Analysis and Machine Intelligence 14
/// (1992); Y. Chen, G. Medioni, "Object modelling by registration of multiple range images", Image
/// and Vision Computing 10 (1992), for the distance from lines.
CNTR_EXPORT qcAlignment qf_Align(const std::vector<qcContour>& measured,
                                 const std::vector<qcContour>& nominal);

/// @}
