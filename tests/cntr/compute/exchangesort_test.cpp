// SPDX-License-Identifier: MIT

#include <cntr/compute/exchangesort.h>

#include <numeric>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <testing/shapes/numbers.h>
#include <testing/shapes/shapes.h>
#include <testing/twin/repetitions.h>

namespace {

using cntr::compute::exchangeSortedOrder;
using Numbers = std::vector<std::size_t>;

/// The sort itself.
Numbers exchanged(const std::vector<double>& keys) {
  Numbers order(keys.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  for (std::size_t i = 0; i < order.size(); ++i) {
    for (std::size_t j = i + 1; j < order.size(); ++j) {
      if (keys[order[i]] > keys[order[j]]) std::swap(order[i], order[j]);
    }
  }
  return order;
}

TEST(ExchangeSortTest, DifferentKeysAscend) {
  EXPECT_EQ(exchangeSortedOrder(std::vector<double>{3, 1, 2}), (Numbers{1, 2, 0}));
  EXPECT_EQ(exchangeSortedOrder({}), Numbers());
}

TEST(ExchangeSortTest, TheFirstOfEqualKeysGoesToTheirEndWhenASmallerOneFollows) {
  EXPECT_EQ(exchangeSortedOrder(std::vector<double>{2, 2, 2}), (Numbers{0, 1, 2}));
  EXPECT_EQ(exchangeSortedOrder(std::vector<double>{2, 2, 2, 1}), (Numbers{3, 1, 2, 0}));
  EXPECT_EQ(exchangeSortedOrder(std::vector<double>{2, 2, 1, 2, 1}), (Numbers{2, 4, 0, 3, 1}));
}

TEST(ExchangeSortTest, KeysThatAreNotNumbersKeepTheirPlaces) {
  EXPECT_EQ(exchangeSortedOrder(std::vector<double>{2, notANumber, 1}), (Numbers{2, 1, 0}));
  EXPECT_EQ(exchangeSortedOrder(std::vector<double>{notANumber, notANumber}), (Numbers{0, 1}));
}

TEST(ExchangeSortTest, TheOrderIsThatOfTheExchangeSort) {
  shapes::Random random(301);
  for (std::size_t round = 0; round < repetitions(20000); ++round) {
    std::vector<double> keys(random.below(60));
    const std::size_t differentKeys = 1 + random.below(8);
    const double share = random.chance(0.3) ? 0.2 : 0.0;
    for (double& key : keys) {
      key = random.chance(share) ? notANumber : static_cast<double>(random.below(differentKeys));
    }
    ASSERT_EQ(exchangeSortedOrder(keys), exchanged(keys)) << testing::PrintToString(keys);
  }
}

TEST(ExchangeSortTest, AMillionEqualKeysAreSorted) {
  std::vector<double> keys(1000000);
  for (std::size_t i = 0; i < keys.size(); ++i) keys[i] = static_cast<double>(i % 2);
  const Numbers order = exchangeSortedOrder(keys);
  EXPECT_EQ(order.front(), 0U);
  EXPECT_EQ(keys[order[499999]], 0.0);
  EXPECT_EQ(keys[order[500000]], 1.0);
}

}  // namespace
