// SPDX-License-Identifier: MIT
//
// The bounded lists of results. Which one a full list drops is chosen by randomindex.h; how
// contours use the lists is tested in contour_cache_test.cpp.

#include <cntr/model/keyedresults.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <cntr/model/randomindex.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/core/random.h>
#include <testing/heap/fail_each.h>
#include <testing/shapes/numbers.h>
#include <testing/shapes/shapes.h>

#include "fresh_thread.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

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
  results.remember(qcRadian(notANumber), "nothing", 3);
  EXPECT_EQ(results.find(qcRadian(notANumber)), nullptr);
  EXPECT_THAT(keysIn(results), ElementsAre(0, 1, 2, 3));
  EXPECT_EQ(results.size(), 4U);
  results.remember(qcRadian(infinity), "infinite", 4);
  EXPECT_NE(results.find(qcRadian(infinity)), nullptr);
}

/// The same by definition: a sorted list of keys with their values.
class LiteralList {
 public:
  void remember(double key, int value, long capacity) {
    if (static_cast<long>(list_.size()) > capacity) {
      list_.erase(list_.begin() + qfIFloor(random_.next(0.0, static_cast<double>(list_.size()))));
    }
    const auto isBefore = [](const auto& entry, double sought) { return entry.first < sought; };
    list_.insert(std::lower_bound(list_.begin(), list_.end(), key, isBefore), {key, value});
  }
  const std::vector<std::pair<double, int>>& entries() const { return list_; }
  bool holds(double key) const {
    return std::any_of(list_.begin(), list_.end(),
                       [&](const auto& entry) { return entry.first == key; });
  }

 private:
  std::vector<std::pair<double, int>> list_;
  qcRandomUniform random_{1};
};

TEST(KeyedResultsTest, OfAnyLengthAreThoseOfASortedList) {
  using NumbersByAngle = cntr::model::KeyedResults<qcRadian, int, cntr::model::AngleKey>;
  for (const long capacity : {0L, 3L, 62L, 63L, 64L, 65L, 700L}) {
    onFreshThread([&] {
      NumbersByAngle results;
      LiteralList expected;
      shapes::Random random(static_cast<std::uint64_t>(capacity));
      for (int i = 0; i < 4000; ++i) {
        const auto key = static_cast<double>(random.below(3000));
        ASSERT_EQ(results.find(qcRadian(key)) != nullptr, expected.holds(key)) << i;
        if (expected.holds(key)) continue;
        // Now and then a smaller capacity: nothing is trimmed, one is dropped for each new one.
        const long now = random.chance(0.05) ? capacity / 2 : capacity;
        results.remember(qcRadian(key), i, now);
        expected.remember(key, i, now);
      }
      ASSERT_EQ(results.size(), expected.entries().size());
      for (const auto& [key, value] : expected.entries()) {
        const int* const found = results.find(qcRadian(key));
        ASSERT_NE(found, nullptr) << key;
        EXPECT_EQ(*found, value) << key;
      }
    });
  }
}

TEST(KeyedResultsTest, OfGreatLengthCanBeCopied) {
  ByAngle results;
  for (int key = 0; key < 100; ++key) remember(results, key, 100);
  ByAngle copy = results;
  remember(copy, 100, 101);
  EXPECT_EQ(results.size(), 100U);
  EXPECT_EQ(copy.size(), 101U);
  EXPECT_EQ(results.find(qcRadian(100)), nullptr);
  EXPECT_EQ(*copy.find(qcRadian(100)), "result of 100");
  EXPECT_EQ(*copy.find(qcRadian(7)), "result of 7");
  results = ByAngle();
  EXPECT_EQ(results.find(qcRadian(7)), nullptr);
}

TEST(KeyedResultsTest, StayInOrderWhenMemoryRunsOut) {
  if (!heap::counts) GTEST_SKIP() << "the heap of the libraries cannot be replaced here";
  using NumbersByAngle = cntr::model::KeyedResults<qcRadian, int, cntr::model::AngleKey>;
  const auto full = [] {
    NumbersByAngle results;
    for (int key = 0; key < 64; ++key) results.remember(qcRadian(2 * key), key, 1000);
    return results;
  };
  const std::size_t allocations = heap::failEachAllocation(
      full, [](NumbersByAngle& results) { results.remember(qcRadian(21), -1, 1000); },
      [](const NumbersByAngle& results) {
        for (int key = 0; key < 64; ++key) ASSERT_EQ(*results.find(qcRadian(2 * key)), key);
        const bool wasRemembered = results.find(qcRadian(21)) != nullptr;
        EXPECT_EQ(results.size(), wasRemembered ? 65U : 64U);
      });
  EXPECT_GE(allocations, 2U);
}

/// A transform that differs from the identity in its number `index` (matrix by rows, translation).
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
    results.remember(xformWith(i, notANumber), i, 3);
    EXPECT_EQ(results.find(xformWith(i, notANumber)), nullptr) << i;
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
