// SPDX-License-Identifier: MIT
//
// Counts what the program and the libraries that it links request from operator new. This adds
// about a nanosecond to each block, whoever requests it. Aligned blocks are not counted: nothing
// here requests any.

#include <bench/peers/work.h>

#include <cstdlib>
#include <new>

namespace {

peers::Allocations soFar;

}  // namespace

peers::Allocations peers::allocationsSoFar() { return soFar; }

void* operator new(std::size_t size) {
  ++soFar.blocks;
  soFar.bytes += static_cast<double>(size);
  void* const block = std::malloc(size == 0 ? 1 : size);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t /*size*/) noexcept { std::free(block); }
