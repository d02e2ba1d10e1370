// SPDX-License-Identifier: MIT
//
// Watches the heap of this test program: how many blocks are alive and how many were asked for, so
// that tests can tell a leak, and an answer that is remembered from one that is computed.
//
// On Windows a program cannot replace what its DLLs allocate with: nothing is counted there.

#pragma once

namespace heap_watch {

#if defined(_WIN32)
inline constexpr bool counts = false;
#else
inline constexpr bool counts = true;
#endif

/// Blocks that new gave and nobody has deleted yet.
long blocksAlive();
/// Blocks that new gave so far.
long blocksMade();

}  // namespace heap_watch
