// SPDX-License-Identifier: MIT
//
// The outline builds what questions need, once: its answers are those of the plain scans, the first
// time and later.

#include <cntr/compute/outline.h>

#include <algorithm>

#include <testing/twin/repetitions.h>
#include <testing/twin/same.h>

#include "subject.h"

namespace {

using cntr::compute::Outline;
using subject::forEachShape;
using subject::Point;
using subject::Points;
using subject::Subject;

TEST(OutlineTest, KeepsItsVertices) {
  const Points points = {{0, 0}, {4, 0}, {4, 4}};
  const Outline outline(points);
  EXPECT_EQ(outline.points(), points);
  EXPECT_EQ(outline.size(), 3U);
}

TEST(OutlineTest, HoldsWhatLiesInside) {
  const Outline outline({{0, 0}, {4, 0}, {4, 4}, {0, 4}});
  EXPECT_TRUE(outline.holds({1, 2}));
  EXPECT_FALSE(outline.holds({5, 2}));
  EXPECT_TRUE(outline.holds({0, 0})) << "a vertex";
  // Far from the first vertex the ray must be twice the radius long to get out.
  EXPECT_TRUE(outline.holds({0.5, 0.25}));
  EXPECT_TRUE(outline.holds({3.5, 3.75}));
}

TEST(OutlineTest, OfOneVertexHoldsIt) {
  const Outline outline({{1, 2}});
  EXPECT_TRUE(outline.holds({1, 2}));
  EXPECT_FALSE(outline.holds({1, 3}));
  EXPECT_FALSE(outline.firstCrossingWith({0, 0}, {2, 4}, true));
}

TEST(OutlineTest, AnswersLikeThePlainScans) {
  // Around and above the size from which it makes an index.
  forEachShape(repetitions(400), shapes::any, 1, 100, [](const Subject& s, shapes::Random& random) {
    const Outline outline(s.points());
    const Subject closed(s.points(), true);
    const double reach = 2.0 * cntr::compute::radiusFromFirst(s.points());
    for (int i = 0; i < 3; ++i) {
      const Point p = shapes::queryPoint(random, s.points());
      for (const bool both : {false, true}) {
        EXPECT_EQ(outline.rayCrossingsFrom(p, both),
                  cntr::compute::rayCrossings(closed.scanned(), reach, p, both));
      }
      EXPECT_EQ(outline.holds(p), outline.rayCrossingsFrom(p, false) % 2 == 1);
      const shapes::Segment segment = shapes::querySegment(random, s.points());
      const auto expected =
          cntr::compute::crossings(closed.scanned(), segment.a, segment.b, i == 0);
      EXPECT_EQ(outline.countCrossingsWith(segment.a, segment.b, i == 0, 2),
                std::min<std::size_t>(expected.size(), 2));
      const auto met = outline.firstCrossingWith(segment.a, segment.b, i == 0);
      ASSERT_EQ(met.has_value(), !expected.empty());
      if (met) {
        EXPECT_EQ(met->edge, expected.front().edge);
        EXPECT_TRUE(same::same(met->point, expected.front().point));
      }
    }
  });
}

}  // namespace
