// SPDX-License-Identifier: MIT
//
// Replaces the global operator new and operator delete of this program by ones that count.

#include "heap_watch.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

constinit std::atomic<long> made{0};
constinit std::atomic<long> gone{0};

}  // namespace

#if !defined(_WIN32)
void* operator new(std::size_t size) {
  void* const block = std::malloc(size == 0 ? 1 : size);
  if (block == nullptr) throw std::bad_alloc();
  ++made;
  return block;
}

void operator delete(void* block) noexcept {
  if (block != nullptr) ++gone;
  std::free(block);
}

void operator delete(void* block, std::size_t /*size*/) noexcept { operator delete(block); }
#endif

long heap_watch::blocksMade() { return made; }

long heap_watch::blocksAlive() { return made - gone; }
