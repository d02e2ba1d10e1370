// SPDX-License-Identifier: MIT
//
// Watches the heap of this test program: how many blocks are alive and how many were asked for, so
// that tests can tell a leak, and an answer that is remembered from one that is computed.

#pragma once

namespace heap_watch {

/// Blocks that new gave and nobody has deleted yet.
long blocksAlive();
/// Blocks that new gave so far.
long blocksMade();

}  // namespace heap_watch
