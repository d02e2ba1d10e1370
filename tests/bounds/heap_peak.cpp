// SPDX-License-Identifier: MIT
//
// Replaces the global operator new and operator delete of this program by ones that write the size
// of each block in front of it.

#include "heap_peak.h"

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

constexpr std::size_t headSize = alignof(std::max_align_t);
static_assert(headSize >= sizeof(std::size_t));

constinit std::atomic<std::size_t> inUse{0};
constinit std::atomic<std::size_t> most{0};

}  // namespace

void* operator new(std::size_t size) {
  auto* const block = static_cast<unsigned char*>(std::malloc(headSize + size));
  if (block == nullptr) throw std::bad_alloc();
  std::memcpy(block, &size, sizeof(size));
  const std::size_t now = inUse.fetch_add(size) + size;
  std::size_t before = most.load();
  while (before < now && !most.compare_exchange_weak(before, now)) {
  }
  return block + headSize;
}

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  try {
    return operator new(size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

void operator delete(void* pointer) noexcept {
  if (pointer == nullptr) return;
  auto* const block = static_cast<unsigned char*>(pointer) - headSize;
  std::size_t size = 0;
  std::memcpy(&size, block, sizeof(size));
  inUse -= size;
  std::free(block);
}

void operator delete(void* pointer, std::size_t /*size*/) noexcept { operator delete(pointer); }

HeapPeak::HeapPeak() : before_(inUse) { most = before_; }

std::size_t HeapPeak::bytes() const { return most - before_; }
