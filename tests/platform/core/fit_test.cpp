// SPDX-License-Identifier: MIT
//
// The parameters of the fits and their failure. The fits are tested in fit_ellipse_test.cpp and
// fit_circle_test.cpp.

#include <platform/core/fit.h>

#include <gtest/gtest.h>

#include "fit_points.h"
#include "live_count.h"

namespace {

using namespace fit_points;

TEST(FitErrorTest, RethrowsAsItselfWithItsText) {
  auto* const error = new qcFitError(L"why");
  EXPECT_EQ(failureOf([error] { error->suicideAndRethrow(); }), L"why");
}

/// A fit error that counts itself.
class CountedFitError : public qcFitError {
 public:
  using qcFitError::qcFitError;

 private:
  LiveCount count_;
};

TEST(FitErrorTest, DeletesItselfWhenItRethrows) {
  auto* const error = new CountedFitError(L"why");
  EXPECT_EQ(LiveCount::alive(), 1);
  EXPECT_THROW(error->suicideAndRethrow(), qcFitError);
  EXPECT_EQ(LiveCount::alive(), 0);
}

TEST(FitParamsTest, DefaultsFitAllPoints) {
  const qcEllipseFitParams ellipseParams;
  EXPECT_EQ(ellipseParams.mode(), qcEllipseFitDefs::eLeastSquares);
  EXPECT_EQ(ellipseParams.angle(), qcRadian(0.0));
  EXPECT_EQ(ellipseParams.count(), 0U);
  EXPECT_EQ(ellipseParams.threshold(), infinity);
  const qcCircleFitParams circleParams;
  EXPECT_EQ(circleParams.mode(), qcCircleFitDefs::eLeastSquares);
  EXPECT_EQ(circleParams.relaxation(), 1.0);
  EXPECT_EQ(circleParams.count(), 0U);
  EXPECT_EQ(circleParams.threshold(), infinity);
}

TEST(FitParamsTest, KeepWhatTheyAreGiven) {
  const qcEllipseFitParams ellipseParams(qcEllipseFitDefs::eLeastSquares, qcRadian(2.0), 3, 4.0);
  EXPECT_EQ(ellipseParams.angle(), qcRadian(2.0));
  EXPECT_EQ(ellipseParams.count(), 3U);
  EXPECT_EQ(ellipseParams.threshold(), 4.0);
  const qcCircleFitParams circleParams(qcCircleFitDefs::eLeastSquares, 0.5, 3, 4.0);
  EXPECT_EQ(circleParams.relaxation(), 0.5);
  EXPECT_EQ(circleParams.count(), 3U);
  EXPECT_EQ(circleParams.threshold(), 4.0);
}

}  // namespace
