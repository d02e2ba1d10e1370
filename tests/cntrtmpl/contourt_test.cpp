// SPDX-License-Identifier: MIT
//
// The contour with edge elements: which side wins, its transform, comparison, copies, notices. Its
// record is in cntrtmpl_archive_test.cpp.

#include <cntrtmpl/contourt.h>

#include <memory>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <testing/heap/heap.h>

#include "notices.h"
#include "probe.h"
#include "samples.h"
#include "test_xform.h"

namespace {

class ContourTTest : public testing::Test {
 protected:
  ContourTTest() { testXform::resetCounts(); }
  ~ContourTTest() override { EXPECT_EQ(testXform::alive, 0); }

  const Points square_ = squarePoints();
  const Edgelets edgelets_ = edgeletsAt(square_);
};

/// A contour whose data lie at `points` moved by (10, 20).
ContourT movedContour(const Points& points) {
  return ContourT(edgeletsAt(movedBy(points, {10.0, 20.0})),
                  XformHandle(new testXform({10.0, 20.0})));
}

TEST_F(ContourTTest, ADefaultContourIsEmptyClosedAndWithoutTransform) {
  const ContourT contour;
  EXPECT_TRUE(contour.points().empty());
  EXPECT_TRUE(contour.data().empty());
  EXPECT_TRUE(contour.isClosed());
  EXPECT_EQ(contour.label(), 0U);
  EXPECT_EQ(contour.cachedVectorSize(), 3);
  EXPECT_FALSE(contour.dataFromPointsXform());
}

TEST_F(ContourTTest, WithoutTransformDatumAndPointThrowBadPointer) {
  const ContourT contour;
  EXPECT_THROW(contour.datum({1.0, 2.0}), qcBadPointer);
  EXPECT_THROW(contour.point(qcEdgelet()), qcBadPointer);
}

TEST_F(ContourTTest, WithoutTransformSettingPointsThrowsBadPointerAndThePointsStay) {
  ContourT contour;
  EXPECT_THROW(contour.points(square_), qcBadPointer);
  EXPECT_EQ(contour.points(), square_);
  EXPECT_TRUE(contour.data().empty());
}

TEST_F(ContourTTest, WithoutTransformSettingDataThrowsBadPointerAndChangesNothing) {
  ContourT contour;
  EXPECT_THROW(contour.data(edgelets_), qcBadPointer);
  EXPECT_TRUE(contour.points().empty());
  EXPECT_TRUE(contour.data().empty());
}

TEST_F(ContourTTest, WithoutTransformNoPointsAndNoDataAreAccepted) {
  ContourT contour;
  EXPECT_NO_THROW(contour.points({}));
  EXPECT_NO_THROW(contour.data({}));
}

TEST_F(ContourTTest, EmptyDataGiveAnEmptyContourThatWorks) {
  ContourT contour{Edgelets()};
  EXPECT_TRUE(contour.points().empty());
  EXPECT_TRUE(contour.data().empty());
  EXPECT_TRUE(contour.isClosed());
  EXPECT_EQ(contour.length(), 0.0);
  EXPECT_THROW(contour.meanPosition(), qcContourDefs::EmptyContour);
  EXPECT_EQ(contour.datum({1.0, 2.0}).position(), qcVector<2>(1.0, 2.0));
  contour.data(edgelets_);
  EXPECT_EQ(contour.length(), 16.0);
}

TEST_F(ContourTTest, PointsOfANewContourAreThePositionsOfItsData) {
  const ContourT contour(edgelets_);
  EXPECT_EQ(contour.points(), square_);
  EXPECT_EQ(contour.data(), edgelets_);
  EXPECT_TRUE(contour.isClosed());
  EXPECT_EQ(contour.label(), 0U);
  EXPECT_EQ(contour.cachedVectorSize(), 3);
}

TEST_F(ContourTTest, WithATransformPointsAreThePositionsMappedBack) {
  const ContourT contour = movedContour(square_);
  EXPECT_EQ(contour.points(), square_);
  EXPECT_EQ(contour.data(), edgeletsAt(movedBy(square_, {10.0, 20.0})));
}

TEST_F(ContourTTest, ANullHandleMeansTheIdentity) {
  const ContourT contour(edgelets_, XformHandle());
  ASSERT_TRUE(contour.dataFromPointsXform());
  EXPECT_EQ(contour.dataFromPointsXform()->linearXform(), qcXform<2>::I);
  EXPECT_NE(dynamic_cast<const qc2XformLinear*>(contour.dataFromPointsXform().get()), nullptr);
  EXPECT_EQ(contour.points(), square_);
}

// Which side wins.

TEST_F(ContourTTest, SettingDataRebuildsThePointsAndKeepsTheData) {
  ContourT contour = movedContour(square_);
  const Points triangle = {{0.0, 0.0}, {3.0, 0.0}, {0.0, 4.0}};
  const Edgelets data = edgeletsAt(movedBy(triangle, {10.0, 20.0}));
  contour.data(data);
  EXPECT_EQ(contour.points(), triangle);
  EXPECT_EQ(contour.data(), data);
}

TEST_F(ContourTTest, MagnitudesSurviveSettingDataAndAreZeroAfterSettingPoints) {
  ContourT contour(edgelets_);
  contour.data(edgelets_);
  EXPECT_EQ(contour.data().front().magnitude(), 200);
  static_cast<qcContour&>(contour).points(square_);
  EXPECT_EQ(contour.data(), bareEdgeletsAt(square_));
}

TEST_F(ContourTTest, SettingPointsRebuildsTheDataThroughTheTransform) {
  ContourT contour = movedContour(square_);
  const Points triangle = {{0.0, 0.0}, {3.0, 0.0}, {0.0, 4.0}};
  contour.points(triangle);
  EXPECT_EQ(contour.points(), triangle);
  EXPECT_EQ(contour.data(), bareEdgeletsAt(movedBy(triangle, {10.0, 20.0})));
}

TEST_F(ContourTTest, TheSideThatWasSetLastWins) {
  ContourT contour(edgelets_);
  contour.points(squarePoints({1.0, 0.0}));
  contour.data(edgelets_);
  EXPECT_EQ(contour.points(), square_);
  EXPECT_EQ(contour.data(), edgelets_);
  contour.points(squarePoints({2.0, 0.0}));
  EXPECT_EQ(contour.data(), bareEdgeletsAt(squarePoints({2.0, 0.0})));
}

TEST_F(ContourTTest, SettingPointsRunsTheDataHookOnceAndNotTheOther) {
  HookCounter<ContourT> contour(edgelets_);
  contour.points(square_);
  EXPECT_EQ(contour.dataRebuilt, 1);
  EXPECT_EQ(contour.pointsRebuilt, 0);
}

TEST_F(ContourTTest, SettingDataRunsThePointsHookOnceAndNotTheOther) {
  HookCounter<ContourT> contour(edgelets_);
  contour.data(edgelets_);
  EXPECT_EQ(contour.pointsRebuilt, 1);
  EXPECT_EQ(contour.dataRebuilt, 0);
}

TEST_F(ContourTTest, SettingItsOwnDataKeepsThem) {
  ContourT contour(edgelets_);
  contour.data(contour.data());
  EXPECT_EQ(contour.data(), edgelets_);
  EXPECT_EQ(contour.points(), square_);
}

TEST_F(ContourTTest, SettingItsOwnPointsKeepsThem) {
  ContourT contour(edgelets_);
  contour.points(contour.points());
  EXPECT_EQ(contour.points(), square_);
  EXPECT_EQ(contour.data(), bareEdgeletsAt(square_));
}

TEST_F(ContourTTest, SettingEitherSideForgetsAnswers) {
  ContourT contour(edgelets_);
  EXPECT_EQ(contour.length(), 16.0);
  contour.data(edgeletsAt(squarePoints({}, 2.0)));
  EXPECT_EQ(contour.length(), 8.0);
  contour.points(square_);
  EXPECT_EQ(contour.length(), 16.0);
}

TEST_F(ContourTTest, SettingEitherSideKeepsLabelClosednessAndCapacity) {
  ContourT contour(edgelets_);
  contour.label(7);
  contour.isClosed(false);
  contour.cachedVectorSize(5);
  contour.data(edgelets_);
  contour.points(square_);
  EXPECT_EQ(contour.label(), 7U);
  EXPECT_FALSE(contour.isClosed());
  EXPECT_EQ(contour.cachedVectorSize(), 5);
}

TEST_F(ContourTTest, OpeningLeavesTheData) {
  ContourT contour(edgelets_);
  contour.isClosed(false);
  EXPECT_EQ(contour.length(), 12.0);
  EXPECT_EQ(contour.data(), edgelets_);
}

// The transform.

TEST_F(ContourTTest, ConstructorsCloneTheTransform) {
  const XformHandle given(new testXform({10.0, 20.0}));
  const ContourT contour(edgelets_, given);
  EXPECT_EQ(testXform::clones, 1);
  EXPECT_FALSE(contour.dataFromPointsXform() == given);
  EXPECT_NE(dynamic_cast<const testXform*>(contour.dataFromPointsXform().get()), nullptr);
}

TEST_F(ContourTTest, CopiesShareTheTransform) {
  const ContourT contour = movedContour(square_);
  ContourT assigned;
  testXform::resetCounts();
  const ContourT copy(contour);
  assigned = contour;
  EXPECT_TRUE(copy.dataFromPointsXform() == contour.dataFromPointsXform());
  EXPECT_TRUE(assigned.dataFromPointsXform() == contour.dataFromPointsXform());
  EXPECT_EQ(testXform::clones, 0);
}

TEST_F(ContourTTest, TheTransformIsHandedOutShared) {
  const ContourT contour = movedContour(square_);
  testXform::resetCounts();
  EXPECT_TRUE(contour.dataFromPointsXform() == contour.dataFromPointsXform());
  EXPECT_EQ(testXform::clones, 0);
}

TEST_F(ContourTTest, ADatumIsThePointMappedWithoutMagnitudeAndAngle) {
  const ContourT contour = movedContour(square_);
  EXPECT_EQ(contour.datum({1.0, 2.0}), qcEdgelet({11.0, 22.0}, 0, qcAngle8(0)));
}

TEST_F(ContourTTest, APointIsThePositionMappedBackWhateverMagnitudeAndAngle) {
  const ContourT contour = movedContour(square_);
  const qcVector<2> expected(1.0, 2.0);
  EXPECT_EQ(contour.point(qcEdgelet({11.0, 22.0}, 0, qcAngle8(0))), expected);
  EXPECT_EQ(contour.point(qcEdgelet({11.0, 22.0}, 65535, qcAngle8(255))), expected);
}

TEST_F(ContourTTest, WithTheIdentityAPointComesBackFromItsDatum) {
  const ContourT contour(edgelets_);
  for (const qcVector<2>& p : {qcVector<2>(0.1, -0.7), qcVector<2>(1e9, 1e-9)}) {
    EXPECT_EQ(contour.point(contour.datum(p)), p);
  }
}

TEST_F(ContourTTest, TheTransformIsInvertedOnceForAllPoints) {
  ContourT contour = movedContour(square_);
  EXPECT_EQ(testXform::inversions, 1);
  contour.point(qcEdgelet());
  contour.data(contour.data());
  contour.points(square_);
  contour.point(qcEdgelet());
  EXPECT_EQ(testXform::inversions, 1);
}

TEST_F(ContourTTest, TheTransformIsNotInvertedBeforeItIsNeeded) {
  const ContourT contour(Edgelets(), XformHandle(new testXform({1.0, 1.0})));
  contour.datum({1.0, 2.0});
  EXPECT_EQ(testXform::inversions, 0);
}

TEST_F(ContourTTest, CopiesCarryTheInverseAlong) {
  const ContourT contour = movedContour(square_);
  ContourT assigned(edgelets_);
  const ContourT copy(contour);
  assigned = contour;
  EXPECT_EQ(copy.point(qcEdgelet()), qcVector<2>(-10.0, -20.0));
  EXPECT_EQ(assigned.point(qcEdgelet()), qcVector<2>(-10.0, -20.0));
  EXPECT_EQ(testXform::inversions, 1);
}

TEST_F(ContourTTest, AssigningAContourThatWasNeverInvertedDropsTheInverse) {
  const ContourT source(Edgelets(), XformHandle(new testXform({1.0, 1.0})));
  ContourT target = movedContour(square_);
  target = source;
  EXPECT_EQ(target.point(qcEdgelet()), qcVector<2>(-1.0, -1.0));
}

TEST_F(ContourTTest, AFailedInversePassesThroughAndTheNextCallTriesAgain) {
  const ContourT contour(Edgelets(), XformHandle(new testXform({1.0, 1.0})));
  testXform::failures = 2;
  EXPECT_THROW(contour.point(qcEdgelet()), qcMathError::Singular);
  EXPECT_THROW(contour.point(qcEdgelet()), qcMathError::Singular);
  EXPECT_EQ(contour.point(qcEdgelet()), qcVector<2>(-1.0, -1.0));
  EXPECT_EQ(contour.point(qcEdgelet()), qcVector<2>(-1.0, -1.0));
  EXPECT_EQ(testXform::inversions, 3);
}

TEST_F(ContourTTest, AFailedInverseLeavesDataAndPointsAsTheyWere) {
  ContourT contour(Edgelets(), XformHandle(new testXform({10.0, 20.0})));
  contour.points(square_);
  contour.label(7);
  const Edgelets before = contour.data();
  testXform::failures = 1;
  EXPECT_THROW(contour.data(edgeletsAt({{1.0, 1.0}})), qcMathError::Singular);
  EXPECT_EQ(contour.points(), square_);
  EXPECT_EQ(contour.data(), before);
  contour.data(edgeletsAt({{11.0, 21.0}}));
  EXPECT_EQ(contour.points(), Points({{1.0, 1.0}}));
}

TEST_F(ContourTTest, ASingularTransformThrowsItsOwnError) {
  EXPECT_THROW(ContourT(edgelets_, singularXform()), qcMathError::Singular);
  ContourT contour(Edgelets(), singularXform());
  EXPECT_THROW(contour.point(qcEdgelet()), qcMathError::Singular);
  EXPECT_THROW(contour.data(edgelets_), qcMathError::Singular);
  EXPECT_TRUE(contour.data().empty());
  EXPECT_TRUE(contour.points().empty());
}

TEST_F(ContourTTest, ASingularTransformStillMapsPointsToData) {
  ContourT contour(Edgelets(), singularXform());
  contour.points({{1.0, 1.0}});
  EXPECT_EQ(contour.data(), bareEdgeletsAt({{3.0, 6.0}}));
}

// Comparison.

TEST_F(ContourTTest, ACopyEqualsItsSource) {
  const ContourT contour(edgelets_);
  EXPECT_TRUE(ContourT(contour) == contour);
}

TEST_F(ContourTTest, ContoursMadeSeparatelyFromTheSameTransformAreUnequal) {
  const XformHandle given(new testXform({10.0, 20.0}));
  EXPECT_FALSE(ContourT(edgelets_, given) == ContourT(edgelets_, given));
  EXPECT_FALSE(ContourT(edgelets_) == ContourT(edgelets_));
}

TEST_F(ContourTTest, DataLabelClosednessAndCapacityTakeNoPartInTheComparison) {
  const ContourT contour(edgelets_);
  ContourT other(contour);
  other.points(square_);
  other.label(7);
  other.isClosed(false);
  other.cachedVectorSize(9);
  EXPECT_FALSE(other.data() == contour.data());
  EXPECT_TRUE(other == contour);
}

TEST_F(ContourTTest, ContoursWithOtherPointsAreUnequal) {
  const ContourT contour(edgelets_);
  ContourT other(contour);
  Points points = square_;
  points[2] = points[2] + qcVector<2>(0.0, 1e-15 * 4.0);
  ASSERT_FALSE(points == square_);
  other.points(points);
  EXPECT_FALSE(other == contour);
  points = square_;
  points.pop_back();
  other.points(points);
  EXPECT_FALSE(other == contour);
}

TEST_F(ContourTTest, ContoursWithoutTransformAreEqualWhenTheirPointsAre) {
  EXPECT_TRUE(ContourT() == ContourT());
}

TEST_F(ContourTTest, AContourWithoutTransformIsUnequalToAnEmptyOneThatHasOne) {
  EXPECT_FALSE(ContourT() == ContourT(Edgelets()));
}

// Copies.

TEST_F(ContourTTest, ACopyHasPointsDataLabelClosednessAndCapacity) {
  ContourT contour(edgelets_);
  contour.label(7);
  contour.isClosed(false);
  contour.cachedVectorSize(5);
  ContourT assigned;
  assigned = contour;
  const ContourT copy(contour);
  for (const ContourT* each : {&copy, &std::as_const(assigned)}) {
    EXPECT_EQ(each->points(), square_);
    EXPECT_EQ(each->data(), edgelets_);
    EXPECT_EQ(each->label(), 7U);
    EXPECT_FALSE(each->isClosed());
    EXPECT_EQ(each->cachedVectorSize(), 5);
  }
}

TEST_F(ContourTTest, ACopyIsIndependent) {
  ContourT contour(edgelets_);
  ContourT copy(contour);
  copy.points(squarePoints({1.0, 1.0}));
  EXPECT_EQ(contour.points(), square_);
  EXPECT_EQ(contour.data(), edgelets_);
  contour.data({});
  EXPECT_EQ(copy.points(), squarePoints({1.0, 1.0}));
}

/// Whether the contour's edges have to be made when they are asked for.
bool remembersItsEdges(const ContourT& contour) {
  const long before = heap::blocksMade();
  EXPECT_EQ(Probe<ContourT>::edges(contour).size(), contour.points().size());
  return heap::blocksMade() == before;
}

TEST_F(ContourTTest, CopiesCarryAnswersAlong) {
  if (!heap::counts) GTEST_SKIP() << "nothing tells an answer from a remembered one";
  const ContourT contour(edgelets_);
  const ContourT before(contour);
  EXPECT_FALSE(remembersItsEdges(before));
  EXPECT_FALSE(remembersItsEdges(contour));
  ContourT assigned(edgelets_);
  assigned = contour;
  EXPECT_TRUE(remembersItsEdges(ContourT(contour)));
  EXPECT_TRUE(remembersItsEdges(assigned));
}

TEST_F(ContourTTest, AssigningAContourToItselfChangesNothing) {
  ContourT contour = movedContour(square_);
  contour.label(7);
  remembersItsEdges(contour);
  const Edgelets before = contour.data();
  const ContourT& same = contour;
  contour = same;
  EXPECT_EQ(contour.points(), square_);
  EXPECT_EQ(contour.data(), before);
  EXPECT_EQ(contour.label(), 7U);
  EXPECT_TRUE(contour.dataFromPointsXform());
  EXPECT_TRUE(remembersItsEdges(contour));
}

TEST_F(ContourTTest, AssigningToItAsAPlainContourLeavesTheDataAsTheyWere) {
  ContourT contour(edgelets_);
  static_cast<qcContour&>(contour) = qcContour({{1.0, 2.0}}, true, 0);
  EXPECT_EQ(contour.points(), Points({{1.0, 2.0}}));
  EXPECT_EQ(contour.data(), edgelets_);
  Probe<qcContour>::rebuildData(contour);
  EXPECT_EQ(contour.data(), bareEdgeletsAt({{1.0, 2.0}}));
}

// What is not supported.

TEST_F(ContourTTest, ConvexHullTThrowsBadWindowAndTouchesNothing) {
  const ContourT contour(edgelets_);
  RegionT hull(edgeletsAt({{1.0, 1.0}}), 7);
  EXPECT_THROW(contour.convexHullT(hull), qcPel::BadWindow);
  EXPECT_EQ(hull.data(), edgeletsAt({{1.0, 1.0}}));
  EXPECT_EQ(hull.points(), Points({{1.0, 1.0}}));
  EXPECT_EQ(hull.label(), 7U);
}

TEST_F(ContourTTest, MapTThrowsBadWindowAndTouchesNothing) {
  const ContourT contour(edgelets_);
  ContourT result(edgeletsAt({{1.0, 1.0}}));
  EXPECT_THROW(contour.mapT(qcXform<2>::I, result), qcPel::BadWindow);
  EXPECT_EQ(result.data(), edgeletsAt({{1.0, 1.0}}));
  EXPECT_EQ(result.points(), Points({{1.0, 1.0}}));
}

// Change notices.

TEST_F(ContourTTest, EveryChangeSendsItsNotices) {
  const ContourT other(edgelets_);
  const std::vector<NoticeCase<ContourT>> cases = {
      {"data: once", [&](ContourT& c) { c.data(edgelets_); }, 1},
      {"points: by the setter and by the hook", [&](ContourT& c) { c.points(square_); }, 2},
      {"isClosed", [](ContourT& c) { c.isClosed(false); }, 1},
      {"label", [](ContourT& c) { c.label(7); }, 1},
      {"cachedVectorSize", [](ContourT& c) { c.cachedVectorSize(7); }, 1},
      {"assignment", [&](ContourT& c) { c = other; }, 1},
      {"self-assignment: none", [](ContourT& c) { c = *&c; }, 0},
      {"queries: none",
       [](ContourT& c) {
         c.length(), c.point(c.datum({1.0, 2.0}));
       },
       0},
  };
  expectNotices(cases, edgelets_);
}

TEST_F(ContourTTest, NothingIsCountedWhileTrackingIsOff) {
  ContourT contour(edgelets_);
  contour.points(square_);
  contour.data(edgelets_);
  EXPECT_EQ(contour.changes(), 0U);
}

}  // namespace
