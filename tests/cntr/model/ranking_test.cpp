// SPDX-License-Identifier: MIT
//
// Items by rank, compared with a plain list of them.

#include <cntr/model/ranking.h>

#include <vector>

#include <gtest/gtest.h>
#include <testing/shapes/shapes.h>

namespace {

using cntr::model::Ranking;

std::vector<Ranking::Item> itemsOf(const Ranking& ranking) {
  std::vector<Ranking::Item> items;
  for (std::size_t rank = 0; rank < ranking.size(); ++rank) items.push_back(ranking.at(rank));
  return items;
}

TEST(RankingTest, IsEmptyAtFirst) {
  Ranking ranking;
  EXPECT_EQ(ranking.size(), 0U);
  ranking.makeRoomFor(10);
  EXPECT_EQ(ranking.size(), 0U);
  EXPECT_EQ(ranking.countWhile([](Ranking::Item) { return true; }), 0U);
}

TEST(RankingTest, KeepsItemsWhereTheyArePut) {
  shapes::Random random(1);
  Ranking ranking;
  std::vector<Ranking::Item> expected;
  std::vector<Ranking::Item> unused;
  Ranking::Item next = 0;
  for (int step = 0; step < 6000; ++step) {
    const bool takesOut = !expected.empty() && random.chance(step < 3000 ? 0.2 : 0.6);
    if (takesOut) {
      const std::size_t rank = random.below(expected.size());
      unused.push_back(ranking.erase(rank));
      ASSERT_EQ(unused.back(), expected[rank]);
      expected.erase(expected.begin() + static_cast<std::ptrdiff_t>(rank));
    } else {
      const bool isNew = unused.empty();
      const Ranking::Item item = isNew ? next++ : unused.back();
      if (!isNew) unused.pop_back();
      const std::size_t rank = random.below(expected.size() + 1);
      ranking.makeRoomFor(next);
      ranking.insert(rank, item);
      expected.insert(expected.begin() + static_cast<std::ptrdiff_t>(rank), item);
    }
    ASSERT_EQ(ranking.size(), expected.size());
    if (random.chance(0.01)) {
      ASSERT_EQ(itemsOf(ranking), expected);
    }
  }
  EXPECT_EQ(itemsOf(ranking), expected);
}

TEST(RankingTest, CountsTheItemsBeforeAPlace) {
  Ranking ranking;
  ranking.makeRoomFor(100);
  for (Ranking::Item item = 0; item < 100; ++item) ranking.insert(item, item);
  for (Ranking::Item limit = 0; limit <= 100; ++limit) {
    EXPECT_EQ(ranking.countWhile([&](Ranking::Item item) { return item < limit; }), limit);
  }
}

/// How many items are looked at to find a place among n.
std::size_t looksIn(const Ranking& ranking, Ranking::Item limit) {
  std::size_t looks = 0;
  ranking.countWhile([&](Ranking::Item item) {
    ++looks;
    return item < limit;
  });
  return looks;
}

TEST(RankingTest, IsShallowInWhateverOrderItemsCome) {
  constexpr Ranking::Item n = 100000;
  Ranking ascending;
  Ranking descending;
  ascending.makeRoomFor(n);
  descending.makeRoomFor(n);
  for (Ranking::Item item = 0; item < n; ++item) {
    ascending.insert(item, item);
    descending.insert(0, n - 1 - item);
  }
  for (Ranking::Item limit = 0; limit < n; limit += 97) {
    ASSERT_LT(looksIn(ascending, limit), 60U) << limit;
    ASSERT_LT(looksIn(descending, limit), 60U) << limit;
  }
}

}  // namespace
