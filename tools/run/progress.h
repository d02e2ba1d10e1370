// SPDX-License-Identifier: MIT
//
// A line on the terminal that tells how far long work has come.

#pragma once

#include <chrono>
#include <cstddef>
#include <iosfwd>

namespace tool {

/// Counts features, and shows the count from the second second on.
class Progress {
 public:
  /// Never shows anything unless `isShown`.
  Progress(std::ostream& out, bool isShown) : out_(out), isShown_(isShown) {}

  void count() { ++features_; }
  /// Brings the line up to date, a few times a second.
  void update();
  /// Takes the line away, to make room for other output.
  void clear();

 private:
  using Clock = std::chrono::steady_clock;

  std::ostream& out_;
  bool isShown_;
  std::size_t features_ = 0;
  Clock::time_point begin_ = Clock::now();
  Clock::time_point next_ = begin_ + std::chrono::seconds(1);
  bool isThere_ = false;
};

}  // namespace tool
