// SPDX-License-Identifier: MIT
//
// Where a segment crosses a path, by scan and by index. The same questions asked of a contour are
// in tests/cntr/model/contour_edges_test.cpp, those about a single edge in probe_test.cpp.

#include <cntr/compute/crossings.h>

#include <algorithm>

#include <gmock/gmock.h>
#include <testing/plain/edges.h>
#include <testing/twin/repetitions.h>
#include <testing/twin/same.h>
#include <tests/cntr/figures.h>

#include "subject.h"

namespace {

using cntr::compute::Crossing;
using figures::square;
using same::same;
using subject::forEachShape;
using subject::Point;
using subject::Points;
using subject::Subject;
using testing::ElementsAre;
using testing::IsEmpty;

bool sameCrossings(const std::vector<Crossing>& a, const std::vector<Crossing>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto& one, const auto& other) {
    return one.edge == other.edge && same(one.point, other.point);
  });
}

/// The answer of the scan, which the index must also give, and the count must match.
std::vector<Crossing> crossings(const Subject& s, const Point& a, const Point& b, bool touches) {
  const std::vector<Crossing> found = cntr::compute::crossings(s.scanned(), a, b, touches);
  EXPECT_TRUE(sameCrossings(cntr::compute::crossings(s.indexed(), a, b, touches), found));
  EXPECT_EQ(cntr::compute::countCrossings(s.scanned(), a, b, touches), found.size());
  EXPECT_EQ(cntr::compute::countCrossings(s.indexed(), a, b, touches), found.size());
  return found;
}

Points pointsOf(const std::vector<Crossing>& crossings) {
  Points points;
  for (const Crossing& crossing : crossings) points.push_back(crossing.point);
  return points;
}

std::vector<std::size_t> edgesOf(const std::vector<Crossing>& crossings) {
  std::vector<std::size_t> edges;
  for (const Crossing& crossing : crossings) edges.push_back(crossing.edge);
  return edges;
}

TEST(CrossingsTest, AscendAlongTheSegment) {
  const Subject s(square(4), true);
  const auto there = crossings(s, {-1, 1}, {5, 1}, true);
  EXPECT_THAT(pointsOf(there), ElementsAre(Point(0, 1), Point(4, 1)));
  EXPECT_THAT(edgesOf(there), ElementsAre(0, 2)) << "the closing edge is edge 0";
  const auto back = crossings(s, {5, 1}, {-1, 1}, true);
  EXPECT_THAT(pointsOf(back), ElementsAre(Point(4, 1), Point(0, 1)));
}

TEST(CrossingsTest, OfAnOpenPathLackTheClosingEdge) {
  const auto found = crossings(Subject(square(4), false), {-1, 1}, {5, 1}, true);
  EXPECT_THAT(pointsOf(found), ElementsAre(Point(4, 1)));
  EXPECT_THAT(edgesOf(found), ElementsAre(1));
}

TEST(CrossingsTest, AtAnEndOfTheSegmentCountOnlyWhereAskedFor) {
  const Subject s(square(4), true);
  EXPECT_EQ(crossings(s, {2, 2}, {4, 1}, true).size(), 1U);
  EXPECT_EQ(crossings(s, {2, 2}, {4, 1}, false).size(), 0U);
  EXPECT_EQ(crossings(s, {2, 2}, {4 + 0.9e-6, 2}, false).size(), 0U);
  EXPECT_EQ(crossings(s, {2, 2}, {4 + 1.1e-6, 2}, false).size(), 1U);
}

TEST(CrossingsTest, ThroughAVertexCountOnBothOfItsEdges) {
  EXPECT_THAT(edgesOf(crossings(Subject(square(4), true), {3, 5}, {5, 3}, true)),
              ElementsAre(2, 3));
}

TEST(CrossingsTest, WithParallelEdgesAreNone) {
  EXPECT_THAT(edgesOf(crossings(Subject(square(4), true), {1, 0}, {3, 0}, true)), IsEmpty());
  EXPECT_THAT(edgesOf(crossings(Subject(square(4), true), {-1, 0}, {5, 0}, true)),
              ElementsAre(0, 2));
}

TEST(CrossingsTest, OfASegmentOutsideTheBoxAreNone) {
  // Within 1e-6 of the edge, but not in the box.
  EXPECT_THAT(edgesOf(crossings(Subject(square(4), true), {4 + 0.5e-6, 1}, {9, 2}, true)),
              IsEmpty());
  EXPECT_THAT(edgesOf(crossings(Subject(square(4), true), {4, 1}, {9, 2}, true)), ElementsAre(2));
}

TEST(CrossingsTest, NeedEdgesAndASegmentWithALength) {
  EXPECT_THAT(edgesOf(crossings(Subject({{2, 2}}, true), {0, 0}, {4, 4}, true)), IsEmpty());
  EXPECT_THAT(edgesOf(crossings(Subject({{2, 2}}, false), {0, 0}, {4, 4}, true)), IsEmpty());
  EXPECT_THAT(edgesOf(crossings(Subject(Points(60, {2, 2}), true), {0, 0}, {4, 4}, true)),
              IsEmpty());
  EXPECT_THAT(edgesOf(crossings(Subject(square(4), true), {4, 2}, {4, 2}, true)), IsEmpty());
}

TEST(CrossingsTest, WithNanAreNone) {
  EXPECT_THAT(edgesOf(crossings(Subject(square(4), true), {-1, notANumber}, {5, 1}, true)),
              IsEmpty());
  EXPECT_THAT(
      edgesOf(crossings(Subject({{notANumber, 0}, {4, 0}, {4, 4}}, true), {-1, 1}, {5, 1}, true)),
      IsEmpty())
      << "a first vertex that is NaN leaves no box";
  EXPECT_THAT(edgesOf(crossings(Subject({{0, 0}, {notANumber, 0}, {4, 4}, {4, 0}}, true), {-1, 1},
                                {5, 1}, true)),
              ElementsAre(3));
}

/// Edges that all pass through (0, 0), there and back.
Points fan(std::size_t edges) {
  Points points;
  for (std::size_t i = 0; i < edges; ++i) {
    const double height = 1.0 + static_cast<double>(i);
    points.emplace_back(-1.0, -height);
    points.emplace_back(1.0, height);
  }
  return points;
}

TEST(CrossingsTest, InOnePlaceAreLeftInTheOrderOfAnExchangeSort) {
  for (const std::size_t edges : {2U, 7U, 8U, 9U, 30U}) {
    const Subject s(fan(edges), true);
    const plain::Segment segment{{-3, 0.25}, {3, -0.125}};
    std::vector<std::size_t> expected;
    for (const auto& crossing : plain::intersections(s.plain(), segment, true)) {
      expected.push_back(static_cast<std::size_t>(crossing.edge));
    }
    EXPECT_GE(expected.size(), 2 * edges - 1);
    EXPECT_EQ(edgesOf(crossings(s, segment.a, segment.b, true)), expected);
  }
}

TEST(CrossesTest, CountsTouches) {
  const Subject s(square(4), true);
  const auto crosses = [&](const Points& other) {
    const cntr::compute::CrossingTarget asking{{other, true}, {}};
    const bool scanned = cntr::compute::crosses(s.scanned(), asking);
    EXPECT_EQ(cntr::compute::crosses(s.indexed(), asking), scanned);
    return scanned;
  };
  EXPECT_TRUE(crosses({{2, 2}, {9, 2}, {9, 3}}));
  EXPECT_TRUE(crosses({{4, 2}, {9, 2}, {9, 3}})) << "a vertex on an edge";
  EXPECT_FALSE(crosses({{1, 1}, {3, 1}, {2, 3}})) << "inside";
  EXPECT_FALSE(crosses({{5, 5}, {6, 5}, {6, 6}}));
  EXPECT_FALSE(crosses({}));
}

TEST(CrossingsTest, AreThoseOfThePlainDefinition) {
  forEachShape(repetitions(600), shapes::any, 2, 100, [](const Subject& s, shapes::Random& random) {
    for (int i = 0; i < 4; ++i) {
      const shapes::Segment segment = shapes::querySegment(random, s.points());
      for (const bool touches : {false, true}) {
        std::vector<Crossing> expected;
        for (const auto& c : plain::intersections(s.plain(), {segment.a, segment.b}, touches)) {
          expected.push_back({c.point, static_cast<std::size_t>(c.edge)});
        }
        EXPECT_TRUE(sameCrossings(crossings(s, segment.a, segment.b, touches), expected));
      }
    }
  });
}

TEST(CrossesTest, IsThatOfThePlainDefinition) {
  forEachShape(repetitions(300), shapes::any, 2, 60, [](const Subject& s, shapes::Random& random) {
    const Points points = shapes::any(random.next(), 12).points;
    if (points.empty()) return;
    const Subject other(points, true);
    const bool expected = !plain::intersections(s.plain(), other.plain()).empty();
    EXPECT_EQ(cntr::compute::crosses(s.scanned(), other.scanned()), expected);
    EXPECT_EQ(cntr::compute::crosses(s.indexed(), other.scanned()), expected);
    EXPECT_EQ(cntr::compute::crosses(s.scanned(), other.indexed()), expected);
  });
}

TEST(FirstCrossingTest, IsTheFirstOfAll) {
  forEachShape(
      repetitions(1500), shapes::any, 2, 100, [](const Subject& s, shapes::Random& random) {
        for (int i = 0; i < 4; ++i) {
          const shapes::Segment segment = shapes::querySegment(random, s.points());
          for (const bool touches : {false, true}) {
            const auto all = crossings(s, segment.a, segment.b, touches);
            std::vector<Crossing> expected(all.begin(), all.begin() + (all.empty() ? 0 : 1));
            for (const auto& target : {s.scanned(), s.indexed()}) {
              const auto first =
                  cntr::compute::firstCrossing(target, segment.a, segment.b, touches);
              std::vector<Crossing> found;
              if (first) found.push_back(*first);
              EXPECT_TRUE(sameCrossings(found, expected));
            }
          }
        }
      });
}

TEST(FirstCrossingTest, IsThatOfTheFirstEdgeWhereSeveralCrossInOnePlace) {
  // A rosette: all edges run through the origin, and every key is 1.
  Points rosette;
  for (int i = 0; i < 60; ++i) {
    const double t = 0.05 * i;
    rosette.emplace_back(i % 2 == 0 ? 1.0 : -1.0, i % 2 == 0 ? t : -t);
  }
  const Subject s(rosette, true);
  const auto all = crossings(s, {-0.5, 2}, {0.5, -2}, true);
  ASSERT_GT(all.size(), 20U);
  const auto first = cntr::compute::firstCrossing(s.indexed(), {-0.5, 2}, {0.5, -2}, true);
  ASSERT_TRUE(first);
  EXPECT_EQ(first->edge, all.front().edge);
}

TEST(FirstCrossingTest, OfCoordinatesWhoseProductsOverflowIsThatOfTheSort) {
  Points wide;
  for (int i = 0; i < 50; ++i) wide.emplace_back(i % 2 == 0 ? -1e200 : 1e200, 1e199 * (i - 25));
  const Subject s(wide, false);
  const auto all = crossings(s, {0, -1e201}, {1e198, 1e201}, true);
  const auto first = cntr::compute::firstCrossing(s.indexed(), {0, -1e201}, {1e198, 1e201}, true);
  ASSERT_EQ(first.has_value(), !all.empty());
  if (first) {
    EXPECT_EQ(first->edge, all.front().edge);
  }
}

TEST(CountCrossingsTest, EndsWhereItIsTold) {
  const Subject s(shapes::comb(200), true);
  const Point a(0, 500);
  const Point b(2000, 501);
  const std::size_t all = cntr::compute::countCrossings(s.indexed(), a, b, true);
  ASSERT_GT(all, 8U);
  for (const auto& target : {s.scanned(), s.indexed()}) {
    EXPECT_EQ(cntr::compute::countCrossings(target, a, b, true, 3), 3U);
    EXPECT_EQ(cntr::compute::countCrossings(target, a, b, true, all + 1), all);
  }
}

}  // namespace
