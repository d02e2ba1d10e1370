// SPDX-License-Identifier: MIT
//
// A long text in memory that grows at its end. Unlike a std::string it does not clear the bytes
// into which a file is about to be read.

#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>

namespace formats {

class TextBuffer {
 public:
  TextBuffer() = default;
  /// With room for `capacity` bytes.
  explicit TextBuffer(std::size_t capacity) { reserve(capacity); }

  std::string_view text() const noexcept { return {bytes_.get(), size_}; }

  /// Makes room for `capacity` bytes in all.
  void reserve(std::size_t capacity);

  /// Has `count` zeros follow the text, without being a part of it.
  void pad(std::size_t count);

  /// Calls `fill(place, most)`, which writes up to `most` bytes to `place` and returns how many;
  /// they are appended. Returns their number.
  template <class Fill>
  std::size_t append(std::size_t most, const Fill& fill) {
    if (size_ + most > capacity_) reserve(std::max(size_ + most, 2 * capacity_));
    const std::size_t count = fill(bytes_.get() + size_, most);
    size_ += count;
    return count;
  }

  void append(std::string_view text) {
    append(text.size(), [text](char* place, std::size_t most) { return text.copy(place, most); });
  }

 private:
  std::unique_ptr<char[]> bytes_;  // NOLINT(modernize-avoid-c-arrays)
  std::size_t size_ = 0;
  std::size_t capacity_ = 0;
};

}  // namespace formats
