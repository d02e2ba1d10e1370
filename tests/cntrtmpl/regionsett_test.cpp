// SPDX-License-Identifier: MIT
//
// The set of regions with edge elements: its two parallel lists, comparison, copies, drawing,
// notices. Its record is in cntrtmpl_archive_test.cpp.

#include <cntrtmpl/regionsett.h>

#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <platform/display/recordingtablet.h>

#include "notices.h"
#include "probe.h"
#include "samples.h"
#include "test_xform.h"

namespace {

using Handle = qcPtrHandle_const<RegionT>;
using Handles = RegionSetT::RegionsT;
using PlainHandle = qcPtrHandle_const<qcRegion>;
using PlainHandles = std::vector<PlainHandle>;

constexpr auto keep = qcContourDefs::eNoIntersectionRepair;

Handle regionAt(const qcVector<2>& offset, unsigned long label) {
  return Handle(new RegionT(edgeletsAt(squarePoints(offset)), label));
}

PlainHandle plainAt(const qcVector<2>& offset) {
  return PlainHandle(new qcRegion(squarePoints(offset), keep));
}

/// regionsT()[i] and regions()[i] are one object, for all i.
void expectOneObjectEach(const RegionSetT& set) {
  const PlainHandles plain = set.regions();
  const Handles withData = set.regionsT();
  ASSERT_EQ(plain.size(), withData.size());
  for (std::size_t i = 0; i < plain.size(); ++i) {
    EXPECT_EQ(plain[i].get(), static_cast<const qcRegion*>(withData[i].get())) << i;
  }
}

/// Two regions without vertices, whose crossings cannot be found: the question throws once, and is
/// then answered with "none" as long as that answer is remembered.
RegionSetT emptyRegions() { return RegionSetT(Handles{Handle(new RegionT), Handle(new RegionT)}); }

bool remembersCrossings(const RegionSetT& set) {
  try {
    return !set.isSelfIntersecting();
  } catch (const qcContourDefs::EmptyContour&) {
    return false;
  }
}

class RegionSetTTest : public testing::Test {
 protected:
  const Handle first_ = regionAt({0.0, 0.0}, 1);
  const Handle second_ = regionAt({10.0, 0.0}, 2);
  const Handles both_ = {first_, second_};
};

// Construction.

TEST_F(RegionSetTTest, ADefaultSetIsEmpty) {
  const RegionSetT set;
  EXPECT_TRUE(set.regions().empty());
  EXPECT_TRUE(set.regionsT().empty());
  EXPECT_EQ(set.cachedVectorSize(), 3);
  EXPECT_EQ(set.area(true), 0.0);
}

TEST_F(RegionSetTTest, RegionsAndRegionsTNameTheSameObjects) {
  const RegionSetT set(both_);
  EXPECT_EQ(set.regionsT(), both_);
  EXPECT_EQ(set.cachedVectorSize(), 3);
  expectOneObjectEach(set);
}

TEST_F(RegionSetTTest, HandlesThatMayChangeTheirRegionsAreTakenToo) {
  const qcPtrHandle<RegionT> region(new RegionT(edgeletsAt(squarePoints()), 1));
  const RegionSetT set(std::vector<qcPtrHandle<RegionT>>{region, region});
  EXPECT_EQ(set.regionsT(), (Handles{region, region}));
  expectOneObjectEach(set);
}

TEST_F(RegionSetTTest, AnEmptyListGivesAnEmptySet) {
  EXPECT_TRUE(RegionSetT(Handles()).regions().empty());
}

TEST_F(RegionSetTTest, ItMeasuresItsRegions) {
  const RegionSetT set(both_);
  EXPECT_EQ(set.area(true), 32.0);
  EXPECT_EQ(set.centerOfMass(false), qcVector<2>(7.0, 2.0));
  EXPECT_TRUE(set.inside({2.0, 1.5}, true));
  EXPECT_TRUE(set.inside({12.0, 1.5}, true));
  EXPECT_FALSE(set.inside({7.0, 1.5}, true));
}

TEST_F(RegionSetTTest, OverlappingRegionsAreKeptAsTheyAre) {
  const Handles overlapping = {first_, regionAt({2.0, 2.0}, 2)};
  const RegionSetT set(overlapping);
  EXPECT_EQ(set.regionsT(), overlapping);
  EXPECT_TRUE(set.isSelfIntersecting());
  EXPECT_EQ(set.area(true), 32.0);
}

TEST_F(RegionSetTTest, ANullHandleAmongRegionsWithDataThrowsBadPointer) {
  EXPECT_THROW(RegionSetT(Handles{first_, Handle()}), qcBadPointer);
  EXPECT_THROW(RegionSetT(std::vector<qcPtrHandle<RegionT>>(1)), qcBadPointer);
}

TEST_F(RegionSetTTest, RegionsTIsACopyOfTheList) {
  const RegionSetT set(both_);
  set.regionsT().clear();
  EXPECT_EQ(set.regionsT(), both_);
}

// Plain regions.

/// regionsT() are new regions with the points of `plain` and nothing else.
void expectBareRegions(const RegionSetT& set, const PlainHandles& plain) {
  EXPECT_EQ(set.regions(), plain);
  const Handles withData = set.regionsT();
  ASSERT_EQ(withData.size(), plain.size());
  for (std::size_t i = 0; i < plain.size(); ++i) {
    EXPECT_NE(static_cast<const qcRegion*>(withData[i].get()), plain[i].get()) << i;
    EXPECT_EQ(withData[i]->points(), plain[i]->points()) << i;
    EXPECT_EQ(withData[i]->data(), bareEdgeletsAt(plain[i]->points())) << i;
    EXPECT_EQ(withData[i]->label(), 0U) << i;
    EXPECT_TRUE(withData[i]->holes().empty()) << i;
    EXPECT_TRUE(withData[i]->qcRegion::holes().empty()) << i;
    EXPECT_EQ(withData[i]->dataFromPointsXform()->linearXform(), qcXform<2>::I) << i;
  }
}

TEST_F(RegionSetTTest, AfterAddEveryRegionWithDataIsNewAndBare) {
  RegionSetT set(both_);
  const PlainHandle added = plainAt({20.0, 0.0});
  set.add(added, keep);
  expectBareRegions(set, {PlainHandle(first_), PlainHandle(second_), added});
  EXPECT_EQ(first_->data(), edgeletsAt(squarePoints()));
}

TEST_F(RegionSetTTest, ARegionWithDataThatIsAddedAsAPlainOneLosesThemInTheList) {
  RegionSetT set;
  set.add(first_, keep);
  expectBareRegions(set, {PlainHandle(first_)});
}

TEST_F(RegionSetTTest, AfterSettingRegionsEveryRegionWithDataIsNewAndBare) {
  RegionSetT set(both_);
  const PlainHandles plain = {plainAt({20.0, 0.0})};
  set.regions(plain, keep);
  expectBareRegions(set, plain);
}

TEST_F(RegionSetTTest, AfterSettingRegionsThatMayChangeEveryRegionWithDataIsNewAndBare) {
  RegionSetT set(both_);
  const qcPtrHandle<qcRegion> region(new qcRegion(squarePoints({20.0, 0.0}), keep));
  set.regions(std::vector<qcPtrHandle<qcRegion>>{region}, keep);
  expectBareRegions(set, {region});
}

TEST_F(RegionSetTTest, NeitherHolesNorLabelsGoIntoTheBareRegions) {
  const qcPtrHandle<qcRegion> region(new qcRegion(squarePoints(), keep));
  region->label(7);
  region->holes(PlainHandles{PlainHandle(new qcRegion(squarePoints({1.0, 1.0}, 1.0), keep))});
  RegionSetT set;
  set.add(region, keep);
  expectBareRegions(set, {region});
}

TEST_F(RegionSetTTest, TheOldRegionsWithDataAreReleased) {
  const XformHandle counted(new testXform({1.0, 1.0}));
  RegionSetT set(Handles{Handle(new RegionT(Edgelets(), counted, 1))});
  ASSERT_EQ(testXform::alive, 2);
  set.regions(PlainHandles(), keep);
  EXPECT_EQ(testXform::alive, 1);
  EXPECT_TRUE(set.regionsT().empty());
}

TEST_F(RegionSetTTest, ANullHandleAmongPlainRegionsThrowsBadPointer) {
  RegionSetT set(both_);
  EXPECT_THROW(set.add(PlainHandle(), keep), qcBadPointer);
  EXPECT_EQ(set.regionsT(), both_);
  EXPECT_THROW(set.regions(PlainHandles(1), keep), qcBadPointer);
  EXPECT_EQ(set.regionsT(), both_);
}

TEST_F(RegionSetTTest, ARepairModeReplacesThePlainRegionsAndLeavesTheListWithData) {
  RegionSetT set(Handles{first_});
  const PlainHandle overlapping = plainAt({2.0, 2.0});
  set.add(overlapping, qcContourDefs::eRegularize);
  EXPECT_EQ(set.regions().size(), 1U);
  ASSERT_EQ(set.regionsT().size(), 2U);
  EXPECT_EQ(set.regionsT()[1]->data(), bareEdgeletsAt(overlapping->points()));
}

/// A set that counts how often its hooks run.
class CountingSet : public RegionSetT {
 public:
  using RegionSetT::RegionSetT;
  int dataRebuilt = 0;
  int pointsRebuilt = 0;

 protected:
  void makeDataConsistentWithPoints() override {
    ++dataRebuilt;
    RegionSetT::makeDataConsistentWithPoints();
  }
  void makePointsConsistentWithData() override {
    ++pointsRebuilt;
    RegionSetT::makePointsConsistentWithData();
  }
};

TEST_F(RegionSetTTest, ChangingPlainRegionsRunsTheDataHookOnceAndNotTheOther) {
  CountingSet set(both_);
  set.add(plainAt({20.0, 0.0}), keep);
  EXPECT_EQ(set.dataRebuilt, 1);
  set.regions(PlainHandles(), keep);
  EXPECT_EQ(set.dataRebuilt, 2);
  EXPECT_EQ(set.pointsRebuilt, 0);
}

// The hooks, called through either class.

template <class Base>
class EitherSetTest : public RegionSetTTest {
 protected:
  RegionSetT set_{both_};
  Base& base_ = set_;
};

using SetBases = testing::Types<qcRegionSet, RegionSetT>;
TYPED_TEST_SUITE(EitherSetTest, SetBases, );

TYPED_TEST(EitherSetTest, MakeDataConsistentWithPointsMakesBareRegions) {
  Probe<TypeParam>::rebuildData(this->base_);
  expectBareRegions(this->set_, {PlainHandle(this->first_), PlainHandle(this->second_)});
}

TYPED_TEST(EitherSetTest, MakePointsConsistentWithDataSharesTheRegionsWithDataAgain) {
  this->set_.add(plainAt({20.0, 0.0}), keep);
  Probe<TypeParam>::rebuildPoints(this->base_);
  EXPECT_EQ(this->set_.regions().size(), 3U);
  expectOneObjectEach(this->set_);
}

TYPED_TEST(EitherSetTest, MakePointsConsistentWithDataClearsNoAnswerAndSendsNoNotice) {
  this->set_ = emptyRegions();
  remembersCrossings(this->set_);
  this->set_.isTracking(true);
  Probe<TypeParam>::rebuildPoints(this->base_);
  EXPECT_EQ(this->set_.changes(), 0U);
  EXPECT_TRUE(remembersCrossings(this->set_));
}

TYPED_TEST(EitherSetTest, CleanCacheInfoForgetsAnswers) {
  this->set_ = emptyRegions();
  remembersCrossings(this->set_);
  Probe<TypeParam>::forget(this->base_);
  EXPECT_FALSE(remembersCrossings(this->set_));
}

TYPED_TEST(EitherSetTest, CleanCacheInfoLeavesTheListWithDataAlone) {
  this->set_.isTracking(true);
  Probe<TypeParam>::forget(this->base_);
  EXPECT_EQ(this->set_.changes(), 1U);
  EXPECT_EQ(this->set_.regionsT(), this->both_);
  expectOneObjectEach(this->set_);
}

// Comparison.

TEST_F(RegionSetTTest, SetsOfEqualPlainRegionsAreEqualWhateverTheirData) {
  const RegionSetT set(both_);
  Edgelets bare = bareEdgeletsAt(squarePoints({10.0, 0.0}));
  const RegionSetT other(Handles{regionAt({0.0, 0.0}, 9), Handle(new RegionT(bare, 0))});
  EXPECT_TRUE(set == other);
  EXPECT_TRUE(RegionSetT() == RegionSetT());
}

TEST_F(RegionSetTTest, OrderAndNumberOfRegionsCountInTheComparison) {
  const RegionSetT set(both_);
  EXPECT_FALSE(set == RegionSetT(Handles{second_, first_}));
  EXPECT_FALSE(set == RegionSetT(Handles{first_}));
}

// Copies.

TEST_F(RegionSetTTest, CopiesShareTheRegionsOfBothLists) {
  RegionSetT set(both_);
  set.cachedVectorSize(5);
  RegionSetT assigned;
  assigned = set;
  const RegionSetT copy(set);
  for (const RegionSetT* each : {&copy, &std::as_const(assigned)}) {
    EXPECT_EQ(each->regionsT(), both_);
    expectOneObjectEach(*each);
    EXPECT_EQ(each->cachedVectorSize(), 5);
  }
}

TEST_F(RegionSetTTest, ACopyIsIndependent) {
  const RegionSetT set(both_);
  RegionSetT copy(set);
  copy.add(plainAt({20.0, 0.0}), keep);
  EXPECT_EQ(set.regionsT(), both_);
  expectOneObjectEach(set);
}

TEST_F(RegionSetTTest, CopiesCarryAnswersAlong) {
  const RegionSetT set = emptyRegions();
  EXPECT_FALSE(remembersCrossings(RegionSetT(set)));
  EXPECT_FALSE(remembersCrossings(set));
  RegionSetT assigned;
  assigned = set;
  EXPECT_TRUE(remembersCrossings(RegionSetT(set)));
  EXPECT_TRUE(remembersCrossings(assigned));
}

TEST_F(RegionSetTTest, AssigningASetToItselfChangesNothing) {
  RegionSetT set(both_);
  const RegionSetT& same = set;
  set = same;
  EXPECT_EQ(set.regionsT(), both_);
  expectOneObjectEach(set);
}

TEST_F(RegionSetTTest, AssigningToItAsAPlainSetLeavesTheListWithData) {
  RegionSetT set(both_);
  const PlainHandles plain = {plainAt({20.0, 0.0})};
  static_cast<qcRegionSet&>(set) = qcRegionSet(plain, keep);
  EXPECT_EQ(set.regions(), plain);
  EXPECT_EQ(set.regionsT(), both_);
}

// Drawing.

TEST_F(RegionSetTTest, ItDrawsTheEdgeletsOfItsRegionsInOrder) {
  qcRecordingTablet tablet;
  RegionSetT(both_).draw(tablet, qcColor::red, qcUITablet::eOverlayLayer);
  qcRecordingTablet expected;
  first_->draw(expected, qcColor::red, qcUITablet::eOverlayLayer);
  second_->draw(expected, qcColor::red, qcUITablet::eOverlayLayer);
  EXPECT_EQ(tablet.segments(), expected.segments());
  EXPECT_EQ(tablet.segments().size(), 8U);
}

TEST_F(RegionSetTTest, PlainRegionsDrawNothing) {
  RegionSetT set;
  set.add(plainAt({0.0, 0.0}), keep);
  qcRecordingTablet tablet;
  set.draw(tablet, qcColor::red, qcUITablet::eOverlayLayer);
  EXPECT_TRUE(tablet.segments().empty());
}

// What is not supported.

TEST_F(RegionSetTTest, UnsupportedOperationsThrowBadWindowAndTouchNothing) {
  const RegionSetT set(both_);
  RegionSetT result(Handles{second_});
  EXPECT_THROW(set.regularizeT(result), qcPel::BadWindow);
  EXPECT_THROW(set.mapT(qcXform<2>::I, result), qcPel::BadWindow);
  EXPECT_EQ(result.regionsT(), Handles{second_});
  expectOneObjectEach(result);
}

// Change notices.

TEST_F(RegionSetTTest, EveryChangeSendsItsNotices) {
  const RegionSetT other(both_);
  const std::vector<NoticeCase<RegionSetT>> cases = {
      {"add",
       [](RegionSetT& s) {
         s.add(plainAt({20.0, 0.0}), keep);
       },
       1},
      {"regions", [](RegionSetT& s) { s.regions(PlainHandles(), keep); }, 1},
      {"assignment", [&](RegionSetT& s) { s = other; }, 1},
      {"a new answer", [](RegionSetT& s) { s.area(false); }, 1},
      {"an answer and the same again", [](RegionSetT& s) { s.area(false), s.area(false); }, 1},
      {"reading: none", [](RegionSetT& s) { s.regionsT(), s.regions(); }, 0},
  };
  expectNotices(cases, both_);
}

}  // namespace
