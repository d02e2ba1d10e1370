// SPDX-License-Identifier: MIT
//
// Work on many features that threads share: blocks of them, whichever thread comes first.

#pragma once

#include <cstddef>
#include <functional>

namespace table {

/// How many features a thread takes at once, or that times a whole number where there are many; a
/// multiple of the 8 that share a byte of a bitmap.
inline constexpr std::size_t featuresInBlock = 64;

/// Calls `work(begin, end)` for blocks that cover 0 to `count`, each once. `threads` is how many
/// share them, 0 for as many as there are processors; where the system provides fewer threads,
/// these do the work. An exception of `work` ends the work of its thread, and is thrown when all
/// threads have ended.
void forBlocks(std::size_t count, unsigned threads,
               const std::function<void(std::size_t begin, std::size_t end)>& work);

}  // namespace table
