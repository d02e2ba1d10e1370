// SPDX-License-Identifier: MIT
//
// The rectangle on every edge of small hulls against the vertices that are farthest in exact
// arithmetic, and ties. The measures of the rectangles are tested with the functions of
// descriptors.h.

#include <cntr/compute/calipers.h>

#include <algorithm>

#include <cntr/compute/exacthull.h>
#include <gtest/gtest.h>
#include <testing/plain/exact.h>
#include <testing/twin/repetitions.h>

#include "hard_points.h"

namespace {

using cntr::compute::Caliper;
using plain::Exact;
using shapes::Point;
using shapes::Points;

/// Along and across the edge, times its length.
struct Shares {
  Exact along;
  Exact across;

  Shares(const Points& hull, const Caliper& on, const Point& p) {
    const Point& a = hull[on.from];
    const Point& b = hull[on.to];
    const Exact dx = Exact(b.x()) - a.x();
    const Exact dy = Exact(b.y()) - a.y();
    along = dx * (Exact(p.x()) - a.x()) + dy * (Exact(p.y()) - a.y());
    across = dx * (Exact(p.y()) - a.y()) - dy * (Exact(p.x()) - a.x());
  }
};

void expectToTouch(const Points& hull, const Caliper& on) {
  EXPECT_EQ(on.to, (on.from + 1) % hull.size());
  for (const Point& p : hull) {
    const Shares shares(hull, on, p);
    EXPECT_LE(shares.along, Shares(hull, on, hull[on.front]).along);
    EXPECT_GE(shares.along, Shares(hull, on, hull[on.back]).along);
    EXPECT_LE(shares.across, Shares(hull, on, hull[on.top]).across);
  }
}

TEST(Calipers, TouchTheHullOnEverySide) {
  for (std::uint64_t seed = 0; seed < repetitions(1500); ++seed) {
    const Points hull = cntr::compute::exactHull(hard_points::make(seed)).vertices;
    if (hull.size() < 2) continue;
    SCOPED_TRACE(seed);
    expectToTouch(hull, cntr::compute::smallestRectangle(hull));
    expectToTouch(hull, cntr::compute::narrowestStrip(hull));
  }
}

TEST(Calipers, TakeTheFirstOfEqualEdges) {
  const Points square = {{-4, 3}, {-3, -4}, {4, -3}, {3, 4}};
  EXPECT_EQ(cntr::compute::smallestRectangle(square).from, 0U);
  EXPECT_EQ(cntr::compute::narrowestStrip(square).from, 0U);
  EXPECT_TRUE(cntr::compute::isLongAlongEdge(square, {0, 1, 0, 1, 2}));
  // A house: the strip on the ground is the second edge, and its width ties with no other.
  const Points wide = {{0, 0}, {10, 0}, {10, 2}, {0, 2}};
  EXPECT_EQ(cntr::compute::narrowestStrip(wide).from, 0U);
  EXPECT_FALSE(cntr::compute::isLongAlongEdge(wide, {1, 2, 1, 2, 3}));
}

TEST(Calipers, SeeThatAnEdgeIsBetterByARounding) {
  // The right side leans out by one unit in the last place, so that only the left one is upright.
  const double out = 0x1.0000000000001p+2;
  const Points hull = {{0, 0}, {4, 0}, {out, 4}, {0, 4}};
  EXPECT_EQ(cntr::compute::smallestRectangle(hull).from, 0U);
  const Points turned = {{0, 0}, {4, -0x1p-51}, {4, 4}, {0, 4}};
  EXPECT_EQ(cntr::compute::narrowestStrip(turned).from, 1U);
}

}  // namespace
