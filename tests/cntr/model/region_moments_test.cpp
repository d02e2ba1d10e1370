// SPDX-License-Identifier: MIT
//
// The region's area, centre of mass and inertia, with and without its holes.

#include <cmath>

#include <cntr/inertia.h>
#include <cntr/region.h>
#include <gtest/gtest.h>
#include <testing/heap/heap.h>

#include "region_fixtures.h"

namespace {

using namespace fixtures;

/// All that one region of these vertices may be asked throws EmptyContour with an empty message.
void expectNoMeasures(const Points& points) {
  const qcRegion region(points, keep);
  for (const bool holes : {false, true}) {
    EXPECT_EQ(emptyContourOf([&] { region.area(holes); }), L"");
    EXPECT_EQ(emptyContourOf([&] { region.centerOfMass(holes); }), L"");
    EXPECT_EQ(emptyContourOf([&] { region.inertiaMatrix(holes); }), L"");
  }
}

TEST(RegionMomentsTest, MeasuresNeedThreeVertices) {
  expectNoMeasures({});
  expectNoMeasures({{1, 1}});
  expectNoMeasures({{1, 1}, {5, 1}});
  EXPECT_EQ(qcRegion({{1, 1}, {5, 1}, {1, 4}}, keep).area(false), 6.0);
}

TEST(RegionMomentsTest, MeasuresCanBeAskedOfRegionsThatMayNotChange) {
  const Handle region = handle(square(0, 0, 2));
  EXPECT_EQ(region->area(true), 4.0);
  EXPECT_EQ(region->centerOfMass(true), qcVector<2>(1, 1));
  EXPECT_NEAR(region->inertiaMatrix(true).element(0, 0), 16.0 / 12, 1e-12);
}

TEST(RegionAreaTest, TheOrientationPlaysNoPart) {
  EXPECT_EQ(qcRegion({{0, 0}, {0, 2}, {2, 2}, {2, 0}}, keep).area(false), 4.0);
}

TEST(RegionAreaTest, IsRememberedWithoutAllocatingAnything) {
  if (!heap::counts) GTEST_SKIP() << "the heap is not counted here";
  const qcRegion region(square(0, 0, 2), keep);
  const long before = heap::blocksMade();
  EXPECT_EQ(region.area(false), 4.0);
  EXPECT_EQ(region.area(true), 4.0);
  EXPECT_EQ(heap::blocksMade(), before);
}

TEST(RegionAreaTest, IsForgottenWithTheVertices) {
  qcRegion region(square(0, 0, 2), keep);
  EXPECT_EQ(region.area(false), 4.0);
  region.points(square(0, 0, 3));
  EXPECT_EQ(region.area(false), 9.0);
  region = qcRegion(square(0, 0, 1), keep);
  EXPECT_EQ(region.area(true), 1.0);
}

TEST(RegionAreaTest, EveryHoleIsSubtracted) {
  const qcRegion region =
      regionWith(square(0, 0, 10), {handle(square(1, 1, 2)), handle(square(5, 5, 3))});
  EXPECT_EQ(region.area(false), 100.0);
  EXPECT_EQ(region.area(true), 100.0 - 4.0 - 9.0);
}

TEST(RegionAreaTest, HolesOfHolesAreNotAddedBack) {
  const qcRegion region =
      regionWith(square(0, 0, 10), {handle(square(1, 1, 4), {handle(square(2, 2, 1))})});
  EXPECT_EQ(region.area(true), 100.0 - 16.0);
}

TEST(RegionAreaTest, OverlappingHolesAreSubtractedTwice) {
  const qcRegion region =
      regionWith(square(0, 0, 10), {handle(square(1, 1, 4)), handle(square(1, 1, 4))});
  EXPECT_EQ(region.area(true), 100.0 - 32.0);
}

TEST(RegionAreaTest, ALargerHoleLeavesANegativeArea) {
  EXPECT_EQ(regionWith(square(0, 0, 1), {handle(square(-1, -1, 3))}).area(true), -8.0);
}

TEST(RegionAreaTest, WithoutHolesBothAreasAreTheSame) {
  const qcRegion region({{0.1, 0.2}, {3.7, 0.9}, {2.2, 5.1}}, keep);
  EXPECT_EQ(region.area(true), region.area(false));
}

TEST(RegionAreaTest, AHoleOfTwoVerticesThrowsEveryTime) {
  const qcRegion region =
      regionWith(square(0, 0, 10), {handle(square(1, 1, 2)), handle({{5, 5}, {6, 6}})});
  EXPECT_EQ(emptyContourOf([&] { region.area(true); }), L"");
  EXPECT_EQ(emptyContourOf([&] { region.area(true); }), L"");
  EXPECT_EQ(region.area(false), 100.0);
}

TEST(RegionAreaTest, ANullHoleThrowsEveryTime) {
  const qcRegion region = regionWithNullHole();
  ASSERT_EQ(region.holes().size(), 1U);
  EXPECT_THROW(region.area(true), qcBadPointer);
  EXPECT_THROW(region.area(true), qcBadPointer);
  EXPECT_EQ(region.area(false), 100.0);
}

TEST(RegionAreaTest, TheTwoAreasAreRememberedApart) {
  WatchedRegion region(square(0, 0, 10));
  EXPECT_EQ(region.area(false), 100.0);
  region.replaceBehindItsBack(square(0, 0, 5));
  EXPECT_EQ(region.area(false), 100.0);
  // Computed from the remembered area of the boundary.
  EXPECT_EQ(region.area(true), 100.0);
  region.points(square(0, 0, 5));
  EXPECT_EQ(region.area(true), 25.0);
  region.replaceBehindItsBack(square(0, 0, 2));
  EXPECT_EQ(region.area(true), 25.0);
  EXPECT_EQ(region.area(false), 25.0);
}

TEST(RegionAreaTest, AnAreaWithHolesIsThatOfBeforeWhenAHoleChanges) {
  const qcPtrHandle<qcRegion> hole(new qcRegion(square(1, 1, 2), keep));
  qcRegion region(square(0, 0, 10), keep);
  region.holes(Handles{hole});
  EXPECT_EQ(region.area(true), 96.0);
  hole->points(square(1, 1, 3));
  EXPECT_EQ(region.area(true), 96.0);
  region.points(square(0, 0, 10));
  EXPECT_EQ(region.area(true), 91.0);
}

TEST(RegionCenterTest, WithoutHolesItIsThatOfTheBoundary) {
  const qcRegion region = regionWith(square(1, 1, 2), {handle(square(1.5, 1.5, 0.5))});
  EXPECT_EQ(region.centerOfMass(false), qcVector<2>(2, 2));
  EXPECT_EQ(region.centerOfMass(false), qcVector<2>(2, 2));
}

TEST(RegionCenterTest, ARegionWithoutHolesAlwaysTellsTheTruth) {
  const qcRegion region(square(1, 1, 2), keep);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(region.centerOfMass(true), qcVector<2>(2, 2));
}

TEST(RegionCenterTest, WithHolesItIsTheWeightedDifferenceOnTheFirstCall) {
  const qcRegion region = squareWithHole();
  const qcVector<2> center = region.centerOfMass(true);
  EXPECT_NEAR(center.x(), (5 * 100.0 - 3 * 4.0) / 96.0, 1e-12);
  EXPECT_NEAR(center.y(), (5 * 100.0 - 3 * 4.0) / 96.0, 1e-12);
}

TEST(RegionCenterTest, WithHolesItIsTheOriginFromTheSecondCallOn) {
  const qcRegion region = squareWithHole();
  EXPECT_NE(region.centerOfMass(true), qcVector<2>());
  EXPECT_EQ(region.centerOfMass(true), qcVector<2>());
  EXPECT_EQ(region.centerOfMass(true), qcVector<2>());
  EXPECT_EQ(region.centerOfMass(false), qcVector<2>(5, 5));
}

TEST(RegionCenterTest, AfterAChangeTheFirstCallTellsTheTruthAgain) {
  qcRegion region = squareWithHole();
  const qcVector<2> center = region.centerOfMass(true);
  EXPECT_EQ(region.centerOfMass(true), qcVector<2>());
  region.points(square(0, 0, 10));
  EXPECT_EQ(region.centerOfMass(true), center);
  region.holes(Handles(region.holes()));
  EXPECT_EQ(region.centerOfMass(true), center);
}

TEST(RegionCenterTest, RefusedHolesMakeTheFirstCallTellTheTruthAgain) {
  qcRegion region = squareWithHole();
  const qcVector<2> center = region.centerOfMass(true);
  EXPECT_THROW(region.holes(Handles{Handle()}), qcBadPointer);
  EXPECT_EQ(region.centerOfMass(true), center);
}

TEST(RegionCenterTest, ACopyOfAnAskedRegionHasBeenAsked) {
  const qcRegion region = squareWithHole();
  const qcRegion before(region);
  const qcVector<2> center = region.centerOfMass(true);
  EXPECT_EQ(qcRegion(region).centerOfMass(true), qcVector<2>());
  EXPECT_EQ(before.centerOfMass(true), center);
}

TEST(RegionCenterTest, HolesAreWeightedByTheirOutlinesAlone) {
  const qcRegion plain = regionWith(square(0, 0, 10), {handle(square(1, 1, 4))});
  const qcRegion nested =
      regionWith(square(0, 0, 10), {handle(square(1, 1, 4), {handle(square(2, 2, 1))})});
  EXPECT_EQ(nested.centerOfMass(true), plain.centerOfMass(true));
}

TEST(RegionCenterTest, HolesThatLeaveNoAreaGiveNoNumber) {
  const qcVector<2> center =
      regionWith(square(0, 0, 2), {handle(square(5, 5, 2))}).centerOfMass(true);
  EXPECT_FALSE(std::isfinite(center.x()));
  EXPECT_FALSE(std::isfinite(center.y()));
}

TEST(RegionCenterTest, ACallThatThrowsDoesNotCountAsTheFirst) {
  qcPtrHandle<qcRegion> hole(new qcRegion(Points{{3, 3}, {4, 4}}, keep));
  const Handle holeAsHeld = hole;
  qcRegion region(square(0, 0, 10), keep);
  region.holes(Handles{holeAsHeld});
  EXPECT_EQ(emptyContourOf([&] { region.centerOfMass(true); }), L"");
  EXPECT_EQ(emptyContourOf([&] { region.centerOfMass(true); }), L"");
  hole->points(square(2, 2, 2));
  EXPECT_EQ(region.centerOfMass(true), squareWithHole().centerOfMass(true));
}

TEST(RegionCenterTest, ANullHoleThrowsEveryTime) {
  const qcRegion region = regionWithNullHole();
  EXPECT_THROW(region.centerOfMass(true), qcBadPointer);
  EXPECT_THROW(region.centerOfMass(true), qcBadPointer);
  EXPECT_EQ(region.centerOfMass(false), qcVector<2>(5, 5));
}

TEST(RegionCenterTest, SliversHaveTheirCenterAtTheOrigin) {
  // Twice the area is at most 1e-6.
  EXPECT_EQ(qcRegion({{5, 5}, {6, 5}, {5.5, 5.0000005}}, keep).centerOfMass(false), qcVector<2>());
}

TEST(RegionInertiaTest, OfTheUnitSquareIsATwelfth) {
  const qcRegion region(square(0, 0, 1), keep);
  for (const bool holes : {false, true}) {
    const qcMatrix<2> inertia = region.inertiaMatrix(holes);
    EXPECT_NEAR(inertia.element(0, 0), 1.0 / 12, 1e-15);
    EXPECT_NEAR(inertia.element(1, 1), 1.0 / 12, 1e-15);
    EXPECT_NEAR(inertia.element(0, 1), 0.0, 1e-15);
  }
}

TEST(RegionInertiaTest, ItIsThatOfThePolygon) {
  const Points points = {{0, 0}, {7, 1}, {5, 6}, {2, 4}};
  const qcMatrix<2> expected = qf_InertiaDataPolygon(points).inertiaMatrix();
  const qcMatrix<2> inertia = qcRegion(points, keep).inertiaMatrix(false);
  EXPECT_EQ(inertia, expected);
  EXPECT_EQ(inertia.det(), expected.det());
}

TEST(RegionInertiaTest, HolesAreRefused) {
  const qcRegion region = squareWithHole();
  EXPECT_EQ(badParamsOf([&] { region.inertiaMatrix(true); }),
            L"inertiaMatrix(considerHoles) is not implemented");
  EXPECT_EQ(region.inertiaMatrix(false), qcRegion(square(0, 0, 10), keep).inertiaMatrix(false));
  EXPECT_EQ(badParamsOf([&] { region.inertiaMatrix(true); }),
            L"inertiaMatrix(considerHoles) is not implemented");
}

TEST(RegionInertiaTest, ANullHoleIsRefusedAsAHole) {
  EXPECT_EQ(badParamsOf([] { regionWithNullHole().inertiaMatrix(true); }),
            L"inertiaMatrix(considerHoles) is not implemented");
}

TEST(RegionInertiaTest, TooFewVerticesComeBeforeHoles) {
  qcRegion region = squareWithHole();
  region.points({{0, 0}, {1, 1}});
  EXPECT_EQ(emptyContourOf([&] { region.inertiaMatrix(true); }), L"");
  EXPECT_EQ(emptyContourOf([&] { region.centerOfMass(true); }), L"");
}

TEST(RegionInertiaTest, ItIsRemembered) {
  WatchedRegion region(square(0, 0, 1));
  const qcMatrix<2> first = region.inertiaMatrix(true);
  const qcVector<2> center = region.centerOfMass(true);
  region.replaceBehindItsBack(square(0, 0, 3));
  EXPECT_EQ(region.inertiaMatrix(false), first);
  EXPECT_EQ(region.centerOfMass(false), center);
  region.points(square(0, 0, 3));
  EXPECT_NEAR(region.inertiaMatrix(false).element(0, 0), 81.0 / 12, 1e-12);
  EXPECT_EQ(region.centerOfMass(false), qcVector<2>(1.5, 1.5));
}

TEST(RegionInertiaTest, WithHolesItIsComposedFromTheOutlines) {
  // What the region's public comment tells callers to do.
  const qc_InertiaData outline(100.0, {5, 5},
                               qcRegion(square(0, 0, 10), keep).inertiaMatrix(false));
  const qc_InertiaData hole(-4.0, {5, 5}, qcRegion(square(4, 4, 2), keep).inertiaMatrix(false));
  const qc_InertiaData frame = outline + hole;
  EXPECT_NEAR(frame.inertiaMatrix().element(0, 0), (10000.0 - 16.0) / 12, 1e-9);
  EXPECT_EQ(frame.area(), 96.0);
}

}  // namespace
