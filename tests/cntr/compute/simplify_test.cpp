// SPDX-License-Identifier: MIT
//
// The kept vertices against the literal definition, alone and with other paths, and what is
// promised of them: nothing is farther than the tolerance, and edges that meet are edges of the
// path.

#include <cntr/compute/simplify.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include <cntr/plane/orientation.h>
#include <gtest/gtest.h>
#include <testing/plain/simplify.h>
#include <testing/shapes/shapes.h>
#include <testing/twin/repetitions.h>

namespace {

using cntr::compute::keptVertices;
using cntr::plane::Path;
using shapes::Point;
using shapes::Points;

std::vector<Points> simplified(const std::vector<Path>& paths, double tolerance) {
  std::vector<Points> results;
  const auto kept = keptVertices(paths, tolerance);
  for (std::size_t i = 0; i < paths.size(); ++i) {
    results.emplace_back();
    for (const std::size_t k : kept[i]) results.back().push_back(paths[i].points[k]);
  }
  return results;
}

/// The same numbers, NaN included.
bool areSame(const Points& a, const Points& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const Point& p, const Point& q) {
    const auto same = [](double x, double y) { return x == y || (std::isnan(x) && std::isnan(y)); };
    return same(p.x(), q.x()) && same(p.y(), q.y());
  });
}

double anyTolerance(shapes::Random& random) {
  static constexpr double tolerances[] = {0.0, 1e-6, 0.5, 1.0, 3.0, 20.0, 100.0, 400.0};
  return tolerances[random.below(8)];
}

/// Whether products of coordinates overflow: edges that meet are then not found reliably.
bool areHuge(const Points& points) {
  return std::any_of(points.begin(), points.end(), [](const Point& p) {
    const auto isHuge = [](double x) { return std::isfinite(x) && std::abs(x) > 1e140; };
    return isHuge(p.x()) || isHuge(p.y());
  });
}

TEST(Simplify, KeepsTheVerticesOfTheDefinition) {
  for (std::uint64_t seed = 0; seed < repetitions(3000); ++seed) {
    shapes::Random random(seed);
    const shapes::Shape shape = shapes::any(seed, seed % 10 == 0 ? 60 : 24);
    if (areHuge(shape.points)) continue;
    const double tolerance = anyTolerance(random);
    const std::vector<plain::Contour> expected =
        plain::simplify({{shape.points, shape.closed}}, tolerance);
    const Points result = simplified({{shape.points, shape.closed}}, tolerance).front();
    ASSERT_TRUE(areSame(result, expected.front().points)) << seed << ' ' << shape.name;
  }
}

TEST(Simplify, KeepsThemForSeveralPathsTogether) {
  for (std::uint64_t seed = 0; seed < repetitions(600); ++seed) {
    shapes::Random random(seed);
    std::vector<plain::Contour> contours;
    for (std::size_t i = 0; i < 2 + random.below(3); ++i) {
      Points points = shapes::smoothStar(4 + random.below(20), seed * 5 + i);
      const double size = random.uniform(0.02, 1.0);
      const double x = random.uniform(-300.0, 300.0);
      const double y = random.uniform(-300.0, 300.0);
      shapes::scaleAndShift(points, size, Point(x, y));
      contours.push_back({points, random.chance(0.8)});
    }
    const double tolerance = anyTolerance(random);
    const std::vector<plain::Contour> expected = plain::simplify(contours, tolerance);
    std::vector<Path> paths;
    for (const plain::Contour& each : contours) paths.push_back({each.points, each.closed});
    const std::vector<Points> results = simplified(paths, tolerance);
    for (std::size_t i = 0; i < paths.size(); ++i) {
      ASSERT_TRUE(areSame(results[i], expected[i].points)) << seed << ' ' << i;
    }
  }
}

TEST(Simplify, StaysWithinTheTolerance) {
  for (std::uint64_t seed = 0; seed < repetitions(400); ++seed) {
    shapes::Random random(seed);
    const shapes::Shape shape = shapes::anyFinite(seed, 150);
    if (shape.points.size() < 2) continue;
    const double tolerance = anyTolerance(random);
    const Points result = simplified({{shape.points, shape.closed}}, tolerance).front();
    const std::vector<plain::Segment> edges = plain::edgesOf({result, shape.closed});
    for (const Point& p : shape.points) {
      double nearest = p.distance(result.front());
      for (const plain::Segment& edge : edges) {
        nearest = std::min(nearest, plain::distToPoint(edge, p));
      }
      ASSERT_LE(nearest, tolerance) << seed << ' ' << shape.name;
    }
  }
}

/// Whether two segments cross properly.
bool cross(const plain::Segment& s, const plain::Segment& t) {
  using cntr::plane::orientation;
  return orientation(s.a, s.b, t.a) * orientation(s.a, s.b, t.b) < 0 &&
         orientation(t.a, t.b, s.a) * orientation(t.a, t.b, s.b) < 0;
}

bool ringCrossesItself(const Points& ring) {
  const std::vector<plain::Segment> edges = plain::edgesOf({ring, true});
  for (const plain::Segment& s : edges) {
    for (const plain::Segment& t : edges) {
      if (cross(s, t)) return true;
    }
  }
  return false;
}

TEST(Simplify, CrossesNothingThatDidNotCross) {
  int changed = 0;
  for (std::uint64_t seed = 0; seed < 200; ++seed) {
    shapes::Random random(seed);
    Points ring =
        seed % 2 == 0 ? shapes::spiral(60 + random.below(60), 4.0) : shapes::comb(80, seed);
    if (ringCrossesItself(ring)) continue;
    const double tolerance = random.uniform(1.0, 300.0);
    const Points result = simplified({{ring, true}}, tolerance).front();
    EXPECT_FALSE(ringCrossesItself(result)) << seed;
    EXPECT_GE(result.size(), 3U);
    changed += result.size() < ring.size();
  }
  EXPECT_GT(changed, 50);
}

TEST(Simplify, KeepsThousandsOfVerticesApart) {
  const Points star = shapes::smoothStar(20000);
  const Points result = simplified({{star, true}}, 2.0).front();
  EXPECT_FALSE(ringCrossesItself(result));
  EXPECT_LT(result.size(), 500U);
  EXPECT_GT(result.size(), 40U);
}

}  // namespace
