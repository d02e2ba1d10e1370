// SPDX-License-Identifier: MIT
//
// The region's model: construction, copying, holes, closedness, mapping, drawing. Its measures,
// queries, repair and record are tested in files of their own.

#include <cntr/region.h>

#include <type_traits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/display/recordingtablet.h>

#include "region_fixtures.h"

namespace {

using namespace fixtures;
using testing::ElementsAre;
using testing::IsEmpty;

const qcXform<2> movedRight(qcMatrix<2>(), qcVector<2>(100, 0));
const qcXform<2> mirrored(qcMatrix<2>(-1, 0, 0, 1), qcVector<2>());

TEST(RegionTest, ADefaultRegionIsEmptyAndClosed) {
  const qcRegion region;
  EXPECT_THAT(region.points(), IsEmpty());
  EXPECT_THAT(region.holes(), IsEmpty());
  EXPECT_TRUE(region.isClosed());
  EXPECT_EQ(region.label(), 0U);
  EXPECT_EQ(region.cachedVectorSize(), 3);
}

TEST(RegionTest, VerticesBecomeTheClosedBoundary) {
  const qcRegion region(square(0, 0, 2), keep);
  EXPECT_EQ(region.points(), square(0, 0, 2));
  EXPECT_TRUE(region.isClosed());
  EXPECT_EQ(region.length(), 8.0);
  EXPECT_EQ(region.label(), 0U);
  EXPECT_THAT(region.holes(), IsEmpty());
}

TEST(RegionTest, AnyNumberOfVerticesIsAccepted) {
  for (std::size_t n = 0; n < 4; ++n) {
    Points points = square(0, 0, 1);
    points.resize(n);
    EXPECT_EQ(qcRegion(points, keep).points(), points);
  }
}

TEST(RegionTest, WithoutRepairASelfCrossingBoundaryIsKept) {
  EXPECT_EQ(qcRegion(bowTie(), keep).points(), bowTie());
}

TEST(RegionTest, OuterHullModeReplacesTheBoundaryByItsOuterHull) {
  qcRegion hull;
  qcRegion(bowTie(), keep).outerHull(hull);
  const qcRegion region(bowTie(), qcContourDefs::eOuterHull);
  EXPECT_NE(hull.points(), bowTie());
  EXPECT_EQ(region.points(), hull.points());
}

TEST(RegionTest, RegularizeModeReplacesTheBoundaryByItsRegularization) {
  qcRegion regular;
  qcRegion(bowTie(), keep).regularize(regular);
  const qcRegion region(bowTie(), qcContourDefs::eRegularize);
  EXPECT_NE(regular.points(), bowTie());
  EXPECT_EQ(region.points(), regular.points());
  EXPECT_NE(region.points(), qcRegion(bowTie(), qcContourDefs::eOuterHull).points());
}

TEST(RegionTest, AnyOtherModeRepairsNothing) {
  for (const int mode : {3, -1, 1000}) {
    const auto unknown = static_cast<qcContourDefs::IntersectionMode>(mode);
    EXPECT_EQ(qcRegion(bowTie(), unknown).points(), bowTie());
    EXPECT_EQ(qcRegion(qcPolygon(bowTie()), unknown).points(), bowTie());
    EXPECT_EQ(qcRegion(qcContour(bowTie(), true, 0), unknown).points(), bowTie());
  }
}

TEST(RegionTest, EveryConstructorAppliesTheMode) {
  const Points regular = qcRegion(bowTie(), qcContourDefs::eRegularize).points();
  EXPECT_EQ(qcRegion(qcPolygon(bowTie()), qcContourDefs::eRegularize).points(), regular);
  EXPECT_EQ(qcRegion(qcContour(bowTie(), true, 0), qcContourDefs::eRegularize).points(), regular);
  // The closing edge is part of the boundary, whatever the contour says.
  EXPECT_EQ(qcRegion(qcContour(bowTie(), false, 0), qcContourDefs::eRegularize).points(), regular);
}

TEST(RegionTest, APolygonsRepeatedLastVertexIsKept) {
  Points points = square(0, 0, 2);
  points.push_back(points.front());
  const qcRegion region(qcPolygon(points), keep);
  EXPECT_EQ(region.points(), points);
  EXPECT_TRUE(region.isClosed());
  EXPECT_EQ(region.label(), 0U);
}

TEST(RegionTest, ARegionOfAnOpenPolygonIsClosed) {
  const qcRegion region(qcPolygon(square(0, 0, 2)), keep);
  EXPECT_TRUE(region.isClosed());
  EXPECT_EQ(region.length(), 8.0);
}

TEST(RegionTest, ARegionOfAnOpenContourIsClosed) {
  qcContour open(square(0, 0, 2), false, 7);
  open.cachedVectorSize(5);
  const qcRegion region(open, keep);
  EXPECT_TRUE(region.isClosed());
  EXPECT_EQ(region.points(), open.points());
  EXPECT_EQ(region.label(), 7U);
  EXPECT_EQ(region.cachedVectorSize(), 5);
}

TEST(RegionTest, ARegionOfAnOpenContourForgetsTheContoursAnswers) {
  const qcContour open(square(0, 0, 2), false, 0);
  EXPECT_EQ(open.length(), 6.0);
  EXPECT_EQ(qcRegion(open, keep).length(), 8.0);
}

TEST(RegionTest, ARegionOfAClosedContourForgetsTheContoursAnswersToo) {
  WatchedRegion watched(square(0, 0, 2));
  EXPECT_EQ(watched.length(), 8.0);
  watched.replaceBehindItsBack(square(0, 0, 3));
  EXPECT_EQ(watched.length(), 8.0);
  const qcContour& boundary = watched;
  EXPECT_EQ(qcRegion(boundary, keep).length(), 12.0);
}

TEST(RegionTest, ARegionOfARegionTakenAsAContourHasNoHoles) {
  const qcRegion region = squareWithHole();
  const qcContour& boundary = region;
  EXPECT_THAT(qcRegion(boundary, keep).holes(), IsEmpty());
  EXPECT_EQ(qcRegion(region).holes().size(), 1U);
}

/// Derives from both, as the classes with a datum for each vertex do.
class ContourSide : public virtual qcContour {
 public:
  ContourSide() : qcContour(square(0, 0, 1), false, 1) {}
};
class MostDerived : public qcRegion, public ContourSide {
 public:
  MostDerived() : qcContour(square(0, 0, 3), true, 9), qcRegion(square(0, 0, 2), keep) {}
};

TEST(RegionTest, TheMostDerivedClassConstructsTheContour) {
  static_assert(std::is_base_of_v<qcContour, MostDerived> &&
                std::is_convertible_v<MostDerived*, qcContour*>);
  const MostDerived region;
  EXPECT_EQ(region.points(), square(0, 0, 3));
  EXPECT_EQ(region.label(), 9U);
  EXPECT_EQ(region.area(false), 9.0);
}

TEST(RegionTest, TheRegionsAnswersOverrideTheContours) {
  MostDerived region;
  qcContour& contour = region;
  EXPECT_TRUE(contour.isClosed());
  EXPECT_THROW(contour.isClosed(false), qcContourDefs::RegionCannotBeSetOpen);
}

TEST(RegionCopyTest, ACopySharesTheHoles) {
  const qcRegion region = squareWithHole();
  const qcRegion copy(region);
  ASSERT_EQ(copy.holes().size(), 1U);
  EXPECT_EQ(copy.holes()[0], region.holes()[0]);
  EXPECT_EQ(copy.points(), region.points());
}

TEST(RegionCopyTest, AnAssignedRegionSharesTheHoles) {
  const qcRegion region = squareWithHole();
  qcRegion target = regionWith(square(50, 50, 9), {handle(square(52, 52, 1))});
  target = region;
  ASSERT_EQ(target.holes().size(), 1U);
  EXPECT_EQ(target.holes()[0], region.holes()[0]);
  EXPECT_EQ(target.points(), region.points());
}

TEST(RegionCopyTest, ACopyAnswersWhatItsSourceHasAnswered) {
  WatchedRegion region(square(0, 0, 2));
  EXPECT_EQ(region.area(false), 4.0);
  EXPECT_EQ(region.area(true), 4.0);
  EXPECT_EQ(region.centerOfMass(false), qcVector<2>(1, 1));
  const qcMatrix<2> inertia = region.inertiaMatrix(false);
  region.replaceBehindItsBack(square(10, 10, 6));
  const qcRegion copy(region);
  qcRegion assigned;
  assigned = region;
  for (const qcRegion* remembered : {&copy, static_cast<const qcRegion*>(&assigned)}) {
    EXPECT_EQ(remembered->points(), square(10, 10, 6));
    EXPECT_EQ(remembered->area(false), 4.0);
    EXPECT_EQ(remembered->area(true), 4.0);
    EXPECT_EQ(remembered->centerOfMass(false), qcVector<2>(1, 1));
    EXPECT_EQ(remembered->inertiaMatrix(false), inertia);
  }
}

TEST(RegionCopyTest, ACopyForgetsByItself) {
  const qcRegion region(square(0, 0, 2), keep);
  EXPECT_EQ(region.area(false), 4.0);
  qcRegion copy(region);
  copy.points(square(0, 0, 3));
  EXPECT_EQ(copy.area(false), 9.0);
  EXPECT_EQ(region.area(false), 4.0);
}

TEST(RegionCopyTest, AssignmentForgetsTheAnswersOfTheTarget) {
  qcRegion target(square(0, 0, 2), keep);
  EXPECT_EQ(target.area(false), 4.0);
  target = qcRegion(square(0, 0, 3), keep);
  EXPECT_EQ(target.area(false), 9.0);
}

TEST(RegionCopyTest, AssigningARegionToItselfDoesNothing) {
  qcRegion region = squareWithHole();
  const qcRegion& same = region;
  const Handle hole = region.holes()[0];
  EXPECT_EQ(noticesOf(region, [&] { region = same; }), 0U);
  EXPECT_EQ(region.points(), square(0, 0, 10));
  ASSERT_EQ(region.holes().size(), 1U);
  EXPECT_EQ(region.holes()[0], hole);
}

TEST(RegionCopyTest, ARegionCanBecomeOneOfItsHoles) {
  qcRegion region =
      regionWith(square(0, 0, 10),
                 {handle(square(1, 1, 3), {handle(square(2, 2, 1))}), handle(square(6, 6, 1))});
  region = *region.holes()[0];
  EXPECT_EQ(region.points(), square(1, 1, 3));
  ASSERT_EQ(region.holes().size(), 1U);
  EXPECT_EQ(region.holes()[0]->points(), square(2, 2, 1));
  region = *region.holes()[0];
  EXPECT_EQ(region.points(), square(2, 2, 1));
  EXPECT_THAT(region.holes(), IsEmpty());
}

TEST(RegionCopyTest, ARegionCanTakeTheHolesOfItsHole) {
  qcRegion region =
      regionWith(square(0, 0, 10), {handle(square(1, 1, 3), {handle(square(2, 2, 1))})});
  region.holes(region.holes()[0]->holes());
  ASSERT_EQ(region.holes().size(), 1U);
  EXPECT_EQ(region.holes()[0]->points(), square(2, 2, 1));
}

TEST(RegionCopyTest, ARegionAssignedThroughItsContourPartForgetsItsOwnAnswers) {
  qcRegion region(square(0, 0, 2), keep);
  EXPECT_EQ(region.area(false), 4.0);
  EXPECT_EQ(region.area(true), 4.0);
  EXPECT_EQ(region.centerOfMass(false), qcVector<2>(1, 1));
  qcContour& boundary = region;
  boundary = qcContour(square(0, 0, 4), true, 0);
  EXPECT_EQ(region.area(false), 16.0);
  EXPECT_EQ(region.area(true), 16.0);
  EXPECT_EQ(region.centerOfMass(false), qcVector<2>(2, 2));
}

TEST(RegionCopyTest, ARegionMappedIntoAsAContourForgetsItsOwnAnswers) {
  qcRegion region(square(0, 0, 2), keep);
  EXPECT_EQ(region.centerOfMass(false), qcVector<2>(1, 1));
  const qcContour contour(square(0, 0, 4), true, 0);
  contour.map(movedRight, region);
  EXPECT_EQ(region.centerOfMass(false).x(), 102);
}

TEST(RegionCopyTest, ARegionAssignedThroughItsContourPartKeepsItsHoles) {
  qcRegion region = squareWithHole();
  qcContour& boundary = region;
  boundary = qcContour(square(0, 0, 20), true, 0);
  EXPECT_EQ(region.holes().size(), 1U);
}

/// A shape with many edges, so that its edges are indexed.
Points circle(std::size_t n) {
  Points points;
  for (std::size_t i = 0; i < n; ++i) {
    points.push_back(
        {10.0, qcRadian(6.283185307179586 * static_cast<double>(i) / static_cast<double>(n))});
  }
  return points;
}

TEST(RegionCopyTest, AnswersOfAnOpenContourAreNotTakenForThoseOfTheClosedBoundary) {
  const qcContour open(circle(100), false, 0);
  EXPECT_FALSE(open.isSelfIntersecting());
  EXPECT_LT(open.length(), 62.5);
  qcRegion region;
  qcContour& boundary = region;
  boundary = open;
  EXPECT_TRUE(region.isClosed());
  EXPECT_GT(region.length(), 62.5);
  // The closing edge runs just below the x axis.
  const qcLineSeg acrossClosingEdge({9, -0.3}, {11, -0.3});
  EXPECT_EQ(region.intersections(acrossClosingEdge, true).size(), 1U);
}

TEST(RegionCopyTest, AnswersOfARegionAreNotTakenForThoseOfItsOpenContour) {
  const qcRegion region(qcContour(circle(100), false, 0), keep);
  EXPECT_FALSE(region.isSelfIntersecting());
  EXPECT_GT(region.length(), 62.5);
  const qcContour open(region);
  EXPECT_FALSE(open.isClosed());
  EXPECT_LT(open.length(), 62.5);
  const qcLineSeg acrossClosingEdge({9, -0.3}, {11, -0.3});
  EXPECT_THAT(open.intersections(acrossClosingEdge, true), IsEmpty());
  qcContour assigned({}, true, 0);
  assigned = region;
  EXPECT_LT(assigned.length(), 62.5);
  EXPECT_THAT(assigned.intersections(acrossClosingEdge, true), IsEmpty());
}

/// Counts those alive.
class CountedRegion : public qcRegion {
 public:
  explicit CountedRegion(const Points& points) : qcContour(points, true, 0) { ++alive; }
  CountedRegion(const CountedRegion&) = delete;
  CountedRegion& operator=(const CountedRegion&) = delete;
  ~CountedRegion() override { --alive; }
  static int alive;
};
int CountedRegion::alive = 0;

TEST(RegionCopyTest, HolesLiveAsLongAsARegionHoldsThem) {
  {
    qcRegion copy;
    {
      qcRegion region(square(0, 0, 10), keep);
      region.holes(Handles{Handle(new CountedRegion(square(1, 1, 1)))});
      copy = region;
    }
    EXPECT_EQ(CountedRegion::alive, 1);
  }
  EXPECT_EQ(CountedRegion::alive, 0);
}

TEST(RegionEqualityTest, HolesAreNotCompared) {
  EXPECT_TRUE(squareWithHole() == qcRegion(square(0, 0, 10), keep));
}

TEST(RegionEqualityTest, BoundariesAreComparedAsContours) {
  const qcRegion region(square(0, 0, 2), keep);
  qcRegion other(region);
  other.label(5);
  EXPECT_TRUE(region == other);
  other.cachedVectorSize(4);
  EXPECT_FALSE(region == other);
  EXPECT_FALSE(region == qcRegion({{2, 0}, {2, 2}, {0, 2}, {0, 0}}, keep));
}

TEST(RegionEqualityTest, ARegionOfAnOpenContourEqualsThatOfAClosedOne) {
  const qcRegion ofOpen(qcContour(square(0, 0, 2), false, 0), keep);
  EXPECT_TRUE(ofOpen == qcRegion(qcContour(square(0, 0, 2), true, 0), keep));
  EXPECT_FALSE(ofOpen == qcContour(square(0, 0, 2), false, 0));
}

TEST(RegionClosednessTest, BeingClosedIsAcceptedAndChangesNothing) {
  qcRegion region(square(0, 0, 2), keep);
  EXPECT_EQ(noticesOf(region, [&] { region.isClosed(true); }), 0U);
  EXPECT_TRUE(region.isClosed());
}

TEST(RegionClosednessTest, BeingOpenIsRefusedWithoutAText) {
  qcRegion region(square(0, 0, 2), keep);
  try {
    region.isClosed(false);
    FAIL() << "an open region was accepted";
  } catch (const qcContourDefs::RegionCannotBeSetOpen& error) {
    EXPECT_EQ(error.message(), L"");
    EXPECT_EQ(error.errorNumber(), 0x10004684);
  }
  EXPECT_TRUE(region.isClosed());
  EXPECT_EQ(region.points(), square(0, 0, 2));
}

TEST(RegionHolesTest, TheWholeListIsReplacedInTheGivenOrder) {
  qcRegion region = squareWithHole();
  const Handles holes = {handle(square(5, 5, 2)), handle(square(1, 1, 1)), handle(square(8, 8, 1))};
  region.holes(holes);
  EXPECT_EQ(region.holes(), holes);
}

TEST(RegionHolesTest, HandlesThatMayChangeTheirRegionsAreAccepted) {
  qcRegion region(square(0, 0, 10), keep);
  const qcPtrHandle<qcRegion> hole(new qcRegion(square(1, 1, 1), keep));
  region.holes(std::vector<qcPtrHandle<qcRegion>>{hole});
  ASSERT_EQ(region.holes().size(), 1U);
  EXPECT_EQ(region.holes()[0].get(), hole.get());
}

TEST(RegionHolesTest, AnEmptyListRemovesAllHoles) {
  qcRegion region = squareWithHole();
  region.holes(Handles());
  EXPECT_THAT(region.holes(), IsEmpty());
}

TEST(RegionHolesTest, TheSameListCanBeSetAgain) {
  qcRegion region = squareWithHole();
  const Handles before = region.holes();
  region.holes(region.holes());
  EXPECT_EQ(region.holes(), before);
}

TEST(RegionHolesTest, ACrossingHoleIsRefused) {
  qcRegion region(square(0, 0, 10), keep);
  EXPECT_EQ(badParamsOf([&] { region.holes(Handles{handle(square(8, 8, 4))}); }),
            L"holes cannot intersect region");
  EXPECT_THAT(region.holes(), IsEmpty());
}

TEST(RegionHolesTest, AHoleThatTouchesTheBoundaryIsRefused) {
  qcRegion region(square(0, 0, 10), keep);
  const Points tipOnEdge = {{10, 5}, {8, 6}, {8, 4}};
  EXPECT_EQ(badParamsOf([&] { region.holes(Handles{handle(tipOnEdge)}); }),
            L"holes cannot intersect region");
}

TEST(RegionHolesTest, TouchingMeansNearerThanAMillionth) {
  qcRegion region(square(0, 0, 10), keep);
  const auto withTipAt = [](double x) { return Handles{handle({{x, 5}, {8, 6}, {8, 4}})}; };
  EXPECT_THROW(region.holes(withTipAt(10 + 1e-7)), qcContourDefs::BadParams);
  EXPECT_NO_THROW(region.holes(withTipAt(10 - 1e-5)));
}

TEST(RegionHolesTest, HolesOutsideOrAroundTheBoundaryAreAccepted) {
  qcRegion region(square(0, 0, 10), keep);
  EXPECT_NO_THROW(region.holes(Handles{handle(square(20, 20, 5))}));
  EXPECT_NO_THROW(region.holes(Handles{handle(square(-5, -5, 20))}));
}

TEST(RegionHolesTest, HolesAreNotCheckedAgainstEachOther) {
  qcRegion region(square(0, 0, 10), keep);
  EXPECT_NO_THROW(region.holes(Handles{handle(square(1, 1, 4)), handle(square(3, 3, 4))}));
  EXPECT_EQ(region.holes().size(), 2U);
}

TEST(RegionHolesTest, TheHolesOfHolesAndThePresentHolesAreNotLookedAt) {
  const Handle outside = handle(square(20, 20, 5));
  const qcPtrHandle<qcRegion> hole(new qcRegion(square(1, 1, 4), keep));
  hole->holes(Handles{handle(square(8, 8, 4))});
  qcRegion region(square(0, 0, 10), keep);
  EXPECT_NO_THROW(region.holes(Handles{hole}));
  EXPECT_NO_THROW(region.holes(Handles{handle(square(3, 3, 4))}));
}

TEST(RegionHolesTest, HolesWithoutAnOutlineAreAccepted) {
  qcRegion region(square(0, 0, 10), keep);
  EXPECT_NO_THROW(region.holes(Handles{handle({}), handle({{5, 5}})}));
  EXPECT_EQ(region.holes().size(), 2U);
}

TEST(RegionHolesTest, ABoundaryOfOneVertexCannotBeAskedForItsHoles) {
  qcRegion region(Points{{1, 1}}, keep);
  EXPECT_EQ(emptyContourOf([&] { region.holes(Handles{handle(square(0, 0, 1))}); }), L"");
  EXPECT_NO_THROW(region.holes(Handles()));
}

TEST(RegionHolesTest, ANullHandleIsRefused) {
  qcRegion region = squareWithHole();
  const Handles before = region.holes();
  EXPECT_THROW(region.holes(Handles{Handle()}), qcBadPointer);
  EXPECT_THROW(region.holes(std::vector<qcPtrHandle<qcRegion>>(1)), qcBadPointer);
  EXPECT_EQ(region.holes(), before);
}

TEST(RegionHolesTest, EveryHoleIsCheckedBeforeAnyIsReplaced) {
  qcRegion region = squareWithHole();
  const Handles before = region.holes();
  const Handle good = handle(square(6, 6, 1));
  EXPECT_THROW(region.holes(Handles{good, handle(square(8, 8, 4))}), qcContourDefs::BadParams);
  EXPECT_EQ(region.holes(), before);
  EXPECT_THROW(region.holes(Handles{good, Handle()}), qcBadPointer);
  EXPECT_EQ(region.holes(), before);
}

TEST(RegionHolesTest, HolesAreCheckedInOrder) {
  qcRegion region(square(0, 0, 10), keep);
  EXPECT_THROW(region.holes(Handles{handle(square(8, 8, 4)), Handle()}), qcContourDefs::BadParams);
  EXPECT_THROW(region.holes(Handles{Handle(), handle(square(8, 8, 4))}), qcBadPointer);
}

TEST(RegionHolesTest, SettingHolesForgetsTheAnswers) {
  qcRegion region(square(0, 0, 10), keep);
  EXPECT_EQ(region.area(true), 100.0);
  region.holes(Handles{handle(square(2, 2, 2))});
  EXPECT_EQ(region.area(true), 96.0);
}

TEST(RegionHolesTest, TheAnswersAreForgottenEvenWhenTheHolesAreRefused) {
  WatchedRegion region(square(0, 0, 10));
  EXPECT_EQ(region.area(false), 100.0);
  region.replaceBehindItsBack(square(0, 0, 5));
  EXPECT_EQ(region.area(false), 100.0);
  EXPECT_THROW(region.holes(Handles{Handle()}), qcBadPointer);
  EXPECT_EQ(region.area(false), 25.0);
}

TEST(RegionHolesTest, SettingHolesSendsOneChangeNotice) {
  qcRegion region(square(0, 0, 10), keep);
  EXPECT_EQ(noticesOf(region, [&] { region.holes(Handles{handle(square(2, 2, 2))}); }), 1U);
}

/// Records the order of what setting holes calls.
class HookedRegion : public qcRegion {
 public:
  HookedRegion() : qcContour(square(0, 0, 10), true, 0) {}
  std::string calls;

 protected:
  void cleanCacheInfo() override {
    calls += "clean ";
    qcRegion::cleanCacheInfo();
  }
  void makeDataConsistentWithPoints() override { calls += "data "; }
};

TEST(RegionHolesTest, SettingHolesForgetsThenCallsTheDataHook) {
  HookedRegion region;
  region.holes(Handles{handle(square(2, 2, 2))});
  EXPECT_EQ(region.calls, "clean data ");
  region.calls.clear();
  EXPECT_THROW(region.holes(Handles{Handle()}), qcBadPointer);
  EXPECT_EQ(region.calls, "clean data ");
  region.calls.clear();
  region.holes(std::vector<qcPtrHandle<qcRegion>>());
  EXPECT_EQ(region.calls, "clean data ");
}

TEST(RegionMapTest, TheBoundaryIsMappedVertexByVertex) {
  qcRegion region(square(0, 0, 2), keep);
  region.label(12);
  region.cachedVectorSize(8);
  qcRegion dest;
  region.map(movedRight, dest);
  EXPECT_EQ(dest.points(), square(100, 0, 2));
  EXPECT_EQ(dest.label(), 12U);
  EXPECT_EQ(dest.cachedVectorSize(), 3);
  EXPECT_TRUE(dest.isClosed());
}

TEST(RegionMapTest, HolesAreDropped) {
  const qcRegion region = squareWithHole();
  qcRegion dest = squareWithHole();
  region.map(movedRight, dest);
  EXPECT_THAT(dest.holes(), IsEmpty());
  EXPECT_EQ(region.holes().size(), 1U);
}

TEST(RegionMapTest, AMirroringTransformReversesTheOrientation) {
  qcRegion dest;
  qcRegion(square(0, 0, 2), keep).map(mirrored, dest);
  EXPECT_EQ(dest.points(), (Points{{0, 0}, {-2, 0}, {-2, 2}, {0, 2}}));
}

TEST(RegionMapTest, TheImageForgetsWhatItsVariableHeld) {
  qcRegion dest(square(0, 0, 10), keep);
  EXPECT_EQ(dest.area(false), 100.0);
  qcRegion(square(0, 0, 2), keep).map(movedRight, dest);
  EXPECT_EQ(dest.area(false), 4.0);
}

TEST(RegionMapTest, ARegionCanBeMappedInPlace) {
  qcRegion region = squareWithHole();
  region.label(4);
  region.map(movedRight, region);
  EXPECT_EQ(region.points(), square(100, 0, 10));
  EXPECT_EQ(region.label(), 4U);
  EXPECT_THAT(region.holes(), IsEmpty());
}

TEST(RegionMapTest, TheImageIsMarkedAsChanged) {
  qcRegion dest;
  EXPECT_GE(noticesOf(dest, [&] { qcRegion(square(0, 0, 2), keep).map(movedRight, dest); }), 1U);
}

TEST(RegionMapTest, ASelfCrossingImageIsKept) {
  qcRegion dest;
  qcRegion(bowTie(), keep).map(qcXform<2>::I, dest);
  EXPECT_EQ(dest.points(), bowTie());
}

TEST(RegionMapTest, ARegionWithoutVerticesMapsToOne) {
  qcRegion dest(square(0, 0, 2), keep);
  qcRegion().map(movedRight, dest);
  EXPECT_THAT(dest.points(), IsEmpty());
}

TEST(RegionMapTest, ARegionMapsIntoAContourToo) {
  const qcRegion region = squareWithHole();
  qcContour dest({}, false, 0);
  region.map(movedRight, dest);
  EXPECT_EQ(dest.points(), square(100, 0, 10));
  EXPECT_TRUE(dest.isClosed());
}

TEST(RegionDrawTest, WithAModeTheBoundaryAloneIsDrawn) {
  qcRecordingTablet tablet;
  squareWithHole().draw(tablet, qcContourDefs::eDrawContour, qcColor::red,
                        qcUITablet::eOverlayLayer);
  using Segment = qcRecordingTablet::Segment;
  const auto edge = [](double x1, double y1, double x2, double y2) {
    return Segment{{x1, y1}, {x2, y2}, qcColor::red, qcUITablet::eOverlayLayer};
  };
  EXPECT_THAT(tablet.segments(), ElementsAre(edge(0, 10, 0, 0), edge(0, 0, 10, 0),
                                             edge(10, 0, 10, 10), edge(10, 10, 0, 10)));
}

TEST(RegionDrawTest, WithoutAModeNothingIsDrawn) {
  qcRecordingTablet tablet;
  squareWithHole().draw(tablet, qcColor::red, qcUITablet::eImageLayer);
  EXPECT_THAT(tablet.segments(), IsEmpty());
}

TEST(RegionDrawTest, TheBoundaryOfARegionOfAnOpenContourIsDrawnClosed) {
  qcRecordingTablet tablet;
  const qcRegion region(qcContour(square(0, 0, 2), false, 0), keep);
  region.draw(tablet, qcContourDefs::eDrawContour, qcColor::red, qcUITablet::eImageLayer);
  EXPECT_EQ(tablet.segments().size(), 4U);
}

TEST(RegionOverloadTest, TheContoursQueriesAreReachable) {
  const qcRegion region = squareWithHole();
  const qcLineSeg across({-1, 3}, {11, 3});
  EXPECT_THAT(region.intersections(across, true),
              ElementsAre(qcVector<2>(0, 3), qcVector<2>(10, 3)));
  EXPECT_EQ(region.intersections(qcContour(square(5, 5, 20), true, 0)).size(), 2U);
  EXPECT_EQ(region.closestVertexIndex({9, 9}), 2);
  EXPECT_EQ(region.closestPoint({3, 1.9}, false), qcVector<2>(3, 0));
  EXPECT_EQ(region.closestPoint({3, 1.9}, true), qcVector<2>(0, 0));
  EXPECT_DOUBLE_EQ(region.distToPoint({3, 1.9}, false), 1.9);
}

TEST(RegionOverloadTest, TheRegionsOwnFormsTakeTheHolesIntoAccount) {
  const qcRegion region = squareWithHole();
  const qcLineSeg across({-1, 3}, {11, 3});
  EXPECT_THAT(
      region.intersections(across, true, true),
      ElementsAre(qcVector<2>(0, 3), qcVector<2>(10, 3), qcVector<2>(2, 3), qcVector<2>(4, 3)));
  EXPECT_EQ(region.intersections(qcContour(square(3, 3, 20), true, 0), true).size(), 4U);
  long hole = 7;
  EXPECT_EQ(region.closestVertexIndex({3.9, 3.9}, true, hole), 2);
  EXPECT_EQ(hole, 0);
  EXPECT_EQ(region.closestPoint({3, 1.9}, false, true), qcVector<2>(3, 2));
  EXPECT_NEAR(region.distToPoint({3, 1.9}, false, true, false), 0.1, 1e-15);
}

TEST(RegionOverloadTest, BoundaryMeasuresIgnoreHoles) {
  const qcRegion region = squareWithHole();
  EXPECT_EQ(region.length(), 40.0);
  EXPECT_EQ(region.encloseRect(qcXform<2>::I), qcRect(qcPoint({0, 0}), qcPoint({10, 10})));
  EXPECT_FALSE(region.isSelfIntersecting());
}

TEST(RegionNoticeTest, AnsweringSendsNoChangeNotice) {
  qcRegion region = squareWithHole();
  qcRegion dest;
  const auto askEverything = [&] {
    region.area(true);
    region.area(false);
    region.centerOfMass(true);
    region.centerOfMass(false);
    region.inertiaMatrix(false);
    region.inside({1, 1}, true);
    region.distToPoint({1, 1}, false, true, true);
    region.regularize(dest);
    region.outerHull(dest);
    region.isSelfIntersecting();
    region.encloseRect(qcXform<2>::I);
    region.map(qcXform<2>::I, dest);
  };
  EXPECT_EQ(noticesOf(region, askEverything), 0U);
  qcRegion crossing(bowTie(), keep);
  EXPECT_EQ(noticesOf(crossing, [&] { crossing.regularize(dest); }), 0U);
  EXPECT_EQ(noticesOf(crossing, [&] { crossing.outerHull(dest); }), 0U);
}

TEST(RegionNoticeTest, ChangingTheBoundarySendsOneChangeNotice) {
  qcRegion region(square(0, 0, 2), keep);
  EXPECT_EQ(noticesOf(region, [&] { region.points(square(0, 0, 3)); }), 1U);
  EXPECT_EQ(noticesOf(region, [&] { region.label(3); }), 1U);
}

TEST(RegionNoticeTest, ALabelForgetsNothing) {
  WatchedRegion region(square(0, 0, 2));
  EXPECT_EQ(region.area(false), 4.0);
  region.replaceBehindItsBack(square(0, 0, 3));
  region.label(3);
  EXPECT_EQ(region.area(false), 4.0);
}

}  // namespace
