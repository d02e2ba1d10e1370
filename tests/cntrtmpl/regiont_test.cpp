// SPDX-License-Identifier: MIT
//
// The region with edge elements: the one contour behind its two bases, construction, holes,
// drawing, copies, notices. Its record is in cntrtmpl_archive_test.cpp.

#include <cntrtmpl/regiont.h>

#include <cmath>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <platform/display/recordingtablet.h>
#include <testing/heap/heap.h>
#include <tests/platform/archive_bytes.h>

#include "notices.h"
#include "probe.h"
#include "samples.h"
#include "test_xform.h"

namespace {

using Handle = qcPtrHandle_const<RegionT>;
using PlainHandle = qcPtrHandle_const<qcRegion>;

/// A small square inside the sample square.
const Points& holePoints() {
  static const Points points = squarePoints({1.0, 1.0}, 1.0);
  return points;
}

PlainHandle plainHole() {
  return PlainHandle(new qcRegion(holePoints(), qcContourDefs::eNoIntersectionRepair));
}

void setPlainHoles(RegionT& region, const std::vector<PlainHandle>& holes) {
  region.qcRegion::holes(holes);
}

class RegionTTest : public testing::Test {
 protected:
  RegionTTest() { testXform::resetCounts(); }
  ~RegionTTest() override { EXPECT_EQ(testXform::alive, 0); }

  const Points square_ = squarePoints();
  const Edgelets edgelets_ = edgeletsAt(square_);
};

// One contour behind both bases. Each test calls a virtual through a reference to each base.

template <class Base>
class EveryBaseTest : public RegionTTest {
 protected:
  RegionT region_{edgelets_, 7};
  Base& base_ = region_;
};

using Bases = testing::Types<qcContour, qcRegion, ContourT, RegionT>;
TYPED_TEST_SUITE(EveryBaseTest, Bases, );

TYPED_TEST(EveryBaseTest, SharesTheOneContour) {
  EXPECT_EQ(&this->base_.points(), &static_cast<qcContour&>(this->region_).points());
  EXPECT_EQ(static_cast<qcPersistent*>(&this->base_), static_cast<qcPersistent*>(&this->region_));
  EXPECT_EQ(static_cast<qcRepBase*>(&this->base_), static_cast<qcRepBase*>(&this->region_));
}

TYPED_TEST(EveryBaseTest, ThePointsSetterIsTheContoursAndRunsTheDataHook) {
  const Points moved = squarePoints({1.0, 1.0});
  this->base_.points(moved);
  EXPECT_EQ(this->region_.points(), moved);
  EXPECT_EQ(this->region_.data(), bareEdgeletsAt(moved));
}

TYPED_TEST(EveryBaseTest, IsClosedIsTheRegions) {
  ContourT open(this->edgelets_);
  open.isClosed(false);
  RegionT region(open, 0);
  const TypeParam& base = region;
  EXPECT_TRUE(base.isClosed());
}

TYPED_TEST(EveryBaseTest, TheClosedSetterIsTheRegions) {
  EXPECT_THROW(this->base_.isClosed(false), qcContourDefs::RegionCannotBeSetOpen);
  this->region_.isTracking(true);
  EXPECT_NO_THROW(this->base_.isClosed(true));
  EXPECT_EQ(this->region_.changes(), 0U);
  EXPECT_TRUE(this->region_.isClosed());
}

TYPED_TEST(EveryBaseTest, DrawingWithAModeIsTheContours) {
  qcRecordingTablet tablet;
  const qcContour& plain = qcContour(this->square_, true, 0);
  qcRecordingTablet expected;
  plain.draw(expected, qcContourDefs::eDrawContour, qcColor::red, qcUITablet::eImageLayer);
  this->base_.draw(tablet, qcContourDefs::eDrawContour, qcColor::red, qcUITablet::eImageLayer);
  EXPECT_EQ(tablet.segments(), expected.segments());
  EXPECT_EQ(tablet.segments().size(), 4U);
}

TYPED_TEST(EveryBaseTest, SerializeIsTheRegionTs) {
  storedBytes([&](qcArchive& archive) {
    try {
      Probe<TypeParam>::serialize(this->base_, archive, 9);
      ADD_FAILURE() << "version 9 was stored";
    } catch (const qcArchive::UnknownVersion& error) {
      EXPECT_STREQ(error.source(), "cntrtmpl");
      EXPECT_EQ(error.line(), 186);
    }
  });
}

TYPED_TEST(EveryBaseTest, DispatchSerializeIsTheRegionTs) {
  // The versions of qcRegionT, qcRegion, qcContour and qcPersistent.
  EXPECT_EQ(storedHex([&](qcArchive& archive) { archive || this->base_; }).substr(0, 11),
            "00 01 01 00");
}

TYPED_TEST(EveryBaseTest, MakeDataConsistentWithPointsIsTheContourTs) {
  Probe<TypeParam>::rebuildData(this->base_);
  EXPECT_EQ(this->region_.data(), bareEdgeletsAt(this->square_));
}

TYPED_TEST(EveryBaseTest, MakePointsConsistentWithDataIsTheContourTs) {
  static_cast<qcContour&>(this->region_) = qcContour({{9.0, 9.0}}, true, 0);
  Probe<TypeParam>::rebuildPoints(this->base_);
  EXPECT_EQ(this->region_.points(), this->square_);
  EXPECT_EQ(this->region_.data(), this->edgelets_);
}

TYPED_TEST(EveryBaseTest, CleanCacheInfoIsTheRegions) {
  setPlainHoles(this->region_, {plainHole()});
  const qcVector<2> center = this->region_.centerOfMass(true);
  ASSERT_EQ(this->region_.centerOfMass(true), qcVector<2>());
  this->region_.isTracking(true);
  Probe<TypeParam>::forget(this->base_);
  EXPECT_EQ(this->region_.changes(), 1U);
  EXPECT_EQ(this->region_.centerOfMass(true), center);
}

TYPED_TEST(EveryBaseTest, TheDestructorIsVirtual) {
  const long before = heap::blocksAlive();
  TypeParam* const base =
      new RegionT(edgeletsAt(squarePoints()), XformHandle(new testXform({1.0, 1.0})), 7);
  EXPECT_EQ(testXform::alive, 2);
  delete base;
  EXPECT_EQ(heap::blocksAlive(), before);
}

TEST_F(RegionTTest, DrawingWithoutAModeIsTheRegionTs) {
  const RegionT region(edgelets_, 7);
  const qcRegion& plain = region;
  qcRecordingTablet direct;
  qcRecordingTablet throughBase;
  region.draw(direct, qcColor::red, qcUITablet::eOverlayLayer);
  plain.draw(throughBase, qcColor::red, qcUITablet::eOverlayLayer);
  EXPECT_EQ(direct.segments().size(), edgelets_.size());
  EXPECT_EQ(throughBase.segments(), direct.segments());
}

TEST_F(RegionTTest, TheRegionsQueriesWorkOnThePointsOfTheData) {
  RegionT region(edgelets_, 7);
  EXPECT_EQ(region.area(true), 16.0);
  EXPECT_TRUE(region.inside({2.0, 2.5}, true));
  EXPECT_FALSE(region.inside({5.0, 2.5}, true));
  EXPECT_EQ(region.centerOfMass(false), qcVector<2>(2.0, 2.0));
  EXPECT_EQ(region.distToPoint({6.0, 2.0}, false, true, true), 2.0);
  region.data(edgeletsAt(squarePoints({}, 2.0)));
  EXPECT_EQ(region.area(true), 4.0);
}

// Construction.

TEST_F(RegionTTest, ADefaultRegionIsEmptyWithTheIdentity) {
  const RegionT region;
  EXPECT_TRUE(region.points().empty());
  EXPECT_TRUE(region.data().empty());
  EXPECT_TRUE(region.holes().empty());
  EXPECT_TRUE(region.qcRegion::holes().empty());
  EXPECT_TRUE(region.isClosed());
  EXPECT_EQ(region.label(), 0U);
  EXPECT_EQ(region.cachedVectorSize(), 3);
  ASSERT_TRUE(region.dataFromPointsXform());
  EXPECT_EQ(region.dataFromPointsXform()->linearXform(), qcXform<2>::I);
}

TEST_F(RegionTTest, ALabelThatNoArchiveCouldHoldIsRefused) {
  if (sizeof(long) == 4) GTEST_SKIP() << "no label is too wide, as on Windows";
  const auto wide = static_cast<unsigned long>(std::uint64_t{1} << 32U);
  const auto expectRefusal = [](const auto& make) {
    try {
      make();
      ADD_FAILURE() << "nothing was thrown";
    } catch (const qcContourDefs::BadParams& error) {
      EXPECT_EQ(error.message(), L"label is above 4294967295");
    }
  };
  expectRefusal([&] { RegionT(edgelets_, wide); });
  expectRefusal([&] { RegionT(edgelets_, XformHandle(), wide); });
  expectRefusal([&] { RegionT(ContourT(edgelets_), wide); });
  RegionT region(edgelets_, 7);
  expectRefusal([&] { region.label(wide); });
  EXPECT_EQ(region.label(), 7U);
}

TEST_F(RegionTTest, PointsCanBeSetOnADefaultRegion) {
  RegionT region;
  region.points(square_);
  EXPECT_EQ(region.data(), bareEdgeletsAt(square_));
}

TEST_F(RegionTTest, ARegionFromAContourCopiesPointsAndDataAndSharesTheTransform) {
  ContourT contour(edgeletsAt(movedBy(square_, {10.0, 20.0})),
                   XformHandle(new testXform({10.0, 20.0})));
  contour.label(3);
  contour.cachedVectorSize(5);
  testXform::resetCounts();
  const RegionT region(contour, 7);
  EXPECT_EQ(region.points(), square_);
  EXPECT_EQ(region.data(), contour.data());
  EXPECT_TRUE(region.dataFromPointsXform() == contour.dataFromPointsXform());
  EXPECT_EQ(testXform::clones, 0);
  EXPECT_EQ(region.label(), 7U);
  EXPECT_EQ(region.cachedVectorSize(), 5);
  EXPECT_EQ(contour.label(), 3U);
}

TEST_F(RegionTTest, ARegionFromAContourCarriesItsInverseAlong) {
  const ContourT contour(edgelets_, XformHandle(new testXform({10.0, 20.0})));
  const RegionT region(contour, 7);
  EXPECT_EQ(region.point(qcEdgelet()), qcVector<2>(-10.0, -20.0));
  EXPECT_EQ(testXform::inversions, 1);
}

TEST_F(RegionTTest, ARegionFromAClosedContourCarriesItsAnswersAlong) {
  const ContourT contour(edgelets_);
  Probe<ContourT>::edges(contour);
  const RegionT region(contour, 7);
  const long before = heap::blocksMade();
  EXPECT_EQ(Probe<RegionT>::edges(region).size(), 4U);
  EXPECT_EQ(heap::blocksMade(), before);
}

TEST_F(RegionTTest, ARegionFromAnOpenContourForgetsWhatHeldForTheOpenOne) {
  ContourT open(edgelets_);
  open.isClosed(false);
  EXPECT_EQ(open.length(), 12.0);
  EXPECT_EQ(RegionT(open, 7).length(), 16.0);
}

TEST_F(RegionTTest, ARegionFromARegionsContourHasNoHoles) {
  RegionT region(edgelets_, 7);
  region.holes({Handle(new RegionT(edgeletsAt(holePoints()), 1))});
  setPlainHoles(region, {plainHole()});
  const RegionT copy(static_cast<const ContourT&>(region), 8);
  EXPECT_TRUE(copy.holes().empty());
  EXPECT_TRUE(copy.qcRegion::holes().empty());
  EXPECT_EQ(copy.label(), 8U);
}

TEST_F(RegionTTest, ARegionFromDataHasTheirPositionsAsPointsAndTheLabel) {
  const RegionT region(edgelets_, 7);
  EXPECT_EQ(region.points(), square_);
  EXPECT_EQ(region.data(), edgelets_);
  EXPECT_EQ(region.label(), 7U);
  EXPECT_EQ(region.dataFromPointsXform()->linearXform(), qcXform<2>::I);
  EXPECT_TRUE(region.holes().empty());
  EXPECT_TRUE(region.qcRegion::holes().empty());
}

TEST_F(RegionTTest, TheSecondNumberIsALabelAndNotARepairMode) {
  const Points bow = {{0.0, 0.0}, {4.0, 4.0}, {4.0, 0.0}, {0.0, 4.0}};
  static_assert(qcContourDefs::eOuterHull == 1 && qcContourDefs::eRegularize == 2);
  for (const unsigned long label : {1UL, 2UL}) {
    const RegionT region(edgeletsAt(bow), label);
    EXPECT_EQ(region.points(), bow);
    EXPECT_EQ(region.label(), label);
  }
}

TEST_F(RegionTTest, ARegionFromDataClonesTheTransform) {
  XformHandle given(new testXform({10.0, 20.0}));
  const RegionT region(edgelets_, given, 7);
  EXPECT_EQ(testXform::clones, 1);
  EXPECT_FALSE(region.dataFromPointsXform() == given);
  EXPECT_EQ(region.points(), squarePoints({-10.0, -20.0}));
  EXPECT_EQ(region.label(), 7U);
}

TEST_F(RegionTTest, ANullTransformMeansTheIdentity) {
  const RegionT region(edgelets_, XformHandle(), 7);
  EXPECT_EQ(region.dataFromPointsXform()->linearXform(), qcXform<2>::I);
  EXPECT_EQ(region.points(), square_);
}

TEST_F(RegionTTest, ASingularTransformThrowsItsOwnError) {
  EXPECT_THROW(RegionT(edgelets_, singularXform(), 7), qcMathError::Singular);
}

// Which side wins.

TEST_F(RegionTTest, NoHookCallsTheOtherBack) {
  HookCounter<RegionT> region(edgelets_, 7UL);
  region.points(square_);
  EXPECT_EQ(region.dataRebuilt, 1);
  EXPECT_EQ(region.pointsRebuilt, 0);
  region.data(edgelets_);
  EXPECT_EQ(region.dataRebuilt, 1);
  EXPECT_EQ(region.pointsRebuilt, 1);
  EXPECT_EQ(region.data(), edgelets_);
}

TEST_F(RegionTTest, SettingDataForgetsTheRegionsAnswers) {
  RegionT region(edgelets_, 7);
  setPlainHoles(region, {plainHole()});
  region.data(edgelets_);
  const qcVector<2> center = region.centerOfMass(true);
  ASSERT_EQ(region.centerOfMass(true), qcVector<2>());
  region.data(edgelets_);
  EXPECT_EQ(region.centerOfMass(true), center);
}

// Holes.

TEST_F(RegionTTest, SettingPlainHolesRebuildsTheData) {
  RegionT region(edgelets_, 7);
  setPlainHoles(region, {plainHole()});
  EXPECT_EQ(region.qcRegion::holes().size(), 1U);
  EXPECT_EQ(region.data(), bareEdgeletsAt(square_));
  EXPECT_EQ(region.area(true), 15.0);
}

TEST_F(RegionTTest, ARefusedPlainHoleLeavesTheOldHolesAndBareData) {
  RegionT region(edgelets_, 7);
  const PlainHandle hole = plainHole();
  setPlainHoles(region, {hole});
  region.data(edgelets_);
  const PlainHandle crossing(new qcRegion(squarePoints({3.0, 3.0}), {}));
  EXPECT_THROW(setPlainHoles(region, {crossing}), qcContourDefs::BadParams);
  EXPECT_THROW(setPlainHoles(region, {PlainHandle()}), qcBadPointer);
  EXPECT_EQ(region.qcRegion::holes(), std::vector<PlainHandle>{hole});
  EXPECT_EQ(region.data(), bareEdgeletsAt(square_));
}

TEST_F(RegionTTest, HolesWithDataAreAListOfTheirOwn) {
  RegionT region(edgelets_, 7);
  const Handle hole(new RegionT(edgeletsAt(holePoints()), 1));
  region.holes({hole});
  EXPECT_EQ(region.holes(), RegionT::Holes{hole});
  EXPECT_TRUE(region.qcRegion::holes().empty());
  EXPECT_EQ(region.area(true), 16.0);
  EXPECT_EQ(region.data(), edgelets_);
  setPlainHoles(region, {});
  EXPECT_EQ(region.holes(), RegionT::Holes{hole});
}

TEST_F(RegionTTest, HolesWithDataAreReplacedAndNotChecked) {
  RegionT region(edgelets_, 7);
  region.holes({Handle(new RegionT(edgeletsAt(holePoints()), 1))});
  const Handle crossing(new RegionT(edgeletsAt(squarePoints({3.0, 3.0})), 1));
  region.holes({crossing, Handle()});
  EXPECT_EQ(region.holes(), (RegionT::Holes{crossing, Handle()}));
  region.holes({});
  EXPECT_TRUE(region.holes().empty());
}

TEST_F(RegionTTest, ARegionWithDataCanBeAPlainHole) {
  RegionT region(edgelets_, 7);
  setPlainHoles(region, {PlainHandle(Handle(new RegionT(edgeletsAt(holePoints()), 1)))});
  EXPECT_EQ(region.area(true), 15.0);
}

// Comparison.

TEST_F(RegionTTest, ACopyEqualsItsSourceAndASeparateRegionDoesNot) {
  const RegionT region(edgelets_, 7);
  EXPECT_TRUE(RegionT(region) == region);
  EXPECT_FALSE(RegionT(edgelets_, 7) == region);
}

TEST_F(RegionTTest, OnlyPointsAndTransformTakePartInTheComparison) {
  const RegionT region(edgelets_, 7);
  RegionT other(region);
  setPlainHoles(other, {plainHole()});
  other.holes({Handle(new RegionT)});
  other.label(8);
  other.cachedVectorSize(9);
  EXPECT_TRUE(other == region);
  other.points(squarePoints({1.0, 0.0}));
  EXPECT_FALSE(other == region);
}

TEST_F(RegionTTest, ARegionEqualsTheContourThatItWasMadeOf) {
  const ContourT contour(edgelets_);
  const RegionT region(contour, 7);
  EXPECT_TRUE(static_cast<const ContourT&>(region) == contour);
}

TEST_F(RegionTTest, AsPlainRegionsSeparateOnesAreEqual) {
  const RegionT first(edgelets_, 7);
  const RegionT second(edgelets_, 8);
  EXPECT_TRUE(static_cast<const qcRegion&>(first) == static_cast<const qcRegion&>(second));
}

// Drawing.

struct Drawn {
  qcVector<2> from;
  qcVector<2> to;
};

/// How the one edge element of a region is drawn.
Drawn drawn(const qcEdgelet& edgelet) {
  qcRecordingTablet tablet;
  RegionT({edgelet}, 0).draw(tablet, qcColor::red, qcUITablet::eImageLayer);
  EXPECT_EQ(tablet.segments().size(), 1U);
  const qcRecordingTablet::Segment& segment = tablet.segments().at(0);
  return {{segment.from.x(), segment.from.y()}, {segment.to.x(), segment.to.y()}};
}

qcEdgelet edgeletOf(const qcVector<2>& position, int steps) {
  return {position, 200, qcAngle8(static_cast<unsigned char>(steps))};
}

void expectNear(const qcVector<2>& actual, const qcVector<2>& expected, int steps) {
  EXPECT_NEAR(actual.x(), expected.x(), 1e-13) << steps << " steps";
  EXPECT_NEAR(actual.y(), expected.y(), 1e-13) << steps << " steps";
}

TEST(EdgeletDrawingTest, AnAngleOf64StepsIsDrawnAgainstTheXAxis) {
  const Drawn segment = drawn(edgeletOf({10.0, 20.0}, 64));
  EXPECT_EQ(segment.from, qcVector<2>(10.5, 20.0));
  EXPECT_EQ(segment.to, qcVector<2>(9.5, 20.0));
}

TEST(EdgeletDrawingTest, AnAngleOf0IsDrawnVertically) {
  const Drawn segment = drawn(edgeletOf({10.0, 20.0}, 0));
  expectNear(segment.from, {10.0, 19.5}, 0);
  expectNear(segment.to, {10.0, 20.5}, 0);
}

struct QuarterCase {
  int steps;
  qcVector<2> fromOffset;
};

TEST(EdgeletDrawingTest, TheFourAxesAreDrawnAQuarterTurnBack) {
  const std::vector<QuarterCase> cases = {
      {0, {0.0, -0.5}}, {64, {0.5, 0.0}}, {128, {0.0, 0.5}}, {192, {-0.5, 0.0}}};
  for (const QuarterCase& each : cases) {
    const Drawn segment = drawn(edgeletOf({10.0, 20.0}, each.steps));
    expectNear(segment.from, qcVector<2>(10.0, 20.0) + each.fromOffset, each.steps);
    expectNear(segment.to, qcVector<2>(10.0, 20.0) - each.fromOffset, each.steps);
  }
}

TEST(EdgeletDrawingTest, EveryAngleIsReducedIn8BitsAndConvertedWithTheseFactors) {
  constexpr double radiansPerDegree = 0.017453292519943295;
  const qcVector<2> p(10.25, -20.5);
  for (int steps = 0; steps < 256; ++steps) {
    const int turned = steps < 64 ? steps + 192 : steps - 64;
    const double degrees = turned * 1.40625;
    const auto end = [&](double angle) {
      return qcVector<2>(p.x() + 0.5 * std::cos(angle), p.y() + 0.5 * std::sin(angle));
    };
    const Drawn segment = drawn(edgeletOf(p, steps));
    EXPECT_EQ(segment.from, end(degrees * radiansPerDegree)) << steps;
    EXPECT_EQ(segment.to, end((degrees + 180.0) * radiansPerDegree)) << steps;
  }
}

TEST(EdgeletDrawingTest, EverySegmentIsOfUnitLengthCentredAndAcrossTheGradient) {
  const qcVector<2> p(1.0, 2.0);
  for (int steps = 0; steps < 256; ++steps) {
    const Drawn segment = drawn(edgeletOf(p, steps));
    const qcVector<2> gradient(1.0, qcDegree(steps * 1.40625));
    EXPECT_NEAR(segment.from.distance(segment.to), 1.0, 1e-14) << steps;
    expectNear((segment.from + segment.to) * 0.5, p, steps);
    EXPECT_NEAR((segment.to - segment.from) * gradient, 0.0, 1e-14) << steps;
  }
}

TEST(EdgeletDrawingTest, TheMagnitudeDoesNotMatter) {
  const Drawn weak = drawn(qcEdgelet({1.0, 2.0}, 0, qcAngle8(33)));
  const Drawn strong = drawn(qcEdgelet({1.0, 2.0}, 65535, qcAngle8(33)));
  EXPECT_EQ(weak.from, strong.from);
  EXPECT_EQ(weak.to, strong.to);
}

TEST_F(RegionTTest, EdgeletsAreDrawnInOrderInTheGivenColourAndLayer) {
  const RegionT region(edgelets_, 7);
  for (const qcUITablet::Layers layer : {qcUITablet::eImageLayer, qcUITablet::eOverlayLayer}) {
    qcRecordingTablet tablet;
    region.draw(tablet, qcColor(1, 2, 3), layer);
    ASSERT_EQ(tablet.segments().size(), edgelets_.size());
    for (std::size_t i = 0; i < edgelets_.size(); ++i) {
      const qcRecordingTablet::Segment& segment = tablet.segments()[i];
      const Drawn expected = drawn(edgelets_[i]);
      EXPECT_EQ(qcVector<2>(segment.from.x(), segment.from.y()), expected.from) << i;
      EXPECT_EQ(segment.color, qcColor(1, 2, 3));
      EXPECT_EQ(segment.layers, layer);
    }
  }
}

TEST_F(RegionTTest, EdgeletsAreDrawnWhereTheDataAreAndNotThePoints) {
  const RegionT region({edgeletOf({10.0, 20.0}, 64)}, XformHandle(new testXform({10.0, 20.0})), 7);
  qcRecordingTablet tablet;
  region.draw(tablet, qcColor::red, qcUITablet::eImageLayer);
  EXPECT_EQ(tablet.segments().at(0).from, qcPair<double>(10.5, 20.0));
}

TEST_F(RegionTTest, ARegionWithoutEdgeletsDrawsNothing) {
  qcRecordingTablet tablet;
  RegionT().draw(tablet, qcColor::red, qcUITablet::eImageLayer);
  EXPECT_TRUE(tablet.segments().empty());
}

TEST_F(RegionTTest, HolesOfNeitherKindAreDrawn) {
  RegionT region(edgelets_, 7);
  const Handle hole(new RegionT(edgeletsAt(holePoints()), 1));
  region.holes({hole});
  setPlainHoles(region, {hole});
  qcRecordingTablet tablet;
  region.draw(tablet, qcColor::red, qcUITablet::eImageLayer);
  EXPECT_EQ(tablet.segments().size(), edgelets_.size());
}

// What is not supported.

TEST_F(RegionTTest, UnsupportedOperationsThrowBadWindowAndTouchNothing) {
  const RegionT region(edgelets_, 7);
  const Handle hole(new RegionT);
  RegionT dest(edgeletsAt({{1.0, 1.0}}), 8);
  dest.holes({hole});
  EXPECT_THROW(region.regularizeT(dest), qcPel::BadWindow);
  EXPECT_THROW(region.mapT(qcXform<2>::I, dest), qcPel::BadWindow);
  EXPECT_THROW(region.convexHullT(dest), qcPel::BadWindow);
  EXPECT_EQ(dest.data(), edgeletsAt({{1.0, 1.0}}));
  EXPECT_EQ(dest.points(), Points({{1.0, 1.0}}));
  EXPECT_EQ(dest.label(), 8U);
  EXPECT_EQ(dest.holes(), RegionT::Holes{hole});
}

// Copies.

TEST_F(RegionTTest, CopiesHaveEverythingAndShareHolesAndTransform) {
  RegionT region(edgelets_, 7);
  const Handle hole(new RegionT(edgeletsAt(holePoints()), 1));
  region.holes({hole});
  const PlainHandle plain = plainHole();
  setPlainHoles(region, {plain});
  region.data(edgelets_);
  RegionT assigned;
  assigned = region;
  const RegionT copy(region);
  for (const RegionT* each : {&copy, &std::as_const(assigned)}) {
    EXPECT_EQ(each->points(), square_);
    EXPECT_EQ(each->data(), edgelets_);
    EXPECT_EQ(each->label(), 7U);
    EXPECT_EQ(each->holes(), RegionT::Holes{hole});
    EXPECT_EQ(each->qcRegion::holes(), std::vector<PlainHandle>{plain});
    EXPECT_TRUE(each->dataFromPointsXform() == region.dataFromPointsXform());
  }
}

TEST_F(RegionTTest, CopiesCarryAnswersAlong) {
  RegionT region(edgelets_, 7);
  setPlainHoles(region, {plainHole()});
  RegionT assigned;
  ASSERT_NE(region.centerOfMass(true), qcVector<2>());
  assigned = region;
  EXPECT_EQ(RegionT(region).centerOfMass(true), qcVector<2>());
  EXPECT_EQ(assigned.centerOfMass(true), qcVector<2>());
}

TEST_F(RegionTTest, ACopyIsIndependent) {
  const RegionT region(edgelets_, 7);
  RegionT copy(region);
  copy.points(squarePoints({1.0, 1.0}));
  copy.holes({Handle(new RegionT)});
  EXPECT_EQ(region.data(), edgelets_);
  EXPECT_EQ(region.points(), square_);
  EXPECT_TRUE(region.holes().empty());
}

TEST_F(RegionTTest, AssigningARegionToItselfChangesNothing) {
  RegionT region(edgelets_, XformHandle(new testXform({10.0, 20.0})), 7);
  const Handle hole(new RegionT);
  region.holes({hole});
  const PlainHandle plain(new qcRegion(movedBy(holePoints(), {-10.0, -20.0}), {}));
  setPlainHoles(region, {plain});
  region.data(edgelets_);
  ASSERT_NE(region.centerOfMass(true), qcVector<2>());
  const RegionT& same = region;
  region = same;
  EXPECT_EQ(region.data(), edgelets_);
  EXPECT_EQ(region.points(), squarePoints({-10.0, -20.0}));
  EXPECT_EQ(region.holes(), RegionT::Holes{hole});
  EXPECT_EQ(region.qcRegion::holes(), std::vector<PlainHandle>{plain});
  EXPECT_EQ(region.label(), 7U);
  EXPECT_TRUE(region.dataFromPointsXform());
  EXPECT_EQ(region.centerOfMass(true), qcVector<2>());
}

TEST_F(RegionTTest, ARegionCanBeAssignedItsOwnHoleWithData) {
  RegionT region(edgelets_, 7);
  region.holes({Handle(new RegionT(edgeletsAt(holePoints()), 1))});
  region = *region.holes()[0];
  EXPECT_EQ(region.data(), edgeletsAt(holePoints()));
  EXPECT_EQ(region.points(), holePoints());
  EXPECT_EQ(region.label(), 1U);
  EXPECT_TRUE(region.holes().empty());
}

TEST_F(RegionTTest, ARegionThatIsAssignedItsOwnHoleGetsTheHolesOfThat) {
  const Handle inner(new RegionT(edgeletsAt(holePoints()), 3));
  auto* const hole = new RegionT(edgeletsAt(holePoints()), 1);
  hole->holes({inner, Handle(), inner});
  RegionT region(edgelets_, 7);
  region.holes({Handle(hole)});
  region = *hole;
  EXPECT_EQ(region.holes(), (RegionT::Holes{inner, Handle(), inner}));
}

TEST_F(RegionTTest, ARegionCanBeAssignedItsOwnPlainHole) {
  RegionT region(edgelets_, 7);
  const auto* const hole = new RegionT(edgeletsAt(holePoints()), 1);
  setPlainHoles(region, {PlainHandle(hole)});
  region = *hole;
  EXPECT_EQ(region.data(), edgeletsAt(holePoints()));
  EXPECT_EQ(region.points(), holePoints());
  EXPECT_TRUE(region.qcRegion::holes().empty());
}

TEST_F(RegionTTest, AssigningToItsContourPartForgetsTheRegionsAnswers) {
  RegionT region(edgelets_, 7);
  EXPECT_EQ(region.area(false), 16.0);
  const ContourT contour(edgeletsAt(squarePoints({}, 2.0)));
  static_cast<ContourT&>(region) = contour;
  EXPECT_EQ(region.area(false), 4.0);
  EXPECT_EQ(region.data(), contour.data());
}

TEST_F(RegionTTest, WritingToItAsAPlainRegionLeavesTheDataAsTheyWere) {
  RegionT region(edgelets_, 7);
  qcRegion(holePoints(), {}).map(qcXform<2>::I, region);
  EXPECT_EQ(region.points(), holePoints());
  EXPECT_EQ(region.data(), edgelets_);
}

// Change notices.

TEST_F(RegionTTest, EveryChangeSendsItsNotices) {
  const RegionT other(edgelets_, 7);
  const std::vector<NoticeCase<RegionT>> cases = {
      {"data: once", [&](RegionT& r) { r.data(edgelets_); }, 1},
      {"points: by the setter and by the hook", [&](RegionT& r) { r.points(square_); }, 2},
      {"plain holes: by the setter and by the hook",
       [](RegionT& r) { setPlainHoles(r, {plainHole()}); }, 2},
      {"label", [](RegionT& r) { r.label(9); }, 1},
      {"assignment", [&](RegionT& r) { r = other; }, 1},
      {"self-assignment: none", [](RegionT& r) { r = *&r; }, 0},
      {"isClosed(true): none", [](RegionT& r) { r.isClosed(true); }, 0},
      {"queries: none",
       [](RegionT& r) {
         r.area(true), r.point(r.datum({1.0, 2.0}));
       },
       0},
  };
  expectNotices(cases, edgelets_, 7UL);
}

}  // namespace
