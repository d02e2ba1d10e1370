// SPDX-License-Identifier: MIT

#include <cntrtable/blocks.h>
#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <thread>
#include <vector>

using table::featuresInBlock;
using table::forBlocks;

namespace {

constexpr std::size_t many = 10 * featuresInBlock + 3;

}  // namespace

TEST(Blocks, CoverEverythingOnceOnAnyNumberOfThreads) {
  for (const unsigned threads : {0U, 1U, 2U, 7U, 100U}) {
    std::vector<std::atomic<int>> calls(many);
    forBlocks(many, threads, [&](std::size_t begin, std::size_t end) {
      for (std::size_t i = begin; i < end; ++i) ++calls[i];
    });
    for (std::size_t i = 0; i < many; ++i) EXPECT_EQ(calls[i], 1) << i << ", " << threads;
  }
}

TEST(Blocks, ShareNoByteOfABitmap) {
  std::atomic<bool> isApart = true;
  forBlocks(many, 2, [&](std::size_t begin, std::size_t end) {
    if (begin % 8 != 0 || (end % 8 != 0 && end != many)) isApart = false;
  });
  EXPECT_TRUE(isApart);
}

TEST(Blocks, OfManyFeaturesShareNoLineOfABitmapThatBeginsWithOne) {
  constexpr std::size_t bitsOfLine = 512;
  constexpr std::size_t count = 20 * bitsOfLine + 1;
  std::atomic<bool> isApart = true;
  forBlocks(count, 2, [&](std::size_t begin, std::size_t end) {
    if (begin % bitsOfLine != 0 || (end != begin + bitsOfLine && end != count)) isApart = false;
  });
  EXPECT_TRUE(isApart);
}

TEST(Blocks, OfNothingAreNone) {
  forBlocks(0, 2, [](std::size_t, std::size_t) { FAIL(); });
}

TEST(Blocks, AreTakenBySeveralThreadsAtOnce) {
  // Each of two blocks waits for the other one, which takes another thread.
  std::atomic<int> begun = 0;
  forBlocks(2 * featuresInBlock, 2, [&](std::size_t, std::size_t) {
    ++begun;
    while (begun < 2) std::this_thread::yield();
  });
  EXPECT_EQ(begun, 2);
}

TEST(Blocks, HandOnAnExceptionWhenAllThreadsHaveEnded) {
  for (const unsigned threads : {1U, 3U}) {
    EXPECT_THROW(forBlocks(many, threads,
                           [](std::size_t begin, std::size_t) {
                             if (begin == 2 * featuresInBlock) throw std::runtime_error("broken");
                           }),
                 std::runtime_error)
        << threads;
  }
}
