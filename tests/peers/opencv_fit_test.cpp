// SPDX-License-Identifier: MIT
//
// The ellipse fit compared with OpenCV's fitEllipseDirect, which minimises the same sum under the
// same condition by another way: normal equations in coordinates that are only shifted and scaled.

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include <platform/core/fit.h>

namespace {

using Geometry = qcEllipse::qcEllipseGeom;

/// The symmetric matrix whose eigenvalues are the squared radii and whose eigenvectors are the
/// axes: a description without the jump that an angle makes near a circle.
struct Shape {
  double xx, xy, yy;
};

Shape shapeOf(double radius1, double radius2, double angle) {
  const double c = std::cos(angle), s = std::sin(angle);
  const double a = radius1 * radius1, b = radius2 * radius2;
  return {a * c * c + b * s * s, (a - b) * c * s, a * s * s + b * c * c};
}

/// Noisy points of an arc in single precision, the only one that OpenCV takes.
std::vector<cv::Point2f> noisyArc(std::mt19937& random, double extent, double noise) {
  const auto uniform = [&random](double low, double high) {
    return low + (high - low) * std::ldexp(static_cast<double>(random()), -32);
  };
  const double a = uniform(50, 200), b = uniform(20, 150), turn = uniform(-3, 3);
  const double x = uniform(-1000, 1000), y = uniform(-1000, 1000), start = uniform(-3, 3);
  std::vector<cv::Point2f> points;
  for (int i = 0; i < 100; ++i) {
    const double t = start + extent * i / 100;
    const double u = a * std::cos(t) + noise * uniform(-1, 1);
    const double v = b * std::sin(t) + noise * uniform(-1, 1);
    points.emplace_back(static_cast<float>(x + u * std::cos(turn) - v * std::sin(turn)),
                        static_cast<float>(y + u * std::sin(turn) + v * std::cos(turn)));
  }
  return points;
}

Geometry fitted(const std::vector<cv::Point2f>& points) {
  std::vector<qcVector<2>> exact;
  for (const cv::Point2f& p : points) exact.emplace_back(p.x, p.y);
  qcEllipseFitResults results;
  qfEllipseFit(qcEllipseFitParams(), exact, results);
  return results.ellipse().geom();
}

/// The larger of the differences of centre and shape, relative to the first radius.
double difference(const Geometry& ours, const cv::RotatedRect& theirs) {
  const Shape m = shapeOf(ours.radius1, ours.radius2, ours.rotation.toDouble());
  const auto real = [](float value) { return static_cast<double>(value); };
  const Shape n = shapeOf(real(theirs.size.width) / 2.0, real(theirs.size.height) / 2.0,
                          real(theirs.angle) * 0.017453292519943295);
  const double shape = std::abs(m.xx - n.xx) + std::abs(m.xy - n.xy) + std::abs(m.yy - n.yy);
  const double center =
      ours.center.distance(qcVector<2>(real(theirs.center.x), real(theirs.center.y)));
  return std::max(center / ours.radius1, shape / (ours.radius1 * ours.radius1));
}

struct Arcs {
  double extent;
  double noise;
};

class OpenCvFitTest : public testing::TestWithParam<Arcs> {};

TEST_P(OpenCvFitTest, FindsTheSameEllipse) {
  // OpenCV answers in floats: a half unit of rounding is 6e-5 in a centre at 1,000, which is 1.2e-6
  // of the smallest radius, and 1e-7 in radii and angle. An order of magnitude is left for its
  // normal equations. The noise is that large because OpenCV shakes the points by a hundredth of
  // their size when they lie too well on an ellipse.
  constexpr double tolerance = 1e-5;
  std::mt19937 random(1);
  for (int i = 0; i < 200; ++i) {
    const std::vector<cv::Point2f> points = noisyArc(random, GetParam().extent, GetParam().noise);
    EXPECT_LT(difference(fitted(points), cv::fitEllipseDirect(points)), tolerance) << i;
  }
}

INSTANTIATE_TEST_SUITE_P(Arcs, OpenCvFitTest,
                         testing::Values(Arcs{6.28, 3}, Arcs{6.28, 20}, Arcs{4.0, 10},
                                         Arcs{2.5, 10}, Arcs{1.5, 20}, Arcs{1.0, 10}));

}  // namespace
