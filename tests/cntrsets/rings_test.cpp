// SPDX-License-Identifier: MIT
//
// Rings as plain values, and the regions made of them.

#include <cntrsets/rings.h>

#include <cntr/contourdefs.h>
#include <gtest/gtest.h>

namespace {

const qcRings plate{{{0, 0}, {10, 0}, {10, 10}, {0, 10}}, {{{2, 2}, {4, 2}, {4, 4}, {2, 4}}}};

TEST(Rings, AreEqualWhenAllVerticesAre) {
  EXPECT_EQ(plate, qcRings(plate));
  qcRings other = plate;
  other.holes[0][0] = {2, 3};
  EXPECT_NE(plate, other);
}

TEST(ToRegion, KeepsOutlineAndHoles) {
  const qcRegion region = qf_ToRegion(plate);
  EXPECT_EQ(region.points(), plate.outline);
  ASSERT_EQ(region.holes().size(), 1U);
  EXPECT_EQ(region.holes()[0]->points(), plate.holes[0]);
  EXPECT_EQ(region.area(true), 96.0);
  EXPECT_EQ(region.label(), 0);
}

TEST(ToRegion, RepairsNothing) {
  const qcRings crossing{{{0, 0}, {40, 40}, {40, 0}, {0, 40}},
                         {{{2, 10}, {4, 12}, {4, 10}, {2, 12}}}};
  const qcRegion region = qf_ToRegion(crossing);
  EXPECT_EQ(region.points(), crossing.outline);
  ASSERT_EQ(region.holes().size(), 1U);
  EXPECT_EQ(region.holes()[0]->points(), crossing.holes[0]);
}

TEST(ToRegion, RefusesAHoleThatTouchesTheOutline) {
  try {
    qf_ToRegion({plate.outline, {{{0, 5}, {3, 4}, {3, 6}}}});
    FAIL() << "not refused";
  } catch (const qcContourDefs::BadParams& error) {
    EXPECT_EQ(error.message(), L"holes cannot intersect region");
  }
}

TEST(ToRegion, TakesRingsWithoutVertices) { EXPECT_TRUE(qf_ToRegion({}).points().empty()); }

}  // namespace
