// SPDX-License-Identifier: MIT

#include <cntrformats/shapes.h>

#include <gtest/gtest.h>

#include <cntrformats/errors.h>

#include "texts.h"

using namespace formats;

namespace {

qcRings plate() {
  return {texts::square(10), {{{1, 1}, {1, 2}, {2, 2}}, {{5, 5}, {5, 8}, {8, 8}}}};
}

}  // namespace

TEST(Shapes, ARegionHasItsHolesIfAskedFor) {
  EXPECT_EQ(makeRegion(plate(), true)->holes().size(), 2);
  EXPECT_EQ(makeRegion(plate(), true)->area(true), 100 - 0.5 - 4.5);
  EXPECT_EQ(makeRegion(plate(), false)->holes().size(), 0);
  EXPECT_TRUE(makeRegion(plate(), false)->isClosed());
}

TEST(Shapes, ABadHoleIsNamed) {
  qcRings part = plate();
  part.holes.push_back({{9, 9}, {11, 9}, {9, 11}});
  try {
    makeRegion(part, true);
    FAIL() << "the hole crosses the outline";
  } catch (const FeatureError& error) {
    EXPECT_STREQ(error.what(), "hole 3 crosses or touches its outline");
  }
  EXPECT_EQ(makeRegion(part, false)->area(false), 100);
}

TEST(Shapes, TheFirstOfSeveralBadHolesIsNamed) {
  qcRings part = plate();
  part.holes.insert(part.holes.begin() + 1, 2, {{9, 9}, {11, 9}, {9, 11}});
  try {
    makeRegion(part, true);
    FAIL() << "two holes cross the outline";
  } catch (const FeatureError& error) {
    EXPECT_STREQ(error.what(), "hole 2 crosses or touches its outline");
  }
}

TEST(Shapes, ASetHasARegionForEachPart) {
  const qcRegionSet set =
      makeRegionSet({plate(), {{{20, 0}, {22, 0}, {22, 2}}, {}}},
                    [](const qcRings& part) { return makeRegion(part, !part.holes.empty()); });
  ASSERT_EQ(set.regions().size(), 2);
  EXPECT_EQ(set.regions()[0]->holes().size(), 2);
  EXPECT_EQ(set.area(true), 95 + 2);
}

TEST(Shapes, BoundariesHaveTheFilesOrderAndNumbers) {
  Geometry geometry{true, false, {plate()}};
  auto boundaries = boundariesOf(geometry, true);
  ASSERT_EQ(boundaries.size(), 3);
  EXPECT_FALSE(boundaries[0].place.part) << "the only part has no number";
  EXPECT_FALSE(boundaries[0].place.hole);
  EXPECT_EQ(boundaries[2].place.hole, 2U);
  EXPECT_EQ(boundaries[2].contour->points(), geometry.parts[0].holes[1]);
  EXPECT_EQ(boundariesOf(geometry, false).size(), 1);

  geometry.parts.push_back(plate());
  boundaries = boundariesOf(geometry, true);
  ASSERT_EQ(boundaries.size(), 6);
  EXPECT_EQ(boundaries[3].place.part, 2U);
  EXPECT_FALSE(boundaries[3].place.hole) << "the next outline is not a hole";
  EXPECT_EQ(boundaries[4].place.hole, 1U);
}

TEST(Shapes, CurvesAreTheBoundariesWithoutTheirPlaces) {
  const Geometry geometry{true, false, {plate(), {{{20, 0}, {22, 0}, {22, 2}}, {}}}};
  const auto boundaries = boundariesOf(geometry, true);
  const std::vector<qcContour> curves = curvesOf(geometry.parts, true);
  ASSERT_EQ(curves.size(), boundaries.size());
  for (std::size_t i = 0; i < curves.size(); ++i) {
    EXPECT_TRUE(curves[i].isClosed());
    EXPECT_EQ(curves[i].points(), boundaries[i].contour->points());
  }
}

TEST(Shapes, LinesStayOpen) {
  const auto lines = boundariesOf({false, false, {{{{0, 0}, {3, 4}, {0, 4}}, {}}}}, true);
  ASSERT_EQ(lines.size(), 1);
  EXPECT_FALSE(lines[0].contour->isClosed());
  EXPECT_EQ(lines[0].contour->length(), 8);
  EXPECT_FALSE(curvesOf({{{{0, 0}, {3, 4}}, {}}}, false)[0].isClosed());
}

TEST(Shapes, ABoxHoldsAllPoints) {
  const qcRect box = boxOf({{1, 5}, {-2, 3}, {4, 4}});
  EXPECT_EQ(box.ul(), qcVector<2>(-2, 3));
  EXPECT_EQ(box.lr(), qcVector<2>(4, 5));
}
