// SPDX-License-Identifier: MIT
//
// Repair of region sets: the merging pass and its order, the shaping pass, what is remembered.

#include <algorithm>

#include <cntr/regionst.h>
#include <gtest/gtest.h>

#include "region_fixtures.h"
#include "remembered.h"

namespace {

using namespace fixtures;

Handles regularized(const Handles& regions) {
  qcRegionSet result = setOf({});
  setOf(regions).regularize(result);
  return result.regions();
}

Handles hullsOf(const Handles& regions) {
  qcRegionSet result = setOf({});
  setOf(regions).outerHull(result);
  return result.regions();
}

/// Columns of a bridge: A and B stand apart, C crosses both.
Handle columnA() { return handle(square(0, 0, 2)); }
Handle columnB() { return handle(square(4, 0, 2)); }
Handle beamC() { return handle(rectangle(1, 1.5, 4, 2)); }

TEST(RegionSetRepairTest, DisjointRegionsAreReturnedAsTheyAre) {
  const Handles regions = {handle(square(5, 5, 2)), Handle(new qcRegion(squareWithHole()))};
  const Handles apart = {handle(square(50, 50, 2)), regions[1]};
  EXPECT_EQ(regularized(apart), apart);
  EXPECT_EQ(hullsOf(apart), apart);
  // One inside the other, clear of its boundary, is no crossing either.
  EXPECT_EQ(regularized(regions), regions);
}

TEST(RegionSetRepairTest, AnEmptySetGivesAnEmptySet) {
  qcRegionSet result = setOf({columnA()});
  setOf({}).regularize(result);
  EXPECT_TRUE(result.regions().empty());
  result = setOf({columnA()});
  setOf({}).outerHull(result);
  EXPECT_TRUE(result.regions().empty());
}

TEST(RegionSetRepairTest, TwoCrossingSquaresBecomeOneRegion) {
  const Handles hull = hullsOf({handle(square(0, 0, 4)), handle(square(3, 1, 4))});
  ASSERT_EQ(hull.size(), 1U);
  EXPECT_FALSE(hull[0]->isSelfIntersecting());
  // Joined at the first crossing, then walked: the overlap from (3, 1) to (4, 4) is left out.
  EXPECT_EQ(hull[0]->area(false), 16.0 + 16.0 - 2 * 3.0);
}

TEST(RegionSetRepairTest, RegularizingTwoCrossingSquaresWalksTheirJoinedBoundary) {
  const Handles regular = regularized({handle(square(0, 0, 4)), handle(square(3, 1, 4))});
  ASSERT_EQ(regular.size(), 1U);
  EXPECT_FALSE(regular[0]->isSelfIntersecting());
  EXPECT_EQ(regular[0]->area(false), 16.0 + 16.0 - 2 * 3.0);
}

TEST(RegionSetRepairTest, ASelfCrossingRegionIsRepairedByItself) {
  const Handles hull = hullsOf({handle(square(20, 20, 1)), handle(bowTie())});
  ASSERT_EQ(hull.size(), 2U);
  EXPECT_EQ(hull[0]->points(), square(20, 20, 1));
  EXPECT_EQ(hull[1]->points(), qcRegion(bowTie(), qcContourDefs::eOuterHull).points());
  EXPECT_EQ(regularized({handle(bowTie())})[0]->points(),
            qcRegion(bowTie(), qcContourDefs::eRegularize).points());
}

/// Two loops that meet at (1, 1), one of them with this many vertices more.
Points bowTieWith(std::size_t vertices, double x) {
  Points points = bowTie();
  for (qcVector<2>& p : points) p = p + qcVector<2>(x, 0);
  for (std::size_t i = 0; i < vertices; ++i) {
    points.emplace_back(x - 1.0 - static_cast<double>(i), 1.0);
  }
  return points;
}

TEST(RegionSetRepairTest, RepairedRegionsStayInTheirPlacesWhateverTheirSizes) {
  const std::vector<Points> given = {bowTieWith(5, 0), bowTie(), bowTieWith(2, 50),
                                     bowTieWith(5, 90), bowTieWith(1, 130)};
  Handles regions;
  for (const Points& points : given) regions.push_back(handle(points));
  regions[1] = handle(square(200, 0, 4));
  const Handles result = regularized(regions);
  const Handles hulls = hullsOf(regions);
  ASSERT_EQ(result.size(), regions.size());
  ASSERT_EQ(hulls.size(), regions.size());
  for (std::size_t k = 0; k < regions.size(); ++k) {
    qcRegion alone;
    regions[k]->regularize(alone);
    EXPECT_EQ(result[k]->points(), alone.points()) << "at place " << k;
    regions[k]->outerHull(alone);
    EXPECT_EQ(hulls[k]->points(), alone.points()) << "at place " << k;
  }
}

TEST(RegionSetRepairTest, ASmallRegionRefusesTheSetBeforeALargerOneIsRepaired) {
  const Handle large = handle(bowTieWith(4, 50));
  EXPECT_EQ(badParamsOf([&] { regularized({large, handle(pentagram())}); }), L"invalid contour");
  EXPECT_EQ(badParamsOf([&] { hullsOf({large, handle(pentagram())}); }), L"invalid contour");
  // The repair of a region begins with the median of its edges.
  EXPECT_FALSE(qc_RememberedBy::contour(*large).medianFeatureSize.has_value());
  regularized({large, handle(bowTie())});
  EXPECT_TRUE(qc_RememberedBy::contour(*large).medianFeatureSize.has_value());
}

TEST(RegionSetRepairTest, RegionsThatCrossNothingAreCopiedWithTheirHoles) {
  const Handle frame = Handle(new qcRegion(squareWithHole()));
  const Handles result = hullsOf({frame, handle({{20, 20}, {22, 22}, {22, 20}, {20, 22}})});
  ASSERT_EQ(result.size(), 2U);
  EXPECT_FALSE(result[0] == frame);
  EXPECT_EQ(result[0]->points(), frame->points());
  EXPECT_EQ(result[0]->holes(), frame->holes());
}

TEST(RegionSetRepairTest, MergedRegionsLoseTheirHoles) {
  const Handles result = hullsOf({Handle(new qcRegion(squareWithHole())), handle(square(9, 1, 4))});
  ASSERT_EQ(result.size(), 1U);
  EXPECT_TRUE(result[0]->holes().empty());
}

TEST(RegionSetRepairTest, MergingLooksAtOuterBoundariesAlone) {
  // The second region crosses the hole of the first, not its boundary; the third one makes the set
  // cross at all.
  const Handles result = hullsOf({Handle(new qcRegion(squareWithHole())), handle(square(3, 3, 3)),
                                  handle({{20, 20}, {22, 22}, {22, 20}, {20, 22}})});
  EXPECT_EQ(result.size(), 3U);
}

TEST(RegionSetRepairTest, ARegionThatCrossesALaterMergeStaysUnmerged) {
  const Handles regions = {columnA(), columnB(), beamC()};
  const Handles once = hullsOf(regions);
  // A and B do not cross; A and C are merged; what they became is not tested against B again.
  ASSERT_EQ(once.size(), 2U);
  EXPECT_EQ(once[0]->points(), hullsOf({columnA(), beamC()})[0]->points());
  EXPECT_EQ(once[1]->points(), columnB()->points());
  EXPECT_TRUE(setOf(once).isSelfIntersecting());
  EXPECT_EQ(regularized(regions).size(), 2U);
  // Calling again merges the rest.
  EXPECT_EQ(hullsOf(once).size(), 1U);
}

TEST(RegionSetRepairTest, TheOrderDecidesWhatIsMerged) {
  const Handle far = handle(square(50, 50, 1));
  EXPECT_EQ(hullsOf({columnA(), beamC(), columnB()}).size(), 2U);
  EXPECT_EQ(hullsOf({beamC(), columnA(), far, columnB()}).size(), 3U);
  const Handles allMerged = hullsOf({beamC(), columnA(), columnB(), far});
  ASSERT_EQ(allMerged.size(), 2U);
  EXPECT_EQ(allMerged[1]->points(), far->points());
}

TEST(RegionSetRepairTest, TheRegionMovedIntoThePlaceOfAMergedOneIsSkipped) {
  // Both cross the first: after the second is merged the third takes its place, already passed by.
  const Handle tall = handle(rectangle(0, 0, 1, 20));
  const Handle low = handle(rectangle(-1, 2, 3, 1));
  const Handle high = handle(rectangle(-1, 12, 3, 1));
  const Handle far = handle(square(50, 50, 1));
  const Handles result = hullsOf({tall, low, high});
  ASSERT_EQ(result.size(), 2U);
  EXPECT_EQ(result[1]->points(), high->points());
  // With a fourth one in the last place, that is the one that moves, and the third is met.
  const Handles four = hullsOf({tall, low, high, far});
  ASSERT_EQ(four.size(), 2U);
  EXPECT_EQ(four[1]->points(), far->points());
}

TEST(RegionSetRepairTest, LaterPairsAreMergedToo) {
  const Handles result = hullsOf({handle(square(50, 50, 1)), columnA(), handle(square(70, 70, 1)),
                                  beamC(), handle(square(90, 90, 1))});
  ASSERT_EQ(result.size(), 4U);
  EXPECT_EQ(result[0]->points(), square(50, 50, 1));
  EXPECT_EQ(result[1]->points(), hullsOf({columnA(), beamC()})[0]->points());
  EXPECT_EQ(result[2]->points(), square(70, 70, 1));
  EXPECT_EQ(result[3]->points(), square(90, 90, 1));
}

TEST(RegionSetRepairTest, TheJoinedBoundaryStartsAtTheFirstCrossingOfTheFirstRegion) {
  // Seen through a repair that has nothing to do: two triangles that touch in one point.
  const Handles result =
      regularized({handle({{0, 0}, {4, 0}, {4, 4}}), handle({{4, 2}, {8, 0}, {8, 4}})});
  ASSERT_EQ(result.size(), 1U);
  EXPECT_EQ(result[0]->points(),
            (Points{{4, 2}, {4, 4}, {0, 0}, {4, 0}, {4, 2}, {4, 2}, {8, 0}, {8, 4}}));
}

TEST(RegionSetRepairTest, ADegenerateEdgeGivesTheJoinedBoundaryTheOrigin) {
  const Handles result =
      regularized({handle({{1, 1}, {4, 1}, {4, 4}, {4, 4}}), handle({{4, 2}, {8, 0}, {8, 4}})});
  ASSERT_EQ(result.size(), 1U);
  const Points& points = result[0]->points();
  EXPECT_NE(std::find(points.begin(), points.end(), qcVector<2>(0, 0)), points.end());
}

TEST(RegionSetRepairTest, RegionsThatMeetFromOneSideAloneCannotBeJoined) {
  // The second one meets the first only in edges of 5e-16, which have no line when asked for
  // crossings themselves.
  Handles regions = {handle({{-1, -2}, {1, -2}, {1, 0}, {-1, 0}}),
                     handle({{0, 0}, {0, 5e-16}, {0, 5}, {0.5, 5}, {0.5, 5e-16}, {0.5, 0}})};
  EXPECT_TRUE(setOf(regions).isSelfIntersecting());
  EXPECT_EQ(badParamsOf([&] { regularized(regions); }), L"spliced regions do not intersect");
  EXPECT_EQ(badParamsOf([&] { hullsOf(regions); }), L"spliced regions do not intersect");
  // With as many regions as are looked up by place.
  for (int i = 1; i < 20; ++i)
    regions.push_back(handle({{9.0 * i, 9}, {9.0 * i + 1, 9}, {9.0 * i, 10}}));
  EXPECT_EQ(badParamsOf([&] { regularized(regions); }), L"spliced regions do not intersect");
}

TEST(RegionSetRepairTest, AFailureLeavesTheResultAndTheSetUntouched) {
  const Handles regions = {handle(pentagram())};
  const qcRegionSet set = setOf(regions);
  const Handles before = {columnA()};
  qcRegionSet result = setOf(before);
  EXPECT_EQ(badParamsOf([&] { set.regularize(result); }), L"invalid contour");
  EXPECT_EQ(badParamsOf([&] { set.outerHull(result); }), L"invalid contour");
  EXPECT_EQ(result.regions(), before);
  EXPECT_EQ(set.regions(), regions);
}

TEST(RegionSetRepairTest, AFailureIsNotRemembered) {
  WatchedSet set({handle(pentagram())});
  qcRegionSet result = setOf({});
  EXPECT_THROW(set.regularize(result), qcContourDefs::BadParams);
  EXPECT_THROW(set.regularize(result), qcContourDefs::BadParams);
  EXPECT_THROW(set.outerHull(result), qcContourDefs::BadParams);
  set.replaceBehindItsBack({handle(bowTie())});
  EXPECT_NO_THROW(set.regularize(result));
  EXPECT_NO_THROW(set.outerHull(result));
}

TEST(RegionSetRepairTest, ANullHandleThrows) {
  WatchedSet set({handle(bowTie())});
  qcRegionSet result = setOf({columnA()});
  EXPECT_TRUE(set.isSelfIntersecting());
  set.replaceBehindItsBack({Handle()});
  EXPECT_THROW(set.regularize(result), qcBadPointer);
  set.replaceBehindItsBack({handle(bowTie()), Handle()});
  EXPECT_THROW(set.outerHull(result), qcBadPointer);
  EXPECT_EQ(result.regions().size(), 1U);
}

TEST(RegionSetRepairTest, AnEmptySetIsNeverFoundCrossing) {
  WatchedSet set({handle(bowTie())});
  qcRegionSet result = setOf({});
  EXPECT_TRUE(set.isSelfIntersecting());
  set.replaceBehindItsBack({});
  // An empty set is asked first of all, and answers that nothing crosses.
  EXPECT_NO_THROW(set.regularize(result));
}

TEST(RegionSetRepairTest, ResultsAreRememberedAndShared) {
  const qcRegionSet set = setOf({handle(bowTie())});
  qcRegionSet first = setOf({});
  qcRegionSet second = setOf({});
  set.outerHull(first);
  set.outerHull(second);
  EXPECT_EQ(first.regions(), second.regions()) << "the same objects";
  const qcRegionSet copy(set);
  qcRegionSet ofCopy = setOf({});
  copy.outerHull(ofCopy);
  EXPECT_EQ(ofCopy.regions(), first.regions());
  set.regularize(second);
  EXPECT_NE(second.regions()[0]->points(), first.regions()[0]->points());
}

TEST(RegionSetRepairTest, AChangeForgetsTheResults) {
  qcRegionSet set = setOf({handle(bowTie())});
  qcRegionSet result = setOf({});
  set.regularize(result);
  set.add(handle(square(20, 20, 1)), keep);
  set.regularize(result);
  EXPECT_EQ(result.regions().size(), 2U);
}

TEST(RegionSetRepairTest, ResultsCarryNoAnswersOfTheSet) {
  const qcRegionSet set = setOf({handle(bowTie())});
  EXPECT_EQ(set.area(false), 0.0);
  qcRegionSet result = setOf({columnA()});
  EXPECT_EQ(result.area(false), 4.0);
  set.regularize(result);
  EXPECT_EQ(result.area(false), 2.0);
  EXPECT_EQ(result.cachedVectorSize(), 3);
}

TEST(RegionSetRepairTest, RepairWorksInPlace) {
  qcRegionSet set = setOf({handle(bowTie()), handle(square(20, 20, 1))});
  EXPECT_EQ(set.area(false), 1.0);
  set.regularize(set);
  EXPECT_EQ(set.area(false), 3.0);
  EXPECT_FALSE(set.isSelfIntersecting());
  set = setOf({handle(square(0, 0, 4)), handle(square(3, 1, 4))});
  set.outerHull(set);
  EXPECT_EQ(set.regions().size(), 1U);
}

TEST(RegionSetRepairTest, RepairingASetThatDoesNotCrossInPlaceKeepsIt) {
  const Handles regions = {columnA(), columnB()};
  qcRegionSet set = setOf(regions);
  set.outerHull(set);
  EXPECT_EQ(set.regions(), regions);
}

TEST(RegionSetRepairTest, AFailureInPlaceLeavesTheSetAsItWas) {
  const Handles regions = {handle(pentagram()), columnA()};
  qcRegionSet set = setOf(regions);
  EXPECT_THROW(set.outerHull(set), qcContourDefs::BadParams);
  EXPECT_EQ(set.regions(), regions);
}

TEST(RegionSetRepairTest, AfterAnExceptionASetIsCopiedAsItIs) {
  // The crossing test threw, and is remembered as "no".
  const Handles regions = {handle({{1, 1}}), handle(square(0, 0, 2)), handle(square(1, 1, 2))};
  const qcRegionSet set = setOf(regions);
  qcRegionSet result = setOf({});
  EXPECT_EQ(emptyContourOf([&] { set.regularize(result); }), L"");
  EXPECT_NO_THROW(set.regularize(result));
  EXPECT_EQ(result.regions(), regions);
}

TEST(RegionSetRepairTest, FewVerticesAreCopied) {
  const Handles result =
      regularized({handle(bowTie()), handle({{9, 9}, {10, 10}}), handle({{7, 7}})});
  ASSERT_EQ(result.size(), 3U);
  EXPECT_EQ(result[1]->points(), (Points{{9, 9}, {10, 10}}));
  EXPECT_EQ(result[2]->points(), (Points{{7, 7}}));
}

}  // namespace
