// SPDX-License-Identifier: MIT
//
// A line on the terminal that tells how far long work has come.

#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <iosfwd>

namespace tool {

/// Counts features, and shows the count, and the share of the input in per cent, from the second
/// second on.
class Progress {
 public:
  /// Never shows anything unless `isShown`. `total` is how many bytes there are to be read, 0 when
  /// that is not known.
  Progress(std::ostream& out, bool isShown, std::uint64_t total = 0)
      : out_(out), isShown_(isShown), total_(total) {}

  void count() { ++features_; }
  /// So many bytes have been read and done with.
  void reach(std::uint64_t bytes) { reached_ = bytes; }
  /// Brings the line up to date, a few times a second.
  void update();
  /// Takes the line away, to make room for other output.
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
