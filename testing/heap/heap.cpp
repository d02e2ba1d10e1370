// SPDX-License-Identifier: MIT
//
// Replaces the global operator new and operator delete of the program by versions that count and
// refuse. All of them are replaced: the sanitizers would supply any that is left out, and free()
// could not take its blocks.

#include "heap.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>

namespace {

constexpr std::size_t never = std::numeric_limits<std::size_t>::max();

constinit std::atomic<long> made{0};
constinit std::atomic<long> gone{0};
constinit std::atomic<std::size_t> requested{0};
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

constexpr std::size_t usual = alignof(std::max_align_t);

constexpr std::size_t number(std::align_val_t alignment) {
  return std::max(usual, static_cast<std::size_t>(alignment));
}

/// Null when refused. The requested size is stored in front of each block: the allocator's actual
/// size differs from one run to the next.
void* allocate(std::size_t size, std::size_t alignment) noexcept {
  raise(largest, size);
  if (isRefused()) return nullptr;
  if (size > never - alignment) return nullptr;
  void* memory = nullptr;
  if (alignment == usual) {
    memory = std::malloc(size + alignment);
  } else if (posix_memalign(&memory, alignment, size + alignment) != 0) {
    return nullptr;
  }
  if (memory == nullptr) return nullptr;
  ++made;
  requested += size;
  raise(mostBytes, bytes.fetch_add(size) + size);
  std::byte* const block = static_cast<std::byte*>(memory) + alignment;
  std::memcpy(block - sizeof size, &size, sizeof size);
  return block;
}

void* allocateOrThrow(std::size_t size, std::size_t alignment) {
  if (void* const block = allocate(size, alignment)) return block;
  throw std::bad_alloc();
}

void release(void* pointer, std::size_t alignment) noexcept {
  if (pointer == nullptr) return;
  std::byte* const block = static_cast<std::byte*>(pointer);
  std::size_t size = 0;
  std::memcpy(&size, block - sizeof size, sizeof size);
  ++gone;
  bytes -= size;
  std::free(block - alignment);
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

void operator delete(void* block) noexcept { release(block, usual); }
void operator delete[](void* block) noexcept { release(block, usual); }
void operator delete(void* block, std::size_t) noexcept { release(block, usual); }
void operator delete[](void* block, std::size_t) noexcept { release(block, usual); }
void operator delete(void* block, const NoThrow&) noexcept { release(block, usual); }
void operator delete[](void* block, const NoThrow&) noexcept { release(block, usual); }
void operator delete(void* block, Alignment a) noexcept { release(block, number(a)); }
void operator delete[](void* block, Alignment a) noexcept { release(block, number(a)); }
void operator delete(void* block, std::size_t, Alignment a) noexcept { release(block, number(a)); }
void operator delete[](void* block, std::size_t, Alignment a) noexcept {
  release(block, number(a));
}
void operator delete(void* block, Alignment a, const NoThrow&) noexcept {
  release(block, number(a));
}
void operator delete[](void* block, Alignment a, const NoThrow&) noexcept {
  release(block, number(a));
}
#endif

namespace heap {

long blocksAlive() { return made - gone; }

long blocksMade() { return made; }

std::size_t bytesMade() { return requested; }

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
