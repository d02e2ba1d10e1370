// SPDX-License-Identifier: MIT
//
// The program's work on several threads, to be watched by the thread sanitizer.

#include <tools/run/orderedwork.h>

#include <algorithm>
#include <atomic>
#include <stdexcept>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

using tool::Job;
using tool::JobQueue;
using tool::runInOrder;

namespace {

using Function = std::function<void()>;

void nothing() {}

/// A job of two functions.
class TestJob : public Job {
 public:
  TestJob(Function work, Function finish) : work_(std::move(work)), finish_(std::move(finish)) {}
  void work() override { work_(); }
  void finish() override { finish_(); }

 private:
  Function work_;
  Function finish_;
};

std::unique_ptr<Job> job(Function work, Function finish) {
  return std::make_unique<TestJob>(std::move(work), std::move(finish));
}

TEST(OrderedWork, FinishesInTheOrderOfTheJobs) {
  std::vector<int> finished;
  std::vector<int> squares(10000);
  runInOrder(
      4,
      [&](JobQueue& queue) {
        for (int i = 0; i < 10000; ++i) {
          int& square = squares[static_cast<std::size_t>(i)];
          queue.add(job([&square, i] { square = i * i; },
                        [&finished, &square, i] {
                          EXPECT_EQ(square, i * i) << "finished before it was worked on";
                          finished.push_back(i);
                        }));
        }
      },
      nothing);
  ASSERT_EQ(finished.size(), 10000);
  EXPECT_TRUE(std::is_sorted(finished.begin(), finished.end()));
}

TEST(OrderedWork, HasFewJobsUnderWay) {
  std::atomic<int> underWay = 0;
  std::atomic<int> most = 0;
  runInOrder(
      2,
      [&](JobQueue& queue) {
        for (int i = 0; i < 1000; ++i) {
          most = std::max(most.load(), ++underWay);
          queue.add(job(nothing, [&underWay] { --underWay; }));
        }
      },
      nothing);
  EXPECT_EQ(underWay, 0);
  EXPECT_LE(most, 20);
}

TEST(OrderedWork, FailuresComeInTheirPlace) {
  for (const int failing : {0, 500, 999}) {
    int finished = 0;
    const auto add = [&](JobQueue& queue) {
      for (int i = 0; i < 1000; ++i) {
        queue.add(job(
            [i, failing] {
              if (i == failing) throw std::runtime_error("job");
            },
            [&finished] { ++finished; }));
      }
    };
    EXPECT_THROW(runInOrder(3, add, nothing), std::runtime_error);
    EXPECT_EQ(finished, failing + 1) << "the job that failed is finished, and none after it";
  }
}

TEST(OrderedWork, AFailingProducerOrFinishEndsAll) {
  int finished = 0;
  const auto add = [&](JobQueue& queue) {
    for (int i = 0; i < 10; ++i) queue.add(job(nothing, [&finished] { ++finished; }));
    throw std::runtime_error("producer");
  };
  EXPECT_THROW(runInOrder(2, add, nothing), std::runtime_error);
  EXPECT_EQ(finished, 10) << "what was produced before is finished";
  const auto endless = [&](JobQueue& queue) {
    for (;;) queue.add(job(nothing, [] { throw std::runtime_error("finish"); }));
  };
  EXPECT_THROW(runInOrder(2, endless, nothing), std::runtime_error);
}

TEST(OrderedWork, AJobIsFinishedBeforeMoreComes) {
  std::atomic<bool> isFinished = false;
  std::atomic<bool> isIdle = false;
  runInOrder(
      1,
      [&](JobQueue& queue) {
        queue.add(job(nothing, [&isFinished] { isFinished = true; }));
        while (!isFinished || !isIdle) std::this_thread::yield();
      },
      [&isIdle] { isIdle = true; });
  EXPECT_TRUE(isFinished);
}

}  // namespace
