// SPDX-License-Identifier: MIT
//
// Runs an operation with its first, second, third, ... allocation failing, until it needs no more.
// Needs GoogleTest and the target `heap`.

#pragma once

#include <cstddef>
#include <new>

#include <gtest/gtest.h>

#include "heap.h"

namespace heap {

/// True when the operation runs out of memory.
template <class Operation>
bool runsOutOfMemory(std::size_t number, Failing failing, Operation operation) {
  const Refusal refusal(number, failing);
  try {
    operation();
  } catch (const std::bad_alloc&) {
    return true;
  }
  EXPECT_FALSE(Refusal::hasHappened()) << "a failure has been swallowed";
  return false;
}

/// Runs `operation(subject)` on a new `make()` with each allocation failing in turn, and
/// `check(subject)` after each run. `check` must accept the subject whether or not the operation
/// was completed. Nothing may be left on the heap. Returns the number of allocations that the
/// operation makes.
template <class Make, class Operation, class Check>
std::size_t failEachAllocation(Make make, Operation operation, Check check) {
  {
    // Whatever is created once per thread or program is created now.
    auto subject = make();
    operation(subject);
    check(subject);
  }
  std::size_t allocations = 0;
  for (const Failing failing : {Failing::eOne, Failing::eAllFromOneOn}) {
    for (std::size_t number = 1;; ++number) {
      const long before = blocksAlive();
      bool failed = false;
      {
        auto subject = make();
        failed = runsOutOfMemory(number, failing, [&] { operation(subject); });
        check(subject);
      }
      EXPECT_EQ(blocksAlive(), before) << "after the failure of allocation " << number;
      allocations = number - 1;
      if (!failed || testing::Test::HasFailure()) break;
    }
  }
  return allocations;
}

}  // namespace heap
