// SPDX-License-Identifier: MIT
//
// Replaces the global operator new of this program by one that takes note of sizes.

#include "allocation_watch.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

constinit std::atomic<std::size_t> largest{0};

}  // namespace

void* operator new(std::size_t size) {
  std::size_t before = largest.load();
  while (before < size && !largest.compare_exchange_weak(before, size)) {
  }
  if (void* const block = std::malloc(size == 0 ? 1 : size)) return block;
  throw std::bad_alloc();
}

// Without this one the address sanitizer would supply its own, whose blocks are not free()'s.
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  try {
    return operator new(size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

void operator delete(void* block) noexcept { std::free(block); }

void operator delete(void* block, std::size_t /*size*/) noexcept { std::free(block); }

AllocationWatch::AllocationWatch() { largest = 0; }

std::size_t AllocationWatch::largestBlock() { return largest; }
