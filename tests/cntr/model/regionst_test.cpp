// SPDX-License-Identifier: MIT
//
// The region set's model: construction, copying, contents, comparison, drawing, change notices. Its
// measures and repair are tested in files of their own, its record in region_archive_test.cpp.

#include <functional>

#include <cntr/regionst.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/display/recordingtablet.h>

#include "region_fixtures.h"

namespace {

using namespace fixtures;
using testing::ElementsAre;
using testing::IsEmpty;

using ChangeableHandles = std::vector<qcPtrHandle<qcRegion>>;

/// Two squares that cross: their outer hull is one region.
Handles crossingPair() { return {handle(square(0, 0, 4)), handle(square(3, 1, 4))}; }

TEST(RegionSetTest, AnEmptySetIsAccepted) {
  const qcRegionSet set(Handles(), keep);
  EXPECT_THAT(set.regions(), IsEmpty());
  EXPECT_EQ(set.cachedVectorSize(), 3);
  EXPECT_THAT(qcRegionSet(Handles(), qcContourDefs::eOuterHull).regions(), IsEmpty());
  EXPECT_THAT(qcRegionSet(ChangeableHandles(), qcContourDefs::eRegularize).regions(), IsEmpty());
}

TEST(RegionSetTest, RegionsAreSharedInTheGivenOrder) {
  const Handles regions = {handle(square(0, 0, 1)), handle(square(5, 5, 1)),
                           handle(square(2, 2, 1))};
  EXPECT_EQ(qcRegionSet(regions, keep).regions(), regions);
}

TEST(RegionSetTest, HandlesThatMayChangeTheirRegionsAreSharedToo) {
  const ChangeableHandles regions = {qcPtrHandle<qcRegion>(new qcRegion(square(0, 0, 1), keep)),
                                     qcPtrHandle<qcRegion>(new qcRegion(square(5, 5, 1), keep))};
  qcRegionSet set(regions, keep);
  ASSERT_EQ(set.regions().size(), 2U);
  EXPECT_EQ(set.regions()[0].get(), regions[0].get());
  EXPECT_EQ(set.regions()[1].get(), regions[1].get());
  set.regions(ChangeableHandles{regions[1]}, keep);
  EXPECT_EQ(set.regions(), Handles{regions[1]});
}

TEST(RegionSetTest, OverlapsAreKeptWithoutRepair) {
  const Handles regions = crossingPair();
  EXPECT_EQ(qcRegionSet(regions, keep).regions(), regions);
}

TEST(RegionSetTest, ConstructionAppliesTheMode) {
  const qcRegionSet set(crossingPair(), keep);
  qcRegionSet expected(Handles(), keep);
  set.outerHull(expected);
  ASSERT_EQ(expected.regions().size(), 1U);
  EXPECT_TRUE(qcRegionSet(crossingPair(), qcContourDefs::eOuterHull) == expected);
  set.regularize(expected);
  EXPECT_TRUE(qcRegionSet(crossingPair(), qcContourDefs::eRegularize) == expected);
}

TEST(RegionSetTest, TheTwoModesDiffer) {
  const Handles eight = {handle(bowTie())};
  EXPECT_FALSE(qcRegionSet(eight, qcContourDefs::eOuterHull) ==
               qcRegionSet(eight, qcContourDefs::eRegularize));
}

TEST(RegionSetTest, AnyOtherModeRepairsNothing) {
  const Handles regions = crossingPair();
  for (const int mode : {3, -1, 77}) {
    const auto unknown = static_cast<qcContourDefs::IntersectionMode>(mode);
    qcRegionSet set(regions, unknown);
    EXPECT_EQ(set.regions(), regions);
    set.regions(regions, unknown);
    EXPECT_EQ(set.regions(), regions);
    set.add(regions[0], unknown);
    EXPECT_EQ(set.regions().size(), 3U);
  }
}

TEST(RegionSetTest, ReplacingTheRegionsAppliesTheMode) {
  qcRegionSet set({handle(square(50, 50, 1))}, keep);
  set.regions(crossingPair(), qcContourDefs::eOuterHull);
  EXPECT_TRUE(set == qcRegionSet(crossingPair(), qcContourDefs::eOuterHull));
  set.regions(crossingPair(), qcContourDefs::eRegularize);
  EXPECT_TRUE(set == qcRegionSet(crossingPair(), qcContourDefs::eRegularize));
  set.regions(ChangeableHandles{qcPtrHandle<qcRegion>(new qcRegion(bowTie(), keep))},
              qcContourDefs::eRegularize);
  EXPECT_EQ(set.regions()[0]->points(), qcRegion(bowTie(), qcContourDefs::eRegularize).points());
}

TEST(RegionSetTest, ReplacingTheRegionsForgetsTheAnswers) {
  qcRegionSet set({handle(square(0, 0, 2))}, keep);
  EXPECT_EQ(set.area(false), 4.0);
  EXPECT_EQ(set.encloseRect(qcXform<2>::I).lr(), qcVector<2>(2, 2));
  set.regions(Handles{handle(square(0, 0, 3))}, keep);
  EXPECT_EQ(set.area(false), 9.0);
  EXPECT_EQ(set.encloseRect(qcXform<2>::I).lr(), qcVector<2>(3, 3));
}

TEST(RegionSetTest, AnAddedRegionComesLast) {
  qcRegionSet set({handle(square(0, 0, 1))}, keep);
  const Handle added = handle(square(0.5, 0.5, 1));
  set.add(added, keep);
  ASSERT_EQ(set.regions().size(), 2U);
  EXPECT_EQ(set.regions()[1], added);
}

TEST(RegionSetTest, AddingForgetsTheAnswers) {
  qcRegionSet set({handle(square(0, 0, 2))}, keep);
  EXPECT_EQ(set.area(false), 4.0);
  EXPECT_EQ(set.area(true), 4.0);
  EXPECT_EQ(set.centerOfMass(false), qcVector<2>(1, 1));
  EXPECT_FALSE(set.isSelfIntersecting());
  set.add(handle(square(1, 1, 2)), keep);
  EXPECT_EQ(set.area(false), 8.0);
  EXPECT_EQ(set.area(true), 8.0);
  EXPECT_EQ(set.centerOfMass(false), qcVector<2>(1.5, 1.5));
  EXPECT_TRUE(set.isSelfIntersecting());
}

TEST(RegionSetTest, AddingWithAModeRebuildsTheWholeSet) {
  const Handles together = {handle(square(0, 0, 4)),
                            handle({{20, 20}, {22, 22}, {22, 20}, {20, 22}}),
                            handle(square(3, 1, 4))};
  for (const auto mode : {qcContourDefs::eOuterHull, qcContourDefs::eRegularize}) {
    qcRegionSet set({together[0], together[1]}, keep);
    set.add(together[2], mode);
    EXPECT_TRUE(set == qcRegionSet(together, mode));
    ASSERT_EQ(set.regions().size(), 2U);
    EXPECT_FALSE(set.isSelfIntersecting());
  }
}

TEST(RegionSetTest, AddingADisjointRegionWithAModeKeepsTheHandles) {
  const Handle present = handle(square(0, 0, 4));
  const Handle added = handle(square(10, 10, 4));
  qcRegionSet set({present}, keep);
  set.add(added, qcContourDefs::eRegularize);
  EXPECT_THAT(set.regions(), ElementsAre(present, added));
}

TEST(RegionSetTest, AnUnrepairableRegionIsAddedAllTheSame) {
  qcRegionSet set({handle(square(50, 50, 4))}, keep);
  EXPECT_EQ(badParamsOf([&] { set.add(handle(pentagram()), qcContourDefs::eRegularize); }),
            L"invalid contour");
  EXPECT_EQ(set.regions().size(), 2U);
}

TEST(RegionSetTest, ACapacityOfZeroIsAcceptedANegativeOneIsNot) {
  qcRegionSet set(Handles(), keep);
  set.cachedVectorSize(0);
  EXPECT_EQ(set.cachedVectorSize(), 0);
  EXPECT_EQ(badParamsOf([&] { set.cachedVectorSize(-1); }), L"");
  EXPECT_EQ(set.cachedVectorSize(), 0);
}

TEST(RegionSetCopyTest, ACopySharesTheRegions) {
  qcRegionSet set({handle(square(0, 0, 2)), handle(square(5, 0, 2))}, keep);
  set.cachedVectorSize(8);
  const qcRegionSet copy(set);
  EXPECT_EQ(copy.regions(), set.regions());
  EXPECT_EQ(copy.cachedVectorSize(), 8);
  qcRegionSet assigned(Handles(), keep);
  assigned = set;
  EXPECT_EQ(assigned.regions(), set.regions());
  EXPECT_EQ(assigned.cachedVectorSize(), 8);
}

TEST(RegionSetCopyTest, ACopyAnswersWhatItsSourceHasAnswered) {
  WatchedSet set({handle(square(0, 0, 2))});
  const auto rect = set.encloseRect(qcXform<2>::I);
  const auto inertia = set.inertiaMatrix(true);
  EXPECT_EQ(set.area(false), 4.0);
  EXPECT_EQ(set.area(true), 4.0);
  EXPECT_EQ(set.centerOfMass(false), qcVector<2>(1, 1));
  EXPECT_EQ(set.inertiaMatrix(false), inertia);
  EXPECT_FALSE(set.isSelfIntersecting());
  set.replaceBehindItsBack({handle(square(0, 0, 6)), handle(square(1, 1, 6))});
  const qcRegionSet copy(set);
  qcRegionSet assigned({handle(square(7, 7, 7))}, keep);
  EXPECT_EQ(assigned.area(true), 49.0);
  assigned = set;
  for (const qcRegionSet* remembered : {&copy, static_cast<const qcRegionSet*>(&assigned)}) {
    EXPECT_EQ(remembered->regions().size(), 2U);
    EXPECT_EQ(remembered->area(false), 4.0);
    EXPECT_EQ(remembered->area(true), 4.0);
    EXPECT_EQ(remembered->centerOfMass(false), qcVector<2>(1, 1));
    EXPECT_EQ(remembered->inertiaMatrix(false), inertia);
    EXPECT_EQ(remembered->inertiaMatrix(true), inertia);
    EXPECT_FALSE(remembered->isSelfIntersecting());
    EXPECT_EQ(remembered->encloseRect(qcXform<2>::I), rect);
    // What was not asked before is answered from the regions as they are now.
    EXPECT_NE(remembered->centerOfMass(true), qcVector<2>(1, 1));
  }
}

TEST(RegionSetCopyTest, ACopyForgetsByItself) {
  const qcRegionSet set({handle(square(0, 0, 2))}, keep);
  EXPECT_EQ(set.area(false), 4.0);
  qcRegionSet copy(set);
  copy.add(handle(square(5, 5, 1)), keep);
  EXPECT_EQ(copy.area(false), 5.0);
  EXPECT_EQ(set.area(false), 4.0);
}

TEST(RegionSetCopyTest, AssigningFromAFreshSetForgetsTheAnswersOfTheTarget) {
  qcRegionSet target({handle(square(0, 0, 2))}, keep);
  EXPECT_EQ(target.area(false), 4.0);
  EXPECT_EQ(target.encloseRect(qcXform<2>::I).lr(), qcVector<2>(2, 2));
  target = qcRegionSet({handle(square(0, 0, 3))}, keep);
  EXPECT_EQ(target.area(false), 9.0);
  EXPECT_EQ(target.encloseRect(qcXform<2>::I).lr(), qcVector<2>(3, 3));
}

TEST(RegionSetCopyTest, AssigningASetToItselfChangesNothing) {
  qcRegionSet set(crossingPair(), keep);
  const Handles before = set.regions();
  const qcRegionSet& same = set;
  EXPECT_EQ(set.area(false), 32.0);
  EXPECT_EQ(noticesOf(set, [&] { set = same; }), 0U);
  EXPECT_EQ(set.regions(), before);
  EXPECT_EQ(set.area(false), 32.0);
}

TEST(RegionSetEqualityTest, RegionsAreComparedInOrder) {
  const Handle a = handle(square(0, 0, 1));
  const Handle b = handle(square(5, 5, 1));
  EXPECT_TRUE(qcRegionSet(Handles{a, b}, keep) == qcRegionSet(Handles{a, b}, keep));
  EXPECT_FALSE(qcRegionSet(Handles{a, b}, keep) == qcRegionSet(Handles{b, a}, keep));
  EXPECT_FALSE(qcRegionSet(Handles{a, b}, keep) == qcRegionSet(Handles{a}, keep));
  EXPECT_FALSE(qcRegionSet(Handles{a}, keep) == qcRegionSet(Handles{a, b}, keep));
  EXPECT_TRUE(qcRegionSet(Handles(), keep) == qcRegionSet(Handles(), keep));
}

TEST(RegionSetEqualityTest, EqualRegionsNeedNotBeTheSameOnes) {
  qcRegionSet one({handle(square(0, 0, 9), {handle(square(1, 1, 1))})}, keep);
  const qcRegionSet other({handle(square(0, 0, 9))}, keep);
  one.cachedVectorSize(7);
  EXPECT_EQ(one.area(true), 80.0);
  EXPECT_TRUE(one == other);
}

TEST(RegionSetEqualityTest, NullHandlesAreMetWhenTheNumbersAgree) {
  const qcRegionSet null(Handles(1), keep);
  const qcRegionSet one({handle(square(0, 0, 1))}, keep);
  EXPECT_THROW(static_cast<void>(null == one), qcBadPointer);
  EXPECT_THROW(static_cast<void>(one == null), qcBadPointer);
  EXPECT_FALSE(null == qcRegionSet(Handles(), keep));
}

/// Draws itself as one segment of its own.
class DrawnRegion : public qcRegion {
 public:
  explicit DrawnRegion(double x) : qcContour(square(x, 0, 1), true, 0), x_(x) {}
  using qcRegion::draw;
  void draw(qcUITablet& tablet, const qcColor& color,
            const qcUITablet::Layers& layers) const override {
    tablet.drawLineSeg({x_, 0}, {x_, 1}, color, layers);
  }

 private:
  double x_;
};

TEST(RegionSetDrawTest, EveryRegionDrawsItselfInOrder) {
  const qcRegionSet set(
      {Handle(new DrawnRegion(7)), handle(square(0, 0, 1)), Handle(new DrawnRegion(3))}, keep);
  qcRecordingTablet tablet;
  set.draw(tablet, qcColor::green, qcUITablet::eOverlayLayer);
  using Segment = qcRecordingTablet::Segment;
  EXPECT_THAT(tablet.segments(),
              ElementsAre(Segment{{7, 0}, {7, 1}, qcColor::green, qcUITablet::eOverlayLayer},
                          Segment{{3, 0}, {3, 1}, qcColor::green, qcUITablet::eOverlayLayer}));
}

TEST(RegionSetDrawTest, PlainRegionsAndAnEmptySetDrawNothing) {
  qcRecordingTablet tablet;
  qcRegionSet(crossingPair(), keep).draw(tablet, qcColor::red, qcUITablet::eImageLayer);
  qcRegionSet(Handles(), keep).draw(tablet, qcColor::red, qcUITablet::eImageLayer);
  EXPECT_THAT(tablet.segments(), IsEmpty());
}

TEST(RegionSetDrawTest, ANullHandleThrows) {
  qcRecordingTablet tablet;
  const qcRegionSet set({Handle(new DrawnRegion(7)), Handle()}, keep);
  EXPECT_THROW(set.draw(tablet, qcColor::red, qcUITablet::eImageLayer), qcBadPointer);
  EXPECT_EQ(tablet.segments().size(), 1U);
}

/// Records what changes call.
class HookedSet : public qcRegionSet {
 public:
  HookedSet() : qcRegionSet(Handles(), keep) {}
  std::string calls;

 protected:
  void cleanCacheInfo() override {
    calls += "clean ";
    qcRegionSet::cleanCacheInfo();
  }
  void makeDataConsistentWithPoints() override {
    calls += "data:" + std::to_string(regions().size()) + " ";
  }
};

TEST(RegionSetNoticeTest, ChangesForgetThenCallTheDataHook) {
  HookedSet set;
  set.regions(Handles{handle(square(0, 0, 1))}, keep);
  EXPECT_EQ(set.calls, "clean data:1 ");
  set.calls.clear();
  set.add(handle(square(5, 0, 1)), keep);
  EXPECT_EQ(set.calls, "clean data:2 ");
  set.calls.clear();
  set.regions(ChangeableHandles(), keep);
  EXPECT_EQ(set.calls, "clean data:0 ");
}

TEST(RegionSetNoticeTest, ChangingTheContentsSendsOneChangeNotice) {
  qcRegionSet set(Handles(), keep);
  EXPECT_EQ(noticesOf(set, [&] { set.regions(crossingPair(), keep); }), 1U);
  EXPECT_EQ(noticesOf(set, [&] { set.add(handle(square(9, 9, 1)), keep); }), 1U);
}

TEST(RegionSetNoticeTest, FillingAnAnswerSendsOneChangeNoticeAndNoMore) {
  qcRegionSet set({handle(square(0, 0, 2)), handle(square(5, 5, 2))}, keep);
  const qcXform<2> doubled(qcMatrix<2>(2, 0, 0, 2), qcVector<2>());
  const std::vector<std::function<void()>> questions = {
      [&] { set.area(false); },          [&] { set.area(true); },
      [&] { set.centerOfMass(false); },  [&] { set.centerOfMass(true); },
      [&] { set.inertiaMatrix(false); }, [&] { set.inertiaMatrix(true); },
      [&] { set.isSelfIntersecting(); }, [&] { set.encloseRect(qcXform<2>::I); },
      [&] { set.encloseRect(doubled); },
  };
  for (const auto& ask : questions) {
    EXPECT_EQ(noticesOf(set, ask), 1U);
    EXPECT_EQ(noticesOf(set, ask), 0U);
  }
}

TEST(RegionSetNoticeTest, RepairsSendOneChangeNoticeEach) {
  qcRegionSet set(crossingPair(), keep);
  qcRegionSet result(Handles(), keep);
  EXPECT_TRUE(set.isSelfIntersecting());
  EXPECT_EQ(noticesOf(set, [&] { set.regularize(result); }), 1U);
  EXPECT_EQ(noticesOf(set, [&] { set.regularize(result); }), 0U);
  EXPECT_EQ(noticesOf(set, [&] { set.outerHull(result); }), 1U);
  EXPECT_EQ(noticesOf(set, [&] { set.outerHull(result); }), 0U);
}

TEST(RegionSetNoticeTest, QuestionsThatAreNotRememberedSendNone) {
  qcRegionSet set({handle(square(0, 0, 2))}, keep);
  EXPECT_EQ(noticesOf(set, [&] { set.inside({1, 1}, true); }), 0U);
  EXPECT_EQ(noticesOf(set, [&] { set.distToPoint({1, 1}, false, true, true); }), 0U);
  qcRegionSet empty(Handles(), keep);
  EXPECT_EQ(noticesOf(empty, [&] { empty.isSelfIntersecting(); }), 0U);
}

TEST(RegionSetNoticeTest, TheRegionsOfASetSendNone) {
  const qcPtrHandle<qcRegion> region(new qcRegion(square(0, 0, 2), keep));
  region->isTracking(true);
  const qcRegionSet set(Handles{region}, keep);
  set.area(true);
  set.centerOfMass(true);
  set.inertiaMatrix(true);
  set.isSelfIntersecting();
  EXPECT_EQ(region->changes(), 0U);
}

TEST(RegionSetNoticeTest, WithoutTrackingNothingIsCounted) {
  qcRegionSet set(crossingPair(), keep);
  set.area(true);
  EXPECT_EQ(set.changes(), 0U);
}

}  // namespace
