// SPDX-License-Identifier: MIT
//
// The heap of a program under watch: how many blocks and bytes are in use, what was asked for, and
// a heap that refuses on demand. A program that links the target `heap` has its operator new and
// operator delete replaced (heap.cpp), for the shared libraries it uses as well; fail_each.h runs
// an operation with each of its allocations failing in turn.
//
// On Windows a program cannot replace what its DLLs allocate with: nothing is counted or refused
// there.

#pragma once

#include <cstddef>

namespace heap {

#if defined(_WIN32)
inline constexpr bool counts = false;
#else
inline constexpr bool counts = true;
#endif

/// Blocks from new that have not been deleted yet.
long blocksAlive();
/// All blocks that new has given so far.
long blocksMade();
/// The number of bytes that were asked for in the blocks alive.
std::size_t bytesAlive();

/// Measures from its construction on. One at a time.
class Watch {
 public:
  Watch();
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;

  /// The most bytes alive at any time, beyond those alive at the beginning.
  std::size_t peakBytes() const;
  /// The largest single block that was asked for, in bytes.
  static std::size_t largestBlock();

 private:
  std::size_t before_;
};

/// Which allocations of this program fail.
enum class Failing { eOne, eAllFromOneOn };

/// As long as it lives, the allocation of this number (counted from 1) fails. One at a time, while
/// no other thread allocates.
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
