// SPDX-License-Identifier: MIT
//
// Watches the heap of this test program: what was the largest single block asked for.

#pragma once

#include <cstddef>

/// Measures from its construction on. One at a time.
class AllocationWatch {
 public:
  AllocationWatch();
  AllocationWatch(const AllocationWatch&) = delete;
  AllocationWatch& operator=(const AllocationWatch&) = delete;

  /// In bytes.
  static std::size_t largestBlock();
};
