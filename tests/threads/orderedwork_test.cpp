// SPDX-License-Identifier: MIT
//
// The program's work on several threads, for the thread sanitizer to look at.

#include <tools/stream/orderedwork.h>

#include <algorithm>
#include <atomic>
#include <stdexcept>
#include <vector>

#include <gtest/gtest.h>

using tool::Finish;
using tool::runInOrder;
using tool::TaskQueue;

namespace {

void nothing() {}

TEST(OrderedWork, FinishesInTheOrderOfTheTasks) {
  std::vector<int> finished;
  runInOrder(
      4,
      [&](TaskQueue& queue) {
        for (int i = 0; i < 10000; ++i) {
          queue.add(
              [&finished, i]() -> Finish { return [&finished, i] { finished.push_back(i); }; },
              static_cast<std::size_t>(i) * 7 % 3000);
        }
      },
      nothing);
  ASSERT_EQ(finished.size(), 10000);
  EXPECT_TRUE(std::is_sorted(finished.begin(), finished.end()));
}

TEST(OrderedWork, HasFewTasksUnderWay) {
  std::atomic<int> underWay = 0;
  std::atomic<int> most = 0;
  runInOrder(
      2,
      [&](TaskQueue& queue) {
        for (int i = 0; i < 1000; ++i) {
          most = std::max(most.load(), ++underWay);
          queue.add([&underWay]() -> Finish { return [&underWay] { --underWay; }; },
                    std::size_t{1} << 20U);
        }
      },
      nothing);
  EXPECT_EQ(underWay, 0);
  EXPECT_LE(most, 20);
}

TEST(OrderedWork, FailuresComeInTheirPlace) {
  for (const int failing : {0, 500, 999}) {
    int finished = 0;
    const auto add = [&](TaskQueue& queue) {
      for (int i = 0; i < 1000; ++i) {
        queue.add(
            [&finished, i, failing]() -> Finish {
              if (i == failing) throw std::runtime_error("task");
              return [&finished] { ++finished; };
            },
            1);
      }
    };
    EXPECT_THROW(runInOrder(3, add, nothing), std::runtime_error);
    EXPECT_EQ(finished, failing);
  }
}

TEST(OrderedWork, AFailingProducerOrFinishEndsAll) {
  int finished = 0;
  const auto add = [&](TaskQueue& queue) {
    for (int i = 0; i < 10; ++i) queue.add([&]() -> Finish { return [&] { ++finished; }; }, 1);
    throw std::runtime_error("producer");
  };
  EXPECT_THROW(runInOrder(2, add, nothing), std::runtime_error);
  EXPECT_EQ(finished, 10) << "what was produced before is finished";
  const auto endless = [&](TaskQueue& queue) {
    for (;;) queue.add([]() -> Finish { return [] { throw std::runtime_error("finish"); }; }, 1);
  };
  EXPECT_THROW(runInOrder(2, endless, nothing), std::runtime_error);
}

}  // namespace
