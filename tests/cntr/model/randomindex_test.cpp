// SPDX-License-Identifier: MIT
//
// The random choice of the result that a full list drops.

#include <cntr/model/randomindex.h>

#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/core/random.h>

#include "fresh_thread.h"

namespace {

using testing::ElementsAre;

TEST(RandomIndexTest, IsTheFloorOfTheThreadsDeviates) {
  onFreshThread([] {
    qcRandomUniform random(1);
    for (std::size_t count = 1; count < 50; ++count) {
      const int expected = qfIFloor(random.next(0.0, static_cast<double>(count)));
      EXPECT_EQ(cntr::model::randomIndexBelow(count), static_cast<std::size_t>(expected));
    }
  });
}

TEST(RandomIndexTest, StartsWithTheKnownIndicesOnEveryThread) {
  for (int thread = 0; thread < 3; ++thread) {
    std::vector<std::size_t> indices;
    onFreshThread([&] {
      for (int i = 0; i < 12; ++i) indices.push_back(cntr::model::randomIndexBelow(3));
    });
    EXPECT_THAT(indices, ElementsAre(1, 2, 2, 1, 1, 2, 2, 1, 0, 2, 1, 1));
  }
}

TEST(RandomIndexTest, IsNotDisturbedByOtherThreads) {
  onFreshThread([] {
    std::vector<std::size_t> indices;
    for (int i = 0; i < 5; ++i) {
      indices.push_back(cntr::model::randomIndexBelow(3));
      onFreshThread([] { cntr::model::randomIndexBelow(3); });
    }
    EXPECT_THAT(indices, ElementsAre(1, 2, 2, 1, 1));
  });
}

}  // namespace
