// SPDX-License-Identifier: MIT
//
// Contours against OpenCV, on the sample outlines and on generated ones: areas, centres, second
// moments and hulls. OpenCV takes single precision, so coordinates are first rounded to 1/64, which
// it holds exactly.

#include <algorithm>
#include <cmath>
#include <vector>

#include <cntr/inertia.h>
#include <cntr/region.h>
#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include "outlines.h"

namespace {

using shapes::Point;
using shapes::Points;

/// How far the two may differ, relative to the answer or to the coordinates.
constexpr double relativeTolerance = 1e-9;

double rounded(double coordinate) { return std::round(coordinate * 64) / 64; }

template <class Check>
void forEachOutline(Check check) {
  for (const shapes::Shape& outline : peer::outlines()) {
    SCOPED_TRACE(outline.name);
    Points points;
    std::vector<cv::Point2f> theirs;
    for (const Point& p : outline.points) {
      points.emplace_back(rounded(p.x()), rounded(p.y()));
      theirs.emplace_back(static_cast<float>(points.back().x()),
                          static_cast<float>(points.back().y()));
    }
    check(points, theirs);
  }
}

TEST(OpenCvContourTest, AreasAgree) {
  forEachOutline([](const Points& points, const std::vector<cv::Point2f>& theirs) {
    const double area = cv::contourArea(theirs);
    EXPECT_NEAR(qf_Area(points), area, relativeTolerance * area);
  });
}

TEST(OpenCvContourTest, CentresAgree) {
  forEachOutline([](const Points& points, const std::vector<cv::Point2f>& theirs) {
    const cv::Moments moments = cv::moments(theirs);
    const Point center(moments.m10 / moments.m00, moments.m01 / moments.m00);
    EXPECT_LE(qf_CenterOfMass(points).distance(center), relativeTolerance * center.len());
  });
}

TEST(OpenCvContourTest, SecondMomentsAgree) {
  forEachOutline([](const Points& points, const std::vector<cv::Point2f>& theirs) {
    const cv::Moments moments = cv::moments(theirs);
    const qcMatrix<2> matrix = qf_InertiaDataPolygon(points).inertiaMatrix();
    const double size = moments.mu20 + moments.mu02;
    EXPECT_NEAR(matrix.element(0, 0), moments.mu20, relativeTolerance * size);
    EXPECT_NEAR(matrix.element(0, 1), moments.mu11, relativeTolerance * size);
    EXPECT_NEAR(matrix.element(1, 1), moments.mu02, relativeTolerance * size);
  });
}

TEST(OpenCvContourTest, HullsAgree) {
  forEachOutline([](const Points& points, const std::vector<cv::Point2f>& theirs) {
    qcRegion hull;
    qcContour(points, true, 0).convexHull(hull);
    std::vector<cv::Point2f> theirHull;
    cv::convexHull(theirs, theirHull);
    const double area = cv::contourArea(theirHull);
    EXPECT_NEAR(hull.area(false), area, relativeTolerance * area);
    for (const cv::Point2f& p : theirHull) {
      const Point vertex(static_cast<double>(p.x), static_cast<double>(p.y));
      EXPECT_LE(static_cast<const qcContour&>(hull).distToPoint(vertex, false), 1e-9);
    }
  });
}

}  // namespace
