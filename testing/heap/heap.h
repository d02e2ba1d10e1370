// SPDX-License-Identifier: MIT
//
// Watches the heap of a program: how many blocks and bytes are in use and what was requested; makes
// allocations fail on demand. A program that links the target `heap` has its operator new and
// operator delete replaced (heap.cpp), for the shared libraries it uses as well; fail_each.h runs
// an operation with each of its allocations failing in turn.
//
// On Windows a program cannot replace the allocation functions of its DLLs: nothing is counted or
// refused there.

#pragma once

#include <cstddef>

namespace heap {

#if defined(_WIN32)
inline constexpr bool counts = false;
#else
inline constexpr bool counts = true;
#endif

/// The number of blocks from new that have not been deleted yet.
long blocksAlive();
/// The number of blocks that new has returned so far.
long blocksMade();
/// The number of bytes requested for these.
std::size_t bytesMade();
/// The number of bytes requested for the blocks that are alive.
std::size_t bytesAlive();

/// Measures from its construction on. One at a time.
class Watch {
 public:
  Watch();
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;

  /// The largest number of bytes alive at any time, less those alive at the beginning.
  std::size_t peakBytes() const;
  /// The largest single block requested, in bytes.
  static std::size_t largestBlock();

 private:
  std::size_t before_;
};

/// Which allocations of this program fail.
enum class Failing { eOne, eAllFromOneOn };

/// As long as it lives, the allocation with this number (counted from 1) fails. One at a time,
/// while no other thread allocates.
class Refusal {
 public:
  Refusal(std::size_t number, Failing failing);
  Refusal(const Refusal&) = delete;
  Refusal& operator=(const Refusal&) = delete;
  ~Refusal();

  /// True when an allocation has failed.
  static bool hasHappened();
};

}  // namespace heap
