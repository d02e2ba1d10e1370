// SPDX-License-Identifier: MIT
//
// How a target reports a wrong answer: by ending the program, which is what a fuzzer looks for.

#pragma once

#include <cstdio>
#include <cstdlib>

#include <gtest/gtest.h>

namespace fuzz {

/// Ends the program when `condition` is false.
inline void require(bool condition, const char* what) {
  if (condition) return;
  std::fprintf(stderr, "wrong: %s\n", what);
  std::abort();
}

inline void require(const testing::AssertionResult& result, const char* what) {
  if (result) return;
  std::fprintf(stderr, "wrong: %s: %s\n", what, result.message());
  std::abort();
}

}  // namespace fuzz
