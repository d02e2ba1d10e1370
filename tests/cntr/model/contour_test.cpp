// SPDX-License-Identifier: MIT
//
// The contour as a holder of vertices: how it is made, compared, copied and changed, what it calls
// and whom it tells when it changes. What it remembers is tested in contour_cache_test.cpp, its
// record in contour_archive_test.cpp.

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <cntr/region.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <testing/shapes/numbers.h>

#include "contour_probe.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const Points rightTriangle = {{0, 0}, {4, 0}, {0, 3}};
const Points quadrangle = {{1, 1}, {7, 2}, {8, 9}, {0, 5}};

qcPolygon polygonOf(const Points& points) { return qcPolygon(points, qcPolygon::eEvenOdd); }

TEST(ContourTest, HoldsWhatItIsMadeOf) {
  const qcContour contour(rightTriangle, false, 7);
  EXPECT_EQ(contour.points(), rightTriangle);
  EXPECT_FALSE(contour.isClosed());
  EXPECT_EQ(contour.label(), 7U);
  EXPECT_TRUE(qcContour(rightTriangle, true, 7).isClosed());
}

TEST(ContourTest, RemembersThreeAnswersByArgumentUnlessToldOtherwise) {
  EXPECT_EQ(qcContour(rightTriangle, true, 0).cachedVectorSize(), 3);
  EXPECT_EQ(qcContour(polygonOf(rightTriangle), 0).cachedVectorSize(), 3);
}

TEST(ContourTest, MayHaveNoVerticesOrOne) {
  EXPECT_THAT(qcContour({}, true, 0).points(), IsEmpty());
  EXPECT_THAT(qcContour({{5, 6}}, false, 0).points(), ElementsAre(Point(5, 6)));
}

TEST(ContourTest, KeepsARepeatedFirstVertex) {
  const Points repeated = {{0, 0}, {4, 0}, {0, 3}, {0, 0}};
  EXPECT_EQ(qcContour(repeated, true, 0).points(), repeated);
}

TEST(ContourTest, CannotBeMadeOfNothing) {
  EXPECT_FALSE(std::is_default_constructible_v<qcContour>);
}

TEST(ContourTest, CanBeSharedAndDiesWithItsLastHandle) {
  qcPtrHandle<qcContour> handle(new qcContour(rightTriangle, true, 0));
  const qcPtrHandle_const<qcContour> other(handle);
  handle = qcPtrHandle<qcContour>();
  EXPECT_EQ(other->points(), rightTriangle);
}

TEST(ContourOfAPolygonTest, HasItsVerticesInOrderAndTheLabel) {
  const qcContour contour(polygonOf(quadrangle), 9);
  EXPECT_EQ(contour.points(), quadrangle);
  EXPECT_EQ(contour.label(), 9U);
}

TEST(ContourOfAPolygonTest, IsClosedAndKeepsBothEndsWhenTheyDifferBy1e16) {
  const Points points = {{0, 0}, {4, 0}, {0, 3}, {1e-16, -1e-16}};
  const qcContour contour(polygonOf(points), 0);
  EXPECT_TRUE(contour.isClosed());
  EXPECT_EQ(contour.points(), points);
}

TEST(ContourOfAPolygonTest, IsOpenWhenItsEndsDifferBy1e14) {
  EXPECT_FALSE(qcContour(polygonOf({{0, 0}, {4, 0}, {0, 3}, {1e-14, 0}}), 0).isClosed());
  EXPECT_FALSE(qcContour(polygonOf({{0, 0}, {4, 0}, {0, 3}, {0, -1e-14}}), 0).isClosed());
}

TEST(ContourOfAPolygonTest, IsClosedUpToADifferenceOfExactly1e15) {
  const double beyond = std::nextafter(1e-15, 1.0);
  EXPECT_TRUE(qcContour(polygonOf({{0, 0}, {4, 0}, {-1e-15, 1e-15}}), 0).isClosed());
  EXPECT_FALSE(qcContour(polygonOf({{0, 0}, {4, 0}, {beyond, 0}}), 0).isClosed());
  EXPECT_FALSE(qcContour(polygonOf({{0, 0}, {4, 0}, {0, beyond}}), 0).isClosed());
}

TEST(ContourOfAPolygonTest, OfOneVertexIsClosed) {
  EXPECT_TRUE(qcContour(polygonOf({{5, 6}}), 0).isClosed());
}

TEST(ContourOfAPolygonTest, WithoutVerticesIsEmptyAndOpen) {
  const qcContour contour(polygonOf({}), 4);
  EXPECT_THAT(contour.points(), IsEmpty());
  EXPECT_FALSE(contour.isClosed());
  EXPECT_EQ(contour.label(), 4U);
}

TEST(ContourOfAPolygonTest, IsOpenWhenItsEndsAreNotNumbersThatCompare) {
  EXPECT_FALSE(qcContour(polygonOf({{notANumber, 0}, {4, 0}, {notANumber, 0}}), 0).isClosed());
  EXPECT_FALSE(qcContour(polygonOf({{infinity, 0}, {4, 0}, {infinity, 0}}), 0).isClosed());
}

TEST(ContourEqualityTest, IgnoresTheLabel) {
  EXPECT_TRUE(qcContour(rightTriangle, true, 1) == qcContour(rightTriangle, true, 2));
}

TEST(ContourEqualityTest, ComparesTheCapacityForAnswers) {
  const qcContour contour(rightTriangle, true, 0);
  qcContour other(rightTriangle, true, 0);
  other.cachedVectorSize(4);
  EXPECT_FALSE(contour == other);
  other.cachedVectorSize(3);
  EXPECT_TRUE(contour == other);
}

TEST(ContourEqualityTest, ComparesWhetherTheContoursAreClosed) {
  EXPECT_FALSE(qcContour(rightTriangle, true, 0) == qcContour(rightTriangle, false, 0));
}

TEST(ContourEqualityTest, ComparesTheNumberOfVertices) {
  const Points longer = {{0, 0}, {4, 0}, {0, 3}, {0, 0}};
  EXPECT_FALSE(qcContour(rightTriangle, true, 0) == qcContour(longer, true, 0));
  EXPECT_FALSE(qcContour(longer, true, 0) == qcContour(rightTriangle, true, 0));
  EXPECT_TRUE(qcContour({}, true, 0) == qcContour({}, true, 0));
}

TEST(ContourEqualityTest, ComparesVerticesExactlyAndInOrder) {
  const Points nearly = {{0, 0}, {std::nextafter(4.0, 5.0), 0}, {0, 3}};
  const Points reordered = {{4, 0}, {0, 3}, {0, 0}};
  EXPECT_FALSE(qcContour(rightTriangle, true, 0) == qcContour(nearly, true, 0));
  EXPECT_FALSE(qcContour(rightTriangle, true, 0) == qcContour(reordered, true, 0));
}

TEST(ContourEqualityTest, TakesTheTwoZerosAsEqualAndNotANumberAsUnequal) {
  EXPECT_TRUE(qcContour({{0.0, 1}}, true, 0) == qcContour({{-0.0, 1}}, true, 0));
  const qcContour withNan({{notANumber, 1}}, true, 0);
  EXPECT_FALSE(withNan == withNan);
}

TEST(ContourEqualityTest, AsksBothContoursWhetherTheyAreClosed) {
  const AlwaysClosed saysClosed(rightTriangle, false, 0);
  const qcContour open(rightTriangle, false, 0);
  const qcContour closed(rightTriangle, true, 0);
  EXPECT_TRUE(saysClosed == closed);
  EXPECT_TRUE(closed == saysClosed);
  EXPECT_FALSE(saysClosed == open);
  EXPECT_FALSE(open == saysClosed);
}

TEST(ContourSettersTest, PointsReplacesTheVerticesAndKeepsTheRest) {
  qcContour contour(rightTriangle, false, 7);
  contour.cachedVectorSize(5);
  contour.points(quadrangle);
  EXPECT_EQ(contour.points(), quadrangle);
  EXPECT_FALSE(contour.isClosed());
  EXPECT_EQ(contour.label(), 7U);
  EXPECT_EQ(contour.cachedVectorSize(), 5);
}

TEST(ContourSettersTest, PointsMayBeSetToTheContoursOwn) {
  qcContour contour(rightTriangle, true, 0);
  contour.points(contour.points());
  EXPECT_EQ(contour.points(), rightTriangle);
}

TEST(ContourSettersTest, SetPointsReplacesTheVerticesAndKeepsTheRest) {
  ContourProbe contour(rightTriangle, false, 7);
  contour.setPoints(quadrangle);
  EXPECT_EQ(contour.points(), quadrangle);
  EXPECT_FALSE(contour.isClosed());
  EXPECT_EQ(contour.label(), 7U);
}

TEST(ContourSettersTest, IsClosedSetsTheFlagAlone) {
  qcContour contour(rightTriangle, false, 7);
  contour.isClosed(true);
  EXPECT_TRUE(contour.isClosed());
  contour.isClosed(false);
  EXPECT_FALSE(contour.isClosed());
  EXPECT_EQ(contour.points(), rightTriangle);
  EXPECT_EQ(contour.label(), 7U);
}

TEST(ContourSettersTest, LabelSetsAnyNumberOf32Bits) {
  qcContour contour(rightTriangle, true, 0);
  contour.label(4294967295U);
  EXPECT_EQ(contour.label(), 4294967295U);
}

TEST(ContourSettersTest, ALabelThatNoArchiveCouldHoldIsRefusedAndTheOldOneKept) {
  if (sizeof(long) == 4) GTEST_SKIP() << "no label is too wide, as on Windows";
  const auto wide = static_cast<unsigned long>(std::uint64_t{1} << 32U);
  const wchar_t* const message = L"label is above 4294967295";
  qcContour contour(rightTriangle, true, 7);
  const unsigned long changes = contour.changes();
  expectBadParams(message, [&] { contour.label(wide); });
  EXPECT_EQ(contour.label(), 7U);
  EXPECT_EQ(contour.changes(), changes);
  expectBadParams(message, [&] { qcContour(rightTriangle, true, wide); });
  expectBadParams(message, [&] { qcContour(qcPolygon(rightTriangle, qcPolygon::eEvenOdd), wide); });
  qcRegion region(rightTriangle, qcContourDefs::eNoIntersectionRepair);
  expectBadParams(message, [&] { region.label(wide); });
  EXPECT_EQ(region.label(), 0U);
}

TEST(ContourSettersTest, TheCapacityForAnswersIsRefusedWhenNegativeAndKeepsItsValue) {
  qcContour contour(rightTriangle, true, 0);
  expectBadParams(L"", [&] { contour.cachedVectorSize(-1); });
  EXPECT_EQ(contour.cachedVectorSize(), 3);
  expectBadParams(L"", [&] { contour.cachedVectorSize(std::numeric_limits<long>::min()); });
  EXPECT_EQ(contour.cachedVectorSize(), 3);
}

TEST(ContourSettersTest, TheCapacityForAnswersMayBeZero) {
  qcContour contour(rightTriangle, true, 0);
  contour.cachedVectorSize(0);
  EXPECT_EQ(contour.cachedVectorSize(), 0);
}

TEST(ContourSettersTest, TheLabelKeepsARememberedLengthAndThePointsAndTheFlagDropIt) {
  ContourProbe contour(rightTriangle, true, 0);
  EXPECT_EQ(contour.length(), 12.0);
  contour.replaceBehindItsBack({{0, 0}, {8, 0}, {0, 6}});
  contour.label(5);
  EXPECT_EQ(contour.length(), 12.0);
  contour.isClosed(true);
  EXPECT_EQ(contour.length(), 24.0);
  contour.points(rightTriangle);
  EXPECT_EQ(contour.length(), 12.0);
}

TEST(ContourSettersTest, AContourOfTwoVerticesIsACurve) {
  expectEmptyContour([] { openContour({}).checkEmptyContour(); });
  expectEmptyContour([] { closedContour({{5, 6}}).checkEmptyContour(); });
  EXPECT_NO_THROW(openContour({{5, 6}, {5, 6}}).checkEmptyContour());
}

/// A contour that writes down which of its hooks were called, and with how many vertices and which
/// flag it had then.
class Logging : public qcContour {
 public:
  Logging(const Points& points, bool closed) : qcContour(points, closed, 0) {}
  Logging(const Logging&) = default;
  Logging& operator=(const Logging& other) {
    qcContour::operator=(other);
    return *this;
  }
  ~Logging() override = default;

  const std::vector<std::string>& log() const { return log_; }

  using qcContour::setPoints;

 protected:
  void cleanCacheInfo() override {
    note("clean");
    qcContour::cleanCacheInfo();
  }
  void makeDataConsistentWithPoints() override { note("data"); }
  void makePointsConsistentWithData() override { note("points"); }

 private:
  void note(const std::string& hook) {
    log_.push_back(hook + " " + std::to_string(points().size()) +
                   (isClosed() ? " closed" : " open"));
  }

  std::vector<std::string> log_;
};

TEST(ContourHooksTest, PointsForgetsThenSetsThenAsksForData) {
  Logging contour(rightTriangle, true);
  contour.points(quadrangle);
  EXPECT_THAT(contour.log(), ElementsAre("clean 3 closed", "data 4 closed"));
}

TEST(ContourHooksTest, SetPointsForgetsThenSetsAndLeavesTheDataAlone) {
  Logging contour(rightTriangle, true);
  contour.setPoints(quadrangle);
  EXPECT_THAT(contour.log(), ElementsAre("clean 3 closed"));
}

TEST(ContourHooksTest, IsClosedSetsThenForgets) {
  Logging contour(rightTriangle, true);
  contour.isClosed(false);
  EXPECT_THAT(contour.log(), ElementsAre("clean 3 open"));
}

TEST(ContourHooksTest, LabelAndCapacityCallNone) {
  Logging contour(rightTriangle, true);
  contour.label(5);
  contour.cachedVectorSize(5);
  EXPECT_THAT(contour.log(), IsEmpty());
}

TEST(ContourHooksTest, AssignmentForgetsFirst) {
  Logging contour(rightTriangle, false);
  contour = Logging(quadrangle, true);
  EXPECT_THAT(contour.log(), ElementsAre("clean 3 open"));
}

TEST(ContourHooksTest, AssignmentThroughTheBaseForgetsToo) {
  Logging contour(rightTriangle, false);
  qcContour& base = contour;
  base = qcContour(quadrangle, true, 0);
  EXPECT_THAT(contour.log(), ElementsAre("clean 3 open"));
}

TEST(ContourHooksTest, MappingIntoAContourForgetsItsAnswers) {
  Logging image(rightTriangle, false);
  qcContour(quadrangle, true, 0).map(qcXform<2>::I, image);
  EXPECT_THAT(image.log(), ElementsAre("clean 3 open"));
}

TEST(ContourHooksTest, AssignmentToItselfCallsNone) {
  Logging contour(rightTriangle, false);
  const Logging& same = contour;
  contour = same;
  EXPECT_THAT(contour.log(), IsEmpty());
}

TEST(ContourCopyTest, HasEverythingOfItsSource) {
  qcContour contour(rightTriangle, false, 7);
  contour.cachedVectorSize(0);
  const qcContour copy(contour);
  EXPECT_EQ(copy.points(), rightTriangle);
  EXPECT_FALSE(copy.isClosed());
  EXPECT_EQ(copy.label(), 7U);
  EXPECT_EQ(copy.cachedVectorSize(), 0);
}

TEST(ContourCopyTest, ByAssignmentHasEverythingOfItsSource) {
  qcContour contour(rightTriangle, false, 7);
  contour.cachedVectorSize(0);
  qcContour target(quadrangle, true, 9);
  qcContour& result = (target = contour);
  EXPECT_EQ(&result, &target);
  EXPECT_EQ(target.points(), rightTriangle);
  EXPECT_FALSE(target.isClosed());
  EXPECT_EQ(target.label(), 7U);
  EXPECT_EQ(target.cachedVectorSize(), 0);
}

TEST(ContourCopyTest, AnswersTheRectangleThatItsSourceHasAnswered) {
  ContourProbe contour(rightTriangle, true, 0);
  EXPECT_EQ(contour.encloseRect(qcXform<2>::I).width(), 4.0);
  ContourProbe copy(contour);
  copy.replaceBehindItsBack(quadrangle);
  EXPECT_EQ(copy.encloseRect(qcXform<2>::I).width(), 4.0);
}

TEST(ContourCopyTest, ThatForgetsLeavesTheAnswersOfItsSource) {
  ContourProbe contour(rightTriangle, true, 0);
  contour.encloseRect(qcXform<2>::I);
  contour.extremalVertexIndex(qcRadian(0));
  ContourProbe copy(contour);
  copy.points(quadrangle);
  contour.replaceBehindItsBack(quadrangle);
  EXPECT_EQ(contour.encloseRect(qcXform<2>::I).width(), 4.0);
  EXPECT_EQ(contour.extremalVertexIndex(qcRadian(0)), 1);
  EXPECT_EQ(copy.encloseRect(qcXform<2>::I).width(), 8.0);
  EXPECT_EQ(copy.extremalVertexIndex(qcRadian(0)), 2);
}

TEST(ContourCopyTest, AssignedOverAnswersHasThoseOfItsSourceAlone) {
  ContourProbe target(quadrangle, true, 0);
  target.length();
  target.encloseRect(qcXform<2>::I);
  ContourProbe contour(rightTriangle, true, 0);
  contour.encloseRect(qcXform<2>::I);
  target = contour;
  target.replaceBehindItsBack({{0, 0}, {8, 0}, {0, 6}});
  EXPECT_EQ(target.encloseRect(qcXform<2>::I).width(), 4.0);
  EXPECT_EQ(target.length(), 24.0);
}

TEST(ContourCopyTest, ThatSaysItIsClosedDoesNotTakeTheAnswersOfAnOpenCurve) {
  const qcContour open(rightTriangle, false, 0);
  EXPECT_EQ(open.length(), 9.0);
  AlwaysClosed copy({}, false, 0);
  static_cast<qcContour&>(copy) = open;
  EXPECT_EQ(copy.length(), 12.0);
  qcContour again(quadrangle, false, 0);
  again = copy;
  EXPECT_EQ(again.length(), 9.0);
}

TEST(ContourCopyTest, AssignedToItselfKeepsItsContentAndAnswers) {
  ContourProbe contour(rightTriangle, true, 7);
  contour.length();
  contour.replaceBehindItsBack({{0, 0}, {8, 0}, {0, 6}});
  const ContourProbe& same = contour;
  contour = same;
  EXPECT_EQ(contour.length(), 12.0);
  EXPECT_EQ(contour.points().size(), 3U);
  EXPECT_EQ(contour.label(), 7U);
}

/// The number of change notices that `change` makes a tracking contour send.
template <class Change>
unsigned long noticesOfTriangle(Change change) {
  ContourProbe contour(rightTriangle, true, 0);
  contour.isTracking(true);
  change(contour);
  return contour.changes();
}

TEST(ContourChangeNoticesTest, AreSentOnceForEveryChange) {
  EXPECT_EQ(noticesOfTriangle([](ContourProbe& c) { c.points(quadrangle); }), 1U);
  EXPECT_EQ(noticesOfTriangle([](ContourProbe& c) { c.setPoints(quadrangle); }), 1U);
  EXPECT_EQ(noticesOfTriangle([](ContourProbe& c) { c.isClosed(false); }), 1U);
  EXPECT_EQ(noticesOfTriangle([](ContourProbe& c) { c.label(5); }), 1U);
  EXPECT_EQ(noticesOfTriangle([](ContourProbe& c) { c.cachedVectorSize(5); }), 1U);
  EXPECT_EQ(noticesOfTriangle([](ContourProbe& c) { c = closedContour(quadrangle); }), 1U);
}

TEST(ContourChangeNoticesTest, AreSentForWhatWasThereBefore) {
  EXPECT_EQ(noticesOfTriangle([](ContourProbe& c) { c.points(rightTriangle); }), 1U);
  EXPECT_EQ(noticesOfTriangle([](ContourProbe& c) { c.isClosed(true); }), 1U);
  EXPECT_EQ(noticesOfTriangle([](ContourProbe& c) { c.label(0); }), 1U);
  EXPECT_EQ(noticesOfTriangle([](ContourProbe& c) { c.cachedVectorSize(3); }), 1U);
}

TEST(ContourChangeNoticesTest, AreNotSentForWhatIsRefusedOrDoesNothing) {
  EXPECT_EQ(noticesOfTriangle(
                [](ContourProbe& c) { expectBadParams(L"", [&] { c.cachedVectorSize(-1); }); }),
            0U);
  EXPECT_EQ(noticesOfTriangle([](ContourProbe& c) {
              const ContourProbe& same = c;
              c = same;
            }),
            0U);
}

TEST(ContourChangeNoticesTest, AreNotSentForQuestionsOrCopies) {
  EXPECT_EQ(noticesOfTriangle([](ContourProbe& c) {
              c.length();
              c.encloseRect(qcXform<2>::I);
              c.isSelfIntersecting();
              c.lineSegs();
            }),
            0U);
  EXPECT_EQ(noticesOfTriangle([](const ContourProbe& c) {
              const ContourProbe copy(c);
              ContourProbe target = closedContour(quadrangle);
              target = c;
            }),
            0U);
}

TEST(ContourChangeNoticesTest, AddUp) {
  EXPECT_EQ(noticesOfTriangle([](ContourProbe& c) {
              c.points(quadrangle);
              c.label(1);
              c.isClosed(false);
            }),
            3U);
}

TEST(ContourChangeNoticesTest, AreCountedWhileTrackingIsOn) {
  qcContour contour(rightTriangle, true, 0);
  EXPECT_FALSE(contour.isTracking());
  contour.label(1);
  EXPECT_EQ(contour.changes(), 0U);
  contour.isTracking(true);
  contour.label(2);
  contour.isTracking(false);
  contour.label(3);
  EXPECT_EQ(contour.changes(), 1U);
}

TEST(ContourChangeNoticesTest, AndTrackingStayWithTheObject) {
  qcContour contour(rightTriangle, true, 0);
  contour.isTracking(true);
  contour.label(1);
  const qcContour copy(contour);
  EXPECT_FALSE(copy.isTracking());
  EXPECT_EQ(copy.changes(), 0U);
  qcContour target(quadrangle, true, 0);
  target = contour;
  EXPECT_FALSE(target.isTracking());
  EXPECT_EQ(target.changes(), 0U);
  contour = target;
  EXPECT_TRUE(contour.isTracking());
  EXPECT_EQ(contour.changes(), 2U);
}

}  // namespace
