// SPDX-License-Identifier: MIT
//
// A contour that lets tests see its protected members and what it remembers, and what all contours
// answer where there is no curve.

#pragma once

#include <string>
#include <vector>

#include <cntr/contour.h>
#include <gtest/gtest.h>
#include <testing/shapes/shapes.h>

#include "refusals.h"

using shapes::Point;
using shapes::Points;

/// A contour with its protected members open, whose vertices can be replaced without its noticing:
/// whatever it still answers from the old vertices was remembered, and what it answers from the new
/// ones is computed.
class ContourProbe : public qcContour {
 public:
  using qcContour::qcContour;
  ContourProbe(const std::vector<qcVector<2>>& points, bool closed)
      : qcContour(points, closed, 0) {}

  /// Forgets nothing. Indexes of the edges stay those of the old vertices: give the same number.
  void replaceBehindItsBack(const Points& points) {
    keepsAnswers_ = true;
    setPoints(points);
    keepsAnswers_ = false;
  }

  using qcContour::checkEmptyContour;
  using qcContour::intersections;
  using qcContour::lineSegs;
  using qcContour::medianFeatureSize;
  using qcContour::setPoints;
  using qcContour::validLine;

 protected:
  void cleanCacheInfo() override {
    if (!keepsAnswers_) qcContour::cleanCacheInfo();
  }

 private:
  bool keepsAnswers_ = false;
};

/// Claims to be closed whatever is stored, as a region does.
class AlwaysClosed : public ContourProbe {
 public:
  using ContourProbe::ContourProbe;
  bool isClosed() const override { return true; }
  using ContourProbe::isClosed;
};

inline ContourProbe openContour(const Points& points) { return {points, false}; }
inline ContourProbe closedContour(const Points& points) { return {points, true}; }

/// Contours of 0 and of 1 vertex, open and closed.
inline std::vector<ContourProbe> contoursWithoutCurve() {
  return {openContour({}), closedContour({}), openContour({{3, 4}}), closedContour({{3, 4}})};
}

/// Expects that `ask` throws EmptyContour with an empty message.
template <class Ask>
void expectEmptyContour(Ask ask) {
  EXPECT_EQ(fixtures::emptyContourOf(ask), L"");
}

/// Expects that `ask` throws BadParams with this message.
template <class Ask>
void expectBadParams(const std::wstring& message, Ask ask) {
  EXPECT_EQ(fixtures::badParamsOf(ask), message);
}
