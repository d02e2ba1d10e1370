// SPDX-License-Identifier: MIT
//
// A line on the terminal that shows the progress of long work.

#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <iosfwd>

namespace tool {

/// Counts features and, once a second has passed, shows the count and the percentage of the input
/// that has been read.
class Progress {
 public:
  /// Shows nothing unless `isShown`. `total` is the number of bytes to be read, 0 if unknown.
  Progress(std::ostream& out, bool isShown, std::uint64_t total = 0)
      : out_(out), isShown_(isShown), total_(total) {}

  void count(std::size_t features) { features_ += features; }
  /// Tells how many bytes have been read and processed.
  void reach(std::uint64_t bytes) { reached_ = bytes; }
  /// Updates the line, a few times a second.
  void update();
  /// Removes the line, to make room for other output.
  void clear();

 private:
  using Clock = std::chrono::steady_clock;

  int percent() const;

  std::ostream& out_;
  bool isShown_;
  std::uint64_t total_;
  std::uint64_t reached_ = 0;
  std::size_t features_ = 0;
  Clock::time_point begin_ = Clock::now();
  Clock::time_point next_ = begin_ + std::chrono::seconds(1);
  bool isThere_ = false;
};

}  // namespace tool
