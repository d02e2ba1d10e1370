// SPDX-License-Identifier: MIT
//
// Allocations of peers_allocations: those that testing/heap has counted, in the program and in the
// libraries that it links.

#include <bench/peers/work.h>
#include <testing/heap/heap.h>

std::optional<peers::Allocations> peers::allocationsSoFar() {
  return Allocations{heap::blocksMade(), static_cast<double>(heap::bytesMade())};
}
