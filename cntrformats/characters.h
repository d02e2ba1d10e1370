// SPDX-License-Identifier: MIT
//
// Searches long texts for single characters, many at once: the thread that reads a file does little
// else.

#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace formats {

/// How often the character occurs. Counts of short runs fit into a byte, so that a compiler can add
/// many at once.
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

/// Texts are searched in blocks of this many bytes.
inline constexpr std::size_t blockSize = 64;

/// Which bytes of a block are one of these three characters: the lowest bit stands for the first.
#ifdef __SSE2__
inline std::uint64_t findInBlock(const char* block, char a, char b, char c) noexcept {
  constexpr std::size_t width = sizeof(__m128i);
  const auto isOne = [=](std::size_t k) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(block + width * k));
    return _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8(a)),
                                     _mm_cmpeq_epi8(bytes, _mm_set1_epi8(b))),
                        _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c)));
  };
  const __m128i first = isOne(0);
  const __m128i second = isOne(1);
  const __m128i third = isOne(2);
  const __m128i fourth = isOne(3);
  const __m128i any = _mm_or_si128(_mm_or_si128(first, second), _mm_or_si128(third, fourth));
  if (_mm_movemask_epi8(any) == 0) return 0;
  const auto bitsOf = [](__m128i bytes) {
    return std::uint64_t{static_cast<unsigned>(_mm_movemask_epi8(bytes))};
  };
  return bitsOf(first) | bitsOf(second) << 16U | bitsOf(third) << 32U | bitsOf(fourth) << 48U;
}
#else
inline std::uint64_t findInBlock(const char* block, char a, char b, char c) noexcept {
  const auto isOne = [=](char other) {
    return static_cast<unsigned>(other == a) | static_cast<unsigned>(other == b) |
           static_cast<unsigned>(other == c);
  };
  // Most blocks contain none of them, which compilers check for many bytes at once.
  unsigned char any = 0;
  for (std::size_t k = 0; k < blockSize; ++k)
    any = static_cast<unsigned char>(any | isOne(block[k]));
  std::uint64_t bits = 0;
  for (std::size_t k = 0; any != 0 && k < blockSize; ++k)
    bits |= std::uint64_t{isOne(block[k])} << k;
  return bits;
}
#endif

/// Calls `visit` with the position of each of these three characters from `at` on, in order, until
/// it returns true; false when it never does.
template <class Visit>
bool visitAny(std::string_view text, std::size_t at, char a, char b, char c, const Visit& visit) {
  for (; at + blockSize <= text.size(); at += blockSize) {
    for (std::uint64_t bits = findInBlock(text.data() + at, a, b, c); bits != 0; bits &= bits - 1) {
      if (visit(at + static_cast<std::size_t>(std::countr_zero(bits)))) return true;
    }
  }
  for (; at < text.size(); ++at) {
    const char other = text[at];
    if ((other == a || other == b || other == c) && visit(at)) return true;
  }
  return false;
}

}  // namespace formats
