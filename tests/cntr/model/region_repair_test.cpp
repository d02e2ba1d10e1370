// SPDX-License-Identifier: MIT
//
// Repair of regions whose boundary crosses itself: figures whose walk can be followed by hand, what
// cannot be repaired, what is remembered. Agreement with a second implementation on many shapes is
// tested in region_properties_test.cpp.

#include <algorithm>

#include <cntr/compute/repair.h>
#include <cntr/region.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "region_fixtures.h"

namespace {

using namespace fixtures;
using testing::IsEmpty;

Points regularized(const Points& boundary) {
  qcRegion result;
  qcRegion(boundary, keep).regularize(result);
  EXPECT_FALSE(result.isSelfIntersecting());
  return result.points();
}

Points outerHullOf(const Points& boundary) {
  qcRegion result;
  qcRegion(boundary, keep).outerHull(result);
  EXPECT_FALSE(result.isSelfIntersecting());
  return result.points();
}

/// A closed line that winds inwards twice and leaves outwards across itself.
Points spiralOverItself() {
  return {{0, 0}, {8, 0}, {8, 8}, {1, 8}, {1, 1},  {7, 1}, {7, 7},
          {2, 7}, {2, 2}, {6, 2}, {6, 9}, {-1, 9}, {-1, 0}};
}

/// A square with a loop inside it, entered across its own side.
Points loopInside() { return {{0, 0}, {10, 0}, {10, 10}, {4, 10}, {4, 4}, {6, 4}, {6, 6}, {0, 6}}; }

/// A walk along it comes to (3, 5), turns, and is back there without having met its start.
Points walkWithoutReturn() {
  return {{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 5},   {3, 5},
          {3, 3}, {7, 3},  {7, 7},   {3, 7},  {3, 4.9}, {-1, 4.9}};
}

TEST(RegionRepairTest, ASimpleRegionIsCopiedHolesIncluded) {
  qcRegion region = squareWithHole();
  region.label(6);
  qcRegion regular;
  qcRegion hull;
  region.regularize(regular);
  region.outerHull(hull);
  for (const qcRegion* result : {&regular, &hull}) {
    EXPECT_EQ(result->points(), region.points());
    EXPECT_EQ(result->holes(), region.holes());
    EXPECT_EQ(result->label(), 6U);
  }
}

TEST(RegionRepairTest, HolesAreNotExamined) {
  const qcRegion region =
      regionWith(square(0, 0, 10), {handle({{2, 2}, {4, 4}, {4, 2}, {2, 4}}),
                                    handle(square(20, 20, 4)), handle(square(22, 22, 4))});
  qcRegion result;
  region.regularize(result);
  EXPECT_EQ(result.holes(), region.holes());
}

TEST(RegionRepairTest, ARepairedRegionHasNeitherHolesNorLabel) {
  qcRegion region(bowTie(), keep);
  region.label(6);
  region.holes(Handles{handle(square(10, 10, 1))});
  qcRegion result = squareWithHole();
  region.regularize(result);
  EXPECT_THAT(result.holes(), IsEmpty());
  EXPECT_EQ(result.label(), 0U);
  result = squareWithHole();
  region.outerHull(result);
  EXPECT_THAT(result.holes(), IsEmpty());
}

TEST(RegionRepairTest, FewVerticesAreCopied) {
  for (std::size_t n = 0; n < 3; ++n) {
    Points points = bowTie();
    points.resize(n);
    EXPECT_EQ(regularized(points), points);
    EXPECT_EQ(outerHullOf(points), points);
    EXPECT_EQ(qcRegion(points, qcContourDefs::eRegularize).points(), points);
    EXPECT_EQ(qcRegion(points, qcContourDefs::eOuterHull).points(), points);
  }
}

TEST(RegionRepairTest, ABowTieIsWalkedRoundBothWings) {
  EXPECT_EQ(regularized(bowTie()), (Points{{2, 0}, {1, 1}, {0, 0}, {0, 2}, {1, 1}, {2, 2}}));
}

TEST(RegionRepairTest, TheOuterHullOfABowTieJoinsItsWings) {
  EXPECT_EQ(outerHullOf(bowTie()), (Points{{1, 1}, {0, 0}, {0, 2}, {1, 1}, {2, 2}, {2, 0}}));
}

TEST(RegionRepairTest, AFigureEightKeepsBothItsLoops) {
  const Points eight = {{0, 0}, {4, 4}, {6, 4}, {6, 0}, {4, 0}, {0, 4}, {-2, 4}, {-2, 0}};
  EXPECT_EQ(
      regularized(eight),
      (Points{{6, 4}, {6, 0}, {4, 0}, {2, 2}, {0, 0}, {-2, 0}, {-2, 4}, {0, 4}, {2, 2}, {4, 4}}));
  EXPECT_EQ(
      outerHullOf(eight),
      (Points{{2, 2}, {0, 0}, {-2, 0}, {-2, 4}, {0, 4}, {2, 2}, {4, 4}, {6, 4}, {6, 0}, {4, 0}}));
  EXPECT_EQ(qcRegion(eight, qcContourDefs::eOuterHull).area(false), 24.0);
}

TEST(RegionRepairTest, AChainOfLobesIsJoinedIntoOne) {
  const Points chain = {{0, 0}, {3, 3}, {6, 0}, {6, 3}, {3, 0}, {0, 3}};
  EXPECT_EQ(qcRegion(chain, qcContourDefs::eOuterHull).area(false), 9.0);
  EXPECT_EQ(outerHullOf(chain).size(), 10U);
}

TEST(RegionRepairTest, APentagramCannotBeStarted) {
  EXPECT_EQ(badParamsOf([] { regularized(pentagram()); }), L"invalid contour");
  EXPECT_EQ(badParamsOf([] { outerHullOf(pentagram()); }), L"invalid contour");
}

TEST(RegionRepairTest, APentagramWithABluntTipIsLeftAtItsFirstCrossing) {
  // The walk turns at every crossing: down one side of the tip, along the bar, up the other side.
  const Points blunt = {{-2, 9}, {2, 9}, {6, -7}, {-8, 3}, {8, 3}, {-6, -7}};
  const Points tip = {{2, 9}, {3.5, 3}, {-3.5, 3}, {-2, 9}};
  EXPECT_EQ(regularized(blunt), tip);
  EXPECT_EQ(outerHullOf(blunt), tip);
}

TEST(RegionRepairTest, TheClosingEdgeIsNotTriedAsAStart) {
  const Points bluntAtTheEnd = {{2, 9}, {6, -7}, {-8, 3}, {8, 3}, {-6, -7}, {-2, 9}};
  EXPECT_EQ(badParamsOf([&] { regularized(bluntAtTheEnd); }), L"invalid contour");
}

TEST(RegionRepairTest, AnEdgeBetweenCollinearOnesCannotStart) {
  // The only edge that nothing crosses continues straight on: the probe meets only one neighbour.
  const Points straightOn = {{-2, 9}, {0, 9}, {2, 9}, {6, -7}, {-8, 3}, {8, 3}, {-6, -7}};
  EXPECT_EQ(badParamsOf([&] { regularized(straightOn); }), L"invalid contour");
}

TEST(RegionRepairTest, ALoopInsideIsDroppedFromTheOuterHull) {
  EXPECT_EQ(
      regularized(loopInside()),
      (Points{{10, 0}, {10, 10}, {4, 10}, {4, 6}, {6, 6}, {6, 4}, {4, 4}, {4, 6}, {0, 6}, {0, 0}}));
  EXPECT_EQ(outerHullOf(loopInside()),
            (Points{{4, 6}, {0, 6}, {0, 0}, {10, 0}, {10, 10}, {4, 10}}));
}

TEST(RegionRepairTest, LoopsInLoopsAreDroppedToo) {
  const Points loops = {{0, 0}, {12, 0}, {12, 12}, {6, 12}, {6, 4},  {10, 4}, {10, 8}, {7, 8},
                        {7, 6}, {9, 6},  {9, 7},   {2, 7},  {2, 10}, {8, 10}, {8, 11}, {0, 11}};
  EXPECT_EQ(outerHullOf(loops), (Points{{6, 11}, {0, 11}, {0, 0}, {12, 0}, {12, 12}, {6, 12}}));
  EXPECT_EQ(qcRegion(loops, qcContourDefs::eRegularize).area(false), 111.0);
}

TEST(RegionRepairTest, TheOuterHullOfASpiralOverItselfIsItsOutside) {
  EXPECT_EQ(outerHullOf(spiralOverItself()),
            (Points{{6, 8}, {6, 9}, {-1, 9}, {-1, 0}, {0, 0}, {8, 0}, {8, 8}}));
}

TEST(RegionRepairTest, ARegularizedSpiralLeavesItsOverlapsOut) {
  EXPECT_EQ(regularized(spiralOverItself()), (Points{{8, 8},
                                                     {6, 8},
                                                     {6, 7},
                                                     {2, 7},
                                                     {2, 2},
                                                     {6, 2},
                                                     {6, 7},
                                                     {7, 7},
                                                     {7, 1},
                                                     {1, 1},
                                                     {1, 8},
                                                     {6, 8},
                                                     {6, 9},
                                                     {-1, 9},
                                                     {-1, 0},
                                                     {0, 0},
                                                     {8, 0}}));
}

TEST(RegionRepairTest, ASpikeThroughTheFarSideIsTurnedInsideOut) {
  const Points spike = {{0, 0}, {11, 0}, {11, 10}, {5.5, -1}, {0, 10}};
  EXPECT_EQ(
      regularized(spike),
      (Points{{11, 10}, {6, 0}, {5, 0}, {0, 10}, {0, 0}, {5, 0}, {5.5, -1}, {6, 0}, {11, 0}}));
}

TEST(RegionRepairTest, ADoubledVertexIsNoCrossing) {
  EXPECT_EQ(regularized({{0, 0}, {2, 2}, {2, 2}, {2, 0}, {0, 2}}),
            (Points{{2, 0}, {1, 1}, {0, 0}, {0, 2}, {1, 1}, {2, 2}}));
}

TEST(RegionRepairTest, ABoundaryThatCrossesItselfInAVertexIsSimple) {
  const Points atVertex = {{0, 0}, {4, 0}, {4, 4}, {8, 8}, {8, 4}, {4, 4}, {0, 4}};
  EXPECT_EQ(regularized(atVertex), atVertex);
}

TEST(RegionRepairTest, ABoundaryTwiceOverIsSimple) {
  Points twice = square(0, 0, 4);
  twice.insert(twice.end(), twice.begin(), twice.begin() + 4);
  EXPECT_EQ(regularized(twice), twice);
}

TEST(RegionRepairTest, AVertexThatTouchesAnEdgeIsRepairedWithinAMillionth) {
  const auto withTipAt = [](double y) {
    return Points{{0, 0}, {10, 0}, {10, 10}, {5, y}, {0, 10}};
  };
  EXPECT_EQ(regularized(withTipAt(2e-6)), withTipAt(2e-6));
  EXPECT_EQ(regularized(withTipAt(0)),
            (Points{{10, 10}, {5, 0}, {0, 10}, {0, 0}, {5, 0}, {10, 10}, {10, 0}}));
  EXPECT_EQ(outerHullOf(withTipAt(-5e-7)),
            (Points{{10, 10}, {5, -5e-7}, {0, 10}, {0, 0}, {5, -5e-7}, {10, 10}, {10, 0}}));
}

TEST(RegionRepairTest, EdgesWithinAMillionthOfOthersCanLeaveAResultThatCrossesItself) {
  const qcRegion region({{4, 4}, {5e-7, 4}, {3, 3}, {3, 0}, {0, 3}, {3.9999995, 3.0000005}}, keep);
  qcRegion hull;
  region.outerHull(hull);
  EXPECT_TRUE(hull.isSelfIntersecting());
}

TEST(RegionRepairTest, AFigureThatBoundsNothingIsReducedToAnEdge) {
  const qcRegion region({{1, 2}, {1, 1}, {2, 4}, {2, 2}, {1, 3}, {1, 1}}, keep);
  qcRegion hull;
  region.outerHull(hull);
  EXPECT_EQ(hull.points(), (Points{{1, 1}, {1, 2}}));
  EXPECT_EQ(emptyContourOf([&] { hull.area(false); }), L"");
}

TEST(RegionRepairTest, AWalkThatNeverComesBackIsGivenUp) {
  EXPECT_EQ(badParamsOf([] { regularized(walkWithoutReturn()); }), L"invalid contour");
  EXPECT_EQ(badParamsOf([] { outerHullOf(walkWithoutReturn()); }), L"invalid contour");
}

TEST(RegionRepairTest, AnInvalidContourHasNoStartOrNoReturn) {
  using cntr::compute::Outline;
  const Outline noStart(pentagram());
  EXPECT_FALSE(cntr::compute::startingEdge(noStart, 0.1));
  EXPECT_FALSE(cntr::compute::traceBoundary(noStart, 0.1));
  const Outline noReturn(walkWithoutReturn());
  EXPECT_EQ(cntr::compute::startingEdge(noReturn, 0.04), 0U);
  EXPECT_FALSE(cntr::compute::traceBoundary(noReturn, 0.04));
  // Moved away from the vertex that it goes through, the last edge lets the walk return.
  Points returning = walkWithoutReturn();
  returning[10] = {3, 5.1};
  returning[11] = {-1, 5.1};
  EXPECT_TRUE(cntr::compute::traceBoundary(Outline(returning), 0.04));
}

TEST(RegionRepairTest, ATraceThatIsOnePlaceLeavesNoLoop) {
  EXPECT_FALSE(cntr::compute::outerLoop(Points(2, {3, 3})));
  EXPECT_FALSE(cntr::compute::outerLoop(Points(5, {3, 3})));
}

TEST(RegionRepairTest, APieceOfOneVertexIsDropped) {
  EXPECT_EQ(cntr::compute::outerLoop({{0, 0}, {0, 0}, {4, 0}, {0, 4}}),
            (Points{{0, 0}, {4, 0}, {0, 4}}));
  EXPECT_EQ(cntr::compute::outerLoop({{0, 0}, {4, 0}, {4, 5e-7}, {0, 4}}),
            (Points{{4, 5e-7}, {0, 4}, {0, 0}}));
}

TEST(RegionRepairTest, RepairWorksInPlace) {
  qcRegion region(bowTie(), keep);
  region.holes(Handles{handle(square(10, 10, 1))});
  EXPECT_EQ(region.area(false), 0.0);
  region.regularize(region);
  EXPECT_EQ(region.points(), regularized(bowTie()));
  EXPECT_THAT(region.holes(), IsEmpty());
  EXPECT_EQ(region.area(false), 2.0);
  EXPECT_FALSE(region.isSelfIntersecting());

  region = qcRegion(loopInside(), keep);
  region.outerHull(region);
  EXPECT_EQ(region.points(), outerHullOf(loopInside()));
}

TEST(RegionRepairTest, RepairingASimpleRegionInPlaceKeepsIt) {
  qcRegion region = squareWithHole();
  EXPECT_EQ(noticesOf(region, [&] { region.regularize(region); }), 0U);
  EXPECT_EQ(region.points(), square(0, 0, 10));
  EXPECT_EQ(region.holes().size(), 1U);
}

TEST(RegionRepairTest, ARegionMayBeRepairedIntoItsOwnHole) {
  const qcPtrHandle<qcRegion> hole(new qcRegion(square(20, 20, 1), keep));
  qcRegion region(bowTie(), keep);
  region.holes(Handles{hole});
  region.regularize(*hole);
  EXPECT_EQ(hole->points(), regularized(bowTie()));
}

TEST(RegionRepairTest, ResultsAreRemembered) {
  WatchedRegion region(bowTie());
  qcRegion result;
  region.regularize(result);
  region.outerHull(result);
  region.replaceBehindItsBack(loopInside());
  region.regularize(result);
  EXPECT_EQ(result.points(), regularized(bowTie()));
  region.outerHull(result);
  EXPECT_EQ(result.points(), outerHullOf(bowTie()));
  region.points(loopInside());
  region.regularize(result);
  EXPECT_EQ(result.points(), regularized(loopInside()));
  region.outerHull(result);
  EXPECT_EQ(result.points(), outerHullOf(loopInside()));
}

TEST(RegionRepairTest, TheTwoResultsAreRememberedApart) {
  WatchedRegion region(bowTie());
  qcRegion result;
  region.regularize(result);
  region.replaceBehindItsBack(loopInside());
  region.outerHull(result);
  EXPECT_EQ(result.points(), outerHullOf(loopInside()));
}

TEST(RegionRepairTest, CopiesShareRememberedResults) {
  WatchedRegion region(bowTie());
  qcRegion result;
  region.regularize(result);
  region.outerHull(result);
  region.replaceBehindItsBack(loopInside());
  const qcRegion copy(region);
  qcRegion assigned;
  assigned = region;
  for (const qcRegion* shared : {&copy, static_cast<const qcRegion*>(&assigned)}) {
    shared->regularize(result);
    EXPECT_EQ(result.points(), regularized(bowTie()));
    shared->outerHull(result);
    EXPECT_EQ(result.points(), outerHullOf(bowTie()));
  }
}

TEST(RegionRepairTest, AResultMayBeChangedWithoutHarmToTheRememberedOne) {
  const qcRegion region(bowTie(), keep);
  qcRegion result;
  region.regularize(result);
  result.points(square(0, 0, 1));
  region.regularize(result);
  EXPECT_EQ(result.points(), regularized(bowTie()));
}

TEST(RegionRepairTest, AResultOutlivesTheRegionItCameFrom) {
  qcRegion result;
  {
    const qcRegion region(bowTie(), keep);
    region.regularize(result);
  }
  EXPECT_EQ(result.area(false), 2.0);
}

TEST(RegionRepairTest, AFailureLeavesTheDestinationUntouched) {
  const qcRegion region(pentagram(), keep);
  qcRegion dest = squareWithHole();
  EXPECT_EQ(dest.area(true), 96.0);
  EXPECT_THROW(region.regularize(dest), qcContourDefs::BadParams);
  EXPECT_THROW(region.outerHull(dest), qcContourDefs::BadParams);
  EXPECT_EQ(dest.points(), square(0, 0, 10));
  EXPECT_EQ(dest.holes().size(), 1U);
  EXPECT_EQ(dest.area(true), 96.0);
}

TEST(RegionRepairTest, AFailureInPlaceLeavesTheRegionAsItWas) {
  qcRegion region(pentagram(), keep);
  region.holes(Handles{handle(square(50, 50, 1))});
  EXPECT_THROW(region.regularize(region), qcContourDefs::BadParams);
  EXPECT_THROW(region.outerHull(region), qcContourDefs::BadParams);
  EXPECT_EQ(region.points(), pentagram());
  EXPECT_EQ(region.holes().size(), 1U);
}

TEST(RegionRepairTest, AFailureIsNotRemembered) {
  WatchedRegion region(pentagram());
  qcRegion result;
  EXPECT_THROW(region.regularize(result), qcContourDefs::BadParams);
  EXPECT_THROW(region.regularize(result), qcContourDefs::BadParams);
  EXPECT_THROW(region.outerHull(result), qcContourDefs::BadParams);
  region.replaceBehindItsBack(bowTie());
  region.regularize(result);
  EXPECT_EQ(result.points(), regularized(bowTie()));
  region.outerHull(result);
  EXPECT_EQ(result.points(), outerHullOf(bowTie()));
}

TEST(RegionRepairTest, AConstructorThatCannotRepairThrows) {
  for (const auto mode : {qcContourDefs::eOuterHull, qcContourDefs::eRegularize}) {
    EXPECT_EQ(badParamsOf([&] { qcRegion(pentagram(), mode); }), L"invalid contour");
    EXPECT_EQ(badParamsOf([&] { qcRegion(qcPolygon(pentagram()), mode); }), L"invalid contour");
    EXPECT_EQ(badParamsOf([&] { qcRegion(qcContour(pentagram(), true, 0), mode); }),
              L"invalid contour");
  }
}

TEST(RegionRepairTest, TheOutcomeDependsOnTheFirstVertex) {
  // Begun at each vertex in turn, a pentagram with a blunt tip can be repaired from all but one.
  Points blunt = {{-2, 9}, {2, 9}, {6, -7}, {-8, 3}, {8, 3}, {-6, -7}};
  std::vector<bool> repaired;
  for (std::size_t i = 0; i < blunt.size(); ++i) {
    repaired.push_back(badParamsOf([&] { regularized(blunt); }) != L"invalid contour");
    std::rotate(blunt.begin(), blunt.begin() + 1, blunt.end());
  }
  EXPECT_EQ(repaired, (std::vector<bool>{true, false, true, true, true, true}));
}

}  // namespace
