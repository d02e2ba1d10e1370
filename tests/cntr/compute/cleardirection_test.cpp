// SPDX-License-Identifier: MIT
//
// The direction that keeps clear of all vertices, by scan and by index.

#include <cntr/compute/cleardirection.h>

#include <algorithm>
#include <cmath>

#include <testing/shapes/numbers.h>
#include <testing/twin/repetitions.h>
#include <testing/twin/same.h>

#include "subject.h"

namespace {

using same::same;
using subject::forEachShape;
using subject::Point;
using subject::Points;
using subject::Subject;

/// The definition: the bisector of the first wide gap between the sorted angles.
Point clearByDefinition(const Points& points, const Point& p) {
  std::vector<double> angles;
  for (const Point& v : points) {
    angles.push_back(plain::norm(std::atan2(v.y() - p.y(), v.x() - p.x())));
  }
  std::sort(angles.begin(), angles.end(), plain::nanLast);
  for (std::size_t i = 0; i < angles.size(); ++i) {
    const double gap = plain::norm(angles[(i + 1) % angles.size()] - angles[i]);
    if (!(gap > pi / static_cast<double>(angles.size()))) continue;
    const double middle = angles[i] + 0.5 * gap;
    return {std::cos(middle), std::sin(middle)};
  }
  return {1.0, 0.0};
}

/// The answer of the scan, which must be that of the index as well.
Point clear(const Subject& s, const Point& p) {
  const Point scanned = cntr::compute::clearDirection(s.path(), p);
  if (s.index().isFinite() && std::isfinite(p.x()) && std::isfinite(p.y())) {
    const Point indexed = cntr::compute::clearDirection(s.path(), s.index(), p);
    EXPECT_TRUE(same(indexed, scanned))
        << testing::PrintToString(indexed) << " by index, asked " << testing::PrintToString(p);
  }
  return scanned;
}

Point clear(const Points& points, const Point& p) { return clear(Subject(points, true), p); }

Point atAngle(double angle) { return {std::cos(angle), std::sin(angle)}; }

TEST(ClearDirectionTest, BisectsTheFirstWideGapFromTheXAxisOn) {
  EXPECT_LT(clear({{1, 1}, {-1, 1}, {-1, -1}, {1, -1}}, {0, 0}).distance(atAngle(pi / 2)), 1e-15);
  // Between 0 and 45 degrees the gap is as wide as it must be, but not wider.
  EXPECT_LT(clear({{2, 0}, {1, 1}, {-1, 1}, {0, -1}}, {0, 0}).distance(atAngle(pi / 2)), 1e-15);
}

TEST(ClearDirectionTest, ClosesTheTurn) {
  // Directions 10, 20, ... degrees below a quarter turn: the wide gap is the one from the last back
  // to the first.
  Points points;
  for (int i = 1; i < 9; ++i) {
    points.push_back(atAngle(i * pi / 18));
  }
  const Point direction = clear(points, {0, 0});
  EXPECT_NEAR(direction.angle().norm().toDouble(), pi / 4 + pi, 1e-12);
}

TEST(ClearDirectionTest, IsTheXAxisWhereAllVerticesLieInOneDirection) {
  EXPECT_EQ(clear({{1, 1}}, {0, 0}), Point(1, 0));
  EXPECT_EQ(clear(Points(50, {-2, 3}), {1, 1}), Point(1, 0));
  EXPECT_EQ(clear({{0, 1}, {0, 2}, {0, 3}}, {0, 0}), Point(1, 0));
}

TEST(ClearDirectionTest, LeavesOutVerticesThatAreNan) {
  EXPECT_LT(clear({{1, 1}, {notANumber, 1}, {-1, 1}, {-1, -1}}, {0, 0}).distance(atAngle(pi / 2)),
            1e-15);
  EXPECT_EQ(clear({{notANumber, 1}, {notANumber, 2}}, {0, 0}), Point(1, 0));
}

TEST(ClearDirectionTest, KeepsClearOfEveryVertex) {
  forEachShape(repetitions(200), shapes::anyFinite, 3, 100,
               [](const Subject& s, shapes::Random& random) {
                 const Point p = shapes::queryPoint(random, s.points());
                 const Point direction = clear(s.points(), p);
                 if (same(direction, {1.0, 0.0}) || !std::isfinite(p.x() + p.y())) return;
                 const double room = pi / static_cast<double>(2 * s.points().size());
                 for (const Point& v : s.points()) {
                   const double turned = ((v - p).angle() - direction.angle()).norm().toDouble();
                   EXPECT_GT(std::min(turned, 2 * pi - turned), room * (1 - 1e-9));
                 }
               });
}

TEST(ClearDirectionTest, IsThatOfTheDefinition) {
  forEachShape(repetitions(600), shapes::any, 1, 300, [](const Subject& s, shapes::Random& random) {
    const Subject closed(s.points(), true);
    for (int i = 0; i < 4; ++i) {
      const Point p = shapes::queryPoint(random, s.points());
      EXPECT_TRUE(same(clear(closed, p), clearByDefinition(s.points(), p)));
    }
  });
}

/// Boxes side by side, in a row that runs up or down or along an axis: seen from among them, most
/// of their corners lie in nearly the same direction.
Points rowOfBoxes(shapes::Random& random, std::size_t count) {
  const double rise = random.chance(0.5) ? 0.0 : random.uniform(-3.0, 3.0);
  const double width = random.uniform(5.0, 15.0);
  const double way = random.chance(0.5) ? 10.0 : -10.0;
  Points points;
  for (std::size_t k = 0; k < count; ++k) {
    const double x = way * static_cast<double>(k);
    const double y = rise * static_cast<double>(k);
    points.insert(points.end(), {{x, y}, {x + width, y}, {x + width, y + 8}, {x, y + 8}});
  }
  return points;
}

TEST(ClearDirectionTest, AlongRowsIsThatOfTheDefinition) {
  shapes::Random random(77);
  for (std::size_t round = repetitions(60); round > 0; --round) {
    const Points points = rowOfBoxes(random, 20 + random.below(800));
    const Subject s(points, true);
    for (int i = 0; i < 4; ++i) {
      const Point& corner = points[random.below(points.size())];
      const double x = random.uniform(-20.0, 20.0);
      const double y = random.chance(0.3) ? 0.0 : random.uniform(-1.0, 9.0);
      const Point p = corner + Point(x, y);
      EXPECT_TRUE(same(clear(s, p), clearByDefinition(points, p)))
          << points.size() << " seen from " << testing::PrintToString(p);
    }
  }
}

TEST(ClearDirectionTest, ClosesTheTurnToAFirstVertexThatWasPassedBy) {
  // Directions close to each other, from a crowd a little above the x axis on; the only wide gap
  // lies between the last of them and the first of the crowd.
  constexpr std::size_t n = 2000;
  constexpr double gap = pi / static_cast<double>(2 * n);
  Points points;
  for (std::size_t i = 0; i < n / 2; ++i) {
    points.push_back(atAngle(0.1 * gap + gap * static_cast<double>(i) / n));
  }
  for (std::size_t i = 0; i < n / 2; ++i) {
    points.push_back(atAngle(1.2 * gap + 1.5 * gap * static_cast<double>(i)));
  }
  const Point expected = clearByDefinition(points, {0, 0});
  EXPECT_NEAR(expected.angle().norm().toDouble(), pi + 0.1875 * pi, 0.1);
  EXPECT_TRUE(same(clear(points, {0, 0}), expected));
}

TEST(ClearDirectionTest, OfSmoothOutlinesIsThatOfTheDefinition) {
  // Enough vertices in order around the point for the sweep to follow the curve.
  for (const std::size_t n : {64U, 500U, 3000U}) {
    const Points points = shapes::smoothStar(n);
    const Subject s(points, true);
    for (const Point& p : shapes::pointsInBox(points, repetitions(60))) {
      EXPECT_TRUE(same(clear(s, p), clearByDefinition(points, p)));
    }
  }
}

}  // namespace
