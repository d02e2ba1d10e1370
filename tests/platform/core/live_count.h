// SPDX-License-Identifier: MIT
//
// Counts living objects, so that tests can show that nothing was left behind or deleted twice.

#pragma once

#include <atomic>

/// A member of each object to be counted.
class LiveCount {
 public:
  LiveCount() { ++alive_; }
  LiveCount(const LiveCount&) : LiveCount() {}
  LiveCount& operator=(const LiveCount&) = default;
  ~LiveCount() { --alive_; }

  static int alive() { return alive_; }

 private:
  static inline std::atomic<int> alive_{0};
};
