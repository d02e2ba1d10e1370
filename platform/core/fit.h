// SPDX-License-Identifier: MIT
//
// Least-squares fits of an ellipse and of a circle to points.

#pragma once

#include <limits>
#include <vector>

#include <platform/core/shapes.h>

/// Thrown when the points do not determine the curve: too few of them, all on one line, not finite,
/// or best fitted by a curve that is not an ellipse.
class QCPLATFORM_EXPORT qcFitError : public qcExceptionWithString {
 public:
  using qcExceptionWithString::qcExceptionWithString;
  void suicideAndRethrow() override;
};

class qcEllipseFitDefs {
 public:
  enum fit_mode { eLeastSquares = 0 };
};

/// How to fit an ellipse.
class qcEllipseFitParams {
 public:
  explicit qcEllipseFitParams(
      qcEllipseFitDefs::fit_mode mode = qcEllipseFitDefs::eLeastSquares,
      const qcRadian& angle = qcRadian(0.0), unsigned long count = 0,
      double threshold = std::numeric_limits<double>::infinity()) noexcept
      : mode_(mode), angle_(angle), count_(count), threshold_(threshold) {}

  qcEllipseFitDefs::fit_mode mode() const noexcept { return mode_; }
  /// The reference direction: the reported rotation lies within a quarter turn of it, in
  /// (angle - pi/2, angle + pi/2].
  const qcRadian& angle() const noexcept { return angle_; }
  /// At most this many points, those farthest from the curve, may be left out of the fit.
  unsigned long count() const noexcept { return count_; }
  /// A point farther from the fitted curve than this is one to leave out, in the points' unit.
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

class qcCircleFitDefs {
 public:
  enum fit_mode { eLeastSquares = 0 };
};

/// How to fit a circle.
class qcCircleFitParams {
 public:
  explicit qcCircleFitParams(
      qcCircleFitDefs::fit_mode mode = qcCircleFitDefs::eLeastSquares, double relaxation = 1.0,
      unsigned long count = 0,
      double threshold = std::numeric_limits<double>::infinity()) noexcept
      : mode_(mode), relaxation_(relaxation), count_(count), threshold_(threshold) {}

  qcCircleFitDefs::fit_mode mode() const noexcept { return mode_; }
  /// The share of each refining step that is taken, in (0, 1]; 1 takes full steps.
  double relaxation() const noexcept { return relaxation_; }
  /// At most this many points, those farthest from the curve, may be left out of the fit.
  unsigned long count() const noexcept { return count_; }
  /// A point farther from the fitted curve than this is one to leave out, in the points' unit.
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
  qcCircleFitResults(const qcCircle& circle, double residual)
      : circle_(circle), residual_(residual) {}

  const qcCircle& circle() const noexcept { return circle_; }
  /// Root mean square distance of the fitted points to the curve, in the points' unit.
  double residual() const noexcept { return residual_; }

 private:
  qcCircle circle_;
  double residual_ = 0.0;
};

/// Fits an ellipse to `points` by direct least squares on normalised coordinates and writes it to
/// `results`, which stays as it was when the fit throws. Throws qcFitError for fewer than 5 points,
/// points that do not determine an ellipse, and points that are not finite. O(n).
///
/// A. Fitzgibbon, M. Pilu, R. B. Fisher, "Direct least square fitting of ellipses", IEEE PAMI 21
/// (1999), in the stable form of R. Halir, J. Flusser (1998).
QCPLATFORM_EXPORT void qfEllipseFit(const qcEllipseFitParams& params,
                                    const std::vector<qcVector<2>>& points,
                                    qcEllipseFitResults& results);

/// Fits the circle of least mean square distance to `points` and writes it to `results`, which
/// stays as it was when the fit throws. Throws qcFitError for fewer than 3 points, points on a line,
/// and points that are not finite. O(n) a step, a few steps.
QCPLATFORM_EXPORT void qfCircleFit(const qcCircleFitParams& params,
                                   const std::vector<qcVector<2>>& points,
                                   qcCircleFitResults& results);
