// SPDX-License-Identifier: MIT
//
// The edge index by itself: every search visits what matters, in the promised order, and little
// else. contour_properties_test.cpp tests that answers found through it are those of plain scans.

#include <cntr/index/edgeindex.h>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <testing/shapes/numbers.h>
#include <testing/shapes/shapes.h>

namespace {

using cntr::index::EdgeIndex;
using cntr::plane::Box;
using cntr::plane::Edge;
using cntr::plane::Path;

using Point = qcVector<2>;
using Points = std::vector<Point>;
using Run = std::pair<std::size_t, std::size_t>;

const auto everything = [](const Box&) { return true; };

/// Squared distances of boxes from p.
auto distanceFrom(const Point& p) {
  return [p](const Box& box) { return squaredDistance(box, p); };
}

/// The runs that pass, in the order of the visits.
template <class MayMatter>
std::vector<Run> runsThat(const EdgeIndex& index, MayMatter mayMatter) {
  std::vector<Run> runs;
  EXPECT_TRUE(index.forEachRun(mayMatter, [&](std::size_t first, std::size_t last) {
    runs.emplace_back(first, last);
    return true;
  }));
  return runs;
}

/// Sizes around those at which a level becomes full.
std::vector<std::size_t> sizes() {
  std::vector<std::size_t> sizes;
  for (std::size_t n = 0; n < 140; ++n) sizes.push_back(n);
  for (const std::size_t full : {512U, 1024U, 4096U}) {
    for (std::size_t n = full - 1; n <= full + 1; ++n) sizes.push_back(n);
  }
  return sizes;
}

TEST(EdgeIndexTest, CountsTheEdges) {
  for (const std::size_t n : sizes()) {
    const Points points = shapes::regularPolygon(n, 10, {0, 0});
    EXPECT_EQ(EdgeIndex({points, true}).slotCount(), n);
    EXPECT_EQ(EdgeIndex({points, false}).slotCount(), n == 0 ? 0 : n - 1);
  }
}

TEST(EdgeIndexTest, VisitsEveryEdgeOnceAndInOrder) {
  for (const std::size_t n : sizes()) {
    const Points points = shapes::regularPolygon(n, 10, {0, 0});
    for (const bool closed : {true, false}) {
      const EdgeIndex index({points, closed});
      std::size_t next = 0;
      for (const auto& [first, last] : runsThat(index, everything)) {
        ASSERT_EQ(first, next);
        ASSERT_LT(first, last);
        ASSERT_LE(last, first + EdgeIndex::leafSize);
        next = last;
      }
      EXPECT_EQ(next, index.slotCount());
    }
  }
}

TEST(EdgeIndexTest, VisitsNothingThatDoesNotMatter) {
  const Points points = shapes::smoothStar(1000);
  const EdgeIndex index(Path{points, true});
  EXPECT_TRUE(runsThat(index, [](const Box&) { return false; }).empty());
}

TEST(EdgeIndexTest, EndsTheSearchWhenAVisitSaysSo) {
  const Points points = shapes::smoothStar(1000);
  const EdgeIndex index(Path{points, true});
  for (const std::size_t lastRun : {0U, 5U, 63U, 99U}) {
    std::size_t visits = 0;
    EXPECT_FALSE(
        index.forEachRun(everything, [&](std::size_t, std::size_t) { return visits++ < lastRun; }));
    EXPECT_EQ(visits, lastRun + 1);
  }
}

TEST(EdgeIndexTest, NeverLeavesOutAnEdgeWhoseBoxMatters) {
  for (std::uint64_t seed = 0; seed < 60; ++seed) {
    const shapes::Shape shape = shapes::anyFinite(seed, 300);
    const Path path{shape.points, shape.closed};
    const EdgeIndex index(path);
    for (std::size_t k = 0; k < path.edgeCount(); ++k) {
      const Edge edge = path.edge(k);
      const Box wanted = cntr::plane::edgeBox(edge.from, edge.to);
      bool visited = false;
      for (const auto& [first, last] :
           runsThat(index, [&](const Box& box) { return overlaps(box, wanted); })) {
        visited = visited || (first <= k && k < last);
      }
      ASSERT_TRUE(visited) << "edge " << k << " of " << shape.name;
    }
  }
}

TEST(EdgeIndexTest, LooksAtFewEdgesOfALongOutline) {
  const Points points = shapes::smoothStar(5000);
  const EdgeIndex index(Path{points, true});
  for (std::size_t i = 0; i < points.size(); i += 100) {
    const Box around{points[i].x() - 1, points[i].y() - 1, points[i].x() + 1, points[i].y() + 1};
    const auto runs = runsThat(index, [&](const Box& box) { return overlaps(box, around); });
    EXPECT_GE(runs.size(), 1U);
    EXPECT_LE(runs.size(), 6U);
  }
}

TEST(EdgeIndexTest, IsBoundedByTheBoxOfItsVertices) {
  const Points points = {{3, 4}, {-1, 2}, {5, -7}};
  for (const bool closed : {true, false}) {
    const Box bounds = EdgeIndex({points, closed}).bounds();
    EXPECT_EQ(bounds.minX, -1);
    EXPECT_EQ(bounds.minY, -7);
    EXPECT_EQ(bounds.maxX, 5);
    EXPECT_EQ(bounds.maxY, 4);
  }
}

TEST(EdgeIndexTest, PassesOverNumbersThatAreNone) {
  const Points points = {
      {notANumber, notANumber}, {1, 2}, {notANumber, 9}, {3, 4}, {2, notANumber}};
  const Box bounds = EdgeIndex({points, true}).bounds();
  EXPECT_EQ(bounds.minX, 1);
  EXPECT_EQ(bounds.minY, 2);
  EXPECT_EQ(bounds.maxX, 3);
  EXPECT_EQ(bounds.maxY, 9);
}

/// The distance from p to the nearest vertex of the edges of a run.
double distanceToRun(const Path& path, const Run& run, const Point& p) {
  double nearest = infinity;
  for (std::size_t k = run.first; k < run.second; ++k) {
    nearest = std::min({nearest, p.distance(path.edge(k).from), p.distance(path.edge(k).to)});
  }
  return nearest;
}

TEST(EdgeIndexTest, VisitsEveryRunByDistanceWhileThereIsNoLimit) {
  for (const std::size_t n : sizes()) {
    const Points points = shapes::smoothStar(n);
    const EdgeIndex index(Path{points, true});
    std::vector<bool> visited(index.slotCount(), false);
    index.forEachRunByBound(
        distanceFrom({600, 500}), [] { return infinity; },
        [&](std::size_t first, std::size_t last) {
          for (std::size_t k = first; k < last; ++k) visited[k] = true;
        });
    EXPECT_EQ(std::count(visited.begin(), visited.end(), true), static_cast<long>(n));
  }
}

TEST(EdgeIndexTest, NeverLeavesOutARunWithinTheLimit) {
  shapes::Random random(9);
  for (std::uint64_t seed = 0; seed < 200; ++seed) {
    const shapes::Shape shape = shapes::anyFinite(seed, 300);
    if (shape.points.size() < 2) continue;
    const Path path{shape.points, shape.closed};
    const EdgeIndex index(path);
    const Point p = shapes::queryPoint(random, shape.points);
    const double reach = p.distance(shape.points[random.below(shape.points.size())]);
    if (!std::isfinite(reach)) continue;
    std::vector<bool> visited(path.edgeCount(), false);
    index.forEachRunByBound(
        distanceFrom(p), [&] { return reach * reach * (1 + 1e-15); },
        [&](std::size_t first, std::size_t last) {
          for (std::size_t k = first; k < last; ++k) visited[k] = true;
        });
    for (std::size_t k = 0; k < path.edgeCount(); ++k) {
      const bool isNear = p.distance(path.edge(k).to) <= reach;
      ASSERT_TRUE(visited[k] || !isNear) << "edge " << k << " of " << shape.name;
    }
  }
}

TEST(EdgeIndexTest, VisitsFewRunsByDistanceWhenVisitsLowerTheLimit) {
  const Points points = shapes::smoothStar(5000);
  const Path path{points, true};
  const EdgeIndex index(path);
  for (std::size_t i = 0; i < points.size(); i += 50) {
    const Point p = points[i] + Point(0.5, -0.25);
    double best = infinity;
    int visits = 0;
    index.forEachRunByBound(
        distanceFrom(p), [&] { return best * best; },
        [&](std::size_t first, std::size_t last) {
          best = std::min(best, distanceToRun(path, {first, last}, p));
          ++visits;
        });
    EXPECT_LE(best, p.distance(points[i]));
    EXPECT_LE(visits, 6);
  }
}

TEST(EdgeIndexTest, TellsWhetherAllCoordinatesAreFinite) {
  EXPECT_TRUE(EdgeIndex({Points{{1, 2}, {3, 4}}, true}).isFinite());
  for (const double bad : {notANumber, infinity, -infinity}) {
    EXPECT_FALSE(EdgeIndex({Points{{1, 2}, {3, 4}, {bad, 0}}, true}).isFinite());
    EXPECT_FALSE(EdgeIndex({Points{{1, bad}, {3, 4}, {0, 0}}, false}).isFinite());
  }
}

}  // namespace
