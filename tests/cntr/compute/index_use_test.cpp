// SPDX-License-Identifier: MIT
//
// What is computed with an index looks only where the index tells it to. Each question is asked
// with the index of another path, of as many edges but far away: a search that believes the index
// finds something other than a scan does. A search that quietly went back to scanning would give
// the right answers in every other test.

#include <cntr/compute/cleardirection.h>
#include <cntr/compute/containment.h>
#include <cntr/compute/crossings.h>
#include <cntr/compute/extents.h>
#include <cntr/compute/extremal.h>
#include <cntr/compute/farthest.h>
#include <cntr/compute/nearest.h>
#include <cntr/compute/selfcrossing.h>
#include <gtest/gtest.h>
#include <testing/shapes/shapes.h>
#include <tests/cntr/figures.h>

namespace {

using cntr::index::EdgeIndex;
using cntr::plane::Path;
using figures::shapesCenter;
using shapes::Point;
using shapes::Points;

constexpr std::size_t starSize = 100;
Points shifted(Points points, const Point& by, std::size_t first, std::size_t last) {
  for (std::size_t i = first; i < last; ++i) points[i] = points[i] + by;
  return points;
}

/// A star that crosses itself, and an index that places it far away.
class IndexUseTest : public testing::Test {
 protected:
  Points points_ = shapes::crossingStar(starSize);
  Path path_{points_, true};
  cntr::plane::Box bounds_ = cntr::compute::boundingBox(points_);
  Points elsewhere_ = shifted(points_, {1e5, 0}, 0, starSize);
  EdgeIndex decoy_{Path{elsewhere_, true}};
  cntr::compute::CrossingTarget scanned_{path_, bounds_, nullptr};
  cntr::compute::CrossingTarget misled_{path_, bounds_, &decoy_};
};

TEST_F(IndexUseTest, CrossingsAreLookedForWhereTheIndexTells) {
  EXPECT_GT(cntr::compute::crossings(scanned_, shapesCenter, {2000, 480}, true).size(), 0U);
  EXPECT_EQ(cntr::compute::crossings(misled_, shapesCenter, {2000, 480}, true).size(), 0U);
  EXPECT_GT(cntr::compute::countCrossings(scanned_, shapesCenter, {2000, 480}, true), 0U);
  EXPECT_EQ(cntr::compute::countCrossings(misled_, shapesCenter, {2000, 480}, true), 0U);
  EXPECT_TRUE(cntr::compute::firstCrossing(scanned_, shapesCenter, {2000, 480}, true));
  EXPECT_FALSE(cntr::compute::firstCrossing(misled_, shapesCenter, {2000, 480}, true));
  const Points across{shapesCenter, {2000, 480}};
  const cntr::compute::CrossingTarget asking{{across, false}, bounds_};
  EXPECT_TRUE(cntr::compute::crosses(scanned_, asking));
  EXPECT_FALSE(cntr::compute::crosses(misled_, asking));
  EXPECT_FALSE(cntr::compute::crosses(scanned_, misled_)) << "the edges that ask are indexed, too";
}

TEST_F(IndexUseTest, SelfCrossingsAreLookedForWhereTheIndexTells) {
  // Boxes that are apart rule out crossings between their edges.
  const Points stretched = [&] {
    Points far;
    for (std::size_t i = 0; i < starSize; ++i)
      far.emplace_back(1e4 * static_cast<double>(i / 10), 0.0);
    return far;
  }();
  const Points crossed = shapes::starPolygon(starSize, 3, 400);
  const EdgeIndex apart(Path{stretched, false});
  const auto bounds = cntr::compute::boundingBox(crossed);
  EXPECT_TRUE(cntr::compute::crossesItself({{crossed, true}, bounds, nullptr}));
  EXPECT_FALSE(cntr::compute::crossesItself({{crossed, true}, bounds, &apart}));
}

TEST_F(IndexUseTest, TheNearestIsLookedForWhereTheIndexTells) {
  // Only the boxes of the first half are where they belong.
  const Points half = shifted(points_, {1e5, 0}, starSize / 2, starSize);
  const EdgeIndex index(Path{half, true});
  const Point nearTheSecondHalf = points_[3 * starSize / 4] * 1.01;
  EXPECT_EQ(cntr::compute::closestVertex(path_, nullptr, nearTheSecondHalf), 3 * starSize / 4);
  EXPECT_LE(cntr::compute::closestVertex(path_, &index, nearTheSecondHalf), starSize / 2 + 9);
  EXPECT_NE(cntr::compute::closestPoint(path_, &index, nearTheSecondHalf),
            cntr::compute::closestPoint(path_, nullptr, nearTheSecondHalf));
}

TEST_F(IndexUseTest, TheExtremalVertexIsLookedForWhereTheIndexTells) {
  const Points half = shifted(points_, {1e5, 0}, 0, starSize / 2);
  const EdgeIndex index(Path{half, true});
  const qcRadian down(-1.5);
  const long lowest = cntr::compute::extremalVertex(path_, nullptr, down);
  EXPECT_GE(lowest, static_cast<long>(starSize / 2)) << "the second half lies below";
  const Points raised = shifted(points_, {0, 1e5}, starSize / 2, starSize);
  const EdgeIndex misled(Path{raised, true});
  EXPECT_NE(cntr::compute::extremalVertex(path_, &misled, down), lowest);
}

TEST_F(IndexUseTest, TheFarthestPairIsLookedForWhereTheIndexTells) {
  // According to the boxes, nothing is farther apart than the pair that is tried first.
  const Points together(starSize, shapesCenter);
  const EdgeIndex index(Path{together, true});
  // The first vertex leads to (10, 0) and on from there: the pair across is found by searching.
  Points points(starSize, Point(0, 0));
  points[starSize - 3] = {10, 0};
  points[starSize - 2] = {0, 9};
  points[starSize - 1] = {0, -9};
  const Path path{points, true};
  const auto scanned = cntr::compute::farthestPair(path, nullptr);
  const auto misled = cntr::compute::farthestPair(path, &index);
  ASSERT_TRUE(scanned && misled);
  EXPECT_EQ(scanned->distance, 18.0);
  EXPECT_LT(misled->distance, 14.0);
}

TEST_F(IndexUseTest, AVertexAtThePointIsLookedForWhereTheIndexTells) {
  const Point p = points_[10];
  EXPECT_EQ(cntr::compute::rayCrossings(scanned_, 0.0, p, false), 1U);
  EXPECT_EQ(cntr::compute::rayCrossings(misled_, 0.0, p, false), 0U);
}

TEST_F(IndexUseTest, AClearDirectionIsLookedForWhereTheIndexTells) {
  // Spikes: no edge is short as seen from the middle, so the sweep cannot follow the curve.
  const Points spikes = shapes::starPolygon(starSize + 1, 50, 400);
  const Path path{spikes, true};
  // According to the index all vertices lie in the direction opposite to the x axis, which the
  // sweep reaches late.
  const Points left(starSize + 1, Point(-1e5, 0));
  const EdgeIndex misled(Path{left, true});
  const EdgeIndex honest(path);
  const Point p(1, 2);
  const Point scanned = cntr::compute::clearDirection(path, p);
  EXPECT_EQ(cntr::compute::clearDirection(path, honest, p), scanned);
  EXPECT_NE(cntr::compute::clearDirection(path, misled, p), scanned);
}

}  // namespace
