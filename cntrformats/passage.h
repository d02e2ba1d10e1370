// SPDX-License-Identifier: MIT
//
// A part of a longer text that knows its place in the file, which is counted out only when it is
// asked for.

#pragma once

#include <cstddef>
#include <string_view>

namespace formats {

/// A place in a file: lines, and bytes of the line, counted from 1.
struct TextPlace {
  std::size_t line = 1;
  std::size_t column = 1;
};

/// The place behind a text that begins at `start`.
TextPlace placeAfter(std::string_view text, const TextPlace& start);

struct Passage {
  std::string_view text;
  /// What precedes it since `start`, the place where this begins in the file.
  std::string_view before = {};
  TextPlace start = {};

  /// The place of the byte `at` of the text.
  TextPlace placeOf(std::size_t at) const;
};

/// The bytes that can be read behind every passage that a reader hands over, whatever they are.
inline constexpr std::size_t passagePadding = 64;

}  // namespace formats
