// SPDX-License-Identifier: MIT
//
// The region set's measures and queries, made from those of its regions.

#include <cmath>

#include <cntr/inertia.h>
#include <cntr/regionst.h>
#include <gtest/gtest.h>

#include "region_fixtures.h"

namespace {

using namespace fixtures;

/// The message of the EmptyRegionSet that `act` throws.
template <class Act>
std::wstring emptySetOf(Act act) {
  try {
    act();
  } catch (const qcContourDefs::EmptyRegionSet& error) {
    EXPECT_EQ(error.errorNumber(), 0x10004682);
    return error.message();
  }
  return L"no EmptyRegionSet was thrown";
}

qcXform<2> shift(double x) { return qcXform<2>(qcMatrix<2>(), qcVector<2>(x, 0)); }

TEST(RegionSetMeasuresTest, AnEmptySetHasAreaZeroAndHoldsNoPoint) {
  const qcRegionSet set = setOf({});
  EXPECT_EQ(set.area(true), 0.0);
  EXPECT_EQ(set.area(false), 0.0);
  EXPECT_FALSE(set.inside({0, 0}, true));
  EXPECT_FALSE(set.isSelfIntersecting());
}

TEST(RegionSetMeasuresTest, AnEmptySetHasNoOtherMeasure) {
  const qcRegionSet set = setOf({});
  for (const bool holes : {false, true}) {
    EXPECT_EQ(emptySetOf([&] { set.centerOfMass(holes); }), L"");
    EXPECT_EQ(emptySetOf([&] { set.inertiaMatrix(holes); }), L"");
    EXPECT_EQ(emptySetOf([&] { set.distToPoint({0, 0}, false, holes, true); }), L"");
  }
  EXPECT_EQ(emptySetOf([&] { set.encloseRect(qcXform<2>::I); }), L"");
}

TEST(RegionSetMeasuresTest, EmptinessIsCheckedBeforeWhatIsRemembered) {
  WatchedSet set({handle(square(0, 0, 2))});
  EXPECT_EQ(set.centerOfMass(false), qcVector<2>(1, 1));
  set.inertiaMatrix(false);
  set.encloseRect(qcXform<2>::I);
  EXPECT_EQ(set.area(false), 4.0);
  set.replaceBehindItsBack({});
  EXPECT_EQ(emptySetOf([&] { set.centerOfMass(false); }), L"");
  EXPECT_EQ(emptySetOf([&] { set.inertiaMatrix(false); }), L"");
  EXPECT_EQ(emptySetOf([&] { set.encloseRect(qcXform<2>::I); }), L"");
  EXPECT_EQ(set.area(false), 4.0);
}

TEST(RegionSetMeasuresTest, ANullHandleThrowsAtFirstUse) {
  const qcRegionSet set = setOf({Handle()});
  EXPECT_THROW(set.area(true), qcBadPointer);
  EXPECT_THROW(set.centerOfMass(false), qcBadPointer);
  EXPECT_THROW(set.inertiaMatrix(false), qcBadPointer);
  EXPECT_THROW(set.inside({0, 0}, true), qcBadPointer);
  EXPECT_THROW(set.distToPoint({0, 0}, false, true, true), qcBadPointer);
  EXPECT_THROW(set.encloseRect(qcXform<2>::I), qcBadPointer);
  EXPECT_THROW(set.isSelfIntersecting(), qcBadPointer);
}

TEST(RegionSetMeasuresTest, RegionsOfFewVerticesThrow) {
  for (const Points& points : {Points(), Points{{1, 1}}, Points{{1, 1}, {2, 2}}}) {
    const qcRegionSet set = setOf({handle(square(0, 0, 5)), handle(points)});
    EXPECT_EQ(emptyContourOf([&] { set.area(true); }), L"");
    EXPECT_EQ(emptyContourOf([&] { set.centerOfMass(false); }), L"");
    EXPECT_EQ(emptyContourOf([&] { set.inertiaMatrix(false); }), L"");
  }
}

TEST(RegionSetMeasuresTest, RegionsOfOneVertexCannotBeAskedForPoints) {
  const qcRegionSet set = setOf({handle(square(0, 0, 5)), handle({{9, 9}})});
  EXPECT_EQ(emptyContourOf([&] { set.inside({8, 8}, true); }), L"");
  EXPECT_EQ(emptyContourOf([&] { set.distToPoint({8, 8}, true, true, true); }), L"");
  EXPECT_EQ(emptyContourOf([&] { set.encloseRect(qcXform<2>::I); }), L"");
  // The first region decides.
  EXPECT_TRUE(set.inside({1, 1}, true));
}

TEST(RegionSetMeasuresTest, RegionsOfTwoVerticesHoldTheirVerticesAlone) {
  const qcRegionSet set = setOf({handle({{0, 0}, {4, 0}})});
  EXPECT_TRUE(set.inside({4, 0}, true));
  EXPECT_FALSE(set.inside({2, 0.5}, true));
  EXPECT_EQ(set.distToPoint({2, 3}, false, true, true), 3.0);
  EXPECT_EQ(set.encloseRect(qcXform<2>::I).lr(), qcVector<2>(4, 0));
  EXPECT_FALSE(set.isSelfIntersecting());
}

TEST(RegionSetAreaTest, TheAreasAreAddedUp) {
  const qcRegionSet set = setOf({handle(square(0, 0, 3)), handle(square(1, 1, 2))});
  EXPECT_EQ(set.area(false), 13.0);
}

TEST(RegionSetAreaTest, HolesCountWhenAskedFor) {
  const qcRegionSet set =
      setOf({handle(square(0, 0, 3), {handle(square(1, 1, 1))}), handle(square(5, 5, 2))});
  EXPECT_EQ(set.area(true), 12.0);
  EXPECT_EQ(set.area(false), 13.0);
}

TEST(RegionSetAreaTest, NegativeAreasAreNotMadePositive) {
  const qcRegionSet set = setOf({handle(square(0, 0, 1), {handle(square(-1, -1, 3))})});
  EXPECT_EQ(set.area(true), -8.0);
}

TEST(RegionSetAreaTest, TheTwoAreasAreRememberedApart) {
  WatchedSet set({handle(square(0, 0, 2))});
  EXPECT_EQ(set.area(true), 4.0);
  set.replaceBehindItsBack({handle(square(0, 0, 3))});
  EXPECT_EQ(set.area(true), 4.0);
  EXPECT_EQ(set.area(false), 9.0);
}

TEST(RegionSetAreaTest, AFailureIsNotRemembered) {
  WatchedSet set({Handle()});
  EXPECT_THROW(set.area(true), qcBadPointer);
  EXPECT_THROW(set.centerOfMass(true), qcBadPointer);
  EXPECT_THROW(set.inertiaMatrix(true), qcBadPointer);
  EXPECT_THROW(set.encloseRect(qcXform<2>::I), qcBadPointer);
  set.replaceBehindItsBack({handle(square(0, 0, 2))});
  EXPECT_EQ(set.area(true), 4.0);
  EXPECT_EQ(set.centerOfMass(true), qcVector<2>(1, 1));
  EXPECT_NEAR(set.inertiaMatrix(true).element(0, 0), 16.0 / 12, 1e-12);
  EXPECT_EQ(set.encloseRect(qcXform<2>::I).lr(), qcVector<2>(2, 2));
}

TEST(RegionSetCenterTest, CentersAreWeightedByArea) {
  const qcRegionSet set = setOf({handle(square(0, 0, 2)), handle(square(10, 0, 4))});
  const qcVector<2> center = set.centerOfMass(false);
  EXPECT_NEAR(center.x(), (1 * 4.0 + 12 * 16.0) / 20, 1e-12);
  EXPECT_NEAR(center.y(), (1 * 4.0 + 2 * 16.0) / 20, 1e-12);
}

TEST(RegionSetCenterTest, AreasThatCancelOutHaveTheirCenterAtTheOrigin) {
  const qcRegionSet set = setOf(
      {handle(square(5, 5, 1)), handle(square(20, 20, 1), {handle(rectangle(30, 30, 2, 1))})});
  EXPECT_EQ(set.area(true), 0.0);
  EXPECT_EQ(set.centerOfMass(true), qcVector<2>());
  EXPECT_NE(set.centerOfMass(false), qcVector<2>());
}

TEST(RegionSetCenterTest, AnAreaOf1e15thOrLessIsNone) {
  // A region of area 1 whose hole leaves 2^-52 or 2^-46 of it.
  const auto centerWithRest = [](double rest) {
    const Handle region = handle(square(2, 2, 1), {handle(rectangle(0, 0, 1, 1 - rest))});
    EXPECT_EQ(region->area(true), rest);
    return setOf({region}).centerOfMass(true);
  };
  EXPECT_EQ(centerWithRest(0x1p-52), qcVector<2>());
  EXPECT_NE(centerWithRest(0x1p-46), qcVector<2>());
}

TEST(RegionSetCenterTest, WithHolesEveryRegionTellsTheTruthOnce) {
  const Handle frame = handle(square(0, 0, 10), {handle(square(2, 2, 2))});
  const qcVector<2> truth = qcRegion(*frame).centerOfMass(true);
  const qcRegionSet first = setOf({frame});
  const qcRegionSet second = setOf({frame});
  EXPECT_NEAR(first.centerOfMass(true).x(), truth.x(), 1e-12);
  // The set remembers what its region no longer knows.
  EXPECT_NEAR(first.centerOfMass(true).x(), truth.x(), 1e-12);
  EXPECT_EQ(second.centerOfMass(true), qcVector<2>());
}

TEST(RegionSetCenterTest, TheTwoCentersAreRememberedApart) {
  WatchedSet set({handle(square(0, 0, 2))});
  EXPECT_EQ(set.centerOfMass(true), qcVector<2>(1, 1));
  set.replaceBehindItsBack({handle(square(0, 0, 6))});
  EXPECT_EQ(set.centerOfMass(true), qcVector<2>(1, 1));
  EXPECT_EQ(set.centerOfMass(false), qcVector<2>(3, 3));
}

TEST(RegionSetInertiaTest, BodiesAreAddedInOrderAboutTheirCommonCenter) {
  const Handles regions = {handle(square(0, 0, 2)), handle(square(10, 0, 4)),
                           handle(rectangle(3, 9, 1, 5))};
  qc_InertiaData sum;
  for (const Handle& region : regions) {
    sum = sum + qc_InertiaData(region->area(false), region->centerOfMass(false),
                               region->inertiaMatrix(false));
  }
  for (const bool holes : {false, true}) {
    EXPECT_EQ(setOf(regions).inertiaMatrix(holes), sum.inertiaMatrix());
    EXPECT_EQ(setOf(regions).inertiaMatrix(holes).det(), sum.inertiaMatrix().det());
  }
}

TEST(RegionSetInertiaTest, TwoHalvesHaveTheInertiaOfTheWhole) {
  const qcMatrix<2> halves =
      setOf({handle(rectangle(0, 0, 1, 2)), handle(rectangle(1, 0, 1, 2))}).inertiaMatrix(false);
  const qcMatrix<2> whole = setOf({handle(square(0, 0, 2))}).inertiaMatrix(false);
  EXPECT_NEAR(halves.element(0, 0), whole.element(0, 0), 1e-12);
  EXPECT_NEAR(halves.element(1, 1), whole.element(1, 1), 1e-12);
  EXPECT_NEAR(halves.element(0, 1), 0.0, 1e-12);
}

TEST(RegionSetInertiaTest, HolesAreRefusedAsByTheRegion) {
  const qcRegionSet set =
      setOf({handle(square(20, 20, 2)), Handle(new qcRegion(squareWithHole()))});
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(badParamsOf([&] { set.inertiaMatrix(true); }),
              L"inertiaMatrix(considerHoles) is not implemented");
  }
  EXPECT_NO_THROW(set.inertiaMatrix(false));
}

TEST(RegionSetInertiaTest, TheTwoMatricesAreRememberedApart) {
  WatchedSet set({handle(square(0, 0, 2))});
  const qcMatrix<2> before = set.inertiaMatrix(false);
  set.replaceBehindItsBack({handle(square(0, 0, 6))});
  EXPECT_EQ(set.inertiaMatrix(false), before);
  EXPECT_NE(set.inertiaMatrix(true), before);
}

TEST(RegionSetInsideTest, APointIsInsideWhenAnyRegionHoldsIt) {
  const qcRegionSet set = setOf({handle(square(0, 0, 2)), handle(square(5, 5, 2))});
  EXPECT_TRUE(set.inside({1, 1}, true));
  EXPECT_TRUE(set.inside({6, 6}, true));
  EXPECT_FALSE(set.inside({3, 3}, true));
}

TEST(RegionSetInsideTest, TheFlagIsPassedOn) {
  const qcRegionSet set = setOf({Handle(new qcRegion(squareWithHole()))});
  EXPECT_FALSE(set.inside({3, 3}, true));
  EXPECT_TRUE(set.inside({3, 3}, false));
}

TEST(RegionSetInsideTest, ARegionInTheHoleOfAnotherCounts) {
  const qcRegionSet set =
      setOf({Handle(new qcRegion(squareWithHole())), handle(square(2.5, 2.5, 1))});
  EXPECT_TRUE(set.inside({3, 3}, true));
}

TEST(RegionSetInsideTest, TheFirstRegionThatHoldsThePointEndsTheSearch) {
  const qcRegionSet set = setOf({handle(square(0, 0, 2)), Handle()});
  EXPECT_TRUE(set.inside({1, 1}, true));
  EXPECT_THROW(set.inside({3, 3}, true), qcBadPointer);
}

TEST(RegionSetDistanceTest, ItIsTheSmallestOfTheRegions) {
  const qcRegionSet set = setOf({handle(square(0, 0, 2)), handle(square(5, 0, 2))});
  EXPECT_EQ(set.distToPoint({4, 1}, false, true, true), 1.0);
  EXPECT_EQ(set.distToPoint({2.5, 1}, false, true, true), 0.5);
  EXPECT_EQ(set.distToPoint({4, 1}, true, true, true), std::sqrt(2.0));
}

TEST(RegionSetDistanceTest, TheFlagsArePassedOn) {
  const qcRegionSet set = setOf({Handle(new qcRegion(squareWithHole()))});
  EXPECT_EQ(set.distToPoint({2.5, 3}, false, true, true), 0.5);
  EXPECT_EQ(set.distToPoint({2.5, 3}, false, false, true), 0.0);
  EXPECT_EQ(set.distToPoint({2.5, 3}, true, false, false), std::sqrt(2.5 * 2.5 + 9));
  EXPECT_EQ(set.distToPoint({6, 6}, true, true, false), std::sqrt(8.0));
  EXPECT_EQ(set.distToPoint({6, 6}, true, true, true), 0.0);
}

TEST(RegionSetDistanceTest, WithoutANumberItIsInfinite) {
  EXPECT_EQ(setOf({handle(square(0, 0, 2))}).distToPoint({std::nan(""), 1}, true, true, false),
            HUGE_VAL);
}

TEST(RegionSetCrossingTest, ARegionThatCrossesItselfCounts) {
  EXPECT_TRUE(setOf({handle(square(10, 10, 1)), handle(bowTie())}).isSelfIntersecting());
  EXPECT_TRUE(setOf({handle(bowTie())}).isSelfIntersecting());
}

TEST(RegionSetCrossingTest, RegionsThatCrossCount) {
  EXPECT_TRUE(setOf({handle(square(0, 0, 4)), handle(square(9, 9, 4)), handle(square(3, 1, 4))})
                  .isSelfIntersecting());
  EXPECT_TRUE(setOf({handle(square(9, 9, 4)), handle(square(0, 0, 4)), handle(square(3, 1, 4))})
                  .isSelfIntersecting());
}

TEST(RegionSetCrossingTest, RegionsThatTouchCount) {
  EXPECT_TRUE(setOf({handle(square(0, 0, 2)), handle(square(2, 2, 2))}).isSelfIntersecting());
  EXPECT_TRUE(setOf({handle(square(0, 0, 2)), handle(square(2, 0, 2))}).isSelfIntersecting());
}

TEST(RegionSetCrossingTest, ARegionInsideAnotherDoesNotCount) {
  EXPECT_FALSE(setOf({handle(square(0, 0, 9)), handle(square(2, 2, 2))}).isSelfIntersecting());
  EXPECT_FALSE(setOf({Handle(new qcRegion(squareWithHole())), handle(square(2.5, 2.5, 1))})
                   .isSelfIntersecting());
}

TEST(RegionSetCrossingTest, HolesAreNotExamined) {
  EXPECT_FALSE(setOf({Handle(new qcRegion(squareWithHole())), handle(square(3, 3, 3))})
                   .isSelfIntersecting());
  EXPECT_FALSE(setOf({handle(square(0, 0, 10), {handle({{2, 2}, {4, 4}, {4, 2}, {2, 4}})})})
                   .isSelfIntersecting());
}

TEST(RegionSetCrossingTest, TheSameRegionTwiceTouchesItself) {
  const Handle region = handle(square(0, 0, 2));
  EXPECT_TRUE(setOf({region, region}).isSelfIntersecting());
}

TEST(RegionSetCrossingTest, TheAnswerIsRemembered) {
  WatchedSet set({handle(square(0, 0, 2))});
  EXPECT_FALSE(set.isSelfIntersecting());
  set.replaceBehindItsBack({handle(bowTie())});
  EXPECT_FALSE(set.isSelfIntersecting());
  set.regions({handle(bowTie())}, keep);
  EXPECT_TRUE(set.isSelfIntersecting());
  set.replaceBehindItsBack({handle(square(0, 0, 2))});
  EXPECT_TRUE(set.isSelfIntersecting());
}

TEST(RegionSetCrossingTest, AfterAnExceptionTheAnswerIsFalse) {
  const qcRegionSet set = setOf({handle({{1, 1}}), handle(square(0, 0, 2))});
  EXPECT_EQ(emptyContourOf([&] { set.isSelfIntersecting(); }), L"");
  EXPECT_FALSE(set.isSelfIntersecting());
  const qcRegionSet withNull = setOf({handle(square(0, 0, 2)), Handle()});
  EXPECT_THROW(withNull.isSelfIntersecting(), qcBadPointer);
  EXPECT_FALSE(withNull.isSelfIntersecting());
}

TEST(RegionSetCrossingTest, AfterAnExceptionACrossingRegionIsRemembered) {
  const qcRegionSet set = setOf({handle(bowTie()), handle({{9, 9}}), handle(square(20, 0, 2))});
  EXPECT_EQ(emptyContourOf([&] { set.isSelfIntersecting(); }), L"");
  EXPECT_TRUE(set.isSelfIntersecting());
}

TEST(RegionSetCrossingTest, TheNoticeIsSentThoughTheComputationThrows) {
  qcRegionSet set = setOf({handle({{1, 1}}), handle(square(0, 0, 2))});
  EXPECT_EQ(noticesOf(set, [&] { emptyContourOf([&] { set.isSelfIntersecting(); }); }), 1U);
}

TEST(RegionSetCrossingTest, ALastRegionOfOneVertexIsNotAsked) {
  EXPECT_FALSE(setOf({handle(square(0, 0, 2)), handle({{1, 1}})}).isSelfIntersecting());
  EXPECT_FALSE(setOf({handle(square(0, 0, 2)), handle({})}).isSelfIntersecting());
  EXPECT_FALSE(setOf({handle({{1, 1}})}).isSelfIntersecting());
}

TEST(RegionSetRectTest, ItHoldsAllOuterBoundaries) {
  const qcRegionSet set = setOf({handle(square(0, 0, 2)), handle(square(-3, 4, 1)),
                                 handle(square(7, -5, 2), {handle(square(50, 50, 9))})});
  EXPECT_EQ(set.encloseRect(qcXform<2>::I), qcRect(qcPoint({-3, -5}), qcPoint({9, 5})));
}

TEST(RegionSetRectTest, TheTransformIsAppliedToTheVertices) {
  const qcXform<2> quarterTurn(qcMatrix<2>(0, -1, 1, 0), qcVector<2>(100, 0));
  EXPECT_EQ(
      setOf({handle(rectangle(0, 0, 4, 1)), handle(square(6, 0, 1))}).encloseRect(quarterTurn),
      qcRect(qcPoint({99, 0}), qcPoint({100, 7})));
}

/// Ten squares in a row, enough for an index, the last of which may be another region.
Handles rowOfTen(const Handle& last) {
  Handles row;
  for (int i = 0; i < 9; ++i) row.push_back(handle(square(10.0 * i, 0, 4)));
  row.push_back(last);
  return row;
}

TEST(ManyRegionsTest, AnswersAreThoseOfTheRegionsNear) {
  const qcRegionSet set = setOf(rowOfTen(handle(square(90, 0, 4))));
  for (int i = 0; i < 10; ++i) {
    EXPECT_TRUE(set.inside({10.0 * i + 1, 1}, true));
    EXPECT_FALSE(set.inside({10.0 * i + 5, 1}, true));
    EXPECT_EQ(set.distToPoint({10.0 * i + 6, 2}, false, true, true), 2.0);
    EXPECT_EQ(set.distToPoint({10.0 * i + 1, 2}, false, true, true), 0.0);
  }
  EXPECT_FALSE(set.isSelfIntersecting());
}

TEST(ManyRegionsTest, OneThatCrossesAnotherIsFound) {
  for (int i = 0; i < 9; ++i) {
    EXPECT_TRUE(setOf(rowOfTen(handle(square(10.0 * i + 3, 1, 4)))).isSelfIntersecting());
    EXPECT_FALSE(setOf(rowOfTen(handle(square(10.0 * i + 1, 1, 1)))).isSelfIntersecting());
  }
}

TEST(ManyRegionsTest, ANullHandleIsMetInOrder) {
  const qcRegionSet set = setOf(rowOfTen(Handle()));
  EXPECT_TRUE(set.inside({1, 1}, true));
  EXPECT_THROW(set.inside({5, 1}, true), qcBadPointer);
  EXPECT_THROW(set.distToPoint({1, 1}, false, true, true), qcBadPointer);
  EXPECT_THROW(set.isSelfIntersecting(), qcBadPointer);
}

TEST(ManyRegionsTest, ARegionOfOneVertexIsMetInOrder) {
  const qcRegionSet set = setOf(rowOfTen(handle({{500, 500}})));
  EXPECT_TRUE(set.inside({1, 1}, true));
  EXPECT_EQ(emptyContourOf([&] { set.inside({5, 1}, true); }), L"");
  EXPECT_EQ(emptyContourOf([&] { set.distToPoint({1, 1}, false, true, false); }), L"");
}

TEST(ManyRegionsTest, ANullHoleIsMetByDistancesEvenFarAway) {
  const qcRegionSet set = setOf(rowOfTen(Handle(new qcRegion(regionWithNullHole()))));
  EXPECT_THROW(set.distToPoint({80, 50}, false, false, false), qcBadPointer);
  EXPECT_FALSE(set.inside({85, 1}, true));
}

TEST(ManyRegionsTest, AHoleFarFromItsBoundaryIsNearest) {
  const qcRegionSet set =
      setOf(rowOfTen(handle(square(90, 0, 4), {handle(square(1000, 1000, 1))})));
  EXPECT_EQ(set.distToPoint({1003, 1000}, false, true, false), 2.0);
  EXPECT_EQ(set.distToPoint({1003, 1000}, true, true, false), 2.0);
  EXPECT_GT(set.distToPoint({1003, 1000}, true, false, false), 900.0);
}

TEST(ManyRegionsTest, AnAddedRegionIsFound) {
  qcRegionSet set = setOf(rowOfTen(handle(square(90, 0, 4))));
  EXPECT_FALSE(set.inside({201, 1}, true));
  EXPECT_EQ(set.distToPoint({201, 1}, true, true, false),
            set.distToPoint({201, 1}, true, true, true));
  set.add(handle(square(200, 0, 4)), keep);
  EXPECT_TRUE(set.inside({201, 1}, true));
  EXPECT_EQ(set.distToPoint({206, 1}, false, true, true), 2.0);
}

/// How many of the rectangles under shifts by 0, 1, ... are remembered: a copy is asked for each.
int rememberedOf(const qcRegionSet& set, int count) {
  int remembered = 0;
  for (int i = 0; i < count; ++i) {
    qcRegionSet copy(set);
    if (noticesOf(copy, [&] { copy.encloseRect(shift(i)); }) == 0) ++remembered;
  }
  return remembered;
}

TEST(RegionSetRectTest, OneRectangleMoreThanTheCapacityIsRemembered) {
  qcRegionSet set = setOf({handle(square(0, 0, 2))});
  for (int i = 0; i < 10; ++i) {
    EXPECT_EQ(set.encloseRect(shift(i)).lr(), qcVector<2>(2 + i, 2));
    EXPECT_EQ(rememberedOf(set, i + 1), std::min(i + 1, 4));
    EXPECT_EQ(noticesOf(set, [&] { set.encloseRect(shift(i)); }), 0U) << "the newest is there";
  }
}

TEST(RegionSetRectTest, WithCapacityZeroOneRectangleIsRemembered) {
  qcRegionSet set = setOf({handle(square(0, 0, 2))});
  set.cachedVectorSize(0);
  for (int i = 0; i < 4; ++i) {
    set.encloseRect(shift(i));
    EXPECT_EQ(rememberedOf(set, i + 1), 1);
  }
}

TEST(RegionSetRectTest, ALowerCapacityDoesNotTrim) {
  qcRegionSet set = setOf({handle(square(0, 0, 2))});
  for (int i = 0; i < 4; ++i) set.encloseRect(shift(i));
  set.cachedVectorSize(0);
  EXPECT_EQ(rememberedOf(set, 4), 4);
  set.encloseRect(shift(4));
  EXPECT_EQ(rememberedOf(set, 5), 4);
  set.cachedVectorSize(6);
  for (int i = 5; i < 9; ++i) set.encloseRect(shift(i));
  EXPECT_EQ(rememberedOf(set, 9), 7);
}

TEST(RegionSetRectTest, TransformsThatDifferInTheLastBitAreKeptApart) {
  qcRegionSet set = setOf({handle(square(0, 0, 2))});
  set.encloseRect(shift(1));
  EXPECT_EQ(noticesOf(set, [&] { set.encloseRect(shift(std::nextafter(1, 2))); }), 1U);
}

TEST(RegionSetRectTest, ATransformThatIsNotANumberIsNotRemembered) {
  qcRegionSet set = setOf({handle(square(0, 0, 2))});
  set.encloseRect(shift(std::nan("")));
  EXPECT_EQ(noticesOf(set, [&] { set.encloseRect(shift(std::nan(""))); }), 1U);
}

TEST(RegionSetCrossingTest, RegionsOneInTheOtherDoNotCross) {
  Handles regions;
  for (int i = 0; i < 100; ++i) regions.push_back(handle(square(i, i, 300 - 2 * i)));
  EXPECT_FALSE(setOf(regions).isSelfIntersecting());
  regions.push_back(handle(square(140, 95, 20)));
  EXPECT_TRUE(setOf(regions).isSelfIntersecting());
}

}  // namespace
