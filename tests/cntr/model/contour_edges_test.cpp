// SPDX-License-Identifier: MIT
//
// Crossings of a contour with segments, with contours and with itself, and the vertices near a
// point. The answers of thousands of shapes are compared with a second implementation in
// contour_properties_test.cpp.

#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <testing/heap/heap.h>
#include <testing/plain/edges.h>
#include <testing/shapes/numbers.h>
#include <testing/shapes/shapes.h>

#include <testing/twin/same.h>
#include <tests/cntr/figures.h>
#include <tests/cntr/next_doubles.h>
#include "contour_probe.h"

namespace {

using figures::square;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

constexpr double touch = 1e-6;

struct Crossings {
  Points points;
  /// Of a square: 1 at the bottom, 2 right, 3 at the top, 0 left where closed.
  std::vector<int> edges;
};

/// Crossings of the segment from a to b, end touches counted or not.
Crossings crossings(const ContourProbe& contour, const Point& a, const Point& b, bool touches) {
  Crossings result;
  result.points = contour.intersections(qcLineSeg(a, b), result.edges, touches);
  EXPECT_EQ(contour.intersections(qcLineSeg(a, b), touches), result.points);
  return result;
}

Crossings crossingsWithTouches(const ContourProbe& contour, const Point& a, const Point& b) {
  return crossings(contour, a, b, true);
}

Crossings crossingsWithoutTouches(const ContourProbe& contour, const Point& a, const Point& b) {
  return crossings(contour, a, b, false);
}

TEST(ContourIntersectionsTest, AreReportedInOrderAlongTheSegment) {
  const Crossings there = crossingsWithoutTouches(closedContour(square(2)), {-1, 1}, {3, 1});
  EXPECT_THAT(there.points, ElementsAre(Point(0, 1), Point(2, 1)));
  EXPECT_THAT(there.edges, ElementsAre(0, 2));
  const Crossings back = crossingsWithoutTouches(closedContour(square(2)), {3, 1}, {-1, 1});
  EXPECT_THAT(back.points, ElementsAre(Point(2, 1), Point(0, 1)));
  EXPECT_THAT(back.edges, ElementsAre(2, 0));
}

TEST(ContourIntersectionsTest, CountEdgesOfAnOpenContourFromItsFirstVertex) {
  const Crossings found = crossingsWithoutTouches(openContour(square(2)), {1, -1}, {1, 3});
  EXPECT_THAT(found.points, ElementsAre(Point(1, 0), Point(1, 2)));
  EXPECT_THAT(found.edges, ElementsAre(0, 2));
}

TEST(ContourIntersectionsTest, OfAnOpenContourLeaveTheClosingEdgeOut) {
  EXPECT_THAT(crossingsWithTouches(openContour(square(2)), {-1, 1}, {1, 1}).points, IsEmpty());
  EXPECT_THAT(crossingsWithTouches(closedContour(square(2)), {-1, 1}, {1, 1}).points,
              ElementsAre(Point(0, 1)));
}

TEST(ContourIntersectionsTest, OnAnEdgeOfAnOpenContourAreOnItsOwnLine) {
  const Points zigzag = {{0, 0}, {4, 4}, {6, 0}, {6, 10}};
  EXPECT_THAT(crossingsWithTouches(openContour(zigzag), {0, 2}, {5.5, 2}).points,
              ElementsAre(Point(2, 2), Point(5, 2)));
}

TEST(ContourIntersectionsTest, AtAVertexAreReportedOnceForEachOfItsEdges) {
  for (const bool touches : {true, false}) {
    const Crossings found = crossings(closedContour(square(2)), {-1, 1}, {1, -1}, touches);
    EXPECT_THAT(found.points, ElementsAre(Point(0, 0), Point(0, 0)));
    EXPECT_THAT(found.edges, UnorderedElementsAre(0, 1));
  }
}

TEST(ContourIntersectionsTest, LeaveOutAnEdgeThatTheSegmentLiesOn) {
  const Crossings found = crossingsWithoutTouches(closedContour(square(2)), {-1, 0}, {3, 0});
  EXPECT_THAT(found.points, ElementsAre(Point(0, 0), Point(2, 0)));
  EXPECT_THAT(found.edges, ElementsAre(0, 2));
}

TEST(ContourIntersectionsTest, LeaveOutAnEdgeThatTheSegmentRepeats) {
  const Crossings found = crossingsWithTouches(closedContour(square(2)), {0, 0}, {2, 0});
  EXPECT_THAT(found.points, ElementsAre(Point(0, 0), Point(2, 0)));
  EXPECT_THAT(found.edges, ElementsAre(0, 2));
  EXPECT_THAT(crossingsWithoutTouches(closedContour(square(2)), {0, 0}, {2, 0}).points, IsEmpty());
}

TEST(ContourIntersectionsTest, WithAnEndOnAnEdgeCountWhenTouchesDo) {
  EXPECT_THAT(crossingsWithTouches(closedContour(square(2)), {1, 0}, {1, 1}).points,
              ElementsAre(Point(1, 0)));
  EXPECT_THAT(crossingsWithTouches(closedContour(square(2)), {1, 1}, {1, 0}).points,
              ElementsAre(Point(1, 0)));
  EXPECT_THAT(crossingsWithoutTouches(closedContour(square(2)), {1, 0}, {1, 1}).points, IsEmpty());
  EXPECT_THAT(crossingsWithoutTouches(closedContour(square(2)), {1, 1}, {1, 0}).points, IsEmpty());
}

TEST(ContourIntersectionsTest, WithoutTouchesKeepTheEdgesThatNoEndTouches) {
  const Crossings found = crossingsWithoutTouches(closedContour(square(2)), {0, 1}, {3, 1});
  EXPECT_THAT(found.points, ElementsAre(Point(2, 1)));
  EXPECT_THAT(found.edges, ElementsAre(2));
}

TEST(ContourIntersectionsTest, CountAnEndWithinAMillionthAsATouch) {
  // The segment crosses the edge x = 0 and starts just before it.
  const ContourProbe edge = openContour({{0, -1}, {0, 1}});
  EXPECT_THAT(crossingsWithTouches(edge, {-touch, 0}, {1, 0}).points, ElementsAre(Point(0, 0)));
  EXPECT_THAT(crossingsWithoutTouches(edge, {-touch, 0}, {1, 0}).points, IsEmpty());
  EXPECT_THAT(crossingsWithoutTouches(edge, {1, 0}, {-touch, 0}).points, IsEmpty());
  const double clear = -justAbove(touch);
  EXPECT_THAT(crossingsWithoutTouches(edge, {clear, 0}, {1, 0}).points, ElementsAre(Point(0, 0)));
  EXPECT_THAT(crossingsWithoutTouches(edge, {1, 0}, {clear, 0}).points, ElementsAre(Point(0, 0)));
}

TEST(ContourIntersectionsTest, LieLessThanAMillionthBeyondAnEndOfTheSegment) {
  // The segment begins short of the diagonal, which it would meet at the origin.
  const ContourProbe diagonal = openContour({{-1, -1}, {1, 1}});
  EXPECT_THAT(crossingsWithTouches(diagonal, {touch, 0}, {1, 0}).points, IsEmpty());
  EXPECT_THAT(crossingsWithTouches(diagonal, {1, 0}, {touch, 0}).points, IsEmpty());
  const double nearer = justBelow(touch);
  EXPECT_THAT(crossingsWithTouches(diagonal, {nearer, 0}, {1, 0}).points, ElementsAre(Point(0, 0)));
  EXPECT_THAT(crossingsWithTouches(diagonal, {1, 0}, {nearer, 0}).points, ElementsAre(Point(0, 0)));
  EXPECT_THAT(crossingsWithoutTouches(diagonal, {nearer, 0}, {1, 0}).points, IsEmpty());
}

TEST(ContourIntersectionsTest, LieLessThanAMillionthBeyondAnEndOfTheEdge) {
  // The edge begins short of the segment's diagonal. Lengths are chosen so that nothing rounds.
  const auto edgeFrom = [](double gap) { return openContour({{gap, 0}, {1 + gap, 0}}); };
  const auto crossedFrom = [&](double gap) {
    return crossingsWithTouches(edgeFrom(gap), {-gap, -gap}, {1 - gap, 1 - gap}).points;
  };
  EXPECT_THAT(crossedFrom(touch), IsEmpty());
  EXPECT_THAT(crossedFrom(justBelow(touch)), ElementsAre(Point(0, 0)));
}

TEST(ContourIntersectionsTest, LeaveOutEdgesParallelWithinOnePartInATrillion) {
  // The edge rises by `rise` over its length of 1 and passes the segment in its middle.
  const auto crossedByRise = [](double rise) {
    const ContourProbe edge = openContour({{0, -0.5 * rise}, {1, 0.5 * rise}});
    return crossingsWithTouches(edge, {-1, 0}, {2, 0}).points;
  };
  EXPECT_THAT(crossedByRise(1e-12), IsEmpty());
  EXPECT_THAT(crossedByRise(-1e-12), IsEmpty());
  EXPECT_THAT(crossedByRise(justAbove(1e-12)), ElementsAre(Point(0.5, 0)));
  EXPECT_THAT(crossedByRise(-justAbove(1e-12)), ElementsAre(Point(0.5, 0)));
}

TEST(ContourIntersectionsTest, CountBoxesThatTouchAsOverlapping) {
  // Segments outside that meet the square at a corner or along a side.
  EXPECT_THAT(crossingsWithTouches(closedContour(square(2)), {2, 2}, {3, 3}).edges,
              UnorderedElementsAre(2, 3));
  EXPECT_THAT(crossingsWithTouches(closedContour(square(2)), {-1, -1}, {0, 0}).edges,
              UnorderedElementsAre(0, 1));
  EXPECT_THAT(crossingsWithTouches(closedContour(square(2)), {2, 1}, {5, 1}).edges, ElementsAre(2));
  EXPECT_THAT(crossingsWithTouches(closedContour(square(2)), {-5, 1}, {0, 1}).edges,
              ElementsAre(0));
  EXPECT_THAT(crossingsWithTouches(closedContour(square(2)), {1, 2}, {1, 5}).edges, ElementsAre(3));
  EXPECT_THAT(crossingsWithTouches(closedContour(square(2)), {1, -5}, {1, 0}).edges,
              ElementsAre(1));
  EXPECT_THAT(crossingsWithTouches(closedContour(square(2)), {2, -1}, {2, 3}).edges,
              UnorderedElementsAre(1, 3));
}

TEST(ContourIntersectionsTest, AreNoneWhereBoxesDoNotTouchHoweverNear) {
  // The ends are within a millionth of the square, which would do, but outside its box.
  const double beyond = 2 + 1e-7;
  EXPECT_THAT(crossingsWithTouches(closedContour(square(2)), {beyond, 1}, {5, 1}).points,
              IsEmpty());
  EXPECT_THAT(crossingsWithTouches(closedContour(square(2)), {1, beyond}, {1, 5}).points,
              IsEmpty());
  EXPECT_THAT(crossingsWithTouches(closedContour(square(2)), {-1e-7, 1}, {-5, 1}).points,
              IsEmpty());
  EXPECT_THAT(crossingsWithTouches(closedContour(square(2)), {1, -1e-7}, {1, -5}).points,
              IsEmpty());
  // Inside the square's box the box of each edge decides.
  EXPECT_THAT(crossingsWithTouches(closedContour(square(2)), {2 - 1e-7, 1}, {1, 1}).points,
              IsEmpty());
}

TEST(ContourIntersectionsTest, PassOverEdgesWhoseEndsCoincide) {
  const Points points = {{0, 0}, {2, 0}, {2, 0}, {2, 0}, {2, 2}, {0, 2}};
  const Crossings found = crossingsWithTouches(closedContour(points), {1, -1}, {3, 1});
  EXPECT_THAT(found.points, ElementsAre(Point(2, 0), Point(2, 0)));
  EXPECT_THAT(found.edges, UnorderedElementsAre(1, 4));
}

TEST(ContourIntersectionsTest, OfEqualVerticesAreNone) {
  EXPECT_THAT(crossingsWithTouches(closedContour(Points(4, {1, 1})), {0, 0}, {2, 2}).points,
              IsEmpty());
}

TEST(ContourIntersectionsTest, WithASegmentOfNoLengthAreNone) {
  EXPECT_THAT(crossingsWithTouches(closedContour(square(2)), {1, 0}, {1, 0}).points, IsEmpty());
}

TEST(ContourIntersectionsTest, OfTwoVerticesClosedAreReportedForBothEdges) {
  const Crossings found = crossingsWithTouches(closedContour({{0, 0}, {2, 0}}), {1, -1}, {1, 1});
  EXPECT_THAT(found.points, ElementsAre(Point(1, 0), Point(1, 0)));
  EXPECT_THAT(found.edges, ElementsAre(0, 1));
}

TEST(ContourIntersectionsTest, ForgetTheIndicesOfAnEarlierAnswer) {
  std::vector<int> edges = {7, 8};
  EXPECT_THAT(closedContour(square(2)).intersections({{5, 5}, {6, 6}}, edges, true), IsEmpty());
  EXPECT_THAT(edges, IsEmpty());
}

TEST(ContourIntersectionsTest, WithoutACurveThrowEmptyContourAndLeaveTheIndices) {
  for (const ContourProbe& contour : contoursWithoutCurve()) {
    std::vector<int> edges = {7};
    expectEmptyContour([&] { contour.intersections({{0, 0}, {1, 1}}, edges, true); });
    EXPECT_THAT(edges, ElementsAre(7));
    expectEmptyContour([&] { contour.intersections({{0, 0}, {1, 1}}, true); });
    expectEmptyContour([&] { contour.isCrossedBy({{0, 0}, {1, 1}}, true); });
    expectEmptyContour([&] { contour.intersections(closedContour(square(2))); });
  }
}

TEST(ContourIntersectionsTest, PassOverNumbersThatAreNotFinite) {
  const ContourProbe contour =
      closedContour({{0, 0}, {2, 0}, {notANumber, 1}, {infinity, 1}, {2, -infinity}, {0, 2}});
  const Crossings found = crossingsWithTouches(contour, {1, -1}, {1, 1});
  EXPECT_THAT(found.points, ElementsAre(Point(1, 0)));
  EXPECT_THAT(found.edges, ElementsAre(1));
  for (const double bad : {notANumber, infinity, -infinity}) {
    EXPECT_THAT(crossingsWithTouches(closedContour(square(2)), {bad, -1}, {1, 1}).points,
                IsEmpty());
    EXPECT_THAT(crossingsWithTouches(closedContour(square(2)), {1, -1}, {1, bad}).points,
                IsEmpty());
  }
}

TEST(ContourIntersectionsTest, OfAContourWhoseFirstVertexIsNotANumberAreNone) {
  // The box of all vertices starts with the first one, and nothing is found beside it.
  EXPECT_THAT(
      crossingsWithTouches(openContour({{notANumber, 0}, {0, 0}, {2, 0}}), {1, -1}, {1, 1}).points,
      IsEmpty());
}

TEST(ContourIntersectionsTest, OnTheSamePlaceAreLeftInTheOrderOfAnExchangeSort) {
  // Edges 0 and 1 meet the axis in (2, 0), edge 3 in (1, 0). The first exchange, of edges 0 and 3,
  // moves edge 0 after edge 1.
  const ContourProbe contour = openContour({{2, -1}, {2, 0}, {2, 1}, {1, 1}, {1, -1}});
  const Crossings found = crossingsWithTouches(contour, {0, 0}, {3, 0});
  EXPECT_THAT(found.points, ElementsAre(Point(1, 0), Point(2, 0), Point(2, 0)));
  EXPECT_THAT(found.edges, ElementsAre(3, 1, 0));
}

TEST(ContourIntersectionsTest, OnTheSamePlaceAreNotExchangedByThemselves) {
  const ContourProbe contour = openContour({{1, -1}, {1, 0}, {1, 1}, {2, 1}, {2, 0}, {2, -1}});
  const Crossings found = crossingsWithTouches(contour, {0, 0}, {3, 0});
  EXPECT_THAT(found.edges, ElementsAre(0, 1, 3, 4));
}

/// The order in which an exchange sort leaves edges 0, 1, ... that are met at `positions`.
std::vector<int> exchangeSorted(std::vector<double> positions) {
  std::vector<int> edges(positions.size());
  for (std::size_t i = 0; i < edges.size(); ++i) edges[i] = static_cast<int>(i);
  for (std::size_t i = 0; i < positions.size(); ++i) {
    for (std::size_t j = i + 1; j < positions.size(); ++j) {
      if (positions[i] > positions[j]) {
        std::swap(positions[i], positions[j]);
        std::swap(edges[i], edges[j]);
      }
    }
  }
  return edges;
}

/// An open contour that meets the x axis with edge k at positions[k], zigzagging.
Points zigzagThrough(const std::vector<double>& positions) {
  Points points;
  double side = -1;
  double x = positions.front();
  for (const double position : positions) {
    points.emplace_back(x, side);
    x = position + (position - x);
    side = -side;
  }
  points.emplace_back(x, side);
  return points;
}

TEST(ContourIntersectionsTest, OfALongListOnTheSamePlacesAreInTheOrderOfAnExchangeSort) {
  shapes::Random random(4);
  for (std::size_t count = 17; count < 80; ++count) {
    std::vector<double> positions;
    for (std::size_t i = 0; i < count; ++i) {
      positions.push_back(static_cast<double>(random.below(count / 4)));
    }
    const ContourProbe contour = openContour(zigzagThrough(positions));
    const Crossings found = crossingsWithTouches(contour, {-1, 0}, {100, 0});
    ASSERT_EQ(found.edges, exchangeSorted(positions)) << count << " crossings";
  }
}

TEST(ContourIntersectionsTest, OfALongListWithOneTieAreInTheOrderOfAnExchangeSort) {
  for (const std::size_t tied : {1U, 7U, 15U, 29U}) {
    std::vector<double> positions;
    for (int i = 0; i < 30; ++i) positions.push_back(30 - i);
    positions[0] = positions[tied];
    const ContourProbe contour = openContour(zigzagThrough(positions));
    const Crossings found = crossingsWithTouches(contour, {-1, 0}, {100, 0});
    EXPECT_EQ(found.edges, exchangeSorted(positions)) << "edges 0 and " << tied;
  }
}

TEST(ContourIntersectionsTest, OfALongListOnDifferentPlacesAreAscending) {
  std::vector<double> positions;
  for (int i = 0; i < 101; ++i) positions.push_back(i * 37 % 101);
  const Crossings found =
      crossingsWithTouches(openContour(zigzagThrough(positions)), {-1, 0}, {200, 0});
  ASSERT_EQ(found.points.size(), 101U);
  for (int i = 0; i < 101; ++i) {
    EXPECT_EQ(found.points[static_cast<std::size_t>(i)], Point(i, 0));
  }
  EXPECT_EQ(found.edges, exchangeSorted(positions));
}

TEST(ContourIntersectionsTest, OnPlacesThatDoNotCompareAreLeftAsTheyAre) {
  // For the crossings at the far end the position along the segment overflows to NaN: the exchange
  // sort never moves those.
  const double far = 1e154;
  std::vector<double> xs;
  Points points;
  for (int i = 0; i < 20; ++i) {
    const double x = far * (1.0 - i / 32.0);
    points.emplace_back(x, i % 2 == 0 ? -far : far);
    points.emplace_back(x, i % 2 == 0 ? far : -far);
  }
  const ContourProbe contour = openContour(points);
  const qcLineSeg segment({-far, 0}, {far, 0});
  std::vector<int> edges;
  const Points found = contour.intersections(segment, edges, true);
  const auto expected = plain::intersections({points, false}, {{-far, 0}, {far, 0}}, true);
  ASSERT_EQ(found.size(), expected.size());
  for (std::size_t i = 0; i < found.size(); ++i) {
    EXPECT_TRUE(same::same(found[i], expected[i].point)) << i;
    EXPECT_EQ(edges[i], expected[i].edge) << i;
  }
}

TEST(ContourIntersectionsTest, WithAContourAreInTheOrderOfItsEdges) {
  // The other square's left edge (its edge 0) comes first and crosses the top, then its bottom
  // (edge 1) crosses the right.
  const Points other = {{1, 1}, {3, 1}, {3, 3}, {1, 3}};
  EXPECT_THAT(closedContour(square(2)).intersections(closedContour(other)),
              ElementsAre(Point(1, 2), Point(2, 1)));
  EXPECT_THAT(closedContour(other).intersections(closedContour(square(2))),
              ElementsAre(Point(2, 1), Point(1, 2)));
}

TEST(ContourIntersectionsTest, WithAContourAreSortedAlongEachOfItsEdges) {
  const ContourProbe there = openContour({{3, 1}, {-1, 1}, {-1, 0.5}, {3, 0.5}});
  EXPECT_THAT(closedContour(square(2)).intersections(there),
              ElementsAre(Point(2, 1), Point(0, 1), Point(0, 0.5), Point(2, 0.5)));
}

TEST(ContourIntersectionsTest, WithAnOpenContourLeaveItsClosingEdgeOut) {
  const Points bent = {{1, 1}, {1, 5}, {5, 1}};
  EXPECT_THAT(closedContour(square(2)).intersections(openContour(bent)), ElementsAre(Point(1, 2)));
  EXPECT_THAT(closedContour(square(2)).intersections(closedContour(bent)),
              ElementsAre(Point(2, 1), Point(1, 2)));
}

TEST(ContourIntersectionsTest, WithAContourCountEndTouches) {
  const ContourProbe touching = openContour({{1, 1}, {2, 1}});
  EXPECT_THAT(closedContour(square(2)).intersections(touching), ElementsAre(Point(2, 1)));
}

TEST(ContourIntersectionsTest, WithItselfAreTheCornersOfTheNeighbours) {
  // Each edge is parallel to itself and to the opposite one and touches its two neighbours.
  const ContourProbe contour = closedContour(square(2));
  EXPECT_THAT(contour.intersections(contour),
              ElementsAre(Point(0, 2), Point(0, 0), Point(0, 0), Point(2, 0), Point(2, 0),
                          Point(2, 2), Point(2, 2), Point(0, 2)));
}

TEST(ContourIntersectionsTest, WithAContourWithoutEdgesAreNone) {
  const ContourProbe contour = closedContour(square(2));
  for (const ContourProbe& other : contoursWithoutCurve()) {
    EXPECT_THAT(contour.intersections(other), IsEmpty());
  }
  EXPECT_THAT(contour.intersections(closedContour({{0, 0}})), IsEmpty());
  EXPECT_THAT(contour.intersections(closedContour({{1, 0}, {1, 0}})), IsEmpty());
}

TEST(ContourEdgesTest, AreThoseOfWhatIsClosedSays) {
  const AlwaysClosed contour(square(2), false);
  EXPECT_EQ(contour.lineSegs().size(), 4U);
  EXPECT_THAT(crossingsWithTouches(contour, {-1, 1}, {1, 1}).edges, ElementsAre(0));
  EXPECT_EQ(contour.length(), 8.0);
  EXPECT_EQ(contour.polygon().size(), 5);
  const AlwaysClosed bowTie({{0, 0}, {2, 2}, {2, 0}, {0, 2}}, false);
  EXPECT_TRUE(bowTie.isSelfIntersecting());
  EXPECT_THAT(openContour({{-1, 1}, {1, 1}}).intersections(contour), ElementsAre(Point(0, 1)));
}

TEST(ContourEdgesTest, OfAClosedContourBeginWithTheClosingOne) {
  const ContourProbe contour = closedContour({{0, 0}, {3, 0}, {3, 4}});
  EXPECT_THAT(contour.lineSegs(), ElementsAre(qcLineSeg({3, 4}, {0, 0}), qcLineSeg({0, 0}, {3, 0}),
                                              qcLineSeg({3, 0}, {3, 4})));
  EXPECT_THAT(contour.validLine(), ElementsAre(true, true, true));
}

TEST(ContourEdgesTest, OfAnOpenContourBeginAtItsFirstVertex) {
  const ContourProbe contour = openContour({{0, 0}, {3, 0}, {3, 4}});
  EXPECT_THAT(contour.lineSegs(),
              ElementsAre(qcLineSeg({0, 0}, {3, 0}), qcLineSeg({3, 0}, {3, 4})));
  EXPECT_THAT(contour.validLine(), ElementsAre(true, true));
}

TEST(ContourEdgesTest, AreNotValidWhereTheEndsCoincide) {
  const Points points = {{1, 0}, {1, 0}, {1, 1e-15}, {1, 3e-15}, {2, 0}};
  const ContourProbe contour = openContour(points);
  EXPECT_THAT(contour.validLine(), ElementsAre(false, false, true, true));
  EXPECT_THAT(contour.lineSegs(),
              ElementsAre(qcLineSeg(), qcLineSeg(), qcLineSeg({1, 1e-15}, {1, 3e-15}),
                          qcLineSeg({1, 3e-15}, {2, 0})));
}

TEST(ContourEdgesTest, WithoutVerticesAreNone) {
  EXPECT_THAT(closedContour({}).lineSegs(), IsEmpty());
  EXPECT_THAT(openContour({{1, 2}}).validLine(), IsEmpty());
  EXPECT_THAT(closedContour({{1, 2}}).validLine(), ElementsAre(false));
}

TEST(ContourIsSelfIntersectingTest, IsFalseForASquare) {
  EXPECT_FALSE(closedContour(square(2)).isSelfIntersecting());
  EXPECT_FALSE(openContour(square(2)).isSelfIntersecting());
}

TEST(ContourIsSelfIntersectingTest, IsTrueForABowTie) {
  EXPECT_TRUE(closedContour({{0, 0}, {2, 2}, {2, 0}, {0, 2}}).isSelfIntersecting());
  EXPECT_TRUE(openContour({{0, 0}, {2, 2}, {2, 0}, {0, 2}}).isSelfIntersecting());
}

TEST(ContourIsSelfIntersectingTest, IsFalseForAnOpenContourWhoseClosingEdgeWouldCross) {
  const Points flag = {{0, 0}, {1, 4}, {2, -1}, {3, 4}};
  EXPECT_FALSE(openContour(flag).isSelfIntersecting());
  EXPECT_TRUE(closedContour(flag).isSelfIntersecting());
}

TEST(ContourIsSelfIntersectingTest, IsFalseForEdgesThatMeetAtASharedVertexOnly) {
  const Points twoTriangles = {{0, 0}, {2, 1}, {2, -1}, {0, 0}, {-2, 1}, {-2, -1}};
  EXPECT_FALSE(closedContour(twoTriangles).isSelfIntersecting());
}

TEST(ContourIsSelfIntersectingTest, IsFalseForEdgesThatOverlapAlongALine) {
  EXPECT_FALSE(openContour({{0, 0}, {3, 0}, {1, 0}, {5, 0}}).isSelfIntersecting());
  EXPECT_FALSE(closedContour({{0, 0}, {3, 0}}).isSelfIntersecting());
}

TEST(ContourIsSelfIntersectingTest, IsTrueForAVertexOnTheInsideOfAnotherEdge) {
  EXPECT_TRUE(openContour({{0, 0}, {4, 0}, {4, 2}, {2, 0}, {0, 2}}).isSelfIntersecting());
}

TEST(ContourIsSelfIntersectingTest, IsTrueInALongContourWhereverTheCrossingIs) {
  const Points star = shapes::regularPolygon(200, 100, {10, 20});
  ASSERT_FALSE(closedContour(star).isSelfIntersecting());
  for (std::size_t i = 0; i + 1 < star.size(); ++i) {
    Points crossed = star;
    std::swap(crossed[i], crossed[i + 1]);
    ASSERT_TRUE(closedContour(crossed).isSelfIntersecting()) << i;
  }
}

TEST(ContourIsSelfIntersectingTest, IsTrueForASpikeOnALongLine) {
  // The line runs one way but for a spike square to it, whose sides lie on each other: the line
  // meets the inside of one of them. A spike to one side alone only touches at vertices.
  const Point directions[] = {{1, 0}, {0, 1}, {-1, 0}, {0, -1}, {1, 1}};
  for (const Point& along : directions) {
    const Point across(-along.y(), along.x());
    for (int place = 1; place < 79; ++place) {
      Points points;
      for (int i = 0; i < 80; ++i) {
        points.push_back(along * i);
        if (i == place) points.push_back(along * i + across * 5);
        if (i == place) points.push_back(along * i - across * 5);
        if (i == place) points.push_back(along * i);
      }
      ASSERT_TRUE(openContour(points).isSelfIntersecting()) << place;
      points.erase(points.begin() + place + 2);
      ASSERT_FALSE(openContour(points).isSelfIntersecting()) << place;
    }
  }
}

TEST(ContourIsSelfIntersectingTest, IsFalseWithoutACurve) {
  for (const ContourProbe& contour : contoursWithoutCurve()) {
    EXPECT_FALSE(contour.isSelfIntersecting());
  }
}

TEST(ContourIsSelfIntersectingTest, IsFalseForEqualVertices) {
  EXPECT_FALSE(closedContour(Points(3, {1, 1})).isSelfIntersecting());
  EXPECT_FALSE(closedContour(Points(50, {1, 1})).isSelfIntersecting());
}

TEST(ContourIsSelfIntersectingTest, PassesOverNumbersThatAreNotFinite) {
  EXPECT_FALSE(closedContour({{0, 0}, {notANumber, 1}, {infinity, 2}, {-1, -infinity}, {3, 3}})
                   .isSelfIntersecting());
  EXPECT_TRUE(closedContour({{0, 0}, {2, 2}, {2, 0}, {0, 2}, {notANumber, notANumber}})
                  .isSelfIntersecting());
}

TEST(ContourVertexIndexTest, FindsVerticesNearerThanTheTolerance) {
  const ContourProbe contour = openContour({{0, 0}, {10, 0}});
  EXPECT_THAT(contour.vertexIndex({0.4, 0}, 0.5), ElementsAre(0));
  EXPECT_THAT(contour.vertexIndex({10, -0.25}, 0.5), ElementsAre(1));
  EXPECT_THAT(contour.vertexIndex({5, 0}, 0.5), IsEmpty());
}

TEST(ContourVertexIndexTest, LeavesOutAVertexAtExactlyTheTolerance) {
  const ContourProbe contour = openContour({{0, 0}, {10, 0}});
  EXPECT_THAT(contour.vertexIndex({0.5, 0}, 0.5), IsEmpty());
  EXPECT_THAT(contour.vertexIndex({0.3, 0.4}, 0.5), IsEmpty());
  EXPECT_THAT(contour.vertexIndex({justBelow(0.5), 0}, 0.5), ElementsAre(0));
}

TEST(ContourVertexIndexTest, AnswersCellByCellAndAscendingWithinACell) {
  // By column: (-1, 0), (0, -1), (0, 0) twice, (0, 1), (1, 0), (1, 1).
  const Points points = {{0.6, 0.6}, {0.6, 0},  {0, 0.6},  {0.1, 0.1},
                         {0, 0},     {0, -0.6}, {-0.6, 0}, {5, 5}};
  EXPECT_THAT(openContour(points).vertexIndex({0, 0}, 1), ElementsAre(6, 5, 3, 4, 2, 1, 0));
}

TEST(ContourVertexIndexTest, RoundsHalvesAwayFromZero) {
  // A half belongs to column 1 or -1, hence after or before those of column 0.
  EXPECT_THAT(openContour({{0.5, 0}, {0, 0.6}}).vertexIndex({0, 0}, 1), ElementsAre(1, 0));
  EXPECT_THAT(openContour({{0, -0.6}, {-0.5, 0}}).vertexIndex({0, 0}, 1), ElementsAre(1, 0));
  EXPECT_THAT(openContour({{0, 0.5}, {0.1, 0.4}}).vertexIndex({0, 0}, 1), ElementsAre(1, 0));
  EXPECT_THAT(openContour({{0.1, -0.4}, {0, -0.5}}).vertexIndex({0, 0}, 1), ElementsAre(1, 0));
}

TEST(ContourVertexIndexTest, KeepsItsOwnGridForEveryTolerance) {
  const ContourProbe contour = openContour({{0, 0}, {1.00000000005, 0}});
  for (int repeat = 0; repeat < 2; ++repeat) {
    EXPECT_THAT(contour.vertexIndex({0, 0}, 1.0), ElementsAre(0));
    EXPECT_THAT(contour.vertexIndex({0, 0}, 1.0000000001), ElementsAre(0, 1));
  }
}

TEST(ContourVertexIndexTest, KeepsNoGridForAToleranceThatIsNaN) {
  const ContourProbe contour = openContour({{0, 0}, {10, 0}});
  EXPECT_THAT(contour.vertexIndex({0, 0}, 1.0), ElementsAre(0));
  const long before = heap::blocksMade();
  const bool isEmpty = contour.vertexIndex({0, 0}, notANumber).empty();
  EXPECT_EQ(heap::blocksMade(), before);
  EXPECT_TRUE(isEmpty);
}

TEST(ContourVertexIndexTest, FindsRepeatedVerticesInAscendingOrder) {
  EXPECT_THAT(closedContour(Points(4, {3, 3})).vertexIndex({3, 3}, 1e-6), ElementsAre(0, 1, 2, 3));
}

TEST(ContourVertexIndexTest, FindsVerticesWhoseCellsNeedMoreThan32Bits) {
  const ContourProbe contour = openContour({{1e6, 0}, {-1e6, 1e6}, {0, 0}});
  EXPECT_THAT(contour.vertexIndex({1e6 + 5e-7, 0}, 1e-6), ElementsAre(0));
  EXPECT_THAT(contour.vertexIndex({-1e6, 1e6 - 5e-7}, 1e-6), ElementsAre(1));
}

TEST(ContourVertexIndexTest, FindsVerticesInTheOutermostCells) {
  const ContourProbe contour = openContour({{1e300, 0}, {-1e300, -1e300}, {1, 1}, {1e300, 0}});
  EXPECT_THAT(contour.vertexIndex({1e300, 0}, 1e-6), ElementsAre(0, 3));
  EXPECT_THAT(contour.vertexIndex({-1e300, -1e300}, 1e-6), ElementsAre(1));
  EXPECT_THAT(contour.vertexIndex({1e300, 1e300}, 1e-6), IsEmpty());
}

TEST(ContourVertexIndexTest, FindsNothingWithAToleranceThatIsNotPositive) {
  const ContourProbe contour = openContour({{0, 0}, {1, 1}});
  for (const double tolerance : {0.0, -0.0, -1.0, -infinity, notANumber}) {
    EXPECT_THAT(contour.vertexIndex({0, 0}, tolerance), IsEmpty()) << tolerance;
  }
}

TEST(ContourVertexIndexTest, FindsAllFiniteVerticesWithAnInfiniteTolerance) {
  const ContourProbe contour =
      openContour({{0, 0}, {1e9, -4}, {infinity, 0}, {notANumber, 0}, {3, 3}});
  EXPECT_THAT(contour.vertexIndex({7, 7}, infinity), ElementsAre(0, 1, 4));
}

TEST(ContourVertexIndexTest, FindsNothingAtNumbersThatAreNotFinite) {
  const ContourProbe contour = openContour({{0, 0}, {notANumber, 0}, {infinity, infinity}});
  for (const double bad : {notANumber, infinity, -infinity}) {
    EXPECT_THAT(contour.vertexIndex({bad, 0}, 0.5), IsEmpty());
    EXPECT_THAT(contour.vertexIndex({bad, bad}, infinity), IsEmpty());
  }
}

TEST(ContourVertexIndexTest, WithoutACurveThrowsEmptyContour) {
  for (const ContourProbe& contour : contoursWithoutCurve()) {
    expectEmptyContour([&] { contour.vertexIndex({3, 4}, 1); });
  }
}

}  // namespace
