// SPDX-License-Identifier: MIT
//
// Searching long texts for single characters, many at once: the thread that reads a file does
// little else.

#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace formats {

/// How often the character occurs. Counts of short runs fit into a byte, so that a compiler can add
/// up many at once.
inline std::size_t countOf(std::string_view text, char character) noexcept {
  constexpr std::size_t block = 64;
  std::size_t count = 0;
  std::size_t at = 0;
  for (; at + block <= text.size(); at += block) {
    const char* const bytes = text.data() + at;
    unsigned char sum = 0;
    for (std::size_t k = 0; k < block; ++k)
      sum = static_cast<unsigned char>(sum + static_cast<unsigned char>(bytes[k] == character));
    count += sum;
  }
  for (; at < text.size(); ++at) count += text[at] == character ? 1U : 0U;
  return count;
}

/// The position of the first of these three characters from `at` on, or the end.
inline std::size_t findAny(std::string_view text, std::size_t at, char a, char b, char c) noexcept {
  const auto isOne = [=](char other) {
    return static_cast<unsigned>(other == a) | static_cast<unsigned>(other == b) |
           static_cast<unsigned>(other == c);
  };
  // Most blocks contain none of them, which a compiler checks for all bytes of a block at once.
  constexpr std::size_t block = 64;
  for (; at + block <= text.size(); at += block) {
    const char* const bytes = text.data() + at;
    unsigned char found = 0;
    for (std::size_t k = 0; k < block; ++k)
      found = static_cast<unsigned char>(found | isOne(bytes[k]));
    if (found != 0) break;
  }
  // Words of eight bytes: a byte of 0 borrows from its highest bit when 1 is subtracted. The lowest
  // such byte is always marked correctly; a byte above it may be marked without being 0.
  constexpr std::uint64_t ones = 0x0101010101010101U;
  constexpr std::uint64_t highest = 0x8080808080808080U;
  const auto zeros = [](std::uint64_t word) { return (word - ones) & ~word & highest; };
  const auto repeated = [](char character) { return ones * static_cast<unsigned char>(character); };
  if constexpr (std::endian::native == std::endian::little) {
    for (; at + sizeof(std::uint64_t) <= text.size(); at += sizeof(std::uint64_t)) {
      std::uint64_t word = 0;
      std::memcpy(&word, text.data() + at, sizeof word);
      const std::uint64_t found =
          zeros(word ^ repeated(a)) | zeros(word ^ repeated(b)) | zeros(word ^ repeated(c));
      if (found != 0) return at + static_cast<std::size_t>(std::countr_zero(found)) / 8U;
    }
  }
  while (at < text.size() && isOne(text[at]) == 0) ++at;
  return at;
}

}  // namespace formats
