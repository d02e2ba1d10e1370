// SPDX-License-Identifier: MIT
//
// testing/heap: every form of new and delete is counted, in this program and in the shared
// libraries it uses, and a refusal fails exactly the allocation that it names.

#include <testing/heap/heap.h>

#include <cstdint>
#include <new>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <platform/core/hull.h>
#include <platform/core/vector.h>
#include <testing/heap/fail_each.h>

namespace {

constexpr auto page = std::align_val_t(4096);

/// A way to allocate 1000 bytes, and the way to give them back.
struct Form {
  const char* name;
  void* (*make)();
  void (*release)(void*);
};

std::vector<Form> forms() {
  std::vector<Form> all = {
      {"one", [] { return ::operator new(1000); }, [](void* p) { ::operator delete(p); }},
      {"array", [] { return ::operator new[](1000); }, [](void* p) { ::operator delete[](p); }},
      {"one, without throwing", [] { return ::operator new(1000, std::nothrow); },
       [](void* p) { ::operator delete(p, std::nothrow); }},
      {"array, without throwing", [] { return ::operator new[](1000, std::nothrow); },
       [](void* p) { ::operator delete[](p, std::nothrow); }},
      {"one, aligned", [] { return ::operator new(1000, page); },
       [](void* p) { ::operator delete(p, page); }},
      {"array, aligned", [] { return ::operator new[](1000, page); },
       [](void* p) { ::operator delete[](p, page); }},
      {"one, aligned, without throwing", [] { return ::operator new(1000, page, std::nothrow); },
       [](void* p) { ::operator delete(p, page, std::nothrow); }},
      {"array, aligned, without throwing",
       [] { return ::operator new[](1000, page, std::nothrow); },
       [](void* p) { ::operator delete[](p, page, std::nothrow); }},
  };
#if defined(__cpp_sized_deallocation)
  all.push_back({"one, sized", [] { return ::operator new(1000); },
                 [](void* p) { ::operator delete (p, std::size_t{1000}); }});
  all.push_back({"array, sized", [] { return ::operator new[](1000); },
                 [](void* p) { ::operator delete[](p, std::size_t{1000}); }});
  all.push_back({"one, aligned and sized", [] { return ::operator new(1000, page); },
                 [](void* p) { ::operator delete (p, std::size_t{1000}, page); }});
  all.push_back({"array, aligned and sized", [] { return ::operator new[](1000, page); },
                 [](void* p) { ::operator delete[](p, std::size_t{1000}, page); }});
#endif
  return all;
}

bool isOnAPage(const void* block) { return reinterpret_cast<std::uintptr_t>(block) % 4096 == 0; }

TEST(HeapTest, EveryFormOfNewAndDeleteIsCounted) {
  for (const Form& form : forms()) {
    SCOPED_TRACE(form.name);
    const heap::Watch watch;
    const long made = heap::blocksMade();
    const long alive = heap::blocksAlive();
    const std::size_t bytes = heap::bytesAlive();
    const std::size_t bytesMade = heap::bytesMade();
    void* const block = form.make();
    const long madeThen = heap::blocksMade();
    const long aliveThen = heap::blocksAlive();
    const std::size_t bytesThen = heap::bytesAlive();
    const std::size_t bytesMadeThen = heap::bytesMade();
    form.release(block);
    EXPECT_EQ(madeThen, made + 1);
    EXPECT_EQ(aliveThen, alive + 1);
    EXPECT_GE(bytesThen, bytes + 1000);
    EXPECT_LE(bytesThen, bytes + 1100);
    EXPECT_EQ(bytesMadeThen - bytesMade, bytesThen - bytes);
    EXPECT_EQ(heap::bytesMade(), bytesMadeThen);
    EXPECT_EQ(heap::blocksMade(), made + 1);
    EXPECT_EQ(heap::blocksAlive(), alive);
    EXPECT_EQ(heap::bytesAlive(), bytes);
    EXPECT_EQ(heap::Watch::largestBlock(), 1000U);
    EXPECT_EQ(watch.peakBytes(), bytesThen - bytes);
  }
}

TEST(HeapTest, EveryFormCanBeRefused) {
  for (const Form& form : forms()) {
    SCOPED_TRACE(form.name);
    void* block = nullptr;
    {
      const heap::Refusal refusal(1, heap::Failing::eOne);
      try {
        block = form.make();
      } catch (const std::bad_alloc&) {
      }
    }
    EXPECT_EQ(block, nullptr);
    EXPECT_TRUE(heap::Refusal::hasHappened());
    form.release(block);
  }
}

TEST(HeapTest, AlignedBlocksAreAligned) {
  for (int i = 0; i < 10; ++i) {
    void* const block = ::operator new(1, page);
    EXPECT_TRUE(isOnAPage(block));
    ::operator delete(block, page);
  }
}

TEST(HeapTest, BlocksWithoutBytesAreBlocksOfTheirOwn) {
  void* const first = ::operator new(0);
  void* const second = ::operator new(0);
  EXPECT_NE(first, second);
  ::operator delete(first);
  ::operator delete(second);
}

TEST(HeapTest, DeletingNothingCountsNothing) {
  const long alive = heap::blocksAlive();
  ::operator delete(nullptr);
  EXPECT_EQ(heap::blocksAlive(), alive);
}

TEST(HeapTest, WhatASharedLibraryAllocatesIsCounted) {
  const std::vector<qcVector<2>> points = {{0, 0}, {4, 0}, {4, 3}};
  const long made = heap::blocksMade();
  const long alive = heap::blocksAlive();
  {
    std::vector<qcVector<2>> hull;
    qfConvexHull(points, hull);
    EXPECT_EQ(heap::blocksAlive(), alive + 1);
  }
  EXPECT_GT(heap::blocksMade(), made);
  EXPECT_EQ(heap::blocksAlive(), alive);
}

TEST(HeapTest, APeakIsTheMostAtOneTimeAndBeginsAnewWithEachWatch) {
  {
    const heap::Watch watch;
    for (int i = 0; i < 3; ++i) ::operator delete(::operator new(100000));
    EXPECT_GE(watch.peakBytes(), 100000U);
    EXPECT_LT(watch.peakBytes(), 200000U);
  }
  void* const kept = ::operator new(50000);
  const heap::Watch watch;
  ::operator delete(::operator new(1000));
  EXPECT_LT(watch.peakBytes(), 2000U);
  EXPECT_EQ(heap::Watch::largestBlock(), 1000U);
  ::operator delete(kept);
}

TEST(HeapTest, BlocksOfManyThreadsAreCounted) {
  const auto churn = [] {
    for (std::size_t i = 0; i < 10000; ++i) ::operator delete(::operator new(i));
  };
  std::thread(churn).join();  // allocates what the system keeps for reuse
  const long made = heap::blocksMade();
  const long alive = heap::blocksAlive();
  const std::size_t bytes = heap::bytesAlive();
  {
    std::thread first(churn);
    std::thread second(churn);
    first.join();
    second.join();
  }
  EXPECT_GE(heap::blocksMade(), made + 20000);
  EXPECT_EQ(heap::blocksAlive(), alive);
  EXPECT_EQ(heap::bytesAlive(), bytes);
}

/// Which of five allocations fail, as five digits.
std::string failures(std::size_t number, heap::Failing failing) {
  std::string pattern(5, '0');
  const heap::Refusal refusal(number, failing);
  for (char& digit : pattern) {
    void* const block = ::operator new(8, std::nothrow);
    if (block == nullptr) digit = '1';
    ::operator delete(block);
  }
  return pattern;
}

TEST(RefusalTest, FailsTheAllocationOfItsNumber) {
  EXPECT_EQ(failures(1, heap::Failing::eOne), "10000");
  EXPECT_EQ(failures(3, heap::Failing::eOne), "00100");
  EXPECT_TRUE(heap::Refusal::hasHappened());
  EXPECT_EQ(failures(6, heap::Failing::eOne), "00000");
  EXPECT_FALSE(heap::Refusal::hasHappened());
}

TEST(RefusalTest, FailsAllFromItsNumberOnUntilItEnds) {
  EXPECT_EQ(failures(1, heap::Failing::eAllFromOneOn), "11111");
  EXPECT_EQ(failures(4, heap::Failing::eAllFromOneOn), "00011");
  ::operator delete(::operator new(8));
}

TEST(RefusalTest, RefusedBlocksAreNotCounted) {
  const long made = heap::blocksMade();
  EXPECT_EQ(failures(1, heap::Failing::eAllFromOneOn), "11111");
  EXPECT_EQ(heap::blocksMade(), made);
}

TEST(FailEachTest, CountsTheAllocationsOfAnOperation) {
  const auto none = [](const auto&) {};
  const auto subject = [] { return 0; };
  EXPECT_EQ(heap::failEachAllocation(subject, none, none), 0U);
  const auto three = [](int) {
    const std::vector<int> first(1);
    const std::vector<int> second(1);
    const std::vector<int> third(1);
  };
  EXPECT_EQ(heap::failEachAllocation(subject, three, none), 3U);
}

TEST(FailEachTest, ChecksTheSubjectAfterEachFailure) {
  int checks = 0;
  const auto two = [](int) {
    const std::vector<int> first(1);
    const std::vector<int> second(1);
  };
  heap::failEachAllocation([] { return 0; }, two, [&](int) { ++checks; });
  EXPECT_EQ(checks, 1 + 2 * 3);
}

}  // namespace
