// SPDX-License-Identifier: MIT
//
// Watches how many bytes of this program's heap are in use.

#pragma once

#include <cstddef>

/// Measures from its construction on. One at a time.
class HeapPeak {
 public:
  HeapPeak();
  HeapPeak(const HeapPeak&) = delete;
  HeapPeak& operator=(const HeapPeak&) = delete;

  /// The most bytes at any time, beyond those in use at the beginning.
  std::size_t bytes() const;

 private:
  std::size_t before_;
};
