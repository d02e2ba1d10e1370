// SPDX-License-Identifier: MIT
//
// Points on curves, with noise and outliers, for the tests of the fits.

#pragma once

#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include <platform/core/fit.h>
#include <platform/core/xform.h>
#include <testing/shapes/numbers.h>

namespace fit_points {

using Point = qcVector<2>;
using Points = std::vector<Point>;
using Geometry = qcEllipse::qcEllipseGeom;

constexpr double epsilon = std::numeric_limits<double>::epsilon();

/// `count` points of an arc, from parameter `start` on over `extent`.
inline Points arcOf(const Geometry& g, std::size_t count, double start = 0.0,
                    double extent = 2.0 * pi) {
  const double cosine = std::cos(g.rotation.toDouble()), sine = std::sin(g.rotation.toDouble());
  Points points;
  for (std::size_t i = 0; i < count; ++i) {
    const double t = start + extent * static_cast<double>(i) / static_cast<double>(count);
    const double x = g.radius1 * std::cos(t), y = g.radius2 * std::sin(t);
    points.push_back(g.center + Point(x * cosine - y * sine, x * sine + y * cosine));
  }
  return points;
}

inline Geometry ellipse(const Point& center, double radius1, double radius2, double rotation) {
  return {center, radius1, radius2, qcRadian(rotation), qcRadian(0.0)};
}

inline Geometry circle(const Point& center, double radius) {
  return ellipse(center, radius, radius, 0.0);
}

inline Points withNoise(Points points, double sigma, unsigned seed = 1) {
  std::mt19937 random(seed);
  // A sum of twelve uniform numbers is near enough to a normal one, and the same everywhere.
  const auto normal = [&random] {
    double sum = -6.0;
    for (int i = 0; i < 12; ++i) sum += std::ldexp(static_cast<double>(random()), -32);
    return sum;
  };
  for (Point& p : points) {
    const double x = normal();
    p = p + Point(x, normal()) * sigma;
  }
  return points;
}

/// A distance between points that does not overflow at any scale.
inline double distance(const Point& a, const Point& b) {
  return std::hypot(a.x() - b.x(), a.y() - b.y());
}

/// The message of the qcFitError that `fit` throws; empty when it throws none.
inline std::wstring failureOf(const std::function<void()>& fit) {
  try {
    fit();
  } catch (const qcFitError& e) {
    return e.message();
  }
  return L"";
}

/// Turned, shrunk and moved far away, so that every coordinate is rounded.
inline Points elsewhere(const Points& points, double far) {
  const qcXform<2> map(qcMatrix<2>(qcRadian(0.3), qcRadian(0.3), 0.7, 0.7), Point(far, -0.4 * far));
  Points mapped;
  for (const Point& p : points) mapped.push_back(map * p);
  return mapped;
}

/// The points with two more among them.
inline Points withOutliers(Points points, const Point& first, const Point& second) {
  points.insert(points.begin() + 3, first);
  points.insert(points.begin() + 9, second);
  return points;
}

/// Points that cannot be fitted, and the message that says so.
struct Failure {
  Points points;
  std::wstring message;
};

}  // namespace fit_points
