// SPDX-License-Identifier: MIT
//
// Shares work on many features between threads: whichever thread is free takes the next block.

#pragma once

#include <cstddef>
#include <functional>

namespace table {

/// How many features a thread takes at once, or a multiple of that if there are many; a multiple of
/// the 8 that share a byte of a bitmap.
inline constexpr std::size_t featuresInBlock = 64;

/// Calls `work(begin, end)` for blocks that cover 0 to `count`, each once. `threads` is the number
/// of threads that share them, 0 for as many as there are processors; if the system provides fewer
/// threads, these do the work. An exception from `work` ends the work of its thread and is thrown
/// when all threads have ended.
void forBlocks(std::size_t count, unsigned threads,
               const std::function<void(std::size_t begin, std::size_t end)>& work);

}  // namespace table
