// SPDX-License-Identifier: MIT
//
// Atomic counters, used by the reference counts of handle.h.

#pragma once

#include <atomic>

/// @addtogroup objects
/// @{

/// Adds 1 and returns the new value. The ordering suffices for another reference to an object that
/// the caller already holds.
inline long qfInterlockedIncrement(std::atomic<long>& counter) noexcept {
  return counter.fetch_add(1, std::memory_order_relaxed) + 1;
}

/// Subtracts 1 and returns the new value. Everything done to the counted object before any
/// decrement happens before what follows the decrement that returns 0.
inline long qfInterlockedDecrement(std::atomic<long>& counter) noexcept {
  return counter.fetch_sub(1, std::memory_order_acq_rel) - 1;
}

/// @}
