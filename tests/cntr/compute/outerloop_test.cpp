// SPDX-License-Identifier: MIT
//
// From a traced boundary to one simple loop.

#include <cntr/compute/repair.h>

#include <gmock/gmock.h>
#include <testing/plain/repair.h>
#include <testing/twin/repetitions.h>
#include <testing/twin/same.h>

#include "subject.h"

namespace {

using cntr::compute::outerLoop;
using subject::Point;
using subject::Points;
using testing::ElementsAre;

TEST(OuterLoopTest, OfASimpleOneIsItself) {
  EXPECT_THAT(outerLoop({{0, 0}, {4, 0}, {4, 4}}).value(),
              ElementsAre(Point(0, 0), Point(4, 0), Point(4, 4)));
}

TEST(OuterLoopTest, JoinsLoopsThatTouch) {
  // Two triangles with a common corner, walked as one figure: cut there, and joined again.
  EXPECT_THAT(
      outerLoop({{0, 0}, {4, 0}, {2, 2}, {4, 4}, {0, 4}, {2, 2}}).value(),
      ElementsAre(Point(2, 2), Point(4, 4), Point(0, 4), Point(2, 2), Point(0, 0), Point(4, 0)));
}

TEST(OuterLoopTest, DropsALoopInsideAnother) {
  // A small triangle hangs from the corner (0, 0) into the large one.
  EXPECT_THAT(outerLoop({{0, 0}, {9, 0}, {0, 9}, {0, 0}, {2, 1}, {1, 2}}).value(),
              ElementsAre(Point(0, 0), Point(9, 0), Point(0, 9)));
}

TEST(OuterLoopTest, TakesVerticesWithinAMillionthForOne) {
  EXPECT_EQ(outerLoop({{0, 0}, {9, 0}, {0, 9}, {0.9e-6, 0}, {2, 1}, {1, 2}}).value().size(), 3U);
  EXPECT_EQ(outerLoop({{0, 0}, {9, 0}, {0, 9}, {1.1e-6, 0}, {2, 1}, {1, 2}}).value().size(), 6U);
}

TEST(OuterLoopTest, DropsPiecesOfASingleVertex) {
  EXPECT_THAT(outerLoop({{0, 0}, {4, 0}, {4, 0}, {4, 4}}).value(),
              ElementsAre(Point(4, 0), Point(4, 4), Point(0, 0)));
  EXPECT_FALSE(outerLoop({{1, 1}, {1, 1}}).has_value());
  EXPECT_FALSE(outerLoop(Points(50, {1, 1})).has_value());
}

TEST(OuterLoopTest, NanLiesInNoPlace) {
  EXPECT_EQ(outerLoop({{0, 0}, {notANumber, 0}, {4, 4}, {notANumber, 0}}).value().size(), 4U);
}

/// Compares with the plain definition.
void expectAsPlain(const Points& traced) {
  const auto expected = same::outcome([&] { return plain::cleanedHull(traced).points; });
  const auto loop = outerLoop(traced);
  ASSERT_EQ(loop.has_value(), expected.index() == 0);
  if (loop) {
    EXPECT_TRUE(same::same(*loop, std::get<0>(expected)));
  }
}

TEST(OuterLoopTest, IsThatOfThePlainDefinition) {
  for (std::uint64_t seed = 1; seed <= repetitions(600) && !HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    const shapes::Shape shape = shapes::any(seed, 60);
    if (shape.points.size() >= 2) expectAsPlain(shape.points);
  }
}

TEST(OuterLoopTest, OfManyTouchesIsThatOfThePlainDefinition) {
  for (std::uint64_t seed = 1; seed <= repetitions(600) && !HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    shapes::Random random(seed);
    expectAsPlain(shapes::gridWalk(random, 2 + random.below(60)));
    expectAsPlain(shapes::gridPoints(random, 2 + random.below(40), 5));
  }
}

TEST(OuterLoopTest, OfVerticesNearlyInOnePlaceIsThatOfThePlainDefinition) {
  // Touching is not transitive: two vertices may each touch a third but not each other.
  for (std::uint64_t seed = 1; seed <= repetitions(2000) && !HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    shapes::Random random(seed);
    Points traced = shapes::gridPoints(random, 4 + random.below(16), 3);
    for (Point& p : traced) {
      const auto off = [&] { return 0.4e-6 * (static_cast<double>(random.below(5)) - 2.0); };
      p = Point(p.x() + off(), p.y() + off());
    }
    expectAsPlain(traced);
  }
}

TEST(OuterLoopTest, OfALoopPastTheEndOfTheBoundaryHasItsVerticesFromItsStartOn) {
  // The first vertex touches the third and the seventh, which lie in one cell but do not touch each
  // other. Both end up in a loop that begins with the sixth, so that the seventh comes first.
  expectAsPlain({{0, 0},
                 {7, -8},
                 {0.4e-6, 0.4e-6},
                 {-6, -6},
                 {0, -6},
                 {-6, -6},
                 {-0.4e-6, -0.4e-6},
                 {-5, 1},
                 {4, 7}});
}

}  // namespace
