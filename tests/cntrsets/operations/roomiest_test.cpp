// SPDX-License-Identifier: MIT
//
// The search for the roomiest point: known areas, when it ends without one, and how many pieces it
// takes. inscribed_test.cpp compares its circles with the plain definition.

#include <cntrsets/operations/roomiest.h>

#include <utility>

#include <cntrsets/filled.h>
#include <cntrsets/frame.h>
#include <gtest/gtest.h>
#include <testing/plain/inscribed.h>
#include <tests/cntrsets/operations/sides.h>

namespace {

using cntr::sets::Frame;
using cntr::sets::RingList;
using cntr::sets::Room;
using cntr::sets::roomiest;
using cntr::sets::Side;
using features::box;
using features::Feature;
using features::Points;
using Point = qcVector<2>;

TEST(RoomiestTest, OfARectangleIsOnTheMiddleLine) {
  const Room room = roomiest(features::sidesOf({box(0, 0, 1, 0.5)}), 1e-9);
  EXPECT_NEAR(room.radius, 0.25, 1e-9);
  EXPECT_NEAR(room.centre.y(), 0.25, 1e-9);
}

TEST(RoomiestTest, KeepsOutOfWhatIsCrossedTwice) {
  const Room room = roomiest(features::sidesOf({box(0, 0, 1, 1), box(0.25, 0.1, 0.9, 0.9)}), 1e-9);
  EXPECT_NEAR(room.radius, 0.125, 1e-9);
  EXPECT_NEAR(room.centre.x(), 0.125, 1e-9);
}

TEST(RoomiestTest, IsAnEndOfASideWhenNoDistanceExceedsTheTolerance) {
  const Room room = roomiest(features::sidesOf({box(0.25, 0.5, 1, 1)}), 0.5);
  EXPECT_EQ(room.radius, 0.0);
  EXPECT_EQ(room.centre, Point(0.25, 0.5));
  EXPECT_EQ(room.pieces, 1U);
}

TEST(RoomiestTest, OfSidesThatEncloseNothingIsAnEnd) {
  const Room room = roomiest(features::sidesOf({{{0, 0}, {1, 1}}}), 1e-3);
  EXPECT_EQ(room.radius, 0.0);
  EXPECT_EQ(room.centre, Point(0, 0));
}

TEST(RoomiestTest, TurnsAwayFromANotchThatSeemsRoomyAsLongAsNothingIsFound) {
  const Feature plate{{{{2, 5}, {1, 5}, {1, 7}, {0, 7}, {0, 0}, {2, 0}},
                       {{{1.6195836379587292, 3.5},
                         {1, 4.1195836379587289},
                         {0.38041636204127083, 3.5},
                         {0.99999999999999989, 2.8804163620412711}}}}};
  const RingList list(plate);
  const Frame frame(list.rings());
  const Room room = roomiest(cntr::sets::sidesOf(list, frame), frame.scaled(1e-9));
  EXPECT_NEAR(frame.restored(room.radius, 1), 1.0, 1e-9);
  EXPECT_LT(room.pieces, 2000U);
}

/// A gap of even width between two circles of n corners each.
Feature annulus(std::size_t n, double inner) {
  return {{shapes::regularPolygon(n, 100.0, {0, 0}), {shapes::regularPolygon(n, inner, {0, 0})}}};
}

/// A square with `n` small holes in a circle around its centre.
Feature cage(std::size_t n) {
  Feature feature{{box(-200, -200, 200, 200), {}}};
  const Points bars = shapes::regularPolygon(n, 150.0, {0, 0});
  const double size = 150.0 / static_cast<double>(n);
  for (const qcVector<2>& p : bars)
    feature.front().holes.push_back(shapes::regularPolygon(3, size, p));
  return feature;
}

TEST(RoomiestTest, OfShapesWithManyEquallyGoodPlacesTakesFewPieces) {
  Points corridors;
  for (int i = 0; i < 1000; ++i) {
    const double x = 2.0 * i;
    for (const qcVector<2>& p :
         {qcVector<2>(x, 0), qcVector<2>(x, 100), qcVector<2>(x + 1, 100), qcVector<2>(x + 1, 0)})
      corridors.push_back(p);
  }
  corridors.emplace_back(1999, -0.25);
  corridors.emplace_back(0, -0.25);
  const std::vector<std::pair<const char*, Feature>> hard{
      {"a circle", {{shapes::regularPolygon(20000, 1.0, {0, 0}), {}}}},
      {"an annulus", annulus(2000, 99.0)},
      {"a thin annulus", annulus(5000, 99.99)},
      {"a wide annulus", annulus(2000, 1.0)},
      {"a cage", cage(500)},
      {"corridors", {{corridors, {}}}},
      {"a spiral", {{shapes::spiral(20000, 30.0), {}}}},
      {"a needle", {{box(0, 0, 1e9, 1), {}}}}};
  constexpr double extent = 200.0;
  for (const auto& [what, feature] : hard) {
    ASSERT_EQ(qf_RingContact(feature), qcRingContact::eSimple) << what;
    const RingList list(feature);
    const Frame frame(list.rings());
    const std::vector<Side> sides = cntr::sets::sidesOf(list, frame);
    const Room room = cntr::sets::roomiest(sides, frame.scaled(1e-6 * extent));
    EXPECT_LT(room.pieces, 250 * sides.size()) << what;
    const plain::Parts parts = features::plainOf(feature);
    const Point centre = frame.restored(room.centre);
    EXPECT_TRUE(plain::fills(parts, plain::Rule::nonZero, centre)) << what;
    EXPECT_NEAR(plain::distanceToRings(parts, centre), frame.restored(room.radius, 1), 1e-10)
        << what;
  }
}

}  // namespace
