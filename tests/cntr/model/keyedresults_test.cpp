// SPDX-License-Identifier: MIT
//
// The bounded lists of results. Which one a full list drops is chosen by randomindex.h; how
// contours use the lists is asked in contour_cache_test.cpp.

#include <cntr/model/keyedresults.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include <cntr/model/randomindex.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/core/random.h>

#include "fresh_thread.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

using ByAngle = cntr::model::KeyedResults<qcRadian, std::string, cntr::model::AngleKey>;
using ByXform = cntr::model::KeyedResults<qcXform<2>, int, cntr::model::XformKey>;

/// The keys among 0, 1, ..., 9 that are remembered.
std::vector<int> keysIn(const ByAngle& results) {
  std::vector<int> keys;
  for (int key = 0; key < 10; ++key) {
    if (results.find(qcRadian(key)) != nullptr) keys.push_back(key);
  }
  return keys;
}

void remember(ByAngle& results, int key, long capacity) {
  results.remember(qcRadian(key), "result of " + std::to_string(key), capacity);
}

TEST(KeyedResultsTest, FindNothingAtFirst) {
  const ByAngle results;
  EXPECT_EQ(results.find(qcRadian(0)), nullptr);
  EXPECT_EQ(results.size(), 0U);
}

TEST(KeyedResultsTest, FindWhatWasRemembered) {
  ByAngle results;
  remember(results, 4, 3);
  remember(results, 2, 3);
  ASSERT_NE(results.find(qcRadian(4)), nullptr);
  EXPECT_EQ(*results.find(qcRadian(4)), "result of 4");
  EXPECT_EQ(*results.find(qcRadian(2)), "result of 2");
  EXPECT_EQ(results.find(qcRadian(3)), nullptr);
}

TEST(KeyedResultsTest, TakeAngleKeysExactlyAndAsGiven) {
  ByAngle results;
  results.remember(qcRadian(1.0), "one", 3);
  EXPECT_EQ(results.find(qcRadian(std::nextafter(1.0, 2.0))), nullptr);
  EXPECT_EQ(results.find(qcRadian(std::nextafter(1.0, 0.0))), nullptr);
  EXPECT_EQ(results.find(qcRadian(1.0 + qcRadian::fullTurn)), nullptr);
  results.remember(qcRadian(0.0), "zero", 3);
  EXPECT_NE(results.find(qcRadian(-0.0)), nullptr);
}

TEST(KeyedResultsTest, HoldOneMoreThanTheCapacity) {
  for (const long capacity : {0L, 1L, 3L, 6L}) {
    ByAngle results;
    for (int key = 0; key < 10; ++key) {
      remember(results, key, capacity);
      EXPECT_EQ(results.size(), static_cast<std::size_t>(std::min<long>(key, capacity) + 1));
    }
    EXPECT_NE(results.find(qcRadian(9)), nullptr) << "the newest is always there";
  }
}

TEST(KeyedResultsTest, DropTheEntryAtTheRandomIndexInKeyOrder) {
  onFreshThread([] {
    // The first random indices below 4 are 2, 2, 3 and 1.
    ByAngle results;
    for (const int key : {8, 2, 6, 4}) remember(results, key, 3);
    EXPECT_THAT(keysIn(results), ElementsAre(2, 4, 6, 8));
    remember(results, 9, 3);
    EXPECT_THAT(keysIn(results), ElementsAre(2, 4, 8, 9));
    remember(results, 0, 3);
    EXPECT_THAT(keysIn(results), ElementsAre(0, 2, 4, 9));
    remember(results, 5, 3);
    EXPECT_THAT(keysIn(results), ElementsAre(0, 2, 4, 5));
    remember(results, 1, 3);
    EXPECT_THAT(keysIn(results), ElementsAre(0, 1, 4, 5));
    EXPECT_EQ(*results.find(qcRadian(1)), "result of 1");
  });
}

TEST(KeyedResultsTest, DrawNoRandomNumberWhileThereIsRoom) {
  onFreshThread([] {
    ByAngle results;
    for (const int key : {8, 2, 6, 4}) remember(results, key, 3);
    EXPECT_EQ(cntr::model::randomIndexBelow(3), 1U) << "the first one of the thread";
  });
}

TEST(KeyedResultsTest, AreNotTrimmedWhenTheCapacityShrinks) {
  onFreshThread([] {
    ByAngle results;
    for (const int key : {0, 1, 2, 3}) remember(results, key, 3);
    remember(results, 4, 0);
    EXPECT_THAT(keysIn(results), ElementsAre(0, 1, 3, 4));
    remember(results, 5, 1);
    EXPECT_THAT(keysIn(results), ElementsAre(0, 1, 4, 5));
  });
}

TEST(KeyedResultsTest, GrowWhenTheCapacityDoes) {
  ByAngle results;
  for (const int key : {0, 1}) remember(results, key, 1);
  for (const int key : {2, 3, 4, 5}) remember(results, key, 5);
  EXPECT_THAT(keysIn(results), ElementsAre(0, 1, 2, 3, 4, 5));
}

TEST(KeyedResultsTest, NeitherStoreNorFindAnAngleThatIsNotANumber) {
  ByAngle results;
  for (const int key : {0, 1, 2, 3}) remember(results, key, 3);
  results.remember(qcRadian(nan), "nothing", 3);
  EXPECT_EQ(results.find(qcRadian(nan)), nullptr);
  EXPECT_THAT(keysIn(results), ElementsAre(0, 1, 2, 3));
  EXPECT_EQ(results.size(), 4U);
  results.remember(qcRadian(infinity), "infinite", 4);
  EXPECT_NE(results.find(qcRadian(infinity)), nullptr);
}

/// A transform that is told from the identity by its number `index` (matrix by rows, translation).
qcXform<2> xformWith(int index, double value) {
  double numbers[] = {1, 0, 0, 1, 0, 0};
  numbers[index] = value;
  return {qcMatrix<2>(numbers[0], numbers[1], numbers[2], numbers[3]), {numbers[4], numbers[5]}};
}

TEST(KeyedResultsTest, TellTransformsApartByEachOfTheirNumbers) {
  ByXform results;
  results.remember(qcXform<2>::I, -1, 10);
  for (int i = 0; i < 6; ++i) {
    const double last = i == 0 || i == 3 ? std::nextafter(1.0, 2.0) : 5e-324;
    EXPECT_EQ(results.find(xformWith(i, last)), nullptr) << i;
    results.remember(xformWith(i, last), i, 10);
  }
  for (int i = 0; i < 6; ++i) {
    const double last = i == 0 || i == 3 ? std::nextafter(1.0, 2.0) : 5e-324;
    ASSERT_NE(results.find(xformWith(i, last)), nullptr) << i;
    EXPECT_EQ(*results.find(xformWith(i, last)), i);
  }
  EXPECT_EQ(*results.find(qcXform<2>::I), -1);
}

TEST(KeyedResultsTest, OrderTransformsByMatrixRowsThenTranslation) {
  // The transform that the random index 2 drops from four is the third in this order.
  const qcXform<2> ascending[] = {xformWith(0, 0.5), xformWith(2, -7), xformWith(5, 1),
                                  xformWith(4, 3)};
  onFreshThread([&] {
    ByXform results;
    for (const int i : {3, 1, 0, 2}) results.remember(ascending[i], i, 3);
    results.remember(xformWith(1, 100), 9, 3);
    for (const int i : {0, 1, 3}) EXPECT_NE(results.find(ascending[i]), nullptr) << i;
    EXPECT_EQ(results.find(ascending[2]), nullptr);
  });
}

TEST(KeyedResultsTest, NeitherStoreNorFindATransformThatHoldsNoNumber) {
  ByXform results;
  for (int i = 0; i < 6; ++i) {
    results.remember(xformWith(i, nan), i, 3);
    EXPECT_EQ(results.find(xformWith(i, nan)), nullptr) << i;
  }
  EXPECT_EQ(results.size(), 0U);
}

TEST(KeyedResultsTest, OfACopyAreItsOwn) {
  ByAngle results;
  remember(results, 1, 3);
  ByAngle copy = results;
  remember(copy, 2, 3);
  remember(results, 3, 3);
  EXPECT_THAT(keysIn(results), ElementsAre(1, 3));
  EXPECT_THAT(keysIn(copy), ElementsAre(1, 2));
  results = ByAngle();
  EXPECT_THAT(keysIn(results), IsEmpty());
  EXPECT_THAT(keysIn(copy), ElementsAre(1, 2));
}

}  // namespace
