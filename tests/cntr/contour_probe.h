// SPDX-License-Identifier: MIT
//
// Ways to look into a contour: its protected members, whether a question was computed or recalled,
// and what it says where there is no curve.

#pragma once

#include <cfenv>
#include <string>
#include <vector>

#include <cntr/contour.h>
#include <gtest/gtest.h>

using Point = qcVector<2>;
using Points = std::vector<Point>;

/// A contour with its protected members open. Whatever is computed from the edges asks isClosed(),
/// which counts.
class ContourProbe : public qcContour {
 public:
  using qcContour::qcContour;
  ContourProbe(const std::vector<qcVector<2>>& points, bool closed)
      : qcContour(points, closed, 0) {}

  bool isClosed() const override {
    ++timesAsked_;
    return qcContour::isClosed();
  }
  using qcContour::isClosed;
  /// How often isClosed() was called.
  int timesAsked() const { return timesAsked_; }

  using qcContour::checkEmptyContour;
  using qcContour::intersections;
  using qcContour::lineSegs;
  using qcContour::medianFeatureSize;
  using qcContour::setPoints;
  using qcContour::validLine;

 private:
  mutable int timesAsked_ = 0;
};

/// True when `ask` rounds a result, as nearly every computation with coordinates that are not short
/// binary fractions does. To recall an answer takes copies and comparisons, which round nothing.
template <class Ask>
bool rounds(Ask ask) {
  std::feclearexcept(FE_INEXACT);
  ask();
  return std::fetestexcept(FE_INEXACT) != 0;
}

inline ContourProbe openContour(const Points& points) { return {points, false}; }
inline ContourProbe closedContour(const Points& points) { return {points, true}; }

/// Contours of 0 and of 1 vertex, open and closed.
inline std::vector<ContourProbe> contoursWithoutCurve() {
  return {openContour({}), closedContour({}), openContour({{3, 4}}), closedContour({{3, 4}})};
}

/// Expects that `ask` throws EmptyContour with an empty message.
template <class Ask>
void expectEmptyContour(Ask ask) {
  try {
    ask();
    ADD_FAILURE() << "nothing was thrown";
  } catch (const qcContourDefs::EmptyContour& error) {
    EXPECT_EQ(error.message(), L"");
  }
}

/// Expects that `ask` throws BadParams with this message.
template <class Ask>
void expectBadParams(const std::wstring& message, Ask ask) {
  try {
    ask();
    ADD_FAILURE() << "nothing was thrown";
  } catch (const qcContourDefs::BadParams& error) {
    EXPECT_EQ(error.message(), message);
  }
}
