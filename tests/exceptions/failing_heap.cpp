// SPDX-License-Identifier: MIT
//
// Replaces the global operator new and operator delete of this program.

#include "failing_heap.h"

#include <atomic>
#include <cstdlib>
#include <limits>

namespace {

using failing_heap::Failing;

constexpr std::size_t never = std::numeric_limits<std::size_t>::max();

constinit std::atomic<long> alive{0};
/// Counts down while a refusal lives.
constinit std::size_t untilRefusal = never;
constinit Failing refused = Failing::eOne;
constinit bool happened = false;

bool isRefused() {
  if (untilRefusal == never) return false;
  if (untilRefusal > 1) {
    --untilRefusal;
    return false;
  }
  if (refused == Failing::eOne) untilRefusal = never;
  happened = true;
  return true;
}

}  // namespace

void* operator new(std::size_t size) {
  if (isRefused()) throw std::bad_alloc();
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

namespace failing_heap {

long blocksAlive() { return alive; }

Refusal::Refusal(std::size_t number, Failing failing) {
  happened = false;
  refused = failing;
  untilRefusal = number;
}

Refusal::~Refusal() { untilRefusal = never; }

bool Refusal::hasHappened() { return happened; }

}  // namespace failing_heap
