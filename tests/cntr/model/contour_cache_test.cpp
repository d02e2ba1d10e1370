// SPDX-License-Identifier: MIT
//
// What a contour remembers, for how long, and what a copy takes over. The vertices are replaced
// behind the contour's back: an answer from the old ones was remembered, one from the new ones was
// computed. The lists that are keyed by an argument are tested by themselves in
// keyedresults_test.cpp.

#include <cmath>
#include <functional>
#include <initializer_list>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include <cntr/region.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <testing/shapes/numbers.h>

#include "contour_probe.h"
#include "fresh_thread.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Shapes of six vertices on which every question below has a different answer.
const Points pointsBefore = {{0, 0}, {4, 0}, {7, 1}, {4, 3}, {2, 5}, {0, 3}};
const Points pointsAfter = {{1, 9}, {0, 0}, {9, 1}, {3, 30}, {20, 5}, {-3, 3}};

using Doubles = std::vector<double>;

void append(Doubles& numbers, const Point& p) {
  numbers.push_back(p.x());
  numbers.push_back(p.y());
}

Doubles numbersOf(const Points& points) {
  Doubles numbers;
  for (const Point& p : points) append(numbers, p);
  return numbers;
}

Doubles numbersOf(const qcCircle& circle) {
  return {circle.center().x(), circle.center().y(), circle.radius()};
}

Doubles numbersOf(const qcRect& rect) { return numbersOf(Points{rect.ul(), rect.lr()}); }

Doubles convexHullOf(const ContourProbe& contour) {
  qcRegion hull;
  contour.convexHull(hull);
  return numbersOf(hull.points());
}

Doubles ellipseOf(const ContourProbe& contour) {
  qcEllipse ellipse;
  double residual = 0;
  contour.fitEllipse(ellipse, residual);
  const auto& geom = ellipse.geom();
  return {geom.center.x(), geom.center.y(),          geom.radius1,
          geom.radius2,    geom.rotation.toDouble(), residual};
}

Doubles edgeEndsOf(const ContourProbe& contour) {
  Doubles numbers;
  for (const qcLineSeg& edge : contour.lineSegs()) {
    append(numbers, edge.p1());
    append(numbers, edge.p2());
  }
  return numbers;
}

const qcXform<2> turnAndShift(qcMatrix<2>(0, -1, 1, 0), {3, 4});

Doubles extremalVertexOf(const ContourProbe& contour) {
  return {static_cast<double>(contour.extremalVertexIndex(qcRadian(0.3)))};
}

/// A question whose answer is remembered.
struct Question {
  std::string name;
  std::function<Doubles(const ContourProbe&)> ask;
};

void PrintTo(const Question& question, std::ostream* out) { *out << question.name; }

const Question cachedQuestions[] = {
    {"Length", [](const ContourProbe& c) { return Doubles{c.length()}; }},
    {"MeanPosition", [](const ContourProbe& c) { return numbersOf(Points{c.meanPosition()}); }},
    {"MedianFeatureSize", [](const ContourProbe& c) { return Doubles{c.medianFeatureSize()}; }},
    {"ConvexHull", convexHullOf},
    {"FitEllipse", ellipseOf},
    {"CircleOfFarthestPair",
     [](const ContourProbe& c) {
       return numbersOf(c.encloseCircle(qcContourDefs::eFarthestVertexPair));
     }},
    {"CircleFromFirstVertex",
     [](const ContourProbe& c) {
       return numbersOf(c.encloseCircle(qcContourDefs::eFromFirstVertex));
     }},
    {"SelfIntersection",
     [](const ContourProbe& c) { return Doubles{c.isSelfIntersecting() * 1.0}; }},
    {"ExtremalVertex", extremalVertexOf},
    {"EncloseRect", [](const ContourProbe& c) { return numbersOf(c.encloseRect(qcXform<2>::I)); }},
    {"EncloseRectOfTheImage",
     [](const ContourProbe& c) { return numbersOf(c.encloseRect(turnAndShift)); }},
    {"Edges", edgeEndsOf},
};

/// Every question by itself.
class ContourCacheTest : public testing::TestWithParam<Question> {
 protected:
  static Doubles ask(const ContourProbe& contour) { return GetParam().ask(contour); }

  /// The answer that is computed from these vertices.
  static Doubles answerOf(const Points& points) { return ask(closedContour(points)); }

  /// True when the contour, which was asked with the vertices `pointsBefore`, still knows that
  /// answer.
  static bool remembers(ContourProbe contour) {
    contour.replaceBehindItsBack(pointsAfter);
    const Doubles answer = ask(contour);
    EXPECT_TRUE(answer == answerOf(pointsBefore) || answer == answerOf(pointsAfter));
    return answer == answerOf(pointsBefore);
  }

  /// A contour through `pointsBefore` that has been asked.
  static ContourProbe asked() {
    ContourProbe contour = closedContour(pointsBefore);
    ask(contour);
    return contour;
  }
};

INSTANTIATE_TEST_SUITE_P(Each, ContourCacheTest, testing::ValuesIn(cachedQuestions),
                         [](const auto& instance) { return instance.param.name; });

TEST_P(ContourCacheTest, TellsTheShapesApart) {
  EXPECT_NE(answerOf(pointsBefore), answerOf(pointsAfter));
}

TEST_P(ContourCacheTest, IsEmptyUntilItIsAsked) {
  EXPECT_FALSE(remembers(closedContour(pointsBefore)));
}

TEST_P(ContourCacheTest, KeepsTheAnswer) { EXPECT_TRUE(remembers(asked())); }

TEST_P(ContourCacheTest, GivesTheSameAnswerAgain) {
  const ContourProbe contour = asked();
  EXPECT_EQ(ask(contour), answerOf(pointsBefore));
  EXPECT_EQ(ask(contour), answerOf(pointsBefore));
}

TEST_P(ContourCacheTest, OutlivesChangesOfLabelAndCapacity) {
  ContourProbe contour = asked();
  contour.label(5);
  contour.cachedVectorSize(0);
  EXPECT_TRUE(remembers(contour));
}

TEST_P(ContourCacheTest, IsForgottenWhenThePointsAreSet) {
  ContourProbe contour = asked();
  contour.points(pointsBefore);
  EXPECT_FALSE(remembers(contour));
  contour = asked();
  contour.points(pointsAfter);
  EXPECT_EQ(ask(contour), answerOf(pointsAfter));
}

TEST_P(ContourCacheTest, IsForgottenWhenADerivedClassSetsThePoints) {
  ContourProbe contour = asked();
  contour.setPoints(pointsBefore);
  EXPECT_FALSE(remembers(contour));
}

TEST_P(ContourCacheTest, IsForgottenWhenTheContourIsOpenedOrClosed) {
  ContourProbe contour = asked();
  contour.isClosed(true);
  EXPECT_FALSE(remembers(contour));
  contour = asked();
  contour.isClosed(false);
  EXPECT_EQ(ask(contour), ask(openContour(pointsBefore)));
}

TEST_P(ContourCacheTest, GoesAlongWithACopy) {
  const ContourProbe contour = asked();
  EXPECT_TRUE(remembers(ContourProbe(contour)));
  EXPECT_TRUE(remembers(contour));
}

TEST_P(ContourCacheTest, GoesAlongWithAnAssignment) {
  ContourProbe withoutAnswers = closedContour(pointsAfter);
  withoutAnswers = asked();
  EXPECT_TRUE(remembers(withoutAnswers));
  ContourProbe withAnswers = closedContour(pointsAfter);
  ask(withAnswers);
  withAnswers = asked();
  EXPECT_EQ(ask(withAnswers), answerOf(pointsBefore));
  EXPECT_TRUE(remembers(withAnswers));
}

TEST_P(ContourCacheTest, IsForgottenInFavourOfAContourThatWasNotAsked) {
  ContourProbe contour = asked();
  contour = closedContour(pointsBefore);
  EXPECT_FALSE(remembers(contour));
}

TEST_P(ContourCacheTest, OutlivesAnAssignmentToItself) {
  ContourProbe contour = asked();
  const ContourProbe& same = contour;
  contour = same;
  EXPECT_TRUE(remembers(contour));
}

TEST_P(ContourCacheTest, OfACopyMayBeForgottenAlone) {
  const ContourProbe contour = asked();
  ContourProbe copy = contour;
  copy.points(pointsBefore);
  EXPECT_FALSE(remembers(copy));
  EXPECT_TRUE(remembers(contour));
}

TEST_P(ContourCacheTest, OfACopyMayBeFilledAlone) {
  const ContourProbe contour = closedContour(pointsBefore);
  const ContourProbe copy = contour;
  ask(copy);
  EXPECT_TRUE(remembers(copy));
  EXPECT_FALSE(remembers(contour));
}

TEST_P(ContourCacheTest, OutlivesTheContourThatItWasCopiedFrom) {
  auto contour = std::make_unique<ContourProbe>(asked());
  const ContourProbe copy = *contour;
  contour.reset();
  EXPECT_TRUE(remembers(copy));
}

TEST_P(ContourCacheTest, FillsWithoutAChangeNotice) {
  ContourProbe contour = closedContour(pointsBefore);
  contour.isTracking(true);
  ask(contour);
  EXPECT_EQ(contour.changes(), 0U);
}

TEST(ContourCircleCacheTest, OutlivesAQuestionForAModeThatThereIsNot) {
  ContourProbe contour = closedContour(pointsBefore);
  const qcCircle circle = contour.encloseCircle(qcContourDefs::eFromFirstVertex);
  EXPECT_THROW(contour.encloseCircle(static_cast<qcContourDefs::DiameterMode>(2)),
               qcContourDefs::BadParams);
  contour.replaceBehindItsBack(pointsAfter);
  EXPECT_EQ(contour.encloseCircle(qcContourDefs::eFromFirstVertex), circle);
}

TEST(ContourCircleCacheTest, IsKeptForEachModeByItself) {
  ContourProbe contour = closedContour(pointsBefore);
  contour.encloseCircle(qcContourDefs::eFromFirstVertex);
  contour.replaceBehindItsBack(pointsAfter);
  EXPECT_EQ(contour.encloseCircle(qcContourDefs::eFarthestVertexPair),
            closedContour(pointsAfter).encloseCircle(qcContourDefs::eFarthestVertexPair));
}

TEST(ContourCircleCacheTest, ServesTheDiameterToo) {
  ContourProbe contour = closedContour(pointsBefore);
  const double diameter = contour.diameter(qcContourDefs::eFarthestVertexPair);
  contour.replaceBehindItsBack(pointsAfter);
  EXPECT_EQ(contour.diameter(qcContourDefs::eFarthestVertexPair), diameter);
}

TEST(ContourGridCacheTest, IsKeptForEveryToleranceUntilThePointsChange) {
  // Grids of the old vertices cannot find the new ones, which lie in other cells.
  ContourProbe contour = openContour({{0, 0}, {10, 0}});
  const Points moved = {{100, 0}, {110, 0}};
  for (const double tolerance : {1.0, 2.0, 3.0, 4.0, 5.0, 6.0})
    contour.vertexIndex({0, 0}, tolerance);
  contour.replaceBehindItsBack(moved);
  for (const double tolerance : {1.0, 2.0, 3.0, 4.0, 5.0, 6.0}) {
    EXPECT_THAT(contour.vertexIndex({100, 0}, tolerance), IsEmpty()) << tolerance;
  }
  EXPECT_THAT(contour.vertexIndex({100, 0}, std::nextafter(1.0, 2.0)), ElementsAre(0));
  const ContourProbe copy = contour;
  EXPECT_THAT(copy.vertexIndex({100, 0}, 1.0), IsEmpty()) << "the copy has the old grid";
  contour.points(moved);
  EXPECT_THAT(contour.vertexIndex({100, 0}, 1.0), ElementsAre(0));
  EXPECT_THAT(copy.vertexIndex({100, 0}, 1.0), IsEmpty());
}

TEST(ContourEdgeIndexCacheTest, IsForgottenWhenThePointsChangeOrTheContourIsOpened) {
  Points points;
  for (int i = 0; i < 100; ++i) points.emplace_back(i % 10, i / 10);
  ContourProbe contour = closedContour(points);
  ASSERT_EQ(contour.closestVertexIndex({0, 0}), 0);
  ASSERT_EQ(contour.closestPoint({4, -3}, false), Point(4, 0));
  for (Point& p : points) p = p + Point(1000, 1000);
  contour.points(points);
  EXPECT_EQ(contour.closestVertexIndex({1009, 1009}), 99);
  contour.isClosed(false);
  EXPECT_EQ(contour.closestVertexIndex({1000, 1000}), 0);
  contour.points({{5, 5}, {6, 6}});
  EXPECT_EQ(contour.closestVertexIndex({6, 6}), 1);
}

/// The keys among 0, 1, ..., 9 whose answers, keyed by angle or by transform, are still known to
/// the contour, which had the vertices `pointsBefore`. Asks copies, so that nothing is dropped.
using KeysIn = std::function<std::vector<int>(const ContourProbe&)>;
using AskKey = std::function<void(const ContourProbe&, int)>;

std::vector<int> anglesIn(const ContourProbe& contour) {
  std::vector<int> keys;
  for (int key = 0; key < 10; ++key) {
    // With all vertices equal any direction gives the first one, which no direction below did.
    ContourProbe copy = contour;
    copy.replaceBehindItsBack(Points(6, {1, 1}));
    if (copy.extremalVertexIndex(qcRadian(0.1 * key)) != 0) keys.push_back(key);
  }
  return keys;
}

void askAngle(const ContourProbe& contour, int key) {
  ASSERT_NE(contour.extremalVertexIndex(qcRadian(0.1 * key)), 0);
}

qcXform<2> shiftBy(int key) { return {qcMatrix<2>(), {1.0 * key, 0}}; }

std::vector<int> xformsIn(const ContourProbe& contour) {
  std::vector<int> keys;
  for (int key = 0; key < 10; ++key) {
    ContourProbe copy = contour;
    copy.replaceBehindItsBack(pointsAfter);
    const double width = copy.encloseRect(shiftBy(key)).width();
    if (width == 7) keys.push_back(key);
  }
  return keys;
}

void askXform(const ContourProbe& contour, int key) {
  ASSERT_EQ(contour.encloseRect(shiftBy(key)).width(), 7);
}

struct KeyedCache {
  std::string name;
  AskKey ask;
  KeysIn keysIn;
};

void PrintTo(const KeyedCache& cache, std::ostream* out) { *out << cache.name; }

const KeyedCache keyedCaches[] = {{"ByAngle", askAngle, anglesIn},
                                  {"ByTransform", askXform, xformsIn}};

class ContourKeyedCacheTest : public testing::TestWithParam<KeyedCache> {
 protected:
  static void ask(const ContourProbe& contour, std::initializer_list<int> keys) {
    for (const int key : keys) GetParam().ask(contour, key);
  }
  static std::vector<int> keysIn(const ContourProbe& contour) {
    std::vector<int> keys;
    // On another thread, so that looking draws none of this thread's random numbers.
    onFreshThread([&] { keys = GetParam().keysIn(contour); });
    return keys;
  }
};

INSTANTIATE_TEST_SUITE_P(Each, ContourKeyedCacheTest, testing::ValuesIn(keyedCaches),
                         [](const auto& instance) { return instance.param.name; });

TEST_P(ContourKeyedCacheTest, HoldsOneMoreThanTheCapacity) {
  const ContourProbe contour = closedContour(pointsBefore);
  EXPECT_THAT(keysIn(contour), IsEmpty());
  ask(contour, {7, 3, 5});
  EXPECT_THAT(keysIn(contour), ElementsAre(3, 5, 7));
  ask(contour, {1});
  EXPECT_THAT(keysIn(contour), ElementsAre(1, 3, 5, 7));
}

TEST_P(ContourKeyedCacheTest, DropsTheEntryAtTheRandomIndexInKeyOrder) {
  onFreshThread([] {
    // The first random indices below 4 are 2, 2, 3 and 1.
    const ContourProbe contour = closedContour(pointsBefore);
    ask(contour, {8, 2, 6, 4});
    ask(contour, {9});
    EXPECT_THAT(keysIn(contour), ElementsAre(2, 4, 8, 9));
    ask(contour, {0});
    EXPECT_THAT(keysIn(contour), ElementsAre(0, 2, 4, 9));
    ask(contour, {5});
    EXPECT_THAT(keysIn(contour), ElementsAre(0, 2, 4, 5));
    ask(contour, {1});
    EXPECT_THAT(keysIn(contour), ElementsAre(0, 1, 4, 5));
  });
}

TEST_P(ContourKeyedCacheTest, DropsNothingWhenARememberedKeyIsAskedAgain) {
  const ContourProbe contour = closedContour(pointsBefore);
  ask(contour, {1, 2, 3, 4, 4, 3, 2, 1, 1, 1});
  EXPECT_THAT(keysIn(contour), ElementsAre(1, 2, 3, 4));
}

TEST_P(ContourKeyedCacheTest, OfCapacityZeroHoldsTheLatest) {
  ContourProbe contour = closedContour(pointsBefore);
  contour.cachedVectorSize(0);
  for (const int key : {4, 1, 7}) {
    ask(contour, {key});
    EXPECT_THAT(keysIn(contour), ElementsAre(key));
  }
}

TEST_P(ContourKeyedCacheTest, IsNotTrimmedWhenTheCapacityBecomesZero) {
  onFreshThread([] {
    ContourProbe contour = closedContour(pointsBefore);
    ask(contour, {1, 2, 3, 4});
    contour.cachedVectorSize(0);
    EXPECT_THAT(keysIn(contour), ElementsAre(1, 2, 3, 4));
    ask(contour, {5});
    EXPECT_THAT(keysIn(contour), ElementsAre(1, 2, 4, 5));
  });
}

TEST_P(ContourKeyedCacheTest, GrowsWhenTheCapacityDoes) {
  ContourProbe contour = closedContour(pointsBefore);
  ask(contour, {1, 2, 3, 4});
  contour.cachedVectorSize(5);
  ask(contour, {5, 6});
  EXPECT_THAT(keysIn(contour), ElementsAre(1, 2, 3, 4, 5, 6));
  onFreshThread([&] { ask(contour, {7}); });
  EXPECT_THAT(keysIn(contour), ElementsAre(1, 2, 3, 5, 6, 7));
}

TEST_P(ContourKeyedCacheTest, KeepsItsCapacityWhenANegativeOneIsRefused) {
  ContourProbe contour = closedContour(pointsBefore);
  expectBadParams(L"", [&] { contour.cachedVectorSize(-1); });
  EXPECT_EQ(contour.cachedVectorSize(), 3);
  ask(contour, {1, 2, 3, 4});
  EXPECT_THAT(keysIn(contour), ElementsAre(1, 2, 3, 4));
}

TEST_P(ContourKeyedCacheTest, OfACopyIsItsOwn) {
  const ContourProbe contour = closedContour(pointsBefore);
  ask(contour, {1, 2});
  const ContourProbe copy = contour;
  ask(contour, {3});
  ask(copy, {4});
  EXPECT_THAT(keysIn(contour), ElementsAre(1, 2, 3));
  EXPECT_THAT(keysIn(copy), ElementsAre(1, 2, 4));
}

TEST_P(ContourKeyedCacheTest, OfAnAssignedContourReplacesItsOwn) {
  ContourProbe contour = closedContour(pointsBefore);
  ask(contour, {1, 2});
  const ContourProbe other = closedContour(pointsBefore);
  ask(other, {3});
  contour = other;
  EXPECT_THAT(keysIn(contour), ElementsAre(3));
  contour = closedContour(pointsBefore);
  EXPECT_THAT(keysIn(contour), IsEmpty());
  EXPECT_THAT(keysIn(other), ElementsAre(3));
}

TEST(ContourKeyedCachesTest, NeverHoldsAKeyThatIsNotANumber) {
  const ContourProbe contour = closedContour(pointsBefore);
  for (const int key : {1, 2, 3, 4}) askAngle(contour, key);
  EXPECT_EQ(contour.extremalVertexIndex(qcRadian(notANumber)), -1);
  EXPECT_THAT(anglesIn(contour), ElementsAre(1, 2, 3, 4));
  for (const int key : {1, 2, 3, 4}) askXform(contour, key);
  contour.encloseRect({qcMatrix<2>(), {notANumber, 0}});
  EXPECT_THAT(xformsIn(contour), ElementsAre(1, 2, 3, 4));
}

TEST(ContourKeyedCachesTest, OfAnglesIsNotThatOfTransforms) {
  const ContourProbe contour = closedContour(pointsBefore);
  for (const int key : {1, 2, 3, 4}) askAngle(contour, key);
  for (const int key : {5, 6, 7, 8}) askXform(contour, key);
  EXPECT_THAT(anglesIn(contour), ElementsAre(1, 2, 3, 4));
  EXPECT_THAT(xformsIn(contour), ElementsAre(5, 6, 7, 8));
}

TEST(ContourKeyedCachesTest, ServesTheExtremalPositionToo) {
  ContourProbe contour = closedContour(pointsBefore);
  ASSERT_EQ(contour.extremalVertexPosition(qcRadian(0.1)), Point(7, 1));
  contour.replaceBehindItsBack(pointsAfter);
  EXPECT_EQ(contour.extremalVertexPosition(qcRadian(0.1)), pointsAfter[2]);
}

}  // namespace
