// SPDX-License-Identifier: MIT
//
// A part of a longer text that knows its place in the file, which is computed only when asked for.

#pragma once

#include <cstddef>
#include <string_view>

namespace formats {

/// A place in a file: the line, and the byte in the line, counted from 1.
struct TextPlace {
  std::size_t line = 1;
  std::size_t column = 1;
};

/// The place after a text that begins at `start`.
TextPlace placeAfter(std::string_view text, const TextPlace& start);

struct Passage {
  std::string_view text;
  /// What precedes the passage since `start`, the place in the file where `before` begins.
  std::string_view before = {};
  TextPlace start = {};

  /// The place of the byte `at` of the text.
  TextPlace placeOf(std::size_t at) const;
};

/// The number of bytes that can be read after every passage that a reader hands over: what follows
/// in the file, then zeros. simdjson looks at the first of them.
inline constexpr std::size_t passagePadding = 64;

}  // namespace formats
