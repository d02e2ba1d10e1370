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

/// The result of qf_Deviation(). Distances are in the unit of the coordinates.
struct qcDeviation {
  /// The smallest distance: if distances are signed, how deep inside the nominal area the measured
  /// curves come.
  double least = 0.0;
  /// The first point with that distance.
  qcVector<2> leastAt;
  /// The largest distance.
  double greatest = 0.0;
  /// The first point with that distance.
  qcVector<2> greatestAt;
  /// The mean distance along the measured curves.
  double mean = 0.0;
  /// The root mean square of the distances along the measured curves.
  double rms = 0.0;
  /// Whether the distances have signs: positive outside the nominal area, negative inside. They
  /// have none when a nominal contour is open.
  bool isSigned = true;

  /// Exact equality of all members.
  bool operator==(const qcDeviation&) const noexcept = default;
};

/// How far `measured` lies from the nearest points of `nominal`, taken at every measured vertex
/// and, between vertices, at equal steps of at most `spacing`, which may be infinite. Each point
/// is weighted by half the length of the steps on either side of it; in a contour without length
/// all points weigh the same.
///
/// The nominal area holds the points about which the winding numbers of the nominal contours do not
/// sum to 0: holes must be wound oppositely to outlines.
///
/// Throws qcContourDefs::EmptyContour when either has no vertices, and qcContourDefs::BadParams
/// "spacing is not positive", "a coordinate is not finite", or "spacing is too small for the
/// contour" for more than 2^31 steps in an edge. O((n + m) log n) for n nominal vertices and m
/// points, as long as the nominal edges are not all equally near.
CNTR_EXPORT qcDeviation qf_Deviation(const std::vector<qcContour>& measured,
                                     const std::vector<qcContour>& nominal, double spacing);

/// The Hausdorff distance of the curves `a` and `b`, in the unit of the coordinates: the largest
/// distance of a point of either from the other. All points of the edges count, not only the
/// vertices. The result is the distance of such a point: except for rounding it is never above the
/// true value, and at most `tolerance` below it.
///
/// Throws qcContourDefs::EmptyContour when either has no vertices, and qcContourDefs::BadParams "a
/// coordinate is not finite" or "tolerance is not positive".
///
/// Edges are halved as long as a point on them might be farther by more than `tolerance` than the
/// farthest one so far; a part of an edge that is near one edge of the other curve at both ends is
/// nowhere farther from it (distances from a segment are convex). O((n + m) log(n + m)) for most
/// curves; never takes more points than the sum of the lengths divided by `tolerance`.
CNTR_EXPORT double qf_Hausdorff(const std::vector<qcContour>& a, const std::vector<qcContour>& b,
                                double tolerance);

/// The result of qf_Align().
struct qcAlignment {
  /// Moves the measured curves onto the nominal ones: a rotation, then a translation.
  qcXform<2> transform;
  /// The rotation, in [-180, 180] degrees.
  qcDegree angle;
  /// The root mean square distance that is left, in the unit of the coordinates.
  double residual = 0.0;
  /// How many steps the last refinement took, at most 50.
  int steps = 0;
  /// Whether it ended because a step changed next to nothing: 1e-10 of the extent.
  bool settled = false;
};

/// The rigid motion, without mirroring, that gives the measured curves the least root mean square
/// distance from the nominal ones: over their vertices and points between them at steps of at most
/// 1/512 of their length, each weighing the length that it stands for.
///
/// It is the best one found: the starts are the principal axes laid on each other both ways and 16
/// rotations; each is refined a little with some of the points, then the best with all. A shape
/// with a symmetry may come out under any of its members, dissimilar curves in any of several
/// places that are about equally good. Without any length, all points weigh the same.
///
/// Throws qcContourDefs::EmptyContour when either has no vertices, and qcContourDefs::BadParams "a
/// coordinate is not finite", or "spacing is too small for the contour" when a length is not
/// finite. O((n + m) log n) for each of about 200 steps. P. J. Besl, N. D. McKay, "A method for
/// registration of 3-D shapes", IEEE Transactions on Pattern Analysis and Machine Intelligence 14
/// (1992); Y. Chen, G. Medioni, "Object modelling by registration of multiple range images", Image
/// and Vision Computing 10 (1992), for the distance from lines.
CNTR_EXPORT qcAlignment qf_Align(const std::vector<qcContour>& measured,
                                 const std::vector<qcContour>& nominal);

/// @}
