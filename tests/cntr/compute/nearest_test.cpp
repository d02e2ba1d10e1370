// SPDX-License-Identifier: MIT
//
// The vertex and the edge nearest to a point, by scan and by index.

#include <cntr/compute/nearest.h>

#include <cmath>

#include <platform/core/kernels.h>
#include <testing/plain/measures.h>
#include <testing/twin/repetitions.h>
#include <testing/twin/same.h>
#include <tests/cntr/figures.h>

#include "subject.h"

namespace {

using figures::square;
using same::same;
using subject::forEachShape;
using subject::Point;
using subject::Points;
using subject::Subject;

/// The answers of the scan, which must be those of the index as well.
std::size_t vertex(const Subject& s, const Point& p) {
  const std::size_t scanned = cntr::compute::closestVertex(s.path(), nullptr, p);
  EXPECT_EQ(cntr::compute::closestVertex(s.path(), &s.index(), p), scanned)
      << "by index, " << testing::PrintToString(p);
  return scanned;
}

Point nearest(const Subject& s, const Point& p) {
  const Point scanned = cntr::compute::closestPoint(s.path(), nullptr, p);
  const Point indexed = cntr::compute::closestPoint(s.path(), &s.index(), p);
  EXPECT_TRUE(same(indexed, scanned))
      << testing::PrintToString(indexed) << " by index, asked " << testing::PrintToString(p);
  return scanned;
}

TEST(ClosestVertexTest, IsTheNearestOne) {
  const Subject s(square(4), true);
  EXPECT_EQ(vertex(s, {3, 1}), 1U);
  EXPECT_EQ(vertex(s, {9, 9}), 2U);
  EXPECT_EQ(vertex(s, {0, 4}), 3U);
}

TEST(ClosestVertexTest, IsTheFirstOneOnTies) {
  EXPECT_EQ(vertex(Subject(square(4), true), {2, 2}), 0U);
  EXPECT_EQ(vertex(Subject(square(4), true), {4, 2}), 1U);
  EXPECT_EQ(vertex(Subject(Points(90, {1, 1}), true), {7, 2}), 0U);
}

TEST(ClosestVertexTest, OfAnOpenPathMayBeItsFirst) {
  EXPECT_EQ(vertex(Subject(square(4), false), {-1, -1}), 0U);
  EXPECT_EQ(vertex(Subject(square(4), false), {-1, 5}), 3U);
}

TEST(ClosestVertexTest, IsTheFirstOneWhereNoDistanceIsFinite) {
  EXPECT_EQ(vertex(Subject(square(4), true), {notANumber, 0}), 0U);
  EXPECT_EQ(vertex(Subject(square(4), true), {infinity, 0}), 0U);
  EXPECT_EQ(vertex(Subject({{notANumber, 0}, {0, notANumber}}, true), {1, 1}), 0U);
  EXPECT_EQ(vertex(Subject({{notANumber, 0}, {0, 0}, {infinity, 0}}, true), {1, 1}), 1U);
}

TEST(ClosestPointTest, LiesOnTheNearestEdge) {
  const Subject closed(square(4), true);
  EXPECT_EQ(nearest(closed, {3, 1.5}), Point(4, 1.5));
  EXPECT_EQ(nearest(closed, {-1, 3}), Point(0, 3));
  EXPECT_EQ(nearest(closed, {6, 6}), Point(4, 4));
  EXPECT_EQ(nearest(Subject(square(4), false), {-1, 3}), Point(0, 4)) << "no edge closes it";
}

TEST(ClosestPointTest, LiesOnTheFirstOfEquallyNearEdges) {
  EXPECT_EQ(nearest(Subject(square(4), true), {2, 2}), Point(0, 2))
      << "the closing edge comes first";
  EXPECT_EQ(nearest(Subject(square(4), false), {2, 2}), Point(2, 0));
}

TEST(ClosestPointTest, OfEdgesWithoutLengthIsTheirVertex) {
  EXPECT_EQ(nearest(Subject({{3, 4}}, true), {0, 0}), Point(3, 4));
  EXPECT_EQ(nearest(Subject(Points(40, {3, 4}), true), {0, 0}), Point(3, 4));
}

TEST(ClosestPointTest, IsTheOriginWhereNoDistanceIsFinite) {
  EXPECT_EQ(nearest(Subject(square(4), true), {notANumber, 1}), Point(0, 0));
  EXPECT_EQ(nearest(Subject({{notANumber, 1}, {2, notANumber}}, true), {5, 5}), Point(0, 0));
}

/// A coordinate of any size.
double anyCoordinate(shapes::Random& random) {
  const double size = std::pow(10.0, random.uniform(-20.0, 20.0));
  return size * random.uniform(-1.0, 1.0);
}

TEST(ClosestPointTest, LiesInTheBoxOfItsEdgeHoweverItIsRounded) {
  shapes::Random random(1);
  std::size_t atAnEnd = 0;
  for (std::size_t round = 0; round < repetitions(100000); ++round) {
    const Point a{anyCoordinate(random), anyCoordinate(random)};
    const Point b{anyCoordinate(random), anyCoordinate(random)};
    // Beside b, or nearly so: there the point is rounded towards the end, or to it.
    const Point across(b.y() - a.y(), a.x() - b.x());
    const Point along = (b - a) * (std::pow(10.0, random.uniform(-18.0, 0.0)));
    const Point p = b - along + across * random.uniform(-1.0, 1.0);
    const Point nearest = qnKernel::closestOnSegment(p, a, b);
    ASSERT_TRUE(cntr::plane::contains(cntr::plane::edgeBox(a, b), nearest)) << round;
    if (nearest == b) ++atAnEnd;
  }
  EXPECT_GT(atAnEnd, repetitions(100000) / 100);
  EXPECT_LT(atAnEnd, repetitions(100000));
}

TEST(NearestTest, IsThatOfThePlainDefinition) {
  forEachShape(repetitions(600), shapes::any, 2, 120, [](const Subject& s, shapes::Random& random) {
    for (int i = 0; i < 5; ++i) {
      const Point p = shapes::queryPoint(random, s.points());
      EXPECT_EQ(static_cast<long>(vertex(s, p)), plain::closestVertexIndex(s.plain(), p));
      EXPECT_TRUE(same(nearest(s, p), plain::closestPoint(s.plain(), p, false)));
    }
  });
}

TEST(NearestSearchTest, BeginsAnywhereAndEndsAtTheSameAnswers) {
  forEachShape(repetitions(600), shapes::any, 2, 120, [](const Subject& s, shapes::Random& random) {
    cntr::compute::NearestSearch scan(s.path(), nullptr);
    cntr::compute::NearestSearch search(s.path(), &s.index());
    for (int i = 0; i < 20; ++i) {
      const Point p = shapes::queryPoint(random, s.points());
      const std::size_t expectedVertex = vertex(s, p);
      const Point expected = nearest(s, p);
      EXPECT_EQ(scan.closestVertex(p), expectedVertex);
      EXPECT_EQ(search.closestVertex(p), expectedVertex);
      EXPECT_TRUE(same(scan.closestPoint(p), expected));
      EXPECT_TRUE(same(search.closestPoint(p), expected));
    }
  });
}

TEST(ClosestPointsTest, OfManyPointsAreThoseOfEachBitForBit) {
  forEachShape(repetitions(2000), shapes::any, 2, 31, [](const Subject& s, shapes::Random& random) {
    Points asked;
    const std::size_t count = random.below(12);
    for (std::size_t i = 0; i < count; ++i) {
      const double x = random.uniform(-100.0, 1500.0);
      const double y = random.uniform(-100.0, 1500.0);
      asked.emplace_back(x, y);
    }
    asked.insert(asked.end(), s.points().begin(), s.points().end());
    asked.insert(asked.end(), {{notANumber, 0}, {0, infinity}, {1e200, 1e-200}, {-0.0, 0.0}});
    Points answers(asked.size());
    cntr::compute::closestPoints(s.path(), asked, answers);
    for (std::size_t i = 0; i < asked.size(); ++i) {
      const Point alone = cntr::compute::closestPoint(s.path(), nullptr, asked[i]);
      ASSERT_TRUE(same(answers[i], alone)) << testing::PrintToString(asked[i]);
    }
  });
}

TEST(ClosestPointsTest, TakeTheFirstOfEquallyNearEdges) {
  const Subject s(square(4), true);
  Points answers(5);
  cntr::compute::closestPoints(s.path(), Points(5, {2, 2}), answers);
  for (const Point& p : answers) EXPECT_TRUE(same(p, Point(0, 2)));
}

}  // namespace
