// SPDX-License-Identifier: MIT
//
// Replaces the global operator new and operator delete of this program by ones that count.

#include "heap_count.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

constinit std::atomic<long> alive{0};

}  // namespace

void* operator new(std::size_t size) {
  void* const block = std::malloc(size == 0 ? 1 : size);
  if (block == nullptr) throw std::bad_alloc();
  ++alive;
  return block;
}

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  try {
    return operator new(size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

void operator delete(void* block) noexcept {
  if (block != nullptr) --alive;
  std::free(block);
}

void operator delete(void* block, std::size_t /*size*/) noexcept { operator delete(block); }

long blocksAlive() { return alive; }
