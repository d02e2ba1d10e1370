// SPDX-License-Identifier: MIT
//
// The farthest vertex in a direction, by scan and by index.

#include <cntr/compute/extremal.h>

#include <testing/plain/extents.h>
#include <testing/shapes/numbers.h>
#include <testing/twin/repetitions.h>

#include "subject.h"

namespace {

using subject::forEachShape;
using subject::Points;
using subject::Subject;

/// The answer of the scan, which must be that of the index as well.
long extremal(const Subject& s, double angle) {
  const long scanned = cntr::compute::extremalVertex(s.path(), nullptr, qcRadian(angle));
  EXPECT_EQ(cntr::compute::extremalVertex(s.path(), &s.index(), qcRadian(angle)), scanned)
      << "by index, angle " << angle;
  return scanned;
}

long extremal(const Points& points, double angle) { return extremal(Subject(points, true), angle); }

TEST(ExtremalVertexTest, IsTheFirstOneFarthestInTheDirection) {
  const Points square = {{0, 0}, {4, 0}, {4, 3}, {0, 3}};
  EXPECT_EQ(extremal(square, 0.0), 1);
  EXPECT_EQ(extremal(square, pi / 2), 2);
  EXPECT_EQ(extremal(square, pi), 0);
  EXPECT_EQ(extremal(square, 3 * pi / 2), 0);
  EXPECT_EQ(extremal(square, pi / 4), 2);
  EXPECT_EQ(extremal(square, -pi / 4), 1);
}

TEST(ExtremalVertexTest, IsTheFirstOfEqualVertices) {
  EXPECT_EQ(extremal(Points(50, {2, 1}), 0.3), 0);
  EXPECT_EQ(extremal(Points{{7, 7}}, 5.0), 0);
}

TEST(ExtremalVertexTest, OfAnOpenPathMayBeItsFirst) {
  EXPECT_EQ(extremal(Subject({{9, 0}, {4, 0}, {4, 3}}, false), 0.0), 0);
}

TEST(ExtremalVertexTest, IsDecidedOnTheCoordinateWithinOneInTheFifteenthPlaceOfAnAxis) {
  // Farther along x by 0.05; along y by so much that the slightest turn counts.
  const Points points = {{0, 1e14}, {0.05, 0}};
  EXPECT_EQ(extremal(points, 0.9e-15), 1);
  EXPECT_EQ(extremal(points, 2e-15), 0);
  const Points upright = {{1e14, 0}, {0, 0.05}};
  EXPECT_EQ(extremal(upright, pi / 2), 1);
  EXPECT_EQ(extremal(upright, pi / 2 - 2e-15), 0);
}

TEST(ExtremalVertexTest, PassesOverNan) {
  EXPECT_EQ(extremal(Points{{notANumber, 0}, {1, 0}, {2, notANumber}, {3, 3}}, 0.4), 3);
  EXPECT_EQ(extremal(Points{{notANumber, 0}, {notANumber, 1}}, 0.4), -1);
}

TEST(ExtremalVertexTest, TakesInfiniteCoordinates) {
  EXPECT_EQ(extremal(Points{{0, 0}, {infinity, 0}, {1, 0}}, 0.1), 1);
  EXPECT_EQ(extremal(Points{{-infinity, 0}, {-infinity, 0}}, 0.1), -1);
  EXPECT_EQ(extremal(Points{{0, 0}, {5, infinity}, {1, 0}}, 0.0), 1) << "its height does not count";
}

TEST(ExtremalVertexTest, IsThatOfThePlainDefinition) {
  forEachShape(repetitions(600), shapes::any, 2, 120, [](const Subject& s, shapes::Random& random) {
    for (const double angle : {0.0, pi / 2, pi, 3 * pi / 2, pi / 4, random.uniform(-7.0, 7.0)}) {
      EXPECT_EQ(extremal(s, angle), plain::extremalVertexIndex(s.plain(), angle)) << angle;
    }
  });
}

}  // namespace
