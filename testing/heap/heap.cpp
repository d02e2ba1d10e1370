// SPDX-License-Identifier: MIT
//
// Replaces the global operator new and operator delete of the program by ones that count and
// refuse. All of them are replaced: the sanitizers would supply those left out, whose blocks are
// not free()'s.

#include "heap.h"

#include <atomic>
#include <cstdlib>
#include <limits>
#include <new>

#if !defined(_WIN32)
#include <malloc.h>
#endif

namespace {

constexpr std::size_t never = std::numeric_limits<std::size_t>::max();

constinit std::atomic<long> made{0};
constinit std::atomic<long> gone{0};
constinit std::atomic<std::size_t> bytes{0};
constinit std::atomic<std::size_t> mostBytes{0};
constinit std::atomic<std::size_t> largest{0};
/// Counts down while a refusal lives.
constinit std::atomic<std::size_t> untilRefusal{never};
constinit std::atomic<heap::Failing> refused{heap::Failing::eOne};
constinit std::atomic<bool> happened{false};

}  // namespace

#if !defined(_WIN32)
namespace {

void raise(std::atomic<std::size_t>& greatest, std::size_t value) {
  std::size_t before = greatest.load();
  while (before < value && !greatest.compare_exchange_weak(before, value)) {
  }
}

bool isRefused() {
  const std::size_t left = untilRefusal.load();
  if (left == never) return false;
  if (left > 1) {
    untilRefusal = left - 1;
    return false;
  }
  if (refused == heap::Failing::eOne) untilRefusal = never;
  happened = true;
  return true;
}

/// Null when refused.
void* allocate(std::size_t size, std::size_t alignment) noexcept {
  raise(largest, size);
  if (isRefused()) return nullptr;
  void* block = nullptr;
  if (alignment <= alignof(std::max_align_t)) {
    block = std::malloc(size == 0 ? 1 : size);
  } else if (posix_memalign(&block, alignment, size == 0 ? 1 : size) != 0) {
    block = nullptr;
  }
  if (block == nullptr) return nullptr;
  ++made;
  const std::size_t usable = malloc_usable_size(block);
  raise(mostBytes, bytes.fetch_add(usable) + usable);
  return block;
}

void* allocateOrThrow(std::size_t size, std::size_t alignment) {
  if (void* const block = allocate(size, alignment)) return block;
  throw std::bad_alloc();
}

void release(void* block) noexcept {
  if (block == nullptr) return;
  ++gone;
  bytes -= malloc_usable_size(block);
  std::free(block);
}

constexpr std::size_t usual = alignof(std::max_align_t);

constexpr std::size_t number(std::align_val_t alignment) {
  return static_cast<std::size_t>(alignment);
}

}  // namespace

using Alignment = std::align_val_t;
using NoThrow = std::nothrow_t;

void* operator new(std::size_t size) { return allocateOrThrow(size, usual); }
void* operator new[](std::size_t size) { return allocateOrThrow(size, usual); }
void* operator new(std::size_t size, const NoThrow&) noexcept { return allocate(size, usual); }
void* operator new[](std::size_t size, const NoThrow&) noexcept { return allocate(size, usual); }
void* operator new(std::size_t size, Alignment a) { return allocateOrThrow(size, number(a)); }
void* operator new[](std::size_t size, Alignment a) { return allocateOrThrow(size, number(a)); }
void* operator new(std::size_t size, Alignment a, const NoThrow&) noexcept {
  return allocate(size, number(a));
}
void* operator new[](std::size_t size, Alignment a, const NoThrow&) noexcept {
  return allocate(size, number(a));
}

void operator delete(void* block) noexcept { release(block); }
void operator delete[](void* block) noexcept { release(block); }
void operator delete(void* block, std::size_t) noexcept { release(block); }
void operator delete[](void* block, std::size_t) noexcept { release(block); }
void operator delete(void* block, const NoThrow&) noexcept { release(block); }
void operator delete[](void* block, const NoThrow&) noexcept { release(block); }
void operator delete(void* block, Alignment) noexcept { release(block); }
void operator delete[](void* block, Alignment) noexcept { release(block); }
void operator delete(void* block, std::size_t, Alignment) noexcept { release(block); }
void operator delete[](void* block, std::size_t, Alignment) noexcept { release(block); }
void operator delete(void* block, Alignment, const NoThrow&) noexcept { release(block); }
void operator delete[](void* block, Alignment, const NoThrow&) noexcept { release(block); }
#endif

namespace heap {

long blocksAlive() { return made - gone; }

long blocksMade() { return made; }

std::size_t bytesAlive() { return bytes; }

Watch::Watch() : before_(bytes) {
  mostBytes = before_;
  largest = 0;
}

std::size_t Watch::peakBytes() const { return mostBytes - before_; }

std::size_t Watch::largestBlock() { return largest; }

Refusal::Refusal(std::size_t number, Failing failing) {
  happened = false;
  refused = failing;
  untilRefusal = number;
}

Refusal::~Refusal() { untilRefusal = never; }

bool Refusal::hasHappened() { return happened; }

}  // namespace heap
