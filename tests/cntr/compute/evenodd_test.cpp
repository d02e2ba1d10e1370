// SPDX-License-Identifier: MIT
//
// Containment by even-odd parity: where it answers, by scan and by index, the answer is that of the
// ray that defines it.

#include <cntr/compute/evenodd.h>

#include <cntr/compute/containment.h>
#include <testing/plain/region.h>
#include <testing/twin/repetitions.h>
#include <tests/cntr/figures.h>

#include "cut_square.h"
#include "subject.h"

namespace {

using figures::square;
using Answer = cntr::index::ContainmentGrid::Answer;
using subject::forEachShape;
using subject::Point;
using subject::Points;
using subject::Subject;

/// The answer of the scan, which must be that of the index as well.
Answer locate(const Subject& s, const Point& p) {
  const cntr::compute::Extents extents = cntr::compute::extentsOf(s.points());
  const Answer scanned = cntr::compute::evenOdd(s.points(), extents, p).answer;
  EXPECT_EQ(cntr::compute::evenOdd(s.points(), s.index(), extents, p).answer, scanned)
      << "by index, " << testing::PrintToString(p);
  return scanned;
}

/// True when there is an answer; it must be that of the literal count.
bool answers(const Subject& s, const Point& p) {
  const Answer answer = locate(s, p);
  if (answer == Answer::eUnknown) return false;
  const bool isInside = plain::insideCount({s.points(), {}}, p, false) % 2 != 0;
  EXPECT_EQ(answer == Answer::eInside, isInside) << testing::PrintToString(p);
  return true;
}

TEST(ExtentsTest, AreTheBoxAndTheRadiusFromTheFirstVertex) {
  for (const std::size_t n : {1U, 2U, 3U, 4U, 7U, 1000U}) {
    const Points points = shapes::smoothStar(n);
    const auto extents = cntr::compute::extentsOf(points);
    const auto box = cntr::compute::boundingBox(points);
    EXPECT_EQ(extents.bounds.minX, box.minX);
    EXPECT_EQ(extents.bounds.minY, box.minY);
    EXPECT_EQ(extents.bounds.maxX, box.maxX);
    EXPECT_EQ(extents.bounds.maxY, box.maxY);
    EXPECT_EQ(extents.radius, cntr::compute::radiusFromFirst(points));
    EXPECT_TRUE(extents.areSmall);
  }
}

TEST(ExtentsTest, AreNotSmallWithACoordinateOfAMillionOrNone) {
  for (const double large : {1e6, -1e6, infinity, -infinity, notANumber}) {
    for (std::size_t i = 0; i < 5; ++i) {
      Points points = shapes::smoothStar(5);
      points[i] = {large, 1};
      EXPECT_FALSE(cntr::compute::extentsOf(points).areSmall) << large;
      points[i] = {1, large};
      EXPECT_FALSE(cntr::compute::extentsOf(points).areSmall) << large;
      points[i] = {1, 999999};
      EXPECT_TRUE(cntr::compute::extentsOf(points).areSmall);
    }
  }
}

TEST(EvenOddTest, KnowsTheInsideAndTheOutside) {
  // An L: the upper right quarter is outside.
  const Subject s({{0, 0}, {100, 0}, {100, 50}, {50, 50}, {50, 100}, {0, 100}}, true);
  EXPECT_EQ(locate(s, {25, 25}), Answer::eInside);
  EXPECT_EQ(locate(s, {80, 20}), Answer::eInside);
  EXPECT_EQ(locate(s, {70, 60}), Answer::eOutside);
}

TEST(EvenOddTest, HoldsNothingOutsideTheBox) {
  const Subject s(square(100), true);
  for (const Point& p : {Point(-1, 50), Point(101, 50), Point(50, -1), Point(50, 1e9)}) {
    EXPECT_EQ(locate(s, p), Answer::eOutside);
  }
  EXPECT_EQ(locate(s, {notANumber, 50}), Answer::eOutside);
  EXPECT_EQ(locate(s, {50, notANumber}), Answer::eOutside);
}

TEST(EvenOddTest, DoesNotKnowWhatIsNextToAnEdgeOrAVertex) {
  const Subject s(square(100), true);
  for (const double off : {0.0, 0.5e-6, 1.05e-6}) {
    EXPECT_EQ(locate(s, {40, off}), Answer::eUnknown) << off;
    EXPECT_EQ(locate(s, {off, 40}), Answer::eUnknown) << off;
    EXPECT_EQ(locate(s, {100 - off, 40}), Answer::eUnknown) << off;
    EXPECT_EQ(locate(s, {off, off}), Answer::eUnknown) << off;
  }
  EXPECT_EQ(locate(s, {3e-6, 3e-6}), Answer::eUnknown) << "4 times the margin around a vertex";
  EXPECT_EQ(locate(s, {40, 1.2e-6}), Answer::eInside);
  EXPECT_EQ(locate(s, {4e-6, 4e-6}), Answer::eInside);
  EXPECT_EQ(locate(s, {40, 40}), Answer::eInside);
}

TEST(EvenOddTest, DoesNotKnowWhatIsNextToASlantingEdge) {
  const Subject s({{0, 0}, {300, 400}, {-400, 300}}, true);
  const Point middle(150, 200);
  const Point across(-0.8, 0.6);
  for (const double off : {0.0, 0.5e-6, 1.05e-6}) {
    EXPECT_EQ(locate(s, middle + across * off), Answer::eUnknown) << off;
    EXPECT_EQ(locate(s, middle - across * off), Answer::eUnknown) << off;
  }
  EXPECT_EQ(locate(s, middle + across * 1.2e-6), Answer::eInside);
  EXPECT_EQ(locate(s, middle - across * 1.2e-6), Answer::eOutside);
}

TEST(EvenOddTest, DoesNotKnowWhereTheRayFallsShort) {
  // A first vertex in the middle: the ray is as long as the sides' diagonal, less than the way to
  // the far corners.
  const Subject s({{50, 50}, {100, 0}, {100, 100}, {0, 100}, {0, 0}}, true);
  EXPECT_TRUE(answers(s, {60, 55}));
  const Subject thin({{50, 0}, {100, 1}, {0, 1}}, true);
  EXPECT_TRUE(answers(thin, {50, 0.5}));
  const Subject far({{500, 0}, {1000, 400}, {0, 400}, {0, 300}, {490, 300}, {490, 290}, {0, 290}},
                    true);
  for (const Point& p : shapes::pointsInBox(far.points(), 200)) answers(far, p);
}

TEST(EvenOddTest, DoesNotKnowWhereTheRayEndsInsideTheOutline) {
  const Subject s(cutSquare(), true);
  for (const Point& p : {Point(98.97, 98.93), Point(90, 95), Point(95, 90)}) {
    EXPECT_EQ(plain::insideCount({s.points(), {}}, p, false) % 2, 1);
    EXPECT_EQ(locate(s, p), Answer::eUnknown);
  }
}

TEST(EvenOddTest, DoesNotKnowWithLargeCoordinatesOrWithoutAnArea) {
  EXPECT_EQ(locate(Subject(square(1e6), true), {40, 40}), Answer::eUnknown);
  EXPECT_EQ(locate(Subject({{0, 0}, {9, 0}, {9, 9}, {notANumber, 9}}, true), {4, 4}),
            Answer::eUnknown);
  EXPECT_EQ(locate(Subject({{0, 0}, {9, 9}}, true), {4, 5}), Answer::eUnknown);
  EXPECT_EQ(locate(Subject({{3, 3}}, true), {3, 3}), Answer::eUnknown);
}

TEST(EvenOddTest, KnowsInTheHeightOfVerticesAndHorizontalEdges) {
  const Subject s(shapes::comb(60), true);
  const auto box = cntr::compute::boundingBox(s.points());
  std::size_t answered = 0;
  for (int i = 0; i <= 64; ++i) {
    const double x = box.minX + (box.maxX - box.minX) * i / 64;
    for (const Point& vertex : s.points()) {
      if (answers(s, {x, vertex.y()})) ++answered;
    }
  }
  EXPECT_GT(answered, 2500U) << "the others lie on edges";
}

TEST(EvenOddTest, TellsHowManyEdgesAndBoxesItLookedAt) {
  const Subject s(shapes::smoothStar(1000), true);
  const auto extents = cntr::compute::extentsOf(s.points());
  EXPECT_EQ(cntr::compute::evenOdd(s.points(), extents, {640, 480}).work, 1001U);
  EXPECT_EQ(cntr::compute::evenOdd(s.points(), extents, {-9, 480}).work, 1U) << "outside the box";
  const std::size_t indexed =
      cntr::compute::evenOdd(s.points(), s.index(), extents, {640, 480}).work;
  EXPECT_GE(indexed, 3U) << "the top of the hierarchy";
  EXPECT_LE(indexed, 60U);
}

void expectAnswers(const std::string& name, Points points, double fewest) {
  SCOPED_TRACE(name);
  const Subject s(std::move(points), true);
  const std::size_t count = repetitions(500);
  std::size_t answered = 0;
  for (const Point& p : shapes::pointsInBox(s.points(), count)) {
    if (answers(s, p)) ++answered;
  }
  EXPECT_GE(static_cast<double>(answered), fewest * static_cast<double>(count));
}

TEST(EvenOddTest, AnswersNearlyAllPointsOfTheBox) {
  for (const std::size_t n : {10U, 30U, 300U}) {
    expectAnswers("smooth star", shapes::smoothStar(n), 0.99);
    expectAnswers("spiky star", shapes::spikyStar(n), 0.99);
    expectAnswers("comb", shapes::comb(n), 0.98);
    expectAnswers("crossing star", shapes::crossingStar(n), 0.99);
  }
  expectAnswers("triangle", {{0, 0}, {100, 10}, {30, 90}}, 0.9);
}

TEST(EvenOddTest, AgreesWithTheCountWhereverItAnswers) {
  std::size_t answered = 0;
  forEachShape(repetitions(20000), shapes::any, 1, 90,
               [&](const Subject& drawn, shapes::Random& random) {
                 const Subject s(drawn.points(), true);
                 for (int i = 0; i < 8; ++i) {
                   if (answers(s, shapes::queryPoint(random, s.points()))) ++answered;
                 }
               });
  EXPECT_GT(answered, repetitions(20000) * 2);
}

}  // namespace
