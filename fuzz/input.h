// SPDX-License-Identifier: MIT
//
// The bytes that a fuzzer hands to a target, consumed from the front. Once they are used up, every
// byte is 0, so that every input is valid.

#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>

namespace fuzz {

class Input {
 public:
  explicit Input(std::span<const std::uint8_t> bytes) : rest_(bytes) {}

  bool isEmpty() const { return rest_.empty(); }

  std::uint8_t byte() {
    if (rest_.empty()) return 0;
    const std::uint8_t first = rest_.front();
    rest_ = rest_.subspan(1);
    return first;
  }

  bool flag() { return byte() % 2 == 1; }

  /// From one byte. REQUIRES: 0 < count <= 256.
  std::size_t below(std::size_t count) { return byte() % count; }

  /// From two bytes, -32768 to 32767.
  int small() { return static_cast<std::int16_t>(static_cast<std::uint16_t>(bits(2))); }

  /// Any double, from its eight bytes.
  double anyDouble() { return std::bit_cast<double>(bits(8)); }

  /// Of `count` bytes, the lowest first.
  std::uint64_t bits(unsigned count) {
    std::uint64_t value = 0;
    for (unsigned i = 0; i < count; ++i) value |= std::uint64_t{byte()} << (8 * i);
    return value;
  }

  /// The next `count` bytes, fewer at the end, as a separate input.
  Input part(std::size_t count) {
    const auto taken = rest_.first(count < rest_.size() ? count : rest_.size());
    rest_ = rest_.subspan(taken.size());
    return Input(taken);
  }

  std::span<const std::uint8_t> rest() const { return rest_; }

 private:
  std::span<const std::uint8_t> rest_;
};

}  // namespace fuzz
