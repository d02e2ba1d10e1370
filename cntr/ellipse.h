// SPDX-License-Identifier: MIT
//
// Ellipses from second moments and from points, and the standard deviation of a list of numbers.
// The moments are in inertia.h. All functions are pure and keep no state.

#pragma once

#include <vector>

#include <cntr/export.h>
#include <cntr/inertia.h>
#include <platform/core/shapes.h>

/// @addtogroup moments
/// @{

/// The solid ellipse with the same centre and the same principal second moments as `data`. The
/// first radius lies along the rotation, an angle in [-pi/2, pi/2]: the direction of the larger
/// moment. The area of `data` is not used: the ellipse has the same area only when the data came
/// from an ellipse. The winding does not matter.
///
/// Throws qcMathError::Singular when a principal moment is at most 1e-12 in absolute value: for no
/// area, a line, or a shape smaller than about 1e-3.
CNTR_EXPORT qcEllipse qf_EllipseFromInertiaData(const qc_InertiaData& data);

/// The ellipse that fits the points best and its residual, the root mean square distance of the
/// points from it. If the points determine no ellipse, the best circle is given as an ellipse of
/// equal radii; if no circle fits either, the ellipse is a default one and the residual is -1, the
/// only indication that both fits failed. Never throws a qcException. O(n).
CNTR_EXPORT void qf_FitEllipse(const std::vector<qcVector<2>>& points, qcEllipse& ellipse,
                               double& residual);
/// The same for the positions of edge elements.
CNTR_EXPORT void qf_FitEllipse(const std::vector<qcEdgelet>& edgelets, qcEllipse& ellipse,
                               double& residual);

/// Population standard deviation: the root of the mean squared difference from the mean, dividing
/// by n. 0 for a single value, NaN for an empty list. O(n).
CNTR_EXPORT double qf_StdDev(const std::vector<double>& values);

/// @}
