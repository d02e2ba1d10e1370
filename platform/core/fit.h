// SPDX-License-Identifier: MIT
//
// Least-squares fits of an ellipse and of a circle to points.

#pragma once

#include <limits>
#include <vector>

#include <platform/core/shapes.h>

/// @addtogroup fits
/// @{

/// Thrown when the points do not determine the curve: too few of them, all on one line, not finite,
/// or, for an ellipse, on another conic. "On" means within their own rounding errors. Also thrown
/// for parameters that are out of range. The message says which.
class QCPLATFORM_EXPORT qcFitError : public qcExceptionWithString {
 public:
  using qcExceptionWithString::qcExceptionWithString;
  void suicideAndRethrow() override;
};

/// A class used as a namespace: what can be chosen in an ellipse fit.
class qcEllipseFitDefs {
 public:
  /// The method of the fit.
  enum fit_mode { eLeastSquares = 0 };
};

/// How to fit an ellipse.
class qcEllipseFitParams {
 public:
  /// See the functions of the same names for what each parameter means; qfEllipseFit() checks them.
  qcEllipseFitParams(qcEllipseFitDefs::fit_mode mode = qcEllipseFitDefs::eLeastSquares,
                     const qcRadian& angle = qcRadian(0.0), unsigned long count = 0,
                     double threshold = std::numeric_limits<double>::infinity()) noexcept
      : mode_(mode), angle_(angle), count_(count), threshold_(threshold) {}

  /// The method of the fit.
  qcEllipseFitDefs::fit_mode mode() const noexcept { return mode_; }
  /// The reference direction, finite: the reported rotation lies within a quarter turn of it, in
  /// (angle - pi/2, angle + pi/2]. The rotation of a circle is the reference direction itself.
  const qcRadian& angle() const noexcept { return angle_; }
  /// At most this many points may be left out of the fit. They are left out one at a time, always
  /// the one farthest from the curve (the first one on ties), and the fit is repeated after each:
  /// leaving out k points costs k + 1 fits. At least 5 points remain.
  unsigned long count() const noexcept { return count_; }
  /// Points farther than this from the fitted curve, in the points' unit, may be left out.
  double threshold() const noexcept { return threshold_; }

 private:
  qcEllipseFitDefs::fit_mode mode_;
  qcRadian angle_;
  unsigned long count_;
  double threshold_;
};

/// What an ellipse fit found.
class qcEllipseFitResults {
 public:
  qcEllipseFitResults() = default;
  /// An ellipse and its residual, as given.
  qcEllipseFitResults(const qcEllipse& ellipse, double residual)
      : ellipse_(ellipse), residual_(residual) {}

  /// The first radius is the larger one.
  const qcEllipse& ellipse() const noexcept { return ellipse_; }
  /// Root mean square distance of the fitted points to the curve, in the points' unit.
  double residual() const noexcept { return residual_; }

 private:
  qcEllipse ellipse_;
  double residual_ = 0.0;
};

/// A class used as a namespace: what can be chosen in a circle fit.
class qcCircleFitDefs {
 public:
  /// The method of the fit.
  enum fit_mode { eLeastSquares = 0 };
};

/// How to fit a circle.
class qcCircleFitParams {
 public:
  /// See the functions of the same names for what each parameter means; qfCircleFit() checks them.
  qcCircleFitParams(qcCircleFitDefs::fit_mode mode = qcCircleFitDefs::eLeastSquares,
                    double relaxation = 1.0, unsigned long count = 0,
                    double threshold = std::numeric_limits<double>::infinity()) noexcept
      : mode_(mode), relaxation_(relaxation), count_(count), threshold_(threshold) {}

  /// The method of the fit.
  qcCircleFitDefs::fit_mode mode() const noexcept { return mode_; }
  /// The fraction of each refining step that is taken, in (0, 1]; 1 takes full steps.
  double relaxation() const noexcept { return relaxation_; }
  /// At most this many points may be left out of the fit. They are left out one at a time, always
  /// the one farthest from the curve (the first one on ties), and the fit is repeated after each:
  /// leaving out k points costs k + 1 fits. At least 3 points remain.
  unsigned long count() const noexcept { return count_; }
  /// Points farther than this from the fitted curve, in the points' unit, may be left out.
  double threshold() const noexcept { return threshold_; }

 private:
  qcCircleFitDefs::fit_mode mode_;
  double relaxation_;
  unsigned long count_;
  double threshold_;
};

/// What a circle fit found.
class qcCircleFitResults {
 public:
  qcCircleFitResults() = default;
  /// A circle and its residual, as given.
  qcCircleFitResults(const qcCircle& circle, double residual)
      : circle_(circle), residual_(residual) {}

  /// The fitted circle.
  const qcCircle& circle() const noexcept { return circle_; }
  /// Root mean square distance of the fitted points to the curve, in the points' unit.
  double residual() const noexcept { return residual_; }

 private:
  qcCircle circle_;
  double residual_ = 0.0;
};

/// Fits an ellipse to `points` by direct least squares on normalised coordinates and writes it to
/// `results`, which stays as it was when the fit throws. The result is the ellipse with the least
/// sum of squares of a x^2 + b xy + c y^2 + d x + e y + f under 4ac - b^2 = 1; where the points
/// scatter widely about a short arc, it is smaller than the ellipse that they came from.
///
/// Throws qcFitError for fewer than 5 points, points that do not determine an ellipse (fewer than 5
/// distinct ones, 4 of 5 on one line), points exactly on a line, a parabola, a hyperbola or two
/// lines, and points that are not finite. Points that are merely near such a curve get their best
/// ellipse, which may be very long. Points exactly on an ellipse give that ellipse, to within a few
/// rounding errors of the coordinates; on an arc the error grows as the arc gets flatter. O(n).
///
/// A. Fitzgibbon, M. Pilu, R. B. Fisher, "Direct least square fitting of ellipses", IEEE PAMI 21
/// (1999); the linear part is split off as in R. Halir, J. Flusser (1998).
QCPLATFORM_EXPORT void qfEllipseFit(const qcEllipseFitParams& params,
                                    const std::vector<qcVector<2>>& points,
                                    qcEllipseFitResults& results);

/// Fits the circle of least mean square distance to `points` and writes it to `results`, which
/// stays as it was when the fit throws. Where the points are nowhere near a circle and the sum of
/// squares has several minima, the result is the one reached from the algebraic fit. Throws
/// qcFitError for fewer than 3 points, points that coincide or lie on a line, points whose best
/// circle grows without bound (they scatter about a line), points that are not finite, and a
/// relaxation outside (0, 1]. Circles with radii up to about a million times the extent of the
/// points can be distinguished from a line. O(n) per step, a few steps.
QCPLATFORM_EXPORT void qfCircleFit(const qcCircleFitParams& params,
                                   const std::vector<qcVector<2>>& points,
                                   qcCircleFitResults& results);

/// @}
